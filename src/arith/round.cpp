// The nearest integer, halves away from zero: the bits behind the binary point are cut off after an integer addition to
// the pattern, which carries into the integer part (and by itself into the exponent). A signalling NaN sets invalid on
// Real64; no other flag is raised.
//
// GCC: -fschedule-insns -fsched-pressure (0.94)
#include "exports/Round.h"
#include "arith/integral_parts.h"
#include "frame/vector_loop.h"

namespace okt {
namespace {

template <class V>
V roundHalfAway(V x) {
    using U = typename Parts<V>::U;
    const Parts p(x);
    const U inside = (p.bits + (p.low >> 1)) & (U(0) - p.low);
    const auto half = p.belowOne & ~isBelow(p.magnitude, typename V::Element(0.5));
    return asReal(inside | p.sign | oneWhere<V>(half) | unchanged(p));
}

template <class T>
void round(const T* src, T* dst, std::int32_t len, OktStatus&) {
    vectorLoop([](auto x) { return roundHalfAway(x); }, dst, static_cast<std::size_t>(len), src);
}

}  // namespace

OKT_EXPORT(Round, 32f, round)
OKT_EXPORT(Round, 64f, round)

}  // namespace okt
