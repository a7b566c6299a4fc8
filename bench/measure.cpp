#include "measure.h"

#include "workload.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <set>

#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace okt::bench {
namespace {

using Clock = std::chrono::steady_clock;

double secondsFor(void (*run)(const Arguments&), OktStatus (*call)(const Arguments&), const Arguments& arguments,
                  long calls) {
    const auto start = Clock::now();
    if (call) {
        for (long i = 0; i < calls; ++i) call(arguments);
    } else {
        for (long i = 0; i < calls; ++i) run(arguments);
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
}

struct Candidate {
    void (*run)(const Arguments&) = nullptr;
    OktStatus (*call)(const Arguments&) = nullptr;
    long calls = 1;
    std::vector<double> rounds;

    double turn(const Arguments& arguments) const { return secondsFor(run, call, arguments, calls); }

    // As many calls as fill a turn.
    void calibrate(const Arguments& arguments, double seconds) {
        for (double took = turn(arguments); took < seconds; took = turn(arguments)) {
            const double factor = took > 0 ? std::min(seconds / took * 1.1, 16.0) : 16.0;
            calls = static_cast<long>(static_cast<double>(calls) * factor) + 1;
        }
    }

    Time time(std::size_t length) const {
        std::vector<double> sorted = rounds;
        std::ranges::sort(sorted);
        const double scale = 1e9 / (static_cast<double>(calls) * static_cast<double>(length));
        return {sorted.front() * scale, sorted[sorted.size() / 2] * scale};
    }
};

}  // namespace

Comparison measure(const Export& function, std::size_t length, const Effort& effort) {
    const Workload workload(function, length);
    const Arguments& arguments = workload.arguments();
    const std::vector<Peer> peers = peersOf(function.family, function.type);

    std::vector<Candidate> candidates(1 + peers.size());
    candidates[0].call = function.call;
    for (std::size_t i = 0; i < peers.size(); ++i) candidates[i + 1].run = peers[i].run;
    for (Candidate& candidate : candidates) candidate.calibrate(arguments, effort.secondsPerTurn);

    double spent = 0;
    for (int round = 0; round < effort.rounds && (round < 2 || spent < effort.secondsPerPoint); ++round)
        for (Candidate& candidate : candidates) {
            candidate.rounds.push_back(candidate.turn(arguments));
            spent += candidate.rounds.back();
        }

    Comparison comparison;
    comparison.function = &function;
    comparison.length = length;
    comparison.ours = candidates[0].time(length);
    for (std::size_t i = 0; i < peers.size(); ++i) {
        const Time time = candidates[i + 1].time(length);
        comparison.peers.push_back({peers[i], time, time.best / comparison.ours.best});
    }
    return comparison;
}

std::vector<const Export*> routines() {
    std::map<int, const Export*> last;
    std::vector<int> order;
    for (const Export& function : exports()) {
        if (!last.contains(function.routine)) order.push_back(function.routine);
        last[function.routine] = &function;
    }
    std::vector<const Export*> all;
    for (const int routine : order) all.push_back(last[routine]);
    return all;
}

std::string labelOf(const Export& function) {
    std::set<int> routines;
    for (const Export& other : exports())
        if (other.family == function.family && other.type == function.type) routines.insert(other.routine);
    std::string label = std::string(function.family) + ' ' + std::string(function.type);
    if (routines.size() > 1) label += ' ' + std::string(function.grade);
    return label;
}

std::size_t lastCacheBytes() {
    long bytes = 0;
#if defined(_SC_LEVEL3_CACHE_SIZE)
    bytes = std::max(sysconf(_SC_LEVEL3_CACHE_SIZE), sysconf(_SC_LEVEL2_CACHE_SIZE));
#endif
    constexpr std::size_t usual = 32 << 20, most = 256 << 20;
    return bytes > 0 ? std::min(static_cast<std::size_t>(bytes), most) : usual;
}

std::size_t lengthBeyondCache(const Export& function) {
    const std::size_t wanted = lastCacheBytes() / 2 * 3 / bytesPerElement(function);
    return (wanted + 1023) / 1024 * 1024;
}

}  // namespace okt::bench
