// Sums, differences, products, squares, moduli, conjugates and complex quotients.
#include "tests/models/arith_model.h"

#include "oktvm.h"
#include "support/flags.h"
#include "support/model_check.h"
#include "support/rows.h"

#include <emmintrin.h>

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

template <class Z>
using PartOf = decltype(Z::re);

template <class Z, int low, int high>
Z ordinaryComplex(Random& random) {
    return {ofMagnitude<PartOf<Z>>(random, low, high), ofMagnitude<PartOf<Z>>(random, low, high)};
}
template <class Z>
Z specialComplex(Random& random) {
    Z z = ordinaryComplex<Z, -4, 4>(random);
    const auto kind = random.below(3);
    const PartOf<Z> re = specialElement<PartOf<Z>>(random), im = specialElement<PartOf<Z>>(random);
    if (kind != 1) std::memcpy(&z.re, &re, sizeof re);
    if (kind != 0) std::memcpy(&z.im, &im, sizeof im);
    return z;
}

constexpr Filling<Complex32> elements32{ordinaryComplex<Complex32, -60, 60>, specialComplex<Complex32>};
constexpr Filling<Complex64> elements64{ordinaryComplex<Complex64, -1000, 1000>, specialComplex<Complex64>};
constexpr Filling<Complex32> near32{ordinaryComplex<Complex32, 0, 1>, specialComplex<Complex32>};
constexpr Filling<Complex64> near64{ordinaryComplex<Complex64, 0, 1>, specialComplex<Complex64>};

// ---------------------------------------------------------------------------------------------------------------------
// Complex functions against their models. Real80 arithmetic does not look at MXCSR, the rest is the caller's.

TEST(Abs, ComplexAgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Complex32, Real32>("oktsAbs_32fc_A24", model::Abs_32fc, elements32);
        expectModel<Complex64, Real64>("oktsAbs_64fc_A53", model::Abs_64fc, elements64);
    });
}

TEST(Mul, ComplexAgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Complex32, Complex32>("oktsMul_32fc_A24", model::Mul_32fc, elements32, elements32);
        expectModel<Complex64, Complex64>("oktsMul_64fc_A53", model::Mul_64fc, near64, near64);
    });
    expectModel<Complex64, Complex64>("oktsMul_64fc_A53", model::Mul_64fc, elements64, elements64);
    expectModel<Complex32, Complex32>("oktsMul_32fc_A24", model::Mul_32fc, near32, near32);
}

TEST(MulByConj, AgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Complex32, Complex32>("oktsMulByConj_32fc_A24", model::MulByConj_32fc, elements32, elements32);
        expectModel<Complex64, Complex64>("oktsMulByConj_64fc_A53", model::MulByConj_64fc, near64, near64);
    });
    expectModel<Complex64, Complex64>("oktsMulByConj_64fc_A53", model::MulByConj_64fc, elements64, elements64);
    expectModel<Complex32, Complex32>("oktsMulByConj_32fc_A24", model::MulByConj_32fc, near32, near32);
}

TEST(Div, ComplexAgreesWithTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectModel<Complex32, Complex32>("oktsDiv_32fc_A24", model::Div_32fc, elements32, elements32);
        expectModel<Complex64, Complex64>("oktsDiv_64fc_A53", model::Div_64fc, near64, near64);
    });
    expectModel<Complex64, Complex64>("oktsDiv_64fc_A53", model::Div_64fc, elements64, elements64);
    expectModel<Complex32, Complex32>("oktsDiv_32fc_A24", model::Div_32fc, near32, near32);
}

// Significands of any number of bits: short ones, results halfway between two numbers, results that cancel.
template <class Z>
Z gradedComplex(Random& random) {
    using Part = PartOf<Z>;
    const auto part = [&] {
        const auto bits = random.below(sizeof(Part) == 8 ? 53 : 24) + 1;
        const auto integer = static_cast<std::int64_t>(random.bits() >> (64 - bits) | 1);
        return static_cast<Part>(random.below(2) == 0 ? integer : -integer);
    };
    const Part re = part();
    switch (random.below(6)) {
        case 0: return {re, re};
        case 1: return {re, -re};
        case 2: return {re, Part{0}};
        default: return {re, part()};
    }
}

