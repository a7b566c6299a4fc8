// Comparison of an export with its model, bit by bit and status by status.
//
// Arrays of every length from 1 to 40 and some long ones are filled with ordinary elements; then one special element is
// put into every group of eight, at each position in turn; then the two kinds are mixed at random. The number of
// elements compared in all is OKT_TEST_ELEMENTS (default 300000; the nightly run takes ten million and more).
#pragma once

#include "support/call.h"

#include <cstdlib>
#include <type_traits>

namespace okt::test {

inline std::size_t elementsToCompare() {
    const char* text = std::getenv("OKT_TEST_ELEMENTS");
    return text == nullptr ? 300000 : std::strtoull(text, nullptr, 10);
}

// What fills the arrays: one element of the source type each.
template <class T>
struct Filling {
    T (*ordinary)(Random&);
    T (*special)(Random&);
};

// Fillings that serve most functions: `low` and `high` are binary orders of magnitude.
template <class T, int low, int high>
T ordinaryElement(Random& random) {
    return ofMagnitude<T>(random, low, high);
}
template <class T>
T specialElement(Random& random) {
    return specialValues<T>()[random.below(specialValues<T>().size())];
}

namespace model_check {

template <class T>
void fill(T* array, std::int32_t len, int round, Random& random, const Filling<T>& filling) {
    const auto position = static_cast<std::int32_t>(random.below(8));
    for (std::int32_t i = 0; i < len; ++i) {
        bool special = false;
        if (round % 3 == 1) special = i % 8 == position;
        if (round % 3 == 2) special = random.below(4) == 0;
        const T value = special ? filling.special(random) : filling.ordinary(random);
        std::memcpy(array + i, &value, sizeof(T));
    }
}

template <class T>
Bytes bytesOf(const T* data, std::int32_t len) {
    Bytes bytes(static_cast<std::size_t>(len) * sizeof(T));
    std::memcpy(bytes.data(), data, bytes.size());
    return bytes;
}

// Runs `one(len, round)` over the lengths until enough elements were compared; `one` says whether to go on.
template <class One>
void overLengths(const One& one) {
    constexpr std::int32_t longLengths[] = {64, 129, 1000, 2048, 4099};
    std::size_t done = 0;
    for (int round = 0; done < elementsToCompare(); ++round) {
        for (std::int32_t len = 1; len <= 40; ++len) {
            if (!one(len, round)) return;
            done += static_cast<std::size_t>(len);
        }
        for (const std::int32_t len : longLengths) {
            if (!one(len, round)) return;
            done += static_cast<std::size_t>(len);
        }
    }
}

}  // namespace model_check

// One source, one destination.
template <class S, class D>
void expectModel(std::string_view name, OktStatus (*model)(const S*, D*, std::int32_t),
                 std::type_identity_t<Filling<S>> filling) {
    const Export* f = findExport(name);
    ASSERT_NE(f, nullptr) << name << " is not built";
    Random random(1);
    std::vector<S> src(5000);
    std::vector<D> dst(5000);
    model_check::overLengths([&](std::int32_t len, int round) {
        model_check::fill(src.data(), len, round, random, filling);
        const Sources sources{model_check::bytesOf(src.data(), len), {}, {}};
        const OktStatus status = model(src.data(), dst.data(), len);
        const auto same =
            sameOutcome(*f, sources, {status, model_check::bytesOf(dst.data(), len), {}}, call(*f, sources, len));
        EXPECT_TRUE(same) << " (length " << len << ")";
        return static_cast<bool>(same);
    });
}

// Two sources, one destination.
template <class S, class D>
void expectModel(std::string_view name, OktStatus (*model)(const S*, const S*, D*, std::int32_t),
                 std::type_identity_t<Filling<S>> first, std::type_identity_t<Filling<S>> second) {
    const Export* f = findExport(name);
    ASSERT_NE(f, nullptr) << name << " is not built";
    Random random(1);
    std::vector<S> src1(5000), src2(5000);
    std::vector<D> dst(5000);
    model_check::overLengths([&](std::int32_t len, int round) {
        // Specials in the first, in the second, in both.
        model_check::fill(src1.data(), len, round % 4 == 1 ? 0 : round, random, first);
        model_check::fill(src2.data(), len, round % 4 == 2 ? 0 : round, random, second);
        const Sources sources{model_check::bytesOf(src1.data(), len), model_check::bytesOf(src2.data(), len), {}};
        const OktStatus status = model(src1.data(), src2.data(), dst.data(), len);
        const auto same =
            sameOutcome(*f, sources, {status, model_check::bytesOf(dst.data(), len), {}}, call(*f, sources, len));
        EXPECT_TRUE(same) << " (length " << len << ")";
        return static_cast<bool>(same);
    });
}

// Source and scalar.
template <class S, class D>
void expectModel(std::string_view name, OktStatus (*model)(const S*, S, D*, std::int32_t),
                 std::type_identity_t<Filling<S>> filling, std::type_identity_t<Filling<S>> scalars) {
    const Export* f = findExport(name);
    ASSERT_NE(f, nullptr) << name << " is not built";
    Random random(1);
    std::vector<S> src(5000);
    std::vector<D> dst(5000);
    S scalar;
    model_check::overLengths([&](std::int32_t len, int round) {
        model_check::fill(src.data(), len, round, random, filling);
        model_check::fill(&scalar, 1, round % 5 == 0 ? 2 : 0, random, scalars);
        const Sources sources{model_check::bytesOf(src.data(), len), {}, model_check::bytesOf(&scalar, 1)};
        const OktStatus status = model(src.data(), scalar, dst.data(), len);
        const auto same =
            sameOutcome(*f, sources, {status, model_check::bytesOf(dst.data(), len), {}}, call(*f, sources, len));
        EXPECT_TRUE(same) << " (length " << len << ")";
        return static_cast<bool>(same);
    });
}

// One source, two destinations.
template <class S, class D>
void expectModel(std::string_view name, OktStatus (*model)(const S*, D*, D*, std::int32_t),
                 std::type_identity_t<Filling<S>> filling) {
    const Export* f = findExport(name);
    ASSERT_NE(f, nullptr) << name << " is not built";
    Random random(1);
    std::vector<S> src(5000);
    std::vector<D> dst1(5000), dst2(5000);
    model_check::overLengths([&](std::int32_t len, int round) {
        model_check::fill(src.data(), len, round, random, filling);
        const Sources sources{model_check::bytesOf(src.data(), len), {}, {}};
        const OktStatus status = model(src.data(), dst1.data(), dst2.data(), len);
        const auto same = sameOutcome(
            *f, sources, {status, model_check::bytesOf(dst1.data(), len), model_check::bytesOf(dst2.data(), len)},
            call(*f, sources, len));
        EXPECT_TRUE(same) << " (length " << len << ")";
        return static_cast<bool>(same);
    });
}

}  // namespace okt::test
