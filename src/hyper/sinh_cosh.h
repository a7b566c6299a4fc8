// What the hyperbolic sine and cosine share: e^a/2 and e^-a/2 from one reduction n = 64k + j = round(a · 64/ln 2),
// by a table of 2^(j/64) and two exponents made from n by integer arithmetic.
#pragma once

#include "hyper/sinh_cosh_tables.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"
#include "lanes/real80.h"

namespace okt::sinh_cosh {

// ---------------------------------------------------------------------------------------------------------------------
// Real32, in Real80.

inline constexpr Real64 log2e = 0x1.71547652b82fep+0;
inline constexpr Real64 shift196608 = 196608.0;  // 3·2^16: a Real32 of this size has units of 1/64
inline constexpr std::uint32_t overflowLimit32 = 0x42B2D4FD;

struct Reduced32 {
    Real80 f;            // x log2 e - n/64
    Real80 plus, minus;  // 2^(n/64)/2, 2^(-n/64)/2
};

// 2^(k-1) of 64 k + j in the low bits: bits 6 to 16, with the exponent's bias, become the exponent field.
inline Real64 halfPowerOfTwo(std::uint32_t n) {
    return bits64(static_cast<std::uint64_t>((n + 0xFF80) & 0x1FFC0) << 46);
}

inline Reduced32 reduced(Real32 x) {
    const Real80 t = static_cast<Real80>(x) * log2e + shift196608;
    const Real32 w = static_cast<Real32>(t);  // the narrowing rounds to n/64; its pattern holds n
    const std::uint32_t n = asBits(w);
    const std::uint32_t j = n % 64;
    return {t - w, static_cast<Real80>(halfPowerOfTwo(n)) * tables::expTable64[j],
            static_cast<Real80>(halfPowerOfTwo(0 - n)) * tables::expTable64[64 - j]};
}

// Elements by fours: all of them by `steps`, then those that are no ordinary elements by `patch(x, result, status)`.
template <class Steps, class Patch>
inline void patchedLoop(const Real32* src, Real32* dst, std::int32_t len, const Steps& steps, const Patch& patch,
                        OktStatus& status) {
    std::int32_t i = 0;
    for (; i <= len - 4; i += 4) {
        Real32 x[4], result[4];
        for (int lane = 0; lane < 4; ++lane) x[lane] = loadElement(src + i + lane);
        for (int lane = 0; lane < 4; ++lane) result[lane] = steps(x[lane]);
        for (int lane = 0; lane < 4; ++lane) {
            patch(x[lane], result[lane], status);
            storeElement(dst + i + lane, result[lane]);
        }
    }
    for (; i < len; ++i) {
        const Real32 x = loadElement(src + i);
        Real32 result = steps(x);
        patch(x, result, status);
        storeElement(dst + i, result);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64.

struct Constants64 {
    Constant64 sixtyFourOverLn2 = 0x1.71547652b82fep+6;
    Constant64 roundShifter = 0x1.8p+52;     // the sum's low bits hold n
    Constant64 ln2Head64 = 0x1.62e42fefp-7;  // ln 2/64; short, so that its product with n is exact
    Constant64 ln2Tail64 = 0x1.473de6af278edp-40;
    // e^r = 1 + r + r^2 (w1 + w2 r + ...) on |r| <= ln 2/128, absolute error 2^-59.2; minimax on |r| <= 0.0055.
    Constant64 w1 = 0x1.fffffffffd97cp-2;
    Constant64 w2 = 0x1.55555555542a1p-3;
    Constant64 w3 = 0x1.555574bc3a1bep-5;
    Constant64 w4 = 0x1.1111276409c2cp-7;
    Pattern64 exponentBias = std::uint64_t{0xFF80};  // 1022·64
    Pattern64 exponentField = std::uint64_t{0x7FF0000000000000};
    Pattern64 magnitude = std::uint64_t{0x7FFFFFFFFFFFFFFF};
};
inline constexpr Constants64 constants64;

// The powers of two as head and tail, and the rest of the argument.
template <int N>
struct Reduced64 {
    F64<N> r;
    F64<N> plus, plusTail;    // 2^(n/64)/2
    F64<N> minus, minusTail;  // 2^(-n/64)/2
};

template <int N>
[[gnu::always_inline]] inline Reduced64<N> reduced(const Constants64& c, F64<N> a) {
    const F64<N> t = a * c.sixtyFourOverLn2 + c.roundShifter;
    const F64<N> m = t - c.roundShifter;
    const F64<N> r = (a - m * c.ln2Head64) - m * c.ln2Tail64;
    const U64<N> n = asBits(t), negated = U64<N>(0) - n;
    const auto [head, tail] = gatherPairsByLowBits<6, Real64>(tables::expPairTable, InMemory<std::uint64_t, N>(n));
    // Row 64 - j; for j = 0 that is a row like row 0.
    const auto [head2, tail2] =
        gatherPairsByLowBits<6, Real64>(tables::expPairTable, InMemory<std::uint64_t, N>(negated));
    const F64<N> power = asReal(((n + c.exponentBias) << 46) & c.exponentField);
    const F64<N> power2 = asReal(((negated + c.exponentBias) << 46) & c.exponentField);
    return {r, head * power, tail * power, head2 * power2, tail2 * power2};
}

// The bounds of the second pass, by the pattern of the magnitude.
inline constexpr std::uint32_t secondPass64 = 0x40862336;             // upper word
inline constexpr std::uint64_t scaledLimit64 = 0x40862336F49C3C50;    // 708.4018337446123
inline constexpr std::uint64_t unscaledLimit64 = 0x408633C378987900;  // 710.4704448615958
inline constexpr std::uint64_t overflowLimit64 = 0x408633CE8FB9F87E;  // 710.475860073944

// The magnitude of a result for a large argument, or for an infinity or a NaN (all ones); the caller puts the sign in.
// From 708.4018 on the powers that are scaled already are scaled once more: the result is an infinity, without a
// warning. In the last narrow range they are not.
inline std::uint64_t secondPass(Real64 magnitude, Real64 stored, OktStatus& status) {
    const std::uint64_t a = asBits(magnitude);
    if (a < scaledLimit64) return asBits(stored);
    if (isNaN(magnitude)) return ~std::uint64_t{0};
    if (a >= overflowLimit64) {
        if (isFinite(magnitude)) status = oktStatusOverflow;
        return Format<Real64>::infinity;
    }
    const Constants64& c = constants64;
    const auto [r, plus, plusTail, minus, minusTail] = reduced<1>(c, magnitude);
    F64<1> head = plus, tail = plusTail;
    if (a >= unscaledLimit64) {
        const F64<1> t = F64<1>(magnitude) * c.sixtyFourOverLn2 + c.roundShifter;
        const auto row = gatherPairsByLowBits<6, Real64>(tables::expPairTable, InMemory<std::uint64_t, 1>(asBits(t)));
        head = row.first;
        tail = row.second;
    }
    const F64<1> curve = ((((r * c.w4 + c.w3) * r + c.w2) * r + c.w1) * r) * r + r;
    return asBits((((curve * (head + tail) + tail) + head) * F64<1>(0x1p1023) * F64<1>(2.0)).raw);
}

}  // namespace okt::sinh_cosh
