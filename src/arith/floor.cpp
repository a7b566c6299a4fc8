// The greatest integer not above an element.
//
// GCC: -fschedule-insns -fsched-pressure (0.99)
#include "exports/Floor.h"
#include "arith/round_towards.h"

namespace okt {
namespace {

template <class T>
void floor(const T* src, T* dst, std::int32_t len, OktStatus&) {
    vectorLoop([](auto x) { return towards<Direction::down>(x); }, dst, static_cast<std::size_t>(len), src);
}

}  // namespace

OKT_EXPORT(Floor, 32f, floor)
OKT_EXPORT(Floor, 64f, floor)

}  // namespace okt
