// okt apply: one function over arrays in files.
#include "apply.h"
#include "commands.h"
#include "names.h"
#include "tool_error.h"

#include <fmt/format.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <map>
#include <memory>

#if defined(_WIN32)
#include <io.h>
#define isatty _isatty
#define fileno _fileno
#else
#include <unistd.h>
#endif

namespace okt::tool {
namespace {

volatile std::sig_atomic_t interruptionSeen = 0;

extern "C" void noteInterruption(int) { interruptionSeen = 1; }

// One line on a terminal that is written over and over, at most ten times a second, and wiped at the end.
class ProgressBar {
public:
    ProgressBar() : shown_(isatty(fileno(stderr)) != 0) {}
    ~ProgressBar() {
        if (drawn_) fmt::print(stderr, "\r\x1b[K");
    }

    void operator()(std::uint64_t elements, double share) {
        if (!shown_) return;
        const auto now = std::chrono::steady_clock::now();
        if (drawn_ && now - last_ < std::chrono::milliseconds(100)) return;
        last_ = now;
        drawn_ = true;
        constexpr int width = 30;
        const int filled = static_cast<int>(share * width);
        fmt::print(stderr, "\r[{:#<{}}{:.<{}}] {:3.0f}%  {} elements\x1b[K", "", filled, "", width - filled,
                   100 * share, elements);
        std::fflush(stderr);
    }

private:
    bool shown_, drawn_ = false;
    std::chrono::steady_clock::time_point last_;
};

struct ApplyOptions {
    std::string name;
    ApplyRequest request;
    std::string inFormat, outFormat;
    bool failOnWarning = false, quiet = false;
};

int runApply(ApplyOptions& options) {
    static const std::map<std::string, Format> formats = {
        {"npy", Format::npy}, {"raw", Format::raw}, {"csv", Format::csv}};
    options.request.function = &requireExport(options.name);
    if (!options.inFormat.empty()) options.request.inFormat = formats.at(options.inFormat);
    if (!options.outFormat.empty()) options.request.outFormat = formats.at(options.outFormat);

    std::signal(SIGINT, noteInterruption);
    std::signal(SIGTERM, noteInterruption);
    ApplyResult result;
    {
        ProgressBar bar;
        result = apply(
            options.request, [&](std::uint64_t elements, double share) { bar(elements, share); },
            [] { return interruptionSeen != 0; });
    }
    if (!options.quiet) {
        if (result.warnedPieces == 0)
            fmt::print(stderr, "{} elements in {} pieces, no warning\n", result.elements, result.pieces);
        else
            fmt::print(stderr, "{} elements in {} pieces, {} of them warned, the last with {}\n", result.elements,
                       result.pieces, result.warnedPieces, statusName(result.lastWarning));
    }
    return options.failOnWarning && result.warnedPieces > 0 ? exitWarned : exitOk;
}

}  // namespace

Command addApply(CLI::App& app) {
    auto options = std::make_shared<ApplyOptions>();
    ApplyRequest& request = options->request;
    CLI::App* command = app.add_subcommand("apply", "Compute a function over arrays in files");
    command->add_option("name", options->name, "The exported function")->required();
    command->add_option("--in", request.in, "Source: .npy, .csv or .txt (one element a line), else raw little-endian")
        ->required();
    command->add_option("--in2", request.in2, "Second source");
    command->add_option("--scalar", request.scalar, "The scalar argument");
    command->add_option("--out", request.out, "Destination; written only when all went well")->required();
    command->add_option("--out2", request.out2, "Second destination");
    command->add_option("--in-format", options->inFormat, "Format of the sources, whatever their names")
        ->check(CLI::IsMember({"npy", "raw", "csv"}));
    command->add_option("--out-format", options->outFormat, "Format of the destinations, whatever their names")
        ->check(CLI::IsMember({"npy", "raw", "csv"}));
    command
        ->add_option("--piece", request.piece,
                     "Elements of one call. Where a function's block and element paths differ in the last bit, the "
                     "end of a piece counts as the end of an array")
        ->capture_default_str();
    command->add_flag("--fail-on-warning", options->failOnWarning, "Exit code 3 when a piece warned");
    command->add_flag("--quiet", options->quiet, "No summary");
    return [options] { return runApply(*options); };
}

}  // namespace okt::tool
