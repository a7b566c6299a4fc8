#!/usr/bin/env python3
"""Seeds of the square roots."""
import mpmath
from mpmath import mpf

from tablegen import Table, emit, multiple


def inv_root_seed():
    """1/sqrt at the left edge of 512 intervals of [1, 4), rounded to multiples of 2^-11."""
    for i in range(512):
        m = (1 + mpf(i % 256) / 256) * (2 if i >= 256 else 1)
        yield multiple(1 / mpmath.sqrt(m), -11)


emit(
    "src/tables/inv_root_seed.h",
    "root_tables.py",
    [
        Table(
            "InvRootSeed",
            "Real64",
            inv_root_seed(),
            "1/sqrt(m) at the left edge of interval i of [1, 4), m = 1 + (i mod 256)/256, doubled from i = 256 on,\n"
            "to a multiple of 2^-11. The index is the odd bit of the exponent times 256 plus eight fraction bits.",
            8,
        )
    ],
    "Seeds of the multiplicative square roots.",
)
