// The harness itself: ulps, points, statistics, declared bounds
// and exhaustive runs, on functions whose errors are known.
#include "bounds.h"
#include "exhaustive.h"
#include "ulp.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace okt::accuracy {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(Ulp, IsThatOfTheBinadeAndOfTheSubnormalGridBelow) {
    EXPECT_EQ(ulpExponent(1.0, ElementType::Real32), -23);
    EXPECT_EQ(ulpExponent(-1.999, ElementType::Real64), -52);
    EXPECT_EQ(ulpExponent(0.999, ElementType::Real64), -53);
    EXPECT_EQ(ulpExponent(0x1p-130, ElementType::Real32), -149);
    EXPECT_EQ(ulpExponent(0x1p-1070, ElementType::Real64), -1074);
    EXPECT_EQ(ulpExponent(0.0, ElementType::Real32), -149);
}

TEST(Ulp, ErrorCountsTheDistanceToTheExactValue) {
    EXPECT_EQ(ulpError(1.0f, Real(1.0), ElementType::Real32), 0);
    EXPECT_EQ(ulpError(1 + 0x1p-23, Real(1.0), ElementType::Real32), 1);
    EXPECT_EQ(ulpError(1 - 0x1p-24, Real(1.0), ElementType::Real32), 0.5);
    EXPECT_EQ(ulpError(1.0, Real(1.0) + Real(0x1p-54), ElementType::Real64), 0.25);
    EXPECT_EQ(ulpError(0x1p-149, Real(0.0), ElementType::Real32), 1);
    EXPECT_EQ(ulpError(-0.0, Real(0.0), ElementType::Real32), 0);
    EXPECT_EQ(ulpError(0x1p-60, Real(0.0), ElementType::Real64, 1.0), 0x1p-8);
    EXPECT_EQ(ulpError(0.25 + 0x1p-54, Real(0.25), ElementType::Real64), 1);
    EXPECT_EQ(ulpError(0.25 + 0x1p-54, Real(0.25), ElementType::Real64, modulusFloor(0.25, 1.0)), 0.25);
}

TEST(Ulp, NonFiniteResultsAreRightOnlyBeyondTheLargestFiniteValue) {
    const double nan = std::nan("");
    EXPECT_EQ(ulpError(nan, Real(1.0), ElementType::Real64), infinite);
    EXPECT_EQ(ulpError(infinite, Real(3e38), ElementType::Real32), infinite);
    EXPECT_EQ(ulpError(infinite, Real(1e39), ElementType::Real32), 0);
    EXPECT_EQ(ulpError(-infinite, Real(1e39), ElementType::Real32), infinite);
}

TEST(Ulp, RoundingToNearestReachesSubnormals) {
    EXPECT_EQ(roundedToNearest(Real(1.0) + Real(0x1p-24), ElementType::Real32), 1);  // tie to even
    EXPECT_EQ(roundedToNearest(Real(0x1.8p-149), ElementType::Real32), 0x1p-148);
    EXPECT_EQ(roundedToNearest(Real(0x1p-150), ElementType::Real32), 0);
    EXPECT_EQ(roundedToNearest(scaled(Real(3.0), -1075), ElementType::Real64), 0x1p-1073);
}

TEST(Points, NumbersInAllForms) {
    EXPECT_EQ(parseNumber("-1.5", ElementType::Real64), -1.5);
    EXPECT_EQ(parseNumber("0x1.8p1", ElementType::Real64), 3);
    EXPECT_EQ(parseNumber("0x3FC00000", ElementType::Real32), 1.5);
    EXPECT_EQ(parseNumber("0xBFF8000000000000", ElementType::Real64), -1.5);
    EXPECT_EQ(parseNumber("-max", ElementType::Real32), -static_cast<double>(std::numeric_limits<float>::max()));
    EXPECT_EQ(parseNumber("sub", ElementType::Real64), 0x1p-1074);
    EXPECT_EQ(parseNumber("min", ElementType::Real32), 0x1p-126);
    for (const char* bad : {"", "x", "1.5x", "0x3FC00000", "--", "inf", "1e999"})
        EXPECT_THROW(parseNumber(bad, ElementType::Real64), std::invalid_argument) << bad;
    EXPECT_EQ(bitPattern(-1.5, ElementType::Real32), "0xBFC00000");
    EXPECT_EQ(bitPattern(1.0, ElementType::Real64), "0x3FF0000000000000");
}

