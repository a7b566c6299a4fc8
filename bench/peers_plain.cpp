// Arithmetic as plain loops that the compiler makes vector code of, for SSE2 like the library itself, and copies that
// move the same arrays without computing anything: what memory and caches allow.
#include "formulas.h"
#include "peers.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

namespace okt::bench {
namespace {

// The restricted pointers must be locals for the compiler to believe them.
template <class Real, class F>
void unaryPlain(const Arguments& a) {
    const Real* __restrict__ src = static_cast<const Real*>(a.src1);
    Real* __restrict__ dst = static_cast<Real*>(a.dst1);
    for (std::int32_t i = 0; i < a.len; ++i) dst[i] = F{}(src[i], Real{});
}

// `Reals` is the number of reals of an element.
template <class Real, class F, int Reals = 1>
void binaryPlain(const Arguments& a) {
    const Real* __restrict__ src1 = static_cast<const Real*>(a.src1);
    const Real* __restrict__ src2 = static_cast<const Real*>(a.src2);
    Real* __restrict__ dst = static_cast<Real*>(a.dst1);
    const std::ptrdiff_t count = std::ptrdiff_t{a.len} * Reals;
    for (std::ptrdiff_t i = 0; i < count; ++i) dst[i] = F{}(src1[i], src2[i]);
}

// Complex sums are sums of reals.
template <class Real>
constexpr auto sum = &binaryPlain<Real, std::plus<Real>, 2>;
template <class Real>
constexpr auto difference = &binaryPlain<Real, std::minus<Real>, 2>;

template <class Real>
void conjugate(const Arguments& a) {
    const Real* __restrict__ src = static_cast<const Real*>(a.src1);
    Real* __restrict__ dst = static_cast<Real*>(a.dst1);
    for (std::ptrdiff_t i = 0; i < a.len; ++i) {
        dst[2 * i] = src[2 * i];
        dst[2 * i + 1] = -src[2 * i + 1];
    }
}

template <class Real>
void textbookModulus(const Arguments& a) {
    const Real* __restrict__ src = static_cast<const Real*>(a.src1);
    Real* __restrict__ dst = static_cast<Real*>(a.dst1);
    for (std::ptrdiff_t i = 0; i < a.len; ++i) {
        const Real re = src[2 * i], im = src[2 * i + 1];
        dst[i] = std::sqrt(re * re + im * im);
    }
}

// The textbook formulas, without care for overflow and cancellation.
template <class Real, int Sign>
void productLoop(const Arguments& a) {
    const Real* __restrict__ src1 = static_cast<const Real*>(a.src1);
    const Real* __restrict__ src2 = static_cast<const Real*>(a.src2);
    Real* __restrict__ dst = static_cast<Real*>(a.dst1);
    for (std::ptrdiff_t i = 0; i < a.len; ++i) {
        const Real xr = src1[2 * i], xi = src1[2 * i + 1], yr = src2[2 * i], yi = Sign * src2[2 * i + 1];
        dst[2 * i] = xr * yr - xi * yi;
        dst[2 * i + 1] = xr * yi + xi * yr;
    }
}

template <class Real>
constexpr auto textbookProduct = &productLoop<Real, 1>;
template <class Real>
constexpr auto textbookProductByConjugate = &productLoop<Real, -1>;

template <class Real>
void textbookQuotient(const Arguments& a) {
    const Real* __restrict__ src1 = static_cast<const Real*>(a.src1);
    const Real* __restrict__ src2 = static_cast<const Real*>(a.src2);
    Real* __restrict__ dst = static_cast<Real*>(a.dst1);
    for (std::ptrdiff_t i = 0; i < a.len; ++i) {
        const Real xr = src1[2 * i], xi = src1[2 * i + 1], yr = src2[2 * i], yi = src2[2 * i + 1];
        const Real scale = 1 / (yr * yr + yi * yi);
        dst[2 * i] = (xr * yr + xi * yi) * scale;
        dst[2 * i + 1] = (xi * yr - xr * yi) * scale;
    }
}

template <class Real, int Reals>
void copyOne(const Arguments& a) {
    std::memcpy(a.dst1, a.src1, static_cast<std::size_t>(a.len) * Reals * sizeof(Real));
}

template <class Word, int Reals>
constexpr auto copyBoth = &binaryPlain<Word, std::bit_or<Word>, Reals>;

}  // namespace
}  // namespace okt::bench

namespace okt::formulas {
namespace {

using namespace bench;

#define OKT_PLAIN_FORMULA(family, type, shape, part, ...)                                                           \
    {family, type, "plain loop", #__VA_ARGS__, [] {                                                                 \
         const auto formula = []([[maybe_unused]] part x, [[maybe_unused]] part y) -> part { return __VA_ARGS__; }; \
         return &shape##Plain<part, decltype(formula)>;                                                             \
     }()},
#define OKT_PLAIN_LOOP(family, type, name, ...) {family, type, "plain loop", name, __VA_ARGS__},
#define OKT_COPY(family, type, label, ...) {family, type, "copy", label, __VA_ARGS__},

std::vector<Peer> peers() {
    return {
#include "peers_plain.inc"
    };
}

#undef OKT_PLAIN_FORMULA
#undef OKT_PLAIN_LOOP
#undef OKT_COPY

}  // namespace
}  // namespace okt::formulas

namespace okt::bench {

std::vector<Peer> plainPeers() { return formulas::peers(); }

}  // namespace okt::bench
