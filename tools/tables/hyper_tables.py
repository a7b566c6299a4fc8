#!/usr/bin/env python3
"""Tables of the hyperbolic functions and their inverses.

The rows of tanh are fitted by Sollya, which must be on the PATH.
"""
import subprocess

import mpmath
from mpmath import mpf

from tablegen import PRECISION, Table, bits64, emit, from_bits32, from_bits64, multiple, real64, truncated

GENERATOR = "hyper_tables.py"
POWERS = 64


def from_hex(text):
    return mpf(float.fromhex(text))


# The powers of two between 1 and 2.


def power(j):
    """2^(j/64); index 64 belongs to the negated index 0 and stands for 1."""
    return mpf(2) ** (mpf(j % POWERS) / POWERS)


def exp_pair(j):
    """Head of 45 significand bits and tail of 2^(j/64)."""
    head = truncated(power(j), 45)
    return head, real64(power(j) - head)


exp_table = [real64(power(j)) for j in range(POWERS + 1)]
exp_pairs = [exp_pair(j) for j in range(POWERS + 1)]

assert exp_table[0] == exp_table[POWERS] == 1
assert bits64(exp_pairs[1][0]) == 0x3FF02C9A3E778000
assert exp_pairs[1][1] == from_hex("0x1.83b9bdf2b293ep-46")
assert bits64(exp_pairs[32][0]) == 0x3FF6A09E667F3B00
assert exp_pairs[POWERS] == exp_pairs[0] == (1, 0)
assert all(bits64(head) & 0xFF == 0 for head, _ in exp_pairs)
assert all(abs(head + tail - power(j)) < mpf("3e-30") for j, (head, tail) in enumerate(exp_pairs))


# The fits of tanh. Every fit is the polynomial of least relative error on its interval, at high precision; the
# coefficients are rounded to nearest afterwards, one by one.

SOLLYA_HEAD = """
display = hexadecimal!;
verbosity = 0!;
prec = 300!;
roundingwarnings = off!;
rationalmode = off!;
procedure show(p, first, last) {
    var k;
    for k from first to last do { print(coeff(p, k)); };
    print("end");
};
"""


class Fits:
    """Collects the fits to make, so that one run of Sollya does them all."""

    def __init__(self):
        self.script = [SOLLYA_HEAD]
        self.names = []

    def add(self, name, commands, first, last):
        """`commands` leave the fit in `p`; its coefficients `first` to `last` are kept under `name`."""
        self.script.append(f"{commands}\nshow(p, {first}, {last});")
        self.names.append(name)

    def run(self):
        done = subprocess.run(["sollya", "--warnonstderr"], input="\n".join(self.script) + "\nquit;\n",
                              capture_output=True, text=True, check=True)
        blocks = done.stdout.split("end\n")
        assert len(blocks) == len(self.names) + 1, done.stdout + done.stderr
        return {name: [number(line) for line in block.split("\n") if line.strip()]
                for name, block in zip(self.names, blocks)}


def number(text):
    """A hexadecimal number of any length, as Sollya writes it."""
    sign = -1 if text.startswith("-") else 1
    digits, _, exponent = text.lstrip("-").partition("p")
    whole, _, fraction = digits.removeprefix("0x").partition(".")
    return sign * mpf(int(whole + fraction, 16)) * mpf(2) ** (int(exponent or 0) - 4 * len(fraction))


def exact(value):
    """An exact Sollya expression of a value with few bits."""
    numerator, denominator = float(value).as_integer_ratio()
    return f"({numerator}/{denominator})"


QUALITY = "2^(-100)"
ROWS32, ROWS64 = 27, 60
LAST32, LAST64 = ROWS32 - 2, ROWS64 - 2     # the last rows with a fit; behind them tanh is 1

# Row 0 and the lower half of row 25 of the short table stand as they are; the rest of row 25 is fitted to them.
ROW0_32 = [from_bits64(bits) for bits in (
    0x0000000000000000, 0x3FF000000006A31D, 0xBE6DEFDE92C4F79B, 0xBFD5553F7294F0DD, 0xBF276CBDCCCDB701,
    0x3FC16BE24561FB19, 0xBF945BC4A4EAA3AF)]
