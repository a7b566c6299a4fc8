#!/usr/bin/env python3
"""Tables of the square roots, the cube roots and the fixed rational powers."""
import mpmath
from mpmath import mpf

from tablegen import Table, bits64, emit, from_bits64, multiple, nearest, real64


def root_of(value, n):
    return mpmath.root(mpf(value), n)


# Square roots -------------------------------------------------------------------------------------------------

def inverse_root_starts():
    """1/sqrt at the left edge of 512 intervals of [1, 4), rounded to multiples of 2^-11."""
    for i in range(512):
        m = (1 + mpf(i % 256) / 256) * (2 if i >= 256 else 1)
        yield multiple(1 / mpmath.sqrt(m), -11)


starts = list(inverse_root_starts())
assert starts[:4] == [mpf("1.0"), mpf("0.998046875"), mpf("0.99609375"), mpf("0.994140625")]
assert starts[256] == mpf("0.70703125")
assert starts[511] == mpf("0.50048828125")
assert all(nearest(entry, 12) == entry for entry in starts)

emit(
    "src/tables/inverse_root_starts.h",
    "root_tables.py",
    [
        Table(
            "InverseRootStarts",
            "Real64",
            starts,
            "1/sqrt(m) at the left edge of interval i of [1, 4), m = 1 + (i mod 256)/256, doubled from i = 256 on,\n"
            "to a multiple of 2^-11. The index is the odd bit of the exponent times 256 plus eight fraction bits.",
            8,
        )
    ],
    "Starts of the multiplicative square roots.",
)


# Cube roots ---------------------------------------------------------------------------------------------------

# 2^(2/3), 1, 2^(1/3): what a biased exponent 3q, 3q + 1, 3q + 2 of binary32 leaves, as 127 = 3 * 42 + 1.
residue = [real64(root_of(4, 3)), mpf(1), real64(root_of(2, 3))]
assert [bits64(value) for value in residue] == [0x3FF965FEA53D6E3D, 0x3FF0000000000000, 0x3FF428A2F98D728B]


def scale_pairs():
    """Row r0 + 4 r1 holds the factors of the lower and the upper lane; rows 3 and 7 belong to no pair."""
    for row in range(11):
        lower, upper = row % 4, row // 4
        yield from [residue[lower], residue[upper]] if lower < 3 else [mpf(0), mpf(0)]


def middle(i):
    """c_i, the middle of interval i of [1, 2)."""
    return 1 + (mpf(i) + mpf(1) / 2) / 32


def head_and_tail(power):
    """The nearest binary64 of (2^r c_i)^power at 32 r + i, and that of the rest."""
    exact = [mpmath.power(2**r * middle(i), power) for r in range(3) for i in range(32)]
    head = [real64(value) for value in exact]
    tail = [real64(value - top) for value, top in zip(exact, head)]
    for value, top, rest in zip(exact, head, tail):
        assert abs(top + rest - value) < mpf(2) ** -100 * value
    return head, tail


cbrt_head, cbrt_tail = head_and_tail(mpf(1) / 3)
inv_cbrt_head, inv_cbrt_tail = head_and_tail(mpf(-1) / 3)

emit(
    "src/root/cbrt_tables.h",
    "root_tables.py",
    [
        Table(
            "cbrtScalePairs",
            "Real64",
            scale_pairs(),
            "The factors that two lanes' exponents leave after the division by three, as pairs: row r0 + 4 r1 holds\n"
            "the factor of r0 and that of r1, with 0 -> 2^(2/3), 1 -> 1, 2 -> 2^(1/3). Rows 3 and 7 are empty.",
            2,
        ),
        Table(
            "cbrtRecip",
            "Real64",
            [real64(-1 / middle(i)) for i in range(32)],
            "-1/c_i with c_i = 1 + (i + 0.5)/32, the middle of interval i of [1, 2).",
        ),
        Table("cbrtHead", "Real64", cbrt_head, "(2^r c_i)^(1/3) at 32 r + i, r from 0 to 2, to the nearest Real64."),
        Table("cbrtTail", "Real64", cbrt_tail, "What cbrtHead leaves of its exact value, to the nearest Real64."),
        Table(
            "invCbrtHead", "Real64", inv_cbrt_head, "(2^r c_i)^(-1/3) at 32 r + i, r from 0 to 2, to the nearest Real64."
        ),
        Table("invCbrtTail", "Real64", inv_cbrt_tail, "What invCbrtHead leaves of its exact value, to the nearest Real64."),
    ],
    "Tables of the cube root and its reciprocal.",
)


# The power 2/3 ------------------------------------------------------------------------------------------------

SEED_TIMES_1024 = [
    1024, 1012, 1000, 992, 984, 972, 964, 956, 948, 940, 932, 924, 920, 912, 904, 900,
    892, 888, 880, 876, 868, 864, 860, 852, 848, 844, 836, 832, 828, 824, 820, 816,
]  # fmt: skip
assert len(SEED_TIMES_1024) == 32
for i, entry in enumerate(SEED_TIMES_1024):
    # All entries are multiples of 4, so at most 9 bits; 1 - m t^3 stays small on the entry's whole interval.
    assert entry % 4 == 0
    for m in (1 + mpf(i) / 32, 1 + mpf(i + 1) / 32):
        assert abs(1 - m * (mpf(entry) / 1024) ** 3) < mpf("0.04"), i


def cube_root_two():
    """1, 2^(1/3) and 2^(2/3), each as a head of at most 27 bits and the nearest binary64 of the rest."""
    for power, head, tail in [
        (0, 0x3FF0000000000000, 0x0000000000000000),
        (1, 0x3FF428A2F8000000, 0x3E38D728AE223DDB),
        (2, 0x3FF965FEA0000000, 0x3E54F5B8F20AC166),
    ]:
        exact, top = root_of(2**power, 3), from_bits64(head)
        assert nearest(top, 27) == top
        assert bits64(real64(exact - top)) == tail, hex(bits64(real64(exact - top)))
        yield from [top, from_bits64(tail)]


emit(
    "src/root/pow2o3_tables.h",
    "root_tables.py",
    [
        Table(
            "pow2o3Seed",
            "Real64",
            [mpf(entry) / 1024 for entry in SEED_TIMES_1024],
            "Short numbers near (1 + i/32)^(-1/3): t times t, and its product with a short head, are exact.",
            8,
        ),
        Table("cubeRootTwo", "Real64", cube_root_two(), "Head and tail of 2^(r/3) at 2 r and 2 r + 1, r from 0 to 2.", 2),
    ],
    "Tables of the power 2/3.",
)
