// Names of functions as the user types them.
#pragma once

#include "registry.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace okt::tool {

// Up to `most` of the names, the ones nearest to what was typed first. None if nothing is near.
std::vector<std::string_view> nearestNames(std::string_view typed, std::span<const std::string_view> names,
                                           std::size_t most = 3);

// The export of that name, or a ToolError that tells what the user may have meant.
const Export& requireExport(std::string_view name);

// Shell pattern with * and ?, case ignored, for the whole text.
bool matchesWhole(std::string_view pattern, std::string_view text);

// The same, but a pattern without wildcards matches any part of the text.
bool matches(std::string_view pattern, std::string_view text);

}  // namespace okt::tool
