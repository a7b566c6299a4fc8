// Models of the natural and the decimal logarithm.
#pragma once

#include "explog/log_tables.h"
#include "explog_support.h"

namespace okt::model {

namespace ln32 {

using namespace explog;

inline constexpr Real32 high = real32(0x3F317000);
inline constexpr Real32 low = real32(0x3805FDF4);
inline constexpr Real32 a2 = real32(0xBF000000);
inline constexpr Real32 a3 = real32(0x3EAAAAAB);
inline constexpr Real32 a4 = real32(0xBE800000);

inline bool passes(Real32 x) { return asBits(x) - 0x800000U < 0x7F000000U; }

// `b` is a normal pattern; the logarithm is that of its value times 2^lift, near one when the mask says so.
inline Real32 steps(std::uint32_t b, std::int32_t lift, bool nearOne) {
    const std::uint32_t offset = (((b >> 13) & 0x3F8) + 8) & 0x7F0;
    const Real32* entry = &tables::Ln32Table[offset / 4];
    const Real32 hi = entry[0];
    const Real32 lo = entry[1];
    const Real32 c = entry[2];

    const Real32 m = fromBits((b & 0x007FFFFFU) | 0x3F800000U);
    const Real32 mh = fromBits(asBits(m) & 0x7FFFC000U);
    const Real32 ml = m - mh;
    const Real32 e = static_cast<Real32>(static_cast<std::int32_t>(b >> 23) - 127 + lift);

    const Real32 A = mh * c - 1.0F;
    const Real32 B = ml * c;
    const Real32 r = A + B;
    const Real32 S = e * high + hi;
    const Real32 T = S + A;
    const Real32 Q = e * low + lo;
    const Real32 poly = (r * r) * (a2 + r * (a3 + r * a4));
    return ((poly + Q) + (nearOne ? 0.0F : B)) + (T + (nearOne ? B : 0.0F));
}

inline Real32 mainPath(Real32 x) {
    const std::uint32_t b = asBits(x);
    return steps(b, 0, asSigned(b + 0x407E0000U) > 0x7FFC0000);
}

inline Real32 element(Real32 x, OktStatus& status) {
    if (passes(x)) return mainPath(x);

    const std::uint32_t b = asBits(x);
    const std::uint32_t magnitude = b & 0x7FFFFFFF;
    if (magnitude == 0) {
        status = oktStatusSingularity;
        return real32(0xFF800000);
    }
    if (b < 0x00800000) {
        const int p = static_cast<int>(std::bit_width(b)) - 1;
        const std::uint32_t normal = ((b << (23 - p)) ^ 0x00800000U) | (static_cast<std::uint32_t>(p + 1) << 23);
        return steps(normal, -23, false);
    }
    if (b != magnitude && magnitude <= 0x7F800000) {
        status = oktStatusDomain;
        return real32(0x7FFC0000);
    }
    return x;
}

}  // namespace ln32

inline OktStatus Ln_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    std::int32_t at = 0;
    while (at < len) {
        bool block = len - at >= 8;
        for (int lane = 0; lane < 8 && block; ++lane) block = ln32::passes(src[at + lane]);
        if (block) {
            for (int lane = 0; lane < 8; ++lane) dst[at + lane] = ln32::mainPath(src[at + lane]);
            at += 8;
            continue;
        }
        // Singly until whole blocks are left.
        do {
            dst[at] = ln32::element(src[at], status);
            ++at;
        } while ((len - at) % 8 != 0);
    }
    return status;
}

namespace log64 {

using namespace explog;

struct LnTraits {
    static constexpr Real64 high = real64(0x3FE62E42FEFA3800);
    static constexpr Real64 low = real64(0x3D2EF35793C76730);
    static constexpr Real64 origin = 1.0;
    static constexpr std::uint64_t highMask = 0x7FFFFFFF00000000;
    static constexpr std::uint32_t exponentOffset = 0x3FE7FC00;
    static constexpr Real64 subnormalCorrection = real64(0x404205966F2B4F12);
    static constexpr const Real64* table = tables::Ln64Table;