// What SSE2 and x87 arithmetic leave in MXCSR and in the x87
// status word, from clear flags and beside a standing "inexact".
struct BothFlags {
    std::uint32_t mxcsr, x87;
    bool operator==(const BothFlags&) const = default;
};

template <class Call>
BothFlags bothFlagsRaised(const Call& call, bool inexactBefore) {
    const ScopedControlState scope({_mm_getcsr() & ~stickyFlags, 0x037F});
    asm volatile("fninit");
    if (inexactBefore) {
        _mm_setcsr(_mm_getcsr() | flagInexact);
        asm volatile("fld1; fldpi; fdivrp; fstp %%st(0)" : : : "st", "st(1)");
    }
    call();
    std::uint16_t status;
    asm volatile("fnstsw %0" : "=a"(status));
    return {_mm_getcsr() & stickyFlags, status & stickyFlags};
}

template <class S, class Function>
void expectBothFlagsOfTheModel(Function f, Function model) {
    constexpr bool twoSources = std::is_invocable_v<Function, const S*, const S*, S*, std::int32_t>;
    Random random(77);
    for (int round = 0; round < 4000; ++round) {
        const auto len = static_cast<std::int32_t>(round % 2 == 0 ? 1 : random.below(12) + 1);
        const auto fill = [&](std::vector<S>& sources) {
            const auto kind = random.below(4);
            for (S& z : sources) {
                const auto own = kind == 3 ? random.below(3) : kind;
                z = own == 0   ? gradedComplex<S>(random)
                    : own == 1 ? ordinaryComplex<S, -60, 60>(random)
                               : specialComplex<S>(random);
            }
        };
        std::vector<S> src1(static_cast<std::size_t>(len)), src2(src1);
        fill(src1);
        fill(src2);
        std::vector<S> dst(src1.size());
        const auto run = [&](Function function) {
            return [&, function] {
                if constexpr (twoSources)
                    function(src1.data(), src2.data(), dst.data(), len);
                else
                    function(src1.data(), &dst.data()->re, len);
            };
        };
        for (const bool before : {false, true}) {
            const BothFlags expected = bothFlagsRaised(run(model), before), actual = bothFlagsRaised(run(f), before);
            ASSERT_EQ(actual.mxcsr, expected.mxcsr) << "round " << round;
            ASSERT_EQ(actual.x87, expected.x87) << "round " << round;
        }
    }
}

TEST(Complex64, RaisesTheX87FlagsOfTheModel) {
    expectBothFlagsOfTheModel<Complex64>(oktsAbs_64fc_A53, model::Abs_64fc);
    expectBothFlagsOfTheModel<Complex64>(oktsMul_64fc_A53, model::Mul_64fc);
    expectBothFlagsOfTheModel<Complex64>(oktsMulByConj_64fc_A53, model::MulByConj_64fc);
    expectBothFlagsOfTheModel<Complex64>(oktsDiv_64fc_A53, model::Div_64fc);
}
TEST(Complex32, RaisesTheFlagsOfTheModelInEveryRoundingMode) {
    inEveryRoundingMode([] {
        expectBothFlagsOfTheModel<Complex32>(oktsAbs_32fc_A24, model::Abs_32fc);
        expectBothFlagsOfTheModel<Complex32>(oktsMul_32fc_A24, model::Mul_32fc);
        expectBothFlagsOfTheModel<Complex32>(oktsMulByConj_32fc_A24, model::MulByConj_32fc);
        expectBothFlagsOfTheModel<Complex32>(oktsDiv_32fc_A24, model::Div_32fc);
    });
}

constexpr Filling<Complex32> graded32{gradedComplex<Complex32>, specialComplex<Complex32>};
constexpr Filling<Complex64> graded64{gradedComplex<Complex64>, specialComplex<Complex64>};

