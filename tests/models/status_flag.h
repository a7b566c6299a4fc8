// The IEEE flag of a warning, made by a real operation as the frames with an x87 guard make it.
#pragma once

#include "oktvm_types.h"
#include "tests/models/bits.h"
#include "tests/models/ordered.h"

namespace okt::model::warning {

inline void raiseFlag(OktStatus code) {
    const Real64 largest = fromBits(std::uint64_t{0x7FEFFFFFFFFFFFFF});
    const Real64 tiny = fromBits(std::uint64_t{0x0010000000000001});
    if (code == oktStatusOverflow) ordered::mul(largest, largest);
    if (code == oktStatusUnderflow) ordered::mul(tiny, tiny);
    if (code == oktStatusSingularity) ordered::div(1.0, 0.0);
    if (code == oktStatusDomain) ordered::div(0.0, 0.0);
}

}  // namespace okt::model::warning
