// What tests over all declared bounds share.
#pragma once

#include "bounds.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

namespace okt::accuracy {

// Printed by GoogleTest beside the name of a failing test.
inline void PrintTo(const Bound& bound, std::ostream* out) { *out << bound.origin; }

inline std::string nameOf(const Bound& bound) {
    std::string name = std::string(bound.function->name).substr(4) + "_" + bound.name;
    for (char& c : name)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    return name;
}
inline std::string testName(const testing::TestParamInfo<Bound>& tested) { return nameOf(tested.param); }

inline const std::vector<Bound>& allBounds() {
    static const std::vector<Bound> bounds = loadAllBounds(sourceDirectory(), exports());
    return bounds;
}

// Those that a sweep can hold.
inline std::vector<Bound> swept(std::vector<Bound> bounds) {
    std::erase_if(bounds, [](const Bound& bound) { return !sweep(bound, Path::block, 1); });
    return bounds;
}

// A number of the environment, or the usual one.
inline std::size_t numberFrom(const char* variable, std::size_t usual) {
    const char* set = std::getenv(variable);
    return set ? std::strtoul(set, nullptr, 10) : usual;
}

inline void expectWithin(const Bound& bound, const Measurement& measurement, const std::string& where = "") {
    for (const std::string& excess : excesses(bound, measurement)) ADD_FAILURE() << where << excess;
}

}  // namespace okt::accuracy
