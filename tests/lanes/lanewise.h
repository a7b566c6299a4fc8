// Every operation on lanes at every number of lanes against a plain definition of it for one element: the bits of each
// lane, and the flags raised, which are those of all its lanes together.
//
// The numbers of lanes reach from one to twice what the widest register of the build holds, so that each kind of lanes
// is met: single ones, every register, pairs of halves. A further width of registers needs no further text.
#pragma once

#include "lanes/double_double.h"
#include "lanes/lanes.h"
#include "lanes/lookup.h"
#include "lanes/operands.h"
#include "support/control_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

namespace okt::test {

inline constexpr int mostLanes = std::max(16, 2 * registerLanes<Real32>);

// Calls check(std::integral_constant<int, N>) for every number of lanes from `least` on.
template <int least = 1, int most = mostLanes, class Check>
void atEveryNumberOfLanes(const Check& check) {
    check(std::integral_constant<int, least>{});
    if constexpr (least < most) atEveryNumberOfLanes<2 * least, most>(check);
}

// --- Results as patterns: a row for each vector, in it a word for each lane ---

using Word = std::uint64_t;
using Rows = std::array<std::array<Word, 2 * mostLanes>, 4>;

template <class T>
Word wordOf(T x) {
    if constexpr (std::is_floating_point_v<T>)
        return asBits(x);
    else
        return x;
}

template <class T, int N>
void flatten(Vec<T, N> v, Rows& to, int row = 0) {
    T lane[N];
    v.store(lane);
    for (int i = 0; i < N; ++i) to[static_cast<std::size_t>(row)][static_cast<std::size_t>(i)] = wordOf(lane[i]);
}
template <int Bits, int N>
void flatten(Mask<Bits, N> m, Rows& to, int row = 0) {
    const auto bits = static_cast<unsigned>(laneBits(m));
    for (int i = 0; i < N; ++i) to[static_cast<std::size_t>(row)][static_cast<std::size_t>(i)] = bits >> i & 1;
}
template <class V>
void flatten(Pair<V> p, Rows& to) {
    flatten(p.first, to, 0);
    flatten(p.second, to, 1);
}
template <class V>
void flatten(Columns<V> c, Rows& to) {
    flatten(c.c0, to, 0);
    flatten(c.c1, to, 1);
    flatten(c.c2, to, 2);
    flatten(c.c3, to, 3);
}
template <int N>
void flatten(DoubleDouble<N> d, Rows& to) {
    flatten(d.hi, to, 0);
    flatten(d.lo, to, 1);
}

using Element = std::array<Word, 4>;  // a word of each row
template <class T>
Element elementOf(T x) {
    return {wordOf(x)};
}
template <class T>
Element elementOf(std::pair<T, T> x) {
    return {wordOf(x.first), wordOf(x.second)};
}

// --- The comparison ---

// What may stand for a NaN that the definition gives.
enum class NaNs {
    exact,
    ofOperands,  // any operand that is one, quieted: a compiler may swap the operands of sums and products
    any,
};

namespace lanewise {

// Operations and operands without their types, so that what compares them is compiled once.
struct Comparison {
    using Run = void (*)(const void* op, Rows& to, const void* const* from);
    using Define = void (*)(const void* definition, Element& to, const void* const* from);
    struct AtLanes {
        int lanes;
        Run run;
    };
    const void* op;
    const void* definition;
    std::vector<AtLanes> counts;
    Define define;
    NaNs nans;
    bool real;  // an operand or a result is a real number
    const ErasedOperands& operands;

