#!/usr/bin/env python3
"""Tables of the trigonometric functions, their inverses and the large-argument reduction."""
import mpmath
from mpmath import mp, mpf

from tablegen import Table, bits64, emit, from_bits64, multiple, nearest, real64, truncated_multiple

mp.prec = 1600  # the pieces of 4/pi reach down to 2^-1200 of it


def sin_cos_rows(rows):
    """cosTail, sinHead, sinTail, cosHead of B = 2 pi j/rows for j = 0 .. rows - 1.

    cosHead is the signed power of two nearest to cos B, so that its product with the reduced argument is exact.
    """
    quarter = rows // 4
    for j in range(rows):
        angle = 2 * mp.pi * j / rows
        cosine = mpf(0) if j % (2 * quarter) == quarter else mpmath.cos(angle)
        sine = mpf(0) if j % (2 * quarter) == 0 else mpmath.sin(angle)
        head = mpf(0)
        if cosine:
            power = mpf(2) ** mpmath.floor(mpmath.log(abs(cosine), 2) + mpf(2) ** -200)
            head = mpmath.sign(cosine) * (power if abs(cosine) - power < 2 * power - abs(cosine) else 2 * power)
        sin_head = real64(sine)
        row = [real64(cosine - head), sin_head, nearest(sine - sin_head, 24), head]
        assert abs(row[0] + row[3] - cosine) <= mpf("1.4e-17")
        assert abs(row[1] + row[2] - sine) <= mpf("1.6e-24")
        yield row


def flat(rows):
    return [value for row in rows for value in row]


def sin_cos_tables():
    """The rows of 64 steps a turn, the same with the signs of zero of the element paths, and those of 128 steps."""
    rows = list(sin_cos_rows(64))
    assert rows[0] == [0, 0, 0, 1]
    assert [bits64(v) for v in rows[1]] == [
        0xBF73B92E176D6D31,
        0x3FB917A6BC29B42C,
        0xBC3E2718E0000000,
        0x3FF0000000000000,
    ]
    assert [row[3] for row in rows[:16]] == [1] * 8 + [0.5] * 5 + [0.25] * 2 + [0.125]
    for j in (8, 24, 40, 56):
        assert abs(rows[j][3]) == 0.5
    lane = [list(row) for row in rows]
    lane[16][3] = lane[48][3] = lane[48][0] = -0.0

    fine = list(sin_cos_rows(128))
    assert fine[1] == [
        mpf(float.fromhex(v)) for v in ("-0x1.3bc390d250439p-10", "0x1.91f65f10dd814p-5", "-0x1.912bdp-61", "1.0")
    ]
    for j in (15, 49, 79, 113):
        assert abs(fine[j][3]) == 0.5
    assert {abs(row[3]) for row in fine} == {0, 0.0625, 0.125, 0.25, 0.5, 1}
    fine[32][3] = -0.0
    return rows, lane, fine


def four_over_pi_chunks():
    """4/pi 2^200 cut into 48 pieces of 25 bits, each truncated to a multiple of 2^(201 - 25k), behind an entry 0.0."""
    rest = 4 / mp.pi * mpf(2) ** 200
    chunks = [mpf(0)]
    for k in range(1, 49):
        chunks.append(truncated_multiple(rest, 201 - 25 * k))
        rest -= chunks[-1]
    assert [bits64(v) for v in chunks[1:4]] == [0x4C745F3060000000, 0x4AEB939100000000, 0x494529FC20000000]
    assert bits64(chunks[48]) == 0x02E1BF1EC0000000
    assert rest < mpf(2) ** -999
    return chunks


def taylor(angle, pole):
    """Taylor coefficients c_0 .. c_15 of tan(B + r) in r; with `pole`, of tan(B + r) + 1/(B - pi/2 + r)."""
    order = 16
    if not pole:
        # f' = 1 + f^2
        c = [mpmath.tan(angle)]
        for n in range(order - 1):
            square = sum(c[i] * c[n - i] for i in range(n + 1))
            c.append((square + (1 if n == 0 else 0)) / (n + 1))
        return c
    # With w = B - pi/2 + r the function is g(w) = 1/w - cot w, odd and regular at 0:
    # g = sum of |B_2k| 4^k/(2k)! w^(2k-1), radius of convergence pi.
    w = angle - mp.pi / 2
    c = [mpf(0)] * order
    for k in range(1, 600):
        power = 2 * k - 1
        weight = abs(mpmath.bernoulli(2 * k)) * mpf(4) ** k / mpmath.factorial(2 * k)
        for n in range(min(order, power + 1)):
            c[n] += weight * mpmath.binomial(power, n) * w ** (power - n)
    return c


