// The integer part: the bits behind the binary point are cut off. A signalling NaN sets invalid on Real64; no other
// flag is raised.
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
#include "exports/Trunc.h"
#include "arith/integral_parts.h"
#include "frame/vector_loop.h"

namespace okt {
namespace {

template <class V>
V truncate(V x) {
    const Parts p(x);
    return asReal(p.truncated() | p.sign | unchanged(p));
}

template <class T>
void trunc(const T* src, T* dst, std::int32_t len, OktStatus&) {
    vectorLoop([](auto x) { return truncate(x); }, dst, static_cast<std::size_t>(len), src);
}

}  // namespace

OKT_EXPORT(Trunc, 32f, trunc)
OKT_EXPORT(Trunc, 64f, trunc)

}  // namespace okt
