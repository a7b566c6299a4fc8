#include "frame/status_flag.h"

#include "lanes/bits.h"

namespace okt {

void raiseStatusFlag64(OktStatus code) {
    switch (code) {
        case oktStatusOverflow: {
            const Real64 largest = opaque(bits64(0x7FEFFFFFFFFFFFFF));
            keepFlags(largest * largest);  // overflow, inexact
            break;
        }
        case oktStatusUnderflow: {
            const Real64 smallest = opaque(bits64(0x0010000000000001));
            keepFlags(smallest * smallest);  // underflow, inexact
            break;
        }
        case oktStatusSingularity: keepFlags(opaque(Real64{1}) / opaque(Real64{0})); break;  // divide by zero
        case oktStatusDomain: keepFlags(opaque(Real64{0}) / opaque(Real64{0})); break;       // invalid
        default: break;
    }
}

void raiseStatusFlag32(OktStatus code) { raiseStatusFlag64(code); }

}  // namespace okt