TEST(Complex32, GradedSignificandsAgreeWithTheModel) {
    inEveryRoundingMode([] {
        expectModel<Complex32, Real32>("oktsAbs_32fc_A24", model::Abs_32fc, graded32);
        expectModel<Complex32, Complex32>("oktsMul_32fc_A24", model::Mul_32fc, graded32, graded32);
        expectModel<Complex32, Complex32>("oktsDiv_32fc_A24", model::Div_32fc, graded32, graded32);
    });
}
TEST(Complex64, GradedSignificandsAgreeWithTheModel) {
    expectModel<Complex64, Real64>("oktsAbs_64fc_A53", model::Abs_64fc, graded64);
    expectModel<Complex64, Complex64>("oktsMul_64fc_A53", model::Mul_64fc, graded64, graded64);
    expectModel<Complex64, Complex64>("oktsMulByConj_64fc_A53", model::MulByConj_64fc, graded64, graded64);
    expectModel<Complex64, Complex64>("oktsDiv_64fc_A53", model::Div_64fc, graded64, graded64);
}

// ---------------------------------------------------------------------------------------------------------------------
// Destination on a source, or a few elements off: what the loop over single elements, real part first, leaves.

template <class Z>
using Binary = OktStatus (*)(const Z*, const Z*, Z*, std::int32_t);

template <class Z>
void expectOverlapOfTheLoop(Binary<Z> f, Binary<Z> elementModel, const char* name) {
    constexpr int len = 23, room = 12;
    Random random(51);
    for (int round = 0; round < 40; ++round) {
        std::vector<Z> first(len + 2 * room), second(len + 2 * room);
        for (Z& z : first) z = round % 4 == 3 ? specialComplex<Z>(random) : ordinaryComplex<Z, -2, 2>(random);
        for (Z& z : second) z = round % 4 == 2 ? specialComplex<Z>(random) : ordinaryComplex<Z, -2, 2>(random);
        for (int shift = -room; shift <= room; ++shift)
            for (const bool onFirst : {true, false}) {
                auto a = first, b = second, expectedA = first, expectedB = second;
                auto& expected = onFirst ? expectedA : expectedB;
                auto& actual = onFirst ? a : b;
                for (int i = 0; i < len; ++i)
                    elementModel(&expectedA[static_cast<std::size_t>(room + i)],
                                 &expectedB[static_cast<std::size_t>(room + i)],
                                 &expected[static_cast<std::size_t>(room + i + shift)], 1);
                f(a.data() + room, b.data() + room, actual.data() + room + shift, len);
                ASSERT_EQ(std::memcmp(actual.data(), expected.data(), actual.size() * sizeof(Z)), 0)
                    << name << ", destination " << shift << " above source " << (onFirst ? 1 : 2) << ", round "
                    << round;
            }
    }
}

TEST(Mul, ComplexInPlaceAndOverlapping) {
    expectOverlapOfTheLoop<Complex32>(oktsMul_32fc_A24, model::Mul_32fc, "32fc");
    expectOverlapOfTheLoop<Complex64>(oktsMul_64fc_A53, model::Mul_64fc, "64fc");
}
TEST(MulByConj, InPlaceAndOverlapping) {
    expectOverlapOfTheLoop<Complex32>(oktsMulByConj_32fc_A24, model::MulByConj_32fc, "32fc");
    expectOverlapOfTheLoop<Complex64>(oktsMulByConj_64fc_A53, model::MulByConj_64fc, "64fc");
}
TEST(Div, ComplexInPlaceAndOverlapping) {
    expectOverlapOfTheLoop<Complex32>(oktsDiv_32fc_A24, model::Div_32fc, "32fc");
    expectOverlapOfTheLoop<Complex64>(oktsDiv_64fc_A53, model::Div_64fc, "64fc");
}

