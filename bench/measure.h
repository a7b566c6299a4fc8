// Times of a function and its peers from the same minutes: all candidates take turns in many short rounds, so that a
// disturbance of the machine hits one round of one candidate and not the ratio.
#pragma once

#include "peers.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace okt::bench {

struct Time {
    double best = 0;    // nanoseconds an element, smallest of all rounds
    double median = 0;  // the same, middle of all rounds
};

struct PeerTime {
    Peer peer;
    Time time;
    double ratio = 0;  // the peer's best time over ours: above 1 we are faster
};

struct Comparison {
    const Export* function = nullptr;
    std::size_t length = 0;
    Time ours;
    std::vector<PeerTime> peers;
};

struct Effort {
    int rounds = 150;
    double secondsPerTurn = 10e-6;  // a turn holds as many calls as fit in this time, at least one
    double secondsPerPoint = 0.1;   // rounds stop early when all turns together took longer, after 2 at least
};

Comparison measure(const Export& function, std::size_t length, const Effort& effort = {});

// Two ways to run the same arguments, in turns: the best seconds a call of each. Inline, so that nothing stands
// between.
template <class First, class Second>
std::pair<double, double> alternately(const First& first, const Second& second, const Arguments& arguments, int rounds,
                                      double secondsPerTurn = Effort{}.secondsPerTurn) {
    const auto turn = [&](const auto& run, long calls) {
        const auto start = std::chrono::steady_clock::now();
        for (long i = 0; i < calls; ++i) run(arguments);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() /
               static_cast<double>(calls);
    };
    long calls = 1;
    while (turn(first, calls) * static_cast<double>(calls) < secondsPerTurn) calls *= 2;
    std::pair<double, double> best = {turn(first, calls), turn(second, calls)};
    for (int round = 1; round < rounds; ++round) {
        best.first = std::min(best.first, turn(first, calls));
        best.second = std::min(best.second, turn(second, calls));
    }
    return best;
}

// One export for each routine that is built: grades that share a routine are measured once, by the highest.
std::vector<const Export*> routines();

// Exp 64f; with the grade where a family and type have several routines.
std::string labelOf(const Export& function);

// Bytes of the last cache level, or a usual size where the system does not tell.
std::size_t lastCacheBytes();

// A length at which the arrays of the function together are half as large again as the last cache level.
std::size_t lengthBeyondCache(const Export& function);

}  // namespace okt::bench
