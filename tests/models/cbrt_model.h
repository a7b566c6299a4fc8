// Models of Cbrt and InvCbrt. They run under round to nearest with subnormals honoured.
#pragma once

#include "oktvm_types.h"
#include "root/cbrt_tables.h"
#include "tests/models/bits.h"
#include "tests/models/ordered.h"

#include <cstdint>

namespace okt::model {

namespace cuberoot {

enum class Kind { cbrt, invCbrt };

inline Real64 horner(const std::uint64_t* highestFirst, int count, Real64 x) {
    Real64 sum = fromBits(highestFirst[0]);
    for (int i = 1; i < count; ++i) sum = sum * x + fromBits(highestFirst[i]);
    return sum;
}

// On [1, 2).
inline Real64 polynomial32(Kind kind, Real64 m) {
    static constexpr std::uint64_t cbrt[8] = {
        0x3F5A10607D4457D4, 0xBF93ED90F77A7B1E, 0x3FBABD8E9D19E871, 0xBFD4B881FC1AEEB2,
        0x3FE4A3F9820694DC, 0xBFEC7734539D8F25, 0x3FF0E47E0EAE9FA1, 0x3FDB42648692AF71,
    };
    static constexpr std::uint64_t invCbrt[9] = {
        0x3F70A2AB3C7B388F, 0xBFAC3BF3EA4A9829, 0x3FD5365A036DECD4, 0xBFF28BA6AC8D2726, 0x4004DA6802F9B5A3,
        0xC00F77BD2A84C7A9, 0x40102F6503F2B5C3, 0xC0072244182A44C4, 0x40006875C4B4938F,
    };
    return kind == Kind::cbrt ? horner(cbrt, 8, m) : horner(invCbrt, 9, m);
}

// t and S of the steps: the result is t times S with the sign, or with the multiplier of a flagged block.
struct Parts32 {
    Real32 t;
    Real32 S;
};

inline Parts32 parts32(Kind kind, Real32 magnitude) {
    const std::uint32_t b = asBits(magnitude);
    const Real64 m = fromBits((b & 0x007FFFFFU) | 0x3F800000U);
    std::uint32_t exponent = b & 0x7F800000;
    if (kind == Kind::invCbrt) exponent = 0x7F000000 - exponent;
    const std::uint32_t high = exponent >> 16;          // e shifted left by 7
    const std::uint32_t product = high * 0xAAAB >> 16;  // 2/3 of it
    const std::uint32_t r = product >> 4 & 3;           // e modulo 3
    const std::uint32_t third = (product << 16) >> 1;   // the lane shifted right by one
    const std::uint32_t field = ((third >> 16) + 0x2A60) & 0x7F80;
    const Real32 S = fromBits(field << 16);

    const Real64 p = polynomial32(kind, m);
    const Real64 t = p * tables::cbrtScalePairs[2 * r];  // row r0 = r, r1 = 0: the lower lane's factor
    return {static_cast<Real32>(t), S};
}

inline bool flagged32(std::uint32_t b) { return b > 0x7F7FFFFF || b < 0x00800000; }

inline Real32 main32(Kind kind, Real32 x) {
    const std::uint32_t sign = asBits(x) & 0x80000000U;
    const Parts32 parts = parts32(kind, fromBits(asBits(x) & 0x7FFFFFFFU));
    return parts.t * fromBits(asBits(parts.S) | sign);
}

inline Real32 blended32(Kind kind, Real32 x) {
    const std::uint32_t sign = asBits(x) & 0x80000000U;
    const std::uint32_t b = asBits(x) & 0x7FFFFFFFU;
    const bool big = b > 0x7F7FFFFF;
    const bool small = b < 0x00800000;

    Real32 value = fromBits(b);
    std::uint32_t multiplier = sign | 0x3F800000U;
    if (big) {
        value = 1.0F;
        multiplier = asBits(x);
    } else if (small && b != 0) {
        value = value * fromBits(0x7E800000U);                                 // 2^126
        multiplier = sign | (kind == Kind::cbrt ? 0x2A800000U : 0x54800000U);  // 2^-42 or 2^42
    } else if (small) {
        multiplier = sign;
    }
    if (kind == Kind::invCbrt) {
        if (b == 0) multiplier = sign | 0x7F800000U;
        if (b == 0x7F800000) multiplier = sign;
    }

    const Parts32 parts = parts32(kind, value);
    return parts.t * (parts.S * fromBits(multiplier));
}

// The neighbours of an element decide whether it is blended; an ordinary element gets the same bits either way.
inline OktStatus run32(Kind kind, const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    std::int32_t i = 0;
    while (i < len) {
        const int lanes = len - i >= 4 ? 4 : 1;
        bool flagged = false;
        for (int lane = 0; lane < lanes; ++lane) flagged = flagged || flagged32(asBits(src[i + lane]) & 0x7FFFFFFF);
        for (int lane = 0; lane < lanes; ++lane) {
            const Real32 x = src[i + lane];
            dst[i + lane] = flagged ? blended32(kind, x) : main32(kind, x);
            if (kind == Kind::invCbrt && (asBits(x) & 0x7FFFFFFF) == 0) status = oktStatusSingularity;
        }
        i += lanes;
    }
    return status;
}

// From order 8 down to order 1.
inline Real64 series64(Kind kind, Real64 u) {
    static constexpr std::uint64_t cbrt[8] = {
        0xBF9036DE5C9CC8E7, 0x3F93750AD588F115, 0xBF98090D6221A247, 0x3F9EE7113506AC12,
        0xBFA511E8D2B3183B, 0x3FAF9ADD3C0CA458, 0xBFBC71C71C71C71C, 0x3FD5555555555555,
    };
    static constexpr std::uint64_t invCbrt[8] = {
        0x3FB791D4F50A7B47, 0xBFB9B33CA7A65562, 0x3FBC67C9DD3D11BB, 0xBFBFF4C33F90EF5F,
        0x3FC26FABB85D0196, 0xBFC61F9ADD3C0CA3, 0x3FCC71C71C71C71C, 0xBFD5555555555555,
    };
    return kind == Kind::cbrt ? horner(cbrt, 8, u) : horner(invCbrt, 8, u);
}

// Steps 2 to 6, for a normal number of either sign.
inline Real64 main64(Kind kind, Real64 x) {
    const std::uint64_t pattern = asBits(x);
    const std::uint64_t sign = pattern & 0x8000000000000000;
    const std::uint64_t fraction = pattern & 0x000FFFFFFFFFFFFF;
    const std::uint64_t i = fraction >> 47;
    const Real64 minusM = fromBits(fraction | 0xBFF0000000000000);
    const Real64 minusC = fromBits((i << 47) | 0xBFF0400000000000);
    const Real64 u = tables::cbrtRecip[i] * (minusM - minusC);

    const std::uint32_t e = static_cast<std::uint32_t>(pattern >> 52 & 0x7FF);
    const std::uint32_t q = e * 0x1556 >> 14;
    const std::uint32_t r = e - 3 * q;
    const std::uint64_t field = kind == Kind::cbrt ? q + 682 : 1364 - q;
    const Real64 S = fromBits(field << 52 | sign);

    const Real64 head = (kind == Kind::cbrt ? tables::cbrtHead : tables::invCbrtHead)[32 * r + i];
    const Real64 tail = (kind == Kind::cbrt ? tables::cbrtTail : tables::invCbrtTail)[32 * r + i];
    const Real64 h = head * S;
    const Real64 t = tail * S;
    return (series64(kind, u) * (h * u) + t) + h;
}

// The steps of an ordinary element are those of the main path, so pairs need no distinction.
inline Real64 element64(Kind kind, Real64 x, OktStatus& status) {
    const std::uint64_t sign = asBits(x) & 0x8000000000000000;
    const std::uint64_t b = asBits(x) & 0x7FFFFFFFFFFFFFFF;
    const std::uint64_t e = b >> 52;
    if (e == 0 && b == 0) {
        if (kind == Kind::cbrt) return ordered::add(x, x);
        status = oktStatusSingularity;
        return fromBits(sign | 0x7FF0000000000000);
    }
    if (e == 0) {
        const Real64 up = fromBits(std::uint64_t{0x7E30000000000000});                         // 2^996
        const Real64 down = fromBits(kind == Kind::cbrt ? std::uint64_t{0x2B30000000000000}    // 2^-332
                                                        : std::uint64_t{0x54B0000000000000});  // 2^332
        return main64(kind, x * up) * down;
    }
    if (e == 0x7FF) {
        if (kind == Kind::invCbrt && b == 0x7FF0000000000000) return fromBits(sign);
        return ordered::add(x, x);
    }
    return main64(kind, x);
}

inline OktStatus run64(Kind kind, const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < len; ++i) dst[i] = element64(kind, src[i], status);
    return status;
}

}  // namespace cuberoot

[[gnu::noinline]] inline OktStatus Cbrt_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return cuberoot::run32(cuberoot::Kind::cbrt, src, dst, len);
}
[[gnu::noinline]] inline OktStatus InvCbrt_32f(const Real32* src, Real32* dst, std::int32_t len) {
    return cuberoot::run32(cuberoot::Kind::invCbrt, src, dst, len);
}
[[gnu::noinline]] inline OktStatus Cbrt_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return cuberoot::run64(cuberoot::Kind::cbrt, src, dst, len);
}
[[gnu::noinline]] inline OktStatus InvCbrt_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return cuberoot::run64(cuberoot::Kind::invCbrt, src, dst, len);
}

}  // namespace okt::model
