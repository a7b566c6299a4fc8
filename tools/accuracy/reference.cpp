#include "reference.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace okt::accuracy {
namespace {

struct Complex {
    Real re, im;
};

Real square(const Real& x) { return x * x; }

// i*z and -i*z: exact, and they keep the signs of zeros.
Complex timesI(const Complex& z) { return {-z.im, z.re}; }
Complex timesMinusI(const Complex& z) { return {z.im, -z.re}; }

Complex conj(const Complex& z) { return {z.re, -z.im}; }
Complex operator+(const Complex& a, const Complex& b) { return {a.re + b.re, a.im + b.im}; }
Complex operator-(const Complex& a, const Complex& b) { return {a.re - b.re, a.im - b.im}; }
Complex operator*(const Complex& a, const Complex& b) {
    return {differenceOfProducts(a.re, b.re, a.im, b.im), sumOfProducts(a.re, b.im, a.im, b.re)};
}
Complex operator/(const Complex& a, const Complex& b) {
    const Complex product = a * conj(b);
    const Real norm = sumOfProducts(b.re, b.re, b.im, b.im);
    return {product.re / norm, product.im / norm};
}

Real abs(const Complex& z) { return hypot(z.re, z.im); }
Real arg(const Complex& z) { return atan2(z.im, z.re); }

// The root with the larger part comes from a sum of terms of one sign, the other part from their product.
Complex sqrt(const Complex& z) {
    if (z.re.isZero() && z.im.isZero()) return {0.0, z.im};
    const Real larger = sqrt(scaled(hypot(z.re, z.im) + abs(z.re), -1));
    const Real smaller = abs(z.im) / scaled(larger, 1);
    if (!z.re.isNegative()) return {larger, copysign(smaller, z.im)};
    return {smaller, copysign(larger, z.im)};
}

// ln|z|. Near |z| = 1 it is half of log1p(|z|^2 - 1): the square of the larger part less 1 is exact (the part has at
// most 53 bits), so that the sum with the other square is rounded once, after the cancellation.
Real logModulus(const Complex& z) {
    const Real modulus = hypot(z.re, z.im);
    if (modulus < 0.5 || 2.0 < modulus) return log(modulus);
    const bool realIsLarger = abs(z.im) < abs(z.re);
    const Real& larger = realIsLarger ? z.re : z.im;
    const Real& smaller = realIsLarger ? z.im : z.re;
    return scaled(log1p((square(larger) - 1.0) + square(smaller)), -1);
}

Complex log(const Complex& z) { return {logModulus(z), arg(z)}; }

Complex log10(const Complex& z) {
    const Complex w = log(z);
    const Real log10e = 1.0 / log(Real(10.0));
    return {w.re * log10e, w.im * log10e};
}

Complex exp(const Complex& z) {
    const Real modulus = exp(z.re);
    return {modulus * cos(z.im), modulus * sin(z.im)};
}

Complex sinh(const Complex& z) { return {sinh(z.re) * cos(z.im), cosh(z.re) * sin(z.im)}; }
Complex cosh(const Complex& z) { return {cosh(z.re) * cos(z.im), sinh(z.re) * sin(z.im)}; }
Complex sin(const Complex& z) { return timesMinusI(sinh(timesI(z))); }
Complex cos(const Complex& z) { return cosh(timesI(z)); }

// (sinh x cosh x + i sin y cos y) / (sinh^2 x + cos^2 y). Beyond |x| = 400 the denominator is e^2|x|/4 to more than
// 1000 bits, and e^2|x| itself might leave even MPFR's exponent range.
Complex tanh(const Complex& z) {
    const Real sinCos = sin(z.im) * cos(z.im);
    if (400.0 < abs(z.re)) return {copysign(1.0, z.re), scaled(sinCos, 2) * exp(scaled(abs(z.re), 1) * -1.0)};
    const Real s = sinh(z.re);
    const Real denominator = square(s) + square(cos(z.im));
    return {s * cosh(z.re) / denominator, sinCos / denominator};
}

Complex tan(const Complex& z) { return timesMinusI(tanh(timesI(z))); }

// Arc functions after Kahan, from the roots of 1 - z and 1 + z. 1 - x and 1 + x lose nothing: they are exact where
// they cancel. In every product below the two terms have one sign.
Complex asin(const Complex& z) {
    const Complex a = sqrt(Complex{1.0 - z.re, -z.im});
    const Complex b = sqrt(Complex{1.0 + z.re, z.im});
    return {atan2(z.re, a.re * b.re - a.im * b.im), asinh(a.re * b.im - a.im * b.re)};
}

Complex acos(const Complex& z) {
    const Complex a = sqrt(Complex{1.0 - z.re, -z.im});
    const Complex b = sqrt(Complex{1.0 + z.re, z.im});
    return {scaled(atan2(a.re, b.re), 1), asinh(b.re * a.im - b.im * a.re)};
}

Complex acosh(const Complex& z) {
    const Complex a = sqrt(Complex{z.re - 1.0, z.im});
    const Complex b = sqrt(Complex{z.re + 1.0, z.im});
    return {asinh(a.re * b.re + a.im * b.im), scaled(atan2(a.im, b.re), 1)};
}

// re: log1p(4x / ((1-x)^2 + y^2)) / 4 for x >= 0, and odd in x. im: half the angle of (1-x)(1+x) - y^2 + 2iy; where
// that difference cancels it is small beside 2y and the angle does not depend on it.
Complex atanh(const Complex& z) {
    const Real x = abs(z.re);
    const Real re = scaled(log1p(scaled(x, 2) / (square(1.0 - x) + square(z.im))), -2);
    const Real im = scaled(atan2(scaled(z.im, 1), (1.0 - x) * (1.0 + x) - square(z.im)), -1);
    return {copysign(re, z.re), im};
}

Complex asinh(const Complex& z) { return timesMinusI(asin(timesI(z))); }
Complex atan(const Complex& z) { return timesMinusI(atanh(timesI(z))); }

bool agree(const Real& a, const Real& b, int bits) {
    if (!a.isFinite() || !b.isFinite() || a == b) return true;
    if (a.isZero() || b.isZero()) return false;
    const Real difference = a - b;
    return difference.isZero() || difference.exponent() < b.exponent() - bits;
}

// exp(b log a). The product may cancel and its imaginary part may be many turns, so the precision grows until two
// evaluations agree. A part that still has no settled leading bit at the last precision is an exact zero: its
// computed value stands below 2^-1500 of the other part.
Complex pow(const Complex& a, const Complex& b) {
    if (a.re.isZero() && a.im.isZero()) {
        if (!b.re.isNegative() && !b.re.isZero()) return {0.0, 0.0};
        if (b.re.isZero() && b.im.isZero()) return {1.0, 0.0};
    }
    Complex last;
    for (mpfr_prec_t bits : {256, 512, 1024, 2048}) {
        const PrecisionScope scope(bits);
        Complex next = exp(b * log(a));
        if (bits > 256 && agree(last.re, next.re, 170) && agree(last.im, next.im, 170)) return next;
        last = std::move(next);
    }
    for (auto [part, other] : {std::pair{&last.re, &last.im}, {&last.im, &last.re}}) {
        const bool vanishes = part->isFinite() && other->isFinite() && !part->isZero() && !other->isZero() &&
                              part->exponent() < other->exponent() - 1500;
        if (vanishes) *part = copysign(0.0, *part);
    }
    return last;
}

Real halfRootPi() { return scaled(sqrt(pi()), -1); }

// -f(y)/f'(y) for erf(y) = x, and for ln erfc(y) = ln q, which is nearly a parabola.
Real erfCorrection(const Real& y, const Real& x) { return (x - erf(y)) * halfRootPi() * exp(square(y)); }
Real erfcCorrection(const Real& y, const Real& q) {
    const Real tail = erfc(y);
    return log(tail / q) * tail * halfRootPi() * exp(square(y));
}

// Newton's iteration on y, whose first `correct` bits are right: each step doubles them, so a step needs that much
// precision and no more.
template <class Correction>
Real newton(Real y, long correct, Correction correction) {
    const long full = Real::precision + 32;
    while (correct < full - 24) {
        const PrecisionScope scope(std::min(2 * correct + 32, full));
        y = y + correction(y);
        correct = 2 * correct - 6;
    }
    return y;
}

// erf(y) = x for |x| <= 1/2, also for the smallest x.
Real erfInvCentral(const Real& x) {
    const double rough = x.toDouble();
    if (std::abs(rough) < 0x1p-200) {
        const PrecisionScope scope(Real::precision + 32);
        return x * halfRootPi();  // the next term is x^2 smaller
    }
    constexpr double halfRoot = 0.886226925452758;
    double y = rough * halfRoot * (1 + 0.26 * rough * rough);
    for (int step = 0; step < 4; ++step) y += (rough - std::erf(y)) * halfRoot * std::exp(y * y);
    return newton(y, 44, [&](const Real& at) { return erfCorrection(at, x); });
}

// erfc(y) = q for 0 < q <= 1/2.
Real erfcInvTail(const Real& q) {
    const double minusLog = -log(q).toDouble();
    double y = std::sqrt(minusLog);
    if (1 < y) y = std::sqrt(minusLog - 0.5 * std::log(3.14159265358979 * minusLog));  // of the asymptotic series
    constexpr double deepest = 660;  // beyond it the double-precision erfc leaves the normal range
    if (minusLog < deepest) {
        for (int step = 0; step < 6; ++step) {
            const double tail = std::erfc(y);
            y += (std::log(tail) + minusLog) * tail * 0.886226925452758 * std::exp(y * y);
        }
        return newton(y, 40, [&](const Real& at) { return erfcCorrection(at, q); });
    }
    Real start = y;
    {
        const PrecisionScope scope(64);
        for (int step = 0; step < 5; ++step) start = start + erfcCorrection(start, q);
    }
    return newton(start, 48, [&](const Real& at) { return erfcCorrection(at, q); });
}

Real nan() { return Real(0.0) / Real(0.0); }

// A result of one part, and one of two: the parts of a complex number or of two destinations.
void store(Real* out, Real value) { out[0] = std::move(value); }
void store(Real* out, Complex parts) {
    out[0] = std::move(parts.re);
    out[1] = std::move(parts.im);
}

}  // namespace

