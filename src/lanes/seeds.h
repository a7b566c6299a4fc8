// Approximate reciprocals and reciprocal roots, the starts of divisions and roots without the instructions for them.
//
// rcpps and rsqrtps guarantee a relative error of at most 1.5·2^-12; what they give within it differs between makers of
// processors. A zero gives the infinity of its sign, a subnormal counts as a zero, no flag is raised.
#pragma once

#include "lanes/lanes.h"

namespace okt {

// Approximations of 1/sqrt(x) and 1/x.
inline F32<1> rsqrtSeed(F32<1> a) { return _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(a.raw))); }
inline F32<1> recipSeed(F32<1> a) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(a.raw))); }
inline F32<4> rsqrtSeed(F32<4> a) { return _mm_rsqrt_ps(a.raw); }
inline F32<4> recipSeed(F32<4> a) { return _mm_rcp_ps(a.raw); }

template <int N>
requires Paired<F32<N>>
inline F32<N> rsqrtSeed(F32<N> a) { return {rsqrtSeed(a.lo), rsqrtSeed(a.hi)}; }
template <int N>
requires Paired<F32<N>>
inline F32<N> recipSeed(F32<N> a) { return {recipSeed(a.lo), recipSeed(a.hi)}; }

// The approximation of 1/x of the Real32 in the lower word of each lane, there; the upper word is free.
inline U64<1> recipSeedLow(U64<1> a) {
    return std::uint64_t{asBits(recipSeed(F32<1>(bits32(static_cast<std::uint32_t>(a.raw)))).raw)};
}
// The same for 1/sqrt(x).
inline U64<1> rsqrtSeedLow(U64<1> a) {
    return std::uint64_t{asBits(rsqrtSeed(F32<1>(bits32(static_cast<std::uint32_t>(a.raw)))).raw)};
}
inline U64<2> recipSeedLow(U64<2> a) { return _mm_castps_si128(_mm_rcp_ps(_mm_castsi128_ps(a.raw))); }
inline U64<2> rsqrtSeedLow(U64<2> a) { return _mm_castps_si128(_mm_rsqrt_ps(_mm_castsi128_ps(a.raw))); }

template <int N>
requires Paired<U64<N>>
inline U64<N> recipSeedLow(U64<N> a) { return {recipSeedLow(a.lo), recipSeedLow(a.hi)}; }
template <int N>
requires Paired<U64<N>>
inline U64<N> rsqrtSeedLow(U64<N> a) { return {rsqrtSeedLow(a.lo), rsqrtSeedLow(a.hi)}; }

}  // namespace okt
