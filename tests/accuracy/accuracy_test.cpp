// Every declared bound: errors of the built functions against the high-precision references, block path and element
// path. OKT_ACCURACY_POINTS in the environment sets the number of random points of an entry, OKT_SWEPT_PATTERNS that of
// the patterns where a Real32 function is swept.
#include "declared_bounds.h"
#include "lanes/seeds.h"

#include <algorithm>
#include <bit>
#include <ctime>
#include <set>

namespace okt::accuracy {
namespace {

constexpr Path paths[] = {Path::block, Path::element};

// Of this build's approximate reciprocals and reciprocal roots.
bool seedsAreShort() {
    const auto isShort = [](F32x1 seed) { return (asBits(seed).raw & 0x7FF) == 0; };
    for (std::uint32_t pattern = 0x3F800000; pattern < 0x40800000; pattern += 997) {
        const F32x1 x = bits32(pattern);
        if (!isShort(rsqrtSeed(x)) || !isShort(recipSeed(x))) return false;
    }
    return true;
}

// The bound that holds in this build on this processor.
Bound heldHere(const Bound& bound) {
    static const bool isShort = seedsAreShort();
    return isShort ? withShortSeeds(bound) : bound;
}

double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// As many points as the reference evaluates in some hundredths of a second: the first ones of one sequence.
std::size_t pointCount(const Bound& bound) {
    constexpr std::size_t tried = 64, fewest = 2000, most = 64000;
    constexpr double seconds = 0.04;
    const double begin = processorSeconds();
    static_cast<void>(pointsOf(bound, tried));
    const double forOne = (processorSeconds() - begin) / tried;
    const double affordable = std::clamp(seconds / forOne, static_cast<double>(fewest), static_cast<double>(most));
    return numberFrom("OKT_ACCURACY_POINTS", static_cast<std::size_t>(affordable));
}

class Accuracy : public testing::TestWithParam<Bound> {};

TEST_P(Accuracy, IsWithinItsBound) {
    const Bound bound = heldHere(GetParam());
    const PointSet points = pointsOf(bound, pointCount(bound));
    RecordProperty("points", std::to_string(points.inputs().size()));
    for (const Path path : paths) {
        if (!bound.of(path)) continue;
        const Measurement measurement = measure(points, path, bound.yardstick);
        expectWithin(bound, measurement);
        RecordProperty("largest_ulp_" + std::string(pathName(path)), std::to_string(measurement.part[0].largest.error));
    }
}

INSTANTIATE_TEST_SUITE_P(Declared, Accuracy, testing::ValuesIn(allBounds()), testName);

// Functions of one Real32 source have a reference that is fast enough for a large part of all patterns.
class SweptAccuracy : public testing::TestWithParam<Bound> {};

TEST_P(SweptAccuracy, IsWithinItsBound) {
    const Bound bound = heldHere(GetParam());
    for (const Path path : paths)
        if (bound.of(path))
            expectWithin(
                bound, *sweep(bound, path, numberFrom("OKT_SWEPT_PATTERNS", path == Path::block ? 1 << 19 : 1 << 17)));
}

INSTANTIATE_TEST_SUITE_P(Declared, SweptAccuracy, testing::ValuesIn(swept(allBounds())), testName);

TEST(AccuracyBounds, EveryBuiltRoutineHasOneForBothPaths) {
    std::set<std::pair<int, Path>> bounded;
    for (const Bound& bound : allBounds())
        for (const Path path : paths)
            if (bound.of(path)) bounded.insert({bound.function->routine, path});
    for (const Export& function : exports())
        for (const Path path : paths)
            EXPECT_TRUE(bounded.contains({function.routine, path}))
                << function.name << ": no bound for the " << pathName(path) << " path";
}

}  // namespace
}  // namespace okt::accuracy
