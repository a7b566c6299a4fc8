// Blocks of complex elements without a tail of its own: the elements behind the last whole block are filled up to one with
// copies of their first, so that every element takes the same path.
#pragma once

#include "lanes/lanes.h"

#include <cstdint>

namespace okt {

template <class T>
using ComplexOfPart = std::conditional_t<sizeof(T) == 8, Complex64, Complex32>;

template <class T, int N>
struct ComplexLanes {
    Vec<T, N> re, im;

    static ComplexLanes load(const ComplexOfPart<T>* from) {
        const auto [re, im] = loadInterleaved<N>(reinterpret_cast<const T*>(from));
        return {re, im};
    }
    void store(ComplexOfPart<T>* to) const {
        if constexpr (N == registerLanes<T>) {
            storeInterleaved(reinterpret_cast<T*>(to), re, im);
        } else {
            ComplexLanes<T, N / 2>{re.lo, im.lo}.store(to);
            ComplexLanes<T, N / 2>{re.hi, im.hi}.store(to + N / 2);
        }
    }
};

// A kernel is made of
//   block, atOnce       elements of a pass, and of those worked side by side
//   flagged(z)          one bit for each element that is out of its range
//   withoutFlagged(z)   what the arithmetic gets in a block that has such elements
//   work(z, to)         the arithmetic on `atOnce` elements
//   element(z)          one element, any
// Every flagged element is worked once more by itself, in order, after its block was stored. dst may be src.
template <class Kernel>
class PaddedBlocks {
public:
    using T = typename Kernel::Part;
    using Z = ComplexOfPart<T>;
    static constexpr int block = Kernel::block;
    using Lanes = ComplexLanes<T, block>;

    explicit PaddedBlocks(Kernel kernel) : kernel_(kernel) {}

    void operator()(const Z* src, Z* dst, std::int32_t len) const {
        std::int32_t i = 0;
        for (; i <= len - block; i += block) {
            const Lanes z = Lanes::load(src + i);
            if (const int flagged = kernel_.flagged(z); flagged != 0) [[unlikely]]
                mixed(z, flagged, dst + i);
            else
                work(z, dst + i);
        }
        if (i < len) tail(src + i, dst + i, len - i);
    }

private:
    template <int N>
    OKT_INLINE void work(const ComplexLanes<T, N>& z, Z* to) const {
        if constexpr (N > Kernel::atOnce) {
            work(ComplexLanes<T, N / 2>{z.re.lo, z.im.lo}, to);
            work(ComplexLanes<T, N / 2>{z.re.hi, z.im.hi}, to + N / 2);
        } else {
            kernel_.work(z, to);
        }
    }

    // The same, apart from the loop.
    [[gnu::noinline]] void workOne(const Lanes& z, Z* to) const { work(z, to); }

    [[gnu::noinline, gnu::cold]] void mixed(const Lanes& z, int flagged, Z* to) const {
        Z source[block];
        z.store(source);
        workOne(kernel_.withoutFlagged(z), to);
        for (int k = 0; k < block; ++k)
            if ((flagged >> k & 1) != 0) storeElement(to + k, kernel_.element(source[k]));
    }

    [[gnu::noinline]] void tail(const Z* from, Z* to, std::int32_t count) const {
        alignas(32) Z buffer[block];
        for (std::int32_t k = 0; k < block; ++k) buffer[k] = loadElement(from + (k < count ? k : 0));
        const Lanes z = Lanes::load(buffer);
        if (const int flagged = kernel_.flagged(z); flagged != 0)
            mixed(z, flagged, buffer);
        else
            workOne(z, buffer);
        for (std::int32_t k = 0; k < count; ++k) storeElement(to + k, buffer[k]);
    }

    Kernel kernel_;
};

}  // namespace okt
