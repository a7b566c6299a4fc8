// The five intervals of the arctangent on Real64, 4 the lowest and 0 the one behind all limits, where t = -1/|x|.
#pragma once

#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "trig/atan_tables.h"

namespace okt::atan {

template <int N>
struct Interval {
    InMemory<std::uint32_t, N> number;
    Mask64<N> last;

    // The centre, behind the last limit the factor of |x| in the denominator.
    F64<N> centre() const { return gatherElementsAt<sizeof(Real64)>(tables::atanScale, number); }
    // arctan of the centre in two parts.
    F64<N> head() const { return gatherElementsAt<sizeof(Real64)>(tables::atanHead, number); }
    F64<N> tail() const { return gatherElementsAt<sizeof(Real64)>(tables::atanTail, number); }
};

namespace detail {

// The number is 4, less one for each limit passed.
template <int N>
inline Interval<N> intervalOf(Mask32<N> first, Mask32<N> second, Mask32<N> third, Mask32<N> fourth) {
    const U32<N> passed = (maskBits(first) + maskBits(second)) + (maskBits(third) + maskBits(fourth));
    return {InMemory<std::uint32_t, N>(passed + U32<N>(4)), widen(fourth)};
}

}  // namespace detail

struct Limits {
    Constant64 limit[4] = {0.4375, 0.6875, 1.1875, 2.4375};  // the lower words are zero
    Pattern32 word[4] = {highWord(0.4375), highWord(0.6875), highWord(1.1875), highWord(2.4375)};

    // Only the upper words count: a value goes with the limit whose upper word it shares.
    template <int N>
    inline Interval<N> intervalOf(F64<N> a) const {
        const U32<N> upper = packHighWords(asBits(a));
        const auto above = [&](int i) OKT_INLINE { return greaterSigned(upper, U32<N>(word[i])); };
        return detail::intervalOf<N>(above(0), above(1), above(2), above(3));
    }
    // The same for the ratio a/b, by the limits times b.
    template <int N>
    inline Interval<N> intervalOf(F64<N> a, F64<N> b) const {
        const U32<N> upper = packHighWords(asBits(a));
        const auto above = [&](int i) OKT_INLINE { return greaterSigned(upper, packHighWords(asBits(limit[i] * b))); };
        return detail::intervalOf<N>(above(0), above(1), above(2), above(3));
    }
};

}  // namespace okt::atan
