#include "quick_reference.h"

#include "formulas.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string_view>

namespace okt::formulas {
namespace {

using T = long double;
using accuracy::QuickReference;

constexpr T rootTwo = sqrt2_v<T>;
constexpr T halfRootPi = 0.886226925452758013649083741670572591L;

// The inverse functions by one Newton step from the computed value y: if y is right to single precision the step is
// right to twice that, and if it is not the step shows it.
T erfcInvFrom(T y, T q) {
    const T tail = erfc(y);
    return y + log(tail / q) * tail * halfRootPi * exp(y * y);
}
T erfInvFrom(T y, T x) { return y - (erf(y) - x) * halfRootPi * exp(y * y); }

// A computed value so wrong that the step from it fails has 0 for its reference, which shows as a large error.
T orZero(T value) { return isfinite(value) ? value : 0; }

T erfInv(T x, T y) {
    if (!(abs(x) < 1)) return std::numeric_limits<T>::quiet_NaN();
    if (abs(x) <= 0.5L) return orZero(erfInvFrom(y, x));
    return copysign(orZero(erfcInvFrom(abs(y), 1 - abs(x))), x);
}
T erfcInv(T v, T y) {
    if (!(0 < v && v < 2)) return std::numeric_limits<T>::quiet_NaN();
    if (v < 0.5L) return orZero(erfcInvFrom(y, v));
    if (v > 1.5L) return -orZero(erfcInvFrom(-y, 2 - v));
    return orZero(erfInvFrom(y, 1 - v));
}

void store(T* out, T value) { out[0] = value; }
void store(T* out, Pair<T> parts) {
    out[0] = parts.first;
    out[1] = parts.second;
}

#define OKT_QUICK_REFERENCE(family, complex, ...)                                                     \
    {family, complex, std::string_view(#__VA_ARGS__).find("computed") != std::string_view::npos,      \
     []([[maybe_unused]] T x, [[maybe_unused]] T y, [[maybe_unused]] const float* computed, T* out) { \
         store(out, __VA_ARGS__);                                                                     \
     }},

constexpr QuickReference table[] = {
#include "quick_references.inc"
};

#undef OKT_QUICK_REFERENCE

}  // namespace
}  // namespace okt::formulas

namespace okt::accuracy {

const QuickReference* findQuickReference(std::string_view family, bool complex) {
    const auto found = std::ranges::find_if(
        formulas::table, [&](const QuickReference& row) { return row.family == family && row.complex == complex; });
    return found == std::end(formulas::table) ? nullptr : found;
}

}  // namespace okt::accuracy
