// The normal quantile and the inverse of erfc on Real64, by range: worked in pairs of Real64 throughout, so that the
// last addition is in effect the only rounding.
#pragma once

#include "erf/inverse_terms.h"
#include "erf/quantile_tables.h"
#include "lanes/double_double.h"
#include "lanes/lookup.h"

namespace okt::quantile {

using inverse_erf::exponentOf;
using inverse_erf::fractionOf;

// A polynomial with coefficients in two parts, the constant first; the highest coefficient is given once more, its
// high part split into 26 bits and the rest.
struct SplitTerm {
    Constant64 hi, lo;
};
template <int degree>
struct SplitPolynomial {
    SplitTerm topSplit;
    SplitTerm term[degree + 1];
};

// erfinv t = t times a polynomial in t^2, t < 1/8, relative error 2^-75.8; minimax.
inline constexpr SplitPolynomial<8> seriesTerms = {{0x1.1453878p-5, -0x1.3f6036p-34},
                                                   {
                                                       {0x1.c5bf891b4ef6bp-1, -0x1.618f0c4045ef1p-55},
                                                       {0x1.db29fb2fee5e4p-3, -0x1.656a7e5ae189dp-60},
                                                       {0x1.053c2c0ab91cdp-3, 0x1.8d7557eaf826bp-59},
                                                       {0x1.62847c47db0ecp-4, 0x1.8d304e354bc8bp-58},
                                                       {0x1.0a13189fc0194p-4, 0x1.238e461c8d1f8p-64},
                                                       {0x1.a7c857c26535cp-5, -0x1.483dd5f32ca5cp-59},
                                                       {0x1.5eed224d0de5dp-5, -0x1.d901d2d53f24ap-59},
                                                       {0x1.2a3b8effe372bp-5, -0x1.c9179048b7813p-61},
                                                       {0x1.1453877604fe5p-5, -0x1.ed8760d890367p-59},
                                                   }};
// erfinv t = t times a rational function of s, t from 1/8 to 7/8, relative error 2^-72.1; minimax.
inline constexpr SplitPolynomial<10> middleNumerator = {{0x1.8220b88p-5, 0x1.901e148p-32},
                                                        {
                                                            {0x1.3d60b08df7decp+0, 0x1.af4d4bfd5c4cp-54},
                                                            {-0x1.4a2e2f8af851cp+4, -0x1.5c3927a1580b3p-50},
                                                            {0x1.1b7aa8884c3c7p+7, -0x1.b43000ab13bcap-48},
                                                            {-0x1.04473b3396b5p+9, -0x1.556514aedeef8p-45},
                                                            {0x1.1532e970b7749p+10, 0x1.b6cca93966491p-46},
                                                            {-0x1.5c18a27cec8e8p+10, -0x1.0e2b852779012p-46},
                                                            {0x1.f692eb6797941p+9, 0x1.f714b1467c0e3p-45},
                                                            {-0x1.85b5a2cc9556cp+8, -0x1.ca585db17334cp-46},
                                                            {0x1.1c1f63cc5afp+6, 0x1.a2d2521ca3856p-48},
                                                            {-0x1.278bbe9284837p+2, -0x1.1228cca79e297p-52},
                                                            {0x1.8220b8b203c29p-5, 0x1.c6dc9f5e71917p-59},
                                                        }};
inline constexpr SplitPolynomial<10> middleDenominator = {{0x1.6c3e088p-2, 0x1.023d84p-32},
                                                          {
                                                              {1.0, 0.0},
                                                              {-0x1.181b77d2e77eep+4, 0x1.539f49d174003p-51},
                                                              {0x1.fe35180f24c72p+6, -0x1.92f5c3653a3ep-50},
                                                              {-0x1.f670568746fc6p+8, 0x1.ae0b0daf6481cp-48},
                                                              {0x1.23317b686f4b8p+10, 0x1.4e20075e803acp-45},
                                                              {-0x1.96078973d022cp+10, 0x1.3077f31b19ca5p-44},
                                                              {0x1.4ee807bcd9592p+10, -0x1.e80a6679dcd6dp-45},
                                                              {-0x1.35f60847c9795p+9, -0x1.b64e8fd95167ep-45},
                                                              {0x1.2261acf1b5caep+7, 0x1.301a04e7e2609p-49},
                                                              {-0x1.c38506933b00dp+3, 0x1.eead255786aabp-51},
                                                              {0x1.6c3e088408f61p-2, 0x1.89de06e902d94p-57},
                                                          }};
// erfinv t = y times a rational function of y, t from 7/8 to 1 - 2^-53, relative error 2^-75.0; minimax.
inline constexpr SplitPolynomial<11> nearNumerator = {{0x1.85a886p-14, 0x1.8922d5p-41},
                                                      {
                                                          {-0x1.e9df727076458p-15, 0x1.075d772633765p-69},
                                                          {0x1.c60b4f8979c4ap-1, -0x1.54c64e65b6f43p-55},
                                                          {0x1.77125d12de13fp+1, 0x1.021f0fccb250bp-54},
                                                          {0x1.9cb8f06e9a7a8p+2, 0x1.1bd5ffd094401p-54},
                                                          {0x1.2b982c827626dp+3, 0x1.7df94e551fc71p-51},
                                                          {0x1.3cad7d88b5ccep+3, -0x1.ab58cabd6363cp-56},
                                                          {0x1.db83abf2d81eap+2, -0x1.65f2a6aaea9f4p-53},
                                                          {0x1.bedd7c9ebab85p+1, 0x1.27ae7f3091423p-53},
                                                          {0x1.e58a70a020dp-1, 0x1.c3f5e3bfcdc64p-55},
                                                          {0x1.fe96d9cc13f03p-4, -0x1.3cb9e99bb1704p-59},
                                                          {0x1.a69d304a09743p-8, 0x1.f22cbce8b2e33p-64},
                                                          {0x1.85a88631245aap-14, 0x1.d343d095cb42p-68},
                                                      }};
inline constexpr SplitPolynomial<11> nearDenominator = {{0x1.85a7798p-14, -0x1.f537e88p-41},
                                                        {
                                                            {1.0, 0.0},
                                                            {0x1.a790ee25a6e1fp+1, 0x1.57c7a81d17a9p-55},
                                                            {0x1.f165f88bba81dp+2, -0x1.d8fc2d428a0b6p-53},
                                                            {0x1.86ea6761610a4p+3, 0x1.e32222d8432e4p-53},
                                                            {0x1.d526947462f0dp+3, -0x1.5a673d4b8ce23p-51},
                                                            {0x1.9f44d6cd0d55bp+3, 0x1.2b7be1fea94dp-51},
                                                            {0x1.1042667701152p+3, 0x1.1e132ca9916d6p-53},
                                                            {0x1.d7298975d1746p+1, 0x1.81630233b8be2p-53},
                                                            {0x1.ec4a1af2183ccp-1, -0x1.17da7ad7ce606p-55},
                                                            {0x1.ffacc1921528p-4, 0x1.a3e35d165b14fp-58},
                                                            {0x1.a6a2e5dbb77fcp-8, -0x1.78f6956954bd7p-62},
                                                            {0x1.85a779415902fp-14, -0x1.fe79364ee40afp-68},
                                                        }};
// The same for u from 2^-53 to 2^-1074, relative error 2^-76.6; minimax up to results of 24.9, there with an error of
// 2^-85.3.
inline constexpr SplitPolynomial<11> farNumerator = {{0x1.b10c878p-32, 0x1.0529738p-59},
                                                     {
                                                         {0x1.6fec0deba867cp-5, 0x1.ac4cea0800167p-62},
                                                         {0x1.4efcb81460fc8p-1, -0x1.6540bce80373fp-56},
                                                         {0x1.0844cc42ad1eap+1, -0x1.d5e280eabadf3p-53},
                                                         {0x1.c3b308ff808e3p+0, -0x1.510c9db1a6a99p-55},
                                                         {0x1.1c5c5d81c7356p+1, 0x1.72efd3660cf88p-53},
                                                         {0x1.2eadf0b381c13p+0, 0x1.e7a2edfcd2f84p-54},
                                                         {0x1.ff7b19e659227p-3, 0x1.1b3c85315e2fcp-60},
                                                         {0x1.815c69f31e81cp-6, 0x1.ef5add81fa1e3p-61},
                                                         {0x1.0e46733ebf0dfp-10, 0x1.7adfbffc1af8dp-64},
                                                         {0x1.5815169bda132p-16, 0x1.1bab488b03898p-71},
                                                         {0x1.635a431ac927ap-23, -0x1.2fe83290f0847p-77},
                                                         {0x1.b10c87a0a52e7p-32, 0x1.0204619908499p-86},
                                                     }};
inline constexpr SplitPolynomial<11> farDenominator = {{0x1.b10c7ep-32, 0x1.40abf8p-61},
                                                       {
                                                           {1.0, -1e-120},
                                                           {0x1.b7ce1abc5ea36p+0, -0x1.f60a112ebdccfp-55},
                                                           {0x1.a4bcaa6403512p+1, 0x1.8b080e1734a57p-53},
                                                           {0x1.6ba10b93e2d8dp+1, 0x1.652b0bc24da6bp-53},
                                                           {0x1.45b6a4c356b83p+1, 0x1.3d97e15dd5488p-55},
                                                           {0x1.38b626fbeb1c4p+0, 0x1.cd63913cdce0ap-55},
                                                           {0x1.01e60a4bcbe6fp-2, -0x1.a4e7bc5c5aa7ap-56},
                                                           {0x1.822fb97924bfcp-6, -0x1.4c93cdb6551aep-60},
                                                           {0x1.0e674e8ad644ap-10, -0x1.28697eb13b5ddp-65},
                                                           {0x1.581b6988036c9p-16, -0x1.a41394af420dbp-70},
                                                           {0x1.635a669a66e3cp-23, -0x1.df99f2015b4b1p-80},
                                                           {0x1.b10c7e0a055fcp-32, -0x1.75f53fc14dc3dp-88},
                                                       }};

struct Constants64 {
    SplitPolynomial<8> series = seriesTerms;
    SplitPolynomial<10> middleN = middleNumerator, middleD = middleDenominator;
    SplitPolynomial<11> nearN = nearNumerator, nearD = nearDenominator;
    SplitPolynomial<11> farN = farNumerator, farD = farDenominator;
    Constant64 ln2Hi = 0x1.62e43p-1;  // short, so that its product with an exponent is exact
    Constant64 ln2Lo = -0x1.05c610ca86c39p-29;
    // ln(1 + z) = z + log2 z^2 + log3 z^3 + ... and sqrt(1 + z) = 1 + z/2 + root2 z^2 + ... on |z| <= 1/513, relative
    // errors 2^-61.5 and 2^-74.2; minimax but for -1/2 and -1/8.
    Constant64 log2 = -0.5;
    Constant64 log3 = 0x1.55555555516c2p-2;
    Constant64 log4 = -0x1.fffffffff71abp-3;
    Constant64 log5 = 0x1.9999ff151cd6bp-3;
    Constant64 log6 = -0x1.5555b76ad7fa4p-3;
    Constant64 root2 = -0x1p-3;
    Constant64 root3 = 0x1.fffffffffbc81p-5;
    Constant64 root4 = -0x1.3ffffffff44cdp-5;
    Constant64 root5 = 0x1.c00061eb82f5cp-6;
    Constant64 root6 = -0x1.5000812c497d6p-6;
    SplitTerm rootTwo = {0x1.6a09e667f3bcdp+0, -0x1.bdd3413b26456p-54};
    SplitTerm rootTwoSplit = {0x1.6a09e68p+0, -0x1.80c433p-28};
    Constant64 one = 1.0;
    Constant64 two = 2.0;
    Constant64 middle = 0.875;
    Constant64 smallLimit = 0.125;
    Pattern64 oneBits = 0x3FF0000000000000;
};
inline constexpr Constants64 constants64;

inline constexpr std::uint32_t nearField = 0x3CA;  // exponent field of 2^-53, from which on u takes the near row

template <int N>
inline DoubleDouble<N> times(DoubleDouble<N> x, DoubleDouble<N> y) {
    const auto [p, e] = exactProduct(x.hi, y.hi);
    return {p, e + (x.hi * y.lo + x.lo * y.hi)};
}

// The sum of a polynomial from its highest term down.
template <int N>
struct SplitSum {
    F64<N> h, l;
    DoubleDouble<N> parts;

