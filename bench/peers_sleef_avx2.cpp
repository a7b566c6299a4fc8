// Compiled for AVX2 and called on processors that have it only; nothing of it is shared with other files.
#include "peers.h"

#include <immintrin.h>
#include <sleef.h>

using Pd = __m256d;
using Ps = __m256;
#define OKT_SLEEF "SLEEF AVX2"
#define OKT_SLEEF_PEERS sleefAvx2Peers
#define OKT_SLEEF_D(name, ulp) Sleef_##name##d4_##ulp##avx2
#define OKT_SLEEF_S(name, ulp) Sleef_##name##f8_##ulp##avx2
#define OKT_SLEEF_LOAD_D _mm256_loadu_pd
#define OKT_SLEEF_LOAD_S _mm256_loadu_ps
#define OKT_SLEEF_STORE_D _mm256_storeu_pd
#define OKT_SLEEF_STORE_S _mm256_storeu_ps
#include "peers_sleef.inc"
