// A real number of high precision: MPFR behind operators, so that the references read like their formulas.
#pragma once

#include <mpfr.h>

#include <utility>

namespace okt::accuracy {

// Every result is rounded once, to nearest, at the precision that is in force on the thread when it is made. The
// exponent range is practically unbounded, so nothing overflows or underflows on the way.
class Real {
public:
    static constexpr mpfr_prec_t standardPrecision = 192;
    static inline thread_local mpfr_prec_t precision = standardPrecision;

    Real() { mpfr_init2(value_, precision); }
    Real(double d) : Real() { mpfr_set_d(value_, d, MPFR_RNDN); }  // exact
    Real(const Real& other) {
        mpfr_init2(value_, mpfr_get_prec(other.value_));
        mpfr_set(value_, other.value_, MPFR_RNDN);
    }
    Real(Real&& other) noexcept : Real() { mpfr_swap(value_, other.value_); }
    Real& operator=(Real other) noexcept {
        mpfr_swap(value_, other.value_);
        return *this;
    }
    ~Real() { mpfr_clear(value_); }

    mpfr_ptr get() { return value_; }
    mpfr_srcptr get() const { return value_; }

    double toDouble() const { return mpfr_get_d(value_, MPFR_RNDN); }
    bool isFinite() const { return mpfr_number_p(value_) != 0; }
    bool isZero() const { return mpfr_zero_p(value_) != 0; }
    bool isNegative() const { return mpfr_signbit(value_) != 0; }  // the sign bit: true for -0
    // e with 2^e <= |value| < 2^(e+1); the value is finite and not zero.
    long exponent() const { return static_cast<long>(mpfr_get_exp(value_)) - 1; }

    friend Real operator-(const Real& a) { return apply(mpfr_neg, a); }
    friend Real operator+(const Real& a, const Real& b) { return apply(mpfr_add, a, b); }
    friend Real operator-(const Real& a, const Real& b) { return apply(mpfr_sub, a, b); }
    friend Real operator*(const Real& a, const Real& b) { return apply(mpfr_mul, a, b); }
    friend Real operator/(const Real& a, const Real& b) { return apply(mpfr_div, a, b); }
    friend bool operator<(const Real& a, const Real& b) { return mpfr_less_p(a.value_, b.value_) != 0; }
    friend bool operator==(const Real& a, const Real& b) { return mpfr_equal_p(a.value_, b.value_) != 0; }

    // One rounding of an MPFR function of one or two arguments.
    static Real apply(int (*function)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t), const Real& a) {
        Real result;
        function(result.value_, a.value_, MPFR_RNDN);
        return result;
    }
    static Real apply(int (*function)(mpfr_ptr, mpfr_srcptr), const Real& a) {  // mpfr_trunc and its like
        Real result;
        function(result.value_, a.value_);
        return result;
    }
    static Real apply(int (*function)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t), const Real& a, const Real& b) {
        Real result;
        function(result.value_, a.value_, b.value_, MPFR_RNDN);
        return result;
    }

private:
    mpfr_t value_;
};

// Another working precision for the lifetime of the object.
class PrecisionScope {
public:
    explicit PrecisionScope(mpfr_prec_t bits) : saved_(std::exchange(Real::precision, bits)) {}
    ~PrecisionScope() { Real::precision = saved_; }
    PrecisionScope(const PrecisionScope&) = delete;
    PrecisionScope& operator=(const PrecisionScope&) = delete;

private:
    mpfr_prec_t saved_;
};

