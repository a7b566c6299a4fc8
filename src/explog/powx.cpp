// x^y over an array of x with one y: the steps of Pow, and its errors. Squares are products.
//
// GCC: -fno-tree-ter (1.00)
// GCC: -fschedule-insns -fsched-pressure --param=sched-pressure-algorithm=2 (0.98)
#include "exports/Powx.h"
#include "explog/pow_loop.h"
#include "frame/vector_loop.h"

namespace okt::power {
namespace {

// One exponent that every element goes with through the element routine.
template <class T>
struct ElementsExponent {
    T y;
    T at(std::ptrdiff_t) const { return y; }
};

template <class T, class OneExponent>
void powx(const T* src, T y, T* dst, std::int32_t len, OktStatus& status) {
    if (asBits(y) == asBits(T{2}))  // squares without any test: a NaN gives its product, and nothing warns
        vectorLoop([](auto x) { return x * x; }, dst, static_cast<std::size_t>(len), src);
    else if (OneExponent::serves(y))
        powLoop(src, OneExponent(y), dst, len, status);
    else
        powElements(src, ElementsExponent<T>{y}, dst, 0, len, status);
}

}  // namespace

OKT_EXPORT(Powx, 32f, (powx<Real32, OneExponent32>))
OKT_EXPORT(Powx, 64f, (powx<Real64, OneExponent64>))

}  // namespace okt::power
