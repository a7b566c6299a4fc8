#!/usr/bin/env python3
"""Tables of the normal distribution function and of its quantile."""
import gmpy2
import mpmath
from gmpy2 import mpfr
from mpmath import mpf

import minimax
from minimax import to_mpf, to_mpfr
from tablegen import Table, bits64, emit, from_bits64, nearest, real64, truncated_multiple

CENTRES = [0.125, 0.3125, 0.625, 1.25, 1.5, 1.5, 2.5, 3, 3, 5, 6, 6, 10, 12, 12, 12, 20, 24, 24, 24, 40, 48]
FIRST_SCALED_ROW = 6  # from here on the rows hold Phi(-a) exp(a^2/2)
UNDERFLOW_LIMIT = mpfr("38.485408335567335")
FIT_BOUND = mpf("2.2e-20")
SHORT_FIT_BOUND = 2.0**-45


def upper_tail(a):
    return gmpy2.erfc(a / gmpy2.sqrt(mpfr(2))) / 2


def scaled_tail(a):
    return upper_tail(a) * gmpy2.exp(a * a / 2)


def pair(value):
    high = real64(value)
    return [high, real64(value - high)]


def cdf_row(e):
    """Row e: -c, a zero, c0 to c5 as pairs, c6 to c15.

    The plain coefficients are rounded from the top down, so that the rounding errors of the upper ones are made good
    by those below.
    """
    low = gmpy2.exp2(mpfr(e) / 4) - 1
    high = gmpy2.exp2(mpfr(e + 1) / 4) - 1 if e < 21 else UNDERFLOW_LIMIT
    centre = mpfr(CENTRES[e])
    function = upper_tail if e < FIRST_SCALED_ROW else scaled_tail
    target = minimax.interpolant(function, low, high, centre)
    solution, _ = minimax.fit(target, range(16), low - centre, high - centre)
    solution = minimax.round_from_top(solution, low - centre, high - centre, 6, lambda c: to_mpfr(real64(to_mpf(c))))
    pairs = [pair(to_mpf(c)) for c in solution[:6]]
    plain = [to_mpf(c) for c in solution[6:]]

    rounded = [to_mpfr(h + l) for h, l in pairs] + solution[6:]
    points = [low - centre + (high - low) * k / 300 for k in range(301)]
    error = max(abs(minimax.evaluate(rounded, w) / minimax.evaluate(target, w) - 1) for w in points)
    assert to_mpf(error) < FIT_BOUND, (e, error)
    return [mpf(-CENTRES[e]), mpf(0)] + [part for p in pairs for part in p] + plain


def check_cdf_rows(rows):
    """Known coefficients: the further the centre lies outside of the interval, the less a fit settles them."""

    def close(value, expected, tolerance):
        assert abs(value - expected) <= abs(expected) * mpf(tolerance), (value, expected)

    known = {
        0: ("1e-24", 0x3FDCD116C3BF96A6, 0x3C7F9B54729842DB, 0xBFD9556797FCED53, 0xBC7374D306CD66F4, 0x3E649D1A8B513B9C),
        6: ("1e-20", 0x3FC21725231700B8, 0x3C67BD6602BF1B1D, 0xBFA75AB63FBBAB5A, 0xBC5EF575E65938F7, 0xBDE303B840DAC083),
        21: ("1e-15", 0x3F81039FEDA97A4B, 0x3C37B909409EAA8E, 0xBF26AA7839517B16, 0xBBC066B00CA50041, 0xBA9A3D55D1B1E847),
    }
    for e, (tolerance, c0, c0_low, c1, c1_low, c15) in known.items():
        for at, high, low in ((2, c0, c0_low), (4, c1, c1_low)):
            close(rows[e][at] + rows[e][at + 1], from_bits64(high) + from_bits64(low), tolerance)
        close(rows[e][23], from_bits64(c15), "1e-7")


def cdf_pow2():
    """2^(j/64): the high part a multiple of 2^-25, the rest not negative."""
    for j in range(64):
        value = mpf(2) ** (mpf(j) / 64)
        high = truncated_multiple(value, -25)
        yield from (high, real64(value - high))