// (1 + 2i)(3 + 4i) = -5 + 10i; in place the imaginary part meets the new real part: 1·4 turns into -5·4.
TEST(Mul, ComplexInPlaceTheImaginaryPartMeetsTheNewRealPart) {
    const auto expectPart = [](auto f, auto a, auto b, double re, double im, bool onFirst) {
        f(&a, &b, onFirst ? &a : &b, 1);
        EXPECT_EQ((onFirst ? a : b).re, re);
        EXPECT_EQ((onFirst ? a : b).im, im);
    };
    const Complex32 a{1, 2}, b{3, 4};
    const Complex64 c{1, 2}, d{3, 4};
    expectPart(oktsMul_32fc_A24, a, b, -5, -5 * 4 + 2 * 3, true);
    expectPart(oktsMul_64fc_A53, c, d, -5, -5 * 4 + 2 * 3, true);
    expectPart(oktsMul_32fc_A24, a, b, -5, 1 * 4 + 2 * -5, false);
    expectPart(oktsMul_64fc_A53, c, d, -5, 1 * 4 + 2 * -5, false);
    expectPart(oktsMulByConj_32fc_A24, a, b, 11, 2 * 3 - 11 * 4, true);
    expectPart(oktsMulByConj_64fc_A53, c, d, 11, 2 * 3 - 11 * 4, true);
    expectPart(oktsDiv_32fc_A24, Complex32{1, 2}, Complex32{0, 2}, 1, (-1.0 * 2 + 0) * 0.25, true);
    expectPart(oktsDiv_64fc_A53, Complex64{1, 3}, Complex64{2, 2}, 1, 0.5, true);  // both parts made before a store
}

// ---------------------------------------------------------------------------------------------------------------------
// Values.

TEST(Mul, Complex64KeepsAPartThatCancels) {
    const auto product = [](Complex64 a, Complex64 b) {
        Complex64 z;
        oktsMul_64fc_A53(&a, &b, &z, 1);
        return z;
    };
    EXPECT_EQ(product({1 + 0x1p-27, 1}, {1 - 0x1p-27, 1}).re, -0x1p-54);
    EXPECT_EQ(product({1 + 0x1p-40, 1}, {1 - 0x1p-40, 1}).re, -0x1p-80);
    EXPECT_EQ(product({1 + 0x1p-52, 1 - 0x1p-52}, {1 + 0x1p-52, 1 - 0x1p-52}).re, 0x1p-50);
    // The wide exponent of the intermediate results.
    EXPECT_EQ(product({0x1p1000, 0x1p1000}, {0x1p1000, 0x1p1000}).re, 0.0);
    EXPECT_EQ(product({0x1p-1074, 0x1p-1074}, {0x1p1000, -0x1p1000}).re, 0x1p-73);
}

TEST(Abs, ComplexSpecialValues) {
    constexpr std::uint32_t inf = 0x7F800000, nan = 0x7FC54321;
    struct Case32 {
        std::uint32_t re, im, expected;
    };
    for (const Case32 c :
         {Case32{0, 0, 0}, Case32{0x80000000, 0, 0}, Case32{0, 0x80000000, 0}, Case32{inf, nan, inf},
          Case32{nan, inf | 0x80000000, inf}, Case32{nan, 0x7FE11111, nan}, Case32{0x7F800001, nan, 0x7FC00001},
          Case32{nan, 0x3F800000, nan}, Case32{0x3F800000, 0xFFC54321, 0xFFC54321}, Case32{0x7F7FFFFF, 0x7F7FFFFF, inf},
          Case32{0x40400000, 0x40800000, 0x40A00000}, Case32{1, 0, 1}, Case32{3, 0x80000004, 5}})
        for (const std::int32_t len : {1, 4, 7}) {
            std::vector<Complex32> src(static_cast<std::size_t>(len), Complex32{3, 4});
            std::vector<Real32> dst(static_cast<std::size_t>(len));
            storeBits(&src.back().re, c.re);
            storeBits(&src.back().im, c.im);
            EXPECT_EQ(oktsAbs_32fc_A24(src.data(), dst.data(), len), oktStatusOk);
            EXPECT_TRUE(sameBits(dst.back(), c.expected)) << std::hex << c.re << ' ' << c.im;
        }
    const auto modulus = [](std::uint64_t re, std::uint64_t im) {
        const Complex64 z{bits64(re), bits64(im)};
        Real64 r;
        EXPECT_EQ(oktsAbs_64fc_A53(&z, &r, 1), oktStatusOk);
        return r;
    };
    EXPECT_TRUE(sameBits(modulus(0x7FEFFFFFFFFFFFFF, 0x7FEFFFFFFFFFFFFF), 0x7FF0000000000000));
    EXPECT_TRUE(sameBits(modulus(3, 4), 5));  // subnormals
    EXPECT_TRUE(sameBits(modulus(0x0008000000000000, 0), 0x0008000000000000));
    EXPECT_TRUE(sameBits(modulus(0x8000000000000000, 0), 0));
    EXPECT_TRUE(sameBits(modulus(0xFFF0000000000000, 0x7FF8ABCDE0001234), 0x7FF0000000000000));
    EXPECT_TRUE(sameBits(modulus(0x7FF8ABCDE0001234, 0xFFF0000000000000), 0x7FF0000000000000));
    EXPECT_TRUE(sameBits(modulus(0x7FF8ABCDE0001234, 0x7FF8000000000001), 0x7FF8ABCDE0001234));
}

