// The extended-precision kernels behind the complex functions, against MPFR: at most 0.75 ulp of the 64-bit significand
// over their whole ranges, each tier by itself, and the reduction by quarter turns for every exponent.
#include "extended/asin_acos.h"
#include "extended/atan.h"
#include "extended/exp.h"
#include "extended/inverse_hyper.h"
#include "extended/ln.h"
#include "extended/sin_cos.h"
#include "extended/sinh_cosh.h"
#include "extended/tan.h"
#include "extended/tanh.h"
#include "real.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace okt::accuracy {
namespace {

constexpr double allowed = 0.75;

Real exactly(Real80 x) {
    Real r;
    mpfr_set_ld(r.get(), x, MPFR_RNDN);
    return r;
}

// Error in units of the last of 64 places, in those of the subnormal numbers below the normal range.
double ulps(Real80 computed, const Real& exact) {
    if (!exact.isFinite() || !std::isfinite(computed))
        return exact.isFinite() == std::isfinite(computed) ? 0 : HUGE_VAL;
    if (exact.isZero()) return computed == 0 ? 0 : HUGE_VAL;
    const long exponent = std::max(exact.exponent(), -16382L);
    if (exponent > 16383) return HUGE_VAL;
    return abs(exactly(computed) - exact).toDouble() == 0
               ? 0
               : scaled(abs(exactly(computed) - exact), static_cast<int>(63 - exponent)).toDouble();
}

// Magnitudes from 2^low to 2^high.
struct Tier {
    int low, high;
    bool negativeToo = true;
};

class Points {
public:
    explicit Points(std::uint64_t seed) : random_(seed) {}
    std::uint64_t bits() { return random_(); }
    bool coin() { return (random_() & 1) != 0; }
    // Significands of all kinds: any, few bits, few bits missing, those of a Real64.
    std::uint64_t significand() {
        const std::uint64_t any = random_() | 0x8000000000000000U;
        switch (random_() % 8) {
            case 0: return 0x8000000000000000U | (any >> (1 + random_() % 62));
            case 1: return ~(any >> (1 + random_() % 62)) | 0x8000000000000000U;
            case 2:
            case 3: return any & 0xFFFFFFFFFFFFF800U;
            default: return any;
        }
    }
    Real80 of(const Tier& tier) {
        const int exponent = tier.low + static_cast<int>(random_() % static_cast<unsigned>(tier.high - tier.low));
        Real80 x = std::ldexp(static_cast<Real80>(significand()), exponent - 63);
        return tier.negativeToo && coin() ? -x : x;
    }

private:
    std::mt19937_64 random_;
};

std::string text(Real80 x) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.21Lg (%La)", x, x);
    return buffer;
}

constexpr int pointsOfATier = 2500;

// Kernel and reference take x; Narrow says that the kernel is also called with a Real64.
struct Worst {
    double error = 0;
    Real80 at = 0;
    void see(double e, Real80 x) {
        if (e > error) {
            error = e;
            at = x;
        }
    }
    void expectSmall(const char* name, const Tier& tier) const {
        EXPECT_LE(error, allowed) << name << " at " << text(at);
        testing::Test::RecordProperty(
            std::string(name) + " 2^" + std::to_string(tier.low) + " to 2^" + std::to_string(tier.high),
            std::to_string(error));
    }
};

template <class Kernel, class Reference>
void expectAccurate(const char* name, const Kernel& kernel, const Reference& reference, const std::vector<Tier>& tiers,
                    int points = pointsOfATier) {
    const PrecisionScope precision(140);
    for (const Tier& tier : tiers) {
        Points random(static_cast<std::uint64_t>(tier.low + 20000));
        Worst worst;
        for (int i = 0; i < points; ++i) {
            const Real80 x = random.of(tier);
            worst.see(ulps(kernel(x), reference(exactly(x))), x);
            const auto narrow = static_cast<Real64>(x);
            if (static_cast<Real80>(narrow) == x) worst.see(ulps(kernel(narrow), reference(exactly(x))), x);
        }
        worst.expectSmall(name, tier);
    }
}

