// The least integer not below an element.
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
#include "exports/Ceil.h"
#include "arith/round_towards.h"

namespace okt {
namespace {

template <class T>
void ceil(const T* src, T* dst, std::int32_t len, OktStatus&) {
    vectorLoop([](auto x) { return towards<Direction::up>(x); }, dst, static_cast<std::size_t>(len), src);
}

}  // namespace

OKT_EXPORT(Ceil, 32f, ceil)
OKT_EXPORT(Ceil, 64f, ceil)

}  // namespace okt
