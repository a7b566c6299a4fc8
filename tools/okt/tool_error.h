// How the tool fails: a message for the user and the exit code that belongs to it.
#pragma once

#include <fmt/format.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace okt::tool {

enum ExitCode {
    exitOk = 0,            // computed; warnings are told on stderr
    exitFile = 1,          // a file could not be read or written, or does not hold what it should
    exitUsage = 2,         // wrong arguments or an unknown function
    exitWarned = 3,        // computed, elements warned, and the caller asked to be told by the exit code
    exitInterrupted = 130  // interrupted by a signal, nothing written
};

class ToolError : public std::runtime_error {
public:
    ToolError(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
    ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

template <class... T>
[[noreturn]] void fail(ExitCode code, fmt::format_string<T...> format, T&&... arguments) {
    throw ToolError(code, fmt::format(format, std::forward<T>(arguments)...));
}

}  // namespace okt::tool