// The widest tier of all odd functions and the subnormal numbers.
const std::vector<Tier> tiny = {{-16445, -16380}, {-16380, -1070}, {-1074, -75}, {-77, -73}};

std::vector<Tier> with(std::vector<Tier> tiers, const std::vector<Tier>& more) {
    tiers.insert(tiers.end(), more.begin(), more.end());
    return tiers;
}

TEST(Extended, Sqrt) {
    expectAccurate(
        "sqrt", [](Real80 x) { return okt::sqrt(x); }, [](const Real& x) { return sqrt(x); },
        {{-16445, -16380, false}, {-16382, 16383, false}, {-2, 2, false}});
}

TEST(Extended, Exp) {
    expectAccurate(
        "exp", [](auto x) { return extended::exp(x); }, [](const Real& x) { return exp(x); },
        {{-16445, -75}, {-75, -67}, {-67, -26}, {-26, -18}, {-18, -11}, {-11, -5}, {-5, 0}, {0, 6}, {6, 9}, {9, 13}});
    // Subnormal results.
    const PrecisionScope precision(140);
    Points random(1);
    Worst worst;
    for (int i = 0; i < pointsOfATier; ++i) {
        const Real80 x = -11356.0L - 44.0L * static_cast<Real80>(random.bits()) * 0x1p-64L;
        worst.see(ulps(extended::exp(x), exp(exactly(x))), x);
    }
    // A product of two roundings there.
    EXPECT_LE(worst.error, 1.0) << text(worst.at);
}

TEST(Extended, Hyperbolic) {
    const std::vector<Tier> tiers = {{-18, -11}, {-11, -5}, {-5, -1}, {-1, 1}, {1, 3}, {3, 5}, {5, 9}, {9, 13}};
    expectAccurate(
        "sinh", [](auto x) { return extended::sinhCosh(x).sinh; }, [](const Real& x) { return sinh(x); },
        with(tiers, with(tiny, {{-75, -18}})));
    expectAccurate(
        "cosh", [](auto x) { return extended::sinhCosh(x).cosh; }, [](const Real& x) { return cosh(x); },
        with(tiers, with(tiny, {{-75, -18}})));
    expectAccurate(
        "tanh", [](auto x) { return extended::tanh(x); }, [](const Real& x) { return tanh(x); },
        with(with(tiers, tiny), {{-75, -18}, {-12, -7}, {13, 16383}}));
    EXPECT_EQ(extended::sinh(Real80{1.5}), extended::sinhCosh(Real80{1.5}).sinh);
    EXPECT_EQ(extended::cosh(Real80{1.5}), extended::sinhCosh(Real80{1.5}).cosh);
}

TEST(Extended, SineAndCosine) {
    const std::vector<Tier> tiers = {{-75, -19}, {-19, -11}, {-11, -5}, {-5, -1}, {-1, 0},
                                     {0, 2},     {2, 6},     {6, 17},   {17, 30}};
    const std::vector<Tier> large = {{30, 64}, {64, 200}, {200, 1024}, {1024, 16384}};
    expectAccurate(
        "sin", [](auto x) { return extended::sinCos(x).sin; }, [](const Real& x) { return sin(x); }, with(tiers, tiny));
    expectAccurate(
        "cos", [](auto x) { return extended::sinCos(x).cos; }, [](const Real& x) { return cos(x); }, with(tiers, tiny));
    expectAccurate(
        "sin", [](auto x) { return extended::sinCos(x).sin; }, [](const Real& x) { return sin(x); }, large, 1000);
    expectAccurate(
        "cos", [](auto x) { return extended::sinCos(x).cos; }, [](const Real& x) { return cos(x); }, large, 1000);
}

