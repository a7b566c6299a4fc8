// The C library's functions called element by element, as a program without a vector library would do it; complex
// functions through std::complex, which calls cexp, clog and so on. Compiled without vectorisation.
#include "loops.h"

#include <cmath>
#include <complex>
#include <numbers>

namespace okt::bench {
namespace {

volatile int lastStatus = 0;

// Division as a scalar loop that notices zero divisors.
template <class Real, bool Reciprocal>
void divisionLoop(const Arguments& a) {
    const auto* numerators = static_cast<const Real*>(a.src1);
    const auto* divisors = static_cast<const Real*>(Reciprocal ? a.src1 : a.src2);
    auto* dst = static_cast<Real*>(a.dst1);
    int status = 0;
    for (std::int32_t i = 0; i < a.len; ++i) {
        const Real divisor = divisors[i];
        dst[i] = (Reciprocal ? Real{1} : numerators[i]) / divisor;
        if (divisor == 0) status = 18;
    }
    lastStatus = status;
}

}  // namespace

std::vector<Peer> libmPeers() {
    Rows rows("libm");
    rows.unary("Acos", "acos", [](auto x) { return std::acos(x); });
    rows.unary("Acosh", "acosh", [](auto x) { return std::acosh(x); });
    rows.unary("Asin", "asin", [](auto x) { return std::asin(x); });
    rows.unary("Asinh", "asinh", [](auto x) { return std::asinh(x); });
    rows.unary("Atan", "atan", [](auto x) { return std::atan(x); });
    rows.binary("Atan2", "atan2", [](auto y, auto x) { return std::atan2(y, x); });
    rows.unary("Atanh", "atanh", [](auto x) { return std::atanh(x); });
    rows.unary("Cbrt", "cbrt", [](auto x) { return std::cbrt(x); });
    rows.unary("CdfNorm", "0.5 erfc(-x/sqrt 2)",
               []<class T>(T x) { return T(0.5) * std::erfc(-x * (std::numbers::sqrt2_v<T> / 2)); });
    rows.unary("Ceil", "ceil", [](auto x) { return std::ceil(x); });
    rows.unary("Cos", "cos", [](auto x) { return std::cos(x); });
    rows.unary("Cosh", "cosh", [](auto x) { return std::cosh(x); });
    rows.unary("Erf", "erf", [](auto x) { return std::erf(x); });
    rows.unary("Erfc", "erfc", [](auto x) { return std::erfc(x); });
    rows.unary("Exp", "exp", [](auto x) { return std::exp(x); });
    rows.unary("Expm1", "expm1", [](auto x) { return std::expm1(x); });
    rows.unary("Floor", "floor", [](auto x) { return std::floor(x); });
    rows.binary("Hypot", "hypot", [](auto x, auto y) { return std::hypot(x, y); });
    rows.unary("InvCbrt", "1 / cbrt", [](auto x) { return 1 / std::cbrt(x); });
    rows.unary("InvSqrt", "1 / sqrt", [](auto x) { return 1 / std::sqrt(x); });
    rows.unary("Ln", "log", [](auto x) { return std::log(x); });
    rows.unary("Log10", "log10", [](auto x) { return std::log10(x); });
    rows.unary("Log1p", "log1p", [](auto x) { return std::log1p(x); });
    rows.twoResults("Modf", "modf", [](auto x, auto* whole, auto* fraction) { *fraction = std::modf(x, whole); });
    rows.unary("NearbyInt", "nearbyint", [](auto x) { return std::nearbyint(x); });
    rows.binary("Pow", "pow", [](auto x, auto y) { return std::pow(x, y); });
    rows.unary("Pow2o3", "cbrt(x)^2", [](auto x) {
        const auto root = std::cbrt(x);
        return root * root;
    });
    rows.unary("Pow3o2", "x sqrt(x)", [](auto x) { return x * std::sqrt(x); });
    rows.withScalar("Powx", "pow", [](auto x, auto y) { return std::pow(x, y); });
    rows.unary("Rint", "rint", [](auto x) { return std::rint(x); });
    rows.unary("Round", "round", [](auto x) { return std::round(x); });
    rows.unary("Sin", "sin", [](auto x) { return std::sin(x); });
    rows.twoResults("SinCos", "sin, cos", [](auto x, auto* sine, auto* cosine) {
        *sine = std::sin(x);
        *cosine = std::cos(x);
    });
    rows.unary("Sinh", "sinh", [](auto x) { return std::sinh(x); });
    rows.unary("Sqrt", "sqrt", [](auto x) { return std::sqrt(x); });
    rows.unary("Tan", "tan", [](auto x) { return std::tan(x); });
    rows.unary("Tanh", "tanh", [](auto x) { return std::tanh(x); });
    rows.unary("Trunc", "trunc", [](auto x) { return std::trunc(x); });

    rows.complexToReal("Abs", "cabs", [](auto z) { return std::abs(z); });
    rows.complexToReal("Arg", "carg", [](auto z) { return std::arg(z); });
    rows.realToComplex("CIS", "sin, cos", [](auto x) { return std::complex(std::cos(x), std::sin(x)); });
    rows.complexUnary("Acos", "cacos", [](auto z) { return std::acos(z); });
    rows.complexUnary("Acosh", "cacosh", [](auto z) { return std::acosh(z); });
    rows.complexUnary("Asin", "casin", [](auto z) { return std::asin(z); });
    rows.complexUnary("Asinh", "casinh", [](auto z) { return std::asinh(z); });
    rows.complexUnary("Atan", "catan", [](auto z) { return std::atan(z); });
    rows.complexUnary("Atanh", "catanh", [](auto z) { return std::atanh(z); });
    rows.complexUnary("Cos", "ccos", [](auto z) { return std::cos(z); });
    rows.complexUnary("Cosh", "ccosh", [](auto z) { return std::cosh(z); });
    rows.complexUnary("Exp", "cexp", [](auto z) { return std::exp(z); });
    rows.complexUnary("Ln", "clog", [](auto z) { return std::log(z); });
    rows.complexUnary("Log10", "clog / log 10", [](auto z) { return std::log10(z); });
    rows.complexUnary("Sin", "csin", [](auto z) { return std::sin(z); });
    rows.complexUnary("Sinh", "csinh", [](auto z) { return std::sinh(z); });
    rows.complexUnary("Sqrt", "csqrt", [](auto z) { return std::sqrt(z); });
    rows.complexUnary("Tan", "ctan", [](auto z) { return std::tan(z); });
    rows.complexUnary("Tanh", "ctanh", [](auto z) { return std::tanh(z); });
    rows.complexBinary("Pow", "cpow", [](auto z, auto w) { return std::pow(z, w); });
    rows.complexWithScalar("Powx", "cpow", [](auto z, auto w) { return std::pow(z, w); });
    // The language's own products and quotients, with its rules for infinities.
    rows.complexBinary("Mul", "z * w", [](auto z, auto w) { return z * w; });
    rows.complexBinary("MulByConj", "z * conj(w)", [](auto z, auto w) { return z * std::conj(w); });
    rows.complexBinary("Div", "z / w", [](auto z, auto w) { return z / w; });

    std::vector<Peer> peers = rows.take();
    Rows scalar("scalar loop");
    scalar.add("Div", "32f", "a / b with zero test", &divisionLoop<float, false>);
    scalar.add("Div", "64f", "a / b with zero test", &divisionLoop<double, false>);
    scalar.add("Inv", "32f", "1 / x with zero test", &divisionLoop<float, true>);
    scalar.add("Inv", "64f", "1 / x with zero test", &divisionLoop<double, true>);
    for (const Peer& peer : scalar.take()) peers.push_back(peer);
    return peers;
}

}  // namespace okt::bench
