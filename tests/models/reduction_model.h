// Model of the reduction of large arguments to [-pi/4, pi/4].
#pragma once

#include "tests/models/bits.h"
#include "trig/reduction_table.h"

namespace okt::model {

// x = head + tail + (q + 4m) pi/2; returns q, 0 to 3. x is finite, its biased exponent at least 1036.
inline int reduceQuarterPi(Real64 x, Real64& headOut, Real64& tailOut) {
    const std::uint64_t pattern = asBits(x);
    const std::uint32_t s = std::uint32_t(pattern >> 63);
    const Real64 a = fromBits(pattern & 0x7FFFFFFFFFFFFFFFu);
    const int e = int((pattern >> 52) & 0x7FF);
    const Real64 g = s ? -1.0 : 1.0;

    if (e <= 1052) {
        const Real64 fourOverPi = fromBits(std::uint64_t{0x3FF45F306DC9C883});
        const std::uint64_t yBits = asBits(a * fourOverPi);
        const std::uint32_t upper = std::uint32_t(yBits >> 32);
        const std::uint32_t lower = std::uint32_t(yBits);
        const std::uint32_t significand = (((upper & 0x000FFFFFu) | 0x00100000u) << 11) | (lower >> 21);
        const std::uint32_t n = significand >> ((30u - (upper >> 20)) & 31u);
        const Real64 N = Real64(std::int32_t(n + (n & 1u)));
        const int q = int(((1u - 2u * s) * ((n + 1u) >> 1)) & 3u);

        Real64 head, tail;
        if (e <= 1045) {
            const Real64 A1 = fromBits(std::uint64_t{0x3FE921FB54000000});
            const Real64 A2 = fromBits(std::uint64_t{0x3E010B4612000000});
            const Real64 A3 = fromBits(std::uint64_t{0xBC2676733C000000});
            const Real64 A4 = fromBits(std::uint64_t{0x3A61701B839A2520});
            const Real64 t = a - N * A1;
            Real64 p = N * A2;
            const Real64 u = t - p;
            const Real64 l1 = (t - u) - p;
            p = N * A3;
            const Real64 v = u - p;
            const Real64 l2 = (u - v) - p;
            head = v;
            tail = (l1 + l2) - N * A4;
        } else {
            const Real64 B1 = fromBits(std::uint64_t{0x3FE921FA00000000});
            const Real64 B2 = fromBits(std::uint64_t{0x3EA5444300000000});
            const Real64 B3 = fromBits(std::uint64_t{0xBD373DCA00000000});
            const Real64 B4 = fromBits(std::uint64_t{0xBBF3B39A00000000});
            const Real64 B5 = fromBits(std::uint64_t{0x3A845C06E0E68948});
            const Real64 t = a - N * B1;
            Real64 p = N * B2;
            const Real64 u = t - p;
            const Real64 l1 = (t - u) - p;
            p = N * B3;
            const Real64 v = u - p;
            const Real64 l2 = (u - v) - p;
            const Real64 l = l1 + l2;
            const Real64 w = v + l;
            const Real64 l3 = (v - w) + l;
            p = N * B4;
            const Real64 gg = w - p;
            const Real64 l4 = (w - gg) - p;
            head = gg;
            tail = (l3 + l4) - N * B5;
        }
        const Real64 H = head * g;
        const Real64 L = g * tail;
        headOut = H + L;
        tailOut = L + (H - (H + L));
        return q;
    }

    // Scale by 2^-200 and split.
    const std::uint64_t field = std::uint64_t((e - 200) & 0x7FF) << 52;
    const Real64 X = fromBits((pattern & 0x000FFFFFFFFFFFFFu) | field);
    const Real64 Xh = fromBits(asBits(X) & 0xFFFFFFFFF8000000u);
    const Real64 Xl = X - Xh;

    // The multiplication falls short of a division by 25: r runs from 1 to 25.
    const int d = e - 1052;
    const int i = (d * 83886) >> 21;
    const int r = d - 25 * i;
    const Real64* T = tables::fourOverPiChunks + i;

    // Top.
    const Real64 a1 = T[0] * Xl;
    const Real64 b1 = Xh * T[1];
    const Real64 s1 = a1 + b1;
    const Real64 c1 = b1 + (a1 - s1);
    const Real64 w = s1 + c1;
    const Real64 I = fromBits((asBits(w) >> (38 - r)) << (38 - r));
    const Real64 f = s1 - I;

    // Next terms.
    const Real64 d1 = T[1] * Xl;
    const Real64 s2 = f + d1;
    const Real64 h1 = (d1 + (f - s2)) + c1;
    const Real64 g1 = Xh * T[2];
    const Real64 s3 = s2 + g1;
    const Real64 u = (g1 + (s2 - s3)) + h1;
    const Real64 m = T[2] * Xl;
    const Real64 n1 = Xh * T[3];

    // Integer part, with the exponent's low bits standing in for the implicit bit.
    const Real64 Y = ((s3 + u) + m) + n1;
    const std::uint64_t yBits = asBits(Y);
    const unsigned sh = (51u - (std::uint32_t(yBits >> 32) >> 20)) & 63u;
    const std::uint32_t K = std::uint32_t(yBits >> sh);
    const Real64 Yi = fromBits((yBits >> sh) << sh);

    // Fraction.
    const Real64 oddCorrection[2] = {0.0, -1.0};
    Real64 z = s3 - Yi;
    const Real64 z2 = z + u;
    Real64 c = (z - z2) + u;
    z = z2 + oddCorrection[K & 1u];
    const int q = int(((1u - 2u * s) * ((K + 1u) >> 1)) & 3u);

    const Real64 terms[] = {
        m, n1, T[3] * Xl, Xh * T[4], T[4] * Xl, Xh * T[5], T[5] * Xl + Xh * T[6], T[6] * Xl + Xh * T[7],
    };
    for (const Real64 v : terms) {
        const Real64 next = z + v;
        c = (v + (z - next)) + c;
        z = next;
    }

    // Last term, and the head chopped.
    const Real64 splitFactor = fromBits(std::uint64_t{0x4198000000000000});
    const Real64 D = T[7] * Xl + Xh * T[8];
    const Real64 last = z + D;
    const Real64 zc = (last + last * splitFactor) - last * splitFactor;
    const Real64 wl = (D + (z - zc)) + c;

    // Times pi/4.
    const Real64 quarterPiHead = fromBits(std::uint64_t{0x3FE921FB40000000});
    const Real64 quarterPiTail = fromBits(std::uint64_t{0x3E64442D18469899});
    const Real64 L = quarterPiHead * wl + (zc + wl) * quarterPiTail;
    const Real64 P = zc * quarterPiHead;
    const Real64 R = P + L;
    const Real64 T2 = (P - R) + L;
    headOut = R * g;
    tailOut = g * T2;
    return q;
}

}  // namespace okt::model
