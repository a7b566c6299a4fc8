// okt bench: functions beside their peers, at chosen lengths.
#include "commands.h"
#include "measure.h"
#include "names.h"
#include "tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace okt::tool {
namespace {

struct BenchOptions {
    std::vector<std::string> names;
    std::vector<std::int64_t> lengths = {16, 256, 2048, 65536};
    int rounds = 25;
};

int bench(const BenchOptions& options) {
    std::vector<const Export*> functions;
    for (const std::string& name : options.names) functions.push_back(&requireExport(name));
    okt::bench::Effort effort;
    effort.rounds = options.rounds;
    for (const Export* function : functions) {
        fmt::print("{}\n{:>10}  {:<12}  {:<28}  {:>10}  {:>10}  {:>7}\n", function->name, "length", "library",
                   "function", "best ns", "median ns", "ratio");
        for (const std::int64_t length : options.lengths) {
            const auto c = okt::bench::measure(*function, static_cast<std::size_t>(length), effort);
            fmt::print("{:>10}  {:<12}  {:<28}  {:>10.3f}  {:>10.3f}\n", length, "oktvm", function->name, c.ours.best,
                       c.ours.median);
            for (const okt::bench::PeerTime& peer : c.peers)
                fmt::print("{:>10}  {:<12}  {:<28}  {:>10.3f}  {:>10.3f}  {:>7.2f}\n", "", peer.peer.library,
                           peer.peer.function, peer.time.best, peer.time.median, peer.ratio);
        }
    }
    return exitOk;
}

}  // namespace

Command addBench(CLI::App& app) {
    auto options = std::make_shared<BenchOptions>();
    CLI::App* command = app.add_subcommand("bench", "Time functions beside their peers, in nanoseconds an element");
    command->add_option("names", options->names, "The exported functions")->required();
    command->add_option("--length", options->lengths, "Lengths of the arrays")
        ->check(CLI::Range(std::int64_t{1}, std::int64_t{1} << 28))
        ->capture_default_str();
    command->add_option("--rounds", options->rounds, "Rounds in which all candidates take turns")
        ->check(CLI::Range(3, 100000))
        ->capture_default_str();
    return [options] { return bench(*options); };
}

}  // namespace okt::tool
