#!/usr/bin/env python3
"""Tables of the approximate reciprocals and reciprocal roots that are the same on every processor.

With F the 23 fraction bits of the operand as a number below 1, the pattern of the approximation is K - pattern (the
reciprocal) or K - pattern/2 (its root) plus a correction D, which one line in each of 32 intervals gives:

    D = (2^14 C + S t) / 2^9,   t: where in the interval the operand lies, from 0 to 2^15 - 1

An entry holds C in its upper and S in its lower 16 bits, both signed.
"""
import mpmath
from mpmath import mpf

from tablegen import Table, emit

INTERVALS = 32
POINTS = 1 << 15
# The middles of the corrections, which the constants K take up.
RECIPROCAL_MIDDLE = 0x00F50000
ROOT_MIDDLE = 0x013A8000
BOUND = 3 / mpf(2) ** 13  # 1.5 * 2^-12
# The result is rounded to 13 significant bits; it lies in [1/2, 1], with units of 2^-13.
ROUNDING = mpf(2) ** -14


def reciprocal(i, t):
    """1/x at place t of interval i of [1, 2), and what its pattern is above the lowest by."""
    f = (i + mpf(t) / POINTS) / INTERVALS
    exact = 1 / (1 + f)
    return exact, mpf(2) ** 24 * (exact + f / 2) - RECIPROCAL_MIDDLE


def inverse_root(i, t):
    """1/sqrt(x); the intervals 0 to 15 part [2, 4), the others [1, 2)."""
    octave = 1 if i >= 16 else 2
    f = (i % 16 + mpf(t) / POINTS) / 16
    exact = 1 / mpmath.sqrt(octave * (1 + f))
    return exact, mpf(2) ** 24 * (exact + f / 4 + mpf(octave) / 4) - ROOT_MIDDLE


def entry(function, i):
    """The line that lies as far below the curve at the ends as above it in the middle."""
    (first, begin), (last, end) = function(i, 0), function(i, POINTS)
    slope = (end - begin) / POINTS
    # The curve is below the chord by most near the middle.
    below = max(begin + slope * t - function(i, t)[1] for t in range(0, POINTS, POINTS // 256))
    S = int(mpmath.nint(slope * 2**9))
    C = int(mpmath.nint((begin - below / 2) * 2**9 / 2**14))
    assert -(2**15) <= C < 2**15 and -(2**15) <= S < 2**15
    for t in range(0, POINTS, 64):
        exact, correction = function(i, t)
        off = abs(mpf((C << 14) + S * t) / 2**9 - correction) / mpf(2) ** 24 + mpf(2) ** -22
        assert (off + ROUNDING) / exact < BOUND, (function.__name__, i, t)
    return (C & 0xFFFF) << 16 | (S & 0xFFFF)


def table(function):
    return [entry(function, i) for i in range(INTERVALS)]


emit(
    "src/lanes/seed_tables.h",
    "seed_tables.py",
    [
        Table(
            "recipSeedLines",
            "std::uint32_t",
            table(reciprocal),
            "1/x: the line of interval i of 32 of the significand, value in the upper and slope in the lower half.",
            8,
        ),
        Table(
            "rsqrtSeedLines",
            "std::uint32_t",
            table(inverse_root),
            "1/sqrt(x): the lines of 16 intervals of [2, 4), then of 16 of [1, 2).",
            8,
        ),
    ],
    "Approximate reciprocals and reciprocal roots in integer arithmetic.",
)
