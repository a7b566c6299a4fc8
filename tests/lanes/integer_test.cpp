// Operations on lanes of integers.
#include "lanes/lanewise.h"

namespace okt::test {
namespace {

constexpr auto signedOf = [](std::uint32_t a) { return static_cast<std::int32_t>(a); };
constexpr auto highOf = [](std::uint64_t a) { return static_cast<std::uint32_t>(a >> 32); };
constexpr auto lowOf = [](std::uint64_t a) { return static_cast<std::uint32_t>(a); };

template <class T>
class IntegerLanes : public testing::Test {
protected:
    static const Operands<T>& one() {
        static const auto operands = usualOperands<T>();
        return operands;
    }
    static const Operands<T, T>& two() {
        static const auto operands = usualOperands<T, T>();
        return operands;
    }
};
using Types = testing::Types<std::uint32_t, std::uint64_t>;
TYPED_TEST_SUITE(IntegerLanes, Types);

TYPED_TEST(IntegerLanes, ArithmeticAndPatterns) {
    using T = TypeParam;
    const auto& two = this->two();
    expectLanewise([](auto a, auto b) { return a + b; }, [](T a, T b) { return a + b; }, two);
    expectLanewise([](auto a, auto b) { return a - b; }, [](T a, T b) { return a - b; }, two);
    expectLanewise([](auto a, auto b) { return a & b; }, [](T a, T b) { return a & b; }, two);
    expectLanewise([](auto a, auto b) { return a | b; }, [](T a, T b) { return a | b; }, two);
    expectLanewise([](auto a, auto b) { return a ^ b; }, [](T a, T b) { return a ^ b; }, two);
    expectLanewise([](auto a) { return ~a; }, [](T a) { return static_cast<T>(~a); }, this->one());
}

TYPED_TEST(IntegerLanes, ShiftsByOneCount) {
    using T = TypeParam;
    for (int n = 0; n < static_cast<int>(8 * sizeof(T)); n += n < 4 ? 1 : 5) {
        expectLanewise([n](auto a) { return a << n; }, [n](T a) { return static_cast<T>(a << n); }, this->one());
        expectLanewise([n](auto a) { return a >> n; }, [n](T a) { return static_cast<T>(a >> n); }, this->one());
        if constexpr (sizeof(T) == 4)
            expectLanewise([n](auto a) { return shiftRightSigned(a, n); },
                           [n](T a) { return static_cast<T>(signedOf(a) >> n); }, this->one());
    }
}

TYPED_TEST(IntegerLanes, Signs) {
    using T = TypeParam;
    expectLanewise([](auto a) { return negativeLanes(a); }, [](T a) { return a >> (8 * sizeof(T) - 1) != 0; },
                   this->one());
}

TYPED_TEST(IntegerLanes, TheCompilerIsKeptFromValuesAndGivesThemBack) {
    using T = TypeParam;
    expectLanewise([](auto a) { return inStep(a); }, [](T a) { return a; }, this->one());
    expectLanewise([](auto a) { return decltype(a)(InMemory<T, decltype(a)::lanes>(a)); }, [](T a) { return a; },
                   this->one());
}

TYPED_TEST(IntegerLanes, AreLoadedStoredAndMadeOfElementsAndHalves) {
    using T = TypeParam;
    alignas(64) T lane[mostLanes], stored[mostLanes];
    for (int i = 0; i < mostLanes; ++i) lane[i] = static_cast<T>(0x9E3779B97F4A7C15 * static_cast<Word>(i + 1));
    atEveryNumberOfLanes([&]<int N>(std::integral_constant<int, N>) {
        const auto bytes = reinterpret_cast<unsigned char*>(stored);
        std::fill(bytes, bytes + sizeof stored, static_cast<unsigned char>(0x55));
        Vec<T, N>::loadAligned(lane).store(stored);
        const Vec<T, N> v = Vec<T, N>::load(lane);
        const Vec<T, N> alike(lane[3]);
        for (int i = 0; i < mostLanes; ++i)
            EXPECT_EQ(stored[i], i < N ? lane[i] : static_cast<T>(0x5555555555555555)) << N << ' ' << i;
        for (int i = 0; i < N; ++i) {
            EXPECT_EQ(v[i], lane[i]) << N << ' ' << i;
            EXPECT_EQ(alike[i], lane[3]) << N << ' ' << i;
        }
        if constexpr (N > 1 && (sizeof(T) == 8 || N != 4)) {
            using Half = Vec<T, N / 2>;
            const Vec<T, N> ofHalves(Half::load(lane), Half::load(lane + N / 2));
            for (int i = 0; i < N; ++i) EXPECT_EQ(ofHalves[i], lane[i]) << N << ' ' << i;
            for (int i = 0; i < N / 2; ++i) {
                EXPECT_EQ(v.lowHalf()[i], lane[i]) << N << ' ' << i;
                EXPECT_EQ(v.highHalf()[i], lane[i + N / 2]) << N << ' ' << i;
            }
        }
    });
}

// --- 32 bits ---

using U32Lanes = IntegerLanes<std::uint32_t>;

TEST_F(U32Lanes, Comparisons) {
    expectLanewise([](auto a, auto b) { return a == b; }, [](std::uint32_t a, std::uint32_t b) { return a == b; },
                   two());
    expectLanewise([](auto a, auto b) { return greaterSigned(a, b); },
                   [](std::uint32_t a, std::uint32_t b) { return signedOf(a) > signedOf(b); }, two());
}

TEST_F(U32Lanes, OutsideOfRangesThatMayWrapAround) {
    for (const auto& [first, last] : {std::pair(0u, 0u),
                                      {1u, 0x7FFFFFFFu},
                                      {0x3F800000u, 0x40000000u},
                                      {0x80000000u, 0xFFFFFFFFu},
                                      {0xFFFFFFFEu, 2u},
                                      {0x80000001u, 0x7FFFFFFFu}}) {
        const auto definition = [first = first, last = last](std::uint32_t a) {
            return first <= last ? a < first || a > last : a > last && a < first;
        };
        std::vector<std::uint32_t> values = particular<std::uint32_t>();
        for (const std::uint32_t bound : {first, last})
            for (const std::uint32_t step : {0xFFFFFFFFu, 0u, 1u}) values.push_back(bound + step);
        expectLanewise([first = first, last = last](auto a) { return outside(a, first, last); }, definition,
                       listed(values));
    }
}

TEST_F(U32Lanes, UpperHalves) {
    const auto upper = [](std::uint32_t a) { return static_cast<std::int16_t>(a >> 16); };
    expectLanewise([](auto a, auto b) { return maxHighHalves(a, b) & decltype(a)(0xFFFF0000); },
                   [&](std::uint32_t a, std::uint32_t b) {
                       return static_cast<std::uint32_t>(std::max(upper(a), upper(b))) << 16;
                   },
                   two());
    for (const std::uint16_t b : std::initializer_list<std::uint16_t>{0, 1, 2, 0x5555, 0x7FFF, 0x8000, 0xAAAB, 0xFFFF})
        expectLanewise([b](auto a) { return mulHighHalves(a, b); },
                       [b](std::uint32_t a) { return ((a >> 16) * std::uint32_t{b}) & 0xFFFF0000; }, one());
    const auto emptyLower = drawn<std::uint32_t>(
        500, [](Random& random) { return std::tuple(static_cast<std::uint32_t>(random.bits()) & 0xFFFF0000); });
    for (const std::uint16_t limit : std::initializer_list<std::uint16_t>{0, 1, 0x123, 0x7FFF})
        expectLanewise([limit](auto a) { return clampHighHalves(a, limit); },
                       [&, limit](std::uint32_t a) {
                           return static_cast<std::uint32_t>(std::clamp<int>(upper(a), 0, limit)) << 16;
                       },
                       emptyLower);
}

TEST_F(U32Lanes, ClampedDifference) {
    const auto below2To15 = drawn<std::uint32_t>(
        500, [](Random& random) { return std::tuple(static_cast<std::uint32_t>(random.below(0x8000))); });
    for (const auto& [from, most] : {std::pair(0, 0), {0, 0x7FFF}, {100, 25}, {0x7FFF, 1}, {0x1EF, 26}})
        expectLanewise([from = static_cast<std::uint16_t>(from),
                        most = static_cast<std::uint16_t>(most)](auto a) { return clampedDifference(a, from, most); },
                       [from = from, most = most](std::uint32_t a) {
                           return static_cast<std::uint32_t>(std::clamp(signedOf(a) - from, 0, most));
                       },
                       below2To15);
}

// --- 64 bits ---

using U64Lanes = IntegerLanes<std::uint64_t>;

TEST_F(U64Lanes, UpperAndLowerWords) {
    expectLanewise([](auto a, auto b) { return greaterSignedHigh(a, b); },
                   [](std::uint64_t a, std::uint64_t b) { return signedOf(highOf(a)) > signedOf(highOf(b)); }, two());
    expectLanewise([](auto a, auto b) { return mulLowWords(a, b); },
                   [](std::uint64_t a, std::uint64_t b) { return std::uint64_t{lowOf(a)} * lowOf(b); }, two());
    expectLanewise([](auto a) { return highWords(a); }, [](std::uint64_t a) { return a >> 32; }, one());
}

TEST_F(U64Lanes, ShiftsByCountsOfTheirOwn) {
    const auto counts = drawn<std::uint64_t, std::uint64_t>(
        1000, [](Random& random) { return std::tuple(random.bits(), random.below(64)); });
    expectLanewise([](auto a, auto b) { return shiftLeft(a, b); },
                   [](std::uint64_t a, std::uint64_t b) { return a << b; }, counts);
    expectLanewise([](auto a, auto b) { return shiftRight(a, b); },
                   [](std::uint64_t a, std::uint64_t b) { return a >> b; }, counts);
}

// The lower word of a 64-bit lane comes first.
TEST(WordsAndLongs, AreTheSameRegister) {
    atEveryNumberOfLanes<2, registerLanes<Real64>>([]<int N>(std::integral_constant<int, N>) {
        std::uint64_t longs[N];
        for (int i = 0; i < N; ++i) longs[i] = 0x9E3779B97F4A7C15 * static_cast<Word>(i + 1);
        const U32<2 * N> words = asWords(U64<N>::load(longs));
        for (int i = 0; i < N; ++i) {
            EXPECT_EQ(words[2 * i], lowOf(longs[i])) << N;
            EXPECT_EQ(words[2 * i + 1], highOf(longs[i])) << N;
            EXPECT_EQ(asLongs(words)[i], longs[i]) << N;
        }
    });
}

}  // namespace
}  // namespace okt::test
