// The margins within which plain extended arithmetic finds what
// the written steps on Complex64 give before the last rounding.
#include "arith/complex_parts.h"
#include "root/multiplicative_root.h"
#include "support/control_state.h"
#include "support/inputs.h"

#include <gtest/gtest.h>

#include <cmath>

namespace okt::test {
namespace {

// Significands that are arbitrary, near a power of two from either side, or short, so that splits meet every case.
Real64 partOf(Random& random) {
    const Real64 sign = random.below(2) == 0 ? 1.0 : -1.0;
    switch (random.below(5)) {
        case 0: return sign * (1 + static_cast<Real64>(random.below(64)) * 0x1p-52);
        case 1: return sign * (2 - static_cast<Real64>(random.below(64) + 1) * 0x1p-52);
        case 2: return sign * (1 + static_cast<Real64>(random.bits() >> 33) * 0x1p-31);
        case 3: return sign * std::ldexp(1 + random.unit(), static_cast<int>(random.below(12)) - 6);
        default: return sign * (1 + random.unit());
    }
}

TEST(ComplexMargins, HoldTheCompensatedSumOfProducts) {
    const ScopedControlState scope({defaultMxcsr, 0x037F});
    Random random(91);
    for (int i = 0; i < 300000; ++i) {
        const Real64 a = partOf(random), b = partOf(random);
        Real64 c = partOf(random), d = partOf(random);
        if (i % 3 == 0) {  // the products cancel but for the last bits
            c = -a * (1 + static_cast<Real64>(random.below(16)) * 0x1p-52);
            d = b * (1 - static_cast<Real64>(random.below(16)) * 0x1p-53);
        }
        const Real80 compensated = Split(a) * Split(b) + Split(c) * Split(d);
        const Measured plain = Measured(a) * Measured(b) + Measured(c) * Measured(d);
        const Real80 distance = std::fabs(compensated - plain.value);
        ASSERT_LE(distance, plain.margin() - 0x1p-500L) << a << ' ' << b << ' ' << c << ' ' << d;

        const Complex64 x[4] = {{a, c}, {c, a}, {a, c}, {c, a}}, y[4] = {{b, d}, {d, b}, {b, d}, {d, b}};
        const FourProducts products(x, y);
        ASSERT_EQ(products.outOfRange(), 0);
        for (int k = 0; k < 4; ++k) ASSERT_LE(5 * 0x1p-64L * plain.size, Real80{products.margins()[k]});
        ASSERT_LE(distance, 5 * 0x1p-64L * plain.size);
    }
}

TEST(ComplexMargins, HoldTheMultiplicativeRoot) {
    const ScopedControlState scope({defaultMxcsr, 0x037F});
    Random random(92);
    for (int i = 0; i < 300000; ++i) {
        const unsigned odd = i & 1;
        std::uint64_t significand = random.bits() | std::uint64_t{1} << 63;
        if (i % 3 == 1) significand = (significand & ~((std::uint64_t{1} << 55) - 1)) + random.below(64);  // left edge
        if (i % 3 == 2) significand = (significand | ((std::uint64_t{1} << 55) - 1)) - random.below(64);   // right edge
        const Real80 m2 = fromBits({significand, static_cast<std::uint16_t>(16383 + odd)});
        const Real80 start = tables::InverseRootStarts[odd << 8 | (significand >> 55 & 0xFF)];
        const Real80 root = std::sqrt(m2);
        ASSERT_LE(std::fabs(rootOfSignificand<Real80>(m2, start).value() - root), 3 * 0x1p-64L * root) << significand;
    }
}

}  // namespace
}  // namespace okt::test
