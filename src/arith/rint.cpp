// Integers by the rounding mode in force; see round_by_mode.h.
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
#include "exports/Rint.h"
#include "arith/round_by_mode.h"

namespace okt {

OKT_EXPORT(Rint, 32f, roundArrayByMode)
OKT_EXPORT(Rint, 64f, roundArrayByMode)

}  // namespace okt