TEST(Points, StayInsideTheirRange) {
    for (const ElementType part : {ElementType::Real32, ElementType::Real64}) {
        for (const char* text :
             {"log 0.1 0.7", "uniform 0.1 0.7", "bits 0.1 0.7", "log sub max", "uniform -max max", "bits -max max"}) {
            Distribution distribution(text, part);
            SplitMix64 random(1);
            const bool small = std::string(text).ends_with("0.7");
            for (int i = 0; i < 3000; ++i) {
                const double x = distribution.draw(random);
                EXPECT_TRUE(std::isfinite(x));
                EXPECT_TRUE(!small || (0.1 <= x && x <= 0.7)) << text << ": " << x;
                EXPECT_TRUE(part == ElementType::Real64 || x == static_cast<float>(x)) << text << ": " << x;
            }
        }
    }
}

TEST(Points, SignsOffsetsListsAndComplexArguments) {
    SplitMix64 random(1);
    Distribution both("log 1 2 both", ElementType::Real64);
    int negative = 0;
    for (int i = 0; i < 1000; ++i) negative += both.draw(random) < 0;
    EXPECT_NEAR(negative, 500, 80);
    Distribution near("log 1e-6 1e-3 both near 1", ElementType::Real64);
    for (int i = 0; i < 100; ++i) EXPECT_LE(std::abs(near.draw(random) - 1), 1.0001e-3);
    Distribution list("list 1 -2 0x1p3", ElementType::Real64);
    EXPECT_EQ(list.draw(random), 1);
    EXPECT_EQ(list.draw(random), -2);
    EXPECT_EQ(list.draw(random), 8);
    EXPECT_EQ(list.draw(random), 1);
    ArgumentRange polar("polar uniform 2 2.001 | uniform -pi pi", ElementType::Complex64);
    double z[2];
    polar.draw(random, z);
    EXPECT_NEAR(std::hypot(z[0], z[1]), 2, 2e-3);
    ArgumentRange parts("uniform 1 2 | uniform -4 -3", ElementType::Complex32);
    parts.draw(random, z);
    EXPECT_TRUE(1 <= z[0] && z[0] <= 2 && -4 <= z[1] && z[1] <= -3);
    for (const char* bad :
         {"", "logg 1 2", "log 0 1", "log 2 1", "uniform 1", "uniform 1 2 3", "list", "log 1 2 | log 1 2"})
        EXPECT_THROW(ArgumentRange(bad, ElementType::Real64), std::invalid_argument) << bad;
}

TEST(Points, IntervalsHoldTheValuesOfARange) {
    const auto of = [](const char* text) {
        std::vector<std::pair<double, double>> result;
        for (const Interval& interval : ArgumentRange(text, ElementType::Real32).intervals())
            result.emplace_back(interval.first, interval.last);
        return result;
    };
    using Intervals = std::vector<std::pair<double, double>>;
    EXPECT_EQ(of("log 1 2"), (Intervals{{1, 2}}));
    EXPECT_EQ(of("bits 1 2 both"), (Intervals{{1, 2}, {-2, -1}}));
    EXPECT_EQ(of("uniform 1 2"), (Intervals{{1, 2}}));
    EXPECT_EQ(of("uniform -512 256"), (Intervals{{1, 256}, {-512, -2}}));
    EXPECT_EQ(of("uniform -4 -3"), (Intervals{{-4, -3}}));
    EXPECT_EQ(of("bits 0.25 0.5 both near 1"), (Intervals{{1.25, 1.5}, {0.5, 0.75}}));
    EXPECT_EQ(of("bits 0.5 4 both near 1"), (Intervals{{1.5, 5}, {-3, -0x1p-149}, {0x1p-149, 0.5}}));
    EXPECT_EQ(of("list 1 2"), Intervals());
    EXPECT_TRUE(ArgumentRange("log 1 2 | log 1 2", ElementType::Complex32).intervals().empty());
}

TEST(Points, SequenceIsTheSameEverywhere) {
    SplitMix64 random(1234567);
    EXPECT_EQ(random.next(), 6457827717110365317u);
    EXPECT_EQ(random.next(), 3203168211198807973u);
}

// Functions with known errors. A call over one element is 3 ulp too large, one over many is exact but for the
// element 0.5, which is 2 ulp too large.
double wrong(double exact, double x, std::int32_t len, double ulp) {
    if (len == 1) return exact + 3 * ulp;
    return x == 0.5 ? exact + 2 * ulp : exact;
}

