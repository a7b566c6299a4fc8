#!/usr/bin/env python3
"""Tables of the exponentials, logarithms and powers.

Every entry follows a rule (a value and the way it is cut or rounded); the asserts hold landmark entries.
"""
from mpmath import log, mpf

from tablegen import (
    Table,
    bits32,
    bits64,
    emit,
    from_bits64,
    multiple,
    nearest,
    real32,
    real64,
    truncated,
    truncated_multiple,
)

GENERATOR = "explog_tables.py"
LN2 = log(mpf(2))
LN10 = log(mpf(10))
TINY = mpf(2) ** -200  # what is below stands for zero: a logarithm of exactly 1 computed in high precision


def log2(value):
    return log(value) / LN2


def log10(value):
    return log(value) / LN10


def cleaned(value):
    return mpf(0) if abs(value) < TINY else value


def flat(entries):
    return [value for entry in entries for value in entry]


def patterns32(entry):
    return tuple(bits32(value) for value in entry)


def patterns64(entry):
    return tuple(bits64(value) for value in entry)


def low_bits_clear64(value, count):
    return bits64(value) & ((1 << count) - 1) == 0


# --- powers of two -----------------------------------------------------------------------------------------------


def root_of_two(j, n):
    return mpf(2) ** (mpf(j) / n)


def exp32_entry(j):
    exact = root_of_two(j, 128)
    hi = truncated_multiple(exact, -23)
    return hi, real32((exact - hi) / hi)


def exp64_entry(j):
    exact = root_of_two(j, 64)
    hi = truncated_multiple(exact, -44)
    return hi, real64(exact - hi)


def expm1_entry(position):
    j = position if position < 64 else position - 128
    exact = root_of_two(j, 128)
    head = nearest(exact, 33)
    assert low_bits_clear64(head, 20)
    return real64(exact - head), head


def pow_exp_entry(j):
    exact = root_of_two(j, 128)
    hi = real64(exact)
    return hi, real64(exact - hi)


exp32 = [exp32_entry(j) for j in range(128)]
exp64 = [exp64_entry(j) for j in range(64)]
expm1 = [expm1_entry(position) for position in range(128)]
pow_exp = [pow_exp_entry(j) for j in range(128)]
pow_exp_mant = [bits64(hi) & 0x000FFFFFFFFFFFFF for hi, _ in pow_exp]

assert exp32[0] == (1, 0)
assert patterns32(exp32[1]) == (0x3F80B1ED, 0x331ED669)
assert patterns32(exp32[127]) == (0x3FFE9E11, 0x32B9F83C)
assert exp64[0] == (1, 0)
assert patterns64(exp64[1]) == (0x3FF02C9A3E778000, 0x3D183B9BDF2B293E)
assert patterns64(exp64[63]) == (0x3FFFA7C1819E9000, 0x3D2B05D214FCE965)
assert all(low_bits_clear64(hi, 8) for hi, _ in exp64)
assert expm1[0] == (0, 1)
assert pow_exp[0] == (1, 0) and pow_exp_mant[0] == 0

# --- logarithms --------------------------------------------------------------------------------------------------


def ln32_entry(i):
    x = 1 + mpf(i) / 64
    c = multiple(1 / x, -8)
    exact = cleaned(-log(c))
    hi = truncated_multiple(exact, -14)
    return real32(hi), real32(exact - hi), c, mpf(0)


def ln64_entry(i):
    x = 1 + mpf(i) / 512
    c = multiple(1 / x, -23)
    exact = cleaned(-log(c) - (LN2 if i >= 256 else 0))
    hi = truncated(exact, 25)
    return c, c, hi, real64(exact - hi)


K10 = mpf("0.43359375")


def log10_32_entry(i):
    x = 1 + mpf(i) / 128
    c = truncated(K10 / x, 8)
    exact = cleaned(log10(K10 / c) - (log10(mpf(2)) if i >= 64 else 0))
    hi = truncated(exact, 9)
    assert bits32(hi) & 0x7FFF == 0
    return c, c, hi, real32(exact - hi)


def log10_64_entry(i):
    x = 1 + mpf(i) / 512
    c = K10 * truncated_multiple(1 / x, -13)
    exact = cleaned(log10(K10 / c))
    hi = truncated_multiple(truncated(exact, 42), -44)
    assert low_bits_clear64(hi, 11)
    return c, c, hi, real64(exact - hi)