TEST(Extended, Tangent) {
    expectAccurate(
        "tan", [](auto x) { return extended::tan(x); }, [](const Real& x) { return tan(x); },
        with(tiny,
             {{-75, -19}, {-19, -12}, {-12, -10}, {-10, -5}, {-5, -1}, {-1, 0}, {0, 2}, {2, 6}, {6, 17}, {17, 30}}));
    expectAccurate(
        "tan", [](auto x) { return extended::tan(x); }, [](const Real& x) { return tan(x); },
        {{30, 64}, {64, 200}, {200, 1024}, {1024, 16384}}, 1000);
}

TEST(Extended, Logarithms) {
    expectAccurate(
        "log", [](Real80 x) { return extended::ln(x); }, [](const Real& x) { return log(x); },
        {{-16445, -16380, false}, {-16382, 16384, false}, {-2, -1, false}, {-1, 0, false}, {0, 1, false}});
    // Next to 1, by the distance.
    const PrecisionScope precision(200);
    for (const Tier& tier :
         {Tier{-64, -50}, Tier{-50, -38}, Tier{-38, -25}, Tier{-25, -14}, Tier{-14, -8}, Tier{-8, -4}, Tier{-5, -3}}) {
        Points random(2);
        Worst worst;
        for (int i = 0; i < pointsOfATier; ++i) {
            const Real80 x = 1.0L + random.of(tier);
            worst.see(ulps(extended::ln(x), log(exactly(x))), x);
        }
        worst.expectSmall("log next to 1", tier);
    }
    expectAccurate(
        "log1p", [](Real80 x) { return extended::log1p(x); }, [](const Real& x) { return log1p(x); },
        with(tiny, {{-75, -38}, {-38, -25}, {-25, -14}, {-14, -8}, {-8, -4}, {-4, -1}, {-1, 0}}));
    expectAccurate(
        "log1p", [](Real80 x) { return extended::log1p(x); }, [](const Real& x) { return log1p(x); },
        {{0, 2, false}, {2, 80, false}, {80, 16384, false}});
}

TEST(Extended, InverseHyperbolic) {
    expectAccurate(
        "asinh", [](auto x) { return extended::asinh(x); }, [](const Real& x) { return asinh(x); },
        with(tiny, {{-75, -18},
                    {-18, -12},
                    {-12, -7},
                    {-7, -1},
                    {-1, 1},
                    {1, 5},
                    {5, 11},
                    {11, 18},
                    {18, 38},
                    {38, 70},
                    {70, 16384}}));
    expectAccurate(
        "acosh", [](auto x) { return extended::acosh(x); }, [](const Real& x) { return acosh(x); },
        {{0, 1, false},
         {1, 5, false},
         {5, 11, false},
         {11, 18, false},
         {18, 34, false},
         {34, 70, false},
         {70, 16384, false}});
    expectAccurate(
        "acosh of 1 + x", [](Real80 x) { return extended::acosh(1.0L + x); },
        [](const Real& x) { return acosh(exactly(1.0L + mpfr_get_ld(x.get(), MPFR_RNDN))); },
        {{-63, -30, false}, {-30, -9, false}, {-9, -2, false}, {-3, -1, false}});
    expectAccurate(
        "atanh", [](Real80 x) { return extended::atanh(x); }, [](const Real& x) { return atanh(x); },
        with(tiny, {{-75, -18}, {-18, -12}, {-12, -7}, {-7, -2}, {-2, -1}, {-1, 0}}));
    expectAccurate(
        "atanh of 1 - x", [](Real80 x) { return extended::atanh(1.0L - x); },
        [](const Real& x) { return atanh(exactly(1.0L - mpfr_get_ld(x.get(), MPFR_RNDN))); },
        {{-63, -30, false}, {-30, -2, false}});
}

