// Rounding to integers, and the split into integer and fraction.
#include "tests/models/rounding_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <limits>

namespace okt::test {
namespace {

constexpr Filling<Real32> elements32{ordinaryElement<Real32, -4, 25>, specialElement<Real32>};
constexpr Filling<Real64> elements64{ordinaryElement<Real64, -4, 54>, specialElement<Real64>};

TEST(Rounding, AgreesWithTheModelsInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Real32, Real32>("oktsCeil_32f", model::Ceil_32f, elements32);
        expectModel<Real64, Real64>("oktsCeil_64f", model::Ceil_64f, elements64);
        expectModel<Real32, Real32>("oktsFloor_32f", model::Floor_32f, elements32);
        expectModel<Real64, Real64>("oktsFloor_64f", model::Floor_64f, elements64);
        expectModel<Real32, Real32>("oktsTrunc_32f", model::Trunc_32f, elements32);
        expectModel<Real64, Real64>("oktsTrunc_64f", model::Trunc_64f, elements64);
        expectModel<Real32, Real32>("oktsRound_32f", model::Round_32f, elements32);
        expectModel<Real64, Real64>("oktsRound_64f", model::Round_64f, elements64);
        expectModel<Real32, Real32>("oktsRint_32f", model::Rint_32f, elements32);
        expectModel<Real64, Real64>("oktsRint_64f", model::Rint_64f, elements64);
        expectModel<Real32, Real32>("oktsNearbyInt_32f", model::NearbyInt_32f, elements32);
        expectModel<Real64, Real64>("oktsNearbyInt_64f", model::NearbyInt_64f, elements64);
        expectModel<Real32, Real32>("oktsModf_32f", model::Modf_32f, elements32);
        expectModel<Real64, Real64>("oktsModf_64f", model::Modf_64f, elements64);
    });
}

TEST(Rounding, RaisesTheFlagsOfTheModels) {
    expectModelFlags(oktsCeil_32f, model::Ceil_32f);
    expectModelFlags(oktsCeil_64f, model::Ceil_64f);
    expectModelFlags(oktsFloor_32f, model::Floor_32f);
    expectModelFlags(oktsFloor_64f, model::Floor_64f);
    expectModelFlags(oktsTrunc_32f, model::Trunc_32f);
    expectModelFlags(oktsTrunc_64f, model::Trunc_64f);
    expectModelFlags(oktsRound_32f, model::Round_32f);
    expectModelFlags(oktsRound_64f, model::Round_64f);
    expectModelFlags(oktsRint_32f, model::Rint_32f);
    expectModelFlags(oktsRint_64f, model::Rint_64f);
    expectModelFlags(oktsModf_32f, model::Modf_32f);
    expectModelFlags(oktsModf_64f, model::Modf_64f);
}

// ---------------------------------------------------------------------------------------------------------------------
// A third reading, by integer arithmetic on significand and exponent.

enum class Rule { up, down, towardsZero, halfAway, halfEven };

Rule ofMode(std::uint32_t mode) {
    return mode == roundDown          ? Rule::down
           : mode == roundUp          ? Rule::up
           : mode == roundTowardsZero ? Rule::towardsZero
                                      : Rule::halfEven;
}

template <class T>
PatternOf<T> rounded(PatternOf<T> pattern, Rule rule) {
    constexpr int fraction = sizeof(T) == 8 ? 52 : 23, bias = sizeof(T) == 8 ? 1023 : 127;
    constexpr PatternOf<T> one{1};
    const PatternOf<T> sign = pattern & one << (8 * sizeof(T) - 1), magnitude = pattern ^ sign;
    const int exponent = static_cast<int>(magnitude >> fraction) - bias;
    if (exponent >= fraction) {
        const bool nan = exponent > bias && (magnitude & ((one << fraction) - 1)) != 0;
        return sizeof(T) == 8 && nan ? pattern | one << (fraction - 1) : pattern;
    }
    if (magnitude == 0) return pattern;
    // The significand in units of half its last integer place, the rest gathered in one bit below.
    const PatternOf<T> significand = (magnitude & ((one << fraction) - 1)) | one << fraction;
    PatternOf<T> integer = 0, half = 0, rest = 1;
    if (exponent >= 0) {
        const int behind = fraction - exponent;
        integer = significand >> behind;
        half = significand >> (behind - 1) & 1;
        rest = (significand & ((one << (behind - 1)) - 1)) != 0;
    } else if (exponent == -1) {
        half = 1;
        rest = (significand & ((one << fraction) - 1)) != 0;
    }
    bool away = false;
    switch (rule) {
        case Rule::up: away = !sign && (half || rest); break;
        case Rule::down: away = sign && (half || rest); break;
        case Rule::towardsZero: break;
        case Rule::halfAway: away = half; break;
        case Rule::halfEven: away = half && (rest || (integer & 1)); break;
    }
    integer += away;
    return sign | asBits(static_cast<T>(integer));  // exact: at most 2^fraction
}

