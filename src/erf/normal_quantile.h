// The inverse of erf in tails and middle, as the normal quantile and the inverse of erfc share it: both are
// erfinv(t) · factor for a central variable t and the tail mass u = 1 - |t|.
//
//   |t| < 0.125   a polynomial in t^2, times t
//   |t| < 0.875   a rational in s = (t + 0.875)(t - 0.875), times t
//   the rest      a rational in y = sqrt(-ln u), times y; on Real64 one for u >= 2^-53, one for smaller u
//
// Real32 works in Real64 with short logarithm and root; Real64 works in pairs of Real64 throughout, so that the last
// addition is in effect the only rounding. Logarithm and root: a table reciprocal r close to 1/m leaves z = m r - 1,
// exact in two parts, and a polynomial of degree 6.
//
// A function is given by a Function with
//   central(p), centralRest(p, t)   t, and on Real64 what is missing to its exact value
//   tailMass(p)                     u, exact
//   end, centre                     the domain is 0 to `end`; t is 0 at the centre
//   scaled                          whether the result is multiplied by the root of 2
//   negativeBelow                   whether results are negative below the centre, or above it
#pragma once

#include "erf/quantile32.h"
#include "erf/quantile64.h"
#include "erf/sorted_loop.h"
#include "frame/status_flag.h"
#include "lanes/pattern.h"

namespace okt::quantile {

template <class T>
inline T zeroByZero() {
    const T zero = opaque(T{0});
    return zero / zero;  // NOLINT(misc-redundant-expression)
}

// Elements that have no finite result. False: x is inside the domain.
template <class Function, class T>
inline bool outsideDomain(T x, T& result, OktStatus& status) {
    if (isNaN(x)) {
        result = x * x;
        return true;
    }
    OktStatus code = oktStatusDomain;
    if (isInfinite(x)) {
        result = zeroByZero<T>();
    } else {
        const Real64 p = x;
        constexpr Real64 end = Function::end;
        if (p > 0 && p < end) return false;
        if (p == 0 || p == end) {
            code = oktStatusSingularity;
            result = static_cast<T>(Function::central(F64<1>(p)).raw / opaque(Real64{0}));
        } else {
            result = zeroByZero<T>();
        }
    }
    status = code;
    raiseStatusFlag(code);
    return true;
}

template <class Function, int N>
inline F64<N> signOfResult(F64<N> p) {
    const F64<N> centre(Function::centre);
    const F64<N> minusZero = asReal(U64<N>(std::uint64_t{0x8000000000000000}));
    return zeroUnless(Function::negativeBelow ? p < centre : p > centre, minusZero);
}

template <class Function>
[[gnu::noinline]] inline Real32 element32(Real32 x, OktStatus& status) {
    Real32 result;
    if (outsideDomain<Function>(x, result, status)) return result;
    const F64<1> p(static_cast<Real64>(x));
    const F64<1> t = Function::central(p);
    const Real64 a = abs(t).raw;
    const F64<1> r = a < 0.125   ? series32<Function>(constants32, t)
                     : a < 0.875 ? middle32<Function>(constants32, t)
                                 : tail32<Function>(constants32, Function::tailMass(p), signOfResult<Function>(p));
    return narrow(r).raw;
}

template <class Function>
[[gnu::noinline]] inline Real64 element64(Real64 x, OktStatus& status) {
    Real64 result;
    if (outsideDomain<Function>(x, result, status)) return result;
    const F64<1> p(x);
    const F64<1> t = Function::central(p);
    const Real64 a = abs(t).raw;
    if (a < 0.875) {
        if (x == Function::centre) return 0;
        const DoubleDouble<1> pair = {t, Function::centralRest(p, t)};
        return a < 0.125 ? series64<Function>(constants64, pair).raw : middle64<Function>(constants64, pair).raw;
    }
    const F64<1> u = Function::tailMass(p);
    const auto [n, m] = partsOf(constants64, u);
    const DoubleDouble<1> y = root64(constants64, minusLog64(constants64, n, m));
    const F64<1> sign = signOfResult<Function>(p);
    return asBits(u.raw) >> 52 >= nearField ? tail64<Function, true>(constants64, y, sign).raw
                                            : tail64<Function, false>(constants64, y, sign).raw;
}

// ---------------------------------------------------------------------------------------------------------------------
// Elements side by side

// Inside the domain, and normal numbers: the caller may have subnormal ones count as zeros.
template <class Function>
inline constexpr WordRange ordinary32{0x00800000, asBits(static_cast<Real32>(Function::end))};
template <class Function>
inline constexpr WordRange ordinary64{0x00100000, highWord(Function::end)};

template <class Function, int N>
inline F64<N> tailOf(const Constants32& k, F64<N> p) {
    return tail32<Function>(k, Function::tailMass(p), signOfResult<Function>(p));
}

template <class Function>
inline void array32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32& k = inMemory(constants32);
    SetAside<Real32> tails;
    const auto tryBlock = [&](const Real32* from, Real32* to, std::int32_t place) OKT_INLINE {
        const F32<8> x = F32<8>::load(from);
        if (!ordinary32<Function>.holdsAll(asBits(x))) [[unlikely]]
            return false;
        const F64<8> t = Function::central(widen(x));
        const Mask64<8> small = abs(t) < F64<8>(k.smallLimit);
        const Mask64<8> central = abs(t) < F64<8>(k.middle);
        if (!all(central)) {
            Real32 block[8];
            x.store(block);
            tails.take(block, place, laneBits(~central));
        }
        // An element in the very middle is exact, so that the steps of others raise a flag only in their company.
        if (any(central & ~small)) [[likely]] {
            const F64<8> rational = middle32<Function>(k, select(central, t, F64<8>(0.5)));
            narrow(select(small, series32<Function>(k, t), rational)).store(to);
        } else if (any(small)) {
            narrow(series32<Function>(k, zeroUnless(small, t))).store(to);
        }
        return true;
    };
    const auto finish = [&](Real32* chunk) OKT_INLINE {
        tails.template work<8>([&k](F32<8> x) { return narrow(tailOf<Function>(k, widen(x))); }, chunk);
    };
    sortedElementLoop(src, dst, len, tryBlock, finish, element32<Function>, status);
}

