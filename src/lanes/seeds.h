// Approximate reciprocals and reciprocal roots, the starts of divisions and roots without the instructions for them.
//
// Their relative error is at most 1.5·2^-12, and nothing else about them is promised: bounds of errors hold for every
// approximation within it. A zero gives the infinity of its sign, a subnormal counts as a zero, an approximation that
// would be subnormal is zero, and no flag is raised. The build's option OKT_SEEDS says where they come from:
//
//   processor   rcpps and rsqrtps, which differ between makers of processors in the last bits
//   table       lanes/table_seeds.h: the same bits on every processor, at some cost in speed
//   moved       lanes/moved_seeds.h: anywhere within the error, for tests
#pragma once

#include "lanes/lanes.h"
#if defined OKT_SEEDS_MOVED
#include "lanes/moved_seeds.h"
#elif defined OKT_SEEDS_TABLE
#include "lanes/table_seeds.h"
#endif

namespace okt {

#if defined OKT_SEEDS_MOVED
namespace seeds = moved_seeds;
#elif defined OKT_SEEDS_TABLE
namespace seeds = table_seeds;
#else
namespace seeds {

inline F32<1> rsqrt(F32<1> x) { return _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(x.raw))); }
inline F32<1> recip(F32<1> x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x.raw))); }
inline F32<4> rsqrt(F32<4> x) { return _mm_rsqrt_ps(x.raw); }
inline F32<4> recip(F32<4> x) { return _mm_rcp_ps(x.raw); }
#if defined(OKT_REGISTERS_256)
inline F32<8> rsqrt(F32<8> x) { return _mm256_rsqrt_ps(x.raw); }
inline F32<8> recip(F32<8> x) { return _mm256_rcp_ps(x.raw); }
#endif
#if defined(OKT_REGISTERS_512)
// By halves: the forms of 512 bits are other approximations, of 14 bits.
inline F32<16> rsqrt(F32<16> x) { return {rsqrt(x.lowHalf()), rsqrt(x.highHalf())}; }
inline F32<16> recip(F32<16> x) { return {recip(x.lowHalf()), recip(x.highHalf())}; }
#endif
template <int N>
inline F32<N> rsqrtOfNormal(F32<N> x) {
    return rsqrt(x);
}
template <int N>
inline F32<N> recipOfNormal(F32<N> x) {
    return recip(x);
}

}  // namespace seeds
#endif

// Approximations of 1/sqrt(x) and 1/x.
template <int N>
inline F32<N> rsqrtSeed(F32<N> x) {
    return seeds::rsqrt(x);
}
template <int N>
inline F32<N> recipSeed(F32<N> x) {
    return seeds::recip(x);
}
template <int N>
requires Paired<F32<N>>
inline F32<N> rsqrtSeed(F32<N> x) { return {rsqrtSeed(x.lo), rsqrtSeed(x.hi)}; }
template <int N>
requires Paired<F32<N>>
inline F32<N> recipSeed(F32<N> x) { return {recipSeed(x.lo), recipSeed(x.hi)}; }

// The same where all operands are known to be positive and normal, and the results normal.
template <int N>
inline F32<N> rsqrtSeedOfNormal(F32<N> x) {
    return seeds::rsqrtOfNormal(x);
}
template <int N>
inline F32<N> recipSeedOfNormal(F32<N> x) {
    return seeds::recipOfNormal(x);
}
template <int N>
requires Paired<F32<N>>
inline F32<N> rsqrtSeedOfNormal(F32<N> x) { return {rsqrtSeedOfNormal(x.lo), rsqrtSeedOfNormal(x.hi)}; }
template <int N>
requires Paired<F32<N>>
inline F32<N> recipSeedOfNormal(F32<N> x) { return {recipSeedOfNormal(x.lo), recipSeedOfNormal(x.hi)}; }

// The approximation of 1/x of the Real32 in the lower word of each lane, there; the upper word is free. The Real32 is
// as the forms for normal operands want it.
inline U64<1> recipSeedLow(U64<1> a) {
    return std::uint64_t{asBits(recipSeedOfNormal(F32<1>(bits32(static_cast<std::uint32_t>(a.raw)))).raw)};
}
// The same for 1/sqrt(x).
inline U64<1> rsqrtSeedLow(U64<1> a) {
    return std::uint64_t{asBits(rsqrtSeedOfNormal(F32<1>(bits32(static_cast<std::uint32_t>(a.raw)))).raw)};
}
template <int N>
requires Register<U64<N>>
inline U64<N> recipSeedLow(U64<N> a) { return asLongs(asBits(recipSeedOfNormal(asReal(asWords(a))))); }
template <int N>
requires Register<U64<N>>
inline U64<N> rsqrtSeedLow(U64<N> a) { return asLongs(asBits(rsqrtSeedOfNormal(asReal(asWords(a))))); }

template <int N>
requires Paired<U64<N>>
inline U64<N> recipSeedLow(U64<N> a) { return {recipSeedLow(a.lo), recipSeedLow(a.hi)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> rsqrtSeedLow(U64<N> a) { return {rsqrtSeedLow(a.lo), rsqrtSeedLow(a.hi)}; }

}  // namespace okt
