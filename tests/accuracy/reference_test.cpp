// The references against knowledge of other origin: MPC, the C library, identities, and themselves at more precision.
#include "reference.h"
#include "points.h"
#include "quick_reference.h"

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

// Points of the domain that the family's descriptor tells.
std::vector<Inputs> pointsOf(const Reference& reference, std::size_t count) {
    const bool complexSource = reference.inputs == 4 || (reference.complex && reference.inputs == 2);
    const ElementType type = complexSource ? ElementType::Complex64 : ElementType::Real64;
    const std::size_t parts = complexSource ? 2 : 1;
    std::vector<std::string_view> domain = reference.domain;
    if (domain.empty()) domain = {"uniform -10 10", "log 1e-300 1e300 both", "log 1e-12 0.5 both near 1"};
    std::vector<Inputs> result;
    SplitMix64 random(20240229);
    for (const std::string_view text : domain) {
        constexpr std::string_view divider = " ; ";
        const auto end = text.find(divider);
        ArgumentRange first(text.substr(0, end), type),
            second(end == text.npos ? text : text.substr(end + divider.size()), type);
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
    std::size_t checked = 0;
    for (const Reference& reference : references()) {
        const QuickReference* quick = findQuickReference(reference.family, reference.complex);
        if (!quick || quick->steps) continue;
        ++checked;
        // The error function's complement enlarges the rounding of its argument x by x^2.
        const double limit = reference.family == "CdfNorm" ? -50 : -60;
        for (const Inputs& inputs : pointsOf(reference, 300)) {
            const auto exact = evaluate(reference, inputs);
            long double results[maxParts] = {};
            quick->evaluate(inputs[0], inputs[1], nullptr, results);
            for (std::size_t k = 0; k < static_cast<std::size_t>(reference.parts); ++k) {
                Real other;
                mpfr_set_ld(other.get(), results[k], MPFR_RNDN);
                // Sums of distant terms and the like: the C library's formula is the exact one with a rounding.
                EXPECT_LT(relativeDifference(other, exact[k]), limit)
                    << reference.family << " part " << k << " at " << at(inputs);
            }
        }
    }
    EXPECT_GE(checked, 40u);
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
    std::size_t checked = 0;
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
    EXPECT_EQ(checked, library.size() + binaryLibrary.size());
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