OktStatus fakeAbs64(const Arguments& a) {
    for (std::int32_t i = 0; i < a.len; ++i) {
        const double x = static_cast<const double*>(a.src1)[i];
        static_cast<double*>(a.dst1)[i] = wrong(std::abs(x), x, a.len, std::ilogb(x) == 0 ? 0x1p-52 : 0x1p-53);
    }
    return oktStatusOk;
}

template <class T>
OktStatus fakeAdd(const Arguments& a) {  // T is float for Add_32f, and an array of parts for Add_32fc
    const int parts = std::is_same_v<T, float> ? 1 : 2;
    for (std::int32_t i = 0; i < a.len * parts; ++i)
        static_cast<float*>(a.dst1)[i] = static_cast<const float*>(a.src1)[i] + static_cast<const float*>(a.src2)[i];
    return oktStatusOk;
}

OktStatus fakePowx64(const Arguments& a) {
    const double scalar = *static_cast<const double*>(a.scalar);
    for (std::int32_t i = 0; i < a.len; ++i)
        static_cast<double*>(a.dst1)[i] = std::pow(static_cast<const double*>(a.src1)[i], scalar);
    return oktStatusOk;
}

OktStatus fakeModf32(const Arguments& a) {
    for (std::int32_t i = 0; i < a.len; ++i)
        static_cast<float*>(a.dst2)[i] =
            std::modf(static_cast<const float*>(a.src1)[i], static_cast<float*>(a.dst1) + i);
    return oktStatusOk;
}

OktStatus fakeSin32(const Arguments& a) {
    for (std::int32_t i = 0; i < a.len; ++i) {
        const float x = static_cast<const float*>(a.src1)[i];
        float y = static_cast<float>(std::sin(static_cast<double>(x)));
        if (x == 1.25f) y = std::nextafter(y, 2.0f);
        static_cast<float*>(a.dst1)[i] = y;
    }
    return oktStatusOk;
}

OktStatus fakeErfInv32(const Arguments& a) {  // four terms of the series: good near 0, wrong by and by
    for (std::int32_t i = 0; i < a.len; ++i) {
        const double x = 0.886226925452758 * static_cast<const float*>(a.src1)[i], z = x * x;
        static_cast<float*>(a.dst1)[i] =
            std::abs(x) >= 0.886 ? std::nanf("")
                                 : static_cast<float>(x + x * z * (1 / 3.0 + z * (7 / 30.0 + z * 127 / 630)));
    }
    return oktStatusOk;
}

Export fakeExport(std::string_view family, std::string_view type, std::string_view grade, std::string_view name,
                  Form form, ElementType element, int routine, OktStatus (*call)(const Arguments&)) {
    Export result{};
    result.name = name;
    result.family = family;
    result.type = type;
    result.grade = grade;
    result.form = form;
    result.source = result.destination = element;
    result.routine = routine;
    result.call = call;
    return result;
}

const Export fakes[] = {
    fakeExport("Abs", "64f", "A53", "oktsAbs_64f_A53", Form::U, ElementType::Real64, 1, fakeAbs64),
    fakeExport("Add", "32f", "A24", "oktsAdd_32f_A24", Form::B, ElementType::Real32, 2, fakeAdd<float>),
    fakeExport("Add", "32fc", "A24", "oktsAdd_32fc_A24", Form::B, ElementType::Complex32, 3, fakeAdd<Complex32>),
    fakeExport("Powx", "64f", "A50", "oktsPowx_64f_A50", Form::S, ElementType::Real64, 4, fakePowx64),
    fakeExport("Powx", "64f", "A53", "oktsPowx_64f_A53", Form::S, ElementType::Real64, 4, fakePowx64),
    fakeExport("Modf", "32f", "", "oktsModf_32f", Form::D, ElementType::Real32, 5, fakeModf32),
    fakeExport("Sin", "32f", "A24", "oktsSin_32f_A24", Form::U, ElementType::Real32, 6, fakeSin32),
    fakeExport("ErfInv", "32f", "A24", "oktsErfInv_32f_A24", Form::U, ElementType::Real32, 7, fakeErfInv32),
};

const Export& fake(std::string_view name) {
    for (const Export& function : fakes)
        if (function.name == name) return function;
    throw std::logic_error("no such fake");
}

