// okt_race LIBRARY1 LIBRARY2: how the times of two builds of the library compare. Both take turns in many short rounds
// over the same arrays, so that a disturbance of the machine hits one round and not the ratio.
#include "library.h"
#include "measure.h"
#include "workload.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace okt::bench;
using okt::compare::Library;

struct Options {
    std::string first, second;
    std::vector<std::string> families, names;
    std::vector<std::size_t> lengths = {2048};
    int rounds = 200;
    double above = 0;
    bool plain = false;
};

// A function's times in both libraries at one length, nanoseconds an element.
struct Race {
    const okt::Export* function;
    std::size_t length;
    double first, second;
    double ratio() const { return second / first; }
};

bool isChosen(const okt::Export& function, const Options& options) {
    const auto holds = [](const std::vector<std::string>& list, std::string_view text) {
        return list.empty() || std::ranges::find(list, text) != list.end();
    };
    return holds(options.families, function.family) && holds(options.names, function.name);
}

Race race(const okt::Export& function, const Library& first, const Library& second, std::size_t length, int rounds) {
    const Workload workload(function, length);
    const auto index = static_cast<std::size_t>(&function - okt::exports().data());
    const auto callOf = [&](const Library& library) {
        return [&function, address = library.address(index)](const okt::Arguments& arguments) {
            function.callAt(address, arguments);
        };
    };
    const auto [one, other] = alternately(callOf(first), callOf(second), workload.arguments(), rounds);
    const double scale = 1e9 / static_cast<double>(length);
    return {&function, length, one * scale, other * scale};
}

int run(const Options& options) {
    const Library first(options.first), second(options.second);
    double logarithms = 0;
    std::vector<Race> races;
    for (const okt::Export* function : routines()) {
        if (!isChosen(*function, options)) continue;
        for (const std::size_t length : options.lengths) {
            const Race one = race(*function, first, second, length, options.rounds);
            logarithms += std::log(one.ratio());
            races.push_back(one);
            if (one.ratio() < options.above) continue;
            if (options.plain)
                fmt::print("{} {} {:.4f} {:.4f}\n", function->name, length, one.first, one.second);
            else
                fmt::print("{:<22} {:>7} {:>9.3f} {:>9.3f} {:>7.3f}\n", labelOf(*function), length, one.first,
                           one.second, one.ratio());
            std::fflush(stdout);
        }
    }
    if (races.empty()) throw std::runtime_error("no function of that name");
    if (!options.plain)
        fmt::print("{} ratios of the second library's time to the first's, geometric mean {:.4f}\n", races.size(),
                   std::exp(logarithms / static_cast<double>(races.size())));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app(
        "Times of two builds of the library, in turns: function, elements, ns an element in the first and in the\n"
        "second library, and the second's time over the first's");
    app.add_option("first", options.first, "The library to compare with")->required()->check(CLI::ExistingFile);
    app.add_option("second", options.second, "The library in question")->required()->check(CLI::ExistingFile);
    app.add_option("--family", options.families, "These families alone");
    app.add_option("--export", options.names, "These exports alone, the highest grade of each");
    app.add_option("--length", options.lengths, "Elements of a call, one or more")->check(CLI::PositiveNumber);
    app.add_option("--rounds", options.rounds, "Turns of each library")->check(CLI::PositiveNumber);
    app.add_option("--above", options.above, "Show ratios from this one on");
    app.add_flag("--plain", options.plain, "Name, length and both times, for programs");
    CLI11_PARSE(app, argc, argv);
    try {
        return run(options);
    } catch (const std::exception& error) {
        fmt::print(stderr, "okt_race: {}\n", error.what());
        return 2;
    }
}