ln32 = [ln32_entry(i) for i in range(65)]
ln64 = [ln64_entry(i) for i in range(513)]
log10_32 = [log10_32_entry(i) for i in range(129)]
log10_64 = [log10_64_entry(i) for i in range(513)]

assert ln32[0] == (0, 0, 1, 0)
assert patterns32(ln32[64]) == (0x3F317000, 0x3805FDF4, bits32(0.5), 0)
assert ln64[0] == (1, 1, 0, 0)
assert ln64[512] == (0.5, 0.5, 0, 0)
assert log10_32[0] == (K10, K10, 0, 0) and bits32(K10) == 0x3EDE0000
assert patterns32(log10_32[128]) == (0x3E5E0000, 0x3E5E0000, 0, 0)
assert log10_32[127] == log10_32[128]
assert log10_64[0] == (K10, K10, 0, 0) and bits64(K10) == 0x3FDBC00000000000
assert patterns64(log10_64[512]) == (0x3FCBC00000000000, 0x3FCBC00000000000, 0x3FD34413509F7800, 0x3D1FEF311F12B358)

# --- logarithm of one plus ---------------------------------------------------------------------------------------

log1p_recip = [multiple(1 / (1 + (i + mpf(1) / 2) / 256), -11) for i in range(256)]


def log1p_entry(i):
    exact = -log(log1p_recip[i])
    high = truncated(exact, 21)
    assert low_bits_clear64(high, 32)
    return real64(exact - high), high


log1p_logs = [log1p_entry(i) for i in range(256)]



# The binade from 11/16 on: 160 intervals of 2^-9 up to 1, then 96 of 2^-8. The two beside 1 have the reciprocal 1.
def log1p_short_entry(i):
    below = i < 160
    width = mpf(2) ** (-9 if below else -8)
    middle = 1 + width * (i - 160 + mpf(1) / 2)
    reciprocal = mpf(1) if i in (159, 160) else nearest(1 / middle, 20)
    return reciprocal, real64(cleaned(-log(reciprocal)))


log1p_short = [log1p_short_entry(i) for i in range(256)]

assert log1p_short[159] == log1p_short[160] == (1, 0)
assert log1p_recip[:4] == [0.998046875, 0.994140625, 0.990234375, 0.986328125]
assert log1p_recip[-3:] == [0.50244140625, 0.50146484375, 0.50048828125]
assert log1p_logs[0] == (6.245253888266704e-10, 0.0019550342112779617)
assert log1p_logs[255] == (4.7462229024114625e-07, 0.6921706199645996)

# --- powers ------------------------------------------------------------------------------------------------------

K2 = from_bits64(0x3FF7154740000000)


def pow_ln32_entry(i):
    x = 1 + mpf(i) / 256
    return real64(log(x)), real64(1 / x)


def pow_rcp_entry(i):
    c = nearest(K2 / (1 + mpf(i) / 1024), 23)
    assert low_bits_clear64(c, 30)
    return c


pow_rcp = [pow_rcp_entry(i) for i in range(1025)]


def pow_log_entry(i):
    exact = cleaned(log2(K2 / pow_rcp[i]) - (1 if i >= 512 else 0))
    hi = nearest(exact, 21)
    assert low_bits_clear64(hi, 32)
    return hi, real64(exact - hi)


pow_ln32 = [pow_ln32_entry(i) for i in range(257)]
pow_log = [pow_log_entry(i) for i in range(1025)]

assert pow_ln32[0] == (0, 1) and pow_ln32[256] == (real64(LN2), 0.5)
assert pow_rcp[0] == K2 and pow_rcp[1024] == K2 / 2
assert pow_log[0] == (0, 0) and pow_log[1024] == (0, 0)

# --- headers -----------------------------------------------------------------------------------------------------

emit(
    "src/tables/exp32_table.h",
    GENERATOR,
    [
        Table(
            "Exp32Table",
            "Real32",
            flat(exp32),
            "2^(j/128), j = 0 .. 127, entry j at [2j]: hi, cut to 23 fraction bits, then lo, what hi misses, relative to\n"
            "hi: 2^(j/128) = hi (1 + lo).",
            8,
        )
    ],
    "Powers of two for the single precision exponentials.",
)

emit(
    "src/explog/exp_tables.h",
    GENERATOR,
    [
        Table(
            "Exp64Table",
            "Real64",
            flat(exp64),
            "2^(j/64), j = 0 .. 63, entry j at [2j]: hi, cut to 44 fraction bits, then lo, what hi misses, absolute:\n"
            "2^(j/64) = hi + lo.",
        )
    ],
    "Powers of two for the double precision exponential.",
)

