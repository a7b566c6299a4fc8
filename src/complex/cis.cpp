// cos x + i·sin x of a real x: the table method at 64 steps a turn in Real64,
// for both types; from 2^17 up after a reduction by the quarter turn.
//
// Largest errors seen:
//   Complex32  0.49999 ulp
//   Complex64  real part 0.5077 ulp at 0x1.e0e693e759fc6p+12 and imaginary part 0.5106 ulp at -0x1.69677d4fbbd3dp+13
//   below
//              40000; 0.5223 ulp at -0x1.e745b187b59dfp+16 up to 2^17
//
// GCC: -fschedule-insns -fsched-pressure --param=sched-pressure-algorithm=2 (0.89)
#include "exports/CIS.h"
#include "complex/cosine_and_sine.h"
#include "frame/loops.h"
#include "trig/sine_kernel.h"

namespace okt::complex {
namespace {

constexpr angle::Constants constants;

struct Parts {
    Real64 re, im;
};

// One element, any. What the frame leaves of the caller's MXCSR acts on it.
Parts cisElement(Real64 x) {
    if (!isFinite(x)) {
        const Real64 nan = isInfinite(x) ? x * opaque(0.0) : x * x;
        return {nan, nan};
    }
    if (sine::isTiny(x)) {
        if ((asBits(x) & 0x7FFFFFFFFFFFFFFF) == 0) return {1.0, x};
        constexpr Real64 up = 0x1p55, down = 0x1p-55;
        return {sine::cosineOfTiny(x), (x * up - x) * down};  // x, but for flags
    }
    const sine::ElementAngle a = sine::elementAngle(x);
    const auto at = [&a](int quarters) {
        const U64<1> row = sine::rowOffset<sine::Steps64>(a.row, quarters);
        return sine::summands(tables::sinCosElementTable, row, a.r, a.rl, a.poly).mainSum().raw;
    };
    return {at(1), at(0)};
}

[[gnu::noinline, gnu::cold]] Complex64 cisElementOf(Real64 x) {
    const auto [re, im] = cisElement(x);
    return {re, im};
}
[[gnu::noinline, gnu::cold]] Complex32 cisElementOf(Real32 x) {
    const auto [re, im] = cisElement(opaque(static_cast<Real64>(x)));  // rounded back below
    return {static_cast<Real32>(re), static_cast<Real32>(im)};
}

// Elements that need neither a reduction nor a special result.
constexpr WordRange plain32(0x00800000, 0x48000000);      // normal, below 2^17
constexpr WordRange plainHigh64(0x30300000, 0x41000000);  // high words: from 2^-252 to below 2^17

template <int N>
bool arePlain(F32<N> x) {
    return plain32.holdsAll(asBits(x) & U32<N>(0x7FFFFFFF));
}
template <int N>
bool arePlain(F64<N> x) {
    return plainHigh64.holdsAll(packHighWords(asBits(x)) & U32<N>(0x7FFFFFFF));
}

template <int N>
F64<N> toReal64(F32<N> x) {
    return widen(x);
}
template <int N>
F64<N> toReal64(F64<N> x) {
    return x;
}

template <int N>
void storeParts(F64<N> parts, Complex32* to) {
    narrow(parts).store(reinterpret_cast<Real32*>(to));
}
template <int N>
void storeParts(F64<N> parts, Complex64* to) {
    parts.store(reinterpret_cast<Real64*>(to));
}

// A result is twice as long as its argument, so that an ascending loop over arrays that share
// memory may read what it has written; only one element at a time gives its results there.
template <class S, class D>
bool apart(const S* src, const D* dst, std::int32_t len) {
    const auto from = reinterpret_cast<std::uintptr_t>(src), to = reinterpret_cast<std::uintptr_t>(dst);
    const auto count = static_cast<std::uintptr_t>(len);
    return from + count * sizeof(S) <= to || to + count * sizeof(D) <= from;
}

// An element loop, worked four elements side by side where they are plain: the very operations of cisElement.
template <class S, class D>
void cis(const S* src, D* dst, std::int32_t len, OktStatus&) {
    const angle::Constants& c = inMemory(constants);
    std::int32_t i = 0;
    const auto one = [&] {
        const auto [re, im] = cisElementOf(loadElement(src + i));
        auto* part = reinterpret_cast<S*>(dst + i);
        storeElement(part, re);
        storeElement(part + 1, im);
        ++i;
    };
    if (apart(src, dst, len)) [[likely]] {
        while (i <= len - 4) {
            const auto x = Vec<S, 4>::load(src + i);
            if (arePlain(x)) [[likely]] {
                const auto [main, low] = cosineAndSine(angle::rows, angle::reduce<4>(c, toReal64(x)));
                storeParts(main + low, dst + i);
                i += 4;
            } else {
                for (int k = 0; k < 4; ++k) one();
            }
        }
    }
    while (i < len) one();
}

}  // namespace

OKT_EXPORT(CIS, 32fc, cis)
OKT_EXPORT(CIS, 64fc, cis)

}  // namespace okt::complex