    template <int degree>
    explicit SplitSum(const SplitPolynomial<degree>& c)
        : h(c.term[degree].hi), l(c.term[degree].lo), parts{F64<N>(c.topSplit.hi), F64<N>(c.topSplit.lo)} {}

    void step(const SplitTerm& term, DoubleDouble<N> s, DoubleDouble<N> sParts) {
        const auto [p, e] = exactProduct(h, parts, s.hi, sParts);
        const F64<N> lo = e + (h * s.lo + l * s.hi);
        const auto [sum, rest] = twoSum(F64<N>(term.hi), p);
        h = sum;
        l = (lo + F64<N>(term.lo)) + rest;
        parts = dekkerSplit(h);
    }
};

template <int N, int degree>
[[gnu::always_inline]] inline DoubleDouble<N> horner(const SplitPolynomial<degree>& c, DoubleDouble<N> s) {
    const DoubleDouble<N> parts = dekkerSplit(s.hi);
    SplitSum<N> sum(c);
    for (int i = degree - 1; i >= 0; --i) sum.step(c.term[i], s, parts);
    return {sum.h, sum.l};
}

// Numerator and denominator, step by step together: two chains hide each other's latency.
template <int N>
struct Fraction {
    DoubleDouble<N> numerator, denominator;
};
template <int N, int degree>
[[gnu::always_inline]] inline Fraction<N> horner(const SplitPolynomial<degree>& n, const SplitPolynomial<degree>& d,
                                                 DoubleDouble<N> s) {
    const DoubleDouble<N> parts = dekkerSplit(s.hi);
    SplitSum<N> top(n), bottom(d);
    for (int i = degree - 1; i >= 0; --i) {
        top.step(n.term[i], s, parts);
        bottom.step(d.term[i], s, parts);
    }
    return {{top.h, top.l}, {bottom.h, bottom.l}};
}

// The last addition is the one rounding to Real64.
template <class Function, int N>
inline F64<N> rounded(const Constants64& k, DoubleDouble<N> r) {
    if constexpr (!Function::scaled) return r.hi + r.lo;
    const DoubleDouble<N> parts = {F64<N>(k.rootTwoSplit.hi), F64<N>(k.rootTwoSplit.lo)};
    const auto [p, e] = exactProduct(r.hi, dekkerSplit(r.hi), F64<N>(k.rootTwo.hi), parts);
    return p + (e + (r.hi * F64<N>(k.rootTwo.lo) + r.lo * F64<N>(k.rootTwo.hi)));
}

template <class Function, int N>
inline F64<N> quotient(const Constants64& k, DoubleDouble<N> numerator, DoubleDouble<N> denominator) {
    const F64<N> q = F64<N>(k.one) / denominator.hi;
    const auto [p, e] = exactProduct(denominator.hi, q);
    const F64<N> c = -q * ((p - F64<N>(k.one)) + (e + denominator.lo * q));
    return rounded<Function>(k, times(numerator, DoubleDouble<N>{q, c}));
}

// t pairs the central variable with its rest; |t| < 0.125.
template <class Function, int N>
inline F64<N> series64(const Constants64& k, DoubleDouble<N> t) {
    const auto [p, e] = exactProduct(t.hi, t.hi);
    const DoubleDouble<N> s = {p, e + F64<N>(k.two) * t.hi * t.lo};
    return rounded<Function>(k, times(horner(k.series, s), t));
}

// |t| from 0.125 to 0.875.
template <class Function, int N>
inline F64<N> middle64(const Constants64& k, DoubleDouble<N> t) {
    const F64<N> end(k.middle);
    auto [above, aboveLo] = twoSum(t.hi, end);
    auto [below, belowLo] = twoSum(t.hi, -end);
    const DoubleDouble<N> s = times(DoubleDouble<N>{above, aboveLo + t.lo}, DoubleDouble<N>{below, belowLo + t.lo});
    const Fraction<N> f = horner(k.middleN, k.middleD, s);
    return quotient<Function>(k, times(f.numerator, t), f.denominator);
}

// -ln of the number with exponent n and fraction m.
template <int N>
inline DoubleDouble<N> minusLog64(const Constants64& k, F64<N> n, F64<N> m) {
    const InMemory<std::uint64_t, N> i(asBits(m) >> 44);
    const F64<N> r = gatherElementsByLowBits<8>(tables::recip64, i);
    const auto [mh, ml] = dekkerSplit(m, splitter21);
    const F64<N> z0 = mh * r - F64<N>(k.one);
    const F64<N> z1 = ml * r;
    const F64<N> z = z0 + z1;
    const auto [zh, rest] = dekkerSplit(z, splitter21);
    const F64<N> zl = rest + ((z0 - z) + z1);
    const F64<N> square = z * z;
    const F64<N> q = (((F64<N>(k.log6) * z + k.log5) * z + k.log4) * square + (F64<N>(k.log3) * z + k.log2)) * square;
    const auto [logHi, logLo] = gatherPairsByLowBits<8, Real64>(tables::logRecip64, i);
    const F64<N> a = n * F64<N>(k.ln2Hi) + logHi;
    const F64<N> b = n * F64<N>(k.ln2Lo) + logLo;
    const auto [h, l] = fastTwoSum(a, zh);
    return {-h, -(l + ((zl + q) + b))};
}

template <int N>
inline DoubleDouble<N> root64(const Constants64& k, DoubleDouble<N> w) {
    const U64<N> half = ((asBits(w.hi) >> 52) - U64<N>(std::uint64_t{1023})) >> 1;
    const U64<N> power = half << 52;
    const F64<N> scale = asReal(power + U64<N>(k.oneBits));
    const F64<N> halfScale = asReal(power + U64<N>(std::uint64_t{1022} << 52));
    const F64<N> down = asReal(U64<N>(k.oneBits) - (power << 1));
    const F64<N> wh = w.hi * down;
    const F64<N> wl = w.lo * down;

    const InMemory<std::uint64_t, N> i((asBits(wh) >> 44) ^ U64<N>(std::uint64_t{256}));
    const F64<N> r = gatherElementsByLowBits<9>(tables::recip64, i);
    const auto [mh, ml] = dekkerSplit(wh, splitter21);
    const F64<N> z0 = mh * r - F64<N>(k.one);
    const F64<N> z1 = ml * r + wl * r;
    const F64<N> z = z0 + z1;
    const auto [zh, rest] = dekkerSplit(z, splitter21);
    const F64<N> zl = rest + ((z0 - z) + z1);
    const F64<N> p = z * z * ((((F64<N>(k.root6) * z + k.root5) * z + k.root4) * z + k.root3) * z + k.root2);

    const auto [f, rounding] = fastTwoSum(scale, halfScale * zh);
    const F64<N> fLo = rounding + (halfScale * zl + scale * p);
    const auto [f1, f2] = dekkerSplit(f, splitter21);
    const auto [rootHi, rootLo] = gatherPairsByLowBits<9, Real64>(tables::sqrtRecip64, i);
    const F64<N> yh = rootHi * f1;
    const F64<N> yl = rootHi * f2 + (rootHi * fLo + rootLo * (f + fLo));
    return fastTwoSum(yh, yl);
}

// |t| >= 0.875, y = sqrt(-ln u); `sign` holds the sign bit of the result.
template <class Function, bool nearRow, int N>
inline F64<N> tail64(const Constants64& k, DoubleDouble<N> y, F64<N> sign) {
    const Fraction<N> f = horner(nearRow ? k.nearN : k.farN, nearRow ? k.nearD : k.farD, y);
    const DoubleDouble<N> n = times(f.numerator, y);
    return quotient<Function>(k, DoubleDouble<N>{n.hi ^ sign, n.lo ^ sign}, f.denominator);
}

// The exponent and the fraction of a number that may be subnormal.
template <int N>
struct ExponentAndFraction {
    F64<N> exponent, fraction;
};
inline ExponentAndFraction<1> partsOf(const Constants64& k, F64<1> u) {
    if (asBits(u.raw) >> 52 != 0) return {exponentOf(u), fractionOf(u)};
    // u · 2^1022, exact; abs for a u flushed to zero under rounding down, whose rest is -0.
    const F64<1> rest = abs(asReal(asBits(u) | U64<1>(k.oneBits)) - F64<1>(k.one));
    return {exponentOf(rest) - F64<1>(1022), fractionOf(rest)};
}

}  // namespace okt::quantile
