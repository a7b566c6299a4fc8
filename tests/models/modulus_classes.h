// The infinite and NaN parts of a modulus, which the hypotenuse treats alike.
#pragma once

#include "oktvm_types.h"
#include "tests/models/bits.h"
#include "tests/models/ordered.h"

namespace okt::model::modulus {

inline bool allOnes(Real32 x) { return (asBits(x) & 0x7F800000) == 0x7F800000; }
inline bool allOnes(Real64 x) { return (asBits(x) & 0x7FF0000000000000) == 0x7FF0000000000000; }
inline bool isInfinity(Real32 x) { return (asBits(x) & 0x7FFFFFFF) == 0x7F800000; }
inline bool isInfinity(Real64 x) { return (asBits(x) & 0x7FFFFFFFFFFFFFFF) == 0x7FF0000000000000; }

// True if a part is not finite; the result then stands in `result`. An infinity wins over a NaN, and of two NaNs
// the first one's payload is kept.
template <class T>
bool special(T x, T y, T& result) {
    if (allOnes(x)) {
        if (!allOnes(y)) {
            result = ordered::mul(x, x);
        } else if (isInfinity(x)) {
            result = ordered::mul(x, x);
        } else if (isInfinity(y)) {
            result = ordered::mul(y, y);
        } else {
            result = ordered::mul(x, y);
        }
        return true;
    }
    if (allOnes(y)) {
        result = ordered::mul(y, y);
        return true;
    }
    return false;
}

}  // namespace okt::model::modulus
