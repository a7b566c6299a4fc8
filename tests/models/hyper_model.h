// Models of the hyperbolic functions and their inverses on real types.
#pragma once

#include "hyper/sinh_cosh_tables.h"
#include "hyper/tanh_tables.h"
#include "tests/models/bits.h"
#include "tests/models/ordered.h"
#include "tests/models/status_flag.h"

#include <limits>
#include <optional>

namespace okt::model {

namespace hyper {

constexpr Real32 real32(std::uint32_t pattern) { return fromBits(pattern); }
constexpr Real64 real64(std::uint64_t pattern) { return fromBits(pattern); }

inline std::uint32_t signBit(Real32 x) { return asBits(x) & 0x80000000u; }
inline std::uint64_t signBit(Real64 x) { return asBits(x) & 0x8000000000000000u; }
inline Real32 magnitude(Real32 x) { return fromBits(asBits(x) & 0x7FFFFFFFu); }
inline Real64 magnitude(Real64 x) { return fromBits(asBits(x) & 0x7FFFFFFFFFFFFFFFu); }
inline Real32 orBits(Real32 x, std::uint32_t bits) { return fromBits(asBits(x) | bits); }
inline Real64 orBits(Real64 x, std::uint64_t bits) { return fromBits(asBits(x) | bits); }
inline std::uint32_t upperWord(Real64 x) { return static_cast<std::uint32_t>(asBits(x) >> 32); }

inline constexpr Real32 infinity32 = std::numeric_limits<Real32>::infinity();
inline constexpr Real64 infinity64 = std::numeric_limits<Real64>::infinity();

}  // namespace hyper

// ---------------------------------------------------------------------------------------------------------------
// Sinh and Cosh on 32f, in 80-bit arithmetic.

namespace hyper32 {

using namespace hyper;
using Real80 = long double;

inline constexpr Real64 log2e = real64(0x3FF71547652B82FE);
inline constexpr Real64 shift196608 = real64(0x4108000000000000);
inline constexpr std::uint32_t sinhLimit32 = 0x42B2D4FD;
inline constexpr std::uint32_t sinhTiny32 = 0x399D4952;
inline constexpr std::uint32_t coshTiny32 = 0x00800000;
inline constexpr std::uint32_t infinityPattern = 0x7F800000;

// e^x/2 and e^-x/2 are 2^f P and 2^-f M.
struct Reduced {
    Real80 f;
    Real80 P;
    Real80 M;
};

inline Real64 powerOfTwo(std::uint32_t n) {
    const std::uint32_t upper = ((n + 0xFF80u) & 0x1FFC0u) << 14;
    return fromBits(std::uint64_t{upper} << 32);
}

inline Reduced reduced(Real32 x) {
    const Real80 u = static_cast<Real80>(x) * static_cast<Real80>(log2e);
    const Real80 t = u + static_cast<Real80>(shift196608);
    const Real32 w = static_cast<Real32>(t);
    const std::uint32_t d = asBits(w);
    const std::uint32_t j = d & 63u;
    const Real80 f = t - static_cast<Real80>(w);
    const Real80 P = static_cast<Real80>(powerOfTwo(d)) * static_cast<Real80>(tables::expTable64[j]);
    const Real80 M = static_cast<Real80>(powerOfTwo(0u - d)) * static_cast<Real80>(tables::expTable64[64u - j]);
    return {f, P, M};
}

inline Real32 sinhMain(Real32 x) {
    constexpr Real64 K0 = real64(0x3FEFFFFFFFFF626B);
    constexpr Real64 K2 = real64(0x3FCEBFC2EC2DEDAE);
    constexpr Real64 L1 = real64(0x3FE62E42FEF9E28E);
    constexpr Real64 L3 = real64(0x3FAC6B0CEF9B9F1E);

    const auto [f, P, M] = reduced(x);
    const Real80 z = f * f;
    const Real80 Pe = K2 * z + K0;
    const Real80 Po = (L3 * z + L1) * f;
    return static_cast<Real32>(Pe * (P - M) + Po * (P + M));
}

inline Real32 coshMain(Real32 x) {
    constexpr Real64 K0 = real64(0x3FF000000001D8C0);
    constexpr Real64 K2 = real64(0x3FCEBFBA4E02D234);
    constexpr Real64 L1 = real64(0x3FE62E48530B0530);

    const auto [f, P, M] = reduced(x);
    const Real80 Pe = K2 * f * f + K0;
    const Real80 Po = L1 * f;
    return static_cast<Real32>(Pe * (P + M) + Po * (P - M));
}

inline Real32 sinhElement(Real32 x, OktStatus& status) {
    const std::uint32_t a = asBits(x) & 0x7FFFFFFFu;
    if (a >= sinhLimit32) {
        if (a > infinityPattern) return x + x;
        if (a < infinityPattern) {
            status = oktStatusOverflow;
            warning::raiseFlag(status);
        }
        return orBits(infinity32, signBit(x));
    }
    if (a < sinhTiny32) return x;
    return sinhMain(x);
}

inline Real32 coshElement(Real32 x, OktStatus& status) {
    const std::uint32_t a = asBits(x) & 0x7FFFFFFFu;
    if (a >= sinhLimit32) {
        if (a > infinityPattern) return x + x;
        if (a < infinityPattern) {
            status = oktStatusOverflow;
            warning::raiseFlag(status);
        }
        return infinity32;
    }
    if (a < coshTiny32) return 1.0F;
    return coshMain(x);
}

}  // namespace hyper32

// Blocks of four lanes and the rest take the same steps, and warnings are stored in element order in both.
inline OktStatus Sinh_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t at = 0; at < len; ++at) dst[at] = hyper32::sinhElement(src[at], status);
    return status;
}

