// Reciprocals: one IEEE division an element, under the caller's MXCSR. A zero of either sign, by its bits, warns; a
// subnormal whose reciprocal overflows does not. Elements are divided side by side where none is a zero.
#include "frame/frame.h"
#include "frame/loops.h"
#include "frame/status_flag.h"

namespace okt {
namespace {

void raiseSingularity(Real32) { raiseStatusFlag32(oktStatusSingularity); }
void raiseSingularity(Real64) { raiseStatusFlag64(oktStatusSingularity); }

template <class T>
T invElement(T x, OktStatus& status) {
    const T reciprocal = T{1} / x;
    if (asBits(x) << 1 == 0) {
        status = oktStatusSingularity;
        raiseSingularity(x);
    }
    return reciprocal;
}

bool hasZero(F32<8> x) {
    const U32<8> bits = asBits(x);
    return any(bits + bits == U32<8>(0));
}
// By the high words alone: small subnormals are left to the element routine too.
bool hasZero(F64<4> x) {
    const U32<4> high = packHighWords(asBits(x));
    return any(high + high == U32<4>(0));
}

template <class T>
OktStatus inv(const T* src, T* dst, std::int32_t len) {
    using Block = Vec<T, 32 / sizeof(T)>;
    return x87Frame<53>(len, src, dst, [=](OktStatus& status) {
        packedElementLoop<Block::lanes>(
            src, dst, len,
            [](const T* from, T* to) {
                const auto x = Block::load(from);
                if (hasZero(x)) [[unlikely]]
                    return false;
                (Block(T{1}) / x).store(to);
                return true;
            },
            [](T x, OktStatus& s) { return invElement(x, s); }, status);
    });
}

}  // namespace

OKT_EXPORT(Inv, 32f, inv)
OKT_EXPORT(Inv, 64f, inv)

}  // namespace okt
