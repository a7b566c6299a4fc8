// Cube root, by the steps of cbrt_steps.h.
//
// Largest errors seen: 0.9072 ulp at 0x1.f565acp2 (32f), 0.5137 at 0x1.17c08c123ef1cp2 (64f).
#include "exports/Cbrt.h"
#include "root/cbrt_steps.h"

namespace okt::cubic {

OKT_EXPORT(Cbrt, 32f, root32<Root::cbrt>)
OKT_EXPORT(Cbrt, 64f, root64<Root::cbrt>)

}  // namespace okt::cubic
