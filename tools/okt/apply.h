// One function over arrays in files.
#pragma once

#include "array_file.h"
#include "registry.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace okt::tool {

struct ApplyRequest {
    const Export* function = nullptr;
    std::string in, in2, out, out2;
    std::string scalar;
    std::optional<Format> inFormat, outFormat;  // by the names' endings where not given
    std::int32_t piece = 1 << 16;               // elements of one call
};

struct ApplyResult {
    std::uint64_t elements = 0, pieces = 0, warnedPieces = 0;
    OktStatus lastWarning = oktStatusOk;
};

// Told after each piece: elements done and the share of the work that is done.
using Progress = std::function<void(std::uint64_t, double)>;

// Throws a ToolError, and leaves no output behind, when anything is wrong. Stops between two pieces when
// `interrupted` gives true.
ApplyResult apply(const ApplyRequest& request, const Progress& progress, const std::function<bool()>& interrupted);

}  // namespace okt::tool
