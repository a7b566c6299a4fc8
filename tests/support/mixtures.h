// Arrays for calls at random. Each array is drawn from one or two kinds of elements, so that blocks of one kind, blocks
// with a single stranger among them, and mixtures of everything all occur often, whatever a function's main range is.
#pragma once

#include "registry.h"
#include "support/inputs.h"

namespace okt::test {

// Draws `count` parts, Real32 or Real64, one after the other from any address on.
void fillParts(Random& random, ElementType part, std::byte* to, std::size_t count);

// The elements of an array of this type; complex elements draw each part for itself.
inline void fillElements(Random& random, ElementType type, std::byte* to, std::size_t count) {
    fillParts(random, partOf(type), to, count * (isComplex(type) ? 2 : 1));
}

}  // namespace okt::test
