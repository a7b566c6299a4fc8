// What other programs print. They are started with their arguments as they stand, without a shell between.
#pragma once

#include <string>
#include <vector>

namespace okt::bench {

// The lines that a program prints. The first argument is the program, looked for in PATH unless it holds a slash; it
// reads `input`. Throws when it cannot be started or fails.
std::vector<std::string> linesOf(const std::vector<std::string>& arguments, const std::string& input = "");

}  // namespace okt::bench
