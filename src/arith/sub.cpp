// Differences: one IEEE subtraction a real.
#include "exports/Sub.h"
#include "arith/elementwise.h"

namespace okt {
namespace {

template <class T>
void sub(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus&) {
    elementwise(src1, src2, dst, len, [](auto a, auto b) { return a - b; });
}

}  // namespace

OKT_EXPORT(Sub, 32f, sub)
OKT_EXPORT(Sub, 64f, sub)
OKT_EXPORT(Sub, 32fc, sub)
OKT_EXPORT(Sub, 64fc, sub)

}  // namespace okt
