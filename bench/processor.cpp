#include "processor.h"

#include <fmt/format.h>
#include <unistd.h>

#include <fstream>
#include <map>
#include <vector>

namespace okt::bench {
namespace {

// The fields of the first processor.
std::map<std::string, std::string> fieldsOf(std::istream& info) {
    std::map<std::string, std::string> fields;
    for (std::string line; std::getline(info, line) && !line.empty();) {
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos || colon + 2 > line.size()) continue;
        fields[line.substr(0, line.find_last_not_of(" \t", colon - 1) + 1)] = line.substr(colon + 2);
    }
    return fields;
}

// The widest set of packed instructions, and whether products can be fused with sums.
std::string instructionsIn(const std::string& flags) {
    const auto has = [&](const char* flag) {
        return (' ' + flags + ' ').find(fmt::format(" {} ", flag)) != std::string::npos;
    };
    if (has("avx512f")) return "AVX-512";
    if (has("avx2")) return has("fma") ? "AVX2 with FMA" : "AVX2";
    if (has("avx")) return "AVX";
    if (has("sse4_2")) return "SSE4.2";
    return has("sse2") ? "SSE2" : "";
}

std::string sizeText(long bytes) {
    constexpr long kib = 1024, mib = 1024 * kib;
    return bytes % mib == 0 ? fmt::format("{} MiB", bytes / mib) : fmt::format("{} KiB", bytes / kib);
}

}  // namespace

std::string describeProcessor(std::istream& info, const std::vector<long>& caches) {
    std::map<std::string, std::string> fields = fieldsOf(info);
    std::vector<std::string> parts;
    if (const std::string& family = fields["cpu family"]; !family.empty()) parts.push_back("family " + family);
    if (const std::string& model = fields["model"]; !model.empty()) parts.push_back("model " + model);
    if (const std::string& clock = fields["cpu MHz"]; !clock.empty())
        parts.push_back(fmt::format("{:.1f} GHz", std::stod(clock) / 1000));
    if (const std::string set = instructionsIn(fields["flags"]); !set.empty()) parts.push_back("up to " + set);
    std::vector<std::string> sizes;
    for (const long bytes : caches)
        if (bytes > 0) sizes.push_back(sizeText(bytes));
    if (!sizes.empty()) {
        const std::string last = sizes.back();
        sizes.pop_back();
        parts.push_back(sizes.empty() ? "a cache of " + last
                                      : fmt::format("caches of {} and {}", fmt::join(sizes, ", "), last));
    }
    return parts.empty() ? "an unknown kind" : fmt::format("{}", fmt::join(parts, ", "));
}

std::string processorDescription() {
    std::ifstream info("/proc/cpuinfo");
    return describeProcessor(
        info, {sysconf(_SC_LEVEL1_DCACHE_SIZE), sysconf(_SC_LEVEL2_CACHE_SIZE), sysconf(_SC_LEVEL3_CACHE_SIZE)});
}

}  // namespace okt::bench
