#!/usr/bin/env python3
"""Tables of the inverse error function."""
import gmpy2
import mpmath
from gmpy2 import mpfr
from mpmath import mpf

import minimax
from minimax import to_mpf
from tablegen import Table, emit, nearest, real64

HALF_ROOT_PI = gmpy2.sqrt(gmpy2.const_pi()) / 2
ENOUGH = mpfr(2) ** -120  # the step is of third order: after one below this nothing is left


def erfinv_of_rest(w):
    """erfinv(1 - w), by Halley's steps on erf in the middle and on erfc in the tail."""
    x = 1 - w
    if x < 0.5:
        y = x * HALF_ROOT_PI
        rest = lambda y: gmpy2.erf(y) - x
    else:
        logarithm = -gmpy2.log(w)
        y = gmpy2.sqrt(logarithm) * mpfr("0.7")
        if logarithm > 3:
            y = gmpy2.sqrt(logarithm - gmpy2.log(2 * HALF_ROOT_PI * gmpy2.sqrt(logarithm)))
        rest = lambda y: w - gmpy2.erfc(y)
    while True:
        newton = rest(y) * HALF_ROOT_PI * gmpy2.exp(y * y)
        y -= newton / (1 + y * newton)
        if abs(newton) < ENOUGH * y:
            return y


def quotient(w):
    return erfinv_of_rest(w) / (1 - w)


def fitted(function, degree, low, high, centre):
    target = minimax.interpolant(function, low, high, centre, 2.0**-110)
    solution, error = minimax.fit(target, range(degree + 1), low - centre, high - centre)
    return [to_mpf(c) for c in solution], to_mpf(error)


PIECES = 424
PIECE_STRIDE = 6


def erf_inv_pieces():
    """Row i behind one row of zeros: c0 to c4 and a zero."""
    rows = [[mpf(0)] * PIECE_STRIDE]
    for i in range(PIECES):
        cell = 8183 - i
        exponent = (cell >> 3) - 1023
        low = (1 + mpfr(cell & 7) / 8) * gmpy2.exp2(mpfr(exponent))
        width = gmpy2.exp2(mpfr(exponent - 3))
        # Row 0 ends a sixty-fourth early, short of x = 0.
        high = low + (width * 63 / 64 if i == 0 else width)
        c, error = fitted(quotient, 4, low, high, low)
        assert error < mpf("2.5e-9"), (i, error)
        rows.append([real64(v) for v in c] + [mpf(0)])
    known = "0.8871351803356802 -0.029126747226907928 0.23501973085835892 -0.032143615850989106 0.12901483967258556"
    assert all(abs(v - mpf(k)) < abs(v) * mpf("2e-15") for v, k in zip(rows[1], known.split()))
    assert float(rows[101][0]) == 2.661332183556163
    return rows


def short(value, bits):
    """High part with the given number of bits, and the rest."""
    high = nearest(value, bits)
    return high, real64(value - high)


def erf_inv_middle():
    rows = []
    step = mpfr(3) / 128

    def function(s):
        return quotient(1 - gmpy2.sqrt(s + mpfr("0.765625")))

    for k in range(32):
        centre = -step * k
        c, error = fitted(function, 12, centre - step, centre, centre)
        assert error < mpf("1e-19"), (k, error)
        high, low = short(c[0], 26)
        high1, low1 = short(c[1], 25)
        high2, low2 = short(c[2], 25)
        rows.append([low, low1, low2] + [real64(v) for v in c[3:]] + [high, high1, high2])
    assert [float(rows[0][i]) for i in (13, 0, 14, 15)] == [
        1.2397566139698029,
        3.2522350193340796e-09,
        1.0677788853645325,
        2.299608588218689,
    ]
    return rows


def erf_inv_tail():
    rows = []
    margin = mpfr(2) ** -16

    def function(v):
        return erfinv_of_rest(gmpy2.exp(-1 / (v * v))) * v

    for k in range(2, 12):
        centre = mpfr(k) / 16
        c, error = fitted(function, 14, centre - margin, centre + mpfr(1) / 16 + margin, centre)
        assert error < mpf("1e-19"), (k, error)
        high, low = short(c[0], 26)
        high1, low1 = short(c[1], 25)
        high2, low2 = short(c[2], 25)
        rows.append([low, low1, low2] + [real64(v) for v in c[3:]] + [high, high1, high2])
    return rows


def erf_inv_log():
    rows = []
    for i in range(256):
        r = mpmath.nint(512 / (1 + mpf(2 * i + 1) / 512)) / 512
        logarithm = mpmath.log(r)
        high = nearest(logarithm, 21)
        rows.append([-r, high, real64(logarithm - high), mpf(0)])
    assert [float(v) for v in rows[0][:3]] == [-0.998046875, -0.0019550342112779617, -6.245253888266704e-10]
    assert [float(v) for v in rows[1][:3]] == [-0.994140625, -0.005876608192920685, -2.960643571057721e-10]
    return rows


def erf_inv_log32():
    for i in range(16):
        r = real64(mpf(-32) / (33 + 2 * i))
        yield from (r, real64(mpmath.log(-r)))


def flat(rows):
    return [value for row in rows for value in row]


log32 = list(erf_inv_log32())
assert [float(v) for v in log32[:2]] == [-0.9696969696969697, -0.03077165866675366]

emit(
    "src/erf/erf_inv_tables.h",
    "erf_inv_tables.py",
    [
        Table(
            "erfInvPieces",
            "Real64",
            flat(erf_inv_pieces()),
            "Row i stands at entry 6 (i + 1): a row of zeros, for lanes that are redone, then 424 rows, each c0 to c4\n"
            "of a polynomial in t = w - (w cut to three fraction bits) for erfinv(1 - w)/(1 - w), and a zero. Row i serves\n"
            "the w whose top 15 bits are 8183 - i. Minimax, relative error below 2.5e-9.",
            PIECE_STRIDE,
        ),
        Table(
            "erfInvMiddle",
            "Real64",
            flat(erf_inv_middle()),
            "32 rows of 16, row k for s = -3k/128 + v, -3/128 < v <= 0: the low part of c0, the rests of c1 and c2, c3\n"
            "to c12, then the high part of c0 with 26 bits and the high parts of c1 and c2 with 25 bits.\n"
            "Minimax, relative error below 1e-19.",
        ),
        Table(
            "erfInvTail",
            "Real64",
            flat(erf_inv_tail()),
            "10 rows of 18, row k = 2 to 11 standing at entry 18 (k - 2), for 1/y = k/16 + t, 0 <= t < 1/16: the low\n"
            "part of c0, the rests of c1 and c2, c3 to c14, then the high part of c0 with 26 bits and the high parts of c1\n"
            "and c2 with 25 bits. Minimax, relative error below 1e-19.",
            6,
        ),
        Table(
            "erfInvLog",
            "Real64",
            flat(erf_inv_log()),
            "256 rows of 4: -r, ln r as high part with 21 bits and rest, and a zero, where r is near the reciprocal of\n"
            "1 + (2i + 1)/512 with 9 bits.",
        ),
        Table(
            "erfInvLog32",
            "Real64",
            log32,
            "16 pairs for the single-precision tail: -r and ln r, r = 32/(33 + 2i).",
        ),
    ],
    "Tables of the inverse error function.",
)
