// Approximate reciprocals and reciprocal roots: the error that all of them keep to, particular operands, and that every
// number of lanes gives the same.
#include "lanes/seeds.h"

#include "lanes/moved_seeds.h"
#include "lanes/table_seeds.h"
#include "support/control_state.h"
#include "support/inputs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace okt::test {
namespace {

constexpr long double bound = 1.5L / 4096;

struct Approximation {
    const char* name;
    F32x1 (*one)(F32x1);
    F32x4 (*four)(F32x4);
    bool root;
    std::uint32_t step;  // through the significands

    long double exact(Real32 x) const {
        const long double wide = x;
        return root ? 1 / std::sqrt(wide) : 1 / wide;
    }
    bool withinBound(Real32 x, Real32 y) const { return std::abs(y - exact(x)) <= bound * exact(x); }
    Real32 of(Real32 x) const { return one(F32x1(x)).raw; }
    friend void PrintTo(const Approximation& a, std::ostream* out) { *out << a.name; }
};

class Seeds : public testing::TestWithParam<Approximation> {};

TEST_P(Seeds, KeepToTheErrorOfTheInstructions) {
    const Approximation& f = GetParam();
    for (std::uint32_t pattern = 0x3F800000; pattern < 0x40800000; pattern += f.step) {
        const Real32 x = bits32(pattern);
        ASSERT_TRUE(f.withinBound(x, f.of(x))) << std::hexfloat << x << " gives " << f.of(x);
    }
    const int last = f.root ? 127 : 125;
    for (int exponent = -126; exponent <= last; ++exponent)
        for (const Real32 significand : {1.0F, 1.25F, 0x1.6A09E6p0F, 0x1.FFFFFEp0F}) {
            const Real32 x = std::ldexp(significand, exponent);
            // From 1.11111111111101b·2^125 on the reciprocal may be taken for a subnormal number.
            if (!f.root && x >= 0x1.FFF4p125F && f.of(x) == 0) continue;
            EXPECT_TRUE(f.withinBound(x, f.of(x))) << std::hexfloat << x << " gives " << f.of(x);
        }
}

TEST_P(Seeds, TakeParticularOperandsAsTheInstructionsDo) {
    const Approximation& f = GetParam();
    struct Case {
        std::uint32_t operand, reciprocal, root;
    };
    for (const Case& c : {Case{0x00000000, 0x7F800000, 0x7F800000}, Case{0x80000000, 0xFF800000, 0xFF800000},
                          Case{0x00000001, 0x7F800000, 0x7F800000}, Case{0x007FFFFF, 0x7F800000, 0x7F800000},
                          Case{0x807FFFFF, 0xFF800000, 0xFF800000}, Case{0xFF7FFFFF, 0x80000000, 0xFFC00000},
                          Case{0x7F800000, 0x00000000, 0x00000000}, Case{0xFF800000, 0x80000000, 0xFFC00000},
                          Case{0x7FC12345, 0x7FC12345, 0x7FC12345}, Case{0xFFC12345, 0xFFC12345, 0xFFC12345},
                          Case{0x7F812345, 0x7FC12345, 0x7FC12345}}) {
        F32x1 result;
        EXPECT_EQ(flagsRaised([&] { result = f.one(F32x1(opaque(bits32(c.operand)))); }), 0u) << std::hex << c.operand;
        EXPECT_EQ(asBits(result).raw, f.root ? c.root : c.reciprocal) << std::hex << c.operand;
    }
    EXPECT_EQ(asBits(f.of(-1.0F)) == 0xFFC00000, f.root);
    if (f.root) return;
    EXPECT_EQ(asBits(f.of(-1.5F)), asBits(f.of(1.5F)) | 0x80000000);
    for (const Real32 x : {0x1.002p126F, 0x1p127F, 0x1.FFFFFEp127F}) EXPECT_EQ(asBits(f.of(x)), 0u) << x;
}

TEST_P(Seeds, AreTheSameInFourLanesWithoutFlags) {
    const Approximation& f = GetParam();
    Random random(3);
    const std::vector<Real32>& special = specialValues<Real32>();
    const auto draw = [&](bool ordinary) {
        if (ordinary) return bits32(static_cast<std::uint32_t>(random.bits()) & 0x3FFFFFFF);
        return special[random.bits() % special.size()];
    };
    for (int round = 0; round < 4000; ++round) {
        alignas(16) Real32 x[4], y[4];
        for (Real32& lane : x) lane = draw(round % 3 == 0 || random.bits() % 3 == 0);
        EXPECT_EQ(flagsRaised([&] { f.four(F32x4::load(x)).store(y); }), 0u);
        for (int i = 0; i < 4; ++i) ASSERT_EQ(asBits(y[i]), asBits(f.of(x[i]))) << std::hexfloat << x[i];
    }
}

INSTANTIATE_TEST_SUITE_P(
    , Seeds,
    testing::Values(Approximation{"recip", recipSeed<1>, recipSeed<4>, false, 7},
                    Approximation{"rsqrt", rsqrtSeed<1>, rsqrtSeed<4>, true, 7},
                    Approximation{"table_recip", table_seeds::recip, table_seeds::recip<4>, false, 7},
                    Approximation{"table_rsqrt", table_seeds::rsqrt, table_seeds::rsqrt<4>, true, 7},
                    Approximation{"moved_recip", moved_seeds::recip<1>, moved_seeds::recip<4>, false, 1999},
                    Approximation{"moved_rsqrt", moved_seeds::rsqrt<1>, moved_seeds::rsqrt<4>, true, 1999}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(OfNormalOperands, SeedsAreTheSame) {
    for (std::uint32_t pattern = 0x00800000; pattern < 0x7E800000; pattern += 49999) {
        const Real32 x = bits32(pattern);
        ASSERT_EQ(asBits(rsqrtSeedOfNormal(F32x1(x))).raw, asBits(rsqrtSeed(F32x1(x))).raw) << x;
        ASSERT_EQ(asBits(recipSeedOfNormal(F32x1(x))).raw, asBits(recipSeed(F32x1(x))).raw) << x;
        const U64<2> low(std::uint64_t{pattern});
        ASSERT_EQ(static_cast<std::uint32_t>(rsqrtSeedLow(low)[1]), asBits(rsqrtSeed(F32x1(x))).raw) << x;
        ASSERT_EQ(static_cast<std::uint32_t>(recipSeedLow(low)[1]), asBits(recipSeed(F32x1(x))).raw) << x;
    }
}

// The interval that a moved seed lies in ends with the last numbers within the bound.
TEST(MovedSeeds, ReachBothEndsOfTheInterval) {
    using namespace moved_seeds;
    const std::uint32_t saltBefore = salt;
    for (std::uint32_t pattern = 0x3F000000; pattern < 0x40800000; pattern += 4999) {
        const Real32 x = bits32(pattern);
        for (const bool root : {false, true}) {
            const Approximation f{"", root ? rsqrt<1> : recip<1>, nullptr, root, 0};
            salt = lowestSeeds;
            const Real32 first = f.of(x);
            salt = highestSeeds;
            const Real32 last = f.of(x);
            EXPECT_TRUE(f.withinBound(x, first) && f.withinBound(x, last)) << x;
            EXPECT_FALSE(f.withinBound(x, std::nextafter(first, 0.0F))) << x;
            EXPECT_FALSE(f.withinBound(x, std::nextafter(last, 100.0F))) << x;
            salt = lowestSeeds + 17;
            EXPECT_TRUE(first <= f.of(x) && f.of(x) <= last) << x;
            salt = stepsAbove + 5;
            EXPECT_EQ(asBits(f.of(x)), asBits(first) + 5) << x;
            salt = ~shortSeeds;
            EXPECT_EQ(f.of(x), last) << x;
        }
    }
    salt = saltBefore;
}

}  // namespace
}  // namespace okt::test