def cdf_short_row(i):
    """Row i: 1 + a from 2^k (1 + j/16) on, i = 16 k + j, in d, what 1 + a is above that."""
    low = mpfr(2) ** (i // 16) * (1 + mpfr(i % 16) / 16)
    width = mpfr(2) ** (i // 16) / 16
    target = minimax.interpolant(scaled_tail, low - 1, low - 1 + width, low - 1)
    solution, error = minimax.fit(target, range(8), mpfr(0), width)
    assert error < SHORT_FIT_BOUND, (i, error)
    return [real64(to_mpf(c)) for c in solution]


def middles():
    return [mpf(33 + 2 * i) / 32 for i in range(16)]


def halved_after(values):
    values = list(values)
    return values + [v / 2 for v in values]


def recip64():
    return halved_after(nearest(mpf(512) / (513 + 2 * i), 21) for i in range(256))


def short_pair(value):
    """High part with 21 significant bits, that is with 32 low bits clear, and the rest."""
    high = nearest(value, 21)
    return [high, real64(value - high)]


rows = [cdf_row(e) for e in range(22)]
check_cdf_rows(rows)

short_rows = [cdf_short_row(i) for i in range(64)]

pow2 = list(cdf_pow2())
assert pow2[:2] == [1, 0]
assert (bits64(pow2[2]), bits64(pow2[3])) == (0x3FF02C9A38000000, 0x3E59DE0183B9BDF3)

emit(
    "src/erf/cdf_norm_tables.h",
    "normal_tables.py",
    [
        Table(
            "cdfRows",
            "Real64",
            [value for row in rows for value in row],
            "22 rows of 24, row e for 2^(e/4) - 1 <= a < 2^((e+1)/4) - 1: the negated centre -c, a zero, the pairs\n"
            "c0hi, c0lo to c5hi, c5lo, then c6 to c15 of a polynomial in a - c. Rows 0 to 5 hold Phi(-a), the others\n"
            "Phi(-a) exp(a^2/2); relative error below 2.2e-20. Row 21 is fitted up to the underflow limit.",
            4,
        ),
        Table(
            "cdfPow2",
            "Real64",
            pow2,
            "2^(j/64) for j = 0 to 63 as pairs: the value cut to a multiple of 2^-25, and the rest.",
            2,
        ),
        Table(
            "cdfShortRows",
            "Real64",
            [value for row in short_rows for value in row],
            "64 rows of 8, sixteen a binade of 1 + a: c0 to c7 of Phi(-a) exp(a^2/2) as a polynomial in what 1 + a is above\n"
            "the row's start; relative error below 2^-45.",
            4,
        ),
    ],
    "Tables of the normal distribution function.",
)

reciprocals = recip64()
assert bits64(reciprocals[0]) == 0x3FEFF00800000000
assert bits64(reciprocals[1]) == 0x3FEFD04800000000
assert bits64(reciprocals[511]) == 0x3FD0040100000000

log_recip = [part for r in reciprocals[:256] for part in short_pair(-mpmath.log(r))]
assert [float(v) for v in log_recip[:2]] == [0.0019512129947543144, -3.14073134151186e-10]

sqrt_recip = [part for r in reciprocals for part in short_pair(1 / mpmath.sqrt(r))]
assert [float(v) for v in sqrt_recip[:2]] == [1.0009756088256836, 4.735733253504558e-07]

emit(
    "src/erf/quantile_tables.h",
    "normal_tables.py",
    [
        Table(
            "recip32",
            "Real64",
            halved_after(real64(1 / m) for m in middles()),
            "Reciprocals of the middles (33 + 2i)/32 of the sixteenths of [1, 2), and from 16 on their halves.",
        ),
        Table("logMid32", "Real64", [real64(mpmath.log(m)) for m in middles()], "ln((33 + 2i)/32)."),
        Table(
            "sqrtMid32",
            "Real64",
            [real64(mpmath.sqrt(m * scale)) for scale in (1, 2) for m in middles()],
            "sqrt((33 + 2i)/32), and from 16 on the root of the double.",
        ),
        Table(
            "recip64",
            "Real64",
            reciprocals,
            "512/(513 + 2i) for i = 0 to 255 to nearest at 21 significant bits, so that products with 21-bit parts\n"
            "and 32-bit parts are exact; from 256 on their halves.",
        ),
        Table(
            "logRecip64",
            "Real64",
            log_recip,
            "-ln(recip64[i]) for i = 0 to 255 as pairs, the high part with 21 significant bits.",
        ),
        Table(
            "sqrtRecip64",
            "Real64",
            sqrt_recip,
            "1/sqrt(recip64[i]) for i = 0 to 511 as pairs, the high part with 21 significant bits.",
        ),
    ],
    "Tables of the logarithm and the square root inside the normal quantile and the inverse of erfc.",
)
