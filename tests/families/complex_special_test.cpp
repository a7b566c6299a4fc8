// The complex exponential, logarithms and square root class by class of their parts.
#include "models/complex_special_tables.h"

#include <gtest/gtest.h>

namespace okt::test {
namespace {

TEST(ComplexSpecialValues, Exponential) { expectCells("Exp", expCells); }
TEST(ComplexSpecialValues, Logarithm) { expectCells("Ln", logCells<false>); }
TEST(ComplexSpecialValues, DecimalLogarithm) { expectCells("Log10", logCells<true>); }
TEST(ComplexSpecialValues, SquareRoot) { expectCells("Sqrt", sqrtCells); }

}  // namespace
}  // namespace okt::test
