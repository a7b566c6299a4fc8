#include "support/model_check.h"
#include "models/trig_model.h"
namespace okt::test { namespace {
TEST(Sin64, AgreesWithThePlainModel) { expectModel<Real64, Real64>("oktsSin_64f_A53", model::Sin_64f, {ordinaryElement<Real64, -6, 15>, specialElement<Real64>}); }
TEST(Cos64, AgreesWithThePlainModel) { expectModel<Real64, Real64>("oktsCos_64f_A53", model::Cos_64f, {ordinaryElement<Real64, -6, 15>, specialElement<Real64>}); }
TEST(Sin32, AgreesWithThePlainModel) { expectModel<Real32, Real32>("oktsSin_32f_A24", model::Sin_32f, {ordinaryElement<Real32, -6, 12>, specialElement<Real32>}); }
TEST(Cos32, AgreesWithThePlainModel) { expectModel<Real32, Real32>("oktsCos_32f_A24", model::Cos_32f, {ordinaryElement<Real32, -6, 12>, specialElement<Real32>}); }
}}