inline OktStatus Cosh_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t at = 0; at < len; ++at) dst[at] = hyper32::coshElement(src[at], status);
    return status;
}

// ---------------------------------------------------------------------------------------------------------------
// Sinh and Cosh on 64f, with head and tail of the exponential.

namespace hyper64 {

using namespace hyper;

inline constexpr Real64 sixtyFourOverLn2 = real64(0x40571547652B82FE);
inline constexpr Real64 roundShifter = real64(0x4338000000000000);
inline constexpr Real64 ln2Head64 = real64(0x3F862E42FEF00000);
inline constexpr Real64 ln2Tail64 = real64(0x3D7473DE6AF278ED);
inline constexpr Real64 W4 = real64(0x3F81111276409C2C);
inline constexpr Real64 W3 = real64(0x3FA555574BC3A1BE);
inline constexpr Real64 W2 = real64(0x3FC55555555542A1);
inline constexpr Real64 W1 = real64(0x3FDFFFFFFFFFD97C);
inline constexpr Real64 Y3 = real64(0x3F2A01DB8C52595A);
inline constexpr Real64 Y2 = real64(0x3F81111110E18CA7);
inline constexpr Real64 Y1 = real64(0x3FC5555555555583);

inline constexpr std::uint32_t middleLimit = 0x3FA1EB85;
inline constexpr std::uint32_t largeLimit = 0x3FCFACFC;
inline constexpr std::uint32_t fixUpLimit = 0x40862336;
inline constexpr std::uint64_t scaledLimit = 0x40862336F49C3C50;
inline constexpr std::uint64_t unscaledLimit = 0x408633C378987900;
inline constexpr std::uint64_t overflowLimit = 0x408633CE8FB9F87E;
inline constexpr std::uint64_t infinityPattern = 0x7FF0000000000000;
inline constexpr std::uint64_t allOnes = 0xFFFFFFFFFFFFFFFF;

// e^a/2 is A + a2 times e^r, e^-a/2 is B + b2 times e^-r.
struct Reduced {
    Real64 r;
    std::uint32_t j;
    Real64 A;
    Real64 a2;
    Real64 B;
    Real64 b2;
};

inline Real64 powerOfTwo(std::uint64_t n) { return fromBits(((n + 0xFF80u) << 46) & infinityPattern); }

inline Reduced reduced(Real64 a) {
    const Real64 t = a * sixtyFourOverLn2 + roundShifter;
    const Real64 n = t - roundShifter;
    const Real64 r = (a - n * ln2Head64) - n * ln2Tail64;
    const std::uint64_t bits = asBits(t);
    const auto j = static_cast<std::uint32_t>(bits & 63u);
    const Real64* row = &tables::expPairTable[2u * j];
    const Real64* negatedRow = &tables::expPairTable[2u * (64u - j)];
    const Real64 up = powerOfTwo(bits);
    const Real64 down = powerOfTwo(0u - bits);
    return {r, j, row[0] * up, row[1] * up, negatedRow[0] * down, negatedRow[1] * down};
}

// x is the magnitude in a block and the element itself outside; the polynomial is odd.
inline Real64 sinhSmall(Real64 x) {
    const Real64 w = x * x;
    return x + ((Y3 * w + Y2) * w + Y1) * w * x;
}

inline Real64 sinhMain(Real64 x, bool inBlock) {
    const Real64 a = magnitude(x);
    if (upperWord(a) < middleLimit) return inBlock ? orBits(sinhSmall(a), signBit(x)) : sinhSmall(x);

    const auto [r, j, A, a2, B, b2] = reduced(a);
    const Real64 s = A + a2;
    const Real64 d = B + b2;
    const Real64 z = r * r;
    const Real64 p = (W4 * z + W2) * z * r * (s + d);
    const Real64 c = (W3 * z + W1) * z * (s - d);
    const Real64 R = (c + p) + r * (s + d);
    const Real64 y = upperWord(a) >= largeLimit ? ((R - b2) + a2 - B) + A : ((R - b2) + a2) + (A - B);
    return orBits(y, signBit(x));
}

inline Real64 coshMain(Real64 x) {
    const auto [r, j, A, a2, B, b2] = reduced(magnitude(x));
    const Real64 s = A + a2;
    const Real64 d = B + b2;
    const Real64 z = r * r;
    const Real64 p = (W4 * z + W2) * z * r * (s - d);
    const Real64 c = (W3 * z + W1) * z * (s + d);
    return (((c + p) + r * (s - d)) + b2 + a2) + B + A;
}

// Second pass over an element; `sign` is ORed into what it makes, `y` is the result of the main path.
inline Real64 fixedUp(Real64 x, Real64 y, std::uint64_t sign, OktStatus& status) {
    const std::uint64_t bits = asBits(magnitude(x));
    if (upperWord(magnitude(x)) < fixUpLimit || bits < scaledLimit) return y;
    if (bits < overflowLimit) {
        const Reduced v = reduced(magnitude(x));
        const bool scaled = bits < unscaledLimit;
        const Real64 H = scaled ? v.A : tables::expPairTable[2u * v.j];
        const Real64 L = scaled ? v.a2 : tables::expPairTable[2u * v.j + 1u];
        const Real64 w = ((((W4 * v.r + W3) * v.r + W2) * v.r + W1) * v.r * v.r) + v.r;
        return orBits(((w * (H + L) + L) + H) * 0x1p1023 * 2.0, sign);
    }
    if (bits < infinityPattern) {
        status = oktStatusOverflow;
        return orBits(infinity64, sign);
    }
    if (bits == infinityPattern) return orBits(infinity64, sign);
    return fromBits(allOnes);
}

}  // namespace hyper64