// The zero test of the 64-bit type is one of patterns: subnormal parts are no zeros, whatever the caller's setting.
TEST(Abs, Complex64OfSubnormalsUnderDenormalsAreZero) {
    const Complex64 z{bits64(3), bits64(4)}, zero{0.0, -0.0};
    Real64 r, none;
    {
        const ScopedControlState scope({defaultMxcsr | denormalsAreZero, 0x037F});
        oktsAbs_64fc_A53(&z, &r, 1);
        oktsAbs_64fc_A53(&zero, &none, 1);
    }
    EXPECT_TRUE(sameBits(r, 5));
    EXPECT_TRUE(sameBits(none, 0));
}

// Of two NaNs the larger significand comes through in extended
// arithmetic, a signalling NaN being quieted when it is loaded.
TEST(Mul, Complex64OfTwoNaNsGivesTheLargerSignificand) {
    for (const std::uint64_t quiet : {std::uint64_t{0x7FF8000000000000}, std::uint64_t{0xFFF8000000000000}}) {
        const Complex64 a{bits64(0xFFF0000000000001), -1.0}, b{bits64(quiet), 2.0};
        Complex64 z;
        oktsMul_64fc_A53(&a, &b, &z, 1);
        EXPECT_TRUE(sameBits(z.re, 0xFFF8000000000001));
        oktsMulByConj_64fc_A53(&a, &b, &z, 1);
        EXPECT_TRUE(sameBits(z.re, 0xFFF8000000000001));
        oktsDiv_64fc_A53(&a, &b, &z, 1);
        EXPECT_TRUE(sameBits(z.re, 0xFFF8000000000001));
    }
}

TEST(Div, ComplexByZeroTakesTheCourseOfTheArithmetic) {
    const Complex64 a{1, 2}, zero{0, 0};
    Complex64 z;
    EXPECT_EQ(oktsDiv_64fc_A53(&a, &zero, &z, 1), oktStatusOk);
    EXPECT_TRUE(std::isnan(z.re) && std::isnan(z.im));  // 0 times infinity
    const Complex32 b{1, 2}, none{0, 0};
    Complex32 w;
    EXPECT_EQ(oktsDiv_32fc_A24(&b, &none, &w, 1), oktStatusOk);
    EXPECT_TRUE(std::isnan(w.re) && std::isnan(w.im));
}

// ---------------------------------------------------------------------------------------------------------------------
// Real Abs and Conj: no arithmetic.

TEST(Abs, RealClearsTheSignAndNothingElse) {
    expectRows<Real32>(oktsAbs_32f_A24, -2.0f,
                       {
                           {0xFF800001, 0x7F800001},
                           {0x7FA12345, 0x7FA12345},
                           {0xFFC54321, 0x7FC54321},
                           {0x80000000, 0x00000000},
                           {0x80000001, 0x00000001},
                           {0xFF800000, 0x7F800000},
                       });
    expectRows<Real64>(oktsAbs_64f_A53, -2.0,
                       {
                           {0xFFF0000000000001, 0x7FF0000000000001},
                           {0xFFF4123400000000, 0x7FF4123400000000},
                           {0x8000000000000000, 0x0000000000000000},
                           {0x800FFFFFFFFFFFFF, 0x000FFFFFFFFFFFFF},
                       });
    EXPECT_EQ(flagsAlone(oktsAbs_32f_A24, bits32(0xFF800001)), 0u);
    EXPECT_EQ(flagsAlone(oktsAbs_64f_A53, bits64(0xFFF0000000000001)), 0u);
}

