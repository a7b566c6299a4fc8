// The accuracy that is promised: bounds declared beside each family, in src/<subsystem>/<family>.toml, and
// run by the tests. docs/descriptors.md tells the format.
#pragma once

#include "accuracy.h"

#include <array>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace okt::accuracy {

using PartBounds = std::array<double, maxParts>;

// One routine over one range.
struct Bound {
    const Export* function;  // the top grade of the routine
    std::string name;        // of the range
    std::vector<std::string> ranges;
    std::optional<PartBounds> block, element;  // in ulp; a path without a bound is not measured
    // The bound of both paths where approximate reciprocals have at most 13 significant bits.
    std::optional<PartBounds> shortSeeds;
    Yardstick yardstick;
    std::vector<Inputs> worst;  // measured besides the random points
    std::string reason;
    std::string origin;  // file and line

    const std::optional<PartBounds>& of(Path path) const { return path == Path::block ? block : element; }
};

// Entries of one file. Types that are not built yet are passed over; anything else that cannot be understood throws
// std::runtime_error with the file and line.
std::vector<Bound> loadBounds(const std::filesystem::path& file, std::span<const Export> functions);

// All files below a source directory, in the order of their paths.
std::vector<Bound> loadAllBounds(const std::filesystem::path& sources, std::span<const Export> functions);

// The source directory of this build, or OKT_SOURCES of the environment.
std::filesystem::path sourceDirectory();

// The bounds that hold where approximate reciprocals have at most 13 significant bits.
Bound withShortSeeds(Bound bound);

// Random points and recorded inputs of an entry; the seed follows from the entry, so that entries do not share points.
PointSet pointsOf(const Bound& bound, std::size_t count, unsigned threads = 1);

// Everything that breaks the bound: one text an excess, with export, input and result bits, exact value and error.
std::vector<std::string> excesses(const Bound& bound, const Measurement& measurement);

// Where a bound's function has one Real32 source and a quick reference: about `count` patterns of its range, spread
// evenly over them. Nothing otherwise, and where the range is a list.
std::optional<Measurement> sweep(const Bound& bound, Path path, std::uint64_t count);

}  // namespace okt::accuracy
