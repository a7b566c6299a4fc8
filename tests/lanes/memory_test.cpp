// Operations between lanes and memory: pairs side by side, constants, tables.
#include "lanes/constant.h"
#include "lanes/lanewise.h"

#include <numeric>

namespace okt::test {
namespace {

// --- Pairs side by side ---

template <class T>
class Interleaving : public testing::Test {
protected:
    // Distinct numbers, at an address without alignment.
    Interleaving() {
        for (int i = 0; i < 2 * mostLanes; ++i) storeBits(source() + i, asBits(number(i)));
    }
    static T number(int i) { return static_cast<T>(1000 + i); }
    T* source() { return reinterpret_cast<T*>(bytes_ + 1); }

private:
    unsigned char bytes_[2 * mostLanes * sizeof(T) + 1];
};
using Types = testing::Types<Real32, Real64>;
TYPED_TEST_SUITE(Interleaving, Types);

TYPED_TEST(Interleaving, LoadsAndStores) {
    using T = TypeParam;
    atEveryNumberOfLanes([&]<int N>(std::integral_constant<int, N>) {
        const auto [first, second] = loadInterleaved<N>(static_cast<const T*>(this->source()));
        for (int i = 0; i < N; ++i) {
            EXPECT_EQ(first[i], this->number(2 * i)) << N << ' ' << i;
            EXPECT_EQ(second[i], this->number(2 * i + 1)) << N << ' ' << i;
        }
        unsigned char bytes[(2 * N + 1) * sizeof(T) + 1];
        auto* stored = reinterpret_cast<T*>(bytes + 1);
        storeBits(stored + 2 * N, asBits(T{-1}));
        storeInterleaved(stored, first, second);
        for (int i = 0; i < 2 * N; ++i) EXPECT_EQ(loadElement(stored + i), this->number(i)) << N << ' ' << i;
        EXPECT_EQ(loadElement(stored + 2 * N), T{-1}) << N;
    });
}

TYPED_TEST(Interleaving, Registers) {
    using T = TypeParam;
    atEveryNumberOfLanes<16 / sizeof(T), registerLanes<T>>([&]<int N>(std::integral_constant<int, N>) {
        const auto a = Vec<T, N>::load(this->source()), b = Vec<T, N>::load(this->source() + N);
        const auto [even, odd] = deinterleaved(a, b);
        const auto [low, high] = interleaved(even, odd);
        for (int i = 0; i < N; ++i) {
            EXPECT_EQ(even[i], this->number(2 * i)) << N << ' ' << i;
            EXPECT_EQ(odd[i], this->number(2 * i + 1)) << N << ' ' << i;
            EXPECT_EQ(low[i], a[i]) << N << ' ' << i;
            EXPECT_EQ(high[i], b[i]) << N << ' ' << i;
        }
    });
}

using Interleaving32 = Interleaving<Real32>;
using Interleaving64 = Interleaving<Real64>;

TEST_F(Interleaving32, LoadsWidenedAndStoresNarrowed) {
    atEveryNumberOfLanes<2>([&]<int N>(std::integral_constant<int, N>) {
        const auto columns = loadInterleavedWidened<N>(source());
        for (int i = 0; i < N; ++i) {
            EXPECT_EQ(columns.first[i], number(2 * i)) << N << ' ' << i;
            EXPECT_EQ(columns.second[i], number(2 * i + 1)) << N << ' ' << i;
        }
    });
    expectLanewise<2>(
        [](auto a, auto b) {
            constexpr int lanes = decltype(a)::lanes;
            Real32 stored[2 * lanes];
            storeInterleavedNarrowed(stored, a, b);
            return loadInterleaved<lanes>(static_cast<const Real32*>(stored));
        },
        [](Real64 a, Real64 b) { return std::pair(static_cast<Real32>(a), static_cast<Real32>(b)); },
        usualOperands<Real64, Real64>());
}

TEST_F(Interleaving64, EachLaneTwice) {
    atEveryNumberOfLanes<2>([&]<int N>(std::integral_constant<int, N>) {
        const auto both = eachTwice(F64<N>::load(source()));
        for (int i = 0; i < 2 * N; ++i) EXPECT_EQ(both[i], number(i / 2)) << N << ' ' << i;
    });
}

// --- Constants ---

const Constant32 c32 = 1.5f;
const Constant64 c64 = 1.5;
const Pattern32 p32 = 0x89ABCDEF;
const Pattern64 p64 = 0x0123456789ABCDEF;
const AlternatingConstant<Real64> parts{1.5, 2.5};
const AlternatingConstant<std::uint64_t> patterns{5, 7};

TEST(Constants, StandInEveryLane) {
    atEveryNumberOfLanes([]<int N>(std::integral_constant<int, N>) {
        const F32<N> a = inMemory(c32);
        const F64<N> b = c64;
        const U32<N> u = p32;
        const U64<N> v = inMemory(p64);
        for (int i = 0; i < N; ++i) {
            EXPECT_EQ(a[i], 1.5f) << N;
            EXPECT_EQ(b[i], 1.5) << N;
            EXPECT_EQ(u[i], 0x89ABCDEFu) << N;
            EXPECT_EQ(v[i], 0x0123456789ABCDEFu) << N;
        }
    });
    atEveryNumberOfLanes<2>([]<int N>(std::integral_constant<int, N>) {
        const F64<N> a = parts;
        const U64<N> b = patterns;
        for (int i = 0; i < N; ++i) {
            EXPECT_EQ(a[i], i % 2 == 0 ? 1.5 : 2.5) << N;
            EXPECT_EQ(b[i], i % 2 == 0 ? 5u : 7u) << N;
        }
    });
}

TEST(Constants, RangesOfWordsHoldTheirEnds) {
    for (const auto& [first, end] :
         {std::pair(0x00800000u, 0x7F800000u), {0u, 1u}, {0x7FFFFFFEu, 0x80000002u}, {0x80000000u, 0xFFFFFFFFu}}) {
        const WordRange range(first, end);
        atEveryNumberOfLanes([&, first = first, end = end]<int N>(std::integral_constant<int, N>) {
            for (const std::uint32_t w : {first - 1, first, first + (end - first) / 2, end - 1, end, end + 1})
                for (int at = 0; at < N; ++at) {
                    std::uint32_t lane[N];
                    std::fill(lane, lane + N, first);
                    lane[at] = w;
                    EXPECT_EQ(range.holdsAll(U32<N>::load(lane)), w - first < end - first) << N << std::hex << ' ' << w;
                }
        });
    }
}

// --- Tables ---

template <class T>
struct alignas(64) Table {
    T element[1024];
    Table() { std::iota(std::begin(element), std::end(element), T{1}); }
};
const Table<Real64> table64;
const Table<Real32> table32;

// Lanes of integers below `end`.
template <class T, int N>
struct Numbers {
    T lane[N];
    Numbers(Random& random, std::uint64_t end) {
        for (T& each : lane) each = static_cast<T>(random.below(end));
    }
    Vec<T, N> times(T factor) const {
        T scaled[N];
        for (int i = 0; i < N; ++i) scaled[i] = lane[i] * factor;
        return Vec<T, N>::load(scaled);
    }
};

// Calls check(random, N) for every number of lanes some times.
template <int least = 1, class Check>
void lookUp(const Check& check) {
    atEveryNumberOfLanes<least>([&](auto n) {
        Random random(7);
        for (int round = 0; round < 50; ++round) check(random, n);
    });
}

TEST(Lookups, ElementsAndPairsAtByteOffsetsInLanes) {
    lookUp([]<int N>(Random& random, std::integral_constant<int, N>) {
        const Numbers<std::uint64_t, N> n(random, 512);
        const F64<N> elements = gatherElementsAt(table64.element, n.times(8));
        const auto [first, second] = gatherPairsAt(table64.element, n.times(16));
        for (int i = 0; i < N; ++i) {
            ASSERT_EQ(elements[i], table64.element[n.lane[i]]) << N;
            ASSERT_EQ(first[i], table64.element[2 * n.lane[i]]) << N;
            ASSERT_EQ(second[i], table64.element[2 * n.lane[i] + 1]) << N;
        }
    });
}

TEST(Lookups, ElementsAndPairsAtByteOffsetsInMemory) {
    lookUp([]<int N>(Random& random, std::integral_constant<int, N>) {
        const Numbers<std::uint32_t, N> n(random, 512);
        const InMemory<std::uint32_t, N> twos(n.times(2)), eights(n.times(8));
        const F64<N> a = gatherElementsAt<1>(table64.element, eights), b = gatherElementsAt<4>(table64.element, twos);
        const auto pairs = gatherPairsAt<8>(table64.element, twos);
        for (int i = 0; i < N; ++i) {
            ASSERT_EQ(a[i], table64.element[n.lane[i]]) << N;
            ASSERT_EQ(b[i], table64.element[n.lane[i]]) << N;
            ASSERT_EQ(pairs.first[i], table64.element[2 * n.lane[i]]) << N;
            ASSERT_EQ(pairs.second[i], table64.element[2 * n.lane[i] + 1]) << N;
        }
    });
}

TEST(Lookups, InterleavedPairs) {
    lookUp([]<int N>(Random& random, std::integral_constant<int, N>) {
        const Numbers<std::uint64_t, N> n(random, 512);
        const F64<2 * N> pairs = gatherInterleavedPairsAt(table64.element, InMemory<std::uint64_t, N>(n.times(16)));
        for (int i = 0; i < 2 * N; ++i)
            ASSERT_EQ(pairs[i], table64.element[2 * n.lane[i / 2] + static_cast<std::size_t>(i % 2)]) << N;
    });
}

template <class T, class Table>
void lookUpRows(const Table& table) {
    lookUp([&]<int N>(Random& random, std::integral_constant<int, N>) {
        const Numbers<std::uint32_t, N> n(random, 256);
        const InMemory<std::uint32_t, N> offset(n.times(4 * sizeof(T)));
        const auto rows = gatherRowsAt(table.element, offset);
        const Vec<T, N> columns[] = {rows.c0, rows.c1, rows.c2, rows.c3};
        for (int i = 0; i < N; ++i)
            for (std::size_t column = 0; column < 4; ++column)
                ASSERT_EQ(columns[column][i], table.element[4 * n.lane[i] + column]) << N << ' ' << column;
    });
}
TEST(Lookups, RowsOfFour) {
    lookUpRows<Real64>(table64);
    lookUpRows<Real32>(table32);
}

template <class Offset>
void lookUpRowsPerLane() {
    lookUp([]<int N>(Random& random, std::integral_constant<int, N>) {
        const Numbers<Offset, N> n(random, 100);
        const InMemory<Offset, N> offset(n.times(80));  // ten elements a row
        const RowPerLane<N, Offset> row(table64.element, offset.lane);
        for (int column = 0; column < 10; ++column)
            for (int i = 0; i < N; ++i) {
                const auto at = [&](int c) { return table64.element[10 * n.lane[i] + static_cast<std::size_t>(c)]; };
                ASSERT_EQ(row[column][i], at(column)) << N << ' ' << column;
                if (column % 2 != 0) continue;
                ASSERT_EQ(row.pair(column).first[i], at(column)) << N << ' ' << column;
                ASSERT_EQ(row.pair(column).second[i], at(column + 1)) << N << ' ' << column;
            }
    });
}
TEST(Lookups, RowsOfAnyLength) {
    lookUpRowsPerLane<std::uint32_t>();
    lookUpRowsPerLane<std::uint64_t>();
}

// The bits above are of no account.
TEST(Lookups, ByLowBits) {
    lookUp([]<int N>(Random& random, std::integral_constant<int, N>) {
        const Numbers<std::uint64_t, N> n(random, ~std::uint64_t{0});
        const Numbers<std::uint32_t, N> m(random, ~std::uint32_t{0});
        const InMemory<std::uint64_t, N> longs(n.times(1));
        const InMemory<std::uint32_t, N> words(m.times(1));
        const F64<N> elements = gatherElementsByLowBits<10>(table64.element, longs);
        const auto pairs = gatherPairsByLowBits<6>(table64.element, longs);
        const auto pairs32 = gatherPairsByLowBits<7>(table32.element, words);
        for (int i = 0; i < N; ++i) {
            ASSERT_EQ(elements[i], table64.element[n.lane[i] & 1023]) << N;
            ASSERT_EQ(pairs.first[i], table64.element[2 * (n.lane[i] & 63)]) << N;
            ASSERT_EQ(pairs.second[i], table64.element[2 * (n.lane[i] & 63) + 1]) << N;
            ASSERT_EQ(pairs32.first[i], table32.element[2 * (m.lane[i] & 127)]) << N;
            ASSERT_EQ(pairs32.second[i], table32.element[2 * (m.lane[i] & 127) + 1]) << N;
        }
    });
}

// A row for every two digits: the factors of d0 and d1 stand at row d0 + 4 d1.
TEST(Lookups, ByDigitPairs) {
    Table<Real64> factors;
    for (std::size_t d0 = 0; d0 < 3; ++d0)
        for (std::size_t d1 = 0; d1 < 3; ++d1) {
            factors.element[2 * (d0 + 4 * d1)] = 100 + static_cast<Real64>(d0);
            factors.element[2 * (d0 + 4 * d1) + 1] = 100 + static_cast<Real64>(d1);
        }
    const auto check = [&]<int N>(Random& random, std::integral_constant<int, N>) {
        std::uint32_t lane[N], digit[N];
        for (int i = 0; i < N; ++i) {
            digit[i] = static_cast<std::uint32_t>(random.below(3));
            lane[i] = (static_cast<std::uint32_t>(random.bits()) & ~(3u << 20)) | digit[i] << 20;
        }
        const F64<N> factor = gatherElementsByDigitPairs<20>(factors.element, U32<N>::load(lane));
        for (int i = 0; i < N; ++i) ASSERT_EQ(factor[i], 100 + digit[i]) << N;
    };
    Random random(9);
    check(random, std::integral_constant<int, 1>{});
    lookUp<4>(check);
}

TEST(Lookups, AtListedPlacesAndBack) {
    lookUp<2>([]<int N>(Random& random, std::integral_constant<int, N>) {
        std::uint8_t place[N];
        for (int i = 0; i < N; ++i)
            place[i] = static_cast<std::uint8_t>(255 - 7 * i - static_cast<int>(random.below(7)));
        const F64<N> x = gatherElementsAtPlaces<N>(table64.element, place);
        std::vector<Real64> to(256, -1.0), expected(256, -1.0);
        scatterElementsToPlaces(to.data(), place, x);
        for (int i = 0; i < N; ++i) {
            ASSERT_EQ(x[i], table64.element[place[i]]) << N;
            expected[place[i]] = x[i];
        }
        ASSERT_EQ(to, expected) << N;
    });
}

// The lanes go to memory and come back.
TEST(Lookups, LanesInMemory) {
    lookUp([]<int N>(Random& random, std::integral_constant<int, N>) {
        const Numbers<std::uint32_t, N> n(random, ~std::uint32_t{0});
        InMemory<std::uint32_t, N> m;
        m.put(n.times(1));
        const U32<N> back = m;
        for (int i = 0; i < N; ++i) {
            ASSERT_EQ(m.lane[i], n.lane[i]) << N;
            ASSERT_EQ(back[i], n.lane[i]) << N;
        }
    });
}

}  // namespace
}  // namespace okt::test
