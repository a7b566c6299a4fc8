// Reciprocal of the cube root, by the steps of cbrt_steps.h.
//
// Largest errors seen: 0.8706 ulp at 0x1.073bb2p0 (32f), 0.5381 at 0x1.000970c155303p0 (64f).
#include "exports/InvCbrt.h"
#include "root/cbrt_steps.h"

namespace okt::cubic {

OKT_EXPORT(InvCbrt, 32f, root32<Root::invCbrt>)
OKT_EXPORT(InvCbrt, 64f, root64<Root::invCbrt>)

}  // namespace okt::cubic
