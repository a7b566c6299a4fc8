// The large-argument reduction: exact cases in every binary order, symmetry, the seam of its two splits, and agreement
// with the plain model.
#include "trig/reduce_quarter_pi.h"

#include "lanes/bits.h"
#include "models/reduction_model.h"
#include "support/flags.h"
#include "support/inputs.h"
#include "support/model_check.h"
#include "unit/reduction_cases.h"

#include <gtest/gtest.h>

#include <cmath>

namespace okt::test {
namespace {

constexpr Real64 signless(Real64 x) { return bits64(asBits(x) & 0x7FFFFFFFFFFFFFFF); }

// |(head + tail) - (exact head + exact tail)| / |exact head|
double relativeError(const QuarterPiReduction& r, Real64 head, Real64 tail) {
    return signless(((r.head - head) + (r.tail - tail)) / head);
}

struct Case {
    Real64 x;
    std::uint32_t quadrant;
    Real64 head, tail;
};

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (std::size_t i = 0; i < std::size(tables::reductionCases); i += 4) {
        const std::uint64_t* c = tables::reductionCases + i;
        cases.push_back({bits64(c[0]), static_cast<std::uint32_t>(c[1]), bits64(c[2]), bits64(c[3])});
    }
    return cases;
}

TEST(ReduceQuarterPi, MeetsTheExactReductionInEveryBinaryOrder) {
    for (const Case& c : allCases()) {
        const QuarterPiReduction r = reduceQuarterPi(c.x);
        const auto exponent = asBits(c.x) >> 52 & 0x7FF;
        const double bound = exponent >= 1046 && exponent <= 1052 ? 0x1.1p-59 : 0x1p-66;
        ASSERT_EQ(r.quadrant, c.quadrant) << std::hexfloat << c.x;
        ASSERT_LE(relativeError(r, c.head, c.tail), bound) << std::hexfloat << c.x;
        ASSERT_LE(signless(r.tail), 0x1p-53 * signless(r.head)) << std::hexfloat << c.x;
    }
}

TEST(ReduceQuarterPi, IsWorstInItsMiddleRange) {
    const QuarterPiReduction r = reduceQuarterPi(0x1.b951f1572eba5p+23);
    const Real64 head = bits64(0xBC3F54F5227A4E84), tail = bits64(0x38901B19345A7A1C);
    EXPECT_GT(relativeError(r, head, tail), 0x1p-59);
    EXPECT_LT(relativeError(r, head, tail), 0x1.1p-59);
}

TEST(ReduceQuarterPi, NegatesHeadTailAndQuadrantWithItsArgument) {
    for (const Case& c : allCases()) {
        const QuarterPiReduction plus = reduceQuarterPi(signless(c.x)), minus = reduceQuarterPi(-signless(c.x));
        ASSERT_EQ(asBits(minus.head), asBits(-plus.head));
        ASSERT_EQ(minus.tail, -plus.tail);  // a tail of zero is +0 either way
        ASSERT_EQ(minus.quadrant, (4 - plus.quadrant) & 3);
    }
}

TEST(ReduceQuarterPi, TakesThePiecesFromTwoToTheThirtiethUp) {
    // The first piece in front of the table is zero there, and the last order reaches the last piece but one.
    for (const Real64 x : {bits64(0x41CFFFFFFFFFFFFF), 0x1p30, 0x1.fffffffffffffp1023}) {
        Real64 head, tail;
        const QuarterPiReduction r = reduceQuarterPi(x);
        EXPECT_EQ(static_cast<int>(r.quadrant), model::reduceQuarterPi(x, head, tail));
        EXPECT_EQ(asBits(r.head), asBits(head));
        EXPECT_EQ(asBits(r.tail), asBits(tail));
    }
}

TEST(ReduceQuarterPi, MovesAcrossTheSeamOfItsSplitsByNoMoreThanTheStep) {
    // From the last number below 2^23 to 2^23 the argument moves by 2^-30, and so must the sum of head and tail.
    const QuarterPiReduction below = reduceQuarterPi(0x1.fffffffffffffp22), above = reduceQuarterPi(0x1p23);
    ASSERT_EQ(below.quadrant, above.quadrant);
    const double step = (above.head - below.head) + (above.tail - below.tail);
    EXPECT_LE(signless(step - 0x1p-30), 0x1p-58);
}

// The integer part is read from a sum that rounding has moved across it: the residue is right, the quadrant is not.
TEST(ReduceQuarterPi, IsAQuarterTurnOffAtTheRecordedArgument) {
    const QuarterPiReduction r = reduceQuarterPi(bits64(0x57B003E068000000));
    EXPECT_EQ(r.quadrant, 1u);  // exact: 2
    EXPECT_LE(relativeError(r, bits64(0xBFC69CB7E4AF8478), bits64(0xBC6E5E5A838E13B3)), 0x1p-66);
}

TEST(ReduceQuarterPi, AgreesWithThePlainModel) {
    Random random(7);
    for (std::size_t done = 0; done < elementsToCompare(); ++done) {
        const Real64 x =
            bits64((random.bits() & 0x8000000000000000) | (1036 + random.below(1011)) << 52 | random.bits() >> 12);
        Real64 head, tail;
        const int quadrant = model::reduceQuarterPi(x, head, tail);
        const QuarterPiReduction r = reduceQuarterPi(x);
        ASSERT_EQ(static_cast<int>(r.quadrant), quadrant) << std::hexfloat << x;
        ASSERT_EQ(asBits(r.head), asBits(head)) << std::hexfloat << x;
        ASSERT_EQ(asBits(r.tail), asBits(tail)) << std::hexfloat << x;
    }
}

// Biased exponents from which elements are of another kind, the last one's end included.
constexpr std::uint64_t kinds[] = {1040, 1046, 1053, 2047};

Real64 ofExponent(Random& random, std::uint64_t first, std::uint64_t end) {
    return bits64((random.bits() & 0x8000000000000000) | (first + random.below(end - first)) << 52 |
                  random.bits() >> 12);
}

template <int N>
void expectSideBySideAsAlone() {
    Random random(11);
    for (std::size_t done = 0; done < elementsToCompare(); done += N) {
        const std::size_t kind = random.below(std::size(kinds) - 1);
        Real64 x[N], heads[N], tails[N];
        std::uint64_t quadrants[N];
        for (Real64& each : x) each = ofExponent(random, kinds[kind], kinds[kind + 1]);
        QuarterPiReductions<N> all;
        ASSERT_TRUE(reduceAlike(F64<N>::load(x), all));
        all.head.store(heads);
        all.tail.store(tails);
        all.quadrant.store(quadrants);
        for (int i = 0; i < N; ++i) {
            const QuarterPiReduction one = reduceQuarterPi(x[i]);
            ASSERT_EQ(asBits(heads[i]), asBits(one.head)) << std::hexfloat << x[i];
            ASSERT_EQ(asBits(tails[i]), asBits(one.tail)) << std::hexfloat << x[i];
            ASSERT_EQ(quadrants[i], one.quadrant) << std::hexfloat << x[i];
        }
    }
}

TEST(ReduceQuarterPi, GivesSeveralElementsWhatItGivesEachAlone) {
    expectSideBySideAsAlone<2>();
    expectSideBySideAsAlone<4>();
}

TEST(ReduceQuarterPi, TakesSeveralElementsOfOneKindAlone) {
    const auto taken = [](Real64 three, Real64 one, int place) {
        Real64 wide[4] = {three, three, three, three};
        wide[place] = one;
        QuarterPiReductions<4> reductions;
        return reduceAlike(F64<4>::load(wide), reductions);
    };
    for (int place = 0; place < 4; ++place)
        for (const Real64 sign : {1.0, -1.0}) {
            const Real64 least[] = {sign * 0x1p17, sign * 0x1p23, sign * 0x1p30};
            const Real64 most[] = {sign * 0x1.fffffffffffffp22, sign * 0x1.fffffffffffffp29,
                                   sign * 0x1.fffffffffffffp1023};
            for (int kind = 0; kind < 3; ++kind) {
                EXPECT_TRUE(taken(-least[kind], most[kind], place));
                EXPECT_TRUE(taken(most[kind], -least[kind], place));
                EXPECT_FALSE(taken(least[kind], most[(kind + 1) % 3], place));
                EXPECT_FALSE(taken(least[kind], most[(kind + 2) % 3], place));
                for (const Real64 x : {0.0, 1.0, 0x1.fffffffffffffp16, HUGE_VAL, bits64(0x7FF8000000000000)})
                    EXPECT_FALSE(taken(least[kind], sign * x, place));
            }
            EXPECT_FALSE(taken(1.0, 1.0, place));
        }
}

TEST(ReduceQuarterPi, LooksAtReal32ElementsBeforeItWidensThem) {
    QuarterPiReductions<4> reductions;
    const Real32 good[4] = {0x1p17F, -0x1.fffffep22F, 0x1.8p20F, -0x1p18F};
    EXPECT_TRUE(reduceAlike(F32<4>::load(good), reductions));
    for (const std::uint32_t pattern : {0x7FA00000u, 0xFFC00000u, 0x7F800000u, 0x47FFFFFFu, 0x00000001u, 0x4B000000u}) {
        Real32 x[4] = {0x1p17F, 0x1p18F, 0x1p19F, 0x1p20F};
        storeBits(x + 2, pattern);
        bool taken = true;
        const unsigned flags = flagsRaised([&] { taken = reduceAlike(F32<4>::load(x), reductions); });
        EXPECT_FALSE(taken) << std::hex << pattern;
        EXPECT_EQ(flags, 0u) << std::hex << pattern;
    }
}

}  // namespace
}  // namespace okt::test
