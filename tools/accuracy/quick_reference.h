// The results of families on real arguments in long double, by the C library: 40 bits beyond single precision, and
// fast. An exhaustive run looks with them for the inputs that it measures against the exact results.
#pragma once

#include <string_view>

namespace okt::accuracy {

struct QuickReference {
    std::string_view family;
    bool complex;  // the element type code is 32fc or 64fc
    bool steps;    // a step from the computed result to the exact one, for functions that the C library does not have
    void (*evaluate)(long double x, long double y, const float* computed, long double* out);
};

// A null pointer when the family's descriptor gives no formula.
const QuickReference* findQuickReference(std::string_view family, bool complex);

}  // namespace okt::accuracy
