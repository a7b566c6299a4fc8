// The inverse of erf on Real32: in Real64, with one rational per range: in x^2, in x^2 - 0.875^2, and in
// y = sqrt(-ln(1 - |x|)).
#pragma once

#include "erf/erf_inv_special.h"
#include "erf/erf_inv_tables.h"
#include "erf/inverse_terms.h"
#include "erf/sorted_loop.h"
#include "lanes/lookup.h"

namespace okt::inverse_erf {
namespace {

struct Constants32 : CentralTerms32 {
    // y times one of y down to 1 - |x| = 2^-24, relative error 2^-41.0; minimax.
    Constant64 tailNumerator[6] = {-0x1.3ff6116f23fa7p-6, 0x1.04a7504e650abp+0, 0x1.fb23f3ce2dc7ep+0,
                                   0x1.dfc9a0e53781ap+1,  0x1.15873eacbc322p+1, 0x1.dfe203ac61f29p-3};
    Constant64 tailDenominator[6] = {1.0,
                                     0x1.55e43f6a3b468p+1,
                                     0x1.03ff10915d08cp+2,
                                     0x1.0cc0f8d613288p+2,
                                     0x1.162515639d37p+1,
                                     0x1.dfc0f31098188p-3};
    // -ln(1 - z) = z + z^2 (1/2 + ...) on |z| <= 1/33, relative error 2^-37.7; minimax but for 1/2.
    Constant64 log[5] = {0.5, 0x1.555551dbfc1ddp-2, 0x1.fffff815eef03p-3, 0x1.99f951aac2647p-3, 0x1.55b1e471daaddp-3};
    Constant64 minusLn2 = -0x1.62e42fefa39efp-1;
    Constant64 one = 1.0;
    Constant64 middle = 0.765625;             // 0.875^2
    Constant64 slope = 0x1.c5bf891b4ef6bp-1;  // sqrt(pi)/2
};
constexpr Constants32 constants32;

constexpr std::uint32_t one32 = 0x3F800000;
constexpr std::uint32_t tail32 = 0x3F600000;    // 0.875
constexpr std::uint32_t middle32 = 0x3E000000;  // 0.125
constexpr std::uint32_t small32 = 0x36800000;   // 2^-18

template <int N>
inline F64<N> erfInvTail(const Constants32& k, F64<N> x) {
    const F64<N> w = F64<N>(k.one) - abs(x);
    const InMemory<std::uint64_t, N> i(asBits(w) >> 48);
    const auto [r, l] = gatherPairsByLowBits<4, Real64>(tables::erfInvLog32, i);
    const F64<N> z = F64<N>(k.one) + r * fractionOf(w);
    const F64<N> a = exponentOf(w) * F64<N>(k.minusLn2) + l;
    const F64<N> q = horner(k.log, z) * z * z + z;
    const F64<N> y = sqrt(a + q);
    return (horner(k.tailNumerator, y) * (y | signOf(x))) / horner(k.tailDenominator, y);
}

template <int N>
inline F64<N> erfInvMiddle(const Constants32& k, F64<N> x) {
    const F64<N> s = x * x - F64<N>(k.middle);
    return (horner(k.middleNumerator, s) * x) / horner(k.middleDenominator, s);
}

template <int N>
inline F64<N> erfInvSmall(const Constants32& k, F64<N> x) {
    return horner(k.small, x * x) * x;
}

[[gnu::noinline]] inline Real32 erfInvElement32(Real32 x, OktStatus& status) {
    const std::uint32_t magnitude = magnitudeBits(x);
    if (magnitude >= one32) return outsideDomain(x, status);
    if (magnitude == 0) return x;
    const F64<1> wide = widen(F32<1>(x));
    const F64<1> result = magnitude >= tail32     ? erfInvTail(constants32, wide)
                          : magnitude >= middle32 ? erfInvMiddle(constants32, wide)
                          : magnitude >= small32  ? erfInvSmall(constants32, wide)
                                                  : wide * F64<1>(constants32.slope);
    return narrow(result).raw;
}

constexpr WordRange ordinary32{small32, one32};

inline void erfInv32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32& k = inMemory(constants32);
    SetAside<Real32> tails;
    const auto tryBlock = [&](const Real32* from, Real32* to, std::int32_t place) OKT_INLINE {
        const F32<8> x = F32<8>::load(from);
        const U32<8> magnitude = asBits(abs(x));
        if (!ordinary32.holdsAll(magnitude)) [[unlikely]]
            return false;
        const Mask32<8> tail = greaterSigned(magnitude, U32<8>(tail32 - 1));
        const int tailBits = laneBits(tail);
        if (tailBits != 0) {
            Real32 block[8];
            x.store(block);
            tails.take(block, place, tailBits);
            if (tailBits == 0xFF) return true;
        }
        const F64<8> wide = widen(zeroIf(tail, x));
        const Mask64<8> small = widen(greaterSigned(U32<8>(middle32), magnitude));
        narrow(select(small, erfInvSmall(k, wide), erfInvMiddle(k, wide))).store(to);
        return true;
    };
    const auto finish = [&](Real32* chunk) OKT_INLINE {
        tails.work<8>([&k](F32<8> x) { return narrow(erfInvTail(k, widen(x))); }, chunk);
    };
    sortedElementLoop(src, dst, len, tryBlock, finish, erfInvElement32, status);
}

}  // namespace
}  // namespace okt::inverse_erf
