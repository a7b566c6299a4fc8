// Squares: one IEEE multiplication an element.
#include "exports/Sqr.h"
#include "arith/elementwise.h"

namespace okt {
namespace {

template <class T>
void sqr(const T* src, T* dst, std::int32_t len, OktStatus&) {
    vectorLoop([](auto x) { return x * x; }, dst, static_cast<std::size_t>(len), src);
}

}  // namespace

OKT_EXPORT(Sqr, 32f, sqr)
OKT_EXPORT(Sqr, 64f, sqr)

}  // namespace okt
