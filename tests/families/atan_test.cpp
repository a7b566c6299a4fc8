// Arctangent.
#include "tests/models/inverse_trig_model.h"

#include "lanes/lanes.h"
#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"
#include "support/thresholds.h"

#include <cmath>

namespace okt::test {
namespace {

TEST(Atan, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsAtan_32f_A24", model::Atan_32f,
                                {ordinaryElement<Real32, -14, 8>, specialElement<Real32>});
    expectModel<Real64, Real64>("oktsAtan_64f_A53", model::Atan_64f,
                                {ordinaryElement<Real64, -30, 20>, specialElement<Real64>});
}
TEST(Atan, AgreesWithTheModelOverAllMagnitudes) {
    expectModel<Real32, Real32>("oktsAtan_32f_A24", model::Atan_32f,
                                {ordinaryElement<Real32, -126, 127>, mixedValue<Real32>});
    expectModel<Real64, Real64>("oktsAtan_64f_A53", model::Atan_64f,
                                {ordinaryElement<Real64, -1022, 1023>, mixedValue<Real64>});
}

TEST(Atan, SpecialValues32) {
    expectRows<Real32>(oktsAtan_32f_A24, 1,
                       {
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x00000001, 0x00000001},
                           {0x807FFFFF, 0x807FFFFF},
                           {0x00800000, 0x00800000},
                           {0x7F800000, 0x3FC90FDB},
                           {0xFF800000, 0xBFC90FDB},
                           {0x7F7FFFFF, 0x3FC90FDB},
                       });
    expectNaNsQuieted<Real32>(oktsAtan_32f_A24, 1);
}

TEST(Atan, SpecialValues64) {
    expectRows<Real64>(oktsAtan_64f_A53, 1,
                       {
                           {0x0000000000000000, 0x0000000000000000},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x0000000000000001, 0x0000000000000001},
                           {0x800FFFFFFFFFFFFF, 0x800FFFFFFFFFFFFF},
                           {0x0010000000000000, 0x0010000000000000},
                           {0x7FF0000000000000, 0x3FF921FB54442D18},
                           {0xFFF0000000000000, 0xBFF921FB54442D18},
                           {0xFFEFFFFFFFFFFFFF, 0xBFF921FB54442D18},
                       });
    expectNaNsQuieted<Real64>(oktsAtan_64f_A53, 1);
}

TEST(Atan, IntervalLimitsAndTheirNeighbours) {
    expectModelAround<Real32>(oktsAtan_32f_A24, model::Atan_32f, 1,
                              {0x3EE00000, 0x3F3851EC, 0x40128F5C, 0x3F080000, 0x3F800000});
    expectModelAround<Real64>(oktsAtan_64f_A53, model::Atan_64f, 1,
                              {0x3FDC000000000000, 0x3FE6000000000000, 0x3FF3000000000000, 0x4003800000000000,
                               0x3FDC0000FFFFFFFF, 0x3FE60000FFFFFFFF, 0x3FF30000FFFFFFFF, 0x40038000FFFFFFFF,
                               0x3FDC000100000000, 0x3FE6000100000000, 0x3FF3000100000000, 0x4003800100000000});
}

// The largest value of the lowest interval by the upper word is well above 0.4375: no reduction is applied to it.
TEST(Atan, ALimitsUpperWordBelongsToTheLowerInterval) {
    const auto lowest = [](Real64 x) {  // the polynomial's result without a reduction
        const Real64 z = x * x, w = z * z;
        const Real64 u =
            (((((bits64(0xBF90A0140B247B6E) * w + bits64(0xBFA9785816AC714D)) * w + bits64(0xBFB10D58403897A0)) * w +
               bits64(0xBFB745CDAE905490)) *
                  w +
              bits64(0xBFC2492491FDFC9C)) *
                 w +
             bits64(0xBFD5555555555509)) *
            z;
        const Real64 v =
            ((((bits64(0x3FA2AD8F0C29B3CB) * w + bits64(0x3FADDD7216B6A1B8)) * w + bits64(0x3FB3B0F1459B9FD4)) * w +
              bits64(0x3FBC71C6FD40E520)) *
                 w +
             bits64(0x3FC999999998E492)) *
            w;
        return (u + v) * x + x;
    };
    for (const std::uint64_t pattern : {0x3FDC000000000001u, 0x3FDC0000FFFFFFFFu, 0x3FDBFFFF00000000u}) {
        const Real64 x = bits64(pattern);
        EXPECT_TRUE(sameBits(alone(oktsAtan_64f_A53, x).value, asBits(lowest(x)))) << std::hex << pattern;
    }
}

template <class T>
void expectFlags(OktStatus (*f)(const T*, T*, std::int32_t)) {
    using Limits = std::numeric_limits<T>;
    for (const T zero : {T{0}, -T{0}}) EXPECT_EQ(flagsAlone(f, zero), 0u);
    EXPECT_EQ(flagsAlone(f, Limits::infinity()), flagInexact);
    EXPECT_EQ(flagsAlone(f, -Limits::infinity()), flagInexact);
    EXPECT_EQ(flagsAlone(f, Limits::quiet_NaN()), 0u);
    EXPECT_EQ(flagsAlone(f, std::bit_cast<T>(static_cast<Unsigned<T>>(asBits(Limits::infinity()) + 1))), flagInvalid);
    for (const T x : {T(0.25), T(-0.5), T(1), T(2), T(1e5)}) EXPECT_EQ(flagsAlone(f, x), flagInexact);
}
TEST(Atan, Flags) {
    expectFlags<Real32>(oktsAtan_32f_A24);
    expectFlags<Real64>(oktsAtan_64f_A53);
}

}  // namespace
}  // namespace okt::test