emit(
    "src/explog/expm1_tables.h",
    GENERATOR,
    [
        Table(
            "expm1Table",
            "Real64",
            flat(expm1),
            "2^(j/128), j = -64 .. 63, entry j at [2 (j AND 127)], so the low seven bits of an integer are its index:\n"
            "positions 0 .. 63 hold j = 0 .. 63, positions 64 .. 127 hold j = -64 .. -1. An entry is the tail, then the\n"
            "head, the nearest value with the low 20 bits zero: 2^(j/128) = head + tail.",
        )
    ],
    "Powers of two for the exponential minus one.",
)

emit(
    "src/explog/log_tables.h",
    GENERATOR,
    [
        Table(
            "Ln32Table",
            "Real32",
            flat(ln32),
            "hi, lo, c, zero for x = 1 + i/64, i = 0 .. 64, entry i at [4i]: c is 1/x to eight fraction bits,\n"
            "hi + lo = -ln c, hi cut to a multiple of 2^-14.",
        ),
        Table(
            "Ln64Table",
            "Real64",
            flat(ln64),
            "c, c, hi, lo for x = 1 + i/512, i = 0 .. 512, entry i at [4i]: c is 1/x to 23 fraction bits,\n"
            "hi + lo = -ln c, less ln 2 from i = 256 on, hi cut to 25 significant bits.",
        ),
        Table(
            "Log10Table32",
            "Real32",
            flat(log10_32),
            "c, c, hi, lo for x = 1 + i/128, i = 0 .. 128, entry i at [4i]: c is K/x cut to eight significant bits,\n"
            "K = 0.43359375, hi + lo = log10(K/c), less log10 2 from i = 64 on, hi cut to 9 significant bits.",
        ),
        Table(
            "Log10Table64",
            "Real64",
            flat(log10_64),
            "c, c, hi, lo for x = 1 + i/512, i = 0 .. 512, entry i at [4i]: c is K times 1/x cut to a multiple of 2^-13,\n"
            "K = 0.43359375, hi + lo = log10(K/c), hi cut to a multiple of 2^-44 with the low 11 bits zero.",
        ),
    ],
    "Reciprocals and their logarithms for the natural and decimal logarithms.",
)

emit(
    "src/explog/log1p_tables.h",
    GENERATOR,
    [
        Table(
            "log1pRecip",
            "Real32",
            log1p_recip,
            "1/(1 + (i + 0.5)/256) to the nearest multiple of 2^-11.",
            8,
        ),
        Table(
            "log1pLogs",
            "Real64",
            flat(log1p_logs),
            "-ln log1pRecip[i] = low + high, entry i at [2i]: low, then high, cut so that its low 32 bits are zero.",
        ),
        Table(
            "log1pShort",
            "Real64",
            flat(log1p_short),
            "1/m to 20 bits and its -ln, entry i at [2i], m the middle of an interval of 2^-9 from 11/16 to 1, then of 2^-8\n"
            "to 11/8. The intervals beside 1 have exactly 1 and 0.",
        ),
    ],
    "Reciprocals and their logarithms for the logarithm of one plus.",
)

emit(
    "src/explog/pow_tables.h",
    GENERATOR,
    [
        Table(
            "PowLn32",
            "Real64",
            flat(pow_ln32),
            "ln1p, rcp for i = 0 .. 256, entry i at [2i]: ln(1 + i/256) and 1/(1 + i/256), each to nearest.",
        ),
        Table(
            "PowExpMant",
            "std::uint64_t",
            pow_exp_mant,
            "Fraction field of 2^(j/128) rounded to nearest; sign and exponent bits are zero.",
        ),
        Table(
            "PowRcp64",
            "Real64",
            pow_rcp,
            "c = K/(1 + i/1024), i = 0 .. 1024, nearest with the low 30 bits zero; K = 1.442694902420044 is the high part\n"
            "of log2 e.",
        ),
        Table(
            "PowLog64",
            "Real64",
            flat(pow_log),
            "log2(K/PowRcp64[i]), less 1 from i = 512 on, = hi + lo, entry i at [2i]: hi, nearest with the low 32 bits\n"
            "zero, then lo.",
        ),
        Table(
            "PowExp64",
            "Real64",
            flat(pow_exp),
            "2^(j/128), j = 0 .. 127, entry j at [2j]: hi to nearest, then lo, what hi misses, absolute.",
        ),
    ],
    "Logarithms and powers of two for the general power.",
)
