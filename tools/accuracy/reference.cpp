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

Complex inputAt(const Real* in, int first) { return {in[first], in[first + 1]}; }

void store(Real* out, Complex z) {
    out[0] = std::move(z.re);
    out[1] = std::move(z.im);
}

Real square(const Real& x) { return x * x; }

// i*z and -i*z: exact, and they keep the signs of zeros.
Complex timesI(const Complex& z) { return {-z.im, z.re}; }
Complex timesMinusI(const Complex& z) { return {z.im, -z.re}; }

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

Complex log(const Complex& z) { return {logModulus(z), atan2(z.im, z.re)}; }

Complex exp(const Complex& z) {
    const Real modulus = exp(z.re);
    return {modulus * cos(z.im), modulus * sin(z.im)};
}

Complex sinh(const Complex& z) { return {sinh(z.re) * cos(z.im), cosh(z.re) * sin(z.im)}; }
Complex cosh(const Complex& z) { return {cosh(z.re) * cos(z.im), sinh(z.re) * sin(z.im)}; }

// (sinh x cosh x + i sin y cos y) / (sinh^2 x + cos^2 y). Beyond |x| = 400 the denominator is e^2|x|/4 to more than
// 1000 bits, and e^2|x| itself might leave even MPFR's exponent range.
Complex tanh(const Complex& z) {
    const Real sinCos = sin(z.im) * cos(z.im);
    if (400.0 < abs(z.re)) return {copysign(1.0, z.re), scaled(sinCos, 2) * exp(scaled(abs(z.re), 1) * -1.0)};
    const Real s = sinh(z.re);
    const Real denominator = square(s) + square(cos(z.im));
    return {s * cosh(z.re) / denominator, sinCos / denominator};
}

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

Complex multiply(const Complex& a, const Complex& b) {
    return {differenceOfProducts(a.re, b.re, a.im, b.im), sumOfProducts(a.re, b.im, a.im, b.re)};
}
Complex conj(const Complex& z) { return {z.re, -z.im}; }

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
        Complex next = exp(multiply(b, log(a)));
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

template <Complex (*Function)(const Complex&)>
void complex(const Real* in, Real* out) {
    store(out, Function(inputAt(in, 0)));
}

// mpfr_trunc and its like have no rounding argument.
template <int (*Function)(mpfr_ptr, mpfr_srcptr)>
void integral(const Real* in, Real* out) {
    out[0] = Real();
    Function(out[0].get(), in[0].get());
}

#define OKT_ONE_PART(body) [](const Real* in, Real* out) { out[0] = (body); }
#define OKT_TWO_PARTS(body) [](const Real* in, Real* out) { store(out, (body)); }

