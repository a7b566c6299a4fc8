// Pictures of errors over arguments, as SVG.
#pragma once

#include "accuracy.h"

#include <optional>
#include <string>
#include <vector>

namespace okt::accuracy {

struct Curve {
    std::string label;
    std::vector<Sample> samples;
};

struct Plot {
    std::string title, argumentLabel;
    std::vector<Curve> curves;
    std::optional<double> bound;
};

// Dots for single points, a line for the largest error of each stretch of the axis. The axis of arguments is
// logarithmic when they span many decades (negative arguments by their magnitude then), the axis of errors when the
// errors do. At most some 25 kB.
std::string svg(const Plot& plot);

}  // namespace okt::accuracy
