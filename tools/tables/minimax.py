"""Minimax polynomials of the relative error, for the tables that are fitted.

A target function is first replaced by its Chebyshev interpolant on the interval, accurate far beyond any fit, so
that the exchange works on polynomials alone: extrema are zeros of an exact derivative. All arithmetic has PRECISION
bits and no random start, so a fit gives the same coefficients on every run.
"""
import gmpy2
from gmpy2 import mpfr
from mpmath import mp, mpf

PRECISION = 320
ADDITION = 64  # fits are held well beyond the precision that the tables keep

gmpy2.get_context().precision = PRECISION + ADDITION


def to_mpf(value):
    """An mpfr as an mpf, exactly."""
    numerator, exponent = mpfr(value).as_mantissa_exp()
    with mp.workprec(PRECISION + ADDITION):
        return mpf(int(numerator)) * mpf(2) ** int(exponent)


def to_mpfr(value):
    """An mpf as an mpfr, exactly as far as the precision goes."""
    sign, mantissa, exponent, _ = mpf(value)._mpf_
    result = gmpy2.mul_2exp(mpfr(int(mantissa)), abs(exponent)) if exponent >= 0 else gmpy2.div_2exp(
        mpfr(int(mantissa)), abs(exponent))
    return -result if sign else result


def evaluate(polynomial, t):
    result = mpfr(0)
    for coefficient in reversed(polynomial):
        result = result * t + coefficient
    return result


def derivative(polynomial):
    return [k * c for k, c in enumerate(polynomial)][1:] or [mpfr(0)]


def solve(matrix, right):
    """Gaussian elimination with column pivots."""
    size = len(right)
    rows = [list(row) + [value] for row, value in zip(matrix, right)]
    for k in range(size):
        pivot = max(range(k, size), key=lambda i: abs(rows[i][k]))
        rows[k], rows[pivot] = rows[pivot], rows[k]
        for i in range(k + 1, size):
            factor = rows[i][k] / rows[k][k]
            if factor:
                rows[i] = [a - factor * b if j > k else mpfr(0) for j, (a, b) in enumerate(zip(rows[i], rows[k]))]
    result = [mpfr(0)] * size
    for k in reversed(range(size)):
        rest = rows[k][size] - sum((rows[k][j] * result[j] for j in range(k + 1, size)), mpfr(0))
        result[k] = rest / rows[k][k]
    return result


def interpolant(function, low, high, centre, tolerance=2.0**-150):
    """Coefficients in t = x - centre of a polynomial that is function(x) on [low, high] within the tolerance.

    The number of nodes is doubled until the upper Chebyshev coefficients have fallen below the tolerance.
    """
    pi = gmpy2.const_pi()
    middle, half = (high + low) / 2, (high - low) / 2
    count = 24
    while True:
        cosines = [gmpy2.cos(pi * j / (2 * count)) for j in range(4 * count)]
        values = [function(middle + half * cosines[2 * j + 1]) for j in range(count)]
        chebyshev = []
        for k in range(count):
            total = sum((values[j] * cosines[(2 * j + 1) * k % (4 * count)] for j in range(count)), mpfr(0))
            chebyshev.append(total * 2 / count)
        chebyshev[0] /= 2
        largest = max(abs(v) for v in values)
        if max(abs(c) for c in chebyshev[-3:]) < tolerance * largest:
            break
        count += count // 2
        assert count < 400, "the target is not smooth on its interval"
    while len(chebyshev) > 1 and abs(chebyshev[-1]) < tolerance * tolerance * largest:
        chebyshev.pop()
    # From Chebyshev polynomials to powers of u = (x - middle)/half, then to powers of t.
    previous, current = [mpfr(1)], [mpfr(0), mpfr(1)]
    powers = [mpfr(0)] * len(chebyshev)
    for k, c in enumerate(chebyshev):
        basis = previous if k == 0 else current
        for i, b in enumerate(basis):
            powers[i] += c * b
        if k >= 1:
            following = [mpfr(0)] + [2 * b for b in current]
            for i, b in enumerate(previous):
                following[i] -= b
            previous, current = current, following
    scaled = [c / half**k for k, c in enumerate(powers)]
    return shifted(scaled, centre - middle)