TEST(Measure, TellsBlockAndElementPathApartAndFindsTheWorstInput) {
    const PointSet points(fake("oktsAbs_64f_A53"), {"list 1 1.5 -1.75 0.5 1.25"}, 5);
    const Measurement block = measure(points, Path::block), element = measure(points, Path::element);
    EXPECT_EQ(block.part[0].count, 5u);
    EXPECT_EQ(block.part[0].largest.error, 2);
    EXPECT_EQ(block.part[0].largest.inputs[0], 0.5);
    EXPECT_DOUBLE_EQ(block.part[0].mean, 0.4);
    EXPECT_EQ(block.part[0].median, 0);
    EXPECT_DOUBLE_EQ(block.part[0].correctlyRounded, 0.8);
    EXPECT_EQ(element.part[0].largest.error, 3);
    EXPECT_EQ(element.part[0].correctlyRounded, 0);
    EXPECT_NE(describe(block).find("0x3FE0000000000000"), std::string::npos);
}

TEST(Measure, AllForms) {
    for (const char* name : {"oktsAdd_32f_A24", "oktsAdd_32fc_A24"}) {
        const PointSet points(fake(name), {"log 1e-5 1e5 both", "log 1e-5 1e5 both"}, 500);
        for (const Path path : {Path::block, Path::element}) {
            const Measurement m = measure(points, path);
            for (int k = 0; k < m.parts; ++k) {
                EXPECT_LE(m.part[static_cast<std::size_t>(k)].largest.error, 0.5) << name;
                EXPECT_EQ(m.part[static_cast<std::size_t>(k)].correctlyRounded, 1) << name;
            }
        }
    }
    const PointSet powers(fake("oktsPowx_64f_A53"), {"log 0.1 10", "uniform -5 5"}, 1000);
    EXPECT_EQ(powers.groups().size(), 4u);
    EXPECT_LE(measure(powers, Path::block).part[0].largest.error, 0.6);
    EXPECT_LE(measure(powers, Path::element).part[0].largest.error, 0.6);
    const PointSet parts(fake("oktsModf_32f"), {"log 0.01 1e6 both"}, 1000);
    const Measurement m = measure(parts, Path::block);
    EXPECT_EQ(m.parts, 2);
    EXPECT_EQ(m.part[0].largest.error + m.part[1].largest.error, 0);
}

TEST(Measure, PassesOverPointsWithoutAFiniteResult) {
    const PointSet points(fake("oktsAdd_32f_A24"), {"list 1 max", "list 1 max"}, 10);
    const Measurement m = measure(points, Path::block);
    EXPECT_EQ(m.part[0].count, 5u);
    EXPECT_EQ(m.skipped, 5u);
}

TEST(Measure, ThreadsDoNotChangeThePoints) {
    const PointSet one(fake("oktsSin_32f_A24"), {"uniform -3 3"}, 301, 9, 1),
        four(fake("oktsSin_32f_A24"), {"uniform -3 3"}, 301, 9, 4);
    EXPECT_EQ(one.inputs(), four.inputs());
    for (std::size_t i = 0; i < 301; ++i) EXPECT_TRUE(one.exact(i, 0) == four.exact(i, 0));
}

TEST(Measure, PlotIsSmallAndWhole) {
    const PointSet points(fake("oktsAbs_64f_A53"), {"log 1e-300 1e300 both"}, 100000, 1, 2);
    const Measurement block = measure(points, Path::block), element = measure(points, Path::element);
    const std::string picture = plotErrors({&block, &element}, 2.0);
    EXPECT_LT(picture.size(), 60000u);
    EXPECT_TRUE(picture.starts_with("<svg") && picture.ends_with("</svg>\n"));
    EXPECT_EQ(picture.find("nan"), std::string::npos);
    EXPECT_NE(picture.find("1e-200"), std::string::npos);  // a decade of the axis
}

class BoundsText : public testing::Test {
protected:
    std::vector<Bound> load(const std::string& text, std::span<const Export> functions = fakes) {
        const auto file = std::filesystem::temp_directory_path() / ("okt_bounds_" + std::to_string(getpid()) + ".toml");
        std::ofstream(file) << text;
        const auto bounds = loadBounds(file, functions);
        std::filesystem::remove(file);
        return bounds;
    }
};

TEST_F(BoundsText, DeclareOneEntryForEachRoutine) {
    const auto bounds = load(R"(
        family = "Add"
        [[range]]
        type = ["32f", "32fc", "64f"]
        name = "moderate"
        src1 = "log 1e-5 1e5 both"
        src2 = "uniform -1 1"
        bound = [0.5, 0.75]
        element = 1
        reason = "one addition"
    )");
    ASSERT_EQ(bounds.size(), 2u);
    EXPECT_EQ(bounds[0].function->name, "oktsAdd_32f_A24");
    EXPECT_EQ(bounds[1].function->name, "oktsAdd_32fc_A24");
    EXPECT_EQ(bounds[1].name, "moderate");
    EXPECT_EQ(bounds[1].block, (PartBounds{0.5, 0.75}));
    EXPECT_EQ(bounds[1].element, (PartBounds{1, 1}));
}

