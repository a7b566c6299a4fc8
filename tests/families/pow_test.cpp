// x to the power y, two arrays.
#include "tests/models/pow_model.h"

#include "families/pow_cases.h"
#include "oktvm.h"

namespace okt::test {
namespace {

template <class T>
void expectModelOver(Pow<T> f, Pow<T> model, const std::vector<T>& x, const std::vector<T>& y) {
    std::vector<T> actual(x.size()), expected(x.size());
    const auto len = static_cast<std::int32_t>(x.size());
    EXPECT_EQ(f(x.data(), y.data(), actual.data(), len), model(x.data(), y.data(), expected.data(), len));
    for (std::size_t i = 0; i < x.size(); ++i)
        EXPECT_TRUE(sameBits(actual[i], asBits(expected[i])))
            << std::hexfloat << x[i] << " ^ " << y[i] << " at " << i << " of " << len;
}

TEST(Pow, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsPow_32f_A24", model::Pow_32f, {ordinaryBase<Real32>, specialBase<Real32>},
                                {ordinaryExponent<Real32>, specialExponent<Real32>});
    expectModel<Real64, Real64>("oktsPow_64f_A53", model::Pow_64f, {ordinaryBase<Real64>, specialBase<Real64>},
                                {ordinaryExponent<Real64>, specialExponent<Real64>});
}

TEST(Pow, AgreesWithTheModelAroundEveryThreshold) {
    agreesAtThresholds<Real32>(oktsPow_32f_A24, model::Pow_32f);
    agreesAtThresholds<Real64>(oktsPow_64f_A53, model::Pow_64f);
}

// Results spread over narrow ranges where bounds of the paths lie: y is made so that y log2 x falls there.
template <class T>
void agreesInRanges(Pow<T> f, Pow<T> model, std::initializer_list<std::pair<double, double>> ranges) {
    Random random(3);
    for (const auto& [low, high] : ranges) {
        for (int round = 0; round < 200; ++round) {
            std::vector<T> x(1 + random.below(40)), y(x.size());
            for (std::size_t i = 0; i < x.size(); ++i) {
                x[i] = static_cast<T>(std::exp2(random.between(-30, 30)));
                // Some neighbours are ordinary, some are bad.
                const double result = random.below(4) ? random.between(low, high) : random.between(-20, 20);
                y[i] = static_cast<T>(result / std::log2(static_cast<double>(x[i])));
                if (random.below(16) == 0) x[i] = -x[i];
            }
            expectModelOver(f, model, x, y);
        }
    }
}

TEST(Pow, AgreesWithTheModelAtTheEndsOfTheResultsRange) {
    agreesInRanges<Real32>(oktsPow_32f_A24, model::Pow_32f,
                           {{125.9, 126.1}, {-126.1, -125.9}, {126, 129}, {-151, -125}, {1021, 1023}, {-1023, -1021}});
    agreesInRanges<Real64>(
        oktsPow_64f_A53, model::Pow_64f,
        {{961, 964}, {-965, -961}, {1020, 1026}, {-1023, -963}, {-1077, -1020}, {2000, 5000}, {-5000, -2000}});
}

TEST(Pow, SpecialPowers) {
    expectSpecialPowers<Real32>(oktsPow_32f_A24);
    expectSpecialPowers<Real64>(oktsPow_64f_A53);
}

TEST(Pow, PlainPowers32) {
    expectRows<Real32>(oktsPow_32f_A24, 1.5f,
                       {
                           {asBits(-8.0f), asBits(3.0f), asBits(-512.0f)},
                           {asBits(-8.0f), asBits(2.0f), asBits(64.0f)},
                           {asBits(2.0f), asBits(1000.0f), 0x7F800000},
                           {asBits(2.0f), asBits(-1000.0f), 0x00000000},
                           {asBits(2.0f), asBits(-1100.0f), 0x00000000},
                           {asBits(-2.0f), asBits(1001.0f), 0xFF800000},
                           {asBits(-2.0f), asBits(1000.0f), 0x7F800000},
                           {asBits(-2.0f), asBits(-1001.0f), 0x80000000},
                           {asBits(-2.0f), asBits(-1101.0f), 0x80000000},
                           {asBits(-2.0f), asBits(-1100.0f), 0x00000000},
                           {asBits(2.0f), asBits(-149.0f), 0x00000001},
                           {asBits(-2.0f), asBits(-149.0f), 0x80000001},
                           {asBits(2.0f), asBits(127.0f), 0x7F000000},
                           {asBits(2.0f), asBits(-126.0f), 0x00800000},
                       });
}

TEST(Pow, PlainPowers64) {
    constexpr std::uint64_t inf = 0x7FF0000000000000, sign = 0x8000000000000000;
    expectRows<Real64>(oktsPow_64f_A53, 1.5,
                       {
                           {asBits(-8.0), asBits(3.0), asBits(-512.0)},
                           {asBits(-8.0), asBits(2.0), asBits(64.0)},
                           {asBits(2.0), asBits(1023.5), 0x7FE6A09E667F3BCD},
                           {asBits(-2.0), asBits(1023.0), asBits(-0x1p1023)},
                           {asBits(2.0), asBits(1024.0), inf},
                           {asBits(-2.0), asBits(1025.0), sign | inf},
                           {asBits(-2.0), asBits(1024.0), inf},
                           {asBits(2.0), asBits(5000.0), inf},
                           {asBits(-2.0), asBits(5001.0), sign | inf},
                           {asBits(0.5), asBits(-5000.0), inf},
                           {asBits(2.0), asBits(-1074.0), 1},
                           {asBits(-0.5), asBits(1073.0), sign | 2},
                           {asBits(2.0), asBits(-1022.0), 0x0010000000000000},
                           {asBits(2.0), asBits(-1080.0), 0},
                           {asBits(-2.0), asBits(-1081.0), sign},
                           {asBits(-2.0), asBits(-5001.0), sign},
                           {asBits(-2.0), asBits(-5000.0), 0},
                           {1, asBits(1.0), 1},
                           {0x000FFFFFFFFFFFFF, asBits(1.0), 0x000FFFFFFFFFFFFF},
                           {sign | 1, asBits(-1.0), sign | inf},
                           {asBits(0x1.85e091726b8p+285), asBits(-0x1.dfd81b1d3e59dp+1), 11},
                       });
}

// On Real32 the element routine ends in another exponential, so that the path shows in about one result of a hundred.
TEST(Pow, BlocksOfFourFailForThemselves32) {
    Random random(11);
    std::vector<Real32> x(16), y(16), clean(16), mixed(16);
    int different = 0;
    for (int round = 0; round < 500; ++round) {
        for (std::size_t i = 0; i < 16; ++i) {
            x[i] = static_cast<Real32>(random.between(1, 20));
            y[i] = static_cast<Real32>(random.between(-9, 9));
        }
        oktsPow_32f_A24(x.data(), y.data(), clean.data(), 16);
        for (std::size_t i = 0; i < 16; ++i)
            EXPECT_TRUE(sameBits(clean[i], asBits(power(oktsPow_32f_A24, x[i], y[i]).value)));
        const auto bad = random.below(16);
        x[bad] = -1;
        oktsPow_32f_A24(x.data(), y.data(), mixed.data(), 16);
        for (std::size_t i = 0; i < 16; ++i) {
            if (i / 4 != bad / 4)
                EXPECT_TRUE(sameBits(mixed[i], asBits(clean[i])));
            else if (i != bad)
                different += asBits(mixed[i]) != asBits(clean[i]);
        }
        // Fifteen elements are one pass of eight and a tail, in which elements fail alone.
        oktsPow_32f_A24(x.data(), y.data(), mixed.data(), 15);
        for (std::size_t i = 8; i < 15; ++i) EXPECT_TRUE(i == bad || sameBits(mixed[i], asBits(clean[i])));
        oktsPow_32f_A24(x.data() + 8, y.data() + 8, mixed.data(), 7);
        for (std::size_t i = 8; i < 15; ++i) EXPECT_TRUE(i == bad || sameBits(mixed[i - 8], asBits(clean[i])));
    }
    EXPECT_GT(different, 2);
    EXPECT_LT(different, 100);
}

// On Real64 the path shows for results next above 2^-964: the element routine has them in its careful tail.
TEST(Pow, APairLooksAtThePairBehindIt64) {
    Random random(12);
    int different = 0;
    for (int round = 0; round < 40000; ++round) {
        const Real64 x = std::exp2(random.between(-3, 3)), y = random.between(-963.99, -963.01) / std::log2(x);
        const auto element = asBits(power(oktsPow_64f_A53, x, y).value);
        // Two, two and one: the last element is the tail.
        std::vector<Real64> bases{x, x, 1.5, 1.5, 1.5}, exponents{y, y, 0.75, 0.75, -1}, dst(5);
        oktsPow_64f_A53(bases.data(), exponents.data(), dst.data(), 5);
        const auto main = asBits(dst[0]);
        EXPECT_TRUE(sameBits(dst[1], main));
        if (element == main) continue;
        ++different;
        for (const std::size_t bad : {1u, 2u, 3u}) {  // its own partner, or one of the pair behind it
            auto spoilt = bases;
            spoilt[bad] = -1;
            oktsPow_64f_A53(spoilt.data(), exponents.data(), dst.data(), 5);
            EXPECT_TRUE(sameBits(dst[0], element)) << bad;
        }
        // Behind the last pair there is none, whatever the tail holds.
        std::swap(bases[0], bases[2]), std::swap(bases[1], bases[3]);
        std::swap(exponents[0], exponents[2]), std::swap(exponents[1], exponents[3]);
        bases[0] = -1;
        bases[4] = -1;
        oktsPow_64f_A53(bases.data(), exponents.data(), dst.data(), 5);
        EXPECT_TRUE(sameBits(dst[2], main));
        EXPECT_TRUE(sameBits(dst[3], main));
        // The next pass counts as well.
        const std::vector<Real64> long1{1.5, 1.5, x, x, 1.5, -1, 1.5, 1.5}, long2{1, 1, y, y, 1, 1, 1, 1};
        std::vector<Real64> longDst(8);
        oktsPow_64f_A53(long1.data(), long2.data(), longDst.data(), 8);
        EXPECT_TRUE(sameBits(longDst[2], element));
        oktsPow_64f_A53(long1.data(), long2.data(), longDst.data(), 7);
        EXPECT_TRUE(sameBits(longDst[2], main));
    }
    EXPECT_GT(different, 5);
}

TEST(Pow, Flags32) {
    const auto flags = [](Real32 x, Real32 y) {
        const auto alone = flagsOfPowers(oktsPow_32f_A24, x, y, 1);
        EXPECT_EQ(flagsOfPowers(oktsPow_32f_A24, x, y, 8), alone);
        return alone;
    };
    EXPECT_EQ(flags(2, 1000), flagOverflow | flagInexact);
    EXPECT_EQ(flags(2, 2000), flagOverflow | flagInexact);
    EXPECT_EQ(flags(2, -1000), flagUnderflow | flagInexact);
    EXPECT_EQ(flags(2, -2000) & ~flagInexact, 0u);  // a zero that is converted
    EXPECT_EQ(flags(2, -149) & ~flagInexact, 0u);   // exact
    EXPECT_EQ(flags(3, -90), flagUnderflow | flagInexact);
    EXPECT_EQ(flags(-2, 129) & ~flagInexact, flagOverflow);
    EXPECT_EQ(flags(3, 0.5f), flagInexact);
}

TEST(Pow, Flags64) {
    const auto flags = [](Real64 x, Real64 y) {
        const auto alone = flagsOfPowers(oktsPow_64f_A53, x, y, 1);
        EXPECT_EQ(flagsOfPowers(oktsPow_64f_A53, x, y, 8), alone);
        return alone;
    };
    for (const Real64 y : {1025.0, 1100.0, 3000.0, 1e10, 0x1p1000, 0x1p1020}) {
        EXPECT_EQ(flags(3, y), flagInexact) << y;
        EXPECT_EQ(flags(3, -y), flagInexact) << y;
        EXPECT_EQ(flags(0.3, y), flagInexact) << y;
        EXPECT_EQ(flags(-3, 1e6 + y), flagInexact) << y;
    }
    // The logarithm rounds also where no use is made of it.
    EXPECT_EQ(flags(0x1.a8p+355, 0x1.4p+81), flagInexact);
    EXPECT_EQ(flags(0x1.a8p+355, -0x1.4p+81), flagInexact);
    EXPECT_EQ(flags(2, 1024), flagOverflow | flagInexact);  // rounded there, where k is 1024
    EXPECT_EQ(flags(3, 0.5), flagInexact);
    EXPECT_EQ(flags(3, -660) & ~flagDenormal, flagUnderflow | flagInexact);  // 2^k is subnormal itself
}

}  // namespace
}  // namespace okt::test