    void perform() const;

private:
    void underControl(std::uint32_t control) const;
    bool acceptable(Word actual, Word expected, std::size_t i) const;
};

inline bool Comparison::acceptable(Word actual, Word expected, std::size_t i) const {
    if (actual == expected) return true;
    // Of operands and results of one size alone.
    const std::size_t bytes = operands.bytes(0);
    const auto isNaNWord = [bytes](Word word) {
        return bytes == 8 ? isNaN(bits64(word)) : isNaN(bits32(static_cast<std::uint32_t>(word)));
    };
    if (nans == NaNs::exact || !isNaNWord(actual) || !isNaNWord(expected)) return false;
    const Word quiet = bytes == 8 ? Format<Real64>::quiet : Word{Format<Real32>::quiet};
    bool ofOperand = nans == NaNs::any;
    for (std::size_t k = 0; k < operands.count(); ++k)
        ofOperand |= isNaNWord(operands.word(k, i)) && actual == (operands.word(k, i) | quiet);
    return ofOperand;
}

inline void Comparison::underControl(std::uint32_t control) const {
    const std::size_t size = operands.size();
    std::vector<Element> expected(size);
    std::vector<std::uint32_t> flags(size);
    for (std::size_t i = 0; i < size; ++i) {
        const auto from = operands.at(i);
        flags[i] = flagsRaised([&] { define(definition, expected[i], from.data()); }, control);
    }
    for (const auto& [lanes, run] : counts)
        for (std::size_t i = 0; i < size; i += static_cast<std::size_t>(lanes)) {
            Rows actual{};
            const auto from = operands.at(i);
            const std::uint32_t raised = flagsRaised([&, run = run] { run(op, actual, from.data()); }, control);
            std::uint32_t expectedFlags = 0;
            for (std::size_t lane = 0; lane < static_cast<std::size_t>(lanes); ++lane) {
                expectedFlags |= flags[i + lane];
                for (std::size_t row = 0; row < actual.size(); ++row)
                    ASSERT_TRUE(acceptable(actual[row][lane], expected[i + lane][row], i + lane))
                        << "lane " << lane << " of " << lanes << ", result " << row << " of " << operands.text(i + lane)
                        << "is " << std::hex << actual[row][lane] << ", not " << expected[i + lane][row]
                        << ", under MXCSR " << control;
            }
            ASSERT_EQ(raised, expectedFlags)
                << lanes << " lanes from " << operands.text(i) << std::hex << "under MXCSR " << control;
        }
}

inline void Comparison::perform() const {
    for (const auto& [lanes, run] : counts) ASSERT_EQ(operands.size() % static_cast<std::size_t>(lanes), 0u);
    if (!real) return underControl(defaultMxcsr);
    underEveryMxcsr([&] {
        if (!testing::Test::HasFailure()) underControl(controlState().mxcsr);
    });
}

template <int N, class Op, class... T>
void run(const void* op, Rows& to, const void* const* from) {
    [&]<std::size_t... I>(std::index_sequence<I...>) {
        flatten((*static_cast<const Op*>(op))(Vec<T, N>::load(static_cast<const T*>(from[I]))...), to);
    }
    (std::index_sequence_for<T...>{});
}
template <int N, class Op, class... T>
void runFromMemory(const void* op, Rows& to, const void* const* from) {
    [&]<std::size_t... I>(std::index_sequence<I...>) {
        flatten(static_cast<const Op*>(op)->template operator()<N>(static_cast<const T*>(from[I])...), to);
    }
    (std::index_sequence_for<T...>{});
}
template <class Definition, class... T>
void define(const void* definition, Element& to, const void* const* from) {
    [&]<std::size_t... I>(std::index_sequence<I...>) {
        to = elementOf((*static_cast<const Definition*>(definition))(*static_cast<const T*>(from[I])...));
    }
    (std::index_sequence_for<T...>{});
}

template <int least, int most, class Run, class Definition, class... T>
void compare(const void* op, const Run& runAt, const Definition& definition, const Operands<T...>& operands,
             NaNs nans) {
    std::vector<Comparison::AtLanes> counts;
    atEveryNumberOfLanes<least, most>([&]<int N>(std::integral_constant<int, N> n) {
        counts.push_back({N, runAt(n)});
    });
    using Result = std::invoke_result_t<Definition, T...>;
    constexpr bool real = !std::is_integral_v<Result> || (std::is_floating_point_v<T> || ...);
    Comparison{op, &definition, std::move(counts), define<Definition, T...>, nans, real, operands}.perform();
}

}  // namespace lanewise

// Compares at every number of lanes from `least` to `most`, under every control state of the caller where an operand or
// the result is a real number.
template <int least = 1, int most = mostLanes, class Op, class Definition, class... T>
void expectLanewise(const Op& op, const Definition& definition, const Operands<T...>& operands,
                    NaNs nans = NaNs::exact) {
    const auto run = []<int N>(std::integral_constant<int, N>) { return &lanewise::run<N, Op, T...>; };
    lanewise::compare<least, most>(&op, run, definition, operands, nans);
}
// The same for an operation that takes its operands from memory: op.template operator()<N>(pointers...).
template <int least = 1, int most = mostLanes, class Op, class Definition, class... T>
void expectLanewiseFromMemory(const Op& op, const Definition& definition, const Operands<T...>& operands) {
    const auto run = []<int N>(std::integral_constant<int, N>) { return &lanewise::runFromMemory<N, Op, T...>; };
    lanewise::compare<least, most>(&op, run, definition, operands, NaNs::exact);
}

}  // namespace okt::test