def shifted(polynomial, by):
    """The polynomial p(t + by)."""
    result = list(polynomial)
    for i in range(len(result) - 1):
        for k in range(len(result) - 2, i - 1, -1):
            result[k] += by * result[k + 1]
    return result


def _extrema(error_at, slope, slope_of_slope, grid):
    """Points of alternating sign where the error is largest, one for each run of equal sign on the grid."""
    errors = [error_at(t) for t in grid]
    runs = []
    for i, e in enumerate(errors):
        if runs and (e < 0) == (errors[runs[-1]] < 0):
            if abs(e) > abs(errors[runs[-1]]):
                runs[-1] = i
        else:
            runs.append(i)
    points = []
    for i in runs:
        t = grid[i]
        if 0 < i < len(grid) - 1:
            for _ in range(6):
                step = slope(t) / slope_of_slope(t)
                if not grid[i - 1] < t - step < grid[i + 1]:
                    break
                t -= step
            if abs(error_at(t)) < abs(errors[i]):
                t = grid[i]
        points.append(t)
    return points


def fit(target, powers, low, high):
    """Best approximation of the polynomial `target` on [low, high] by the given powers, in the relative error.

    Gives the list of coefficients of `powers` and the largest relative error.
    """
    size = len(powers) + 1
    pi = gmpy2.const_pi()
    middle, half = (low + high) / 2, (high - low) / 2
    points = [middle - half * gmpy2.cos(pi * k / (size - 1)) for k in range(size)]
    dense = 10 * size
    grid = [middle - half * gmpy2.cos(pi * k / dense) for k in range(dense + 1)]
    target_slope = derivative(target)
    target_bend = derivative(target_slope)
    for _ in range(30):
        matrix = []
        for k, t in enumerate(points):
            value = evaluate(target, t)
            matrix.append([t**p / value for p in powers] + [mpfr((-1) ** k)])
        solution = solve(matrix, [mpfr(1)] * size)[:-1]
        polynomial = [mpfr(0)] * (max(powers) + 1)
        for p, c in zip(powers, solution):
            polynomial[p] = c
        first = derivative(polynomial)
        second = derivative(first)

        def error_at(t):
            return evaluate(polynomial, t) / evaluate(target, t) - 1

        def slope(t):
            return evaluate(first, t) * evaluate(target, t) - evaluate(polynomial, t) * evaluate(target_slope, t)

        def slope_of_slope(t):
            return evaluate(second, t) * evaluate(target, t) - evaluate(polynomial, t) * evaluate(target_bend, t)

        points = _extrema(error_at, slope, slope_of_slope, grid)
        while len(points) > size:  # an outermost run too many: keep the larger end
            points.pop(0 if abs(error_at(points[0])) < abs(error_at(points[-1])) else -1)
        assert len(points) == size, (len(points), size)
        heights = [abs(error_at(t)) for t in points]
        if max(heights) - min(heights) < max(heights) * mpfr(2) ** -40:
            return solution, max(heights)
    raise AssertionError("the exchange does not settle")


def round_from_top(coefficients, low, high, last, rounded):
    """Rounds the coefficients from the top down to number `last`, the lower ones making good for each rounding.

    A change d of c_k is followed by that change of the lower ones which turns d t^k into d times the monic Chebyshev
    polynomial of degree k on [low, high], the smallest that there is.
    """
    result = list(coefficients)
    middle, half = (low + high) / 2, (high - low) / 2
    previous, current = [mpfr(1)], [mpfr(0), mpfr(1)]
    basis = [previous, current]
    for _ in range(2, len(result)):
        following = [mpfr(0)] + [2 * b for b in current]
        for i, b in enumerate(previous):
            following[i] -= b
        previous, current = current, following
        basis.append(current)
    for k in range(len(result) - 1, last - 1, -1):
        change = rounded(result[k]) - result[k]
        monic = shifted([c / basis[k][k] * half ** (k - i) for i, c in enumerate(basis[k])], -middle)
        for i, c in enumerate(monic[:k]):
            result[i] += change * c
        result[k] = rounded(result[k])
    return result
