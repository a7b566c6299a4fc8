// Rounding to integers.
//
// Elements below 1 and integers by their size are told apart by integer comparisons; between them the bits behind the
// binary point are cut off, after an integer addition to the pattern that carries into the integer part (and by itself
// into the exponent). Ceil and Floor on Real32, Rint and NearbyInt round by adding and taking away a large number.
// Eight elements a pass; the same steps run on one lane.
//
// Flags: only what is named here is raised. Ceil and Floor on Real32 set inexact when an element of magnitude 1 to 2^22
// is no integer; Rint and NearbyInt set it on every call; a signalling NaN sets invalid on Real64.
//
// GCC: -fschedule-insns -fsched-pressure (?)
#include "arith/integral_parts.h"
#include "exports/Ceil.h"
#include "exports/Floor.h"
#include "exports/NearbyInt.h"
#include "exports/Rint.h"
#include "exports/Round.h"
#include "exports/Trunc.h"
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

// Below 1 the result is a one or a zero of the element's sign.
template <class V>
auto oneWhere(typename Parts<V>::M m) {
    return zeroUnless(m, typename Parts<V>::U(asBits(typename V::Element{1})));
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

template <class V>
V truncate(V x) {
    const Parts p(x);
    return asReal(p.truncated() | p.sign | unchanged(p));
}

template <class V>
V roundHalfAway(V x) {
    using U = typename Parts<V>::U;
    const Parts p(x);
    const U inside = (p.bits + (p.low >> 1)) & (U(0) - p.low);
    const auto half = p.belowOne & ~isBelow(p.magnitude, typename V::Element(0.5));
    return asReal(inside | p.sign | oneWhere<V>(half) | unchanged(p));
}

// By the rounding mode in force: x + shift has no bits behind the binary point.
template <class V>
V roundByMode(V x) {
    using T = typename V::Element;
    using U = typename Parts<V>::U;
    const U bits = asBits(x);
    const U sign = bits & U(Format<T>::sign);
    const U magnitude = bits ^ sign;
    const auto big = ~isBelow(magnitude, firstInteger<T>);
    const auto tiny = isBelow(magnitude, smallestNormal<T>());
    U worked = zeroUnless(~big, magnitude);
    // A subnormal is worked as a normal number, so that denormals-are-zero does not act and no denormal flag is raised.
    if (any(tiny)) [[unlikely]]
        worked = select(tiny & isPositive(magnitude), U(Format<T>::hidden), worked);
    const V shift = asReal(sign | U(asBits(firstInteger<T>)));
    const V t = (asReal(worked | sign) + shift) - shift;
    const U pass = [&] {
        if constexpr (sizeof(T) == 8)
            return asBits(mulOrdered(asReal(zeroUnless(big, bits)), V(1.0)));
        else
            return zeroUnless(big, bits);
    }();
    // The sign of a zero is the element's in every mode. A big lane's t is a zero.
    return asReal((asBits(t) & U(~Format<T>::sign)) | sign | pass);
}

template <class T, class Round>
void each(const T* src, T* dst, std::int32_t len, const Round& round) {
    vectorLoop(round, dst, static_cast<std::size_t>(len), src);
}

template <class T>
void ceil(const T* src, T* dst, std::int32_t len, OktStatus&) {
    each(src, dst, len, [](auto x) { return towards<Direction::up>(x); });
}
template <class T>
void floor(const T* src, T* dst, std::int32_t len, OktStatus&) {
    each(src, dst, len, [](auto x) { return towards<Direction::down>(x); });
}
template <class T>
void trunc(const T* src, T* dst, std::int32_t len, OktStatus&) {
    each(src, dst, len, [](auto x) { return truncate(x); });
}
template <class T>
void round(const T* src, T* dst, std::int32_t len, OktStatus&) {
    each(src, dst, len, [](auto x) { return roundHalfAway(x); });
}
template <class T>
void rint(const T* src, T* dst, std::int32_t len, OktStatus&) {
    // Every call sets inexact, whatever its elements are; that of the elements' own additions is then no news.
    keepFlags(opaque(Real64{1.25}) + 0x1p52);
    vectorLoop([](auto x) { return roundByMode(x); }, dst, static_cast<std::size_t>(len), src);
}

}  // namespace

OKT_EXPORT(Ceil, 32f, ceil)
OKT_EXPORT(Ceil, 64f, ceil)
OKT_EXPORT(Floor, 32f, floor)
OKT_EXPORT(Floor, 64f, floor)
OKT_EXPORT(Trunc, 32f, trunc)
OKT_EXPORT(Trunc, 64f, trunc)
OKT_EXPORT(Round, 32f, round)
OKT_EXPORT(Round, 64f, round)
OKT_EXPORT(Rint, 32f, rint)
OKT_EXPORT(Rint, 64f, rint)
OKT_EXPORT(NearbyInt, 32f, rint)
OKT_EXPORT(NearbyInt, 64f, rint)

}  // namespace okt
