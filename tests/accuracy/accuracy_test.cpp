// Every declared bound: errors of the built functions against the high-precision references, block path and element
// path. OKT_ACCURACY_POINTS in the environment sets the number of random points of an entry.
#include "bounds.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace okt::accuracy {

// Printed by GoogleTest beside the name of a failing test.
void PrintTo(const Bound& bound, std::ostream* out) { *out << bound.origin; }

namespace {

constexpr std::size_t usualPoints = 2000;

std::size_t pointCount() {
    const char* set = std::getenv("OKT_ACCURACY_POINTS");
    return set ? std::strtoul(set, nullptr, 10) : usualPoints;
}

const std::vector<Bound>& allBounds() {
    static const std::vector<Bound> bounds = loadAllBounds(sourceDirectory(), exports());
    return bounds;
}

class Accuracy : public testing::TestWithParam<Bound> {};

TEST_P(Accuracy, IsWithinItsBound) {
    const Bound& bound = GetParam();
    const PointSet points = pointsOf(bound, pointCount());
    for (const Path path : {Path::block, Path::element}) {
        if (!bound.of(path)) continue;
        const Measurement measurement = measure(points, path, bound.yardstick);
        for (const std::string& excess : excesses(bound, measurement)) ADD_FAILURE() << excess;
        RecordProperty("largest_ulp_" + std::string(pathName(path)), std::to_string(measurement.part[0].largest.error));
    }
}

std::string testName(const testing::TestParamInfo<Bound>& info) {
    std::string name = std::string(info.param.function->name).substr(4) + "_" + info.param.name;
    for (char& c : name)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Declared, Accuracy, testing::ValuesIn(allBounds()), testName);

TEST(AccuracyBounds, EveryBuiltRoutineHasOneForBothPaths) {
    std::set<std::pair<int, Path>> bounded;
    for (const Bound& bound : allBounds())
        for (const Path path : {Path::block, Path::element})
            if (bound.of(path)) bounded.insert({bound.function->routine, path});
    for (const Export& function : exports())
        for (const Path path : {Path::block, Path::element})
            EXPECT_TRUE(bounded.contains({function.routine, path}))
                << function.name << ": no bound for the " << pathName(path) << " path";
}

}  // namespace
}  // namespace okt::accuracy
