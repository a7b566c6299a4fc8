#include "peers.h"

#include <emmintrin.h>
#include <sleef.h>

using Pd = __m128d;
using Ps = __m128;
#define OKT_SLEEF "SLEEF SSE2"
#define OKT_SLEEF_PEERS sleefSse2Peers
#define OKT_SLEEF_D(name, ulp) Sleef_##name##d2_##ulp##sse2
#define OKT_SLEEF_S(name, ulp) Sleef_##name##f4_##ulp##sse2
#define OKT_SLEEF_LOAD_D _mm_loadu_pd
#define OKT_SLEEF_LOAD_S _mm_loadu_ps
#define OKT_SLEEF_STORE_D _mm_storeu_pd
#define OKT_SLEEF_STORE_S _mm_storeu_ps
#include "peers_sleef.inc"
