// What the tests of both power families share: the table of special powers, inputs, and calls in both forms.
#pragma once

#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <cmath>
#include <limits>

namespace okt::test {

template <class T>
using Pow = OktStatus (*)(const T* src1, const T* src2, T* dst, std::int32_t len);
template <class T>
using Powx = OktStatus (*)(const T* src, T y, T* dst, std::int32_t len);

// x^y at `position`, all other elements being 1.5^0.75; or, in the scalar form, all others being 1.5^y.
template <class T>
ElementResult<T> powerAmong(Pow<T> f, T x, std::type_identity_t<T> y, std::int32_t len, std::int32_t position) {
    std::vector<T> src1(static_cast<std::size_t>(len), T(1.5)), src2(src1.size(), T(0.75)), dst(src1.size());
    storeBits(&src1[static_cast<std::size_t>(position)], asBits(x));
    storeBits(&src2[static_cast<std::size_t>(position)], asBits(y));
    const OktStatus status = f(src1.data(), src2.data(), dst.data(), len);
    return {dst[static_cast<std::size_t>(position)], status};
}
template <class T>
ElementResult<T> powerAmong(Powx<T> f, T x, std::type_identity_t<T> y, std::int32_t len, std::int32_t position) {
    std::vector<T> src(static_cast<std::size_t>(len), T(1.5)), dst(src.size());
    storeBits(&src[static_cast<std::size_t>(position)], asBits(x));
    const OktStatus status = f(src.data(), y, dst.data(), len);
    return {dst[static_cast<std::size_t>(position)], status};
}
template <class T, class F>
ElementResult<T> power(F f, T x, std::type_identity_t<T> y) {
    return powerAmong(f, x, y, 1, 0);
}

// The flags of len times the same power.
template <class T>
std::uint32_t flagsOfPowers(Pow<T> f, T x, std::type_identity_t<T> y, std::size_t len) {
    std::vector<T> dst(len), src1(len, x), src2(len, y);
    return flagsRaised([&] { f(src1.data(), src2.data(), dst.data(), static_cast<std::int32_t>(len)); });
}
template <class T>
std::uint32_t flagsOfPowers(Powx<T> f, T x, std::type_identity_t<T> y, std::size_t len) {
    std::vector<T> dst(len), src(len, x);
    return flagsRaised([&] { f(src.data(), y, dst.data(), static_cast<std::int32_t>(len)); });
}

// Every row of the table of special powers, in order, with both signs and several magnitudes where the row has them.
template <class T>
std::vector<Row2<T>> specialPowers() {
    using Word = PatternOf<T>;
    const T inf = std::numeric_limits<T>::infinity(), tiny = std::numeric_limits<T>::denorm_min(),
            max = std::numeric_limits<T>::max();
    const Word nan = sizeof(T) == 4 ? Word{0x7FC12345} : static_cast<Word>(0x7FF8123456789ABC),
               signalling = sizeof(T) == 4 ? Word{0xFF800001} : static_cast<Word>(0xFFF0000000000001),
               invalid = sizeof(T) == 4 ? Word{0xFFC00000} : static_cast<Word>(0xFFF8000000000000);
    std::vector<Row2<T>> rows;
    const auto row = [&](Word x, Word y, Word expected, OktStatus status = oktStatusOk) {
        rows.push_back({x, y, expected, status});
    };
    const auto b = [](auto value) { return asBits(static_cast<T>(value)); };
    // 1
    for (const Word zero : {b(0.0), b(-0.0)})
        for (const Word x : {nan, signalling, b(0.0), b(-0.0), b(inf), b(-inf), b(-3), b(-1), b(1)}) row(x, zero, b(1));
    if (sizeof(T) == 8) row(b(3), b(0.0), b(1));
    // 2
    row(b(-1), b(inf), b(1));
    row(b(-1), b(-inf), b(1));
    // 3
    for (const Word y : {nan, signalling, b(inf), b(-inf), b(5), b(-0.5), b(tiny), b(max)}) row(b(1), y, b(1));
    // 4
    for (const Word x : {nan, signalling})
        for (const Word y : {nan ^ b(-0.0), b(inf), b(-inf), b(1), b(-2.5), b(tiny)}) row(x, y, x);
    // 5
    for (const Word y : {nan, signalling})
        for (const Word x : {b(-1), b(0.0), b(-0.0), b(inf), b(-inf), b(2.5), b(-tiny)}) row(x, y, y);
    // 6
    for (const Word zero : {b(0.0), b(-0.0)}) row(zero, b(-inf), b(inf), oktStatusDomain);
    // 7, 8
    for (const Word x : {b(1.5), b(-1.5), b(inf), b(-inf), b(max), b(1) + 1, b(-1) + 1}) {
        row(x, b(inf), b(inf));
        row(x, b(-inf), b(0));
    }
    // 9, 10
    for (const Word x : {b(0.5), b(-0.5), b(tiny), b(-tiny), b(1) - 1, b(-1) - 1}) {
        row(x, b(inf), b(0));
        row(x, b(-inf), b(inf));
    }
    row(b(0.0), b(inf), b(0));
    row(b(-0.0), b(inf), b(0));
    // 11 to 14
    for (const T y : {T(1), T(3), T(1000001)}) {
        row(b(-inf), b(y), b(-inf));
        row(b(-inf), b(-y), b(-0.0));
    }
    for (const T y : {T(2), T(0.5), T(1.5), tiny, max, T(1e15)}) {
        row(b(-inf), b(y), b(inf));
        row(b(-inf), b(-y), b(0));
    }
    // 15
    for (const T x : {T(-8), T(-0.25), -tiny, -max})
        for (const T y : {T(1) / 3, T(-0.5), tiny, T(1000.5)}) row(b(x), b(y), invalid, oktStatusDomain);
    // 16 to 19
    for (const T y : {T(1), T(3), T(1000001)}) {
        row(b(-0.0), b(-y), b(-inf), oktStatusDomain);
        row(b(-0.0), b(y), b(-0.0));
    }
    for (const T y : {T(2), T(0.5), T(1.5), tiny, max}) {
        row(b(-0.0), b(-y), b(inf), oktStatusDomain);
        row(b(-0.0), b(y), b(0));
    }
    // 20 to 23
    for (const T y : {T(1), T(2), T(0.5), tiny, max}) {
        row(b(inf), b(y), b(inf));
        row(b(inf), b(-y), b(0));
        row(b(0.0), b(-y), b(inf), oktStatusDomain);
        row(b(0.0), b(y), b(0));
    }
    return rows;
}

template <class T, class F>
void expectSpecialPowers(F f) {
    for (const Row2<T>& row : specialPowers<T>()) {
        const T x = std::bit_cast<T>(row.x), y = std::bit_cast<T>(row.y);
        if (y == 2 && std::is_same_v<F, Powx<T>>) continue;  // squares have a way of their own there
        const auto single = power(f, x, y);
        EXPECT_TRUE(sameBits(single.value, row.expected)) << std::hex << row.x << ' ' << row.y;
        EXPECT_EQ(single.status, row.status) << std::hex << row.x << ' ' << row.y;
        for (std::int32_t position = 0; position < rowArrayLength; ++position) {
            const auto placed = powerAmong(f, x, y, rowArrayLength, position);
            EXPECT_TRUE(sameBits(placed.value, row.expected))
                << std::hex << row.x << ' ' << row.y << " at " << position;
            EXPECT_EQ(placed.status, row.status) << std::hex << row.x << ' ' << row.y << " at " << position;
        }
        // Nothing is computed: the domain warning's flag is all there is, alone and in blocks. Two
        // exceptions: powers of 1 are computed as others are, on Real32 with the exponent zero as well;
        // and one Real32 exponent for all elements is widened ahead, which tells when it is subnormal.
        if (x == 1 && std::isfinite(y) && (sizeof(T) == 4 || y != 0)) continue;
        std::uint32_t flags = row.status == oktStatusDomain ? flagInvalid : 0;
        if (sizeof(T) == 4 && std::is_same_v<F, Powx<T>> && std::fpclassify(y) == FP_SUBNORMAL) flags |= flagDenormal;
        EXPECT_EQ(flagsOfPowers(f, x, y, 1), flags) << std::hex << row.x << ' ' << row.y;
        EXPECT_EQ(flagsOfPowers(f, x, y, 11), flags) << std::hex << row.x << ' ' << row.y;
    }
}

// Ordinary operands have results in the main range nearly always; special ones are those outside of it and every class
// of values, and meet in results around the ends of the type's range.
template <class T>
T ordinaryBase(Random& random) {
    switch (random.below(4)) {
        case 0: return static_cast<T>(1 + random.between(-1, 1) * std::exp2(random.between(-50, -1)));
        case 1: return static_cast<T>(static_cast<double>(1 + random.below(100)));
        default: return static_cast<T>(std::exp2(random.between(-20, 20)));
    }
}
template <class T>
T ordinaryExponent(Random& random) {
    const double bound = sizeof(T) == 4 ? 6 : 48;
    if (random.below(8) == 0) return static_cast<T>(static_cast<double>(random.below(7)) - 3);
    return static_cast<T>(random.between(-bound, bound));
}
template <class T>
T specialBase(Random& random) {
    switch (random.below(7)) {
        case 0: return specialElement<T>(random);
        case 1: return ofMagnitude<T>(random, sizeof(T) == 4 ? -149 : -1074, sizeof(T) == 4 ? 127 : 1023);
        case 2: return static_cast<T>(random.between(-30, 30));
        case 3: return T(random.below(2) ? 2 : 0.5);
        case 4: return static_cast<T>(random.between(1.9, 2.1));
        case 5: return std::bit_cast<T>(static_cast<PatternOf<T>>(random.bits()));
        default: return static_cast<T>(static_cast<double>(random.below(41)) - 20);
    }
}
template <class T>
T specialExponent(Random& random) {
    const double low = sizeof(T) == 4 ? -152 : -1078, high = sizeof(T) == 4 ? 130 : 1026;
    switch (random.below(7)) {
        case 0: return specialElement<T>(random);
        case 1: return ofMagnitude<T>(random, sizeof(T) == 4 ? -149 : -1074, sizeof(T) == 4 ? 127 : 1023);
        case 2: return static_cast<T>(std::floor(random.between(low, high)));
        case 3: return static_cast<T>(random.between(low, high));
        case 4: return static_cast<T>(random.between(low, sizeof(T) == 4 ? -120 : -950));
        case 5: return std::bit_cast<T>(static_cast<PatternOf<T>>(random.bits()));
        default: return static_cast<T>(std::floor(random.between(-9, 9)));
    }
}

// Operands where the course of the routines changes, to be taken with their neighbours and both signs.
template <class T>
std::vector<T> baseThresholds() {
    if constexpr (sizeof(T) == 4)
        return {0x1p-149f, 0x1p-126f, bits32(0x7F7FFFFF), 1, 2, 0.5f, bits32(0x3F804000), bits32(0x3FFFC000), 0x1p24f};
    else
        return {0x1p-1074,
                0x1p-1022,
                bits64(0x7FEFFFFFFFFFFFFF),
                1,
                2,
                0.5,
                bits64(0x3FF0020000000000),
                bits64(0x3FF7FE0000000000),
                bits64(0x3FFFFE0000000000),
                0x1p53};
}
template <class T>
std::vector<T> exponentThresholds() {
    if constexpr (sizeof(T) == 4)
        return {0x1p-149f, 0x1p-126f,          bits32(0x7F7FFFFF), 1,   2,   3,   0.5f, 0x1p22f, 0x1p23f,
                0x1p24f,   bits32(0x4B7FFFFF), bits32(0x42FBFF1A), 126, 127, 128, 149,  150,     1022,
                0x1p30f};
    else
        return {0x1p-1074,
                0x1p-1022,
                bits64(0x7FEFFFFFFFFFFFFF),
                1,
                2,
                3,
                0.5,
                0x1p51,
                0x1p52,
                0x1p53,
                bits64(0x433FFFFFFFFFFFFF),
                962,
                963,
                963.5,
                964,
                1022,
                1023,
                1023.5,
                1023.996,
                1024,
                1074,
                1075,
                1076,
                2047,
                2048,
                4096,
                0x1p1012};
}
template <class T>
std::vector<T> withNeighbours(const std::vector<T>& values) {
    std::vector<T> all;
    for (const T value : values) {
        for (const T sign : {T(1), T(-1)}) {
            T near = std::nextafter(std::nextafter(value, T(0)), T(0));
            for (int step = 0; step < 5; ++step, near = std::nextafter(near, std::numeric_limits<T>::infinity()))
                all.push_back(sign * near);
        }
    }
    return all;
}

// The function, of either form, and its model at all pairs of thresholds and their neighbours, alone and among others.
template <class T, class F>
void agreesAtThresholds(F f, F model) {
    std::int32_t position = 0;
    for (const T x : withNeighbours(baseThresholds<T>())) {
        for (const T y : withNeighbours(exponentThresholds<T>())) {
            const auto single = power(f, x, y), expected = power(model, x, y);
            EXPECT_TRUE(sameBits(single.value, asBits(expected.value))) << std::hexfloat << x << ' ' << y;
            EXPECT_EQ(single.status, expected.status) << std::hexfloat << x << ' ' << y;
            const auto placed = powerAmong(f, x, y, 11, position), modelled = powerAmong(model, x, y, 11, position);
            EXPECT_TRUE(sameBits(placed.value, asBits(modelled.value))) << std::hexfloat << x << ' ' << y;
            EXPECT_EQ(placed.status, modelled.status) << std::hexfloat << x << ' ' << y;
            position = (position + 1) % 11;
        }
    }
}

}  // namespace okt::test
