// Absolute value and modulus.
//
// Real: the sign bit cleared by an integer operation; a signalling NaN stays signalling, no flag is raised.
//
// Complex: sqrt(re^2 + im^2) by the root of root/multiplicative_root.h. Complex32 works in Real64, Complex64
// in Real80, so that no square overflows or underflows and the result is rounded once. Where that is seen
// to give the same bits and flags, the processor's root instruction takes the place of the multiplicative root.
// Largest errors seen: Complex32 0.5000 ulp (correctly rounded in every sample), Complex64 0.5005 ulp.
//
// GCC: -fno-tree-slp-vectorize (0.95)
#include "exports/Abs.h"
#include "arith/complex_parts.h"
#include "arith/elementwise.h"
#include "frame/inexact.h"
#include "frame/loops.h"
#include "lanes/pattern.h"
#include "root/multiplicative_root.h"

namespace okt {
namespace {

template <class T>
void absReal(const T* src, T* dst, std::int32_t len, OktStatus&) {
    using Pattern = Unsigned<T>;
    const auto clearSign = [](auto x) { return x & decltype(x)(static_cast<Pattern>(~Pattern{0}) >> 1); };
    vectorLoop(clearSign, patterns(dst), static_cast<std::size_t>(len), patterns(src));
}

template <int N>
F64<N> modulusOfFinite(F64<N> re, F64<N> im) {
    const F64<N> sum = re * re + im * im;
    // A zero is worked as a one, which is exact and raises no flag.
    const Mask64<N> zero = sum == F64<N>(0.0);
    const auto parts = rootParts(select(zero, F64<N>(1.0), sum));
    const F64<N> root = parts.root.value() * parts.scale();
    return asReal(zeroUnless(~zero, asBits(root)));
}

// An infinite part makes the modulus infinite, also beside a NaN; otherwise a NaN part makes it a NaN.
template <class T>
T modulusOfSpecial(T re, T im) {
    if (isFinite(re)) return im * im;
    if (isFinite(im) || isInfinite(re)) return re * re;
    return isInfinite(im) ? im * im : mulOrdered(re, im);
}

[[gnu::noinline]] Real32 modulus(Complex32 z) {
    if (!isFinite(z.re) || !isFinite(z.im)) return modulusOfSpecial(z.re, z.im);
    return narrow(modulusOfFinite(widen(F32x1(z.re)), widen(F32x1(z.im)))).raw;
}

// Four elements side by side; false, with nothing stored, when one of them is an infinity or a NaN.
[[gnu::noinline]] bool modulusOfFour(const Complex32* src, Real32* dst) {
    const auto [re, im] = loadInterleaved<4>(reinterpret_cast<const Real32*>(src));
    const U32x4 exponent(0x7F800000);
    if (any(((asBits(re) & exponent) == exponent) | ((asBits(im) & exponent) == exponent))) return false;
    narrow(modulusOfFinite(widen(re), widen(im))).store(dst);
    return true;
}

// Four elements by the root instruction; false, with nothing stored, where that might show.
// For rounding to nearest, and while "inexact" stands, which is all that can tell the ways
// apart: the written steps come within a few units in the last place of the instruction, so
// both are rounded to the same Real32 unless a point halfway between two of them is that near.
bool rootOfFour(const Complex32* src, Real32* dst) {
    // Parts below 2^126 and sums that are zero or at least 2^-250:
    // each modulus is a zero or well inside the normal range.
    const auto* parts = reinterpret_cast<const Real32*>(src);
    const auto magnitudes = U32<8>::load(reinterpret_cast<const std::uint32_t*>(src)) & U32<8>(0x7FFFFFFF);
    const auto room = U32<8>(0x7E7FFFFF) - magnitudes;
    if (any(negativeLanes(room.lowHalf() | room.highHalf()))) [[unlikely]]
        return false;
    const auto [re, im] = loadInterleavedWidened<4>(parts);
    const F64x4 sum = re * re + im * im;
    const F64x4 root = sqrt(sum);

    const U32x4 high = packHighWords(asBits(sum)), low = packLowWords(asBits(root));
    const U32x4 tooSmall = (high - U32x4((1023 - 250) << 20)) & (U32x4(0) - high);
    constexpr std::uint32_t halfway = 1u << 28, near = 16;
    const U32x4 beyond = ((low - U32x4(halfway - near)) & U32x4(2 * halfway - 1)) - U32x4(2 * near + 1);
    if (any(negativeLanes(tooSmall | beyond))) [[unlikely]]
        return false;
    narrow(root).store(dst);
    return true;
}

void absComplex32(const Complex32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    bool byInstruction = inexactStandsInNearest();
    const auto tryFour = [&](const Complex32* from, Real32* to) {
        if (byInstruction && rootOfFour(from, to)) [[likely]]
            return true;
        const bool done = modulusOfFour(from, to);
        byInstruction = inexactStandsInNearest();
        return done;
    };
    redoBlock<4>(
        src, dst, len, tryFour, [](Complex32 z, OktStatus&) { return modulus(z); }, status);
}

// By fields: any exponent, any significand.
Real64 rootAsWritten(Real80 sum) {
    const Real80Bits s = asBits(sum);
    const unsigned odd = ~static_cast<unsigned>(s.signAndExponent) & 1u;  // the bias is odd
    const Real80 m2 = fromBits({s.significand, static_cast<std::uint16_t>(16383 + odd)});
    const Real80 scale =
        fromBits({std::uint64_t{1} << 63, static_cast<std::uint16_t>((s.signAndExponent + 16383u) >> 1)});
    const Real80 start = tables::InverseRootStarts[odd << 8 | (s.significand >> 55 & 0xFF)];
    return static_cast<Real64>(rootOfSignificand<Real80>(m2, start).value() * scale);
}

Real64 modulusAsWritten(Complex64 z) {
    if (!isFinite(z.re) || !isFinite(z.im)) return modulusOfSpecial(z.re, z.im);
    // By the patterns: a compare of floats would count a subnormal as zero under the caller's denormals-are-zero.
    if (isZero(z.re) && isZero(z.im)) return 0.0;
    const Real80 x = z.re, y = z.im;
    return rootAsWritten(x * x + y * y);
}
[[gnu::noinline]] void storeModulusAsWritten(const Complex64* src, Real64* dst) {
    storeElement(dst, modulusAsWritten(loadElement(src)));
}

// A bit for each of four elements whose larger part is so small that the
// modulus may be no normal number, or so large that it may overflow.
int outOfRange(const Complex64* four) {
    const U32x4 larger = largerParts(four);
    return laneBits(negativeLanes((larger - U32x4(0x00300000)) | (U32x4(0x7FC00000) - larger)));
}

// The root instruction is within 2^-64 of the root of the sum, the written steps are within 2^-63:
// each of the two factors g^2 and h of the last correction is good to a unit in the last place,
// and so is the last sum. Both therefore lie between the same ends, and where these are rounded to
// one number, that is the modulus. "Inexact", which the ends raise for certain, stands already.
bool tryRoot(const Complex64* src, Real64* dst) {
    forgetParts();
    const auto [x, y] = extendedParts(src);
    const Real80 root = sqrt(x * x + y * y);
    const Real80 margin = root * 0x1p-61L;
    const Real64 low = static_cast<Real64>(root - margin), high = static_cast<Real64>(root + margin);
    if (asBits(low) != asBits(high)) [[unlikely]]
        return false;
    storeElement(dst, low);
    return true;
}

// The elements `first` to 3 of four.
void rootsOfFour(const Complex64* src, Real64* dst, int first) {
    const int bits = outOfRange(src);
    for (int k = first; k < 4; ++k)
        if ((bits >> k & 1) != 0 || !tryRoot(src + k, dst + k)) [[unlikely]]
            storeModulusAsWritten(src + k, dst + k);
}

void moduli(const Complex64* src, Real64* dst, std::int32_t len) {
    std::int32_t i = 0;
    // Four elements are looked at together: no result may change a source ahead of it.
    const auto above = reinterpret_cast<std::intptr_t>(dst) - reinterpret_cast<std::intptr_t>(src);
    if (len >= 4 && (above <= 0 || above >= len * static_cast<std::intptr_t>(sizeof(Complex64)))) {
        for (; i < len && !x87InexactStands(); ++i) storeModulusAsWritten(src + i, dst + i);
        for (; i <= len - 4; i += 4) rootsOfFour(src + i, dst + i, 0);
        if (i < len) rootsOfFour(src + len - 4, dst + len - 4, i - (len - 4));
        return;
    }
    for (; i < len; ++i) storeModulusAsWritten(src + i, dst + i);
}

void absComplex64(const Complex64* src, Real64* dst, std::int32_t len, OktStatus&) { moduli(src, dst, len); }

}  // namespace

OKT_EXPORT(Abs, 32f, absReal)
OKT_EXPORT(Abs, 64f, absReal)
OKT_EXPORT(Abs, 32fc, absComplex32)
OKT_EXPORT(Abs, 64fc, absComplex64)

}  // namespace okt
