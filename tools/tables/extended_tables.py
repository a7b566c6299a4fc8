#!/usr/bin/env python3
"""Tables and polynomial coefficients of the real functions in extended precision."""
import mpmath
from mpmath import mp, mpf

from tablegen import Table, emit, multiple, real32, real64, real80, truncated


def same(values, samples):
    """Asserts that Real64 values print as the recorded samples do."""
    for value, sample in zip(values, samples, strict=True):
        assert real64(value) == mpf(sample), (mpmath.nstr(value, 20), sample)


# --- tables -----------------------------------------------------------------------------------------------------


def exp2_table():
    """2^(j/256) as (hi, lo): hi a multiple of 2^-31, lo the rest."""
    for j in range(256):
        value = mpf(2) ** (mpf(j) / 256)
        hi = multiple(value, -31)
        yield hi
        yield real64(value - hi)


exp2 = list(exp2_table())
same(exp2[:4], [1.0, 0.0, 1.002711275126785, -7.658255447098781e-11])


def recip(i):
    """Near the reciprocal of the middle of interval i of [1, 2), with 12 significant bits."""
    return multiple(1 / (1 + (i + mpf(1) / 2) / 256), -12)


same([recip(0), recip(255)], [0.998046875, 0.50048828125])


def ln_recip():
    """-ln(recip(i)) as (hi, lo): hi a multiple of 2^-40, so that it adds up without error."""
    for i in range(256):
        value = -mpmath.log(recip(i))
        hi = multiple(value, -40)
        yield hi
        yield real64(value - hi)


def atan_table():
    """The angles of the directions (128, j) for j up to 128, (256 - j, 128) up to 384 and (-128, 512 - j) up to 512."""
    for j in range(513):
        if j <= 128:
            value = mpmath.atan(mpf(j) / 128)
        elif j <= 384:
            value = mpmath.pi / 2 + mpmath.atan(mpf(j - 256) / 128)
        else:
            value = mpmath.pi - mpmath.atan(mpf(512 - j) / 128)
        hi = truncated(value, 31)
        yield hi
        yield real64(value - hi)


angles = list(atan_table())
same(angles[256:258], [0.7853981633670628, 3.038550253253096e-11])
same(angles[512:514], [1.5707963267341256, 6.077100506506192e-11])
same(angles[1024:1026], [3.1415926534682512, 1.2154201013012384e-10])


def tangent_table(function):
    """Pairs of function(k*pi/64) for k = 0 to 17, zeros at k = 0."""
    yield mpf(0)
    yield mpf(0)
    for k in range(1, 18):
        value = function(k * mpmath.pi / 64)
        hi = truncated(value, 31)
        yield hi
        yield real64(value - hi)


def four_over_pi_slices():
    """4/pi in 64-bit slices behind two empty ones: slice k + 2 holds the bits of weight 2^(-64k) down to 2^(-64k-63)."""
    with mp.workprec(17400):
        whole = int(mpmath.floor(4 / mpmath.pi * mpf(2) ** (64 * 262 + 63)))
    count = 263
    yield 0
    yield 0
    for k in range(count):
        yield (whole >> (64 * (count - 1 - k))) & (2**64 - 1)


# --- polynomials ------------------------------------------------------------------------------------------------


def fitted(function, low, high, count):
    """Coefficients, constant first, of the polynomial through the function at the Chebyshev points of [low, high]."""
    points = []
    for i in range(count):
        t = mpmath.cos(mpmath.pi * (2 * i + 1) / (2 * count))
        points.append((mpf(low) + mpf(high)) / 2 + (mpf(high) - mpf(low)) / 2 * t)
    differences = [function(x) for x in points]
    for order in range(1, count):
        for i in range(count - 1, order - 1, -1):
            differences[i] = (differences[i] - differences[i - 1]) / (points[i] - points[i - order])
    coefficients = [mpf(0)]
    for i in range(count - 1, -1, -1):
        shifted = [mpf(0)] + coefficients
        for k, c in enumerate(coefficients):
            shifted[k] -= points[i] * c
        shifted[0] += differences[i]
        coefficients = shifted
    return coefficients[:count]


def in_two_parts(coefficients):
    """Each value as the nearest Real64 and the rest."""
    for c in coefficients:
        hi = real64(c)
        yield hi
        yield real64(c - hi)


