// The parts of complex elements, without asking for an alignment.
#pragma once

#include "oktvm_types.h"

namespace okt::complex {

template <class Z>
inline const decltype(Z::re)* partsOf(const Z* z) {
    return reinterpret_cast<const decltype(Z::re)*>(z);
}
template <class Z>
inline decltype(Z::re)* partsOf(Z* z) {
    return reinterpret_cast<decltype(Z::re)*>(z);
}

}  // namespace okt::complex