const Reference table[] = {
    {"Abs", false, 1, 1, OKT_ONE_PART(abs(in[0]))},
    {"Abs", true, 2, 1, OKT_ONE_PART(hypot(in[0], in[1]))},
    {"Acos", false, 1, 1, OKT_ONE_PART(acos(in[0]))},
    {"Acos", true, 2, 2, complex<acos>},
    {"Acosh", false, 1, 1, OKT_ONE_PART(acosh(in[0]))},
    {"Acosh", true, 2, 2, complex<acosh>},
    {"Add", false, 2, 1, OKT_ONE_PART(in[0] + in[1])},
    {"Add", true, 4, 2, OKT_TWO_PARTS((Complex{in[0] + in[2], in[1] + in[3]}))},
    {"Arg", true, 2, 1, OKT_ONE_PART(atan2(in[1], in[0]))},
    {"Asin", false, 1, 1, OKT_ONE_PART(asin(in[0]))},
    {"Asin", true, 2, 2, complex<asin>},
    {"Asinh", false, 1, 1, OKT_ONE_PART(asinh(in[0]))},
    {"Asinh", true, 2, 2, OKT_TWO_PARTS(timesMinusI(asin(timesI(inputAt(in, 0)))))},
    {"Atan", false, 1, 1, OKT_ONE_PART(atan(in[0]))},
    {"Atan", true, 2, 2, OKT_TWO_PARTS(timesMinusI(atanh(timesI(inputAt(in, 0)))))},
    {"Atan2", false, 2, 1, OKT_ONE_PART(atan2(in[0], in[1]))},
    {"Atanh", false, 1, 1, OKT_ONE_PART(atanh(in[0]))},
    {"Atanh", true, 2, 2, complex<atanh>},
    {"Cbrt", false, 1, 1, OKT_ONE_PART(cbrt(in[0]))},
    {"CdfNorm", false, 1, 1, OKT_ONE_PART(cdfNorm(in[0]))},
    {"CdfNormInv", false, 1, 1, OKT_ONE_PART(cdfNormInv(in[0]))},
    {"Ceil", false, 1, 1, integral<mpfr_ceil>},
    {"CIS", true, 1, 2, OKT_TWO_PARTS((Complex{cos(in[0]), sin(in[0])}))},
    {"Conj", true, 2, 2, complex<conj>},
    {"Cos", false, 1, 1, OKT_ONE_PART(cos(in[0]))},
    {"Cos", true, 2, 2, OKT_TWO_PARTS(cosh(timesI(inputAt(in, 0))))},
    {"Cosh", false, 1, 1, OKT_ONE_PART(cosh(in[0]))},
    {"Cosh", true, 2, 2, complex<cosh>},
    {"Div", false, 2, 1, OKT_ONE_PART(in[0] / in[1])},
    {"Div", true, 4, 2,
     [](const Real* in, Real* out) {
         const Complex product = multiply(inputAt(in, 0), conj(inputAt(in, 2)));
         const Real norm = sumOfProducts(in[2], in[2], in[3], in[3]);
         store(out, {product.re / norm, product.im / norm});
     }},
    {"Erf", false, 1, 1, OKT_ONE_PART(erf(in[0]))},
    {"Erfc", false, 1, 1, OKT_ONE_PART(erfc(in[0]))},
    {"ErfcInv", false, 1, 1, OKT_ONE_PART(erfcInv(in[0]))},
    {"ErfInv", false, 1, 1, OKT_ONE_PART(erfInv(in[0]))},
    {"Exp", false, 1, 1, OKT_ONE_PART(exp(in[0]))},
    {"Exp", true, 2, 2, complex<exp>},
    {"Expm1", false, 1, 1, OKT_ONE_PART(expm1(in[0]))},
    {"Floor", false, 1, 1, integral<mpfr_floor>},
    {"Hypot", false, 2, 1, OKT_ONE_PART(hypot(in[0], in[1]))},
    {"Inv", false, 1, 1, OKT_ONE_PART(1.0 / in[0])},
    {"InvCbrt", false, 1, 1, OKT_ONE_PART(1.0 / cbrt(in[0]))},
    {"InvSqrt", false, 1, 1, OKT_ONE_PART(1.0 / sqrt(in[0]))},
    {"Ln", false, 1, 1, OKT_ONE_PART(log(in[0]))},
    {"Ln", true, 2, 2, complex<log>},
    {"Log10", false, 1, 1, OKT_ONE_PART(log10(in[0]))},
    {"Log10", true, 2, 2,
     [](const Real* in, Real* out) {
         const Complex w = log(inputAt(in, 0));
         const Real log10e = 1.0 / log(Real(10.0));
         store(out, {w.re * log10e, w.im * log10e});
     }},
    {"Log1p", false, 1, 1, OKT_ONE_PART(log1p(in[0]))},
    {"Modf", false, 1, 2,
     [](const Real* in, Real* out) {
         integral<mpfr_trunc>(in, out);
         out[1] = copysign(in[0] - out[0], in[0]);
     }},
    {"Mul", false, 2, 1, OKT_ONE_PART(in[0] * in[1])},
    {"Mul", true, 4, 2, OKT_TWO_PARTS(multiply(inputAt(in, 0), inputAt(in, 2)))},
    {"MulByConj", true, 4, 2, OKT_TWO_PARTS(multiply(inputAt(in, 0), conj(inputAt(in, 2))))},
    {"NearbyInt", false, 1, 1, integral<mpfr_roundeven>},
    {"Pow", false, 2, 1, OKT_ONE_PART(pow(in[0], in[1]))},
    {"Pow", true, 4, 2, OKT_TWO_PARTS(pow(inputAt(in, 0), inputAt(in, 2)))},
    {"Pow2o3", false, 1, 1, OKT_ONE_PART(cbrt(square(in[0])))},
    {"Pow3o2", false, 1, 1, OKT_ONE_PART(sqrt(square(in[0]) * in[0]))},
    {"Powx", false, 2, 1, OKT_ONE_PART(pow(in[0], in[1]))},
    {"Powx", true, 4, 2, OKT_TWO_PARTS(pow(inputAt(in, 0), inputAt(in, 2)))},
    {"Rint", false, 1, 1, integral<mpfr_roundeven>},
    {"Round", false, 1, 1, integral<mpfr_round>},
    {"Sin", false, 1, 1, OKT_ONE_PART(sin(in[0]))},
    {"Sin", true, 2, 2, OKT_TWO_PARTS(timesMinusI(sinh(timesI(inputAt(in, 0)))))},
    {"SinCos", false, 1, 2, OKT_TWO_PARTS((Complex{sin(in[0]), cos(in[0])}))},
    {"Sinh", false, 1, 1, OKT_ONE_PART(sinh(in[0]))},
    {"Sinh", true, 2, 2, complex<sinh>},
    {"Sqr", false, 1, 1, OKT_ONE_PART(square(in[0]))},
    {"Sqrt", false, 1, 1, OKT_ONE_PART(sqrt(in[0]))},
    {"Sqrt", true, 2, 2, complex<sqrt>},
    {"Sub", false, 2, 1, OKT_ONE_PART(in[0] - in[1])},
    {"Sub", true, 4, 2, OKT_TWO_PARTS((Complex{in[0] - in[2], in[1] - in[3]}))},
    {"Tan", false, 1, 1, OKT_ONE_PART(tan(in[0]))},
    {"Tan", true, 2, 2, OKT_TWO_PARTS(timesMinusI(tanh(timesI(inputAt(in, 0)))))},
    {"Tanh", false, 1, 1, OKT_ONE_PART(tanh(in[0]))},
    {"Tanh", true, 2, 2, complex<tanh>},
    {"Trunc", false, 1, 1, integral<mpfr_trunc>},
};

#undef OKT_ONE_PART
#undef OKT_TWO_PARTS

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

std::span<const Reference> references() { return table; }

const Reference* findReference(std::string_view family, bool complex) {
    const auto found = std::ranges::find_if(
        table, [&](const Reference& row) { return row.family == family && row.complex == complex; });
    return found == std::end(table) ? nullptr : found;
}

const Reference& referenceOf(const Export& function) {
    const Reference* reference = findReference(function.family, function.type.ends_with('c'));
    if (!reference) throw std::logic_error("no reference for " + std::string(function.name));
    return *reference;
}

}  // namespace okt::accuracy
