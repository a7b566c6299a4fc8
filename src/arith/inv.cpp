// Reciprocals: one IEEE division an element, under the caller's MXCSR. A zero of either sign, by its bits, warns; a
// subnormal whose reciprocal overflows does not. Elements are divided side by side where none is a zero.
#include "exports/Inv.h"
#include "frame/loops.h"
#include "frame/status_flag.h"
#include "lanes/pattern.h"

namespace okt {
namespace {

template <class T>
T invElement(T x, OktStatus& status) {
    const T reciprocal = T{1} / x;
    if (isZero(x)) {
        status = oktStatusSingularity;
        raiseStatusFlag(status);
    }
    return reciprocal;
}

template <int N>
bool hasZero(F32<N> x) {
    const U32<N> bits = asBits(x);
    return any(bits + bits == U32<N>(0));
}
// By the high words alone: small subnormals are left to the element routine too.
template <int N>
bool hasZero(F64<N> x) {
    const U32<N> high = packHighWords(asBits(x));
    return any(high + high == U32<N>(0));
}

template <class T>
void inv(const T* src, T* dst, std::int32_t len, OktStatus& status) {
    packedElementLoop<4, 8>(
        src, dst, len,
        []<int N>(std::integral_constant<int, N>, const T* from, T* to) {
            const auto x = Vec<T, N>::load(from);
            if (hasZero(x)) [[unlikely]]
                return false;
            (Vec<T, N>(T{1}) / x).store(to);
            return true;
        },
        [](T x, OktStatus& s) { return invElement(x, s); }, status);
}

}  // namespace

OKT_EXPORT(Inv, 32f, inv)
OKT_EXPORT(Inv, 64f, inv)

}  // namespace okt
