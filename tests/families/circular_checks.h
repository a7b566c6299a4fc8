// What the circular functions have in common: special values, the bounds of their main paths, flags.
#pragma once

#include "families/element_path.h"
#include "support/flags.h"
#include "support/rows.h"

#include <cmath>

namespace okt::test {

inline void expectInfinitiesAreNaNAndDomainAndNaNsQuiet(OneSource<Real64> f) {
    expectRows<Real64>(f, 1.0,
                       {{0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                        {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain}});
    expectNaNsQuieted<Real64>(f, 1.0);
}
inline void expectInfinitiesAreNaNAndDomainAndNaNsQuiet(OneSource<Real32> f) {
    expectRows<Real32>(f, 1.0F, {{0x7F800000, 0xFFC00000, oktStatusDomain}, {0xFF800000, 0xFFC00000, oktStatusDomain}});
    expectNaNsQuieted<Real32>(f, 1.0F);
}

// Blocks of four.
inline void expectElementPathFrom90112Up(OneSource<Real64> f) {
    for (const Real64 sign : {1.0, -1.0}) {
        expectPath<4>(f, sign * nextDown(90112.0), false);
        expectPath<4>(f, sign * 90112.0, true);
        expectPath<4>(f, sign * nextUp(90112.0), true);
        expectPath<4>(f, sign * HUGE_VAL, true);
    }
    expectPath<4>(f, bits64(0x7FF8000000000000), true);
    for (const Real64 x : {0.0, 0x1p-1074, 0x1p-1022, 0x1p-300}) expectPath<4>(f, x, false);
}

template <int Block>
void expectElementPathAbove10000(OneSource<Real32> f) {
    for (const Real32 sign : {1.0F, -1.0F}) {
        expectPath<Block>(f, sign * nextDown(10000.0F), false);
        expectPath<Block>(f, sign * 10000.0F, false);
        expectPath<Block>(f, sign * nextUp(10000.0F), true);
        expectPath<Block>(f, sign * HUGE_VALF, true);
    }
    expectPath<Block>(f, bits32(0x7FC00000), true);
}

inline void expectInvalidOfInfinitiesAndSignallingNaNsAlone(OneSource<Real64> f) {
    EXPECT_EQ(flagsAlone(f, HUGE_VAL), flagInvalid);
    EXPECT_EQ(flagsAlone(f, bits64(0x7FF0000000000001)), flagInvalid);
    EXPECT_EQ(flagsAlone(f, bits64(0x7FF8000000000001)), 0u);
    for (const Real64 x : {1.0, 1e5, 1e300, -1e22}) EXPECT_EQ(flagsAlone(f, x), flagInexact);
}
inline void expectInvalidOfInfinitiesAndSignallingNaNsAlone(OneSource<Real32> f) {
    EXPECT_EQ(flagsAlone(f, HUGE_VALF), flagInvalid);
    EXPECT_EQ(flagsAlone(f, bits32(0x7F800001)), flagInvalid);
    EXPECT_EQ(flagsAlone(f, bits32(0x7FC00001)), 0u);
    for (const Real32 x : {1.0F, 1e5F, 1e30F, -1e22F}) EXPECT_EQ(flagsAlone(f, x), flagInexact);
}

}  // namespace okt::test
