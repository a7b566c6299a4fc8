// x to the power of one scalar.
#include "tests/models/pow_model.h"

#include "families/pow_cases.h"
#include "oktvm.h"

namespace okt::test {
namespace {

TEST(Powx, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsPowx_32f_A24", model::Powx_32f, {ordinaryBase<Real32>, specialBase<Real32>},
                                {ordinaryExponent<Real32>, specialExponent<Real32>});
    expectModel<Real64, Real64>("oktsPowx_64f_A53", model::Powx_64f, {ordinaryBase<Real64>, specialBase<Real64>},
                                {ordinaryExponent<Real64>, specialExponent<Real64>});
}

TEST(Powx, AgreesWithTheModelAroundEveryThreshold) {
    agreesAtThresholds<Real32>(oktsPowx_32f_A24, model::Powx_32f);
    agreesAtThresholds<Real64>(oktsPowx_64f_A53, model::Powx_64f);
}

template <class T>
void agreesInRanges(Powx<T> f, Powx<T> model, std::initializer_list<std::pair<double, double>> ranges) {
    Random random(3);
    for (const auto& [low, high] : ranges) {
        for (int round = 0; round < 300; ++round) {
            const auto y = static_cast<T>(random.between(1, 60) * (random.below(2) ? 1 : -1));
            std::vector<T> x(1 + random.below(40)), actual(x.size()), expected(x.size());
            for (T& each : x) {
                each = static_cast<T>(
                    std::exp2((random.below(4) ? random.between(low, high) : 1.0) / static_cast<double>(y)));
                if (random.below(16) == 0) each = -each;
            }
            const auto len = static_cast<std::int32_t>(x.size());
            EXPECT_EQ(f(x.data(), y, actual.data(), len), model(x.data(), y, expected.data(), len));
            for (std::size_t i = 0; i < x.size(); ++i)
                EXPECT_TRUE(sameBits(actual[i], asBits(expected[i])))
                    << std::hexfloat << x[i] << " ^ " << y << " at " << i << " of " << len;
        }
    }
}

TEST(Powx, AgreesWithTheModelAtTheEndsOfTheResultsRange) {
    agreesInRanges<Real32>(oktsPowx_32f_A24, model::Powx_32f,
                           {{125.9, 126.1}, {-126.1, -125.9}, {126, 129}, {-151, -125}});
    agreesInRanges<Real64>(oktsPowx_64f_A53, model::Powx_64f,
                           {{961, 964}, {-965, -961}, {1020, 1026}, {-1023, -963}, {-1077, -1020}});
}

TEST(Powx, SpecialPowers) {
    expectSpecialPowers<Real32>(oktsPowx_32f_A24);
    expectSpecialPowers<Real64>(oktsPowx_64f_A53);
}

// The exponent 2.0 alone squares: the special powers are not consulted.
template <class T>
void squares(Powx<T> f, PatternOf<T> signallingNan, PatternOf<T> quietedNan) {
    const T inf = std::numeric_limits<T>::infinity(), max = std::numeric_limits<T>::max();
    for (std::int32_t position = 0; position < rowArrayLength; ++position) {
        const auto square = [&](T x) { return powerAmong(f, x, T(2), rowArrayLength, position); };
        for (const T x : {T(3), T(-8), T(0), T(-0.0), -inf, inf, max, T(0.1), std::numeric_limits<T>::min()}) {
            const auto result = square(x);
            EXPECT_TRUE(sameBits(result.value, asBits(static_cast<T>(x * x)))) << x;
            EXPECT_EQ(result.status, oktStatusOk);
        }
        const auto result = square(std::bit_cast<T>(signallingNan));
        EXPECT_TRUE(sameBits(result.value, quietedNan));
        EXPECT_EQ(result.status, oktStatusOk);
    }
    for (const std::size_t len : {1u, 8u, 11u}) {
        EXPECT_EQ(flagsOfPowers(f, std::bit_cast<T>(signallingNan), T(2), len), flagInvalid);
        EXPECT_EQ(flagsOfPowers(f, std::bit_cast<T>(quietedNan), T(2), len), 0u);
        EXPECT_EQ(flagsOfPowers(f, T(3), T(2), len), 0u);
        EXPECT_EQ(flagsOfPowers(f, max, T(2), len), flagOverflow | flagInexact);
    }
}

TEST(Powx, TheExponentTwoSquares) {
    squares<Real32>(oktsPowx_32f_A24, 0xFF812345, 0xFFC12345);
    squares<Real64>(oktsPowx_64f_A53, 0xFFF0123456789ABC, 0xFFF8123456789ABC);
    EXPECT_TRUE(sameBits(power(oktsPowx_32f_A24, 1e30f, 2).value, 0x7F800000));
}

TEST(Powx, OneExponentGivesWhatAnArrayOfItGives) {
    Random random(21);
    std::vector<Real64> x(37), y(37), expected(37), dst(37);
    std::vector<Real32> x32(37), y32(37), expected32(37), dst32(37);
    for (int round = 0; round < 1000; ++round) {
        const Real64 exponent = random.below(4) ? ordinaryExponent<Real64>(random) : specialExponent<Real64>(random);
        const Real32 exponent32 = random.below(4) ? ordinaryExponent<Real32>(random) : specialExponent<Real32>(random);
        for (std::size_t i = 0; i < 37; ++i) {
            storeBits(&x[i], asBits(random.below(8) ? ordinaryBase<Real64>(random) : specialBase<Real64>(random)));
            storeBits(&x32[i], asBits(random.below(8) ? ordinaryBase<Real32>(random) : specialBase<Real32>(random)));
            storeBits(&y[i], asBits(exponent));
            storeBits(&y32[i], asBits(exponent32));
        }
        if (exponent != 2) {
            EXPECT_EQ(oktsPowx_64f_A53(x.data(), exponent, dst.data(), 37),
                      oktsPow_64f_A53(x.data(), y.data(), expected.data(), 37));
            for (std::size_t i = 0; i < 37; ++i) EXPECT_TRUE(sameBits(dst[i], asBits(expected[i])));
        }
        if (exponent32 != 2) {
            EXPECT_EQ(oktsPowx_32f_A24(x32.data(), exponent32, dst32.data(), 37),
                      oktsPow_32f_A24(x32.data(), y32.data(), expected32.data(), 37));
            for (std::size_t i = 0; i < 37; ++i) EXPECT_TRUE(sameBits(dst32[i], asBits(expected32[i])));
        }
    }
}

}  // namespace
}  // namespace okt::test
