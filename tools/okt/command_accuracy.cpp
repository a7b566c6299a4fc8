// okt accuracy: errors of a function against MPFR.
#include "accuracy.h"
#include "commands.h"
#include "names.h"
#include "tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace okt::tool {
namespace {

struct AccuracyOptions {
    std::string name, path = "both", plot;
    std::vector<std::string> ranges;
    std::size_t points = 100000;
    std::uint64_t seed = 1;
    unsigned threads = std::max(1u, std::thread::hardware_concurrency());
};

void writeText(const std::string& path, const std::string& text) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    const bool written = file && std::fwrite(text.data(), 1, text.size(), file) == text.size();
    const int error = errno;
    const bool closed = file && std::fclose(file) == 0;
    if (!written || !closed)
        fail(exitFile, "cannot write {}: {}", path, std::generic_category().message(written ? errno : error));
}

int runAccuracy(const AccuracyOptions& options) {
    const Export& function = requireExport(options.name);
    const std::vector<std::string> ranges =
        options.ranges.empty() ? accuracy::ordinaryRanges(function) : options.ranges;
    const std::size_t wanted = function.form == Form::B || function.form == Form::S ? 2 : 1;
    if (ranges.size() != wanted)
        fail(exitUsage, "{} takes {}: give --range {} for {}", function.name,
             wanted == 1 ? "one argument" : "two arguments", wanted == 1 ? "once" : "twice",
             wanted == 1 ? "it" : "them in turn");

    std::optional<accuracy::PointSet> points;
    try {
        points.emplace(function, ranges, options.points, options.seed, options.threads);
    } catch (const std::invalid_argument& error) {
        fail(exitUsage, "--range: {}", error.what());
    }
    std::vector<accuracy::Measurement> measurements;
    for (const accuracy::Path path : {accuracy::Path::block, accuracy::Path::element})
        if (options.path == "both" || options.path == accuracy::pathName(path))
            measurements.push_back(accuracy::measure(*points, path));

    for (std::size_t i = 0; i < ranges.size(); ++i)
        fmt::print("{:<10} {}\n", ranges.size() == 1 ? "range" : i == 0 ? "range src1" : "range src2", ranges[i]);
    std::vector<const accuracy::Measurement*> plotted;
    for (const accuracy::Measurement& m : measurements) {
        fmt::print("{}", accuracy::describe(m));
        plotted.push_back(&m);
    }
    if (measurements.size() == 2 && accuracy::sameErrors(measurements[0], measurements[1])) plotted.pop_back();
    if (!options.plot.empty()) writeText(options.plot, accuracy::plotErrors(plotted));
    return exitOk;
}

}  // namespace

Command addAccuracy(CLI::App& app) {
    auto options = std::make_shared<AccuracyOptions>();
    CLI::App* command = app.add_subcommand("accuracy", "Measure the errors of a function against MPFR, in ulp");
    command->add_option("name", options->name, "The exported function")->required();
    command
        ->add_option(
            "--range", options->ranges,
            "Arguments to draw, one text for each argument in turn: 'uniform LO HI', 'log LO HI' (evenly in the "
            "logarithm), 'bits LO HI' (every value alike) or 'list V V ...'; then 'both' for either sign and "
            "'near C' to add C. A bar divides the parts of a complex argument. Without it the ordinary range")
        ->take_all();
    command->add_option("--points", options->points, "Number of points")
        ->check(CLI::Range(std::size_t{1}, std::size_t{100000000}))
        ->capture_default_str();
    command->add_option("--seed", options->seed, "Another seed gives other points")->capture_default_str();
    command->add_option("--path", options->path, "Long arrays, single elements, or both")
        ->check(CLI::IsMember({"block", "element", "both"}))
        ->capture_default_str();
    command->add_option("--plot", options->plot, "SVG picture of the error over the argument");
    command->add_option("--threads", options->threads, "Threads that compute the references")
        ->check(CLI::Range(1u, 1024u))
        ->capture_default_str();
    return [options] { return runAccuracy(*options); };
}

}  // namespace okt::tool