Real erfInv(const Real& x) {
    const Real rest = 1.0 - abs(x);  // exact where the tail uses it
    if (!x.isFinite() || rest < 0.0) return nan();
    if (!(0.5 < abs(x))) return erfInvCentral(x);
    return rest.isZero() ? x / rest : copysign(erfcInvTail(rest), x);
}

Real erfcInv(const Real& v) {
    if (!v.isFinite() || v < 0.0 || 2.0 < v) return nan();
    if (v < 0.5) return v.isZero() ? 1.0 / abs(v) : erfcInvTail(v);
    if (1.5 < v) return v == 2.0 ? -1.0 / Real(0.0) : -erfcInvTail(2.0 - v);
    return erfInvCentral(1.0 - v);
}

// The argument of erfc carries a rounding, which erfc enlarges by x^2: 32 more bits cover all x with a result above
// the smallest subnormal, and far beyond.
Real cdfNorm(const Real& x) {
    const PrecisionScope scope(Real::precision + 32);
    return scaled(erfc(-x / sqrt(Real(2.0))), -1);
}

Real cdfNormInv(const Real& p) { return -(sqrt(Real(2.0)) * erfcInv(scaled(p, 1))); }

#define OKT_ARGUMENTS_X [[maybe_unused]] const Real& x = in[0];
#define OKT_ARGUMENTS_XY OKT_ARGUMENTS_X [[maybe_unused]] const Real& y = in[1];
#define OKT_ARGUMENTS_Z [[maybe_unused]] const Complex z{in[0], in[1]};
#define OKT_ARGUMENTS_ZW OKT_ARGUMENTS_Z [[maybe_unused]] const Complex w{in[2], in[3]};
#define OKT_TEXTS(...) \
    { __VA_ARGS__ }
#define OKT_REFERENCE(family, complex, inputs, parts, domain, ordinary, arguments, ...)                    \
    {family, complex, inputs, parts, OKT_TEXTS domain, OKT_TEXTS ordinary, [](const Real* in, Real* out) { \
         OKT_ARGUMENTS_##arguments;                                                                        \
         store(out, __VA_ARGS__);                                                                          \
     }},

std::span<const Reference> references() {
    static const Reference table[] = {
#include "references.inc"
    };
    return table;
}

#undef OKT_REFERENCE
#undef OKT_TEXTS
#undef OKT_ARGUMENTS_ZW
#undef OKT_ARGUMENTS_Z
#undef OKT_ARGUMENTS_XY
#undef OKT_ARGUMENTS_X

const Reference* findReference(std::string_view family, bool complex) {
    for (const Reference& row : references())
        if (row.family == family && row.complex == complex) return &row;
    return nullptr;
}

const Reference& referenceOf(const Export& function) {
    const Reference* reference = findReference(function.family, function.type.ends_with('c'));
    if (!reference) throw std::logic_error("no reference for " + std::string(function.name));
    return *reference;
}

}  // namespace okt::accuracy
