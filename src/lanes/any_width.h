// Operations made of those of the rooms, at any number of lanes.
#pragma once

#include "lanes/conversions.h"

namespace okt {

template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> signOf(Vec<T, N> a) {  // the sign bit alone
    return asReal(asBits(a) & Vec<Unsigned<T>, N>(Unsigned<T>{1} << (8 * sizeof(T) - 1)));
}
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> abs(Vec<T, N> a) {
    return asReal(asBits(a) & Vec<Unsigned<T>, N>(~(Unsigned<T>{1} << (8 * sizeof(T) - 1))));
}
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> operator-(Vec<T, N> a) {  // a flipped sign bit, no arithmetic
    return asReal(asBits(a) ^ Vec<Unsigned<T>, N>(Unsigned<T>{1} << (8 * sizeof(T) - 1)));
}
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> operator&(Vec<T, N> a, Vec<Unsigned<T>, N> pattern) { return asReal(asBits(a) & pattern); }
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> operator|(Vec<T, N> a, Vec<T, N> b) { return asReal(asBits(a) | asBits(b)); }
template <class T, int N>
requires std::is_floating_point_v<T>
inline Vec<T, N> operator^(Vec<T, N> a, Vec<T, N> b) { return asReal(asBits(a) ^ asBits(b)); }

// Lanes outside first .. last, as unsigned numbers; the range may wrap around, so that it serves signed numbers, too.
template <int N>
inline Mask32<N> outside(U32<N> a, std::uint32_t first, std::uint32_t last) {
    constexpr std::uint32_t lowest = 0x80000000;  // in a signed comparison
    return greaterSigned(a + U32<N>(lowest - first), U32<N>(lowest + (last - first)));
}

// The value itself. In registers of several lanes, arithmetic of which a lane's part is void still raises its flags; of
// a single lane a compiler may leave it out. Held to it, the elements of the tail raise what those of blocks do.
template <class T>
inline Vec<T, 1> withFlags(Vec<T, 1> v) {
    return opaque(v.raw);
}
template <class T, int N>
inline Vec<T, N> withFlags(Vec<T, N> v) {
    return v;
}

// The value itself. All its registers are made before anything that uses the result: the compiler,
// which would rather work long chains one after the other, is held to working them side by side.
template <class V>
inline V inStep(V v) {
    return v;
}
template <class V>
requires Paired<V>
inline V inStep(V v) {
    constexpr int registers = V::lanes / registerLanes<typename V::Element>;
    if constexpr (registers == 2)
        asm("" : "+v"(v.lo.raw), "+v"(v.hi.raw));
    else if constexpr (registers == 4)
        asm("" : "+v"(v.lo.lo.raw), "+v"(v.lo.hi.raw), "+v"(v.hi.lo.raw), "+v"(v.hi.hi.raw));
    else if constexpr (registers == 8)
        asm(""
            : "+v"(v.lo.lo.lo.raw), "+v"(v.lo.lo.hi.raw), "+v"(v.lo.hi.lo.raw), "+v"(v.lo.hi.hi.raw),
              "+v"(v.hi.lo.lo.raw), "+v"(v.hi.lo.hi.raw), "+v"(v.hi.hi.lo.raw), "+v"(v.hi.hi.hi.raw));
    return v;
}

// Every lane twice: one value for both parts of a complex number.
template <int N>
inline F64<2 * N> eachTwice(F64<N> a) {
    if constexpr (Register<F64<N>>) {
        const auto [low, high] = interleaved(a, a);
        return {low, high};
    } else {
        return {eachTwice(a.lo), eachTwice(a.hi)};
    }
}

// Interleaved pairs to two vectors of columns, and back.
template <int N, class T>
inline Pair<Vec<T, N>> loadInterleaved(const T* from) {
    if constexpr (N == 1) {
        return {loadElement(from), loadElement(from + 1)};
    } else if constexpr (Register<Vec<T, N>>) {
        return deinterleaved(Vec<T, N>::load(from), Vec<T, N>::load(from + N));
    } else {
        const auto low = loadInterleaved<N / 2>(from);
        const auto high = loadInterleaved<N / 2>(from + N);
        return {{low.first, high.first}, {low.second, high.second}};
    }
}
template <class T, int N>
inline void storeInterleaved(T* to, Vec<T, N> first, Vec<T, N> second) {
    if constexpr (N == 1) {
        first.store(to);
        second.store(to + 1);
    } else if constexpr (Register<Vec<T, N>>) {
        const auto [low, high] = interleaved(first, second);
        low.store(to);
        high.store(to + N);
    } else {
        storeInterleaved(to, first.lo, second.lo);
        storeInterleaved(to + N, first.hi, second.hi);
    }
}

// The same of Real32 in memory and Real64 in lanes.
template <int N>
inline Pair<F64<N>> loadInterleavedWidened(const Real32* from) {
    if constexpr (Register<F64<N>>) {
        return deinterleaved(widenAt<N>(from), widenAt<N>(from + N));
    } else {
        const auto low = loadInterleavedWidened<N / 2>(from);
        const auto high = loadInterleavedWidened<N / 2>(from + N);
        return {{low.first, high.first}, {low.second, high.second}};
    }
}
template <int N>
inline void storeInterleavedNarrowed(Real32* to, F64<N> first, F64<N> second) {
    if constexpr (N == 2) {
        _mm_storeu_ps(to, _mm_unpacklo_ps(_mm_cvtpd_ps(first.raw), _mm_cvtpd_ps(second.raw)));
    } else if constexpr (Register<F64<N>>) {
        storeInterleaved(to, narrow(first), narrow(second));
    } else {
        storeInterleavedNarrowed(to, first.lowHalf(), second.lowHalf());
        storeInterleavedNarrowed(to + N, first.highHalf(), second.highHalf());
    }
}

}  // namespace okt
