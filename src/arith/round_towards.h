// Ceil and Floor: rounding to integers in a direction.
//
// Elements below 1 and integers by their size are told apart by integer comparisons. On Real64 the bits behind the
// binary point are cut off between them, after an integer addition to the pattern that carries into the integer part
// (and by itself into the exponent); Real32 rounds by adding and taking away a large number. The same steps run on one
// lane.
//
// Flags: on Real32 inexact is set when an element of magnitude 1 to 2^22 is no integer; on Real64 a signalling NaN sets
// invalid. Nothing else is raised.
#pragma once

#include "arith/integral_parts.h"
#include "frame/vector_loop.h"

namespace okt {
namespace {

enum class Direction { up, down };

// The elements that move away from zero when they are rounded
// in the direction, zeros excluded: the positive ones for up.
template <Direction direction, class V>
auto movesAway(const Parts<V>& x) {
    using U = typename Parts<V>::U;
    return isPositive(direction == Direction::up ? x.bits : x.bits ^ U(Format<typename V::Element>::sign));
}

template <Direction direction, int N>
F64<N> towards(F64<N> x) {
    const Parts p(x);
    const auto away = movesAway<direction>(p);
    const U64<N> inside = (p.bits + zeroUnless(away, p.low - U64<N>(1))) & (U64<N>(0) - p.low);
    return asReal(inside | p.sign | oneWhere<F64<N>>(p.belowOne & away) | unchanged(p));
}

// Magnitudes of 2^22 and more as well.
template <Direction direction, int N>
[[gnu::noinline]] F32<N> towardsWithLarge(F32<N> small, F32<N> x) {
    const U32<N> bits = asBits(x);
    const U32<N> magnitude = bits & U32<N>(0x7FFFFFFF);
    const auto belowShift = isBelow(magnitude, 0x1p22f);
    const auto belowInteger = isBelow(magnitude, 0x1p23f);
    // Between 2^22 and 2^23 the only fraction is one half, and adding one half is exact.
    const auto halves = ~belowShift & belowInteger;
    const auto hasHalf = halves & ((bits & U32<N>(1)) == U32<N>(1));
    const F32<N> half(direction == Direction::up ? 0.5f : -0.5f);
    const F32<N> rounded = zeroUnless(halves, x) + zeroUnless(hasHalf, half);
    return select(belowShift, small, select(halves, rounded, x));
}

template <Direction direction, int N>
F32<N> towards(F32<N> x) {
    const U32<N> bits = asBits(x);
    const U32<N> sign = bits & U32<N>(0x80000000);
    const U32<N> magnitude = bits ^ sign;
    const auto belowOne = isBelow(magnitude, 1.0f);
    const auto large = ~isBelow(magnitude, 0x1p22f);

    // x + shift has no bits behind the binary point: an integer next to x, in whatever rounding mode.
    const F32<N> shift(0x1.8p23f);
    const F32<N> between = zeroUnless(~(belowOne | large), x);
    const F32<N> t = (between + shift) - shift;
    const auto missed = direction == Direction::up ? between > t : t > between;
    const F32<N> corrected = t + zeroUnless(missed, F32<N>(direction == Direction::up ? 1.0f : -1.0f));

    const auto away = isPositive(direction == Direction::up ? bits : bits ^ U32<N>(0x80000000));
    const U32<N> ofFraction = sign | oneWhere<F32<N>>(away);
    const F32<N> result = select(belowOne, asReal(ofFraction), corrected);
    if (any(large)) [[unlikely]]
        return towardsWithLarge<direction>(result, x);
    return result;
}

}  // namespace
}  // namespace okt