template <class Z>
void expectConj(OktStatus (*f)(const Z*, Z*, std::int32_t)) {
    using T = PartOf<Z>;
    constexpr auto sign = asBits(T{-0.0});
    const auto& specials = specialValues<T>();
    std::vector<Z> src(specials.size() + 3, Z{1, 2}), dst(src.size());
    for (std::size_t i = 0; i < specials.size(); ++i) {
        std::memcpy(&src[i].re, &specials[i], sizeof(T));
        std::memcpy(&src[i].im, &specials[specials.size() - 1 - i], sizeof(T));
    }
    const auto flags = flagsRaised([&] { f(src.data(), dst.data(), static_cast<std::int32_t>(src.size())); });
    EXPECT_EQ(flags, 0u);
    for (std::size_t i = 0; i < src.size(); ++i) {
        EXPECT_TRUE(sameBits(dst[i].re, loadBits(&src[i].re)));
        EXPECT_TRUE(sameBits(dst[i].im, loadBits(&src[i].im) ^ sign));
    }
}
TEST(Conj, InvertsTheImaginarySignAndNothingElse) {
    expectConj<Complex32>(oktsConj_32fc_A24);
    expectConj<Complex64>(oktsConj_64fc_A53);
}

// ---------------------------------------------------------------------------------------------------------------------
// Sums, differences, products, squares of reals: one processor operation with the operands in their order.

Real32 processorAdd(Real32 a, Real32 b) { return model::ordered::add(a, b); }
Real64 processorAdd(Real64 a, Real64 b) { return model::ordered::add(a, b); }
Real32 processorMul(Real32 a, Real32 b) { return model::ordered::mul(a, b); }
Real64 processorMul(Real64 a, Real64 b) { return model::ordered::mul(a, b); }
Real32 processorSub(Real32 a, Real32 b) { return model::ordered::sub(a, b); }
Real64 processorSub(Real64 a, Real64 b) { return model::ordered::sub(a, b); }

template <class T, class Operation>
void expectElementwise(Binary<T> f, const Operation& operation, const char* name) {
    Random random(61);
    for (std::int32_t len = 1; len <= 40; ++len) {
        const auto n = static_cast<std::size_t>(len);
        const auto a = mixedValues<T>(n, random.bits()), b = mixedValues<T>(n, random.bits());
        std::vector<T> dst(n);
        underEveryMxcsr([&] {
            ASSERT_EQ(f(a.data(), b.data(), dst.data(), len), oktStatusOk);
            for (std::size_t i = 0; i < n; ++i) {
                const T expected = operation(a[i], b[i]);
                ASSERT_TRUE(sameBits(dst[i], loadBits(&expected))) << name << " of " << patternsOf<T>({a[i], b[i]});
            }
        });
    }
    // Every pair of special values, NaNs with two payloads among them, in the vector part of the loop.
    const auto& specials = specialValues<T>();
    for (const T& x : specials) {
        std::vector<T> src1(specials.size()), dst(specials.size());
        for (T& element : src1) std::memcpy(&element, &x, sizeof x);
        f(src1.data(), specials.data(), dst.data(), static_cast<std::int32_t>(specials.size()));
        for (std::size_t i = 0; i < specials.size(); ++i) {
            const T expected = operation(x, specials[i]);
            ASSERT_TRUE(sameBits(dst[i], loadBits(&expected))) << name << " of " << patternsOf<T>({x, specials[i]});
        }
    }
}

