#include "frame/status_flag.h"

#include "lanes/opaque.h"
#include "lanes/pattern.h"

namespace okt {

void raiseStatusFlag(OktStatus code) {
    switch (code) {
        case oktStatusOverflow: {
            const Real64 largest = opaque(largestFinite<Real64>());
            keepFlags(largest * largest);  // overflow, inexact
            break;
        }
        case oktStatusUnderflow: {
            const Real64 smallest = opaque(0x1.0000000000001p-1022);
            keepFlags(smallest * smallest);  // underflow, inexact
            break;
        }
        case oktStatusSingularity: keepFlags(opaque(Real64{1}) / opaque(Real64{0})); break;  // divide by zero
        case oktStatusDomain: keepFlags(opaque(Real64{0}) / opaque(Real64{0})); break;       // invalid
        default: break;
    }
}

}  // namespace okt