TEST_F(BoundsText, RecordedInputsComeFirstAndScalarsInGroups) {
    const auto bounds = load(R"(
        family = "Powx"
        [real]
        reference = "compiled elsewhere"
        [[range]]
        type = "64f"
        src = "log 0.1 10"
        scalar = "list 0.5 2"
        block = 0.6
        worst = ["0x3FF8000000000000, 3.5", "2 0x1p-3"]
    )");
    ASSERT_EQ(bounds.size(), 1u);
    EXPECT_EQ(bounds[0].function->name, "oktsPowx_64f_A53");
    EXPECT_EQ(bounds[0].name, "range1");
    EXPECT_FALSE(bounds[0].element.has_value());
    ASSERT_EQ(bounds[0].worst.size(), 2u);
    EXPECT_EQ(bounds[0].worst[0], (Inputs{1.5, 3.5}));
    const PointSet points = pointsOf(bounds[0], 600);
    EXPECT_EQ(points.inputs().size(), 602u);
    EXPECT_EQ(points.inputs()[1], (Inputs{2, 0.125}));
    EXPECT_EQ(points.groups().size(), 5u);
    EXPECT_TRUE(excesses(bounds[0], measure(points, Path::block)).empty());
}

TEST_F(BoundsText, ExcessesNameEverythingOneNeeds) {
    const auto bounds = load(R"(
        family = "Abs"
        [[range]]
        type = "64f"
        src = "uniform 1 2"
        bound = 1.5
        worst = ["0.5"]
    )");
    ASSERT_EQ(bounds.size(), 1u);
    const auto found = excesses(bounds[0], measure(pointsOf(bounds[0], 10), Path::block));
    ASSERT_EQ(found.size(), 1u);
    for (const char* piece : {"oktsAbs_64f_A53", "block path", "0x3FE0000000000000 (0.5)", "0x3FE0000000000002",
                              "error  2 ulp", "bound 1.5"})
        EXPECT_NE(found[0].find(piece), std::string::npos) << piece << " in\n" << found[0];
    EXPECT_EQ(excesses(bounds[0], measure(pointsOf(bounds[0], 10), Path::element)).size(), 1u);
}

TEST_F(BoundsText, SweepsHoldRangesOfOneReal32) {
    const auto bounds = load(R"(
        family = "Sin"
        [[range]]
        type = "32f"
        src = "bits -1.2 1.2"
        bound = 0.501
        [[range]]
        type = "32f"
        src = "log 1.2499 1.2501"
        bound = 0.501
        [[range]]
        type = "32f"
        src = "list 1 2"
        bound = 0.501
    )");
    ASSERT_EQ(bounds.size(), 3u);
    for (const Path path : {Path::block, Path::element}) {
        const auto swept = sweep(bounds[0], path, 10000);
        ASSERT_TRUE(swept.has_value());
        EXPECT_GE(swept->part[0].count, 10000u);
        EXPECT_LE(swept->part[0].count, 20002u);
        EXPECT_TRUE(excesses(bounds[0], *swept).empty());
    }
    EXPECT_EQ(excesses(bounds[1], *sweep(bounds[1], Path::block, 1 << 30)).size(), 1u);
    EXPECT_FALSE(sweep(bounds[2], Path::block, 10000).has_value());
}

TEST_F(BoundsText, ShortApproximationsMayHaveABoundOfTheirOwn) {
    const std::string range = "[[range]]\ntype=\"64f\"\nsrc=\"uniform 1 2\"\nbound=1\nshort_seeds=0.5\n";
    const auto bounds = load("family=\"Sqrt\"\n" + range + "element=2\n", exports());
    ASSERT_EQ(bounds.size(), 1u);
    EXPECT_EQ(bounds[0].block, (PartBounds{1, 1}));
    EXPECT_EQ(withShortSeeds(bounds[0]).block, (PartBounds{0.5, 0.5}));
    EXPECT_EQ(withShortSeeds(bounds[0]).element, (PartBounds{0.5, 0.5}));
    EXPECT_THROW(load("family=\"Cbrt\"\n" + range, exports()), std::runtime_error);
}