def tan_rows():
    """Twenty entries for each B = j pi/32, j = 0 .. 31; the comment in the header says what they are."""
    rows = []
    for j in range(32):
        pole = 9 <= j <= 23
        # The expansions about pi - B and B differ in the signs of the even powers alone.
        mirrored = j > 16
        c = taylor(mp.pi * (32 - j if mirrored else j) / 32, pole)
        if j == 0 or j == 16:
            c = [mpf(0) if k % 2 == 0 else v for k, v in enumerate(c)]
        if mirrored:
            c = [-v if k % 2 == 0 else v for k, v in enumerate(c)]
        entries = [real64(c[k]) for k in (8, 9, 10, 2, 11, 3, 12, 4, 13, 5, 14, 6, 15, 7)]
        head = multiple(c[0], -24) if pole else real64(c[0])
        first = mpf(0 if pole else 1)
        entries += [head, real64(c[0] - head), first, real64(c[1] - first), mpf(1 if pole else 0)]
        entries.append(0xFFFFFFFFF8000000 if pole else 0)
        rows.append(entries)

    def expect(row, entry, text):
        assert rows[row][entry] == mpf(float.fromhex(text)), (row, entry)

    assert rows[0][14] == rows[0][15] == rows[16][14] == rows[16][15] == 0
    expect(0, 5, "0x1.5555555555555p-2")
    expect(0, 9, "0x1.1111111111111p-3")
    expect(0, 13, "0x1.ba1ba1ba1ba1cp-5")
    expect(1, 16, "1.0")
    expect(1, 17, "0x1.3dde2a8935dd9p-7")
    expect(16, 1, "0x1.66a8f2bf70ebep-16")
    expect(16, 5, "0x1.6c16c16c16c17p-6")
    assert rows[16][17] == real64(mpf(1) / 3)
    for i in range(1, 16):
        for k in range(19):
            sign = -1 if k in (0, 2, 3, 6, 7, 10, 11, 14, 15) else 1
            assert rows[16 + i][k] == sign * rows[16 - i][k], (i, k)
    # The two expansions of tan must meet: a check of the sum over the Bernoulli numbers.
    for j in (9, 12, 15):
        angle = mp.pi * j / 32
        total = sum(v * mpf(2) ** (-7 * k) for k, v in enumerate(taylor(angle, True)))
        exact = mpmath.tan(angle + mpf(2) ** -7) + 1 / (angle - mp.pi / 2 + mpf(2) ** -7)
        assert abs(total - exact) < mpf(2) ** -112
    return rows


class TanTable(Table):
    """Rows of twenty entries, the last of which is a bit mask and no number."""

    def text(self):
        lines = ["// " + line for line in self.comment.strip().splitlines()]
        lines.append(f"alignas(64) inline constexpr Real64 {self.name}[{20 * len(self.values)}] = {{")
        for row in self.values:
            numbers = [float(v) for v in row[:19]]
            assert all(mpf(n) == v for n, v in zip(numbers, row))
            shown = [n.hex() for n in numbers] + [f"std::bit_cast<Real64>(std::uint64_t{{0x{row[19]:016X}}})"]
            lines += ["    " + ", ".join(shown[start : start + 4]) + "," for start in range(0, 20, 4)]
        lines.append("};")
        return "\n".join(lines)