    static Real64 poly(Real64 r) {
        constexpr Real64 b2 = real64(0xBFDFFFFFFFFFFCA9);
        constexpr Real64 b3 = real64(0x3FD555555555512A);
        constexpr Real64 b4 = real64(0xBFD00000D588D052);
        constexpr Real64 b5 = real64(0x3FC9999B39037E04);
        return r * (r * (b2 + r * (b3 + r * (b4 + r * b5))));
    }
};

struct Log10Traits {
    static constexpr Real64 high = real64(0x3FD34413509F7800);
    static constexpr Real64 low = real64(0x3D1FEF311F12B358);
    static constexpr Real64 origin = real64(0x3FDBC00000000000);
    static constexpr std::uint64_t highMask = 0x7FFFFFFF80000000;
    static constexpr std::uint32_t exponentOffset = 0x3FF00000;
    static constexpr Real64 subnormalCorrection = real64(0x402F4E9F6303263E);
    static constexpr const Real64* table = tables::Log10Table64;

    static Real64 poly(Real64 r) {
        constexpr Real64 f1 = real64(0x3F5A7A6CBF2E4108);
        constexpr Real64 f2 = real64(0xBFF27AF2DC77AF28);
        constexpr Real64 f3 = real64(0x3FFC6A02DC962E0F);
        constexpr Real64 f4 = real64(0xC008930AAC7D7C50);
        constexpr Real64 f5 = real64(0x4016ABA0F9751EC1);
        return r * (f1 + r * (f2 + r * (f3 + r * (f4 + r * f5))));
    }
};

inline bool passes(Real64 x) { return asSigned(highWord(x) - 0x80100000U) < asSigned(0xFFE00000U); }

template <class Traits>
Real64 steps(Real64 x, Real64 correction) {
    const std::uint32_t h = highWord(x);
    const std::uint32_t offset = (((h & 0xFFC00) + 0x400) & 0x1FF800) >> 6;
    const Real64* entry = &Traits::table[offset / 8];
    const Real64 c = entry[0];
    const Real64 hi = entry[2];
    const Real64 lo = entry[3];

    const Real64 m = fromBits((asBits(x) & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000);
    const Real64 mh = fromBits(asBits(m) & Traits::highMask);
    const Real64 ml = m - mh;
    const Real64 e = static_cast<Real64>(asSigned(h - Traits::exponentOffset) >> 20);

    const Real64 A = mh * c - Traits::origin;
    const Real64 B = ml * c;
    const Real64 r = B + A;
    const Real64 S = Traits::high * e + hi;
    Real64 T = A + S;
    const Real64 Q = Traits::low * e + lo;
    Real64 rest = B;
    if (Q == 0.0) {
        T = T + B;
        rest = 0.0;
    }
    const Real64 sum = (Traits::poly(r) + Q) + rest;
    return (sum - correction) + T;
}

template <class Traits>
Real64 element(Real64 x, OktStatus& status) {
    if (passes(x)) return steps<Traits>(x, 0.0);

    const std::uint64_t magnitude = asBits(x) & 0x7FFFFFFFFFFFFFFF;
    if (magnitude > 0x7FF0000000000000) {
        dropped(opaque(x) * 1.0);
        return x;
    }
    if (asBits(x) == 0x7FF0000000000000) return x;
    if (magnitude != 0 && magnitude != asBits(x)) {
        status = oktStatusDomain;
        return real64(0xFFF8000000000000);
    }
    if (magnitude == 0) {
        status = oktStatusSingularity;
        return real64(0xFFF0000000000000);
    }
    return steps<Traits>(x * 0x1p52, Traits::subnormalCorrection);
}

template <class Traits>
OktStatus loop(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    std::int32_t at = 0;
    for (; at < (len & ~1); at += 2) {
        const bool block = passes(src[at]) && passes(src[at + 1]);
        for (int lane = 0; lane < 2; ++lane) {
            const Real64 x = src[at + lane];
            dst[at + lane] = block ? steps<Traits>(x, 0.0) : element<Traits>(x, status);
        }
    }
    for (; at < len; ++at) dst[at] = element<Traits>(src[at], status);
    return status;
}

}  // namespace log64

inline OktStatus Ln_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return log64::loop<log64::LnTraits>(src, dst, len);
}

