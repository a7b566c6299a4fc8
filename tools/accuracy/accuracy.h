// Measures exported functions against the references: errors in ulp over chosen ranges, statistics, and a plot of the
// error over the argument.
//
//     const Export* function = findExport("oktsExp_64f_A53");
//     const PointSet points(*function, {"uniform -700 700"}, 100000);
//     const Measurement block = measure(points, Path::block), element = measure(points, Path::element);
//     fmt::print("{}{}", describe(block), describe(element));
//     write("exp.svg", plotErrors({&block, &element}));
//
// Functions are measured under the caller's control state, which is the default one.
#pragma once

#include "points.h"
#include "reference.h"
#include "registry.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace okt::accuracy {

// Block path: one call over a long array, with whole blocks around every measured point. Element path: one call per
// element. For most routines these are different arithmetic.
enum class Path { block, element };
std::string_view pathName(Path path);

// The real inputs of one element: parts of src1, then of src2 or the scalar.
using Inputs = std::array<double, maxInputs>;

// The ranges that the function's descriptor calls ordinary, for a caller who names none: one text per argument.
std::vector<std::string> ordinaryRanges(const Export& function);

// The number of real inputs of an element, and the type of their parts.
int inputsOf(const Export& function);
ElementType inputPart(const Export& function);
ElementType resultPart(const Export& function);

// Points of a function with their exact results. The same arguments give the same points on every machine.
class PointSet {
public:
    // One range text per argument (see points.h). The scalar of form S changes every 256 points.
    PointSet(const Export& function, const std::vector<std::string>& ranges, std::size_t count, std::uint64_t seed = 1,
             unsigned threads = 1);
    PointSet(const Export& function, std::vector<ArgumentRange> ranges, std::size_t count, std::uint64_t seed,
             unsigned threads, const std::vector<Inputs>& alsoThese);

    struct Group {  // points of one call of the block path
        std::size_t begin, end;
    };

    const Export& function() const { return *function_; }
    const std::vector<Inputs>& inputs() const { return inputs_; }
    const std::vector<Group>& groups() const { return groups_; }
    const Real& exact(std::size_t point, int part) const {
        return exact_[point * static_cast<std::size_t>(parts_) + static_cast<std::size_t>(part)];
    }
    int parts() const { return parts_; }
    // Only points with a finite result are measured.
    bool isMeasured(std::size_t point) const { return measured_[point] != 0; }

private:
    void evaluate(unsigned threads);

    const Export* function_;
    int parts_;
    std::vector<Inputs> inputs_;
    std::vector<Group> groups_;
    std::vector<Real> exact_;
    std::vector<char> measured_;
};

// By what an error is measured: the ulp of the exact part; with ofModulus, that of the complex result's modulus; in
// either case of no number smaller than the floor.
struct Yardstick {
    bool ofModulus = false;
    double floor = 0;
};

struct LargestError {
    double error = -1;
    std::size_t point = 0;
    Inputs inputs{};
    double computed = 0;
    std::string exact;
};

struct PartStatistics {
    std::size_t count = 0;
    double mean = 0, median = 0, quantile90 = 0, quantile99 = 0, quantile999 = 0;
    double correctlyRounded = 0;  // share of all points
    LargestError largest;
};

struct Sample {
    double argument;  // the first argument, a complex one by its modulus
    float error;      // the larger one of all parts
    bool operator==(const Sample&) const = default;
};

struct Measurement {
    const Export* function = nullptr;
    Path path = Path::block;
    int parts = 1;
    std::size_t skipped = 0;  // points whose exact result is not finite
    std::array<PartStatistics, maxParts> part;
    std::vector<Sample> samples;
};

Measurement measure(const PointSet& points, Path path, Yardstick yardstick = {});
// True when two paths over the same points made the same errors: no table or plot needs both.
bool sameErrors(const Measurement& a, const Measurement& b);

// "re" and "im", "dst1" and "dst2", or "" for a result of one part.
std::string_view partName(const Export& function, int part);
// "src 0x3F800000 (1)": all inputs of an element, as bit patterns and values.
std::string inputsText(const Export& function, const Inputs& inputs);
// The statistics as a few lines of text.
std::string describe(const Measurement& measurement);
// An SVG picture of the error over the argument; a bound is drawn as a line.
std::string plotErrors(const std::vector<const Measurement*>& measurements, std::optional<double> bound = {});

}  // namespace okt::accuracy