def atan_pairs():
    """arctan c as a head of 26 bits and the rest."""
    pairs = []
    for i in range(114):
        value = mpmath.atan(mpf(2) ** (i // 2 - 3) * (mpf("1.25") + mpf("0.5") * (i % 2)))
        head = nearest(value, 26)
        tail = real64(value - head)
        assert abs(head + tail - value) <= mpf(2) ** -80
        pairs.append((head, tail))

    def expect(row, head, tail):
        assert pairs[row] == (mpf(float.fromhex(head)), mpf(float.fromhex(tail))), row

    expect(0, "0x1.3d6eee8p-3", "0x1.8cc4d8b0d1d86p-32")
    expect(3, "0x1.a64eecp-2", "0x1.e611fe5b6427dp-29")
    expect(113, "0x1.921fb58p+0", "-0x1.dde9740145fccp-27")
    return pairs


def atan_rows():
    """Scale, head and tail of the five intervals of the arctangent, the interval of the largest values first."""
    scale = [mpf(v) for v in ("1", "1.5", "1", "0.5", "0")]
    exact = [mp.pi / 2, mpmath.atan(mpf("1.5")), mp.pi / 4, mpmath.atan(mpf("0.5")), mpf(0)]
    head = [real64(v) for v in exact]
    tail = [real64(v - h) for v, h in zip(exact, head)]
    patterns = [0x3FF921FB54442D18, 0x3FEF730BD281F69B, 0x3FE921FB54442D18, 0x3FDDAC670561BB4F, 0]
    assert head == [from_bits64(p) for p in patterns]
    patterns = [0x3C91A62633145C07, 0x3C7007887AF0CBBD, 0x3C81A62633145C07, 0x3C7A2B7F222F65E2, 0]
    assert tail == [from_bits64(p) for p in patterns]
    return scale, head, tail


ROW = (
    "One row is cosTail, sinHead, sinTail, cosHead: cosHead is the signed power of two nearest to cos B, cosTail the\n"
    "rest of cos B; sinHead is sin B, sinTail its rest to 24 bits."
)
table, lane_table, fine_table = sin_cos_tables()

emit(
    "src/tables/sin_cos_table.h",
    "trig_tables.py",
    [
        Table("sinCosTable", "Real64", flat(table), "64 rows, row j for B = j pi/32.\n" + ROW),
    ],
    "Sines and cosines at 64 steps a turn.",
)

emit(
    "src/trig/sin_cos_tables.h",
    "trig_tables.py",
    [
        Table(
            "cosTable",
            "Real64",
            flat(table[16:] + table[:16]),
            "sinCosTable rotated by a quarter turn: row j is row (j + 16) mod 64, so that the steps of the sine\n"
            "give the cosine.",
        ),
        Table(
            "sinCosElementTable",
            "Real64",
            flat(lane_table),
            "sinCosTable as the element paths read it; rows 16 and 48 differ in the signs of their zeros.",
        ),
        Table("sinCosTable128", "Real64", flat(fine_table), "128 rows, row j for B = j pi/64.\n" + ROW),
    ],
    "Sines and cosines, copies and the finer table of the joint function.",
)

emit(
    "src/trig/reduction_table.h",
    "trig_tables.py",
    [
        Table(
            "fourOverPiChunks",
            "Real64",
            four_over_pi_chunks(),
            "Entries 1 to 48 cut 4/pi 2^200 into pieces of 25 bits: entry k is what the entries before it leave,\n"
            "truncated to a multiple of 2^(201 - 25k). Entry 0 stands in front of the first piece.",
        )
    ],
    "4/pi for the reduction of large arguments.",
)

emit(
    "src/trig/tan_table.h",
    "trig_tables.py",
    [
        TanTable(
            "tanRows",
            "Real64",
            tan_rows(),
            "32 rows of twenty entries, row j for B = j pi/32. With c_k the Taylor coefficients in r of tan(B + r) -\n"
            "in rows 9 to 23, near the pole, of tan(B + r) + 1/(B - pi/2 + r) - the entries are:\n"
            "0 c8, 1 c9, 2 c10, 3 c2, 4 c11, 5 c3, 6 c12, 7 c4, 8 c13, 9 c5, 10 c14, 11 c6, 12 c15, 13 c7;\n"
            "14 c0 (in rows 9 to 23 a multiple of 2^-24), 15 the rest of c0, 16 and 17 c1 as two addends;\n"
            "18 the weight of the reciprocal, 19 the bit mask that keeps the reciprocal's head or clears it.\n"
            "The relative error of the tangent is below 2^-58.5 on |r| <= pi/64.",
        )
    ],
    "Expansions of the tangent over one period.",
    includes=("<bit>", "<cstdint>"),
)

scale, head, tail = atan_rows()
emit(
    "src/trig/atan_tables.h",
    "trig_tables.py",
    [
        Table("atanScale", "Real64", scale, "Centre c of interval i, 0 the interval of the largest values.", 5),
        Table(
            "atanMask",
            "std::uint64_t",
            [0] + [2**64 - 1] * 4,
            "All ones where numerator and denominator keep |x| and 1, zero in interval 0, where t = -1/|x|.",
            5,
        ),
        Table("atanTail", "Real64", tail, "Rest of the arctangent of the centre.", 5),
        Table("atanHead", "Real64", head, "Arctangent of the centre, pi/2 in interval 0.", 5),
    ],
    "Intervals of the arctangent.",
)

emit(
    "src/trig/atan_pair_table.h",
    "trig_tables.py",
    [
        Table(
            "atanPairTable",
            "Real64",
            flat(atan_pairs()),
            "114 rows of head and tail of arctan c, c = 2^(floor(i/2) - 3) (1.25 + 0.5 (i mod 2));\n"
            "the head has 26 bits.",
            2,
        )
    ],
    "Arctangents in two parts for the careful two-argument arctangent.",
)