TEST(Add, IsTheProcessorsSumUnderEveryMxcsr) {
    expectElementwise<Real32>(
        oktsAdd_32f_A24, [](Real32 a, Real32 b) { return processorAdd(a, b); }, "Add_32f");
    expectElementwise<Real64>(
        oktsAdd_64f_A53, [](Real64 a, Real64 b) { return processorAdd(a, b); }, "Add_64f");
}
TEST(Sub, IsTheProcessorsDifferenceUnderEveryMxcsr) {
    expectElementwise<Real32>(
        oktsSub_32f_A24, [](Real32 a, Real32 b) { return processorSub(a, b); }, "Sub_32f");
    expectElementwise<Real64>(
        oktsSub_64f_A53, [](Real64 a, Real64 b) { return processorSub(a, b); }, "Sub_64f");
}
TEST(Mul, IsTheProcessorsProductUnderEveryMxcsr) {
    expectElementwise<Real32>(
        oktsMul_32f_A24, [](Real32 a, Real32 b) { return processorMul(a, b); }, "Mul_32f");
    expectElementwise<Real64>(
        oktsMul_64f_A53, [](Real64 a, Real64 b) { return processorMul(a, b); }, "Mul_64f");
}
TEST(Sqr, IsTheProcessorsSquareUnderEveryMxcsr) {
    const Binary<Real32> sqr32 = [](const Real32* a, const Real32*, Real32* dst, std::int32_t len) {
        return oktsSqr_32f_A24(a, dst, len);
    };
    const Binary<Real64> sqr64 = [](const Real64* a, const Real64*, Real64* dst, std::int32_t len) {
        return oktsSqr_64f_A53(a, dst, len);
    };
    expectElementwise<Real32>(
        sqr32, [](Real32 a, Real32) { return processorMul(a, a); }, "Sqr_32f");
    expectElementwise<Real64>(
        sqr64, [](Real64 a, Real64) { return processorMul(a, a); }, "Sqr_64f");
}

TEST(Add, OfTwoNaNsTheFirstComesThrough) {
    expectRows<Real32>(oktsAdd_32f_A24, 3,
                       {{0x7FC54321, 0x7FE11111, 0x7FC54321}, {0xFF800001, 0x7FE11111, 0xFFC00001}});
    expectRows<Real32>(oktsMul_32f_A24, 3,
                       {{0x7FC54321, 0x7FE11111, 0x7FC54321}, {0xFF800001, 0x7FE11111, 0xFFC00001}});
    expectRows<Real32>(oktsSub_32f_A24, 3,
                       {{0x7FC54321, 0x7FE11111, 0x7FC54321}, {0x3F800000, 0xFFA12345, 0xFFE12345}});
    expectRows<Real64>(oktsAdd_64f_A53, 3, {{0x7FF8ABCDE0001234, 0x7FF8000000000001, 0x7FF8ABCDE0001234}});
    expectRows<Real64>(oktsMul_64f_A53, 3, {{0x7FF0000000000001, 0x7FF8ABCDE0001234, 0x7FF8000000000001}});
}

// Complex sums are sums of the parts. With the destination on a source, below it, or 8 and
// more reals above it, the result is that of the ascending loop; between, nothing is promised.
template <class Z>
void expectComplexOverlap(Binary<Z> f, int sign) {
    using T = PartOf<Z>;
    constexpr int reals = 46, room = 20;
    std::vector<T> first(reals + 2 * room), second(reals + 2 * room);
    for (std::size_t i = 0; i < first.size(); ++i) {
        first[i] = static_cast<T>(i + 1);
        second[i] = static_cast<T>(3 * i) - T(0.5);
    }
    for (int shift = -room; shift <= room; ++shift) {
        if (shift > 0 && shift < 8) continue;
        auto a = first, b = second, expected = first;
        for (std::size_t i = room; i < room + reals; ++i)
            expected[static_cast<std::size_t>(static_cast<int>(i) + shift)] =
                expected[i] + static_cast<T>(sign) * second[i];
        const auto at = [](std::vector<T>& v, int i) { return reinterpret_cast<Z*>(v.data() + i); };
        f(at(a, room), at(b, room), at(a, room + shift), reals / 2);
        EXPECT_EQ(a, expected) << shift;
    }
}
TEST(Add, ComplexOverlap) {
    expectComplexOverlap<Complex32>(oktsAdd_32fc_A24, 1);
    expectComplexOverlap<Complex64>(oktsAdd_64fc_A53, 1);
    expectComplexOverlap<Complex32>(oktsSub_32fc_A24, -1);
    expectComplexOverlap<Complex64>(oktsSub_64fc_A53, -1);
}

}  // namespace
}  // namespace okt::test