// MPFR's functions of one argument and of two, by MPFR's names; those of <cmath> are the same where both have one.
#define OKT_REAL_UNARY(name) \
    inline Real name(const Real& a) { return Real::apply(mpfr_##name, a); }
#define OKT_REAL_BINARY(name) \
    inline Real name(const Real& a, const Real& b) { return Real::apply(mpfr_##name, a, b); }
OKT_REAL_UNARY(abs)
OKT_REAL_UNARY(sqrt)
OKT_REAL_UNARY(rec_sqrt)
OKT_REAL_UNARY(cbrt)
OKT_REAL_UNARY(exp)
OKT_REAL_UNARY(exp2)
OKT_REAL_UNARY(exp10)
OKT_REAL_UNARY(expm1)
OKT_REAL_UNARY(log)
OKT_REAL_UNARY(log2)
OKT_REAL_UNARY(log10)
OKT_REAL_UNARY(log1p)
OKT_REAL_UNARY(sin)
OKT_REAL_UNARY(cos)
OKT_REAL_UNARY(tan)
OKT_REAL_UNARY(sec)
OKT_REAL_UNARY(csc)
OKT_REAL_UNARY(cot)
OKT_REAL_UNARY(asin)
OKT_REAL_UNARY(acos)
OKT_REAL_UNARY(atan)
OKT_REAL_UNARY(sinh)
OKT_REAL_UNARY(cosh)
OKT_REAL_UNARY(tanh)
OKT_REAL_UNARY(sech)
OKT_REAL_UNARY(csch)
OKT_REAL_UNARY(coth)
OKT_REAL_UNARY(asinh)
OKT_REAL_UNARY(acosh)
OKT_REAL_UNARY(atanh)
OKT_REAL_UNARY(erf)
OKT_REAL_UNARY(erfc)
OKT_REAL_UNARY(gamma)
OKT_REAL_UNARY(lngamma)
OKT_REAL_UNARY(digamma)
OKT_REAL_UNARY(zeta)
OKT_REAL_UNARY(eint)
OKT_REAL_UNARY(li2)
OKT_REAL_UNARY(ai)
OKT_REAL_UNARY(j0)
OKT_REAL_UNARY(j1)
OKT_REAL_UNARY(y0)
OKT_REAL_UNARY(y1)
OKT_REAL_UNARY(frac)
OKT_REAL_UNARY(ceil)
OKT_REAL_UNARY(floor)
OKT_REAL_UNARY(trunc)
OKT_REAL_UNARY(round)
OKT_REAL_UNARY(roundeven)
OKT_REAL_BINARY(pow)
OKT_REAL_BINARY(atan2)
OKT_REAL_BINARY(hypot)
OKT_REAL_BINARY(copysign)
OKT_REAL_BINARY(fmod)
OKT_REAL_BINARY(remainder)
OKT_REAL_BINARY(dim)
OKT_REAL_BINARY(agm)
#if MPFR_VERSION >= MPFR_VERSION_NUM(4, 2, 0)
OKT_REAL_UNARY(sinpi)
OKT_REAL_UNARY(cospi)
OKT_REAL_UNARY(tanpi)
OKT_REAL_UNARY(asinpi)
OKT_REAL_UNARY(acospi)
OKT_REAL_UNARY(atanpi)
OKT_REAL_UNARY(exp2m1)
OKT_REAL_UNARY(exp10m1)
OKT_REAL_UNARY(log2p1)
OKT_REAL_UNARY(log10p1)
#endif
#undef OKT_REAL_UNARY
#undef OKT_REAL_BINARY

// a*b + c*d and a*b - c*d with one rounding of the exact sum.
inline Real sumOfProducts(const Real& a, const Real& b, const Real& c, const Real& d) {
    Real result;
    mpfr_fmma(result.get(), a.get(), b.get(), c.get(), d.get(), MPFR_RNDN);
    return result;
}
inline Real differenceOfProducts(const Real& a, const Real& b, const Real& c, const Real& d) {
    Real result;
    mpfr_fmms(result.get(), a.get(), b.get(), c.get(), d.get(), MPFR_RNDN);
    return result;
}

// a * 2^n, exact.
inline Real scaled(const Real& a, long n) {
    Real result(a);
    mpfr_mul_2si(result.get(), a.get(), n, MPFR_RNDN);
    return result;
}

inline Real pi() {
    Real result;
    mpfr_const_pi(result.get(), MPFR_RNDN);
    return result;
}

}  // namespace okt::accuracy