inline OktStatus Sinh_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    const std::int32_t blocks = len - len % 4;
    for (std::int32_t at = 0; at < len; ++at) {
        const Real64 x = src[at];
        const volatile Real64 y = hyper64::sinhMain(x, at < blocks);  // also where the second pass makes the result
        dst[at] = hyper64::fixedUp(x, y, hyper64::signBit(x), status);
    }
    return status;
}

inline OktStatus Cosh_64f(const Real64* src, Real64* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t at = 0; at < len; ++at) {
        const Real64 x = src[at];
        const volatile Real64 y = hyper64::coshMain(x);  // also where the second pass makes the result
        dst[at] = hyper64::fixedUp(x, y, 0, status);
    }
    return status;
}

// ---------------------------------------------------------------------------------------------------------------
// Tanh, one polynomial an interval. Every element takes the same steps, alone or in a pair.

namespace tanh_rows {

using namespace hyper;

inline constexpr std::uint64_t headMask = 0xFFFFFFFFF8000000;
inline constexpr std::uint64_t signMask = 0x8000000000000000;

enum LaneClass { finite, infinite, notANumber };

inline Real64 selected(LaneClass laneClass, Real64 polynomial, Real64 argument) {
    const std::uint64_t* masks = &tables::tanhSelect[4 * laneClass];
    return fromBits((asBits(polynomial) & masks[0]) | (asBits(1.0) & masks[1]) | (asBits(argument) & masks[2]));
}

inline std::int32_t row32(Real32 x) {
    std::int32_t row = static_cast<std::int32_t>(asBits(x) & 0x7FE00000u) - 0x3DE00000;
    if (row < 0) row = 0;
    if (row > 0x3400000) row = 0x3400000;
    return row >> 21;
}

inline LaneClass laneClass32(Real32 x) {
    const std::uint32_t a = asBits(x) & 0x7FFFFFFFu;
    return a < 0x7F800000u ? finite : a == 0x7F800000u ? infinite : notANumber;
}

inline Real32 element32(Real32 x) {
    const Real64 widened = static_cast<Real64>(x);
    Real64 a = magnitude(widened);
    const Real64* c = &tables::tanhRows32[8 * row32(x)];
    if (!(10.0 >= a)) a = 0.0;
    const Real64 p = (((((c[6] * a + c[5]) * a + c[4]) * a + c[3]) * a + c[2]) * a + c[1]) * a + c[0];
    return static_cast<Real32>(selected(laneClass32(x), orBits(p, signBit(widened)), widened));
}

inline std::int32_t row64(Real64 x) {
    std::int32_t row = static_cast<std::int32_t>(upperWord(x) & 0x7FFE0000u) - 0x3FBE0000;
    if (row < 0) row = 0;
    if (row > 0x760000) row = 0x760000;
    return row >> 17;
}

inline LaneClass laneClass64(Real64 x) {
    const std::uint64_t a = asBits(magnitude(x));
    return a < 0x7FF0000000000000u ? finite : a == 0x7FF0000000000000u ? infinite : notANumber;
}

inline Real64 polynomial64(const Real64* row, Real64 a) {
    const Real64 d = a + row[12];
    Real64 p = row[11];
    for (int k = 10; k >= 3; --k) p = p * d + row[k];
    p = p * d;

    const Real64 s = row[2] + p;
    const Real64 us = p - s;
    const Real64 vs = s + us;
    Real64 l = (us + row[2]) + (p - vs);
    const Real64 h = fromBits(asBits(s) & headMask);
    l = l + (s - h);

    const Real64 dh = fromBits(asBits(d) & headMask);
    const Real64 dl = d - dh;
    const Real64 m = h * dh;
    const Real64 L = (l * dl + dl * h) + dh * l;

    const Real64 S = row[1] + m;
    const Real64 u = m - S;
    const Real64 v = S + u;
    const Real64 e = (u + row[1]) + (m - v);
    return ((e + L) + row[0]) + S;
}

inline Real64 element64(Real64 x) {
    const volatile Real64 y =
        polynomial64(&tables::tanhRows64[16 * row64(x)], magnitude(x));  // also where not selected
    return selected(laneClass64(x), orBits(y, signBit(x)), x);
}

}  // namespace tanh_rows

