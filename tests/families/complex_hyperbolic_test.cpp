// Cosh, Sinh and Tanh of complex elements.
#include "families/complex_hyperbolic_cells.h"

namespace okt::test {
namespace {

TEST(ComplexHyperbolic, CoshOfEveryClass) { expectCells("Cosh", coshCells); }
TEST(ComplexHyperbolic, SinhOfEveryClass) { expectCells("Sinh", sinhCells); }
TEST(ComplexHyperbolic, TanhOfEveryClass) { expectCells("Tanh", tanhCells); }

TEST(ComplexHyperbolic, WhatHoldsForEveryElement) {
    expectElementLoop("Cosh", {.even = true}, 6);
    expectElementLoop("Sinh", {.odd = true}, 6);
    expectElementLoop("Tanh", {.odd = true}, 8);
}

TEST(ComplexHyperbolic, NotableElements) {
    expectBoth("Tanh", 1000, 1, exactly(1), exactly(0.0));
    expectBoth("Tanh", 1000, 2, exactly(1), exactly(-0.0));
    expectBoth("Tanh", 1, inf, aNaN(), aNaN());
    expectBoth("Tanh", 0, inf, aNaN(), aNaN());
    expectBoth("Cosh", 3000, 1, exactly(inf), exactly(inf));
    expectBoth("Cosh", 3000, 2, exactly(-inf), exactly(inf));
    expectBoth("Sinh", inf, 0.5, exactly(inf), exactly(inf));
    expectBoth("Sinh", inf, 3, exactly(-inf), exactly(inf));
    expectBoth("Cosh", 0.0, quietNaN(), quietOf(quietNaN()), exactly(-0.0));
    expectBoth("Cosh", -0.0, quietNaN(), quietOf(quietNaN()), exactly(0.0));
}

// Next to the last real part that is computed, and to the first that is not.
TEST(ComplexHyperbolic, WhereInfinitiesBegin) {
    const double last = 0x1.fffffffffffffp10;
    // Infinite already, as the product of a number and a cosine.
    expectElement<Complex64>("Cosh", last, 2, exactly(-inf), exactly(inf));
    expectElement<Complex64>("Sinh", -last, 2, exactly(inf), exactly(inf));
    // cosh 2047 is a number of extended precision: a tiny sine brings the product back.
    expectElement<Complex64>("Cosh", last, 0x1p-1074, exactly(inf), exactly(inf));
    expectElement<Complex64>("Sinh", 800, 0x1p-1022, exactly(inf),
                             about(0x1p-1022 * std::exp(400.0) * 0.5 * std::exp(400.0)));
    expectElement<Complex64>("Sinh", 2048, 0x1p-1022, exactly(inf), exactly(inf));
    // The tangent's parts of 1 and 0 begin at 512.
    const double below = 0x1.fffffffffffffp8;
    expectElement<Complex64>("Tanh", below, 1, exactly(1), exactly(0.0));
    expectElement<Complex64>("Tanh", below, 2, exactly(1), exactly(-0.0));
    expectElement<Complex64>("Tanh", 360, 1, exactly(1), about(4 * std::sin(1.0) * std::cos(1.0) * std::exp(-720.0)));
    expectElement<Complex64>("Tanh", 512, 2, exactly(1), exactly(-0.0));
}

TEST(ComplexHyperbolic, Poles) {
    // Next to i*pi/2 the tangent is the reciprocal of the distance, which has a part of its own in the last bits of pi.
    const double y = 0x1.921fb54442d18p0, rest = 6.123233995736766e-17;
    expectElement<Complex64>("Tanh", 0.0, y, exactly(0.0), about(1 / rest));
    expectElement<Complex64>("Tanh", 0x1p-60, y, about(0x1p-60 / (0x1p-120 + rest * rest)),
                             about(rest / (0x1p-120 + rest * rest)));
}

TEST(ComplexHyperbolic, Flags) {
    // Overflow beyond 2^11, by an SSE product.
    for (const char* family : {"Cosh", "Sinh"}) {
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, 3000, 1).mxcsr & flagOverflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex32>(family, 3000, 1).mxcsr & flagOverflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, -2048, 0x1p-1074).mxcsr & flagOverflow) << family;
        EXPECT_FALSE(flagsRaisedBy<Complex64>(family, 2, 1).either() & (flagOverflow | flagUnderflow | flagInvalid))
            << family;
        // A zero real part with a finite imaginary part is inexact.
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, 0.0, 0.5).mxcsr & flagInexact) << family;
        EXPECT_FALSE(flagsRaisedBy<Complex64>(family, 0.0, 0.0).mxcsr & flagInexact) << family;
        // Invalid for an infinite imaginary part, quietly so for a NaN.
        for (const double x : {0.0, 1.0}) {
            EXPECT_TRUE(flagsRaisedBy<Complex64>(family, x, inf).either() & flagInvalid) << family;
            EXPECT_TRUE(flagsRaisedBy<Complex32>(family, x, -inf).either() & flagInvalid) << family;
            EXPECT_FALSE(flagsRaisedBy<Complex64>(family, x, quietNaN()).either() & flagInvalid) << family;
        }
    }
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Tanh", 1, inf).either() & flagInvalid);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Tanh", 0, inf).either() & flagInvalid);
    EXPECT_FALSE(flagsRaisedBy<Complex64>("Tanh", inf, inf).either() & flagInvalid);
    EXPECT_FALSE(flagsRaisedBy<Complex64>("Tanh", inf, quietNaN()).either() & flagInvalid);
    // A tangent of 1 is inexact, and underflows but for a zero imaginary part.
    EXPECT_EQ(flagsRaisedBy<Complex64>("Tanh", 1000, 1).mxcsr & (flagInexact | flagUnderflow),
              flagInexact | flagUnderflow);
    EXPECT_EQ(flagsRaisedBy<Complex64>("Tanh", 1000, 0x1p-1074).mxcsr & flagUnderflow, flagUnderflow);
    EXPECT_EQ(flagsRaisedBy<Complex64>("Tanh", 1000, 0x1p-1074).mxcsr & flagDenormal, flagDenormal);
    EXPECT_EQ(flagsRaisedBy<Complex64>("Tanh", 1000, -0.0).mxcsr & (flagInexact | flagUnderflow), flagInexact);
    EXPECT_EQ(flagsRaisedBy<Complex64>("Tanh", inf, 0x1p-1074).mxcsr & (flagDenormal | flagUnderflow), flagDenormal);
}

