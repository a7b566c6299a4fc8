#!/usr/bin/env python3
"""Cases for the test of the large-argument reduction: every binary order, with the exact reduced argument."""
import random

from mpmath import mp, mpf

from tablegen import Table, bits64, emit, real64

mp.prec = 2400  # the largest arguments have 1024 bits before the point, and the reduced one is wanted to 107 bits

# floor(2/pi 2^SHIFT): continued fractions in integers.
SHIFT = 1300
TWO_OVER_PI = int(2 / mp.pi * mpf(2) ** SHIFT)


def nearest_to_multiple(exponent):
    """The significand M in [2^52, 2^53) whose M 2^exponent is nearest to a multiple of pi/2, relative to pi/2.

    A convergent of 2^exponent 2/pi whose denominator has 53 bits, or a multiple of the last one below.
    """
    numerator, denominator = TWO_OVER_PI << max(exponent, 0), 1 << (SHIFT + max(-exponent, 0))
    rest = numerator % denominator
    # Denominators q_0 = 1, q_1 = a_1, q_n = a_n q_(n-1) + q_(n-2), beginning behind the integer part.
    previous, current = 0, 1
    numerator, denominator = denominator, rest
    while denominator:
        quotient, rest = divmod(numerator, denominator)
        following = quotient * current + previous
        if following >= 1 << 53:
            break
        previous, current = current, following
        numerator, denominator = denominator, rest
    factor = ((1 << 53) - 1) // current
    # Several multiples of a small denominator have 53 bits; the smallest of them is nearest.
    while factor > 1 and (factor - 1) * current >= 1 << 52:
        factor -= 1
    return factor * current


def reduced(significand, exponent):
    """Quadrant and reduced argument of significand 2^exponent."""
    x = mpf(significand) * mpf(2) ** exponent
    turns = mp.nint(x / (mp.pi / 2))
    rest = x - turns * (mp.pi / 2)
    return int(turns % 4), rest


def cases():
    rows = []
    generator = random.Random(20)
    for biased in range(1036, 2047):
        exponent = biased - 1075
        significands = [1 << 52, (1 << 53) - 1, nearest_to_multiple(exponent)]
        assert 1 << 52 <= significands[2] < 1 << 53
        while len(significands) < 5:
            candidate = generator.getrandbits(52) | 1 << 52
            significands.append(candidate)
        for index, significand in enumerate(significands):
            quadrant, rest = reduced(significand, exponent)
            # Next to an odd multiple of pi/4 two quadrants are right: no such case.
            assert abs(abs(rest) - mp.pi / 4) > mpf(2) ** -24
            negative = index % 2 == 1
            sign = -1 if negative else 1
            head = real64(sign * rest)
            tail = real64(sign * rest - head)
            pattern = negative << 63 | biased << 52 | (significand & ((1 << 52) - 1))
            rows += [pattern, sign * quadrant % 4, bits64(head), bits64(tail)]
    # The double that is nearest of all to a multiple of pi/2.
    assert nearest_to_multiple(797) == 6381956970095103
    return rows


emit(
    "tests/unit/reduction_cases.h",
    "reduction_case_tables.py",
    [
        Table(
            "reductionCases",
            "std::uint64_t",
            cases(),
            "For every biased exponent from 1036 to 2046 both ends of the binary order, the argument in it that is\n"
            "nearest to a multiple of pi/2 (by continued fractions), and random ones; the second and fourth negative.\n"
            "Patterns of x, quadrant, and the exact reduced argument as a head and a tail, good to 2^-106.",
        )
    ],
    "Cases of the large-argument reduction.",
)
