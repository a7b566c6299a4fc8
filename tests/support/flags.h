// The exception flags that a call raises.
#pragma once

#include "support/control_state.h"
#include "support/element.h"
#include "support/model_check.h"

#include <vector>

namespace okt::test {

inline constexpr std::uint32_t flagInvalid = 0x01, flagDenormal = 0x02, flagDivideByZero = 0x04, flagOverflow = 0x08,
                               flagUnderflow = 0x10, flagInexact = 0x20;

// The named functions' flags over one element alone.
template <class D, class S>
std::uint32_t flagsAlone(OktStatus (*f)(const S*, D*, std::int32_t), S x, std::uint32_t control = defaultMxcsr) {
    D result;
    return flagsRaised([&] { f(&x, &result, 1); }, control);
}

// The flags of single elements are those of the model.
template <class T>
void expectModelFlagsAlone(OktStatus (*f)(const T*, T*, std::int32_t), OktStatus (*model)(const T*, T*, std::int32_t),
                           std::type_identity_t<Filling<T>> filling) {
    Random random(9);
    std::vector<T> elements = specialValues<T>();
    for (int i = 0; i < 3000; ++i) elements.push_back(i % 2 ? filling.ordinary(random) : filling.special(random));
    for (const T& x : elements) EXPECT_EQ(flagsAlone(f, x), flagsAlone(model, x)) << std::hex << asBits(x);
}

// Whether each of the elements raises the flag, alone and in an array of its like that is worked in blocks.
template <class T>
void expectFlag(OktStatus (*f)(const T*, T*, std::int32_t), std::uint32_t flag, bool raised,
                std::initializer_list<std::type_identity_t<T>> elements) {
    for (const T& x : elements)
        for (const std::size_t len : {1u, 19u}) {
            std::vector<T> src(len), dst(len);
            for (T& element : src) std::memcpy(&element, &x, sizeof x);
            const std::uint32_t flags = flagsRaised([&] { f(src.data(), dst.data(), static_cast<std::int32_t>(len)); });
            EXPECT_EQ((flags & flag) != 0, raised) << std::hexfloat << x << ", flags " << std::hex << flags;
        }
}

template <class S>
std::string patternsOf(const std::vector<S>& values) {
    std::string text;
    for (const S& value : values) {
        char pattern[32];
        std::snprintf(pattern, sizeof pattern, "0x%llX ", static_cast<unsigned long long>(loadBits(&value)));
        text += pattern;
    }
    return text;
}

namespace flags {

inline constexpr std::size_t arrayLength = 12;  // whole blocks and a tail

// call(function, src1, src2) runs the export or the model over the sources.
template <class S, class Function, class Call>
void expectSame(Function f, Function model, const Call& call, bool twoSources) {
    Random random(31);
    std::vector<S> src1(arrayLength, S{2}), src2(arrayLength, S{2});
    const auto check = [&] {
        underEveryMxcsr([&] {
            const std::uint32_t control = _mm_getcsr();
            const std::uint32_t expected = flagsRaised([&] { call(model, src1, src2); }, control);
            const std::uint32_t actual = flagsRaised([&] { call(f, src1, src2); }, control);
            ASSERT_EQ(actual, expected) << patternsOf(src1) << (twoSources ? "and " + patternsOf(src2) : "") << std::hex
                                        << "MXCSR " << control;
        });
    };
    for (const std::size_t len : {arrayLength, std::size_t{1}}) {
        for (int round = 0; round < 400; ++round) {
            src1 = mixedValues<S>(len, random.bits());
            src2 = mixedValues<S>(len, random.bits());
            check();
        }
        const auto& specials = specialValues<S>();
        for (std::size_t i = 0; i < specials.size(); ++i)
            for (std::size_t j = 0; j < (twoSources ? specials.size() : 1); ++j) {
                src1.assign(len, S{2});
                src2.assign(len, S{2});
                const std::size_t at = random.below(len);
                std::memcpy(&src1[at], &specials[i], sizeof(S));
                std::memcpy(&src2[at], &specials[j], sizeof(S));
                check();
            }
    }
}

}  // namespace flags

// The flags of a call are those of its model, over special values, arbitrary patterns and ordinary values, alone and in
// arrays that are worked in blocks, under every MXCSR: packed work must not be told from the element loop.
template <class S>
void expectModelFlags(OktStatus (*f)(const S*, S*, std::int32_t), OktStatus (*model)(const S*, S*, std::int32_t)) {
    std::vector<S> dst(flags::arrayLength);
    const auto call = [&](auto function, const std::vector<S>& src, const std::vector<S>&) {
        function(src.data(), dst.data(), static_cast<std::int32_t>(src.size()));
    };
    flags::expectSame<S>(f, model, call, false);
}
template <class S>
void expectModelFlags(OktStatus (*f)(const S*, const S*, S*, std::int32_t),
                      OktStatus (*model)(const S*, const S*, S*, std::int32_t)) {
    std::vector<S> dst(flags::arrayLength);
    const auto call = [&](auto function, const std::vector<S>& src1, const std::vector<S>& src2) {
        function(src1.data(), src2.data(), dst.data(), static_cast<std::int32_t>(src1.size()));
    };
    flags::expectSame<S>(f, model, call, true);
}
template <class S>
void expectModelFlags(OktStatus (*f)(const S*, S*, S*, std::int32_t),
                      OktStatus (*model)(const S*, S*, S*, std::int32_t)) {
    std::vector<S> dst1(flags::arrayLength), dst2(flags::arrayLength);
    const auto call = [&](auto function, const std::vector<S>& src, const std::vector<S>&) {
        function(src.data(), dst1.data(), dst2.data(), static_cast<std::int32_t>(src.size()));
    };
    flags::expectSame<S>(f, model, call, false);
}

}  // namespace okt::test
