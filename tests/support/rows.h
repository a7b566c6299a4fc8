// Tables of single elements: a row gives an element's pattern, the result's pattern and the status, and holds for the
// element alone and at every place of an array.
#pragma once

#include "support/element.h"

#include <initializer_list>
#include <limits>
#include <vector>

namespace okt::test {

template <class T>
using PatternOf = decltype(asBits(T{}));

template <class T>
struct Row {
    PatternOf<T> x, expected;
    OktStatus status = oktStatusOk;
};

inline constexpr std::int32_t rowArrayLength = 37;  // whole blocks of every size and a tail

template <class T>
void expectRows(OktStatus (*f)(const T*, T*, std::int32_t), std::type_identity_t<T> filler,
                std::initializer_list<Row<T>> rows) {
    for (const Row<T>& row : rows) {
        const T x = std::bit_cast<T>(row.x);
        const auto single = alone(f, x);
        EXPECT_TRUE(sameBits(single.value, row.expected)) << std::hex << row.x;
        EXPECT_EQ(single.status, row.status) << std::hex << row.x;
        for (std::int32_t position = 0; position < rowArrayLength; ++position) {
            const auto placed = among(f, x, filler, rowArrayLength, position);
            EXPECT_TRUE(sameBits(placed.value, row.expected)) << std::hex << row.x << " at " << std::dec << position;
            EXPECT_EQ(placed.status, row.status) << std::hex << row.x << " at " << std::dec << position;
        }
    }
}

// A NaN comes back quiet with its sign and payload, and does not warn.
template <class T>
void expectNaNsQuieted(OktStatus (*f)(const T*, T*, std::int32_t), std::type_identity_t<T> filler) {
    constexpr int fractionBits = sizeof(T) == 4 ? 23 : 52;
    constexpr PatternOf<T> one = 1, quiet = one << (fractionBits - 1), sign = one << (8 * sizeof(T) - 1);
    constexpr PatternOf<T> infinity = std::bit_cast<PatternOf<T>>(std::numeric_limits<T>::infinity());
    for (const PatternOf<T> payload : {quiet, one, quiet / 3, quiet | quiet / 5, 2 * quiet - 1})
        for (const PatternOf<T> signOrNone : {PatternOf<T>{0}, sign}) {
            const PatternOf<T> nan = signOrNone | infinity | payload;
            expectRows<T>(f, filler, {{nan, nan | quiet}});
        }
}

template <class T>
struct Row2 {
    PatternOf<T> x, y, expected;
    OktStatus status = oktStatusOk;
};

template <class T>
void expectRows(OktStatus (*f)(const T*, const T*, T*, std::int32_t), std::type_identity_t<T> filler,
                std::initializer_list<Row2<T>> rows) {
    for (const Row2<T>& row : rows) {
        const T x = std::bit_cast<T>(row.x), y = std::bit_cast<T>(row.y);
        const auto single = alone(f, x, y);
        EXPECT_TRUE(sameBits(single.value, row.expected)) << std::hex << row.x << ' ' << row.y;
        EXPECT_EQ(single.status, row.status) << std::hex << row.x << ' ' << row.y;
        for (std::int32_t position = 0; position < rowArrayLength; ++position) {
            std::vector<T> src1(rowArrayLength, filler), src2(rowArrayLength, filler), dst(rowArrayLength);
            const auto at = static_cast<std::size_t>(position);
            std::memcpy(&src1[at], &x, sizeof x);
            std::memcpy(&src2[at], &y, sizeof y);
            EXPECT_EQ(f(src1.data(), src2.data(), dst.data(), rowArrayLength), row.status)
                << std::hex << row.x << ' ' << row.y << " at " << std::dec << position;
            EXPECT_TRUE(sameBits(dst[at], row.expected))
                << std::hex << row.x << ' ' << row.y << " at " << std::dec << position;
        }
    }
}

// The status of a call over the given elements.
template <class T>
OktStatus statusOf(OktStatus (*f)(const T*, T*, std::int32_t), const std::vector<std::type_identity_t<T>>& src) {
    std::vector<T> dst(src.size());
    return f(src.data(), dst.data(), static_cast<std::int32_t>(src.size()));
}

}  // namespace okt::test
