// Conversions between lanes of different types.
#include "lanes/lanewise.h"

#include <cmath>

namespace okt::test {
namespace {

constexpr auto signedOf = [](std::uint32_t a) { return static_cast<std::int32_t>(a); };

// Numbers that a rounding to Real32 meets in particular: halfway between two of them and beside, in the range of the
// subnormal ones and at the largest.
std::vector<Real64> aroundReal32() {
    std::vector<Real64> values;
    for (const Real64 at : {1.0, 0x1.000002p0, 0x1.fffffep0, 0x1p-126, 0x1.fffffcp-127, 0x1p-149, 0x1p-150, 0x1.8p-149,
                            0x1.000002p-140, 0x1.fffffep127, 0x1.ffffffp127, 0x1p128})
        for (const Real64 halfway : {at, at * (1 + 0x1p-24), at * (1 - 0x1p-24)})
            for (const std::uint64_t step : {~std::uint64_t{0}, std::uint64_t{0}, std::uint64_t{1}})
                for (const std::uint64_t sign : {std::uint64_t{0}, Format<Real64>::sign})
                    values.push_back(asReal((asBits(halfway) + step) | sign));
    return values;
}

TEST(RealConversions, WideningIsExactAndNarrowingRoundsOnce) {
    expectLanewise([](auto a) { return widen(a); }, [](Real32 a) { return static_cast<Real64>(a); },
                   usualOperands<Real32>());
    expectLanewise([](auto a) { return narrow(a); }, [](Real64 a) { return static_cast<Real32>(a); },
                   usualOperands<Real64>());
    expectLanewise([](auto a) { return narrow(a); }, [](Real64 a) { return static_cast<Real32>(a); },
                   listed(aroundReal32()));
}

TEST(RealConversions, WideningFromMemoryTakesAnyAddress) {
    expectLanewiseFromMemory([]<int N>(const Real32* from) { return widenAt<N>(from); },
                             [](Real32 a) { return static_cast<Real64>(a); }, usualOperands<Real32>());
    alignas(64) unsigned char bytes[4 * mostLanes + 1];
    const auto* shifted = reinterpret_cast<Real32*>(bytes + 1);
    Random random(3);
    for (int i = 0; i < mostLanes; ++i)
        storeBits(reinterpret_cast<Real32*>(bytes + 1) + i, asBits(ofMagnitude<Real32>(random, -100, 100)));
    atEveryNumberOfLanes([&]<int N>(std::integral_constant<int, N>) {
        const auto wide = widenAt<N>(shifted);
        for (int i = 0; i < N; ++i) EXPECT_EQ(wide[i], static_cast<Real64>(bits32(loadBits(shifted + i)))) << N;
    });
}

TEST(IntegerConversions, SignedIntegersToRealNumbers) {
    const auto operands = usualOperands<std::uint32_t>();
    const auto wide = [](std::uint32_t a) { return static_cast<Real64>(signedOf(a)); };
    expectLanewise([](auto a) { return toReal64(a); }, wide, operands);
    expectLanewise([](auto a) { return toReal64(InMemory<std::uint32_t, decltype(a)::lanes>(a)); }, wide, operands);
}

TEST(IntegerConversions, SignedIntegersToReal32) {
    expectLanewise([](auto a) { return toReal32(a); }, [](std::uint32_t a) { return static_cast<Real32>(signedOf(a)); },
                   usualOperands<std::uint32_t>());
}

TEST(IntegerConversions, RoundedToSignedIntegersByTheModeInForce) {
    const auto definition = [](Real32 a) -> std::uint32_t {
        if (!(a >= -0x1p31f && a < 0x1p31f)) {
            keepFlags(opaque(Real32{0}) / opaque(Real32{0}));  // invalid
            return 0x80000000;
        }
        // The sum has the element's sign and a unit in the last place of 1, so that it is rounded as the conversion
        // rounds, inexact included.
        const Real64 shift = a < 0 ? -0x1.8p52 : 0x1.8p52;
        const Real64 sum = opaque(opaque(Real64{a}) + shift);
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(sum - shift));
    };
    std::vector<Real32> values;
    for (const Real32 a : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f, 1.5f, 2.5f, 3.5f, 0x1p22f, 0x1.fffffep22f, 0x1.800002p22f,
                           0x1p30f, 0x1.fffffep30f, 0x1p31f, 0x1.000002p31f, 0x1p32f, 0x1p63f, 0x1p100f})
        values.insert(values.end(), {a, -a});
    Random random(5);
    for (int i = 0; i < 500; ++i) values.push_back(ofMagnitude<Real32>(random, -3, 31));
    expectLanewise([](auto a) { return roundToSigned(a); }, definition, listed(values));
}

TEST(IntegerConversions, TruncatedAndUnsignedNumbers) {
    const auto fractional =
        drawn<Real64>(2000, [](Random& random) { return std::tuple(ofMagnitude<Real64>(random, -5, 30)); });
    expectLanewise([](auto a) { return truncated(a); },
                   [](Real64 a) { return static_cast<Real64>(static_cast<std::int32_t>(a)); }, fractional);
    const auto integral = drawn<Real64>(
        2000, [](Random& random) { return std::tuple(static_cast<Real64>(random.bits() >> 33 >> random.below(31))); });
    expectLanewise([](auto a) { return toUnsigned(a); }, [](Real64 a) { return static_cast<std::uint64_t>(a); },
                   integral);
}

TEST(IntegerConversions, WordsOfLongLanes) {
    const auto words = usualOperands<std::uint32_t>();
    const auto longs = usualOperands<std::uint64_t>();
    expectLanewise([](auto a) { return above2To52(a); }, [](std::uint32_t a) { return 0x1p52 + a; }, words);
    expectLanewise([](auto a) { return withHighWords(a); }, [](std::uint32_t a) { return std::uint64_t{a} << 32; },
                   words);
    expectLanewise([](auto a) { return packLowWords(a); },
                   [](std::uint64_t a) { return static_cast<std::uint32_t>(a); }, longs);
    expectLanewise([](auto a) { return packHighWords(a); },
                   [](std::uint64_t a) { return static_cast<std::uint32_t>(a >> 32); }, longs);
}

// The widened mask is all ones in a lane or all zeros, which a choice shows.
TEST(MaskConversions, KeepTruthValues) {
    const auto words = usualOperands<std::uint32_t>();
    const auto longs = usualOperands<std::uint64_t>();
    expectLanewise([](auto a) { return widen(negativeLanes(a)); }, [](std::uint32_t a) { return signedOf(a) < 0; },
                   words);
    expectLanewise([](auto a) { return narrow(negativeLanes(a)); }, [](std::uint64_t a) { return a >> 63 != 0; },
                   longs);
    expectLanewise([](auto a) { return zeroUnless(widen(negativeLanes(a)), ~(withHighWords(a) ^ withHighWords(a))); },
                   [](std::uint32_t a) { return signedOf(a) < 0 ? ~std::uint64_t{0} : 0; }, words);
    expectLanewise([](auto a) { return maskBits(narrow(negativeLanes(a))); },
                   [](std::uint64_t a) { return a >> 63 != 0 ? ~0U : 0U; }, longs);
}

}  // namespace
}  // namespace okt::test
