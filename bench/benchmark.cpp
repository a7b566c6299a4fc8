// Google Benchmark over all built routines, each beside its peers, at lengths from 1 to beyond the last cache level.
// Names are FUNCTION/LENGTH/WHO, so --benchmark_filter picks functions, lengths or libraries. The counter `ns` is
// nanoseconds an element; `ratio` is a peer's time over ours in the same run.
//
// On a machine that does other work at the same time, --benchmark_enable_random_interleaving=true and some
// --benchmark_repetitions give steadier figures; the performance report goes further and takes turns in short rounds.
#include "measure.h"
#include "workload.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace okt::bench;

// Arrays are made when a benchmark begins and shared by the function and its peers, one set at a time.
const okt::Arguments& argumentsFor(const okt::Export& function, std::size_t length) {
    static const okt::Export* current = nullptr;
    static std::size_t currentLength = 0;
    static std::unique_ptr<Workload> workload;
    if (current != &function || currentLength != length) {
        workload.reset();
        workload = std::make_unique<Workload>(function, length);
        current = &function;
        currentLength = length;
    }
    return workload->arguments();
}

void report(benchmark::State& state, std::size_t length) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(length));
}

// The console table with two columns more. Ours comes before its peers.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter() : ConsoleReporter(isatty(1) ? OO_ColorTabular : OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        std::vector<Run> shown = runs;
        for (Run& run : shown) {
            run.counters.erase("items_per_second");
            const auto length = lengths.find(run.run_name.function_name);
            if (length == lengths.end() || run.error_occurred) continue;
            if (run.run_type == Run::RT_Aggregate && run.aggregate_unit != benchmark::kTime) continue;
            const double perElement =
                run.GetAdjustedCPUTime() * benchmark::GetTimeUnitMultiplier(benchmark::kNanosecond) /
                benchmark::GetTimeUnitMultiplier(run.time_unit) / static_cast<double>(length->second);
            run.counters["ns"] = benchmark::Counter(perElement);
            const std::string& name = run.run_name.function_name;
            const std::size_t slash = name.rfind('/');
            const std::string key = name.substr(0, slash) + run.aggregate_name + std::to_string(run.repetition_index);
            if (name.substr(slash + 1) == "oktvm") ours_[key] = perElement;
            if (const auto found = ours_.find(key); found != ours_.end())
                run.counters["ratio"] = benchmark::Counter(perElement / found->second);
        }
        ConsoleReporter::ReportRuns(shown);
    }

    std::map<std::string, std::size_t> lengths;

private:
    std::map<std::string, double> ours_;
};

}  // namespace

int main(int argc, char** argv) {
    RatioReporter reporter;
    const auto add = [&](const std::string& name, std::size_t length, auto body) {
        reporter.lengths[name] = length;
        benchmark::RegisterBenchmark(name.c_str(), body);
    };
    for (const okt::Export* function : routines()) {
        for (const std::size_t length :
             {std::size_t{1}, std::size_t{4}, std::size_t{16}, std::size_t{64}, std::size_t{256}, std::size_t{2048},
              std::size_t{32768}, lengthBeyondCache(*function)}) {
            const std::string prefix = std::string(function->name) + "/" + std::to_string(length) + "/";
            add(prefix + "oktvm", length, [function, length](benchmark::State& state) {
                const okt::Arguments& arguments = argumentsFor(*function, length);
                for (auto _ : state) benchmark::DoNotOptimize(function->call(arguments));
                report(state, length);
            });
            for (const Peer& peer : peersOf(function->family, function->type))
                add(prefix + std::string(peer.library), length, [function, length, peer](benchmark::State& state) {
                    const okt::Arguments& arguments = argumentsFor(*function, length);
                    for (auto _ : state) {
                        peer.run(arguments);
                        benchmark::ClobberMemory();
                    }
                    report(state, length);
                });
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
}
