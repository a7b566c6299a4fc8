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

// The functions bear the names of <cmath>.
#define OKT_REAL_UNARY(name) \
    inline Real name(const Real& a) { return Real::apply(mpfr_##name, a); }
OKT_REAL_UNARY(abs)
OKT_REAL_UNARY(sqrt)
OKT_REAL_UNARY(cbrt)
OKT_REAL_UNARY(exp)
OKT_REAL_UNARY(expm1)
OKT_REAL_UNARY(log)
OKT_REAL_UNARY(log1p)
OKT_REAL_UNARY(log10)
OKT_REAL_UNARY(sin)
OKT_REAL_UNARY(cos)
OKT_REAL_UNARY(tan)
OKT_REAL_UNARY(asin)
OKT_REAL_UNARY(acos)
OKT_REAL_UNARY(atan)
OKT_REAL_UNARY(sinh)
OKT_REAL_UNARY(cosh)
OKT_REAL_UNARY(tanh)
OKT_REAL_UNARY(asinh)
OKT_REAL_UNARY(acosh)
OKT_REAL_UNARY(atanh)
OKT_REAL_UNARY(erf)
OKT_REAL_UNARY(erfc)
#undef OKT_REAL_UNARY

inline Real pow(const Real& a, const Real& b) { return Real::apply(mpfr_pow, a, b); }
inline Real atan2(const Real& y, const Real& x) { return Real::apply(mpfr_atan2, y, x); }
inline Real hypot(const Real& x, const Real& y) { return Real::apply(mpfr_hypot, x, y); }
inline Real copysign(const Real& a, const Real& sign) { return Real::apply(mpfr_copysign, a, sign); }

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