inline OktStatus Tanh_32f(const Real32* src, Real32* dst, std::int32_t len) {
    for (std::int32_t at = 0; at < len; ++at) dst[at] = tanh_rows::element32(src[at]);
    return oktStatusOk;
}

inline OktStatus Tanh_64f(const Real64* src, Real64* dst, std::int32_t len) {
    for (std::int32_t at = 0; at < len; ++at) dst[at] = tanh_rows::element64(src[at]);
    return oktStatusOk;
}

// ---------------------------------------------------------------------------------------------------------------
// Atanh on 32f, in single precision.

namespace atanh32 {

using namespace hyper;

inline constexpr std::uint32_t centralPolynomial[] = {0x3E962D3E, 0xBDBE62C3, 0x3E189A6D, 0x3DCE3ED3,
                                                      0x3E13480A, 0x3E4CC1AA, 0x3EAAAAC0};
inline constexpr std::uint32_t logarithmPolynomial[] = {0xBD1E93F2, 0x3D861D15, 0xBD8815F8, 0x3D90F40B, 0xBDA9FDAC,
                                                        0x3DCCD4BE, 0xBE00028C, 0x3E2AAAA4, 0xBE7FFFFB, 0x3F000000};
inline constexpr Real32 atanhCentre = real32(0x3F300000);
inline constexpr std::uint32_t atanhLimit1 = 0x3F19999A;
inline constexpr std::uint32_t atanhLimit2 = 0x3F400000;
inline constexpr std::uint32_t one = 0x3F800000;
inline constexpr Real32 atanhHead = real32(0x3F57DBEC);
inline constexpr Real32 atanhTail = real32(0xB27CD082);
inline constexpr Real32 halfLn2Head = real32(0x3EB17200);
inline constexpr Real32 halfLn2Tail = real32(0x353FBE8E);
inline constexpr std::uint32_t logCarry = 0x004AFB0D;

template <std::size_t count>
Real32 horner(const std::uint32_t (&coefficients)[count], Real32 x) {
    Real32 sum = real32(coefficients[0]);
    for (std::size_t k = 1; k < count; ++k) sum = sum * x + real32(coefficients[k]);
    return sum;
}

inline Real32 central(Real32 a) {
    const bool mid = asBits(a) > atanhLimit1;
    const Real32 c = mid ? atanhCentre : 0.0F;
    const Real32 t = (c - a) / (a * c - 1.0F);
    const Real32 z = t * t;
    const Real32 p = horner(centralPolynomial, z);
    return p * z * t + t + (mid ? atanhTail : 0.0F) + (mid ? atanhHead : 0.0F);
}

inline Real32 logarithm(Real32 a) {
    const Real32 v = fromBits(asBits(a) + 0x00800000u) / (1.0F - a);
    const Real32 y = v + 1.0F;
    const std::uint32_t e = asBits(y) & 0x7F800000u;
    const std::uint32_t m = asBits(y) & 0x007FFFFFu;
    const std::uint32_t b = (m + logCarry) & 0x00800000u;
    const Real32 k = static_cast<Real32>(static_cast<std::int32_t>((e - 0x3F800000u) + b) >> 23);
    const Real32 f = fromBits(m | (b ^ 0x3F800000u)) - 1.0F;
    const Real32 q = horner(logarithmPolynomial, f);
    return (q * f + k * halfLn2Tail) + k * halfLn2Head;
}

// Both parts are computed for every element, with their flags; the special results replace theirs.
inline Real32 element(Real32 x, OktStatus& status) {
    const Real32 a = magnitude(x);
    const volatile Real32 centralPart = central(a);
    const volatile Real32 logarithmPart = logarithm(a);
    if (asBits(a) > 0x7F800000u) return x;
    if (asBits(a) > one) {
        status = oktStatusDomain;
        return real32(0xFFC00000);
    }
    if (asBits(a) == one) {
        status = oktStatusSingularity;
        return orBits(infinity32, signBit(x));
    }
    return orBits(asBits(a) < atanhLimit2 ? centralPart : logarithmPart, signBit(x));
}

}  // namespace atanh32