template <class Function, int N>
inline DoubleDouble<N> centralPair(F64<N> p) {
    const F64<N> t = Function::central(p);
    return {t, Function::centralRest(p, t)};
}

template <class Function, bool nearRow, int N>
[[gnu::noinline]] F64<N> tailOf(const Constants64& k, F64<N> p) {
    const F64<N> u = Function::tailMass(p);
    const DoubleDouble<N> y = root64(k, minusLog64(k, exponentOf(u), fractionOf(u)));
    return tail64<Function, nearRow>(k, y, signOfResult<Function>(p));
}

template <class Function>
inline void array64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& k = inMemory(constants64);
    SetAside<Real64> small, middle, near, far;
    const auto tryBlock = [&](const Real64* from, Real64* to, std::int32_t place) OKT_INLINE {
        const F64<8> x = F64<8>::load(from);
        if (!ordinary64<Function>.holdsAll(packHighWords(asBits(x)))) [[unlikely]]
            return false;
        const F64<8> a = abs(Function::central(x));
        const int smallBits = laneBits(a < F64<8>(k.smallLimit));
        const int tailBits = laneBits(a >= F64<8>(k.middle));
        if ((smallBits | tailBits) != 0) {
            Real64 block[8];
            x.store(block);
            if (smallBits != 0) {
                if (any(x == F64<8>(Function::centre))) return false;  // exact, by the element routine
                small.take(block, place, smallBits);
            }
            if (tailBits != 0) {
                const int farBits = laneBits(Function::tailMass(x) < F64<8>(0x1p-53)) & tailBits;
                near.take(block, place, tailBits & ~farBits);
                if (farBits != 0) far.take(block, place, farBits);
            }
            middle.take(block, place, 0xFF & ~(smallBits | tailBits));
            return true;
        }
        middle64<Function>(k, centralPair<Function>(x.lowHalf())).store(to);
        middle64<Function>(k, centralPair<Function>(x.highHalf())).store(to + 4);
        return true;
    };
    const auto finish = [&](Real64* chunk) OKT_INLINE {
        small.template work<4>([&k](F64<4> p) { return series64<Function>(k, centralPair<Function>(p)); }, chunk);
        middle.template work<4>([&k](F64<4> p) { return middle64<Function>(k, centralPair<Function>(p)); }, chunk);
        near.template work<4>([&k](F64<4> p) { return tailOf<Function, true>(k, p); }, chunk);
        far.template work<4>([&k](F64<4> p) { return tailOf<Function, false>(k, p); }, chunk);
    };
    sortedElementLoop(src, dst, len, tryBlock, finish, element64<Function>, status);
}

}  // namespace okt::quantile
