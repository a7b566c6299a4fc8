// Inverse hyperbolic functions.
#include "tests/models/hyper_model.h"

#include "hyperbolic_elements.h"
#include "oktvm.h"

#include <cmath>
#include <limits>

namespace okt::test {
namespace {

template <class T>
constexpr bool wide = sizeof(T) == 8;

// Either sign, all sizes that any of the functions takes for ordinary.
template <class T>
T ordinary(Random& random) {
    return random.below(2) ? ofMagnitude<T>(random, -60, 30) : ofMagnitude<T>(random, -4, 3);
}
template <class T>
T special(Random& random) {
    if (random.below(2)) return specialElement<T>(random);
    return ofMagnitude<T>(random, wide<T> ? -1022 : -126, wide<T> ? 1023 : 127);
}
template <class T>
T aboveOne(Random& random) {
    const T x = std::fabs(ofMagnitude<T>(random, -20, 29));
    return random.below(2) ? 1 + x : x + T(1.03125);
}
template <class T>
T insideOne(Random& random) {
    return random.below(2) ? ofMagnitude<T>(random, -60, -1) : static_cast<T>(random.between(-1, 1));
}
template <class T>
constexpr Filling<T> anywhere{ordinary<T>, special<T>};
template <class T>
constexpr Filling<T> fromOne{aboveOne<T>, special<T>};
template <class T>
constexpr Filling<T> unitInterval{insideOne<T>, special<T>};

template <class T>
UnaryRoutine<T> asinhOf() {
    if constexpr (wide<T>)
        return oktsAsinh_64f_A53;
    else
        return oktsAsinh_32f_A24;
}
template <class T>
UnaryRoutine<T> acoshOf() {
    if constexpr (wide<T>)
        return oktsAcosh_64f_A53;
    else
        return oktsAcosh_32f_A24;
}

template <class T>
testing::AssertionResult closeTo(T actual, long double exact, long double units) {
#if defined(_WIN32)
    // The extended functions of mingw's C library err by thousands of units of a Real64 and can
    // judge nothing there. That the bits are those of the other systems is tested by the digests.
    if constexpr (sizeof(T) == 8) return testing::AssertionSuccess();
#endif
    const T nearest = static_cast<T>(exact);
    const long double unit =
        std::nextafter(std::fabs(nearest), std::numeric_limits<T>::infinity()) - std::fabs(nearest);
    const long double error = std::fabs(actual - exact) / unit;
    if (error <= units && std::signbit(actual) == std::signbit(nearest)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << std::hexfloat << actual << " is " << std::defaultfloat << error
                                       << " units off";
}

// Every element of strewn arrays: what is prescribed to the bit is met with its status, everything else is accurate.
template <class T, class Prescribed, class Exact>
void expectPrescribedOrAccurate(UnaryRoutine<T> f, const Filling<T>& filling, const Prescribed& prescribed,
                                const Exact& exact) {
    Random random(21);
    for (std::size_t done = 0; done < elementsToCompare(); done += 300) {
        const std::vector<T> src = strewn(random, 1 + random.below(300), filling, 40);
        std::vector<T> dst(src.size());
        const OktStatus status = f(src.data(), dst.data(), static_cast<std::int32_t>(src.size()));
        OktStatus expectedStatus = oktStatusOk;
        for (std::size_t i = 0; i < src.size(); ++i) {
            if (const auto result = prescribed(src[i], expectedStatus)) {
                ASSERT_TRUE(sameBits(dst[i], loadBits(&*result))) << patternsOf(std::vector<T>{src[i]});
            } else {
                ASSERT_TRUE(closeTo(dst[i], exact(static_cast<long double>(src[i])), 0.53L))
                    << patternsOf(std::vector<T>{src[i]});
            }
        }
        ASSERT_EQ(status, expectedStatus);
    }
}

constexpr auto asinhExact = [](long double x) { return std::asinh(x); };
constexpr auto acoshExact = [](long double x) { return std::acosh(x); };
constexpr auto atanhExact = [](long double x) { return std::atanh(x); };
constexpr auto asinhPrescribed = [](auto x, OktStatus&) { return model::inverse_hyper::asinhPrescribed(x); };
constexpr auto acoshPrescribed = [](auto x, OktStatus& status) {
    return model::inverse_hyper::acoshPrescribed(x, status);
};
constexpr auto atanhPrescribed = [](auto x, OktStatus& status) {
    return model::inverse_hyper::atanhPrescribed(x, status);
};

// Both sides of the bounds between the methods, of both signs, alone and in arrays.
template <class T, class Prescribed, class Exact>
void expectAround(UnaryRoutine<T> f, T filler, const Prescribed& prescribed, const Exact& exact,
                  std::initializer_list<T> bounds) {
    for (const T bound : bounds)
        for (const T x :
             {std::nextafter(bound, T(0)), bound, std::nextafter(bound, std::numeric_limits<T>::infinity())})
            for (const T signedX : {x, -x})
                for (std::int32_t position = -1; position < 70; position += 3) {
                    const auto actual = position < 0 ? alone(f, signedX) : among(f, signedX, filler, 70, position);
                    OktStatus status = oktStatusOk;
                    if (const auto result = prescribed(signedX, status)) {
                        EXPECT_TRUE(sameBits(actual.value, loadBits(&*result))) << signedX;
                    } else {
                        EXPECT_TRUE(closeTo(actual.value, exact(static_cast<long double>(signedX)), 0.53L)) << signedX;
                    }
                    EXPECT_EQ(actual.status, status) << signedX;
                }
}

// Flags of one element alone and in a chunk of ordinary neighbours, from which only the inexact flag comes.
template <class T>
void expectFlags(UnaryRoutine<T> f, T filler, T x, std::uint32_t expected) {
    EXPECT_EQ(flagsAlone(f, x), expected) << patternsOf(std::vector<T>{x});
    for (const std::size_t position : {0u, 17u, 63u, 64u, 69u}) {
        std::vector<T> src(70, filler), dst(70);
        storeBits(&src[position], loadBits(&x));
        EXPECT_EQ(flagsRaised([&] { f(src.data(), dst.data(), 70); }) | flagInexact, expected | flagInexact)
            << patternsOf(std::vector<T>{x}) << "at " << position;
    }
}

template <class T>
class InverseHyperbolic : public testing::Test {};
using Reals = testing::Types<Real32, Real64>;
TYPED_TEST_SUITE(InverseHyperbolic, Reals);

TYPED_TEST(InverseHyperbolic, PrescribedResultsAndAccuracy) {
    using T = TypeParam;
    expectPrescribedOrAccurate<T>(asinhOf<T>(), anywhere<T>, asinhPrescribed, asinhExact);
    expectPrescribedOrAccurate<T>(acoshOf<T>(), fromOne<T>, acoshPrescribed, acoshExact);
    if constexpr (wide<T>)
        expectPrescribedOrAccurate<T>(oktsAtanh_64f_A53, unitInterval<T>, atanhPrescribed, atanhExact);
}

TYPED_TEST(InverseHyperbolic, BothSidesOfEveryRange) {
    using T = TypeParam;
    const T max = std::numeric_limits<T>::max(), min = std::numeric_limits<T>::min();
    expectAround<T>(asinhOf<T>(), 2, asinhPrescribed, asinhExact, {min, T(0x1p-57), T(0.125), T(1), T(0x1p28), max});
    expectAround<T>(acoshOf<T>(), 2, acoshPrescribed, acoshExact, {T(1), T(1.0625), T(0x1p28), max});
    if constexpr (wide<T>)
        expectAround<T>(oktsAtanh_64f_A53, 0.5, atanhPrescribed, atanhExact, {min, T(0x1p-57), T(0.0625), T(1), max});
}

TYPED_TEST(InverseHyperbolic, OnlyWarningsAndSignallingNaNsRaiseMoreThanInexact) {
    using T = TypeParam;
    const T infinity = std::numeric_limits<T>::infinity(), quiet = std::numeric_limits<T>::quiet_NaN();
    const T signalling = std::bit_cast<T>(static_cast<PatternOf<T>>(asBits(infinity) + 1));
    const T subnormal = std::numeric_limits<T>::denorm_min();
    for (const T x : {T(0), subnormal, T(0x1p-60), infinity, -infinity, quiet}) expectFlags<T>(asinhOf<T>(), 2, x, 0);
    expectFlags<T>(asinhOf<T>(), 2, signalling, flagInvalid);
    for (const T x : {T(1), infinity, quiet}) expectFlags<T>(acoshOf<T>(), 2, x, 0);
    for (const T x : {signalling, T(0.5), T(0), T(-2), -infinity}) expectFlags<T>(acoshOf<T>(), 2, x, flagInvalid);
    if constexpr (wide<T>) {
        for (const T x : {T(0), subnormal, T(0x1p-60), quiet}) expectFlags<T>(oktsAtanh_64f_A53, 0.5, x, 0);
        for (const T x : {signalling, T(1.5), infinity}) expectFlags<T>(oktsAtanh_64f_A53, 0.5, x, flagInvalid);
        for (const T x : {T(1), T(-1)}) expectFlags<T>(oktsAtanh_64f_A53, 0.5, x, flagDivideByZero);
    }
}

TEST(Asinh, SpecialValues) {
    expectRows<Real32>(oktsAsinh_32f_A24, 1,
                       {
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x00000001, 0x00000001},
                           {0x7F800000, 0x7F800000},
                           {0xFF800000, 0xFF800000},
                       });
    expectNaNsQuieted<Real32>(oktsAsinh_32f_A24, 1);
    expectRows<Real64>(oktsAsinh_64f_A53, 1,
                       {
                           {0x0000000000000000, 0x0000000000000000},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x8000000000000001, 0x8000000000000001},
                           {0x7FF0000000000000, 0x7FF0000000000000},
                           {0xFFF0000000000000, 0xFFF0000000000000},
                       });
    expectNaNsQuieted<Real64>(oktsAsinh_64f_A53, 1);
}

// The powers of a large element's neighbour in a block are not its own.
TEST(Asinh, ASmallElementBesideALargeOneRaisesNoOverflow) {
    for (const Real32 large : {3e23f, 3.1e23f, 1.3e24f, 3e38f}) {
        const Real32 src[] = {0.1f, large, 1, 1, 1, 1, 1, 1};
        Real32 dst[8];
        EXPECT_EQ(flagsRaised([&] { oktsAsinh_32f_A24(src, dst, 8); }), flagInexact) << large;
        for (std::size_t i = 0; i < 8; ++i)
            EXPECT_TRUE(sameBits(dst[i], asBits(alone(oktsAsinh_32f_A24, src[i]).value))) << src[i];
    }
}

TEST(Acosh, ASmallElementBesideALargeOneRaisesNoOverflow) {
    const Real32 src[] = {1.01f, 3e38f, 2, 2, 2, 2, 2, 2};
    Real32 dst[8];
    EXPECT_EQ(flagsRaised([&] { oktsAcosh_32f_A24(src, dst, 8); }), flagInexact);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_TRUE(sameBits(dst[i], asBits(alone(oktsAcosh_32f_A24, src[i]).value))) << src[i];
}

TEST(Acosh, SpecialValues) {
    expectRows<Real32>(oktsAcosh_32f_A24, 3,
                       {
                           {0x3F800000, 0x00000000},
                           {0x7F800000, 0x7F800000},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0x3F7FFFFF, 0xFFC00000, oktStatusDomain},
                           {0x00000000, 0xFFC00000, oktStatusDomain},
                           {0x80000001, 0xFFC00000, oktStatusDomain},
                           {0xC0000000, 0xFFC00000, oktStatusDomain},
                       });
    expectNaNsQuieted<Real32>(oktsAcosh_32f_A24, 3);
    expectRows<Real64>(oktsAcosh_64f_A53, 3,
                       {
                           {0x3FF0000000000000, 0x0000000000000000},
                           {0x7FF0000000000000, 0x7FF0000000000000},
                           {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0x3FEFFFFFFFFFFFFF, 0xFFF8000000000000, oktStatusDomain},
                           {0x8000000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0xBFF8000000000000, 0xFFF8000000000000, oktStatusDomain},
                       });
    expectNaNsQuieted<Real64>(oktsAcosh_64f_A53, 3);
}

