// The loops of Pow and Powx. `Exponents` is an array of exponents or one for all elements, see pow32.h and pow64.h.
#pragma once

#include "explog/pow32.h"
#include "explog/pow64.h"
#include "explog/pow_special.h"
#include "frame/loops.h"

namespace okt::power {
namespace {

// One element completely.
template <class T>
[[gnu::noinline]] T powElement(T x, T y, OktStatus& status) {
    if (!isFiniteNonzero(x) || !isFiniteNonzero(y)) return specialPower(x, y, status);
    if (!isNegative(x)) return generalPower(x, y, 1.0);
    switch (classify(y)) {
        case ExponentClass::odd: return generalPower(x, y, -1.0);
        case ExponentClass::even: return generalPower(x, y, 1.0);
        default: return specialPower(x, y, status);
    }
}

template <class T, class Exponents>
void powElements(const T* src, const Exponents& y, T* dst, std::ptrdiff_t first, std::ptrdiff_t end,
                 OktStatus& status) {
    for (std::ptrdiff_t i = first; i < end; ++i)
        storeElement(dst + i, powElement(loadElement(src + i), y.at(i), status));
}

// Two blocks of four, each of which fails for itself.
template <class Exponents>
[[gnu::noinline, gnu::cold]] void powTwoBlocks(const Real32* src, const Exponents& y, Real32* dst, std::ptrdiff_t first,
                                               OktStatus& status) {
    for (std::ptrdiff_t i = first; i < first + 8; i += 4)
        if (!tryMain<4>(constants32, src, y, dst, i)) powElements(src, y, dst, i, i + 4, status);
}

// Blocks of four up to the last multiple of eight; the elements behind it take the same steps one at a time.
template <class Exponents>
void powLoop(const Real32* src, const Exponents& y, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32* const c = &inMemory(constants32);
    const std::ptrdiff_t end = len & ~7;
    blocksAhead<8, F32<8>, Multiple32<8>>(
        end,
        [=](std::ptrdiff_t i, F32<8>& r, Multiple32<8>& n) OKT_INLINE { return beginMain<8>(*c, src, y, i, r, n); },
        [=](std::ptrdiff_t i, F32<8> r, const Multiple32<8>& n) OKT_INLINE { expMain(*c, r, n).store(dst + i); },
        [&](std::ptrdiff_t i) { powTwoBlocks(src, y, dst, i, status); });
    for (std::ptrdiff_t i = end; i < len; ++i)
        if (!tryMain<1>(*c, src, y, dst, i)) powElements(src, y, dst, i, i + 1, status);
}

// Two blocks of two, that is a pair of pairs. A pair takes the main path if it passes its tests and the pair behind it
// does so as well; behind the last pair there is none that could fail.
template <class Exponents>
[[gnu::noinline, gnu::cold]] void powTwoPairs(const Real64* src, const Exponents& y, Real64* dst, std::ptrdiff_t first,
                                              std::ptrdiff_t end, OktStatus& status) {
    const auto pairPasses = [&](std::ptrdiff_t i) {
        return i >= end || (passes(loadElement(src + i), y.at(i)) && passes(loadElement(src + i + 1), y.at(i + 1)));
    };
    bool passed = pairPasses(first);
    for (std::ptrdiff_t i = first; i < first + 4; i += 2) {
        const bool nextPassed = pairPasses(i + 2);
        if (passed && nextPassed) {
            for (std::ptrdiff_t j = i; j < i + 2; ++j) storeElement(dst + j, mainPower(loadElement(src + j), y.at(j)));
        } else {
            powElements(src, y, dst, i, i + 2, status);
        }
        passed = nextPassed;
    }
}

// The four elements from `first` on, or eight, some of which are not hot.
template <class Exponents>
[[gnu::noinline, gnu::cold]] void powPairs(const Real64* src, const Exponents& y, Real64* dst, std::ptrdiff_t first,
                                           std::ptrdiff_t last, std::ptrdiff_t end, OktStatus& status) {
    for (std::ptrdiff_t i = first; i < last; i += 4)
        if (!tryHot<4>(constants64, src, y, dst, i)) powTwoPairs(src, y, dst, i, end, status);
}

// Pairs up to the last multiple of four; the elements behind it are for the element routine. The path of a pair depends
// on the pair behind it, but shows in the bits outside the hot range only: hot elements need no look ahead.
template <class Exponents>
void powLoop(const Real64* src, const Exponents& y, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& c = inMemory(constants64);
    const std::ptrdiff_t end = len & ~3;
    std::ptrdiff_t i = 0;
    for (; i <= end - 8; i += 8)
        if (!tryHot<8>(c, src, y, dst, i)) [[unlikely]]
            powPairs(src, y, dst, i, i + 8, end, status);
    powPairs(src, y, dst, i, end, end, status);
    powElements(src, y, dst, end, len, status);
}

}  // namespace
}  // namespace okt::power
