// okt_exhaustive NAME...: every single-precision argument through a function; see exhaustive.h.
#include "exhaustive.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <unistd.h>

#include <bit>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

using namespace okt;
using namespace okt::accuracy;

namespace {

// One export of each routine that takes a single Real32 array: its last grade.
std::vector<const Export*> allFunctions() {
    std::vector<const Export*> result;
    for (const Export& function : exports()) {
        if (!canRunExhaustively(function)) continue;
        if (!result.empty() && result.back()->routine == function.routine) result.pop_back();
        result.push_back(&function);
    }
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Runs every single-precision argument through functions of one source and reports the largest error.");
    std::vector<std::string> names, paths{"block", "element"};
    std::string from = "0x00000000", to = "0xFFFFFFFF";
    bool all = false;
    double limit = 0;
    ExhaustiveOptions options;
    options.threads = std::max(1u, std::thread::hardware_concurrency());
    app.add_option("NAME", names, "exported functions, such as oktsExp_32f_A24");
    app.add_flag("--all", all, "every built routine of one Real32 source");
    app.add_option("--from", from, "first bit pattern")->capture_default_str();
    app.add_option("--to", to, "last bit pattern")->capture_default_str();
    app.add_option("--stride", options.stride, "one pattern in so many, a power of two")
        ->check([](const std::string& text) {
            return std::has_single_bit(std::stoul(text)) ? "" : text + " is not a power of two";
        });
    app.add_option("--path", paths, "block (one call over many) and element (one call for each)")
        ->check(CLI::IsMember({"block", "element"}))
        ->capture_default_str();
    app.add_option("--threads", options.threads)->capture_default_str();
    app.add_option("--limit", limit, "exit with 1 when an error is larger, in ulp");
    CLI11_PARSE(app, argc, argv);

    std::vector<const Export*> functions;
    if (all) functions = allFunctions();
    for (const std::string& name : names) {
        const Export* function = findExport(name);
        if (!function || !canRunExhaustively(*function)) {
            fmt::print(stderr, "{}: no built function of one Real32 source\n", name);
            return 2;
        }
        functions.push_back(function);
    }
    if (functions.empty()) {
        fmt::print(stderr, "{}", app.help());
        return 2;
    }

    bool withinLimit = true;
    try {
        options.from = static_cast<std::uint32_t>(std::stoul(from, nullptr, 0));
        options.to = static_cast<std::uint32_t>(std::stoul(to, nullptr, 0));
        if (isatty(STDERR_FILENO) != 0)
            options.progress = [](double share) { fmt::print(stderr, "\r{:5.1f}% ", 100 * share); };
        for (const Export* function : functions) {
            for (const std::string& path : paths) {
                options.path = path == "block" ? Path::block : Path::element;
                const ExhaustiveResult result = runExhaustively(*function, options);
                if (options.progress) fmt::print(stderr, "\r       \r");
                fmt::print("{}", describe(*function, options, result));
                std::fflush(stdout);
                for (const LargestError& largest : result.largest)
                    if (limit > 0 && largest.error > limit) withinLimit = false;
            }
        }
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return 2;
    }
    return withinLimit ? 0 : 1;
}
