// 2 to the power x.
#include "tests/models/exp2_model.h"

#include "oktvm.h"
#include "support/model_check.h"
#include "support/thresholds.h"

namespace okt::test {
namespace {

template <class T>
T ordinary(Random& random) {
    return static_cast<T>(random.between(-100, 100));
}
template <class T>
T special(Random& random) {
    return random.below(2) == 0 ? specialElement<T>(random) : static_cast<T>(random.between(-1200, 1200));
}

TEST(Exp2, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsExp2_32f_A24", model::Exp2_32f, {ordinary<Real32>, special<Real32>});
    expectModel<Real64, Real64>("oktsExp2_64f_A53", model::Exp2_64f, {ordinary<Real64>, special<Real64>});
}

TEST(Exp2, AgreesWithTheModelAroundEveryThreshold) {
    expectModelAround<Real32>(oktsExp2_32f_A24, model::Exp2_32f, 3.0f,
                              {0x3F000000, 0x42FC0000, 0x43000000, 0x43170000, 0x7F800000});
    expectModelAround<Real64>(
        oktsExp2_64f_A53, model::Exp2_64f, 3.0,
        {0x3FE0000000000000, 0x408FF00000000000, 0x4090000000000000, 0x4090D00000000000, 0x7FF0000000000000});
}

TEST(Exp2, SpecialValues) {
    expectRows<Real32>(oktsExp2_32f_A24, 2,
                       {
                           {0x00000000, 0x3F800000, oktStatusOk},
                           {0xBF800000, 0x3F000000, oktStatusOk},
                           {0x42FE0000, 0x7F000000, oktStatusOk},         // 127
                           {0x43000000, 0x7F800000, oktStatusOverflow},   // 128
                           {0xC2FE0000, 0x00400000, oktStatusUnderflow},  // -127: a subnormal power
                           {0xC4000000, 0x00000000, oktStatusUnderflow},
                           {0x7F800000, 0x7F800000, oktStatusOk},
                           {0xFF800000, 0x00000000, oktStatusOk},
                           {0x7FC54321, 0x7FC54321, oktStatusOk},
                           {0xFF800001, 0xFFC00001, oktStatusOk},
                       });
    expectRows<Real64>(oktsExp2_64f_A53, 2,
                       {
                           {0x4008000000000000, 0x4020000000000000, oktStatusOk},
                           {0x4090000000000000, 0x7FF0000000000000, oktStatusOverflow},   // 1024
                           {0xC090C80000000000, 0x0000000000000001, oktStatusUnderflow},  // -1074
                       });
}

}  // namespace
}  // namespace okt::test