# The second-order coefficient of row 0 of the long table, all but zero, is sensitive to how far a fit reaches down.
ROW0_64_SECOND = from_hex("-0x1.97dead79668d3p-46")
ROW25_32 = [mpf(0.9975820321463517), mpf(0.0015078285922746656), mpf(-0.0003930435469050952)]


def edge32(r):
    return from_bits32(0x3DE00000 + r * 0x200000)


def edge64(r):
    return from_bits64((0x3FBE0000 + r * 0x20000) << 32)


def centre64(r):
    return (edge64(r) + edge64(r + 1)) / 2


fits = Fits()
fits.add(("32f", 0), f"p = remez(1, 5, [2^(-80); 1/8], x/tanh(x), {QUALITY});", 0, 5)
for r in range(1, LAST32):
    fits.add(("32f", r), f"p = remez(1, 6, [{exact(edge32(r))}; {exact(edge32(r + 1))}], 1/tanh(x), {QUALITY});", 0, 6)
low = " + ".join(f"{exact(c)}*x^{k}" for k, c in enumerate(ROW25_32))
fits.add(("32f", LAST32), f"p = remez((tanh(x) - ({low}))/tanh(x), [|3, 4, 5, 6|], "
         f"[{exact(edge32(LAST32))}; {exact(edge32(LAST32 + 1))}], 1/tanh(x), {QUALITY});", 3, 6)
fits.add(("64f", 0), f"p = remez(1, 9, [2^(-80); 1/8], x/tanh(x), {QUALITY});", 0, 9)
for r in range(1, LAST64 + 1):
    c = exact(centre64(r))
    fits.add(("64f", r), f"p = remez(1, 10, [{exact(edge64(r))} - {c}; {exact(edge64(r + 1))} - {c}], "
             f"1/tanh(x + {c}), {QUALITY});", 0, 10)
fitted = fits.run()


def close(value, wanted, tolerance):
    return abs(value / wanted - 1) < mpf(tolerance)


def row32(r):
    if r == 0:
        coefficients = ROW0_32
    elif r < LAST32:
        coefficients = [real64(c) for c in fitted["32f", r]]
    elif r == LAST32:
        coefficients = ROW25_32 + [real64(c) for c in fitted["32f", r]]
    else:
        coefficients = [mpf(1)] + [mpf(0)] * 6
    return coefficients + [mpf(0)]


def row64(r):
    if r > LAST64:
        return [mpf(0), mpf(1)] + [mpf(0)] * 11 + [mpf(1), mpf(0), mpf(0)]
    value, *rest = [mpf(0)] * (r == 0) + fitted["64f", r]
    head = real64(value)
    rest = [real64(c) for c in rest]
    if r == 0:
        assert close(rest[1], ROW0_64_SECOND, "1e-7")
        rest[1] = ROW0_64_SECOND
    centre = centre64(r) if r else mpf(0)
    return [real64(value - head), head] + rest + [-centre, mpf(1), mpf(0), mpf(0)]


rows32 = [row32(r) for r in range(ROWS32)]
rows64 = [row64(r) for r in range(ROWS64)]

# The fits as a whole: what they leave against tanh on a grid of each row.


def fit_error(polynomial, low, high, steps=64):
    points = [low + (high - low) * i / steps for i in range(1, steps + 1)]
    return max(abs(polynomial(x) / mpmath.tanh(x) - 1) for x in points)


def value32(r):
    return lambda x: mpmath.polyval(rows32[r][6::-1], x)


def value64(r):
    row = rows64[r]
    return lambda x: row[0] + (row[1] + mpmath.polyval(row[11:1:-1] + [0], x + row[12]))


mpmath.mp.prec = 120
for r in range(LAST32 + 1):
    assert fit_error(value32(r), edge32(r) if r else mpf(0), edge32(r + 1)) < mpf(2) ** -30
for r in range(LAST64 + 1):
    assert fit_error(value64(r), edge64(r) if r else mpf(0), edge64(r + 1)) < mpf(2) ** (-58 if r else -54.9)
mpmath.mp.prec = PRECISION

assert all(close(value, wanted, "6e-3") for value, wanted in zip(fitted["32f", 0], ROW0_32[1:]))
assert rows64[0][:3] == [0, 0, 1] and rows64[0][4] == from_hex("-0x1.555555553af3cp-2") and rows64[0][12] == 0
assert rows64[1][12] == from_hex("-0x1.1p-3") and rows64[1][1] == from_hex("0x1.0e6973998da48p-3")
assert rows64[1][0] == from_hex("0x1.708a564fad29ap-60")
assert rows64[ROWS64 - 1][:13] == [0, 1] + [0] * 11
assert rows32[ROWS32 - 1] == [1] + [0] * 7
assert edge32(LAST32 + 1) == 10 and edge64(LAST64 + 1) == 20

