// x^y over arrays of both: Real32 as in pow32.h, Real64 as in pow64.h. What lies outside the main range goes through
// element routines.
//
// Largest errors seen:
//   Real32  0.5575 ulp at 0x3EB1FA6B ^ 0xC0501BE3; 3.136 ulp within 2^-8 of 1, at 0x3F803FA3 ^ 0xC72E7695
//   Real64  0.5128 ulp at 0x1.00a1c3bd5fd63p+0 ^ 0x1.859ec7709b808p+16; 0.916 ulp within 0.001 of 1, at
//           0x1.001e442cd17e3p+0 ^ -0x1.3271b26bf5aaap+20; 0.99997 ulp next below 2^-1070, at
//           0x1.85e091726b8p+285 ^ -0x1.dfd81b1d3e59dp+1
//
// GCC: -fno-tree-ter (1.00)
// GCC: -fschedule-insns -fsched-pressure --param=sched-pressure-algorithm=2 (0.98)
#include "exports/Pow.h"
#include "explog/pow_loop.h"

namespace okt::power {
namespace {

template <class T, class Exponents>
void pow(const T* src1, const T* src2, T* dst, std::int32_t len, OktStatus& status) {
    powLoop(src1, Exponents{src2}, dst, len, status);
}

}  // namespace

OKT_EXPORT(Pow, 32f, (pow<Real32, ExponentArray32>))
OKT_EXPORT(Pow, 64f, (pow<Real64, ExponentArray64>))

}  // namespace okt::power
