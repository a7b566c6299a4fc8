#include "peers.h"

#include <iterator>

namespace okt::bench {
namespace {

std::vector<Peer> runnablePeers() {
    std::vector<Peer> all;
    const auto add = [&](std::span<const Peer> some) { all.insert(all.end(), some.begin(), some.end()); };
#ifdef OKT_HAVE_SLEEF
    add(sleefSse2Peers());
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) add(sleefAvx2Peers());
#endif
    add(libmPeers());
    add(plainPeers());
    return all;
}

}  // namespace

std::vector<Peer> peersOf(std::string_view family, std::string_view type) {
    static const std::vector<Peer> all = runnablePeers();
    std::vector<Peer> found;
    for (const Peer& peer : all)
        if (peer.family == family && peer.type == type) found.push_back(peer);
    return found;
}

}  // namespace okt::bench
