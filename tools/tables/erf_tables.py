#!/usr/bin/env python3
"""Tables of erf and erfc."""
import gmpy2
from gmpy2 import mpfr
from mpmath import mpf

import minimax
from minimax import to_mpf, to_mpfr
from tablegen import Table, emit, from_bits32, from_bits64, real64, truncated

OVERLAP = mpfr("1e-4")  # the rows of erfRows32 reach a little beyond their intervals


def erfcx(x):
    return gmpy2.erfc(x) * gmpy2.exp(x * x)


def number(value):
    """A short number as an mpfr."""
    return mpfr(float(value))


def nearest_double(value):
    return to_mpfr(real64(to_mpf(value)))


def fitted(function, powers, low, high, centre):
    """Minimax coefficients in x - centre on [low, high], not yet rounded."""
    target = minimax.interpolant(function, low, high, centre)
    solution, error = minimax.fit(target, powers, low - centre, high - centre)
    return [to_mpf(c) for c in solution], to_mpf(error)


def check_digits(values, texts, tolerance="5e-9"):
    for value, text in zip(values, texts):
        assert abs(value - mpf(text)) <= abs(mpf(text)) * mpf(tolerance), (value, text)


def check_all(values, text, tolerance="5e-9"):
    check_digits(values, text.split(), tolerance)


def erf_rows32():
    bounds = [number(from_bits32(0x3DE00000 + j * 0x200000)) for j in range(22)]
    rows = []
    for j in range(21):
        if j == 0:
            # erf(x)/x, so that a zero stays a zero and small results keep their relative accuracy
            end = bounds[1] * mpfr("1.001")
            coefficients, error = fitted(lambda x: gmpy2.erf(x) / x, range(6), mpfr(0), end, mpfr(0))
            coefficients = [mpf(0)] + coefficients
        else:
            coefficients, error = fitted(gmpy2.erf, range(7), bounds[j] - OVERLAP, bounds[j + 1] + OVERLAP, mpfr(0))
        assert error < mpf("8e-10"), (j, error)
        rows.append([real64(c) for c in coefficients] + [mpf(0)])
    rows.append([mpf(1)] + [mpf(0)] * 7)
    assert bounds[21] == 4
    check_all(rows[0], "0 1.128379167 -2.840555272e-08 -0.3761237365 -9.062286213e-05 0.1142385738 -0.009995348259",
              "2e-8")
    check_all(rows[13], "0.03172129815 0.9269296853 0.543088757 -1.171883152 0.6618694616 -0.164323423 0.01529816577")
    check_all(rows[20], "0.9237745872 0.1161246771 -0.0738307308 0.02507231615 -0.004795909268 0.0004898886351"
                        " -2.087476602e-05", "3e-8")
    return rows


def high_word(word):
    return number(from_bits64(word << 32))


def erf_rows64():
    bounds = [high_word(0x3FBE0000 + j * 0x20000) for j in range(46)]
    assert bounds[1] == 0.125 and bounds[45] == 6
    rows = []
    for j in range(45):
        if j == 0:
            c, error = fitted(lambda x: gmpy2.erf(x) / x, [0] + list(range(2, 10)), mpfr(0), bounds[1], mpfr(0))
            row = [mpf(0), mpf(0), real64(c[0]), mpf(0)] + [real64(v) for v in c[1:]]
            shift = mpf(0)
        else:
            centre = (bounds[j] + bounds[j + 1]) / 2
            c, error = fitted(gmpy2.erf, range(11), bounds[j], bounds[j + 1], centre)
            value = real64(c[0])
            row = [real64(c[0] - value), value] + [real64(v) for v in c[1:]]
            shift = to_mpf(-centre)
        assert error < mpf("4e-17"), (j, error)
        rows.append(row + [shift] + [mpf(0)] * 3)
    rows.append([mpf(0), mpf(1)] + [mpf(0)] * 14)
    check_all(rows[0][2:3], "1.1283792", "1e-7")
    return rows


