#!/usr/bin/env python3
"""Tables of the complex exponential's and logarithm's block routines."""
import mpmath
from mpmath import mpf

from tablegen import Table, bits64, emit, multiple, real64, truncated_multiple

GENERATOR = "complex_tables.py"
LN2_HIGH, LN2_LOW = 0x3FE62E42FEFA3800, 0x3D2EF35793C76730


# --- exponential --------------------------------------------------------------------------------------------------


def exp_complex_rows():
    """2^(j/64) as (hi, lo): the value is hi*(1 + lo)."""
    for j in range(64):
        value = mpf(2) ** (mpf(j) / 64)
        hi = real64(value)
        yield hi
        yield real64((value - hi) / hi) if j else mpf(0)


# --- logarithm ----------------------------------------------------------------------------------------------------


def ln_row(i, count):
    """(c, 0, hi, lo): c near 1/(1 + i/count) with at most 23 fraction bits, hi + lo = -ln c.

    hi is a multiple of 2^-42, as the high part of ln 2 is: a sum of hi and a multiple of that part is exact.
    """
    c = multiple(1 / (1 + mpf(i) / count), -23)
    value = -mpmath.log(c) if c != 1 else mpf(0)
    hi = truncated_multiple(value, -42)
    return c, mpf(0), hi, real64(value - hi)


def ln_rows(count):
    rows = [ln_row(i, count) for i in range(count + 1)]
    assert rows[0] == (1, 0, 0, 0)
    # The last row cancels against one ln 2.
    assert rows[count][0] == mpf("0.5")
    assert [bits64(v) for v in rows[count][2:]] == [LN2_HIGH, LN2_LOW]
    # The rounded index leaves residuals of half a row, and mantissa head times c is exact.
    assert all(abs(row[0] * (1 + mpf(i) / count) - 1) < mpf(2) ** -22 for i, row in enumerate(rows))
    return [value for row in rows for value in row]


def angle_rows():
    """p, q, 0, 0, K, its rest, pi - K, its rest: atan2(b, a) = K + atan((p*b - q*a)/(p*a + q*b)) for a, b > 0."""
    bases = ((1, 0), (2, 1), (1, 1), (2, 3), (0, 1))
    for p, q in bases:
        angle = mpmath.atan2(q, p) if q else mpf(0)
        yield from (mpf(p), mpf(q), mpf(0), mpf(0))
        for value in (angle, mpmath.pi - angle):
            head = real64(value)
            yield head
            yield real64(value - head)


def arctangent(degree, limit):
    """Coefficients of P with atan t = t + t^3*P(t^2) for |t| <= limit, P of the given degree.

    What counts is the relative error, t^2 times P's: that product is made zero at the Chebyshev points of an interval of
    t^2 that is stretched so that 0 is the lowest of them. A coefficient's rounding is made up for by those
    behind it.
    """
    high = mpf(limit) ** 2

    def rest(z):
        t = mpmath.sqrt(z)
        return (mpmath.atan(t) - t) / (t * z)

    def through_points(wanted, first):
        """The coefficients from z^first on of a polynomial through the wanted values."""
        count = degree + 1 - first
        cosines = [mpmath.cos(mpmath.pi * (2 * i + 1) / (2 * count + 2)) for i in range(count + 1)]
        points = [high * (c - cosines[count]) / (1 - cosines[count]) for c in cosines[:count]]
        matrix = mpmath.matrix([[z ** (first + k) for k in range(count)] for z in points])
        return list(mpmath.lu_solve(matrix, mpmath.matrix([wanted(z) for z in points])))

    coefficients = through_points(rest, 0)
    for k in range(degree + 1):
        error = coefficients[k] - real64(coefficients[k])
        coefficients[k] -= error
        if k < degree:
            for j, change in enumerate(through_points(lambda z: error * z**k, k + 1)):
                coefficients[k + 1 + j] += change
    worst = max(
        abs(mpmath.polyval(coefficients[::-1], z) - rest(z)) * z for z in (high * mpf(i) / 400 for i in range(1, 401))
    )
    return coefficients, worst


short, short_error = arctangent(5, 0.4375)
assert short_error < mpf(2) ** -33, mpmath.nstr(mpmath.log(short_error, 2))
long, long_error = arctangent(11, 0.4375)
assert long_error < mpf(2) ** -59, mpmath.nstr(mpmath.log(long_error, 2))

emit(
    "src/complex/exp_tables.h",
    GENERATOR,
    [Table("ExpComplexTable", "Real64", exp_complex_rows(),
           "2^(j/64) = hi*(1 + lo): hi the nearest Real64, lo the relative rest.", 4)],
    "Table of the complex exponential's block kernels.",
)
emit(
    "src/complex/ln_tables.h",
    GENERATOR,
    [
        Table("LnComplex32Table", "Real64", ln_rows(256),
              "c, 0, hi, lo for i = 0 to 256: c near 1/(1 + i/256) with 23 fraction bits, hi + lo = -ln c,\n"
              "hi a multiple of 2^-42. For Complex32 elements.", 4),
        Table("LnComplex64Table", "Real64", ln_rows(512),
              "The same for i = 0 to 512 and c near 1/(1 + i/512). For Complex64 elements.", 4),
        Table("ArgumentTable", "Real64", angle_rows(),
              "p, q, 0, 0, K, its rest, pi - K, its rest for K = 0, atan(1/2), atan(1), atan(3/2), pi/2:\n"
              "atan2(b, a) = K + atan((p*b - q*a)/(p*a + q*b)) for positive a and b.", 8),
        Table("Arctangent32", "Real64", short,
              f"atan t = t + t^3*P(t^2), |t| <= 7/16, within {mpmath.nstr(short_error, 2)} of t, relative error 2^-34.2.\n"
              "Constant first.", 3),
        Table("Arctangent64", "Real64", long, f"The same within {mpmath.nstr(long_error, 2)}, relative error 2^-62.2.", 3),
    ],
    "Tables of the complex logarithm's block routines.",
)