inline OktStatus Atanh_32f(const Real32* src, Real32* dst, std::int32_t len) {
    OktStatus status = oktStatusOk;
    for (std::int32_t at = 0; at < len; ++at) dst[at] = atanh32::element(src[at], status);
    return status;
}

// ---------------------------------------------------------------------------------------------------------------
// Asinh and Acosh on both types and Atanh on 64f: their steps are free within an accuracy, so a model exists only of
// the elements with a prescribed result. Each function gives that result, or nothing where the element has an
// accuracy to keep instead. It stores the element's warning and raises its flag.

namespace inverse_hyper {

using namespace hyper;

template <class Real>  // Real32 or Real64
bool exponentAllOnes(Real x) {
    return !(magnitude(x) < std::numeric_limits<Real>::infinity());
}

template <class Real>
Real outsideDomain(OktStatus& status) {
    status = oktStatusDomain;
    warning::raiseFlag(status);
    return ordered::div(Real{0}, Real{0});
}

template <class Real>
std::optional<Real> asinhPrescribed(Real x) {
    if (exponentAllOnes(x)) return x + x;
    if (magnitude(x) < Real(0x1p-57)) return x;
    return std::nullopt;
}

template <class Real>
std::optional<Real> acoshPrescribed(Real x, OktStatus& status) {
    if (x < Real{1})  // minus infinity too; false for a NaN
        return outsideDomain<Real>(status);
    if (exponentAllOnes(x)) return x + x;
    if (x == Real{1}) return Real{0};
    return std::nullopt;
}

inline std::optional<Real64> atanhPrescribed(Real64 x, OktStatus& status) {
    const Real64 a = magnitude(x);
    if (a != a) return x + x;
    if (a > 1.0) return outsideDomain<Real64>(status);
    if (a == 1.0) {
        status = oktStatusSingularity;
        warning::raiseFlag(status);
        return ordered::div(x, 0.0);
    }
    if (a < 0x1p-57) return x;
    return std::nullopt;
}

}  // namespace inverse_hyper

}  // namespace okt::model
