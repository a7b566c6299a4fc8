// erfinv(x) is odd. Three routines: Real32 in Real64, and on Real64 a fast one, A26, and one of full accuracy, A50. The
// first and the third are element loops, worked in lanes by range; the caller's MXCSR acts on all of it.
//
// Results of small elements may be subnormal: they are worked at 2^256 times their size and rounded once, on the grid
// of the subnormal numbers.
//
// Largest errors seen: Real32 0.5001 ulp; A50 0.5001 ulp; A26 a relative error of 2.41e-9, in the cell [0.5, 0.5625) of
// w = 1 - |x|.
//
// GCC: -fschedule-insns -fsched-pressure (0.90)
#include "erf/erf_inv32.h"
#include "erf/erf_inv64.h"
#include "erf/erf_inv_a26.h"
#include "exports/ErfInv.h"

namespace okt::inverse_erf {

OKT_EXPORT(ErfInv, 32f, erfInv32)
OKT_EXPORT_GRADES(ErfInv, 64f, A26, erfInv64Fast)
OKT_EXPORT_GRADES(ErfInv, 64f, A50, erfInv64)

}  // namespace okt::inverse_erf