template <class T>
using Rounding = OktStatus (*)(const T*, T*, std::int32_t);

template <class T>
void expectRounded(Rounding<T> f, Rule rule, const std::vector<T>& src, std::uint32_t mode) {
    std::vector<T> dst(src.size());
    OktStatus status;
    {
        const ScopedControlState scope({defaultMxcsr | mode, 0x037F});
        status = f(src.data(), dst.data(), static_cast<std::int32_t>(src.size()));
    }
    ASSERT_EQ(status, oktStatusOk);
    for (std::size_t i = 0; i < src.size(); ++i) {
        const auto x = loadBits(&src[i]);
        if (loadBits(&dst[i]) == rounded<T>(x, rule)) continue;
        FAIL() << sameBits(dst[i], rounded<T>(x, rule)).message() << std::hex << " for " << x << " in mode " << mode;
    }
}

template <class T>
struct Functions {
    Rounding<T> ceil, floor, trunc, round, rint, nearbyInt;
};
constexpr Functions<Real32> functions32{oktsCeil_32f,  oktsFloor_32f, oktsTrunc_32f,
                                        oktsRound_32f, oktsRint_32f,  oktsNearbyInt_32f};
constexpr Functions<Real64> functions64{oktsCeil_64f,  oktsFloor_64f, oktsTrunc_64f,
                                        oktsRound_64f, oktsRint_64f,  oktsNearbyInt_64f};

template <class T>
void expectAllRounded(const Functions<T>& f, const std::vector<T>& src) {
    for (const std::uint32_t mode : {roundNearest, roundDown, roundUp, roundTowardsZero}) {
        expectRounded(f.ceil, Rule::up, src, mode);
        expectRounded(f.floor, Rule::down, src, mode);
        expectRounded(f.trunc, Rule::towardsZero, src, mode);
        expectRounded(f.round, Rule::halfAway, src, mode);
        expectRounded(f.rint, ofMode(mode), src, mode);
        expectRounded(f.nearbyInt, ofMode(mode), src, mode);
    }
}

// Every pattern of Real32 with OKT_TEST_STRIDE=1 (the nightly target); otherwise a spread of them.
TEST(Rounding, EveryReal32InEveryRoundingMode) {
    const char* text = std::getenv("OKT_TEST_STRIDE");
    const std::uint64_t stride = text == nullptr ? 19997 : std::strtoull(text, nullptr, 10);
    std::vector<Real32> src(4096);
    for (std::uint64_t pattern = 0; pattern < 0x100000000; pattern += stride * src.size()) {
        for (std::size_t i = 0; i < src.size(); ++i)
            storeBits(&src[i], static_cast<std::uint32_t>(pattern + i * stride));
        expectAllRounded(functions32, src);
        if (HasFatalFailure()) return;
    }
}

// Around every power of two and every half and whole number near it, both signs.
template <class T>
void expectAllRoundedNearThresholds(const Functions<T>& f) {
    constexpr int fraction = sizeof(T) == 8 ? 52 : 23;
    std::vector<T> src;
    for (int k = -3; k <= fraction + 2; ++k)
        for (const T factor : {T(1), T(1.25), T(1.5), T(1.75)}) {
            const auto center =
                asBits(factor * static_cast<T>(k < 0 ? T(1) / static_cast<T>(1u << -k) : T(std::uint64_t{1} << k)));
            for (int step = -3; step <= 3; ++step)
                for (const PatternOf<T> sign : {PatternOf<T>{0}, PatternOf<T>{1} << (8 * sizeof(T) - 1)})
                    src.push_back(std::bit_cast<T>((center + static_cast<PatternOf<T>>(step)) | sign));
        }
    for (const T special : specialValues<T>()) {
        src.emplace_back();
        std::memcpy(&src.back(), &special, sizeof special);
    }
    expectAllRounded(f, src);
    for (std::size_t i = 0; i < src.size(); ++i) {  // and alone
        std::vector<T> single(1);
        std::memcpy(&single[0], &src[i], sizeof(T));
        expectAllRounded(f, single);
    }
    Random random(41);
    std::vector<T> many(20000);
    for (T& x : many) x = ofMagnitude<T>(random, -2, fraction + 1);
    expectAllRounded(f, many);
}
TEST(Rounding, AroundEveryPowerOfTwo32) { expectAllRoundedNearThresholds(functions32); }
TEST(Rounding, AroundEveryPowerOfTwo64) { expectAllRoundedNearThresholds(functions64); }

