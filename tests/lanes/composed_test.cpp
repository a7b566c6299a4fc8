// What is made of the operations on lanes, at every number of lanes: double-double arithmetic, approximate reciprocals,
// the margin of a narrowing. What they give on one lane is tested elsewhere.
#include "lanes/double_double.h"
#include "lanes/lanewise.h"
#include "lanes/narrowing.h"
#include "lanes/rsqrt_seed64.h"
#include "lanes/seeds.h"

#include <cmath>

namespace okt::test {
namespace {

// --- Double-double ---

template <class T>
std::pair<Real64, Real64> both(T parts) {
    return {parts.hi.raw, parts.lo.raw};
}

class DoubleDoubleLanes : public testing::Test {
protected:
    static const Operands<Real64>& one() {
        static const auto operands =
            drawn<Real64>(1024, [](Random& random) { return std::tuple(ofMagnitude<Real64>(random, -40, 40)); });
        return operands;
    }
    static const Operands<Real64, Real64>& two() {
        static const auto operands = drawn<Real64, Real64>(1024, [](Random& random) {
            return std::tuple(ofMagnitude<Real64>(random, -40, 40), ofMagnitude<Real64>(random, -40, 40));
        });
        return operands;
    }
};

TEST_F(DoubleDoubleLanes, SumsAndProducts) {
    expectLanewise([](auto a, auto b) { return twoSum(a, b); },
                   [](Real64 a, Real64 b) { return both(twoSum(F64x1(a), F64x1(b))); }, two());
    expectLanewise([](auto a, auto b) { return fastTwoSum(a, b); },
                   [](Real64 a, Real64 b) { return both(fastTwoSum(F64x1(a), F64x1(b))); }, two());
    expectLanewise([](auto a, auto b) { return exactProduct(a, b); },
                   [](Real64 a, Real64 b) { return both(exactProduct(F64x1(a), F64x1(b))); }, two());
}

TEST_F(DoubleDoubleLanes, Splits) {
    expectLanewise([](auto a) { return dekkerSplit(a, splitter21); },
                   [](Real64 a) { return both(dekkerSplit(F64x1(a), splitter21)); }, one());
    expectLanewise([](auto a) { return maskSplit(a); }, [](Real64 a) { return both(maskSplit(F64x1(a))); }, one());
}

// --- Approximate reciprocals ---

TEST(SeedLanes, OfReal32) {
    const auto operands = usualOperands<Real32>();
    expectLanewise([](auto a) { return recipSeed(a); }, [](Real32 a) { return recipSeed(F32x1(a)).raw; }, operands);
    expectLanewise([](auto a) { return rsqrtSeed(a); }, [](Real32 a) { return rsqrtSeed(F32x1(a)).raw; }, operands);
    const auto normal = drawn<Real32>(
        1024, [](Random& random) { return std::tuple(magnitude(ofMagnitude<Real32>(random, -120, 120))); });
    expectLanewise([](auto a) { return recipSeedOfNormal(a); },
                   [](Real32 a) { return recipSeedOfNormal(F32x1(a)).raw; }, normal);
    expectLanewise([](auto a) { return rsqrtSeedOfNormal(a); },
                   [](Real32 a) { return rsqrtSeedOfNormal(F32x1(a)).raw; }, normal);
}

// The upper word of a lane is free, before and after.
TEST(SeedLanes, OfLowWordsAndOfReal64) {
    const auto words = drawn<std::uint64_t>(1024, [](Random& random) {
        return std::tuple(random.bits() << 32 | asBits(magnitude(ofMagnitude<Real32>(random, -120, 120))));
    });
    const auto operand = [](std::uint64_t a) { return F32x1(bits32(static_cast<std::uint32_t>(a))); };
    expectLanewise([](auto a) { return recipSeedLow(a) & decltype(a)(std::uint64_t{0xFFFFFFFF}); },
                   [&](std::uint64_t a) { return std::uint64_t{asBits(recipSeedOfNormal(operand(a)).raw)}; }, words);
    expectLanewise([](auto a) { return rsqrtSeedLow(a) & decltype(a)(std::uint64_t{0xFFFFFFFF}); },
                   [&](std::uint64_t a) { return std::uint64_t{asBits(rsqrtSeedOfNormal(operand(a)).raw)}; }, words);
    const auto positive = drawn<Real64>(
        1024, [](Random& random) { return std::tuple(magnitude(ofMagnitude<Real64>(random, -1022, 1023))); });
    expectLanewise([](auto a) { return rsqrtSeed(a); }, [](Real64 a) { return rsqrtSeed(F64x1(a)).raw; }, positive);
}

// 21 significant bits within the error of the approximation, over the whole range of exponents.
TEST(SeedLanes, OfReal64AreAboutTheReciprocalRoot) {
    Random random(13);
    for (int i = 0; i < 5000; ++i) {
        const Real64 x = magnitude(ofMagnitude<Real64>(random, -1022, 1023));
        const Real64 seed = rsqrtSeed(F64x1(x)).raw;
        EXPECT_NEAR(seed * std::sqrt(x), 1.0, 1.51 / 4096) << std::hexfloat << x;
        EXPECT_EQ(asBits(seed) & 0xFFFFFFFF, 0u) << std::hexfloat << x;
    }
}

// --- The margin of a narrowing ---

// Where it settles, both ends of the margin narrow to the same number in every rounding mode.
TEST(NarrowingMargins, SettleWhatIsFarFromNumbersAndMiddles) {
    constexpr std::uint32_t units = 1000;
    const NarrowingMargin margin(units);
    Random random(17);
    std::size_t settled = 0, open = 0;
    for (int round = 0; round < 4000; ++round) {
        const std::uint64_t near = asBits(ofMagnitude<Real64>(random, -20, 20)) & ~std::uint64_t{0xFFFFFFF};
        // Within a few units of the margin's ends, or anywhere.
        const std::uint64_t distance = round % 4 == 3 ? random.below(1 << 28) : units - 2 + random.below(5);
        const Real64 value = bits64(round % 2 == 0 ? near + distance : near - distance);
        const std::uint64_t rest = asBits(value) & 0xFFFFFFF, toNext = (std::uint64_t{1} << 28) - rest;
        const bool expected = std::min(rest, toNext) > units;
        (expected ? settled : open) += 1;
        ASSERT_EQ(margin.settlesAll(F64x1(value)), expected) << std::hexfloat << value;
        atEveryNumberOfLanes<2>([&]<int N>(std::integral_constant<int, N>) {
            Real64 lane[N];
            std::fill(lane, lane + N, 1.0 + 0x1p-26);
            lane[random.below(N)] = value;
            ASSERT_EQ(margin.settlesAll(F64<N>::load(lane)), expected) << N << std::hexfloat << ' ' << value;
        });
        if (!expected) continue;
        for (const std::uint32_t mode : {roundNearest, roundDown, roundUp, roundTowardsZero}) {
            const ScopedControlState scope({defaultMxcsr | mode, 0x037F});
            const auto narrowed = [](std::uint64_t pattern) {
                return asBits(static_cast<Real32>(opaque(bits64(pattern))));
            };
            ASSERT_EQ(narrowed(asBits(value) - units), narrowed(asBits(value) + units)) << std::hexfloat << value;
        }
    }
    EXPECT_GT(settled, 1000u);
    EXPECT_GT(open, 500u);
}

}  // namespace
}  // namespace okt::test