// Subnormal parts raise underflow, in MXCSR, and the status says nothing of it.
TEST(ComplexHyperbolic, Underflow) {
    const double tiny = 0x1p-1060, tiny32 = 0x1p-140;
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Sinh", tiny, 0.0).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Sinh", tiny, 0.5).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Sinh", 0.5, tiny).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Tanh", tiny, 0.5).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Tanh", 0.5, tiny).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Tanh", 0.0, tiny).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Cosh", 0.5, tiny).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Cosh", tiny, 0.5).mxcsr & flagUnderflow);
    for (const char* family : {"Sinh", "Tanh", "Cosh"}) {
        EXPECT_FALSE(flagsRaisedBy<Complex64>(family, 0x1p-1000, 0.5).mxcsr & flagUnderflow) << family;
        EXPECT_FALSE(flagsRaisedBy<Complex64>(family, 0.5, 0x1p-1000).mxcsr & flagUnderflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex32>(family, 0.5, tiny32).mxcsr & flagUnderflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex32>(family, tiny32, 0.5).mxcsr & flagUnderflow) << family;
        EXPECT_FALSE(flagsRaisedBy<Complex32>(family, 0.5, 0x1p-100).mxcsr & flagUnderflow) << family;
    }
    // Also where the conversion to the subnormal is exact and raises nothing by itself.
    EXPECT_TRUE(flagsRaisedBy<Complex32>("Sinh", 0x1p-149, 0.0).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex32>("Tanh", 0.0, 0x1p-149).mxcsr & flagUnderflow);
}

}  // namespace
}  // namespace okt::test