TEST_F(BoundsText, MistakesAreErrors) {
    const std::string good = "family=\"Abs\"\n[[range]]\ntype=\"64f\"\nsrc=\"uniform 1 2\"\nbound=1\n";
    EXPECT_EQ(load(good).size(), 1u);
    const std::string bad[] = {
        "family=\"Abs\"\n",                 // no range
        good + "bond=1\n",                  // unknown key
        good + "worst=[\"1 2\"]\n",         // too many numbers
        good + "worst=[\"0x3F800000\"]\n",  // wrong type
        good + "of_modulus=1\n",
        "family=\"Abs\"\n[[range]]\ntype=\"64f\"\nsrc=\"uniform 1 2\"\n",           // no bound
        "family=\"Abs\"\n[[range]]\ntype=\"64f\"\nbound=1\n",                       // no argument
        "family=\"Abs\"\n[[range]]\ntype=\"65f\"\nsrc=\"uniform 1 2\"\nbound=1\n",  // no such type
        "family=\"Abz\"\n[[range]]\ntype=\"64f\"\nsrc=\"uniform 1 2\"\nbound=1\n",  // no such family
        "family=\"Abs\"\n[[range]]\ntype=\"64f\"\nsrc=\"uniform 2 1\"\nbound=1\n",  // empty range
        "family=\"Abs\"\n[[range]]\ntype=\"64f\"\nsrc=\"uniform 1 2\"\nbound=-1\n",
        "family=\n",
    };
    for (const std::string& text : bad) EXPECT_THROW(load(text), std::runtime_error) << text;
}

TEST(Exhaustive, FindsTheOneWrongInput) {
    ExhaustiveOptions options;
    options.from = 0x3F800000;  // 1
    options.to = 0x3FC00000;    // 1.5
    options.threads = 2;
    for (const Path path : {Path::block, Path::element}) {
        options.path = path;
        options.to = path == Path::block ? 0x3FC00000 : 0x3FA00100;
        const ExhaustiveResult result = runExhaustively(fake("oktsSin_32f_A24"), options);
        EXPECT_EQ(result.measured, options.to - options.from + 1u);
        EXPECT_EQ(result.skipped, 0u);
        EXPECT_GT(result.largest[0].error, 0.75);
        EXPECT_EQ(result.largest[0].inputs[0], 1.25);
        EXPECT_EQ(result.correctlyRounded[0], result.measured - 1);
        EXPECT_LT(result.quickReferenceError, 1e-10);
    }
}

TEST(Exhaustive, TakesOnePatternOfEachStride) {
    ExhaustiveOptions options;
    options.from = 0x3F800000;
    options.to = 0x3FC000FF;
    options.stride = 256;
    const ExhaustiveResult result = runExhaustively(fake("oktsSin_32f_A24"), options);
    EXPECT_EQ(result.measured, 0x4001u);
    EXPECT_LE(result.largest[0].inputs[0], std::bit_cast<float>(options.to));
    // An ulp of a floor above the results is larger than theirs.
    options.path = Path::element;
    const double error = runExhaustively(fake("oktsSin_32f_A24"), options).largest[0].error;
    options.floor = 4;
    EXPECT_NEAR(runExhaustively(fake("oktsSin_32f_A24"), options).largest[0].error, error / 8, error / 100);
}

TEST(Exhaustive, CountsArgumentsWithoutAFiniteResult) {
    ExhaustiveOptions options;
    options.from = 0x7F7FFF00;
    options.to = 0x7F8000FF;
    const ExhaustiveResult result = runExhaustively(fake("oktsSin_32f_A24"), options);
    EXPECT_EQ(result.measured, 256u);
    EXPECT_EQ(result.skipped, 256u);
}

TEST(Exhaustive, JudgesInverseFunctionsByTheirResidual) {
    ExhaustiveOptions options;
    options.from = 0x3D000000;  // 1/32
    options.to = 0x3D0FFFFF;
    ExhaustiveResult result = runExhaustively(fake("oktsErfInv_32f_A24"), options);
    EXPECT_LT(result.largest[0].error, 0.51);
    EXPECT_LT(result.quickReferenceError, 1e-6);
    options.from = 0x3F7FFF00;  // up to 1 the fake gives NaNs
    options.to = 0x3F8000FF;
    result = runExhaustively(fake("oktsErfInv_32f_A24"), options);
    EXPECT_EQ(result.measured, 256u);
    EXPECT_EQ(result.skipped, 256u);
    EXPECT_EQ(result.largest[0].error, infinite);
}

}  // namespace
}  // namespace okt::accuracy