TEST(Extended, InverseCircular) {
    const std::vector<Tier> small = {{-75, -18}, {-18, -12}, {-12, -7}, {-7, -2}, {-2, -1}, {-1, 0}};
    expectAccurate(
        "asin", [](auto x) { return extended::asin(x); }, [](const Real& x) { return asin(x); }, with(tiny, small));
    expectAccurate(
        "acos", [](auto x) { return extended::acos(x); }, [](const Real& x) { return acos(x); }, with(tiny, small));
    for (const bool cosine : {false, true})
        expectAccurate(
            cosine ? "acos next to 1" : "asin next to 1",
            [=](Real80 x) {
                const Real80 y = extended::isNegative(x) ? -1.0L - x : 1.0L - x;
                return cosine ? extended::acos(y) : extended::asin(y);
            },
            [=](const Real& x) {
                const Real80 v = mpfr_get_ld(x.get(), MPFR_RNDN);
                const Real y = exactly(extended::isNegative(v) ? -1.0L - v : 1.0L - v);
                return cosine ? acos(y) : asin(y);
            },
            {{-63, -30}, {-30, -2}});
    expectAccurate(
        "atan", [](auto x) { return extended::atan(x); }, [](const Real& x) { return atan(x); },
        with(tiny, {{-75, -18},
                    {-18, -12},
                    {-12, -7},
                    {-7, -1},
                    {-1, 1},
                    {1, 6},
                    {6, 11},
                    {11, 15},
                    {15, 25},
                    {25, 65},
                    {65, 16384}}));
}

