// Sums: one IEEE addition a real. Of two NaNs the first source's comes through, quieted.
#include "exports/Add.h"
#include "arith/elementwise.h"
#include "lanes/ordered.h"

namespace okt {
namespace {

template <class T>
void add(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus&) {
    elementwise(src1, src2, dst, len, [](auto a, auto b) { return addOrdered(a, b); });
}

}  // namespace

OKT_EXPORT(Add, 32f, add)
OKT_EXPORT(Add, 64f, add)
OKT_EXPORT(Add, 32fc, add)
OKT_EXPORT(Add, 64fc, add)

}  // namespace okt
