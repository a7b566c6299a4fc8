// The references against knowledge of other origin: MPC, the C library, identities, and themselves at more precision.
#include "reference.h"
#include "points.h"

#include <gtest/gtest.h>
#include <mpc.h>

#include <array>
#include <cmath>
#include <complex>
#include <map>
#include <string>
#include <vector>

namespace okt::accuracy {
namespace {

using Inputs = std::array<double, maxInputs>;

std::array<Real, maxParts> evaluate(const Reference& reference, const Inputs& inputs) {
    Real in[maxInputs];
    std::array<Real, maxParts> out;
    for (std::size_t k = 0; k < maxInputs; ++k) in[k] = inputs[k];
    reference.evaluate(in, out.data());
    return out;
}

std::array<Real, maxParts> evaluate(std::string_view family, bool complex, const Inputs& inputs) {
    return evaluate(*findReference(family, complex), inputs);
}

// log2 of the relative difference; -infinity for equal numbers.
double relativeDifference(const Real& a, const Real& b) {
    if (a == b) return -HUGE_VAL;
    if (a.isZero() || b.isZero() || !a.isFinite() || !b.isFinite()) return HUGE_VAL;
    const Real ratio = abs(a - b) / abs(b);
    return static_cast<double>(ratio.exponent());
}

std::string at(const Inputs& inputs) {
    std::string text;
    for (const double x : inputs) text += bitPattern(x, ElementType::Real64) + " ";
    return text;
}

// Arguments of a family that lie in its domain, moderate and extreme ones.
std::vector<std::string> rangesOf(std::string_view family, bool complex) {
    static const std::map<std::string_view, std::vector<std::string>> special = {
        {"Acos", {"uniform -1 1", "log 1e-300 1 both"}},
        {"Acosh", {"log 1 1e300", "log 1e-15 1 near 1"}},
        {"Asin", {"uniform -1 1", "log 1e-300 1 both"}},
        {"Atanh", {"uniform -0.999999999999 0.999999999999", "log 1e-300 1e-3 both"}},
        {"CdfNorm", {"uniform -40 10", "log 1e-300 1 both"}},
        {"CdfNormInv",
         {"uniform 0.001 0.999", "log sub 0.5", "log 1e-16 0.49 both near 0.5", "list 0x3FEFFFFFFFFFFFFF"}},
        {"Cosh", {"uniform -700 700", "log 1e-300 1 both"}},
        {"Erf", {"uniform -7 7", "log 1e-300 1 both"}},
        {"Erfc", {"uniform -7 30", "log 1e-300 1 both"}},
        {"ErfcInv", {"uniform 0.001 1.999", "log sub 0.5", "log 1e-16 0.9 both near 1", "list 0x3FFFFFFFFFFFFFFF"}},
        {"ErfInv", {"uniform -0.999 0.999", "log sub 0.9 both", "log 1e-16 0.1 near -1"}},
        {"Exp", {"uniform -700 700", "log 1e-300 1 both"}},
        {"Expm1", {"uniform -700 700", "log 1e-300 1 both"}},
        {"InvSqrt", {"log sub max"}},
        {"Ln", {"log sub max", "log 1e-15 0.1 both near 1"}},
        {"Log10", {"log sub max", "log 1e-15 0.1 both near 1"}},
        {"Log1p", {"uniform -0.9 10", "log 1e-300 1"}},
        {"Pow", {"log 1e-10 1e10"}},
        {"Pow3o2", {"log sub max"}},
        {"Powx", {"log 1e-10 1e10"}},
        {"Sinh", {"uniform -700 700", "log 1e-300 1 both"}},
        {"Sqrt", {"log sub max"}},
    };
    static const std::map<std::string_view, std::vector<std::string>> specialComplex = {
        {"Cosh", {"uniform -30 30", "log 1e-300 500 both"}},
        {"Exp", {"uniform -30 30", "log 1e-300 700 both"}},
        {"Ln",
         {"log sub max both", "polar log 1e-15 0.5 both near 1 | uniform -pi pi",
          "log 1e-15 1 both near 1 | log 1e-30 1"}},
        {"Log10", {"log sub max both", "polar log 1e-15 0.5 both near 1 | uniform -pi pi"}},
        {"Pow", {"log 1e-2 1e2 both"}},
        {"Powx", {"log 1e-2 1e2 both"}},
        {"Sin", {"uniform -30 30", "log 1e-300 500 both"}},
        {"Cos", {"uniform -30 30", "log 1e-300 500 both"}},
        {"Sinh", {"uniform -30 30", "log 1e-300 500 both"}},
        {"Tan", {"uniform -30 30", "log 1e-300 1e10 both"}},
        {"Tanh", {"uniform -30 30", "log 1e-300 1e10 both"}},
    };
    const auto& table = complex ? specialComplex : special;
    const auto found = table.find(family);
    if (found != table.end()) return found->second;
    return {"uniform -10 10", "log 1e-300 1e300 both", "log 1e-12 0.5 both near 1"};
}

std::vector<Inputs> pointsOf(const Reference& reference, std::size_t count) {
    const bool complexSource = reference.inputs == 4 || (reference.complex && reference.family != "CIS");
    const ElementType type = complexSource ? ElementType::Complex64 : ElementType::Real64;
    const std::size_t parts = complexSource ? 2 : 1;
    std::vector<Inputs> result;
    SplitMix64 random(20240229);
    const bool power = reference.family == "Pow" || reference.family == "Powx";
    for (const std::string& text : rangesOf(reference.family, reference.complex)) {
        ArgumentRange first(text, type), second(power ? "uniform -20 20" : text, type);
        for (std::size_t i = 0; i < count; ++i) {
            Inputs point{};
            first.draw(random, point.data());
            if (static_cast<std::size_t>(reference.inputs) > parts) second.draw(random, &point[parts]);
            result.push_back(point);
        }
    }
    return result;
}

TEST(Reference, EveryRoutineOfTheCatalogueHasOne) {
    for (const Export& entry : exports())
        EXPECT_NE(findReference(entry.family, entry.type.ends_with('c')), nullptr) << entry.name;
}

TEST(Reference, MorePrecisionChangesNothingAbove170Bits) {
    for (const Reference& reference : references()) {
        for (const Inputs& inputs : pointsOf(reference, 60)) {
            const auto usual = evaluate(reference, inputs);
            const PrecisionScope scope(320);
            const auto finer = evaluate(reference, inputs);
            for (std::size_t k = 0; k < static_cast<std::size_t>(reference.parts); ++k) {
                if (!finer[k].isFinite()) continue;
                EXPECT_LT(relativeDifference(usual[k], finer[k]), -170)
                    << reference.family << " part " << k << " at " << at(inputs);
            }
        }
    }
}

// The C library's long double functions are good to a few ulp of 64 bits.
TEST(Reference, RealFunctionsAgreeWithTheCLibrary) {
    using L = long double;
    const std::map<std::string_view, L (*)(L, L)> library = {
        {"Acos", [](L x, L) { return std::acos(x); }},
        {"Acosh", [](L x, L) { return std::acosh(x); }},
        {"Asin", [](L x, L) { return std::asin(x); }},
        {"Asinh", [](L x, L) { return std::asinh(x); }},
        {"Atan", [](L x, L) { return std::atan(x); }},
        {"Atan2", [](L x, L y) { return std::atan2(x, y); }},
        {"Atanh", [](L x, L) { return std::atanh(x); }},
        {"Cbrt", [](L x, L) { return std::cbrt(x); }},
        {"Ceil", [](L x, L) { return std::ceil(x); }},
        {"Cos", [](L x, L) { return std::cos(x); }},
        {"Cosh", [](L x, L) { return std::cosh(x); }},
        {"Erf", [](L x, L) { return std::erf(x); }},
        {"Erfc", [](L x, L) { return std::erfc(x); }},
        {"Exp", [](L x, L) { return std::exp(x); }},
        {"Expm1", [](L x, L) { return std::expm1(x); }},
        {"Floor", [](L x, L) { return std::floor(x); }},
        {"Hypot", [](L x, L y) { return std::hypot(x, y); }},
        {"Inv", [](L x, L) { return 1 / x; }},
        {"InvCbrt", [](L x, L) { return 1 / std::cbrt(x); }},
        {"InvSqrt", [](L x, L) { return 1 / std::sqrt(x); }},
        {"Ln", [](L x, L) { return std::log(x); }},
        {"Log10", [](L x, L) { return std::log10(x); }},
        {"Log1p", [](L x, L) { return std::log1p(x); }},
        {"NearbyInt", [](L x, L) { return std::nearbyint(x); }},
        {"Pow", [](L x, L y) { return std::pow(x, y); }},
        {"Pow2o3", [](L x, L) { return std::cbrt(x) * std::cbrt(x); }},
        {"Pow3o2", [](L x, L) { return x * std::sqrt(x); }},
        {"Powx", [](L x, L y) { return std::pow(x, y); }},
        {"Rint", [](L x, L) { return std::rint(x); }},
        {"Round", [](L x, L) { return std::round(x); }},
        {"Sin", [](L x, L) { return std::sin(x); }},
        {"Sinh", [](L x, L) { return std::sinh(x); }},
        {"Sqr", [](L x, L) { return x * x; }},
        {"Sqrt", [](L x, L) { return std::sqrt(x); }},
        {"Tan", [](L x, L) { return std::tan(x); }},
        {"Tanh", [](L x, L) { return std::tanh(x); }},
        {"Trunc", [](L x, L) { return std::trunc(x); }},
        {"Abs", [](L x, L) { return std::abs(x); }},
        {"Add", [](L x, L y) { return x + y; }},
        {"Sub", [](L x, L y) { return x - y; }},
        {"Mul", [](L x, L y) { return x * y; }},
        {"Div", [](L x, L y) { return x / y; }},
    };
    for (const auto& [family, function] : library) {
        const Reference* reference = findReference(family, false);
        ASSERT_NE(reference, nullptr) << family;
        for (const Inputs& inputs : pointsOf(*reference, 300)) {
            const Real exact = evaluate(*reference, inputs)[0];
            Real other;
            mpfr_set_ld(other.get(), function(inputs[0], inputs[1]), MPFR_RNDN);
            // Sums of distant terms and the like: the C library's formula is the exact one with a rounding.
            EXPECT_LT(relativeDifference(other, exact), -60) << family << " at " << at(inputs);
        }
    }
}

// MPC promises correct rounding of both parts.
TEST(Reference, ComplexFunctionsAgreeWithMpc) {
    using Unary = int (*)(mpc_ptr, mpc_srcptr, mpc_rnd_t);
    const std::map<std::string_view, Unary> library = {
        {"Acos", mpc_acos},   {"Acosh", mpc_acosh}, {"Asin", mpc_asin}, {"Asinh", mpc_asinh}, {"Atan", mpc_atan},
        {"Atanh", mpc_atanh}, {"Cos", mpc_cos},     {"Cosh", mpc_cosh}, {"Exp", mpc_exp},     {"Ln", mpc_log},
        {"Log10", mpc_log10}, {"Sin", mpc_sin},     {"Sinh", mpc_sinh}, {"Sqrt", mpc_sqrt},   {"Tan", mpc_tan},
        {"Tanh", mpc_tanh},   {"Conj", mpc_conj},
    };
    using Binary = int (*)(mpc_ptr, mpc_srcptr, mpc_srcptr, mpc_rnd_t);
    const std::map<std::string_view, Binary> binaryLibrary = {
        {"Add", mpc_add},
        {"Div", mpc_div},
        {"Mul", mpc_mul},
        {"Pow", mpc_pow},
        {"Powx", mpc_pow},
        {"Sub", mpc_sub},
        {"MulByConj",
         [](mpc_ptr r, mpc_srcptr a, mpc_srcptr b, mpc_rnd_t rounding) {
             mpc_t c;
             mpc_init2(c, 53);
             mpc_conj(c, b, rounding);
             const int inexact = mpc_mul(r, a, c, rounding);
             mpc_clear(c);
             return inexact;
         }},
    };
    mpc_t a, b, result;
    mpc_init2(a, 53);
    mpc_init2(b, 53);
    mpc_init2(result, 192);
    int checked = 0;
    for (const Reference& reference : references()) {
        const auto unary = library.find(reference.family);
        const auto binary = binaryLibrary.find(reference.family);
        if (!reference.complex || (unary == library.end() && binary == binaryLibrary.end())) continue;
        ++checked;
        for (const Inputs& inputs : pointsOf(reference, 40)) {
            mpc_set_d_d(a, inputs[0], inputs[1], MPC_RNDNN);
            mpc_set_d_d(b, inputs[2], inputs[3], MPC_RNDNN);
            if (unary != library.end())
                unary->second(result, a, MPC_RNDNN);
            else
                binary->second(result, a, b, MPC_RNDNN);
            const auto ours = evaluate(reference, inputs);
            Real re, im;
            mpfr_set(re.get(), mpc_realref(result), MPFR_RNDN);
            mpfr_set(im.get(), mpc_imagref(result), MPFR_RNDN);
            EXPECT_LT(relativeDifference(ours[0], re), -165) << reference.family << " re at " << at(inputs);
            EXPECT_LT(relativeDifference(ours[1], im), -165) << reference.family << " im at " << at(inputs);
        }
    }
    EXPECT_EQ(checked, 24);
    mpc_clear(a);
    mpc_clear(b);
    mpc_clear(result);
}

// On the cuts the sign of the zero part chooses the side, as in the C library.
TEST(Reference, BranchCutsFollowTheSignsOfZeros) {
    using C = std::complex<long double>;
    const std::map<std::string_view, C (*)(const C&)> library = {
        {"Acos", [](const C& z) { return std::acos(z); }}, {"Acosh", [](const C& z) { return std::acosh(z); }},
        {"Asin", [](const C& z) { return std::asin(z); }}, {"Asinh", [](const C& z) { return std::asinh(z); }},
        {"Atan", [](const C& z) { return std::atan(z); }}, {"Atanh", [](const C& z) { return std::atanh(z); }},
        {"Cos", [](const C& z) { return std::cos(z); }},   {"Cosh", [](const C& z) { return std::cosh(z); }},
        {"Exp", [](const C& z) { return std::exp(z); }},   {"Ln", [](const C& z) { return std::log(z); }},
        {"Sin", [](const C& z) { return std::sin(z); }},   {"Sinh", [](const C& z) { return std::sinh(z); }},
        {"Sqrt", [](const C& z) { return std::sqrt(z); }}, {"Tan", [](const C& z) { return std::tan(z); }},
        {"Tanh", [](const C& z) { return std::tanh(z); }},
    };
    const double values[] = {-3, -0.5, -0.0, 0.0, 0.5, 3};
    for (const auto& [family, function] : library) {
        for (const double x : values) {
            for (const double y : values) {
                if (x != 0 && y != 0) continue;
                if (family == "Ln" && x == 0 && y == 0) continue;
                const C expected = function(C(x, y));
                const auto ours = evaluate(family, true, {x, y});
                const long double parts[] = {expected.real(), expected.imag()};
                for (std::size_t k = 0; k < 2; ++k) {
                    EXPECT_EQ(ours[k].isNegative(), std::signbit(parts[k]))
                        << family << " of " << x << ", " << y << " part " << k;
                    Real other;
                    mpfr_set_ld(other.get(), parts[k], MPFR_RNDN);
                    EXPECT_LT((abs(ours[k] - other)).toDouble(), 1e-17 * (1 + std::abs(static_cast<double>(parts[k]))))
                        << family << " of " << x << ", " << y << " part " << k;
                }
            }
        }
    }
}

TEST(Reference, InverseErrorFunctionsInvert) {
    SplitMix64 random(7);
    for (const char* range : {"log sub 0.5", "uniform 0.01 1.99", "log 1e-15 1 both near 1", "bits sub 1"}) {
        Distribution distribution(range, ElementType::Real64);
        for (int i = 0; i < 100; ++i) {
            const double v = distribution.draw(random);
            if (!(0 < v && v < 2)) continue;
            const PrecisionScope scope(256);
            EXPECT_LT(relativeDifference(erfc(erfcInv(v)), v), -200) << v;
            if (v < 1) {
                EXPECT_LT(relativeDifference(erf(erfInv(v)), v), -200) << v;
                EXPECT_LT(relativeDifference(cdfNorm(cdfNormInv(v)), v), -200) << v;
            }
        }
    }
    EXPECT_TRUE(erfInv(0.0).isZero());
    EXPECT_TRUE(erfInv(-0.0).isNegative());
    EXPECT_TRUE(cdfNormInv(0.5).isZero());
    EXPECT_FALSE(erfInv(2.0).isFinite());
    EXPECT_FALSE(erfcInv(0.0).isFinite());
    EXPECT_FALSE(erfcInv(-1.0).isFinite());
}

TEST(Reference, InverseErrorFunctionsKeepRelativeAccuracyNearTheirZero) {
    // erfcinv(1 + d) = -sqrt(pi)/2 (d + pi/12 d^3 + ...), and d is exact.
    const double d = std::ldexp(1.0, -52);
    const PrecisionScope scope(256);
    const Real c = scaled(sqrt(pi()), -1);
    const Real leading = -(c * Real(d) * (1.0 + pi() * Real(d) * Real(d) / 12.0));
    EXPECT_LT(relativeDifference(erfcInv(1 + d), leading), -200);
}

TEST(Reference, ComplexPowersThatAreExact) {
    const auto square = evaluate("Pow", true, {0, 1, 2, 0});  // i^2
    EXPECT_TRUE(square[0] == Real(-1.0));
    EXPECT_TRUE(square[1].isZero());
    const auto fourth = evaluate("Powx", true, {1, 1, 4, 0});  // (1 + i)^4
    EXPECT_LT(relativeDifference(fourth[0], -4.0), -180);
    EXPECT_TRUE(fourth[1].isZero());
    EXPECT_TRUE(evaluate("Pow", true, {0, 0, 2, 1})[0].isZero());
}

TEST(Reference, NothingFailsOnSpecialValues) {
    const double values[] = {0.0, -0.0, 1, -1, 2, HUGE_VAL, -HUGE_VAL, std::nan(""), 5e-324, 1.7e308, -1.7e308};
    for (const Reference& reference : references())
        for (const double a : values)
            for (const double b : values) evaluate(reference, {a, b, b, a});
}

}  // namespace
}  // namespace okt::accuracy