def erfc_rows32():
    bounds = [number(from_bits32(0x3E600000 + j * 0x200000)) for j in range(23)]
    limit = number(from_bits32(0x4120DDFC))
    rows = []
    for j in range(23):
        low, high = (mpfr(0), bounds[1]) if j == 0 else (bounds[j], bounds[j + 1] if j < 22 else limit)
        if j == 21:
            # From 9.1946 on results are subnormal and keep few bits: the row is fitted where they are whole.
            high = mpfr("9.25")
        coefficients, error = fitted(erfcx, range(7), low, high, low)
        assert error < mpf("3e-9"), (j, error)
        rows.append([real64(c) for c in coefficients] + [to_mpf(low)])
    for j, bound, c0, c1, centre in (
        (0, None, "1", "-1.12838", 0),
        (1, 0.25, "0.770347", "-0.743206", 0.25),
        (10, 1.25, "0.367823", "-0.208822", 1.25),
        (22, 10, "0.056141", "-0.00555931", 10),
    ):
        check_digits(rows[j], (c0, c1), "2e-6")
        assert rows[j][7] == centre and (bound is None or bounds[j] == bound)
    return rows


def erfc_rows64():
    """Rows of 16 and their centres."""
    limit = mpfr("27.2261")
    bounds = [high_word(0x3FCC0000 + j * 0x40000) for j in range(28)]
    assert bounds[1] == 0.25 and bounds[27] == 24
    rows, centres = [], []
    for j in range(28):
        if j == 0:
            low, high, centre = mpfr(0), bounds[1], mpfr(0)
        else:
            low, high = bounds[j], high_word(0x3FCC0000 + (j + 1) * 0x40000)
            centre = (low + high) / 2
        high = min(high, limit)
        c, error = fitted(erfcx, range(14), low, high, centre)
        assert error < mpf("5e-18"), (j, error)
        # The lower coefficients make good for the rounding of the upper ones.
        exact = [to_mpfr(v) for v in c]
        c = [to_mpf(v) for v in minimax.round_from_top(exact, low - centre, high - centre, 2, nearest_double)]
        value, slope = real64(c[0]), real64(c[1])
        rows.append([real64(c[0] - value), value, real64(c[1] - slope), slope] + c[2:])
        centres += [to_mpf(centre), mpf(0)]
    return rows, centres


def pow2_fraction64():
    for j in range(128):
        value = mpf(2) ** (mpf(j) / 128)
        high = truncated(value, 26)
        yield from (high, real64(value - high))


def flat(rows):
    return [value for row in rows for value in row]


erfc64, centres64 = erfc_rows64()

emit(
    "src/erf/erf_tables.h",
    "erf_tables.py",
    [
        Table(
            "erfRows32",
            "Real64",
            flat(erf_rows32()),
            "22 rows of 8, row j from |x| with the bits 0x3DE00000 + j * 0x200000 on, row 0 from 0: c0 to c6 of a\n"
            "polynomial in |x|, and a zero. Minimax, relative error below 8e-10. Row 21, from 4 on, is 1.",
        ),
        Table(
            "erfRows64",
            "Real64",
            flat(erf_rows64()),
            "46 rows of 16, row j from |x| with the high word 0x3FBE0000 + j * 0x20000 on, row 0 from 0: the low part\n"
            "of c1, c1 to c11 of a polynomial in t = |x| + shift, the shift, and three zeros. Row 45, from 6 on, is 1.\n"
            "Minimax but for the rounding of the coefficients, relative error below 4e-17.",
        ),
        Table(
            "erfcRows32",
            "Real64",
            flat(erfc_rows32()),
            "23 rows of 8, row j from |x| with the bits 0x3E600000 + j * 0x200000 on, row 0 from 0: c0 to c6 of a\n"
            "polynomial in z = |x| - centre for erfc(|x|) exp(x^2), and the centre. Row 22 ends at 10.0542.\n"
            "Minimax, relative error below 3e-9.",
        ),
        Table(
            "erfcRows64",
            "Real64",
            flat(erfc64),
            "28 rows of 16, row j from |x| with the high word 0x3FCC0000 + j * 0x40000 on, row 0 from 0: the value at\n"
            "the centre as low and high part, the slope as low and high part, then the coefficients of z^2 to z^13\n"
            "of a polynomial in z = |x| - centre for erfc(|x|) exp(x^2). Row 27 ends at 27.2261. Minimax,\n"
            "relative error below 5e-18.",
        ),
        Table("erfcCentres64", "Real64", centres64, "The centres of the rows of erfcRows64, each before a zero.", 8),
        Table(
            "pow2Fraction32",
            "Real64",
            [real64(mpf(2) ** (mpf(j) / 128)) for j in range(128)],
            "2^(j/128) for j = 0 to 127.",
        ),
        Table(
            "pow2Fraction64",
            "Real64",
            pow2_fraction64(),
            "2^(j/128) for j = 0 to 127 as pairs: the value cut to 26 significant bits, and the rest.",
        ),
    ],
    "Tables of erf and erfc.",
)
