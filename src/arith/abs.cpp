// Absolute value and modulus.
//
// Real: the sign bit cleared by an integer operation; a signalling NaN stays signalling, no flag is raised.
//
// Complex: sqrt(re^2 + im^2) by the seeded root of root/seed_root.h. Complex32 works in Real64, Complex64 in Real80, so that
// no square overflows or underflows and the result is rounded once.
// Largest errors seen: Complex32 0.5000 ulp (correctly rounded in every sample), Complex64 0.5005 ulp.
#include "arith/complex_parts.h"
#include "arith/elementwise.h"
#include "frame/loops.h"
#include "root/seed_root.h"

namespace okt {
namespace {

template <class T>
OktStatus absReal(const T* src, T* dst, std::int32_t len) {
    return plainFrame(len, src, dst, [=](OktStatus&) {
        using Pattern = Unsigned<T>;
        const auto clearSign = [](auto x) { return x & decltype(x)(static_cast<Pattern>(~Pattern{0}) >> 1); };
        vectorLoop(clearSign, patterns(dst), static_cast<std::size_t>(len), patterns(src));
    });
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

bool isSpecial(Real32 x) { return (asBits(x) & 0x7F800000) == 0x7F800000; }
bool isInfinite(Real32 x) { return (asBits(x) & 0x7FFFFFFF) == 0x7F800000; }
bool isSpecial(Real64 x) { return (highWord(x) & 0x7FF00000) == 0x7FF00000; }
bool isInfinite(Real64 x) { return (asBits(x) & 0x7FFFFFFFFFFFFFFF) == 0x7FF0000000000000; }

// An infinite part makes the modulus infinite, also beside a NaN; otherwise a NaN part makes it a NaN.
template <class T>
T modulusOfSpecial(T re, T im) {
    if (isSpecial(re)) {
        if (!isSpecial(im) || isInfinite(re)) return re * re;
        return isInfinite(im) ? im * im : mulOrdered(re, im);
    }
    return im * im;
}

Real32 modulus(Complex32 z) {
    if (isSpecial(z.re) || isSpecial(z.im)) return modulusOfSpecial(z.re, z.im);
    return narrow(modulusOfFinite(widen(F32x1(z.re)), widen(F32x1(z.im)))).raw;
}

// Four elements side by side; false, with nothing stored, when one of them is an infinity or a NaN.
bool modulusOfFour(const Complex32* src, Real32* dst) {
    const auto [re, im] = loadInterleaved(reinterpret_cast<const Real32*>(src));
    const U32x4 exponent(0x7F800000);
    if (any(((asBits(re) & exponent) == exponent) | ((asBits(im) & exponent) == exponent))) return false;
    narrow(modulusOfFinite(widen(re), widen(im))).store(dst);
    return true;
}

OktStatus absComplex32(const Complex32* src, Real32* dst, std::int32_t len) {
    return x87Frame<53>(len, src, dst, [=](OktStatus& status) {
        redoBlock<4>(src, dst, len, modulusOfFour, [](Complex32 z, OktStatus&) { return modulus(z); }, status);
    });
}

// By the pattern: a compare of floats would count a subnormal as zero under the caller's denormals-are-zero.
bool isZero(Real64 x) { return asBits(x) << 1 == 0; }

// From the sum's own pattern: any exponent, any significand.
[[gnu::noinline, gnu::cold]] Real64 modulusBySlots(Real80 sum) {
    const Real80Bits s = asBits(sum);
    const unsigned odd = ~static_cast<unsigned>(s.signAndExponent) & 1u;  // the bias is odd
    const Real80 m2 = fromBits({s.significand, static_cast<std::uint16_t>(16383 + odd)});
    const Real80 scale = fromBits({std::uint64_t{1} << 63, static_cast<std::uint16_t>((s.signAndExponent + 16383u) >> 1)});
    const Real80 seed = tables::InvRootSeed[odd << 8 | (s.significand >> 55 & 0xFF)];
    return static_cast<Real64>(rootOfSignificand<Real80>(m2, seed).value() * scale);
}

Real64 modulus(Complex64 z) {
    if (isSpecial(z.re) || isSpecial(z.im)) return modulusOfSpecial(z.re, z.im);
    const Real80 x = z.re, y = z.im;
    const Real80 sum = x * x + y * y;
    // Where the sum, rounded to Real64, is a normal number and no carry can have reached its leading bits, exponent and
    // index come from there: the load of eight bytes follows its store at once, while one from an extended slot waits
    // until the store retires and so chains one element to the next.
    const std::uint64_t rounded = asBits(static_cast<Real64>(sum));
    const bool plain = (rounded << 20) != 0 && (rounded >> 52) - 2 <= 2042;
    if (!plain) [[unlikely]] {
        if (isZero(z.re) && isZero(z.im)) return 0.0;
        return modulusBySlots(sum);
    }
    const std::uint64_t flipped = rounded ^ 0x0010000000000000;
    const std::uint64_t half = ((rounded >> 52) + 1023) >> 1;  // the exponent field of 2^k, the sum being 4^k m2
    const Real80 m2 = sum * bits64((3 * 1023 - 2 * half) << 52);
    const Real80 seed = tables::InvRootSeed[flipped >> 44 & 0x1FF];
    return static_cast<Real64>(rootOfSignificand<Real80>(m2, seed).value() * bits64(half << 52));
}

OktStatus absComplex64(const Complex64* src, Real64* dst, std::int32_t len) {
    return x87Frame<64>(len, src, dst, [=](OktStatus& status) {
        elementLoop(src, dst, len, [](Complex64 z, OktStatus&) { return modulus(z); }, status);
    });
}

}  // namespace

OKT_EXPORT(Abs, 32f, absReal)
OKT_EXPORT(Abs, 64f, absReal)
OKT_EXPORT(Abs, 32fc, absComplex32)
OKT_EXPORT(Abs, 64fc, absComplex64)

}  // namespace okt
