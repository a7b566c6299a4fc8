#include "support/inputs.h"

namespace okt::test {

template <>
const std::vector<Real32>& specialValues<Real32>() {
    static const std::vector<Real32> values = [] {
        std::vector<Real32> v;
        for (std::uint32_t sign : {0u, 0x80000000u})
            for (std::uint32_t magnitude :
                 {0x00000000u, 0x00000001u, 0x00012345u, 0x007FFFFFu, 0x00800000u, 0x00800001u, 0x33800000u,
                  0x3F000000u, 0x3F7FFFFFu, 0x3F800000u, 0x3F800001u, 0x40000000u, 0x40490FDBu, 0x4B000000u,
                  0x7F7FFFFFu, 0x7F800000u, 0x7FC00000u, 0x7FC54321u, 0x7F800001u, 0x7FA12345u})
                v.push_back(bits32(sign | magnitude));
        return v;
    }();
    return values;
}

template <>
const std::vector<Real64>& specialValues<Real64>() {
    static const std::vector<Real64> values = [] {
        std::vector<Real64> v;
        for (std::uint64_t sign : {std::uint64_t{0}, std::uint64_t{0x8000000000000000}})
            for (std::uint64_t magnitude : {std::uint64_t{0x0000000000000000}, std::uint64_t{0x0000000000000001},
                                            std::uint64_t{0x0001234500067890}, std::uint64_t{0x000FFFFFFFFFFFFF},
                                            std::uint64_t{0x0010000000000000}, std::uint64_t{0x0010000000000001},
                                            std::uint64_t{0x3C90000000000000}, std::uint64_t{0x3FE0000000000000},
                                            std::uint64_t{0x3FEFFFFFFFFFFFFF}, std::uint64_t{0x3FF0000000000000},
                                            std::uint64_t{0x3FF0000000000001}, std::uint64_t{0x4000000000000000},
                                            std::uint64_t{0x400921FB54442D18}, std::uint64_t{0x4330000000000000},
                                            std::uint64_t{0x7FEFFFFFFFFFFFFF}, std::uint64_t{0x7FF0000000000000},
                                            std::uint64_t{0x7FF8000000000000}, std::uint64_t{0x7FF8ABCDE0001234},
                                            std::uint64_t{0x7FF0000000000001}, std::uint64_t{0x7FF4123400000000}})
                v.push_back(bits64(sign | magnitude));
        return v;
    }();
    return values;
}

template <>
Real32 ofMagnitude<Real32>(Random& random, int lowest, int highest) {
    const std::uint64_t bits = random.bits();
    const auto exponent = static_cast<std::uint32_t>(lowest + 127) +
                          static_cast<std::uint32_t>(random.below(static_cast<std::uint64_t>(highest - lowest + 1)));
    return bits32(static_cast<std::uint32_t>(bits >> 63) << 31 | exponent << 23 |
                  (static_cast<std::uint32_t>(bits) & 0x7FFFFF));
}

template <>
Real64 ofMagnitude<Real64>(Random& random, int lowest, int highest) {
    const std::uint64_t bits = random.bits();
    const auto exponent =
        static_cast<std::uint64_t>(lowest + 1023) + random.below(static_cast<std::uint64_t>(highest - lowest + 1));
    return bits64((bits & 0x8000000000000000) | exponent << 52 | (random.bits() >> 12));
}

namespace {

template <class T>
T patternOf(Random& random) {
    if constexpr (sizeof(T) == 4)
        return bits32(static_cast<std::uint32_t>(random.bits()));
    else
        return bits64(random.bits());
}

}  // namespace

template <class T>
T mixedValue(Random& random) {
    const std::uint64_t kind = random.below(16);
    if (kind == 0) return specialValues<T>()[random.below(specialValues<T>().size())];
    if (kind == 1) return patternOf<T>(random);
    if (kind < 6) return ofMagnitude<T>(random, -30, 30);
    if (kind < 10) return ofMagnitude<T>(random, -4, -1);
    return ofMagnitude<T>(random, -3, 6);
}
template Real32 mixedValue<Real32>(Random&);
template Real64 mixedValue<Real64>(Random&);

}  // namespace okt::test