TEST(Rounding, SpecialValues) {
    expectRows<Real32>(oktsCeil_32f, 1.25f,
                       {
                           {asBits(-0.5f), 0x80000000},
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x00000001, 0x3F800000},
                           {0x80000001, 0x80000000},
                           {asBits(4194304.5f), asBits(4194305.0f)},
                           {asBits(-4194304.5f), asBits(-4194304.0f)},
                       });
    expectRows<Real32>(oktsFloor_32f, 1.25f,
                       {
                           {0x80000001, 0xBF800000},
                           {asBits(0.5f), 0x00000000},
                           {0x80000000, 0x80000000},
                           {asBits(4194304.5f), asBits(4194304.0f)},
                           {asBits(-4194304.5f), asBits(-4194305.0f)},
                       });
    expectRows<Real64>(oktsCeil_64f, 1.25,
                       {
                           {asBits(1.5), asBits(2.0)},
                           {asBits(0x1p52 - 0.5), asBits(0x1p52)},
                           {asBits(-0.5), 0x8000000000000000},
                           {0x0000000000000001, asBits(1.0)},
                           {0x0000000100000000, asBits(1.0)},
                       });
    expectRows<Real64>(oktsFloor_64f, 1.25, {{0x8000000000000001, asBits(-1.0)}, {asBits(-1.5), asBits(-2.0)}});
    expectRows<Real32>(oktsRound_32f, 1.25f,
                       {
                           {asBits(0.5f), asBits(1.0f)},
                           {asBits(-0.5f), asBits(-1.0f)},
                           {asBits(2.5f), asBits(3.0f)},
                           {0x3EFFFFFF, 0x00000000},
                           {0xBEFFFFFF, 0x80000000},
                       });
    for (const auto rint : {oktsRint_32f, oktsNearbyInt_32f})
        expectRows<Real32>(rint, 1.25f,
                           {
                               {asBits(0.5f), 0x00000000},
                               {asBits(1.5f), asBits(2.0f)},
                               {asBits(2.5f), asBits(2.0f)},
                               {asBits(-0.5f), 0x80000000},
                           });
    const ScopedControlState scope({defaultMxcsr | roundUp, 0x037F});
    for (const auto rint : {oktsRint_32f, oktsNearbyInt_32f})
        expectRows<Real32>(rint, 1.25f,
                           {{asBits(0.5f), asBits(1.0f)}, {asBits(-0.5f), 0x80000000}, {0x00000001, asBits(1.0f)}});
}

TEST(Rounding, OnReal32NaNsComeThroughBitForBit) {
    for (const auto f : {oktsCeil_32f, oktsFloor_32f, oktsTrunc_32f, oktsRound_32f, oktsRint_32f, oktsNearbyInt_32f})
        expectRows<Real32>(f, 1.25f,
                           {
                               {0x7F800001, 0x7F800001},
                               {0xFFA12345, 0xFFA12345},
                               {0x7FC54321, 0x7FC54321},
                               {0x7F800000, 0x7F800000},
                               {0xFF800000, 0xFF800000},
                           });
    EXPECT_EQ(flagsAlone(oktsCeil_32f, bits32(0x7F800001)), 0u);
    EXPECT_EQ(flagsAlone(oktsTrunc_32f, bits32(0x7F800001)), 0u);
}

TEST(Rounding, OnReal64NaNsComeOutQuiet) {
    for (const auto f : {oktsCeil_64f, oktsFloor_64f, oktsTrunc_64f, oktsRound_64f, oktsRint_64f, oktsNearbyInt_64f}) {
        expectRows<Real64>(f, 1.25,
                           {
                               {0xFFF0000000000000, 0xFFF0000000000000},
                           });
        expectNaNsQuieted<Real64>(f, 1.25);
        EXPECT_EQ(flagsAlone(f, bits64(0x7FF0000000000001)) & flagInvalid, flagInvalid);
    }
}

TEST(Rounding, InexactIsRaisedByRintAlways) {
    for (const auto f : {oktsRint_64f, oktsNearbyInt_64f}) EXPECT_EQ(flagsAlone(f, 2.0), flagInexact);
    for (const auto f : {oktsRint_32f, oktsNearbyInt_32f}) EXPECT_EQ(flagsAlone(f, 2.0f), flagInexact);
    EXPECT_EQ(flagsAlone(oktsRint_64f, bits64(1)), flagInexact);
    EXPECT_EQ(flagsAlone(oktsCeil_32f, 1.5f), flagInexact);
    EXPECT_EQ(flagsAlone(oktsCeil_32f, 0.5f), 0u);
    EXPECT_EQ(flagsAlone(oktsFloor_32f, 4194304.5f), 0u);
    EXPECT_EQ(flagsAlone(oktsCeil_64f, 1.5), 0u);
    EXPECT_EQ(flagsAlone(oktsTrunc_32f, 1.5f), 0u);
    EXPECT_EQ(flagsAlone(oktsRound_64f, 1.5), 0u);
}