ALL = 0xFFFFFFFFFFFFFFFF
SIGN = 0x8000000000000000
tanh_select = [[ALL, 0, 0], [0, ALL, SIGN], [0, 0, ALL]]

emit(
    "src/hyper/sinh_cosh_tables.h",
    GENERATOR,
    [
        Table(
            "expTable64",
            "Real64",
            exp_table,
            "2^(j/64) to nearest; entry 64 serves the negated index 0 and is 1, not 2, as the exponent has the carry.",
        ),
        Table(
            "expPairTable",
            "Real64",
            sum(([head, tail] for head, tail in exp_pairs), []),
            "2^(j/64) as a head cut to 45 bits and a tail, one pair a row; row 64 repeats row 0.",
            2,
        ),
    ],
    "Powers of two of the hyperbolic sine and cosine.",
)
emit(
    "src/hyper/tanh_tables.h",
    GENERATOR,
    [
        Table(
            "tanhRows32",
            "Real64",
            sum(rows32, []),
            "27 rows of eight: the coefficients c0 to c6 of tanh in |x|, and a zero.\n"
            "Row 0 holds up to 0.125, rows 1 to 25 a quarter of a binade each up to 10, row 26 is 1.\n"
            "Minimax, relative error below 2^-30.",
            8,
        ),
        Table(
            "tanhRows64",
            "Real64",
            sum(rows64, []),
            "60 rows of sixteen: tail and head of tanh at the centre, ten coefficients in d = |x| - centre from the\n"
            "first power up, minus the centre, 1, and two zeros. Row 0 holds up to 0.125, rows 1 to 58 an eighth of a\n"
            "binade each up to 20, row 59 is 1. Minimax, relative error below 2^-58, in row 0 2^-54.9.",
            8,
        ),
        Table(
            "tanhSelect",
            "std::uint64_t",
            sum((masks + [0] for masks in tanh_select), []),
            "Masks of a finished lane: of the polynomial's result, of the constant 1 and of the argument, and a zero.\n"
            "The rows are the classes finite, infinity and NaN.",
            4,
        ),
    ],
    "Interval polynomials of the hyperbolic tangent.",
)

# The logarithm of the inverse functions: ln m = -ln c + ln(c m) with c near 1/m.

LOG_ROWS = 256
LN2_HEAD = from_bits64(0x3FE62E42FEFA3800)
LN2_TAIL = from_bits64(0x3D2EF35793C76730)


def reciprocal(i):
    """A reciprocal of eleven bits for the middle of interval i of [1, 2)."""
    return multiple(1 / (1 + (i + mpf(1) / 2) / LOG_ROWS), -11)


def log_row(i):
    c = reciprocal(i)
    head = multiple(-mpmath.log(c), -42)
    return [c * mpf(2) ** 1023, head, real64(-mpmath.log(c) - head), mpf(0)]


log_rows = [log_row(i) for i in range(LOG_ROWS)]

assert LN2_HEAD == multiple(LN2_HEAD, -42) and real64(mpmath.log(2) - LN2_HEAD) == LN2_TAIL
for i in range(LOG_ROWS):
    assert mpf(1) / 2 <= reciprocal(i) < 1
    assert max(abs(reciprocal(i) * (1 + mpf(i + end) / LOG_ROWS) - 1) for end in (0, 1)) < mpf("0.0024")

emit(
    "src/hyper/reciprocal_log_table.h",
    GENERATOR,
    [
        Table(
            "reciprocalLogTable",
            "Real64",
            sum(log_rows, []),
            "Rows of four for the intervals of [1, 2) that the first eight significand bits name: c near 1/m, a\n"
            "multiple of 2^-11, times 2^1023, so that its pattern less the exponent field of 2^k m is that of 2^-k c;\n"
            "-ln c as a multiple of 2^-42, and a tail; a zero. |c m - 1| stays below 0.0024.",
            4,
        )
    ],
    "Reciprocals and their logarithms of the inverse hyperbolic functions.",
)
