// Times of a function and its peers from the same minutes: all candidates take turns in many short rounds, so that a
// disturbance of the machine hits one round of one candidate and not the ratio.
#pragma once

#include "peers.h"

#include <cstddef>
#include <string>
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

// One export for each routine that is built: grades that share a routine are measured once, by the highest.
std::vector<const Export*> routines();

// Exp 64f; with the grade where a family and type have several routines.
std::string labelOf(const Export& function);

// Bytes of the last cache level, or a usual size where the system does not tell.
std::size_t lastCacheBytes();

// A length at which the arrays of the function together are half as large again as the last cache level.
std::size_t lengthBeyondCache(const Export& function);

}  // namespace okt::bench