template <class T>
void expectSplit(OktStatus (*f)(const T*, T*, T*, std::int32_t), PatternOf<T> x, PatternOf<T> integer,
                 PatternOf<T> fraction) {
    for (const std::size_t len : {1u, 8u, 13u}) {
        std::vector<T> src(len, T(1.25)), first(len), second(len);
        for (std::size_t at = 0; at < len; ++at) {
            std::fill(src.begin(), src.end(), T(1.25));
            storeBits(&src[at], x);
            EXPECT_EQ(f(src.data(), first.data(), second.data(), static_cast<std::int32_t>(len)), oktStatusOk);
            EXPECT_TRUE(sameBits(first[at], integer)) << std::hex << x;
            EXPECT_TRUE(sameBits(second[at], fraction)) << std::hex << x;
        }
    }
}

TEST(Modf, SpecialValues) {
    expectSplit<Real32>(oktsModf_32f, asBits(-3.5f), asBits(-3.0f), asBits(-0.5f));
    expectSplit<Real32>(oktsModf_32f, asBits(-4.0f), asBits(-4.0f), 0x80000000);
    expectSplit<Real32>(oktsModf_32f, 0x7F800000, 0x7F800000, 0);
    expectSplit<Real32>(oktsModf_32f, 0xFF800000, 0xFF800000, 0x80000000);
    expectSplit<Real32>(oktsModf_32f, asBits(-0.25f), 0x80000000, asBits(-0.25f));
    expectSplit<Real32>(oktsModf_32f, 0x00000001, 0, 0x00000001);
    expectSplit<Real32>(oktsModf_32f, 0x80000000, 0x80000000, 0x80000000);
    expectSplit<Real32>(oktsModf_32f, 0x7F800001, 0x7FC00001, 0x7FC00001);
    expectSplit<Real32>(oktsModf_32f, 0xFFC54321, 0xFFC54321, 0xFFC54321);
    expectSplit<Real32>(oktsModf_32f, asBits(8388607.5f), asBits(8388607.0f), asBits(0.5f));
    expectSplit<Real32>(oktsModf_32f, asBits(8388608.0f), asBits(8388608.0f), 0);
    expectSplit<Real64>(oktsModf_64f, asBits(-3.5), asBits(-3.0), asBits(-0.5));
    expectSplit<Real64>(oktsModf_64f, 0xFFF0000000000000, 0xFFF0000000000000, 0x8000000000000000);
    expectSplit<Real64>(oktsModf_64f, 0x7FF0000000000001, 0x7FF8000000000001, 0x7FF8000000000001);
    expectSplit<Real64>(oktsModf_64f, 0x7FF0000100000000, 0x7FF8000100000000, 0x7FF8000100000000);
    expectSplit<Real64>(oktsModf_64f, asBits(0x1p52 - 0.5), asBits(0x1p52 - 1), asBits(0.5));
    expectSplit<Real64>(oktsModf_64f, asBits(0x1p20 + 0x1p-32), asBits(0x1p20), asBits(0x1p-32));
    expectSplit<Real64>(oktsModf_64f, asBits(-0x1p21 - 0x1p-31), asBits(-0x1p21), asBits(-0x1p-31));
}

// Destinations on the source and just above it, and on one another: as the ascending loop leaves them.
TEST(Modf, OverlapIsThatOfTheAscendingLoop) {
    constexpr std::size_t len = 37;
    for (const std::size_t first : {0u, 1u, 5u, 8u, 60u, 61u})
        for (const std::size_t second : {0u, 2u, 7u, 9u, 60u, 120u}) {
            std::vector<Real64> array(200), expected(200);
            for (std::size_t i = 0; i < 200; ++i) expected[i] = array[i] = 0.75 * static_cast<double>(i) - 40;
            for (std::size_t i = 0; i < len; ++i) {
                const Real64 x = expected[i];
                Real64 integer, fraction;
                model::Modf_64f(&x, &integer, &fraction, 1);
                expected[i + first] = integer;
                expected[i + second] = fraction;
            }
            oktsModf_64f(array.data(), array.data() + first, array.data() + second, len);
            EXPECT_EQ(array, expected) << first << ' ' << second;
        }
}

}  // namespace
}  // namespace okt::test
