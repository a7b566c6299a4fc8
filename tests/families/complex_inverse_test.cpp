// Acos, Acosh, Asin, Asinh, Atan and Atanh of complex elements.
#include "families/complex_inverse_cells.h"

namespace okt::test {
namespace {

TEST(ComplexInverse, AcosOfEveryClass) { expectCells("Acos", acosCells); }
TEST(ComplexInverse, AcoshOfEveryClass) { expectCells("Acosh", acoshCells); }
TEST(ComplexInverse, AsinhOfEveryClass) { expectCells("Asinh", asinhCells); }
TEST(ComplexInverse, AtanhOfEveryClass) { expectCells("Atanh", atanhCells); }
TEST(ComplexInverse, AsinOfEveryClass) { expectTurnedCells("Asin", asinhCells, true); }
TEST(ComplexInverse, AtanOfEveryClass) { expectTurnedCells("Atan", atanhCells, true); }

TEST(ComplexInverse, WhatHoldsForEveryElement) {
    expectElementLoop("Acos", {}, 100);
    expectElementLoop("Acosh", {}, 100);
    expectElementLoop("Asin", {.odd = true}, 100);
    expectElementLoop("Asinh", {.odd = true}, 100);
    // The logarithm of a rounded quotient and that of its reciprocal.
    expectElementLoop("Atan", {.odd = true, .nearly = true}, 100);
    expectElementLoop("Atanh", {.odd = true, .nearly = true}, 100);
}

TEST(ComplexInverse, NotableElements) {
    expectBoth("Acos", 2, 0.0, exactly(0.0), about(-std::acosh(2.0)));
    expectBoth("Acos", 2, -0.0, exactly(0.0), about(std::acosh(2.0)));
    expectBoth("Acosh", -2, 0.0, about(std::acosh(2.0)), exactly(pi));
    expectBoth("Acosh", -2, -0.0, about(std::acosh(2.0)), exactly(-pi));
    expectBoth("Asinh", 0.0, 0.5, exactly(0.0), about(std::asin(0.5)));
    expectBoth("Asinh", -0.0, 0.5, exactly(-0.0), about(std::asin(0.5)));
    expectBoth("Atanh", 1, 0.0, exactly(inf), exactly(0.0));
    expectBoth("Atanh", -1, -0.0, exactly(-inf), exactly(-0.0));
    expectBoth("Acos", 0.0, quietNaN(), exactly(pi / 2), aNaN());
    expectBoth("Acos", 1, quietNaN(), quietOf(quietNaN()), quietOf(quietNaN()));
    // The turn makes (-1, NaN) of this one.
    expectBoth("Asin", quietNaN(), 1, quietOf(quietNaN()), quietOf(quietNaN()));
    for (const double n : nan(false)) expectBoth("Atan", n, 1, quietOf(n), quietOf(n));
    // The correctly rounded value of half the logarithm of 3.
    expectElement<Complex64>("Atanh", 2, 0.0, exactly(bits64(0x3FE193EA7AAD030B)), exactly(pi / 2));
    expectElement<Complex32>("Atanh", 2, 0.0, exactly(bits64(0x3FE193EA7AAD030B)), exactly(pi / 2));
}

// The circle on which the angle is a difference of two angles, and its borders at |1 - x^2 - y^2| = 0.03.
TEST(ComplexInverse, AtanhNextToTheUnitCircle) {
    for (const double radius : {0.9848, 0.98489, 0.985, 1 - 0x1p-30, 1.0, 1 + 0x1p-30, 1.0148, 1.01489, 1.0149})
        for (int step = 1; step < 40; ++step) {
            if (step % 10 == 0) continue;
            const double angle = pi * step / 20, x = radius * std::cos(angle), y = radius * std::sin(angle);
            // Half the sum of the angles at 1 and -1, a quarter of the logarithm of the distances' ratio.
            const double im = (std::atan2(y, 1 + x) + std::atan2(y, 1 - x)) / 2;
            const double re = std::log1p(4 * x / ((1 - x) * (1 - x) + y * y)) / 4;
            expectElement<Complex64>("Atanh", x, y, about(re), about(im));
        }
}

// The sign of a zero chooses the side of a cut; next to the cut the values are those of its side.
struct Cut {
    const char* family;
    bool alongReal;   // the cut lies on the real axis
    double from, to;  // where
};

TEST(ComplexInverse, BranchCuts) {
    constexpr Cut cuts[] = {
        {"Acos", true, 1.0, 50.0},    {"Acos", true, -50.0, -1.0},   {"Acosh", true, -50.0, -1.0},
        {"Acosh", true, -1.0, 1.0},   {"Asin", true, 1.0, 50.0},     {"Asin", true, -50.0, -1.0},
        {"Asinh", false, 1.0, 50.0},  {"Asinh", false, -50.0, -1.0}, {"Atanh", true, 1.0, 50.0},
        {"Atanh", true, -50.0, -1.0}, {"Atan", false, 1.0, 50.0},    {"Atan", false, -50.0, -1.0},
    };
    for (const Cut& cut : cuts)
        for (int step = 1; step < 30; ++step) {
            const double along = cut.from + (cut.to - cut.from) * step / 30;
            for (const bool minus : {false, true}) {
                const auto at = [&](double across) {
                    const double a = signedBy(across, minus);
                    return cut.alongReal ? callOne<Complex64>(cut.family, along, a)
                                         : callOne<Complex64>(cut.family, a, along);
                };
                const Complex64 on = at(0.0), beside = at(0x1p-1000), near = at(0x1p-50);
                // The value on the cut is the limit from the side of the zero's sign.
                for (const Complex64& z : {beside, near}) {
                    EXPECT_NEAR(z.re, on.re, 0x1p-40) << cut.family << text(along, minus);
                    EXPECT_NEAR(z.im, on.im, 0x1p-40) << cut.family << text(along, minus);
                    EXPECT_EQ(std::signbit(z.re), std::signbit(on.re)) << cut.family << text(along, minus);
                    EXPECT_EQ(std::signbit(z.im), std::signbit(on.im)) << cut.family << text(along, minus);
                }
            }
            // The two sides differ.
            const Complex64 above =
                cut.alongReal ? callOne<Complex64>(cut.family, along, 0.0) : callOne<Complex64>(cut.family, 0.0, along);
            const Complex64 below = cut.alongReal ? callOne<Complex64>(cut.family, along, -0.0)
                                                  : callOne<Complex64>(cut.family, -0.0, along);
            EXPECT_GT(std::fabs(above.re - below.re) + std::fabs(above.im - below.im), 0.1) << cut.family << along;
        }
}

// Where the formula for the angle changes: a/A at 0.6417 (arc cosine) and 0.9 (arc sine), a at 1, A at 1.5.
TEST(ComplexInverse, CrossoversAgree) {
    for (const double a : {0.3, 0.6, 0.6417, 0.9, 1 - 0x1p-53, 1.0, 1 + 0x1p-52, 1.2, 1.5, 3.0})
        for (const double b : {0x1p-300, 0x1p-40, 1e-3, 0.1, 0.5, 0.7, 1.0, 1.2, 5.0}) {
            const Complex64 c = callOne<Complex64>("Acos", a, b), s = callOne<Complex64>("Asin", a, b);
            const Complex64 h = callOne<Complex64>("Acosh", a, b), g = callOne<Complex64>("Asinh", -b, a);
            // acos = pi/2 - asin, acosh = i acos, asin = -i asinh(iz).
            EXPECT_NEAR(c.re + s.re, pi / 2, 0x1p-52) << text(a, b);
            EXPECT_NEAR(c.im, -s.im, std::fabs(c.im) * 0x1p-51) << text(a, b);
            EXPECT_TRUE(sameBits(h.re, asBits(-c.im))) << text(a, b);
            EXPECT_TRUE(sameBits(h.im, asBits(c.re))) << text(a, b);
            EXPECT_TRUE(sameBits(g.im, asBits(s.re))) << text(a, b);
            EXPECT_TRUE(sameBits(g.re, asBits(-s.im))) << text(a, b);
        }
}

TEST(ComplexInverse, Flags) {
    // The poles.
    for (const double x : {1.0, -1.0}) {
        EXPECT_TRUE(flagsRaisedBy<Complex64>("Atanh", x, 0.0).either() & flagDivideByZero);
        EXPECT_TRUE(flagsRaisedBy<Complex32>("Atanh", x, -0.0).either() & flagDivideByZero);
        EXPECT_TRUE(flagsRaisedBy<Complex64>("Atan", 0.0, x).either() & flagDivideByZero);
    }
    EXPECT_FALSE(flagsRaisedBy<Complex64>("Atanh", belowOne(false), 0.0).either() & flagDivideByZero);
    // pi/2 is inexact, by an SSE sum; a subnormal part meets an SSE sum too.
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Atanh", 2, 0.0).mxcsr & flagInexact);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Atanh", inf, 0.0).mxcsr & flagInexact);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Atanh", quietNaN(), inf).mxcsr & flagInexact);
    EXPECT_FALSE(flagsRaisedBy<Complex64>("Atanh", 0.0, 0.0).mxcsr & flagInexact);
    EXPECT_EQ(flagsRaisedBy<Complex64>("Atanh", inf, 0x1p-1074).mxcsr & (flagInexact | flagDenormal),
              flagInexact | flagDenormal);
    EXPECT_EQ(flagsRaisedBy<Complex64>("Atanh", 0x1p-1074, inf).mxcsr & (flagInexact | flagDenormal),
              flagInexact | flagDenormal);
    // Nothing is invalid but a signalling NaN.
    for (const char* family : {"Acos", "Acosh", "Asin", "Asinh", "Atan", "Atanh"}) {
        for (const double x : {0.0, 0.5, 2.0, inf, quietNaN()})
            for (const double y : {0.0, 0.5, 2.0, inf, quietNaN()})
                EXPECT_FALSE(flagsRaisedBy<Complex64>(family, x, y).either() & flagInvalid) << family << text(x, y);
        EXPECT_FALSE(flagsRaisedBy<Complex64>(family, 0.5, 0.5).mxcsr & flagUnderflow) << family;
    }
}

TEST(ComplexInverse, Underflow) {
    const double tiny = 0x1p-1060;
    for (const char* family : {"Asin", "Asinh", "Atan", "Atanh"}) {
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, tiny, 0.5).mxcsr & flagUnderflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, 0.5, tiny).mxcsr & flagUnderflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, tiny, 0.0).mxcsr & flagUnderflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex64>(family, 0.0, tiny).mxcsr & flagUnderflow) << family;
        EXPECT_TRUE(flagsRaisedBy<Complex32>(family, 0x1p-140, 0.5).mxcsr & flagUnderflow) << family;
        // The narrowed part alone is subnormal.
        EXPECT_TRUE(flagsRaisedBy<Complex32>(family, 0x1p-149, 0.0).mxcsr & flagUnderflow) << family;
    }
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Acos", 0.5, tiny).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Acos", 0.0, tiny).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Acosh", 0.5, tiny).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Acosh", 0.0, tiny).mxcsr & flagUnderflow);
    EXPECT_TRUE(flagsRaisedBy<Complex64>("Acosh", 5.0, 0x1p-1060).mxcsr & flagUnderflow);
}

}  // namespace
}  // namespace okt::test