TEST(Extended, Angle) {
    const PrecisionScope precision(140);
    // The difference of the exponents, with the larger magnitude's exponent.
    struct Shape {
        int apart, low, high;
    };
    const Shape shapes[] = {{0, -2, 2},       {1, -2, 2},        {4, -100, 100},       {8, -100, 100},
                            {12, -2, 2},      {13, -2, 2},       {30, -9, 9},          {75, -9, 9},
                            {76, -9, 9},      {200, -9, 9},      {0, -16445, -8000},   {9, -16400, -8200},
                            {0, 8100, 16384}, {40, 8200, 16384}, {30000, 16000, 16384}};
    for (const Shape& shape : shapes) {
        Points random(static_cast<std::uint64_t>(shape.apart));
        Worst worst;
        Real80 worstX = 0;
        for (int i = 0; i < 3000; ++i) {
            const Real80 large = random.of({shape.low, shape.high});
            const Real80 little = std::ldexp(random.of({0, 1}), static_cast<int>(std::ilogb(large)) - shape.apart);
            const bool steep = random.coin();
            const Real80 y = steep ? large : little, x = steep ? little : large;
            const auto see = [&](Real80 angle) {
                const double error = ulps(angle, atan2(exactly(y), exactly(x)));
                if (error > worst.error) worstX = x;
                worst.see(error, y);
            };
            see(extended::atan2(y, x));
            const auto y64 = static_cast<Real64>(y), x64 = static_cast<Real64>(x);
            if (y64 == y && x64 == x) see(extended::atan2(y64, x64));
        }
        EXPECT_LE(worst.error, allowed) << "exponents " << shape.apart << " apart, y " << text(worst.at) << ", x "
                                        << text(worstX);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Quarter turns

// A number mod 4 quarter turns, exactly enough: m*2^(exponent - 63)*2/pi.
class QuarterTurns {
public:
    QuarterTurns() {
        const PrecisionScope precision(17000);
        twoOverPi_ = 2.0 / pi();
        halfPi_ = scaled(pi(), -1);
    }
    // 2^(exponent - 63)*2/pi mod 4, at the precision in force.
    Real unit(int exponent) const {
        Real fraction;
        mpfr_frac(fraction.get(), scaled(twoOverPi_, exponent - 63 - 2).get(), MPFR_RNDN);
        return scaled(fraction, 2);
    }
    const Real& halfPi() const { return halfPi_; }

private:
    Real twoOverPi_, halfPi_;
};

// Denominators of the convergents of the fraction of c, below 2^64: the numbers whose products with c come closest to
// an integer.
std::vector<std::uint64_t> closest(const Real& c) {
    std::vector<std::uint64_t> found;
    Real x;
    mpfr_frac(x.get(), c.get(), MPFR_RNDN);
    __extension__ using Wide = unsigned __int128;
    Wide before = 0, q = 1;
    for (int i = 0; i < 100 && !x.isZero(); ++i) {
        x = 1.0 / x;
        Real whole;
        mpfr_trunc(whole.get(), x.get());
        if (whole.exponent() >= 63) break;
        const auto a = static_cast<Wide>(mpfr_get_uj(whole.get(), MPFR_RNDN));
        const Wide next = a * q + before;
        if (next >> 64 != 0) break;
        before = q;
        q = next;
        if (q >> 40 != 0) found.push_back(static_cast<std::uint64_t>(q));
        x = x - whole;
    }
    return found;
}

TEST(Extended, QuarterTurnsForEveryExponent) {
    const QuarterTurns turns;
    const PrecisionScope precision(500);
    const Real halfPi = 1.0 * turns.halfPi();  // no longer than needed
    double worstSmall = 0, worstLarge = 0;
    Real80 atSmall = 0, atLarge = 0;
    Points random(5);
    for (int exponent = -1; exponent < 16384; ++exponent) {
        const Real unit = turns.unit(exponent);
        std::vector<std::uint64_t> significands = closest(unit);
        significands.push_back(0x8000000000000000U);
        significands.push_back(0xFFFFFFFFFFFFFFFFU);
        significands.push_back(random.significand());
        for (const std::uint64_t m : significands) {
            const Real80 a = std::ldexp(static_cast<Real80>(m), exponent - 63);
            if (a < 0.5L) continue;
            const extended::Quarter quarter = extended::reduceByQuarterTurns(a, extended::exponentOf(a));
            // Nearest count of quarter turns with these last two bits.
            Real q = exactly(static_cast<Real80>(m)) * unit - static_cast<double>(quarter.turns & 3), k;
            q = scaled(q, -2);
            mpfr_rint(k.get(), q.get(), MPFR_RNDN);
            const Real rest = scaled(q - k, 2) * halfPi;
            ASSERT_LT(abs(rest).toDouble(), 0.785398163398) << text(a) << ": " << quarter.turns;
            const Real error = (exactly(quarter.r.head) + exactly(quarter.r.tail) - rest) / rest;
            const double relative = abs(error).toDouble();
            double& worst = exponent < 30 ? worstSmall : worstLarge;
            if (relative > worst) {
                worst = relative;
                (exponent < 30 ? atSmall : atLarge) = a;
            }
        }
    }
    RecordProperty("small", std::to_string(std::log2(worstSmall)));
    RecordProperty("large", std::to_string(std::log2(worstLarge)));
    // A sixteenth of the last place.
    EXPECT_LT(worstSmall, 0x1p-68) << text(atSmall) << std::log2(worstSmall);
    EXPECT_LT(worstLarge, 0x1p-68) << text(atLarge) << std::log2(worstLarge);
}

// The numbers closest to a quarter turn, where the whole result comes from the tail of the reduction.
TEST(Extended, SineAndTangentNextToTheirZeros) {
    const QuarterTurns turns;
    Worst sine, cosine, tangent;
    for (int exponent = 0; exponent < 16384; exponent += 7) {
        std::vector<std::uint64_t> significands;
        {
            const PrecisionScope precision(500);
            significands = closest(turns.unit(exponent));
        }
        const PrecisionScope precision(140);
        for (std::size_t i = significands.size() < 2 ? 0 : significands.size() - 2; i < significands.size(); ++i) {
            const Real80 a = std::ldexp(static_cast<Real80>(significands[i]), exponent - 63);
            const Real exact = exactly(a);
            const extended::SinCos both = extended::sinCos(a);
            sine.see(ulps(both.sin, sin(exact)), a);
            cosine.see(ulps(both.cos, cos(exact)), a);
            tangent.see(ulps(extended::tan(a), tan(exact)), a);
        }
    }
    EXPECT_LE(sine.error, allowed) << text(sine.at);
    EXPECT_LE(cosine.error, allowed) << text(cosine.at);
    EXPECT_LE(tangent.error, allowed) << text(tangent.at);
}

// ---------------------------------------------------------------------------------------------------------------------
// Special arguments

unsigned flagsOf(const auto& operation) {
    asm volatile("fnclex");
    operation();
    std::uint16_t word;
    asm volatile("fnstsw %0" : "=m"(word));
    asm volatile("fnclex");
    return word & 0x3FU;
}
constexpr unsigned flagInvalid = 1, flagDivideByZero = 4, flagUnderflow = 16, flagInexact = 32;

TEST(Extended, SpecialArguments) {
    const Real80 inf = std::numeric_limits<Real80>::infinity(), nan = std::numeric_limits<Real80>::quiet_NaN();
    using Kernel = Real80 (*)(Real80);
    struct Row {
        const char* name;
        Kernel kernel;
        Real80 ofInfinity, ofMinusInfinity, ofZero;
        bool zeroKeepsSign;
    };
    const Row rows[] = {
        {"sqrt", [](Real80 x) { return okt::sqrt(x); }, inf, nan, 0, true},
        {"exp", [](Real80 x) { return extended::exp(x); }, inf, 0, 1, false},
        {"sinh", [](Real80 x) { return extended::sinh(x); }, inf, -inf, 0, true},
        {"cosh", [](Real80 x) { return extended::cosh(x); }, inf, inf, 1, false},
        {"tanh", [](Real80 x) { return extended::tanh(x); }, 1, -1, 0, true},
        {"sin", [](Real80 x) { return extended::sin(x); }, nan, nan, 0, true},
        {"cos", [](Real80 x) { return extended::cos(x); }, nan, nan, 1, false},
        {"tan", [](Real80 x) { return extended::tan(x); }, nan, nan, 0, true},
        {"log", [](Real80 x) { return extended::ln(x); }, inf, nan, -inf, false},
        {"log1p", [](Real80 x) { return extended::log1p(x); }, inf, nan, 0, true},
        {"asinh", [](Real80 x) { return extended::asinh(x); }, inf, -inf, 0, true},
        {"acosh", [](Real80 x) { return extended::acosh(x); }, inf, nan, nan, false},
        {"atanh", [](Real80 x) { return extended::atanh(x); }, nan, nan, 0, true},
        {"asin", [](Real80 x) { return extended::asin(x); }, nan, nan, 0, true},
        {"acos", [](Real80 x) { return extended::acos(x); }, nan, nan, extended::acos(Real80{0}), false},
        {"atan", [](Real80 x) { return extended::atan(x); }, extended::atan(inf), -extended::atan(inf), 0, true},
    };
    for (const Row& row : rows) {
        const auto expectValue = [&](Real80 x, Real80 expected) {
            Real80 y = 0;
            const unsigned flags = flagsOf([&] { y = row.kernel(x); });
            if (expected != expected) {
                EXPECT_TRUE(y != y) << row.name << text(x);
                EXPECT_TRUE(flags & flagInvalid) << row.name << text(x);
            } else {
                EXPECT_EQ(y, expected) << row.name << text(x);
                EXPECT_FALSE(flags & flagInvalid) << row.name << text(x);
            }
        };
        expectValue(inf, row.ofInfinity);
        expectValue(-inf, row.ofMinusInfinity);
        expectValue(0.0L, row.ofZero);
        expectValue(-0.0L, row.ofZero);
        if (row.zeroKeepsSign) {
            EXPECT_FALSE(std::signbit(row.kernel(0.0L))) << row.name;
            EXPECT_TRUE(std::signbit(row.kernel(-0.0L))) << row.name;
            EXPECT_EQ(flagsOf([&] { row.kernel(-0.0L); }), 0U) << row.name;
        }
        Real80 y = 0;
        EXPECT_FALSE(flagsOf([&] { y = row.kernel(nan); }) & flagInvalid) << row.name;
        EXPECT_TRUE(y != y) << row.name;
    }
    for (const Kernel atanh : {static_cast<Kernel>([](Real80 x) { return extended::atanh(x); })}) {
        EXPECT_EQ(atanh(1), inf);
        EXPECT_EQ(atanh(-1), -inf);
        EXPECT_TRUE(flagsOf([&] { atanh(-1); }) & flagDivideByZero);
        EXPECT_TRUE(flagsOf([&] { atanh(2); }) & flagInvalid);
    }
    EXPECT_TRUE(flagsOf([] { extended::ln(-0.0L); }) & flagDivideByZero);
    EXPECT_TRUE(flagsOf([] { extended::ln(-1.0L); }) & flagInvalid);
    EXPECT_EQ(extended::ln(1.0L), 0);
    EXPECT_FALSE(std::signbit(extended::ln(1.0L)));
    EXPECT_EQ(extended::log1p(-1.0L), -inf);
    EXPECT_TRUE(flagsOf([] { extended::log1p(-1.0L); }) & flagDivideByZero);
    EXPECT_TRUE(flagsOf([] { extended::log1p(-1.5L); }) & flagInvalid);
    EXPECT_EQ(extended::acosh(Real80{1}), 0);
    EXPECT_EQ(extended::acos(Real80{1}), 0);
    // The tiny arguments of odd functions are inexact, and the subnormal ones underflow.
    const Real80 subnormal = 0x3p-16440L;
    EXPECT_TRUE(flagsOf([&] { extended::sin(0x1p-100L); }) & flagInexact);
    EXPECT_TRUE(flagsOf([&] { extended::sin(subnormal); }) & flagUnderflow);
}

TEST(Extended, SpecialAngles) {
    const Real80 inf = std::numeric_limits<Real80>::infinity(), nan = std::numeric_limits<Real80>::quiet_NaN();
    const Real80 pi = 0xC90FDAA22168C235p-62L;
    struct Row {
        Real80 y, x, angle;
    };
    const Row rows[] = {
        {0.0L, 1, 0.0L},
        {0.0L, 0.0L, 0.0L},
        {0.0L, -0.0L, pi},
        {0.0L, -1, pi},
        {1, 0.0L, pi / 2},
        {1, -0.0L, pi / 2},
        {inf, 1, pi / 2},
        {inf, -1, pi / 2},
        {1, inf, 0.0L},
        {1, -inf, pi},
        {inf, inf, pi / 4},
        {inf, -inf, 3 * pi / 4},
        {0.0L, inf, 0.0L},
        {0.0L, -inf, pi},
        {inf, 0.0L, pi / 2},
        {0x1p-16445L, -inf, pi},
        {0x1p16383L, 0x1p-16445L, pi / 2},
    };
    for (const Row& row : rows)
        for (const bool minus : {false, true}) {
            const Real80 y = minus ? -row.y : row.y, expected = minus ? -row.angle : row.angle;
            // One unit of the last place for the two parts of the table.
            EXPECT_LE(std::fabs(extended::atan2(y, row.x) - expected), std::fabs(expected) * 0x1p-63L)
                << text(y) << text(row.x);
            EXPECT_EQ(std::signbit(extended::atan2(y, row.x)), std::signbit(expected)) << text(y) << text(row.x);
            const auto y64 = static_cast<Real64>(y), x64 = static_cast<Real64>(row.x);
            if (y64 == y && x64 == row.x) {
                EXPECT_EQ(extended::atan2(y64, x64), extended::atan2(y, row.x));
            }
        }
    for (const Real80 other : {0.0L, 1.0L, inf, nan}) {
        EXPECT_TRUE(std::isnan(extended::atan2(nan, other)));
        EXPECT_TRUE(std::isnan(extended::atan2(other, nan)));
    }
}

}  // namespace
}  // namespace okt::accuracy
