// Operations on lanes of real numbers, and on masks.
#include "lanes/lanewise.h"
#include "lanes/opaque.h"
#include "lanes/ordered.h"

#include <cstring>

namespace okt::test {
namespace {

template <class T>
class RealLanes : public testing::Test {
protected:
    static const Operands<T>& one() {
        static const auto operands = usualOperands<T>();
        return operands;
    }
    static const Operands<T, T>& two() {
        static const auto operands = usualOperands<T, T>();
        return operands;
    }
    static const Operands<T, Unsigned<T>>& withPattern() {
        static const auto operands = usualOperands<T, Unsigned<T>>();
        return operands;
    }
};
using Types = testing::Types<Real32, Real64>;
TYPED_TEST_SUITE(RealLanes, Types);

TYPED_TEST(RealLanes, Arithmetic) {
    using T = TypeParam;
    const auto& two = this->two();
    expectLanewise([](auto a, auto b) { return a + b; }, [](T a, T b) { return a + b; }, two, NaNs::ofOperands);
    expectLanewise([](auto a, auto b) { return a - b; }, [](T a, T b) { return a - b; }, two);
    expectLanewise([](auto a, auto b) { return a * b; }, [](T a, T b) { return a * b; }, two, NaNs::ofOperands);
    expectLanewise([](auto a, auto b) { return a / b; }, [](T a, T b) { return a / b; }, two);
    // The instruction: a library's function may raise other flags.
    const auto root = [](T a) {
        if constexpr (sizeof(T) == 8)
            asm("sqrtsd %0, %0" : "+x"(a));
        else
            asm("sqrtss %0, %0" : "+x"(a));
        return a;
    };
    expectLanewise([](auto a) { return sqrt(a); }, root, this->one());
}

// The first of two NaNs comes through.
TYPED_TEST(RealLanes, OrderedArithmetic) {
    using T = TypeParam;
    const auto first = [](T a, T b, T result) {
        if (isNaN(a)) return asReal(asBits(a) | Format<T>::quiet);
        if (isNaN(b)) return asReal(asBits(b) | Format<T>::quiet);
        return result;
    };
    const auto& two = this->two();
    const auto sum = [&](T a, T b) { return first(a, b, opaque(a + b)); };
    const auto product = [&](T a, T b) { return first(a, b, opaque(a * b)); };
    expectLanewise([](auto a, auto b) { return addOrdered(a, b); }, sum, two);
    expectLanewise([](auto a, auto b) { return mulOrdered(a, b); }, product, two);
    // Of single values, too.
    expectLanewise<1, 1>([](auto a, auto b) { return Vec<T, 1>(addOrdered(a.raw, b.raw)); }, sum, two);
    expectLanewise<1, 1>([](auto a, auto b) { return Vec<T, 1>(mulOrdered(a.raw, b.raw)); }, product, two);
}

TYPED_TEST(RealLanes, Comparisons) {
    using T = TypeParam;
    const auto& two = this->two();
    expectLanewise([](auto a, auto b) { return a == b; }, [](T a, T b) { return a == b; }, two);
    expectLanewise([](auto a, auto b) { return a != b; }, [](T a, T b) { return a != b; }, two);
    expectLanewise([](auto a, auto b) { return a < b; }, [](T a, T b) { return a < b; }, two);
    expectLanewise([](auto a, auto b) { return a <= b; }, [](T a, T b) { return a <= b; }, two);
    expectLanewise([](auto a, auto b) { return a > b; }, [](T a, T b) { return a > b; }, two);
    expectLanewise([](auto a, auto b) { return a >= b; }, [](T a, T b) { return a >= b; }, two);
}

TYPED_TEST(RealLanes, Patterns) {
    using T = TypeParam;
    const auto& one = this->one();
    const auto& two = this->two();
    expectLanewise([](auto a) { return asBits(a); }, [](T a) { return asBits(a); }, one);
    expectLanewise([](auto a) { return asReal(a); }, [](Unsigned<T> a) { return asReal(a); },
                   usualOperands<Unsigned<T>>());
    expectLanewise([](auto a) { return signOf(a); }, [](T a) { return asReal(signBit(a)); }, one);
    expectLanewise([](auto a) { return abs(a); }, [](T a) { return magnitude(a); }, one);
    expectLanewise([](auto a) { return -a; }, [](T a) { return negated(a); }, one);
    expectLanewise([](auto a, auto b) { return a & b; }, [](T a, Unsigned<T> b) { return asReal(asBits(a) & b); },
                   this->withPattern());
    expectLanewise([](auto a, auto b) { return a | b; }, [](T a, T b) { return asReal(asBits(a) | asBits(b)); }, two);
    expectLanewise([](auto a, auto b) { return a ^ b; }, [](T a, T b) { return asReal(asBits(a) ^ asBits(b)); }, two);
}

TYPED_TEST(RealLanes, ChoiceByAMask) {
    using T = TypeParam;
    using Word = Unsigned<T>;
    const auto set = [](Word a) { return signBit(asReal(a)) != 0; };
    const auto& operands = this->withPattern();
    expectLanewise([](auto a, auto b) { return select(negativeLanes(b), a, asReal(b)); },
                   [&](T a, Word b) { return set(b) ? a : asReal(b); }, operands);
    expectLanewise([](auto a, auto b) { return select(negativeLanes(b), b, asBits(a)); },
                   [&](T a, Word b) { return set(b) ? b : asBits(a); }, operands);
    expectLanewise([](auto a, auto b) { return zeroUnless(negativeLanes(b), a); },
                   [&](T a, Word b) { return set(b) ? a : T{0}; }, operands);
    expectLanewise([](auto a, auto b) { return zeroIf(negativeLanes(b), a); },
                   [&](T a, Word b) { return set(b) ? T{0} : a; }, operands);
    expectLanewise([](auto a, auto b) { return zeroUnless(negativeLanes(b), asBits(a)); },
                   [&](T a, Word b) { return set(b) ? asBits(a) : Word{0}; }, operands);
}

TYPED_TEST(RealLanes, TheCompilerIsKeptFromValuesAndGivesThemBack) {
    using T = TypeParam;
    const auto same = [](T a) { return a; };
    expectLanewise([](auto a) { return withFlags(a); }, same, this->one());
    expectLanewise([](auto a) { return inStep(a); }, same, this->one());
    expectLanewise<1, 1>([](auto a) { return Vec<T, 1>(opaque(a.raw)); }, same, this->one());
}

// --- Loads, stores and single lanes ---

TYPED_TEST(RealLanes, AreLoadedAndStoredAtAnyAddress) {
    using T = TypeParam;
    alignas(64) unsigned char source[sizeof(T) * mostLanes + 1], destination[sizeof source];
    atEveryNumberOfLanes([&]<int N>(std::integral_constant<int, N>) {
        for (const std::size_t shift : {0u, 1u}) {
            Random random(N);
            for (unsigned char& byte : source) byte = static_cast<unsigned char>(random.bits());
            std::fill(std::begin(destination), std::end(destination), static_cast<unsigned char>(0x55));
            const auto v = Vec<T, N>::load(reinterpret_cast<const T*>(source + shift));
            v.store(reinterpret_cast<T*>(destination + shift));
            EXPECT_EQ(std::memcmp(source + shift, destination + shift, N * sizeof(T)), 0) << N;
            for (std::size_t i = 0; i < sizeof destination; ++i) {
                const bool within = i >= shift && i < shift + N * sizeof(T);
                EXPECT_EQ(destination[i], within ? source[i] : 0x55) << N << ' ' << i;
            }
            for (int i = 0; i < N; ++i)
                EXPECT_EQ(asBits(v[i]), loadBits(reinterpret_cast<const T*>(source + shift) + i)) << N << ' ' << i;
        }
        Vec<T, N>::loadAligned(reinterpret_cast<const T*>(source)).store(reinterpret_cast<T*>(destination));
        EXPECT_EQ(std::memcmp(source, destination, N * sizeof(T)), 0) << N;
    });
}

TYPED_TEST(RealLanes, AreMadeOfOneElementAndOfHalves) {
    using T = TypeParam;
    T lane[mostLanes];
    for (int i = 0; i < mostLanes; ++i) lane[i] = static_cast<T>(i + 1);
    atEveryNumberOfLanes([&]<int N>(std::integral_constant<int, N>) {
        const Vec<T, N> alike(lane[2]);
        for (int i = 0; i < N; ++i) EXPECT_EQ(alike[i], lane[2]) << N << ' ' << i;
        if constexpr (N > 1 && (sizeof(T) == 8 || N != 4)) {
            using Half = Vec<T, N / 2>;
            const Vec<T, N> v(Half::load(lane), Half::load(lane + N / 2));
            const Half low = v.lowHalf(), high = v.highHalf();
            for (int i = 0; i < N; ++i) EXPECT_EQ(v[i], lane[i]) << N << ' ' << i;
            for (int i = 0; i < N / 2; ++i) {
                EXPECT_EQ(low[i], lane[i]) << N << ' ' << i;
                EXPECT_EQ(high[i], lane[i + N / 2]) << N << ' ' << i;
            }
        }
    });
}

// --- Masks ---

template <int Bits>
struct MaskOf {
    static constexpr int bits = Bits;
    using Word = std::conditional_t<Bits == 64, std::uint64_t, std::uint32_t>;
    template <int N>
    static Mask<Bits, N> of(std::uint64_t set) {
        Word lane[N];
        for (int i = 0; i < N; ++i) lane[i] = (set >> i & 1) != 0 ? ~Word{0} : Word{0};
        return negativeLanes(Vec<Word, N>::load(lane));
    }
};
template <class M>
class Masks : public testing::Test {};
using MaskTypes = testing::Types<MaskOf<32>, MaskOf<64>>;
TYPED_TEST_SUITE(Masks, MaskTypes);

TYPED_TEST(Masks, TellTheirLanes) {
    atEveryNumberOfLanes([]<int N>(std::integral_constant<int, N>) {
        constexpr std::uint64_t full = N == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << N) - 1;
        Random random(N);
        for (int round = 0; round < 2000; ++round) {
            // Every set of up to eight lanes; of more, those with one or two lanes or all but one, and any.
            std::uint64_t set = N <= 8 ? static_cast<std::uint64_t>(round) : random.bits();
            if (N > 8 && round < N) set = std::uint64_t{1} << round;
            if (N > 8 && round >= N && round < 2 * N) set = ~(std::uint64_t{1} << (round - N));
            if (N > 8 && round == 2 * N) set = 0;
            set &= full;
            const auto m = TypeParam::template of<N>(set);
            ASSERT_EQ(static_cast<std::uint64_t>(static_cast<std::uint32_t>(laneBits(m))), set) << N;
            ASSERT_EQ(any(m), set != 0) << N << " lanes: " << set;
            ASSERT_EQ(all(m), set == full) << N << " lanes: " << set;
            const std::uint64_t other = random.bits() & full;
            const auto n = TypeParam::template of<N>(other);
            const auto bitsOf = [](auto mask) {
                return static_cast<std::uint64_t>(static_cast<std::uint32_t>(laneBits(mask)));
            };
            ASSERT_EQ(bitsOf(m & n), set & other) << N;
            ASSERT_EQ(bitsOf(m | n), set | other) << N;
            ASSERT_EQ(bitsOf(~m), ~set & full) << N;
            if constexpr (TypeParam::bits == 32) {
                for (int i = 0; i < N; ++i) ASSERT_EQ(maskBits(m)[i], (set >> i & 1) != 0 ? ~0U : 0U) << N << ' ' << i;
            }
        }
    });
}

TYPED_TEST(Masks, HaveHalves) {
    atEveryNumberOfLanes<2>([]<int N>(std::integral_constant<int, N>) {
        if constexpr (TypeParam::bits == 64 || N != 4 || !Register<F32<4>>) {
            Random random(N);
            for (int round = 0; round < 100; ++round) {
                const std::uint64_t set = random.bits();
                const auto m = TypeParam::template of<N>(set);
                constexpr std::uint64_t half = (std::uint64_t{1} << N / 2) - 1;
                ASSERT_EQ(static_cast<std::uint64_t>(laneBits(m.lowHalf())), set & half) << N;
                ASSERT_EQ(static_cast<std::uint64_t>(laneBits(m.highHalf())), set >> N / 2 & half) << N;
            }
        }
    });
}

}  // namespace
}  // namespace okt::test