def polynomial(name, coefficients, wide, about):
    """Two tables of one polynomial: its first coefficients as (hi, lo), the others as they are."""
    return [
        Table(name + "Wide", "Real64", in_two_parts(coefficients[:wide]), about + "\nThe first coefficients as (hi, lo).", 2),
        Table(name, "Real64", [real64(c) for c in coefficients[wide:]], "The higher coefficients of the same.", 2),
    ]


def pair(name, function, low, high, count, wide, about):
    """The same of a fit."""
    return polynomial(name, fitted(function, low, high, count), wide, about)


def of_square(function, first):
    """(function(x) - first*x)/x^3 as a function of x^2, for an odd function."""

    def value(z):
        x = mpmath.sqrt(z)
        return (function(x) - first * x) / (x * z)

    return value


def even_of_square(function):
    """(function(x) - 1 - x^2/2)/x^4 as a function of x^2."""

    def value(z):
        return (function(mpmath.sqrt(z)) - 1 - z / 2) / (z * z)

    return value


def log1p_rest(t):
    """(ln(1 + t) - t + t^2/2)/t^3."""
    return (mpmath.log1p(t) - t + t * t / 2) / t**3


def acosh_rest(t):
    """(acosh(1 + t)/sqrt(2t) - 1)/t."""
    return (mpmath.acosh(1 + t) / mpmath.sqrt(2 * t) - 1) / t


sine = [1 / mpf(120)] + [mpf(c) for c in (
    -0.0001984126984126984, 2.755731922398587e-06, -2.5052108385431668e-08, 1.6059043833549323e-10,
    -7.647163052289936e-13, 2.8113700990447835e-15, -8.157726529976581e-18)]
cosine = [1 / mpf(24), -1 / mpf(720)] + [mpf(c) for c in (
    2.480158730158726e-05, -2.7557319223964797e-07, 2.087675698100012e-09,
    -1.1470744171462834e-11, 4.7792943912126055e-14, -1.5487144594826714e-16)]
# The leading coefficients are also known as sums of a short and a long part.
for short, long, value in ((0.00830078125, 3.255208333333333e-05, sine[0]), (0.041015625, 0.0006510416666666666, cosine[0])):
    assert abs(mpf(short) + mpf(long) - value) < mpf(2) ** -64, value
same([cosine[1]], [-0.001388888888888889])

# The coefficient of r^5, kept in two parts, makes good at r^2 = 1/2 what its neighbours lose by their rounding.
sine[0] -= (real80(-1 / mpf(6)) + 1 / mpf(6)) * 2 + (real64(sine[1]) + 1 / mpf(5040)) / 2


def emit_header(name, tables, about):
    emit(f"src/extended/{name}", "extended_tables.py", tables, about)


