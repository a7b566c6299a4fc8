// The peers that the library's functions are measured beside: what else a program could call for the same arrays.
#pragma once

#include "registry.h"

#include <span>
#include <string_view>
#include <vector>

namespace okt::bench {

struct Peer {
    std::string_view family, type;  // which exports it stands beside
    std::string_view library;       // SLEEF SSE2, SLEEF AVX2, libm, plain loop, copy
    std::string_view function;      // what is called for an element or a vector
    void (*run)(const Arguments&) = nullptr;
};

// The peers of the family and type that run on this processor; a family without any gives an empty list.
std::vector<Peer> peersOf(std::string_view family, std::string_view type);

// One list a translation unit, each of them compiled for its own instruction set.
std::vector<Peer> libmPeers();
std::vector<Peer> plainPeers();
#ifdef OKT_HAVE_SLEEF
std::span<const Peer> sleefSse2Peers();
std::span<const Peer> sleefAvx2Peers();
#endif

}  // namespace okt::bench
