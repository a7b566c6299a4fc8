// Arithmetic as plain loops that the compiler makes vector code of, for SSE2 like the library itself, and copies that
// move the same arrays without computing anything: what memory and caches allow.
#include "peers.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace okt::bench {
namespace {

// Loops are spelled out, one function each: the restricted pointers must be locals for the compiler to believe them.
#define OKT_PLAIN_UNARY(name, expression)                                \
    template <class Real>                                                \
    void name(const Arguments& a) {                                      \
        const Real* __restrict__ src = static_cast<const Real*>(a.src1); \
        Real* __restrict__ dst = static_cast<Real*>(a.dst1);             \
        for (std::int32_t i = 0; i < a.len; ++i) {                       \
            const Real x = src[i];                                       \
            dst[i] = expression;                                         \
        }                                                                \
    }

#define OKT_PLAIN_BINARY(name, Real, reals, expression)                   \
    template <class Real>                                                 \
    void name(const Arguments& a) {                                       \
        const Real* __restrict__ src1 = static_cast<const Real*>(a.src1); \
        const Real* __restrict__ src2 = static_cast<const Real*>(a.src2); \
        Real* __restrict__ dst = static_cast<Real*>(a.dst1);              \
        const std::ptrdiff_t count = std::ptrdiff_t{a.len} * (reals);     \
        for (std::ptrdiff_t i = 0; i < count; ++i) {                      \
            const Real x = src1[i], y = src2[i];                          \
            dst[i] = expression;                                          \
        }                                                                 \
    }

OKT_PLAIN_UNARY(absolute, std::fabs(x))
OKT_PLAIN_UNARY(square, x* x)
OKT_PLAIN_UNARY(reciprocal, 1 / x)
OKT_PLAIN_BINARY(sum, Real, 1, x + y)
OKT_PLAIN_BINARY(difference, Real, 1, x - y)
OKT_PLAIN_BINARY(product, Real, 1, x* y)
OKT_PLAIN_BINARY(quotient, Real, 1, x / y)
OKT_PLAIN_BINARY(complexSum, Real, 2, x + y)
OKT_PLAIN_BINARY(complexDifference, Real, 2, x - y)
OKT_PLAIN_BINARY(copyBoth, Bits, 1, x | y)
OKT_PLAIN_BINARY(copyBothPairs, Bits, 2, x | y)

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
void modulus(const Arguments& a) {
    const Real* __restrict__ src = static_cast<const Real*>(a.src1);
    Real* __restrict__ dst = static_cast<Real*>(a.dst1);
    for (std::ptrdiff_t i = 0; i < a.len; ++i) {
        const Real re = src[2 * i], im = src[2 * i + 1];
        dst[i] = std::sqrt(re * re + im * im);
    }
}

// The textbook formulas, without care for overflow and cancellation.
template <class Real, int Sign>
void complexProduct(const Arguments& a) {
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
void complexQuotient(const Arguments& a) {
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

template <class Element>
void copyOne(const Arguments& a) {
    std::memcpy(a.dst1, a.src1, static_cast<std::size_t>(a.len) * sizeof(Element));
}

}  // namespace

std::vector<Peer> plainPeers() {
    std::vector<Peer> peers;
    const auto both = [&](std::string_view family, bool isComplex, std::string_view library, std::string_view function,
                          void (*single)(const Arguments&), void (*wide)(const Arguments&)) {
        peers.push_back({family, isComplex ? "32fc" : "32f", library, function, single});
        peers.push_back({family, isComplex ? "64fc" : "64f", library, function, wide});
    };
    constexpr std::string_view loop = "plain loop", copy = "copy";
    both("Abs", false, loop, "|x|", absolute<float>, absolute<double>);
    both("Abs", true, loop, "sqrt(re^2 + im^2)", modulus<float>, modulus<double>);
    both("Add", false, loop, "x + y", sum<float>, sum<double>);
    both("Add", true, loop, "x + y", complexSum<float>, complexSum<double>);
    both("Conj", true, loop, "re, -im", conjugate<float>, conjugate<double>);
    both("Div", false, loop, "x / y", quotient<float>, quotient<double>);
    both("Div", true, loop, "textbook quotient", complexQuotient<float>, complexQuotient<double>);
    both("Inv", false, loop, "1 / x", reciprocal<float>, reciprocal<double>);
    both("Mul", false, loop, "x y", product<float>, product<double>);
    both("Mul", true, loop, "textbook product", complexProduct<float, 1>, complexProduct<double, 1>);
    both("MulByConj", true, loop, "textbook product", complexProduct<float, -1>, complexProduct<double, -1>);
    both("Sqr", false, loop, "x x", square<float>, square<double>);
    both("Sub", false, loop, "x - y", difference<float>, difference<double>);
    both("Sub", true, loop, "x - y", complexDifference<float>, complexDifference<double>);

    both("Abs", false, copy, "memcpy", copyOne<float>, copyOne<double>);
    both("Sqr", false, copy, "memcpy", copyOne<float>, copyOne<double>);
    both("Conj", true, copy, "memcpy", copyOne<Complex32>, copyOne<Complex64>);
    for (const std::string_view family : {"Add", "Sub", "Mul"})
        both(family, false, copy, "two arrays read, one written", copyBoth<std::uint32_t>, copyBoth<std::uint64_t>);
    for (const std::string_view family : {"Add", "Sub"})
        both(family, true, copy, "two arrays read, one written", copyBothPairs<std::uint32_t>,
             copyBothPairs<std::uint64_t>);
    return peers;
}

}  // namespace okt::bench