emit_header(
    "exp_table.h",
    [
        Table("exp2Table", "Real64", exp2, "2^(j/256) as (hi, lo), hi a multiple of 2^-31.", 4),
    ],
    "Table of the exponential in extended precision.",
)
emit_header(
    "sinh_cosh_tables.h",
    [
        *pair("Sinh", of_square(mpmath.sinh, 1), 0, mpf(1) / 4, 8, 2,
              "sinh x = x + x^3*P(x^2), |x| <= 1/2.\nInterpolated at the Chebyshev points, relative error 2^-82.4."),
        *pair("Cosh", even_of_square(mpmath.cosh), 0, mpf(1) / 4, 7, 1,
              "cosh x = 1 + x^2/2 + x^4*P(x^2), |x| <= 1/2.\nInterpolated at the Chebyshev points, relative error 2^-70.1."),
    ],
    "Coefficients of the hyperbolic sine and cosine in extended precision.",
)
emit_header(
    "tanh_tables.h",
    [
        *pair("Tanh", of_square(mpmath.tanh, 1), 0, mpf(1) / 4, 14, 4,
              "tanh x = x + x^3*P(x^2), |x| <= 1/2.\nInterpolated at the Chebyshev points, relative error 2^-71.2."),
    ],
    "Coefficients of the hyperbolic tangent in extended precision.",
)
emit_header(
    "ln_tables.h",
    [
        Table("mantissaRecip", "Real32", [real32(recip(i)) for i in range(256)],
              "Near 1/(1 + (i + 0.5)/256), to 12 significant bits.", 8),
        Table("lnRecip", "Real64", ln_recip(), "-ln(mantissaRecip[i]) as (hi, lo), hi a multiple of 2^-40.", 4),
        *pair("Log1p", log1p_rest, -mpf(1) / 16, mpf(1) / 15.9, 13, 1,
              "ln(1 + t) = t - t^2/2 + t^3*P(t), |t| <= 1/16.\nInterpolated at the Chebyshev points, relative error 2^-71.4."),
    ],
    "Tables and coefficients of the logarithm in extended precision.",
)
emit_header(
    "inverse_hyper_tables.h",
    [
        *pair("Asinh", of_square(mpmath.asinh, 1), 0, mpf(1) / 4, 17, 4,
              "asinh x = x + x^3*P(x^2), |x| <= 1/2.\nInterpolated at the Chebyshev points, relative error 2^-74.0."),
        *pair("Acosh", acosh_rest, 0, mpf(1) / 4, 14, 4,
              "acosh(1 + t) = sqrt(2t)*(1 + t*P(t)), 0 <= t <= 1/4.\nInterpolated at the Chebyshev points, relative error 2^-75.6."),
        *pair("Atanh", of_square(mpmath.atanh, 1), 0, mpf(1) / 16, 12, 3,
              "atanh x = x + x^3*P(x^2), |x| <= 1/4.\nInterpolated at the Chebyshev points, relative error 2^-74.6."),
    ],
    "Coefficients of the inverse hyperbolic functions in extended precision.",
)
emit_header(
    "four_over_pi.h",
    [
        Table("fourOverPiSlices", "std::uint64_t", four_over_pi_slices(),
              "The binary digits of 4/pi behind 128 zeros, 64 to a word.", 4),
    ],
    "The digits of 4/pi with which large arguments are reduced in extended precision.",
)
emit_header(
    "sin_cos_tables.h",
    [
        *polynomial("Sine", sine, 1, "Sine: (sin r - r + r^3/6)/r^5 in powers of r^2, |r| <= pi/4.\nRelative error of the sine 2^-70.3."),
        *polynomial("Cosine", cosine, 2, "Cosine: (cos r - 1 + r^2/2)/r^4 in powers of r^2, |r| <= pi/4.\nRelative error of the cosine 2^-69.3."),
    ],
    "Coefficients of the sine and the cosine in extended precision.",
)
emit_header(
    "tan_tables.h",
    [
        Table("tanTable", "Real64", tangent_table(mpmath.tan), "tan(k*pi/64) as (hi, lo), k = 0 to 17.", 4),
        Table("cotTable", "Real64", tangent_table(mpmath.cot), "cot(k*pi/64) as (hi, lo), zero at k = 0.", 4),
        Table("tanPlusCotTable", "Real64", tangent_table(lambda x: mpmath.tan(x) + mpmath.cot(x)),
              "tan + cot of k*pi/64 as (hi, lo), zero at k = 0.", 4),
        *pair("Tangent", of_square(mpmath.tan, 1), 0, mpf(1) / 400, 7, 2,
              "tan t = t + t^3*P(t^2), |t| <= 1/20.\nInterpolated at the Chebyshev points, relative error 2^-85.0."),
        *pair("Cotangent", lambda z: (1 / mpmath.sqrt(z) - mpmath.cot(mpmath.sqrt(z))) / mpmath.sqrt(z), 0, mpf(1) / 400, 7, 2,
              "-cot t = -1/t + t*P(t^2), |t| <= 1/20.\nInterpolated at the Chebyshev points, relative error 2^-88.5."),
    ],
    "Tables and coefficients of the tangent in extended precision.",
)
emit_header(
    "atan_table.h",
    [
        Table("atanTable", "Real64", angles,
              "Angles of the directions (128, j) for j = 0 to 128, (256 - j, 128) for j to 384, (-128, 512 - j) for j to 512,\n"
              "as (hi, lo), hi truncated to 31 significant bits.", 4),
    ],
    "Table of the arctangent in extended precision.",
)
emit_header(
    "asin_acos_tables.h",
    [
        *pair("Asin", of_square(mpmath.asin, 1), 0, mpf(1) / 4, 18, 4,
              "asin x = x + x^3*P(x^2), |x| <= 1/2.\nInterpolated at the Chebyshev points, relative error 2^-69.3."),
    ],
    "Coefficients of the arcsine and the arccosine in extended precision.",
)
