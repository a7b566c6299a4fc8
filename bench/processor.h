// The processor that measurements were made on, as documents name it: by what it is able to do, not by its brand.
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace okt::bench {

// Such as "family 6, model 85, 2.5 GHz, up to AVX-512, caches of 32 KiB, 1 MiB and 33 MiB", from the lines of
// /proc/cpuinfo and the sizes of the caches in bytes, from the core outwards. What they do not tell is left out.
std::string describeProcessor(std::istream& info, const std::vector<long>& caches);

// That of the host.
std::string processorDescription();

}  // namespace okt::bench
