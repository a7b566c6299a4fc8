// The functions that start from approximate reciprocals and reciprocal roots, with approximations anywhere within the
// error that the instructions guarantee: their bounds hold on every processor.
#include "declared_bounds.h"
#include "lanes/moved_seeds.h"
#include "support/call.h"

#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

namespace okt::accuracy {
namespace {

using moved_seeds::highestSeeds, moved_seeds::lowestSeeds, moved_seeds::shortSeeds, moved_seeds::stepsAbove;

std::vector<Bound> seededBounds() {
    std::vector<Bound> bounds = allBounds();
    std::erase_if(bounds, [](const Bound& bound) { return !bound.function->seed; });
    return bounds;
}

std::string saltText(std::uint32_t salt) { return "salt " + std::to_string(salt) + ": "; }

// `check(bound)` with both ends of all intervals and some mixtures, and with the bound that holds for them.
template <class Check>
void withSalts(const Bound& everySeed, std::uint32_t mixtures, const Check& check) {
    const std::uint32_t saltBefore = moved_seeds::salt;
    const Bound onlyShort = withShortSeeds(everySeed);
    for (const std::uint32_t length : {0u, shortSeeds})
        for (std::uint32_t salt = lowestSeeds; salt <= highestSeeds + mixtures; ++salt) {
            moved_seeds::salt = salt | length;
            check(length == shortSeeds ? onlyShort : everySeed);
        }
    moved_seeds::salt = saltBefore;
}

class EverySeed : public testing::TestWithParam<Bound> {};

TEST_P(EverySeed, IsWithinTheBound) {
    const PointSet points = pointsOf(GetParam(), numberFrom("OKT_ACCURACY_POINTS", 4000));
    withSalts(GetParam(), 6, [&](const Bound& bound) {
        for (const Path path : {Path::block, Path::element})
            if (bound.of(path))
                expectWithin(bound, measure(points, path, bound.yardstick), saltText(moved_seeds::salt));
    });
}

INSTANTIATE_TEST_SUITE_P(Declared, EverySeed, testing::ValuesIn(seededBounds()), testName);

class EverySeedAtSweptPatterns : public testing::TestWithParam<Bound> {};

TEST_P(EverySeedAtSweptPatterns, IsWithinTheBound) {
    withSalts(GetParam(), 1, [](const Bound& bound) {
        const auto measurement = sweep(bound, Path::block, numberFrom("OKT_SWEPT_PATTERNS", 1 << 16));
        expectWithin(bound, *measurement, saltText(moved_seeds::salt));
    });
}

INSTANTIATE_TEST_SUITE_P(Declared, EverySeedAtSweptPatterns, testing::ValuesIn(swept(seededBounds())), testName);

// One approximation in three of all that there are, for the inputs recorded as the worst.
class EverySeedAtWorstInputs : public testing::TestWithParam<Bound> {};

TEST_P(EverySeedAtWorstInputs, IsWithinTheBound) {
    const Bound& bound = GetParam();
    const PointSet points = pointsOf(bound, 0);
    const std::uint32_t saltBefore = moved_seeds::salt;
    constexpr std::uint32_t mostSteps = 12300;  // from end to end of the widest interval
    for (std::uint32_t steps = 0; steps < mostSteps; steps += 3) {
        moved_seeds::salt = stepsAbove + steps;
        expectWithin(bound, measure(points, Path::element, bound.yardstick), saltText(moved_seeds::salt));
    }
    moved_seeds::salt = saltBefore;
}

std::vector<Bound> withWorstInputs(std::vector<Bound> bounds) {
    std::erase_if(bounds, [](const Bound& bound) { return bound.worst.empty() || !bound.of(Path::element); });
    return bounds;
}

INSTANTIATE_TEST_SUITE_P(Declared, EverySeedAtWorstInputs, testing::ValuesIn(withWorstInputs(seededBounds())),
                         testName);

// The catalogue marks the routines whose results follow the approximations, and no others.
class Marked : public testing::Test {
protected:
    static constexpr std::int32_t len = 20000;

    ~Marked() override { moved_seeds::salt = saltBefore_; }

    static bool changes(const Export& function, std::uint64_t round) {
        test::Sources sources = test::ordinarySources(function, len, round);
        if (function.family == "Atan2" && function.type == "32f") {
            put(sources.src1, {rareY});
            put(sources.src2, {rareX});
        } else if (function.family == "Arg" && function.type == "32fc") {
            put(sources.src1, {rareX, rareY});
        }
        moved_seeds::salt = lowestSeeds;
        const test::Outcome first = test::call(function, sources, len);
        moved_seeds::salt = highestSeeds;
        return first != test::call(function, sources, len);
    }

private:
    // Atan2 and Arg on Real32 come out different in one element of some 10^9; this is one.
    static constexpr float rareY = 0x1.F45CDAp0F, rareX = 0x1.A0DD3Ep5F;

    // At the front of the array, often enough to fill a block.
    static void put(test::Bytes& array, std::initializer_list<float> element) {
        const std::size_t size = element.size() * sizeof(float);
        for (std::size_t i = 0; i < 16; ++i) std::memcpy(array.data() + i * size, element.begin(), size);
    }

    std::uint32_t saltBefore_ = moved_seeds::salt;
};

TEST_F(Marked, AreTheRoutinesWhoseResultsFollowTheApproximations) {
    for (const Export& function : exports()) {
        bool found = false;
        for (std::uint64_t round = 0; round < (function.seed ? 200 : 1) && !found; ++round)
            found = changes(function, round);
        EXPECT_EQ(found, function.seed) << function.name;
    }
}

}  // namespace
}  // namespace okt::accuracy
