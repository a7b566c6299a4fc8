// okt: the vector functions from the command line.
#include "commands.h"
#include "oktvm.h"
#include "tool_error.h"
#include "values.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

// A value such as -1 or -inf looks like an option. After `eval`, what can be read as a value is moved behind "--".
std::vector<std::string> protectValues(std::vector<std::string> arguments) {
    if (arguments.empty() || arguments.front() != "eval") return arguments;
    const auto isValue = [](const std::string& text) {
        alignas(16) unsigned char sink[16];
        return okt::tool::parseElement(text, okt::ElementType::Real64, sink).empty() ||
               okt::tool::parseElement(text, okt::ElementType::Complex64, sink).empty();
    };
    std::vector<std::string> front, back;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--") {
            back.insert(back.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1, arguments.end());
            break;
        }
        if (argument == "--scalar" && i + 1 < arguments.size()) {
            front.push_back(argument + "=" + arguments[++i]);
        } else if (argument.size() > 1 && argument.front() == '-' && !isValue(argument)) {
            front.push_back(argument);
        } else {
            (front.empty() ? front : back).push_back(argument);
        }
    }
    if (!back.empty()) {
        front.emplace_back("--");
        front.insert(front.end(), back.begin(), back.end());
    }
    return front;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace okt::tool;
    CLI::App app("Vector functions of the oktvm library from the command line", "okt");
    app.set_version_flag("--version", [] { return std::string(oktvmGetLibVersion()->versionText); });
    app.require_subcommand(1);
    app.footer(
        "Exit codes: 0 done, 1 a file could not be read or written, 2 wrong arguments, 3 warnings with\n"
        "--fail-on-warning, 130 interrupted.");
    std::map<std::string, Command> commands;
    commands["list"] = addList(app);
    commands["eval"] = addEval(app);
    commands["apply"] = addApply(app);
    commands["accuracy"] = addAccuracy(app);
#ifdef OKT_TOOL_BENCH
    commands["bench"] = addBench(app);
#endif

    // CLI11 takes the arguments last one first.
    std::vector<std::string> arguments = protectValues({argv + 1, argv + argc});
    std::ranges::reverse(arguments);
    try {
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? exitOk : exitUsage;
    }
    try {
        return commands.at(app.get_subcommands().front()->get_name())();
    } catch (const ToolError& error) {
        fmt::print(stderr, "okt: {}\n", error.what());
        return error.code();
    } catch (const std::exception& error) {
        fmt::print(stderr, "okt: {}\n", error.what());
        return exitFile;
    }
}