inline OktStatus Log10_64f(const Real64* src, Real64* dst, std::int32_t len) {
    return log64::loop<log64::Log10Traits>(src, dst, len);
}

namespace log10_32 {

using namespace explog;

inline constexpr Real32 high = real32(0x3EA00000);
inline constexpr Real32 low = real32(0xBC3BECAF);
inline constexpr Real32 origin = real32(0x3EDE0000);
inline constexpr Real32 d1 = real32(0x3AD3D366);
inline constexpr Real32 d2 = real32(0xBF93D797);
inline constexpr Real32 d3 = real32(0x3FE3509F);
inline constexpr Real32 d4 = real32(0xC04498E8);
inline constexpr Real32 subnormalCorrection = real32(0x40DD8EDE);

inline bool passes(Real32 x) { return asSigned(asBits(x) - 0x80800000U) < asSigned(0xFF000000U); }

inline Real32 steps(Real32 x, Real32 correction) {
    const std::uint32_t b = asBits(x);
    const std::uint32_t offset = (((b & 0x7F8000) + 0x8000) & 0xFF0000) >> 12;
    const Real32* entry = &tables::Log10Table32[offset / 4];
    const Real32 c = entry[0];
    const Real32 hi = entry[2];
    const Real32 lo = entry[3];

    const Real32 m = fromBits((b & 0x007FFFFFU) | 0x3F800000U);
    const Real32 mh = fromBits(asBits(m) & 0xFFFF8000U);
    const Real32 ml = m - mh;
    const std::int32_t exponent = asSigned(b - 0x3F3F8000U) >> 23;
    const Real32 e = fromBits(0x4B400000U + static_cast<std::uint32_t>(exponent)) - 12582912.0F;

    const Real32 A = mh * c - origin;
    const Real32 B = ml * c;
    const Real32 r = B + A;
    const Real32 S = high * e + hi;
    Real32 T = A + S;
    const Real32 Q = low * e + lo;
    Real32 rest = B;
    if (Q == 0.0F) {
        T = T + B;
        rest = 0.0F;
    }
    const Real32 poly = r * (d1 + r * (d2 + r * (d3 + r * d4)));
    const Real32 sum = (poly + Q) + rest;
    return (sum - correction) + T;
}

inline Real32 element(Real32 x, OktStatus& status) {
    if (passes(x)) return steps(x, 0.0F);

    const std::uint32_t magnitude = asBits(x) & 0x7FFFFFFF;
    if (magnitude == 0) {
        status = oktStatusSingularity;
        return real32(0xFF800000);
    }
    if (magnitude > 0x7F800000) {
        dropped(opaque(x) * 1.0F);
        return x;
    }
    if (asBits(x) == 0x7F800000) return x;
    if (magnitude != asBits(x)) {
        status = oktStatusDomain;
        return real32(0xFFC00000);
    }
    return steps(x * 0x1p23F, subnormalCorrection);
}

}  // namespace log10_32

inline OktStatus Log10_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    std::int32_t at = 0;
    for (; at < (len & ~3); at += 4) {
        bool block = true;
        for (int lane = 0; lane < 4; ++lane) block = block && log10_32::passes(src[at + lane]);
        for (int lane = 0; lane < 4; ++lane) {
            const Real32 x = src[at + lane];
            dst[at + lane] = block ? log10_32::steps(x, 0.0F) : log10_32::element(x, status);
        }
    }
    for (; at < len; ++at) dst[at] = log10_32::element(src[at], status);
    return status;
}

}  // namespace okt::model
