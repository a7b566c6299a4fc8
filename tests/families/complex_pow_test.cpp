// Pow and Powx of complex elements: the exponential kernel on the product of the exponent and the logarithm kernel's
// result, in plain Real64.
#include "complex/pow_element.h"
#include "families/complex_cells.h"
#include "oktvm.h"

namespace okt::test {
namespace {

// Operations of SSE where they stand, whatever the rounding mode is.
double product(double a, double b) { return _mm_cvtsd_f64(_mm_mul_sd(_mm_set_sd(opaque(a)), _mm_set_sd(opaque(b)))); }
double sum(double a, double b) { return _mm_cvtsd_f64(_mm_add_sd(_mm_set_sd(opaque(a)), _mm_set_sd(opaque(b)))); }
double difference(double a, double b) {
    return _mm_cvtsd_f64(_mm_sub_sd(_mm_set_sd(opaque(a)), _mm_set_sd(opaque(b))));
}

Complex64 composed(Complex64 a, Complex64 b) {
    const Complex64 w = okt::complex::lnElement(a);
    return okt::complex::expElement(
        {difference(product(b.re, w.re), product(b.im, w.im)), sum(product(b.re, w.im), product(b.im, w.re))});
}

template <class Z>
Z callPow(const Export& f, Z a, Z b) {
    Z result;
    EXPECT_EQ(f.call({&a, &b, &b, &result, nullptr, 1}), oktStatusOk);
    return result;
}

template <class Z>
bool sameUpToNaNs(const Z& actual, const Z& expected) {
    const auto same = [](auto a, auto b) {
        return asBits(a) == asBits(b) || (isNaNPattern(double{a}) && isNaNPattern(double{b}));
    };
    return same(actual.re, expected.re) && same(actual.im, expected.im);
}

template <class Z>
std::string text(const Z& a, const Z& b) {
    return test::text(double{a.re}, double{a.im}) + " to the power " + test::text(double{b.re}, double{b.im});
}

// Bases and exponents of all kinds.
template <class Z>
std::pair<std::vector<Z>, std::vector<Z>> operands(std::size_t count, bool specials) {
    std::vector<Z> a = manyElements<Z>(count, -20, 20, specials, 6), b = manyElements<Z>(count, -6, 3, specials, 7);
    for (std::size_t i = 0; i < count; i += 9) {  // real bases, integer exponents
        a[i].im = 0;
        b[(i + 4) % count] = {static_cast<decltype(a[i].re)>(i % 7), 0};
    }
    return {a, b};
}

template <class Z>
void expectComposition(std::uint32_t rounding) {
    const auto [a, b] = operands<Z>(1500, true);
    const auto len = static_cast<std::int32_t>(a.size());
    const ScopedControlState scope({defaultMxcsr | rounding, 0x037F});
    std::vector<Z> expected(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        if constexpr (sizeof(Z) == 16) {
            expected[i] = composed(a[i], b[i]);
        } else {
            const Complex64 wide = composed({a[i].re, a[i].im}, {b[i].re, b[i].im});
            expected[i] = {_mm_cvtss_f32(_mm_cvtsd_ss(_mm_setzero_ps(), _mm_set_sd(wide.re))),
                           _mm_cvtss_f32(_mm_cvtsd_ss(_mm_setzero_ps(), _mm_set_sd(wide.im)))};
        }
    }
    std::vector<Z> result(a.size());
    for (const Export* f : grades<Z>("Pow")) {
        EXPECT_EQ(f->call({a.data(), b.data(), nullptr, result.data(), nullptr, len}), oktStatusOk);
        for (std::size_t i = 0; i < a.size(); ++i)
            EXPECT_TRUE(sameUpToNaNs(result[i], expected[i]))
                << f->name << text(a[i], b[i]) << " rounding " << rounding;
    }
    for (const Export* f : grades<Z>("Powx"))
        for (std::size_t i = 0; i < a.size(); i += 3)
            EXPECT_TRUE(sameUpToNaNs(callPow(*f, a[i], b[i]), expected[i])) << f->name << text(a[i], b[i]);
}

TEST(ComplexPow, IsTheCompositionOfItsKernels) {
    for (const std::uint32_t rounding : {roundNearest, roundDown, roundUp, roundTowardsZero}) {
        expectComposition<Complex32>(rounding);
        expectComposition<Complex64>(rounding);
    }
}

// Powx is Pow with one exponent, for every element of an array; aliasing changes nothing.
template <class Z>
void expectPowxOfArrays() {
    const Export &pow = *grades<Z>("Pow").back(), &powx = *grades<Z>("Powx").back();
    const auto [a, b] = operands<Z>(70, true);
    const auto len = static_cast<std::int32_t>(a.size());
    for (std::size_t k = 0; k < 20; ++k) {
        const std::vector<Z> exponents(a.size(), b[k]);
        std::vector<Z> first(a.size()), second(a.size()), third = a, fourth = exponents, fifth = a;
        EXPECT_EQ(pow.call({a.data(), exponents.data(), nullptr, first.data(), nullptr, len}), oktStatusOk);
        EXPECT_EQ(powx.call({a.data(), nullptr, &b[k], second.data(), nullptr, len}), oktStatusOk);
        EXPECT_EQ(powx.call({third.data(), nullptr, &b[k], third.data(), nullptr, len}), oktStatusOk);
        EXPECT_EQ(pow.call({a.data(), fourth.data(), nullptr, fourth.data(), nullptr, len}), oktStatusOk);
        EXPECT_EQ(pow.call({fifth.data(), exponents.data(), nullptr, fifth.data(), nullptr, len}), oktStatusOk);
        for (std::size_t i = 0; i < a.size(); ++i) {
            EXPECT_TRUE(sameElement(second[i], first[i])) << text(a[i], b[k]);
            EXPECT_TRUE(sameElement(third[i], first[i])) << text(a[i], b[k]);
            EXPECT_TRUE(sameElement(fourth[i], first[i])) << text(a[i], b[k]);
            EXPECT_TRUE(sameElement(fifth[i], first[i])) << text(a[i], b[k]);
            EXPECT_TRUE(sameElement(callPow(pow, a[i], b[k]), first[i])) << text(a[i], b[k]);
        }
    }
}

TEST(ComplexPow, PowxIsPow) {
    expectPowxOfArrays<Complex32>();
    expectPowxOfArrays<Complex64>();
}

struct PowCase {
    double aRe, aIm, bRe, bIm;
    Expected re, im;
};

TEST(ComplexPow, NotableElements) {
    const double q = quietNaN();
    const PowCase cases[] = {
        // The infinite logarithm of zero meets a zero: infinity times zero, in one part of the product or in both.
        {0.0, 0.0, 0.0, 0.0, aNaN(), aNaN()},
        {0.0, 0.0, 2, 0.0, exactly(0.0), exactly(0.0)},
        {0.0, 0.0, -2, 0.0, exactly(inf), aNaN()},
        {0.0, 0.0, 2, 1, exactly(0.0), exactly(-0.0)},
        {0.0, 0.0, -2, 1, exactly(inf), aNaN()},
        // An infinite exponent on the logarithm (0, 0) of 1.
        {1, 0.0, inf, 0.0, aNaN(), aNaN()},
        {1, 0.0, 5, 3, exactly(1), exactly(0.0)},
        // Infinite bases with real exponents: infinity times the exponent's zero imaginary part.
        {inf, 0.0, 2, 0.0, exactly(inf), aNaN()},
        // Everything with a NaN.
        {q, 1, 2, 0.0, aNaN(), aNaN()},
        {2, 1, q, 1, aNaN(), aNaN()},
        {2, 1, 1, q, aNaN(), aNaN()},
        // Ordinary ones. (-1)^(1/2) comes from an angle of pi rounded, so that its real part is not zero.
        {4, 0.0, 0.5, 0.0, about(2), exactly(0.0)},
        {-1, 0.0, 0.5, 0.0, about(0x1.1a62633145c07p-54), exactly(1)},
        {-1, -0.0, 0.5, 0.0, about(0x1.1a62633145c07p-54), exactly(-1)},
        {0.0, 1, 0.0, 1, about(0x1.a9bcc46f767ep-3), exactly(0.0)},
        {1, 1, 2, 0.0, about(0x1.1a62633145c07p-53), about(2)},
        {2, 3, 1, 0.0, about(2), about(3)},
        {2, 3, 0.0, 0.0, exactly(1), exactly(0.0)},
    };
    for (const PowCase& c : cases) {
        for (const std::string_view family : {"Pow", "Powx"}) {
            for (const Export* f : grades<Complex64>(family)) {
                const auto a = element<Complex64>(c.aRe, c.aIm), b = element<Complex64>(c.bRe, c.bIm);
                const Complex64 result = callPow(*f, a, b);
                EXPECT_TRUE(matches(result.re, c.re)) << f->name << text(a, b) << " re";
                EXPECT_TRUE(matches(result.im, c.im)) << f->name << text(a, b) << " im";
            }
            for (const Export* f : grades<Complex32>(family)) {
                const auto a = element<Complex32>(c.aRe, c.aIm), b = element<Complex32>(c.bRe, c.bIm);
                const Complex32 result = callPow(*f, a, b);
                EXPECT_TRUE(matches(result.re, c.re)) << f->name << text(a, b) << " re";
                EXPECT_TRUE(matches(result.im, c.im)) << f->name << text(a, b) << " im";
            }
        }
    }
}

// The scalar (2, 0) goes through logarithm and exponential like any other: the square would be exact.
TEST(ComplexPow, TheScalarTwoDoesNotSquare) {
    const Export& powx = *grades<Complex64>("Powx").back();
    int different = 0;
    for (int i = 2; i < 200; ++i) {
        const Complex64 a{i * 1.0, 0.0}, result = callPow(powx, a, {2, 0});
        EXPECT_TRUE(sameElement(result, composed(a, {2, 0})));
        different += result.re != i * 1.0 * i;
    }
    EXPECT_GT(different, 50);
}

TEST(ComplexPow, SubnormalResultsUnderflow) {
    const auto flags = [](std::string_view name, auto a, auto b) {
        decltype(a) result;
        const Export& f = *findExport(name);
        return flagsRaised([&] { f.call({&a, &b, &b, &result, nullptr, 1}); }) & flagUnderflow;
    };
    const Complex64 ten{10, 0}, tenth{0.1, 0};
    const Complex32 ten32{10, 0}, tenth32{0.1F, 0};
    EXPECT_TRUE(flags("oktsPow_64fc_A53", tenth, Complex64{310, 0}));
    EXPECT_TRUE(flags("oktsPowx_64fc_A53", tenth, Complex64{310, 0}));
    EXPECT_FALSE(flags("oktsPow_64fc_A53", tenth, Complex64{300, 0}));
    EXPECT_FALSE(flags("oktsPow_64fc_A53", ten, Complex64{300, 0}));
    EXPECT_TRUE(flags("oktsPow_32fc_A24", tenth32, Complex32{40, 0}));
    EXPECT_TRUE(flags("oktsPowx_32fc_A24", tenth32, Complex32{40, 0}));
    EXPECT_FALSE(flags("oktsPow_32fc_A24", tenth32, Complex32{36, 0}));
    EXPECT_FALSE(flags("oktsPowx_32fc_A24", ten32, Complex32{36, 0}));
}

// The product with the logarithm overflows to a real part of minus infinity.
TEST(ComplexPow, AFiniteResultMayRaiseOverflow) {
    const Complex64 base{-3.25, -0.5}, exponent{0.0, -1.79e308};
    Complex64 result;
    EXPECT_TRUE(flagsRaised([&] { oktsPow_64fc_A53(&base, &exponent, &result, 1); }) & flagOverflow);
    EXPECT_EQ(result.re, 0.0);
    EXPECT_EQ(result.im, 0.0);
}

}  // namespace
}  // namespace okt::test
