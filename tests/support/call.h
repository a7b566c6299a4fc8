// Calls of any export by its catalogue row, with arrays owned by the test.
#pragma once

#include "registry.h"
#include "support/inputs.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace okt::test {

using Bytes = std::vector<std::byte>;

// Sources of a call: a mixture of elements of the export's source type, the same for the same seed.
struct Sources {
    Bytes src1, src2, scalar;
};
Sources mixedSources(const Export& function, std::int32_t len, std::uint64_t seed);

// Sources without NaNs, infinities and subnormals.
Sources ordinarySources(const Export& function, std::int32_t len, std::uint64_t seed);

// Arrays of one or two kinds of elements each, see support/mixtures.h.
Sources mixtureSources(const Export& function, std::int32_t len, std::uint64_t seed);

// Sources of nothing but special values.
Sources specialSources(const Export& function, std::int32_t len, std::uint64_t seed);

// Sources spread evenly between two bounds; the unit interval lies in the domain of most functions.
Sources uniformSources(const Export& function, std::int32_t len, std::uint64_t seed, double low, double high);
inline Sources unitSources(const Export& function, std::int32_t len, std::uint64_t seed) {
    return uniformSources(function, len, seed, 0, 1);
}

struct Outcome {
    OktStatus status;
    Bytes dst1, dst2;
    bool operator==(const Outcome&) const = default;
};

// One call on fresh 16-byte aligned arrays.
Outcome call(const Export& function, const Sources& sources, std::int32_t len);

// The catalogue's bit of a status.
Warnings warningOf(OktStatus status);

inline std::size_t sourceBytes(const Export& f, std::int32_t len) {
    return sizeOf(f.source) * static_cast<std::size_t>(len);
}
inline std::size_t destinationBytes(const Export& f, std::int32_t len) {
    return sizeOf(f.destination) * static_cast<std::size_t>(len);
}

// The bits of MXCSR that the frame clears for the length of a call.
constexpr std::uint32_t clearedMxcsrBits(Frame frame) {
    switch (frame) {
        case Frame::mxcsr: return 0xE040;
        case Frame::doubleGuard: return 0xE000;
        default: return 0;
    }
}

// Equal in every bit, or a message with the export, the first differing element's inputs and both patterns.
testing::AssertionResult sameOutcome(const Export& function, const Sources& sources, const Outcome& expected,
                                     const Outcome& actual);

// The elements' parts as hexadecimal patterns.
std::string patternText(ElementType type, const std::byte* element);

// Suite instantiation over the built exports, or over one export of every routine.
std::vector<const Export*> builtExports();
std::vector<const Export*> routines();
std::string exportName(const testing::TestParamInfo<const Export*>& info);

}  // namespace okt::test

namespace okt {
void PrintTo(const Export* function, std::ostream* out);
}