TEST(Atanh, SpecialValues) {
    expectRows<Real32>(oktsAtanh_32f_A24, 0.25f,
                       {
                           {0x00000000, 0x00000000},
                           {0x80000000, 0x80000000},
                           {0x3F800000, 0x7F800000, oktStatusSingularity},
                           {0xBF800000, 0xFF800000, oktStatusSingularity},
                           {0x3F800001, 0xFFC00000, oktStatusDomain},
                           {0xBF800001, 0xFFC00000, oktStatusDomain},
                           {0x7F800000, 0xFFC00000, oktStatusDomain},
                           {0xFF800000, 0xFFC00000, oktStatusDomain},
                           {0x7FC54321, 0x7FC54321},
                           {0xFFC54321, 0xFFC54321},
                           {0x7F800001, 0x7F800001},  // signalling ones stay so
                           {0xFFA12345, 0xFFA12345},
                       });
    expectRows<Real64>(oktsAtanh_64f_A53, 0.25,
                       {
                           {0x0000000000000000, 0x0000000000000000},
                           {0x8000000000000000, 0x8000000000000000},
                           {0x3FF0000000000000, 0x7FF0000000000000, oktStatusSingularity},
                           {0xBFF0000000000000, 0xFFF0000000000000, oktStatusSingularity},
                           {0x3FF0000000000001, 0xFFF8000000000000, oktStatusDomain},
                           {0xC000000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0x7FF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                           {0xFFF0000000000000, 0xFFF8000000000000, oktStatusDomain},
                       });
    expectNaNsQuieted<Real64>(oktsAtanh_64f_A53, 0.25);
}

TEST(Atanh, AgreesWithTheModel) {
    expectModel<Real32, Real32>("oktsAtanh_32f_A24", model::Atanh_32f, unitInterval<Real32>);
    expectModelAround<Real32>(oktsAtanh_32f_A24, model::Atanh_32f, 0.3f,
                              {0x3F19999A, 0x3F400000, 0x3F800000, 0x7F800000, 0x3F300000, 0x00800000, 0x00000002});
}

TEST(Atanh, FlagsAreThoseOfTheModel) {
    expectModelFlagsByDefault<Real32>(oktsAtanh_32f_A24, model::Atanh_32f, unitInterval<Real32>);
}

TEST(Atanh, PolesRaiseDivideByZero) {
    expectFlag<Real32>(oktsAtanh_32f_A24, flagDivideByZero, true, {1.0F, -1.0F});
    expectFlag<Real32>(oktsAtanh_32f_A24, flagInvalid, false, {1.0F, 2.0F, -5.0F});  // outside the domain, too
    expectFlag<Real64>(oktsAtanh_64f_A53, flagDivideByZero, true, {1.0, -1.0});
    expectFlag<Real64>(oktsAtanh_64f_A53, flagInvalid, true, {2.0, -5.0, HUGE_VAL});
}

}  // namespace
}  // namespace okt::test
