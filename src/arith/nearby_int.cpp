// Integers by the rounding mode in force; see round_by_mode.h.
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
#include "arith/round_by_mode.h"
#include "exports/NearbyInt.h"

namespace okt {

OKT_EXPORT(NearbyInt, 32f, roundArrayByMode)
OKT_EXPORT(NearbyInt, 64f, roundArrayByMode)

}  // namespace okt
