// Integer and fraction parts: the part towards zero by a mask on the pattern, the fraction by an exact subtraction.
// A NaN comes out quiet in both; no other element raises a flag.
#include "exports/Modf.h"
#include "arith/integral_parts.h"
#include "frame/vector_loop.h"

namespace okt {
namespace {

template <class V>
struct Split {
    V integer, fraction;
};

template <int N>
Mask32<N> nanLanes(U32<N> magnitude) {
    return greaterSigned(magnitude, U32<N>(Format<Real32>::infinity));
}
template <int N>
Mask64<N> nanLanes(U64<N> magnitude) {
    return isPositive(magnitude - U64<N>(Format<Real64>::infinity));
}

template <class V>
[[gnu::noinline, gnu::cold]] Split<V> withNaNs(V x, Split<V> split, typename Parts<V>::M nan) {
    const V number = asReal(zeroUnless(nan, asBits(x)));
    const V quiet = number + number;
    return {select(nan, quiet, split.integer), select(nan, quiet, split.fraction)};
}

template <class V>
Split<V> splitAtPoint(V x) {
    using U = typename Parts<V>::U;
    const Parts p(x);
    const U t = p.truncated();
    const V difference = asReal(zeroUnless(~(p.belowOne | p.big), p.bits)) - asReal(t);
    const U fraction = (asBits(difference) & U(~Format<typename V::Element>::sign)) | zeroUnless(p.belowOne, p.bits);
    const Split<V> split{asReal(t | p.sign | zeroUnless(p.big, p.bits)), asReal(fraction | p.sign)};
    const auto nan = nanLanes(p.magnitude);
    if (any(nan)) [[unlikely]]
        return withNaNs(x, split, nan);
    return split;
}

// Whole passes may be worked side by side when no store of a pass falls on what the pass reads or stores later.
template <class T>
bool worksInPasses(const T* src, const T* dst1, const T* dst2) {
    return !smearsForward(src, dst1) && !smearsForward(src, dst2) && !smearsForward(dst1, dst2) &&
           !smearsForward(dst2, dst1);
}

template <class T>
void modf(const T* src, T* dst1, T* dst2, std::int32_t len, OktStatus&) {
    using Pass = Vec<T, 32 / sizeof(T)>;
    std::int32_t i = 0;
    const auto some = [&]<class V>(V x) {
        const auto [integer, fraction] = splitAtPoint(x);
        integer.store(dst1 + i);
        fraction.store(dst2 + i);
        i += V::lanes;
    };
    if (worksInPasses(src, dst1, dst2))
        while (i <= len - Pass::lanes) some(Pass::load(src + i));
    while (i < len) some(Vec<T, 1>::load(src + i));
}

}  // namespace

OKT_EXPORT(Modf, 32f, modf)
OKT_EXPORT(Modf, 64f, modf)

}  // namespace okt
