// Sin, Cos and Tan of complex elements: the tables of the hyperbolic functions, a quarter turn away.
#include "families/complex_hyperbolic_cells.h"

namespace okt::test {
namespace {

TEST(ComplexCircular, CosOfEveryClass) { expectTurnedCells("Cos", coshCells, false); }
TEST(ComplexCircular, SinOfEveryClass) { expectTurnedCells("Sin", sinhCells, true); }
TEST(ComplexCircular, TanOfEveryClass) { expectTurnedCells("Tan", tanhCells, true); }

TEST(ComplexCircular, WhatHoldsForEveryElement) {
    expectElementLoop("Cos", {.even = true}, 6);
    expectElementLoop("Sin", {.odd = true}, 6);
    expectElementLoop("Tan", {.odd = true}, 8);
}

TEST(ComplexCircular, NotableElements) {
    expectBoth("Cos", 1, 0.0, about(std::cos(1.0)), exactly(-0.0));
    expectBoth("Cos", 1, -0.0, about(std::cos(1.0)), exactly(0.0));
    expectBoth("Sin", 1, 0.0, about(std::sin(1.0)), exactly(0.0));
    expectBoth("Sin", 2, 0.0, about(std::sin(2.0)), exactly(-0.0));
    expectBoth("Sin", 0, 1, exactly(0.0), about(std::sinh(1.0)));
    expectBoth("Tan", 1, 1000, exactly(0.0), exactly(1));
    expectBoth("Tan", 2, -1000, exactly(-0.0), exactly(-1));
    expectBoth("Cos", 2, 3000, exactly(-inf), exactly(-inf));
}

// No turn changes the sign of a NaN.
TEST(ComplexCircular, NaNsKeepTheirSigns) {
    for (const double n : nan(false)) {
        expectBoth("Sin", 1, n, quietOf(n), quietOf(n));
        expectBoth("Sin", n, 0.0, quietOf(n), exactly(0.0));
        expectBoth("Cos", n, 1, quietOf(n), quietOf(n));
        expectBoth("Tan", n, n, quietOf(n), quietOf(n));
        expectBoth("Tan", 0.0, n, exactly(0.0), quietOf(n));
    }
}

// Arguments of any size in the circular direction: the sine and the cosine of the element itself.
TEST(ComplexCircular, LargeArguments) {
    for (const bool single : {true, false})
        for (const double x : huge(single)) {
            expectElement<Complex64>("Sin", x, 1, about(sine(x) * std::cosh(1.0)), about(cosine(x) * std::sinh(1.0)));
            expectElement<Complex64>("Cos", x, 1, about(cosine(x) * std::cosh(1.0)), about(-sine(x) * std::sinh(1.0)));
            expectElement<Complex64>("Tan", x, 0.0, about(sine(x) / cosine(x)), exactly(0.0));
        }
}

TEST(ComplexCircular, Flags) {
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Sin", 1, 3000).mxcsr & flagOverflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Cos", 1, 3000).mxcsr & flagOverflow);
    EXPECT_EQ(flagsRaisedBy<Complex64>("Tan", 1, 1000).mxcsr & (flagInexact | flagUnderflow),
              flagInexact | flagUnderflow);
    for (const char* family : {"Sin", "Cos", "Tan"}) {
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, inf, 1).either() & flagInvalid) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex32>(family, inf, 1).either() & flagInvalid) << family;
        EXPECT_FALSE(flagsRaisedBy<Complex64>(family, quietNaN(), 1).either() & flagInvalid) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, 0x1p-1060, 0.5).mxcsr & flagUnderflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, 0.5, 0x1p-1060).mxcsr & flagUnderflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex32>(family, 0.5, 0x1p-140).mxcsr & flagUnderflow) << family;
        EXPECT_FALSE(flagsRaisedBy<Complex64>(family, 0.5, 0.5).mxcsr & flagUnderflow) << family;
    }
}

}  // namespace
}  // namespace okt::test
