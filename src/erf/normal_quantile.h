// The inverse of erf in tails and middle, as the normal quantile and the inverse of erfc share it: both are
// erfinv(t) · factor for a central variable t and the tail mass u = 1 - |t|.
//
//   |t| < 0.125   a polynomial in t^2, times t
//   |t| < 0.875   a rational in s = (t + 0.875)(t - 0.875), times t
//   the rest      a rational in y = sqrt(-ln u), times y; on Real64 one for u >= 2^-53, one for smaller u
//
// Real32 works in Real64 with short logarithm and root; Real64 works in pairs of Real64 throughout, so that the last
// addition is in effect the only rounding. Logarithm and root: a table reciprocal r close to 1/m leaves z = m r - 1,
// exact in two parts, and a polynomial of degree 6.
//
// A function is given by a Function with
//   central(p), centralRest(p, t)   t, and on Real64 what is missing to its exact value
//   tailMass(p, inLowerHalf)        u, exact
//   end, centre                     the domain is 0 to `end`; t is 0 at the centre
//   scaled                          whether the result is multiplied by the root of 2
//   negativeBelow                   whether results are negative below the centre, or above it
#pragma once

#include "erf/quantile_tables.h"
#include "erf/sorted_loop.h"
#include "frame/loops.h"
#include "frame/status_flag.h"
#include "lanes/constant.h"
#include "lanes/double_double.h"
#include "lanes/lookup.h"
#include "lanes/pattern.h"

namespace okt::quantile {

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

struct Constants {
    Constant64 one = 1.0;
    Constant64 two = 2.0;
    Constant64 middle = 0.875;
    Constant64 smallLimit = 0.125;
    Pattern64 sign = std::uint64_t{0x8000000000000000};
    Pattern64 fraction = std::uint64_t{0x000FFFFFFFFFFFFF};
    Pattern64 oneBits = std::uint64_t{0x3FF0000000000000};
    Pattern64 integerBits = std::uint64_t{0x4330000000000000};  // of 2^52
    Constant64 integerShift = 0x1p52 + 1023;
};
constexpr Constants constants;

// The unbiased exponent of a positive normal number.
template <int N>
inline F64<N> exponentOf(const Constants& k, U64<N> bits) {
    return asReal((bits >> 52) | U64<N>(k.integerBits)) - k.integerShift;
}
// The fraction with exponent 0.
template <int N>
inline F64<N> fractionOf(const Constants& k, U64<N> bits) {
    return asReal((bits & U64<N>(k.fraction)) | U64<N>(k.oneBits));
}

// ---------------------------------------------------------------------------------------------------------------------
// Real32

struct Constants32 {
    // Constant terms first. erfinv t = t times a polynomial in t^2 below 1/8, relative error 2^-43.0; minimax.
    Constant64 series[5] = {0x1.c5bf891b4f2dap-1, 0x1.db29fb2537066p-3, 0x1.053c416c1708ep-3, 0x1.6266aa6eb3c65p-4,
                            0x1.12885a83a1f16p-4};
    // t times a rational function of s up to 7/8, relative error 2^-44.2; minimax.
    Constant64 middleNumerator[7] = {0x1.3d60b08df7cdcp+0,  -0x1.7c83385d06be7p+3, 0x1.427831e786ff2p+5,
                                     -0x1.d21f51f0be243p+5, 0x1.132f01e77675bp+5,  -0x1.a2a295cc269b1p+2,
                                     0x1.6fd9bb64dd69dp-3};
    Constant64 middleDenominator[7] = {1.0,
                                       -0x1.4e7c78d63ffa1p+3,
                                       0x1.3d4a28193e342p+5,
                                       -0x1.0bbe7645434d3p+6,
                                       0x1.8d186d5bbfb91p+5,
                                       -0x1.b9410b0b3c252p+3,
                                       0x1.d28ef24d12a8cp-1};
    // y times one of y down to u = 2^-149, relative error 2^-38.9; minimax.
    Constant64 tailNumerator[7] = {-0x1.4a4387d25dbbap-1, 0x1.6587c5f919f2cp+5, 0x1.73b9fa8902aacp+6,
                                   0x1.48acb938984efp+7,  0x1.fc271651a35cdp+6, 0x1.8e4d27c5ea7c2p+4,
                                   0x1.00030858a3e1fp+0};
    Constant64 tailDenominator[7] = {0x1.6f5a7fffc17fbp+5,
                                     0x1.d1e6a5778b0d8p+6,
                                     0x1.85a49e4b657d3p+7,
                                     0x1.91bc57a32a049p+7,
                                     0x1.02df4ff643849p+7,
                                     0x1.8e6f1de947e93p+4,
                                     1.0};
    // ln(1 + z) = z + z^2 (-1/2 + ...) and sqrt(1 + z) = 1 + z (1/2 + ...) on |z| <= 1/33, relative errors 2^-37.7 and
    // 2^-40.5; minimax but for the constant terms.
    Constant64 log[5] = {-0.5, 0x1.555551dbfc1ddp-2, -0x1.fffff815eef03p-3, 0x1.99f951aac2647p-3,
                         -0x1.55b1e471daaddp-3};
    Constant64 root[5] = {0.5, -0x1.fffffe05c4ffbp-4, 0x1.fffff941190dp-5, -0x1.4036cad71ed67p-5, 0x1.c07909e448b69p-6};
    Constant64 ln2 = 0x1.62e42fefa39efp-1;
    Constant64 rootTwo = 0x1.6a09e667f3bcdp+0;
    Constants common;
};
constexpr Constants32 constants32;

template <int N, std::size_t terms>
inline F64<N> horner(const Constant64 (&c)[terms], F64<N> x) {
    F64<N> sum(c[terms - 1]);
    for (std::size_t i = terms - 1; i-- > 0;) sum = sum * x + F64<N>(c[i]);
    return sum;
}

template <class Function, int N>
inline F64<N> quotient32(const Constants32& k, F64<N> numerator, F64<N> factor, F64<N> denominator) {
    F64<N> product = numerator * factor;
    if constexpr (Function::scaled) product = product * F64<N>(k.rootTwo);
    return product / denominator;
}

// Where |t| < 0.125: exact for t = 0.
template <class Function, int N>
inline F64<N> series32(const Constants32& k, F64<N> t) {
    F64<N> product = horner(k.series, t * t) * t;
    if constexpr (Function::scaled) product = product * F64<N>(k.rootTwo);
    return product;
}

// Where 0.125 <= |t| < 0.875.
template <class Function, int N>
inline F64<N> middle32(const Constants32& k, F64<N> t) {
    const F64<N> a = abs(t);
    const F64<N> s = (a + F64<N>(k.common.middle)) * (a - F64<N>(k.common.middle));
    return quotient32<Function>(k, horner(k.middleNumerator, s), t, horner(k.middleDenominator, s));
}

// -ln u.
template <int N>
inline F64<N> minusLog32(const Constants32& k, F64<N> u) {
    const InMemory<std::uint64_t, N> i(asBits(u) >> 48);
    const F64<N> e = exponentOf(k.common, asBits(u));
    const F64<N> z =
        gatherElementsByLowBits<4>(tables::recip32, i) * fractionOf(k.common, asBits(u)) - F64<N>(k.common.one);
    const F64<N> q = horner(k.log, z) * z * z;
    return F64<N>(0) - (((e * F64<N>(k.ln2) + q) + z) + gatherElementsByLowBits<4>(tables::logMid32, i));
}

// The root of w >= 1: of the exponent the even part is halved, and the rest stays with the fraction.
template <int N>
inline F64<N> root32(const Constants32& k, F64<N> w) {
    const U64<N> e = (asBits(w) >> 52) - U64<N>(std::uint64_t{1023});
    const U64<N> half = e >> 1;
    const F64<N> scale = asReal((half << 52) + U64<N>(k.common.oneBits));
    const F64<N> w2 = asReal(asBits(w) - (half << 53));
    const InMemory<std::uint64_t, N> i((asBits(w2) >> 48) ^ U64<N>(std::uint64_t{16}));
    const F64<N> v = scale * gatherElementsByLowBits<5>(tables::sqrtMid32, i);
    const F64<N> z = gatherElementsByLowBits<5>(tables::recip32, i) * w2 - F64<N>(k.common.one);
    return v * (F64<N>(k.common.one) + horner(k.root, z) * z);
}

// Where |t| >= 0.875; `sign` holds the sign bit of the result.
template <class Function, int N>
inline F64<N> tail32(const Constants32& k, F64<N> u, F64<N> sign) {
    const F64<N> y = root32(k, minusLog32(k, u));
    return quotient32<Function>(k, horner(k.tailNumerator, y), y | sign, horner(k.tailDenominator, y));
}

// ---------------------------------------------------------------------------------------------------------------------
// Real64

// erfinv t = t times a polynomial in t^2, t < 1/8, relative error 2^-75.8; minimax.
constexpr SplitPolynomial<8> seriesTerms = {{0x1.1453878p-5, -0x1.3f6036p-34},
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
constexpr SplitPolynomial<10> middleNumerator = {{0x1.8220b88p-5, 0x1.901e148p-32},
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
constexpr SplitPolynomial<10> middleDenominator = {{0x1.6c3e088p-2, 0x1.023d84p-32},
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
constexpr SplitPolynomial<11> nearNumerator = {{0x1.85a886p-14, 0x1.8922d5p-41},
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
constexpr SplitPolynomial<11> nearDenominator = {{0x1.85a7798p-14, -0x1.f537e88p-41},
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
constexpr SplitPolynomial<11> farNumerator = {{0x1.b10c878p-32, 0x1.0529738p-59},
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
constexpr SplitPolynomial<11> farDenominator = {{0x1.b10c7ep-32, 0x1.40abf8p-61},
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
    Constants common;
};
constexpr Constants64 constants64;

constexpr std::uint32_t nearField = 0x3CA;  // exponent field of 2^-53, from which on u takes the near row

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
    const F64<N> q = F64<N>(k.common.one) / denominator.hi;
    const auto [p, e] = exactProduct(denominator.hi, q);
    const F64<N> c = -q * ((p - F64<N>(k.common.one)) + (e + denominator.lo * q));
    return rounded<Function>(k, times(numerator, DoubleDouble<N>{q, c}));
}

// t pairs the central variable with its rest; |t| < 0.125.
template <class Function, int N>
inline F64<N> series64(const Constants64& k, DoubleDouble<N> t) {
    const auto [p, e] = exactProduct(t.hi, t.hi);
    const DoubleDouble<N> s = {p, e + F64<N>(k.common.two) * t.hi * t.lo};
    return rounded<Function>(k, times(horner(k.series, s), t));
}

// |t| from 0.125 to 0.875.
template <class Function, int N>
inline F64<N> middle64(const Constants64& k, DoubleDouble<N> t) {
    const F64<N> end(k.common.middle);
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
    const F64<N> z0 = mh * r - F64<N>(k.common.one);
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
    const F64<N> scale = asReal(power + U64<N>(k.common.oneBits));
    const F64<N> halfScale = asReal(power + U64<N>(std::uint64_t{1022} << 52));
    const F64<N> down = asReal(U64<N>(k.common.oneBits) - (power << 1));
    const F64<N> wh = w.hi * down;
    const F64<N> wl = w.lo * down;

    const InMemory<std::uint64_t, N> i((asBits(wh) >> 44) ^ U64<N>(std::uint64_t{256}));
    const F64<N> r = gatherElementsByLowBits<9>(tables::recip64, i);
    const auto [mh, ml] = dekkerSplit(wh, splitter21);
    const F64<N> z0 = mh * r - F64<N>(k.common.one);
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
inline ExponentAndFraction<1> partsOf(const Constants& k, F64<1> u) {
    if (asBits(u.raw) >> 52 != 0) return {exponentOf(k, asBits(u)), fractionOf(k, asBits(u))};
    // u · 2^1022, exact; abs for a u flushed to zero under rounding down, whose rest is -0.
    const F64<1> rest = abs(asReal(asBits(u) | U64<1>(k.oneBits)) - F64<1>(k.one));
    return {exponentOf(k, asBits(rest)) - F64<1>(1022), fractionOf(k, asBits(rest))};
}

// ---------------------------------------------------------------------------------------------------------------------
// Elements

template <class T>
inline T zeroByZero() {
    const T zero = opaque(T{0});
    return zero / zero;  // NOLINT(misc-redundant-expression)
}

// Elements that have no finite result. False: x is inside the domain.
template <class Function, class T>
inline bool outsideDomain(T x, T& result, OktStatus& status) {
    if (isNaN(x)) {
        result = x * x;
        return true;
    }
    OktStatus code = oktStatusDomain;
    if (isInfinite(x)) {
        result = zeroByZero<T>();
    } else {
        const Real64 p = x;
        constexpr Real64 end = Function::end;
        if (p > 0 && p < end) return false;
        if (p == 0 || p == end) {
            code = oktStatusSingularity;
            result = static_cast<T>(Function::central(F64<1>(p)).raw / opaque(Real64{0}));
        } else {
            result = zeroByZero<T>();
        }
    }
    status = code;
    raiseStatusFlag(code);
    return true;
}

template <class Function, int N>
inline F64<N> signOfResult(F64<N> p) {
    const F64<N> centre(Function::centre);
    const F64<N> minusZero = asReal(U64<N>(std::uint64_t{0x8000000000000000}));
    return zeroUnless(Function::negativeBelow ? p < centre : p > centre, minusZero);
}

template <class Function>
[[gnu::noinline]] Real32 element32(Real32 x, OktStatus& status) {
    Real32 result;
    if (outsideDomain<Function>(x, result, status)) return result;
    const F64<1> p(static_cast<Real64>(x));
    const F64<1> t = Function::central(p);
    const Real64 a = abs(t).raw;
    const F64<1> r = a < 0.125   ? series32<Function>(constants32, t)
                     : a < 0.875 ? middle32<Function>(constants32, t)
                                 : tail32<Function>(constants32, Function::tailMass(p), signOfResult<Function>(p));
    return narrow(r).raw;
}

template <class Function>
[[gnu::noinline]] Real64 element64(Real64 x, OktStatus& status) {
    Real64 result;
    if (outsideDomain<Function>(x, result, status)) return result;
    const F64<1> p(x);
    const F64<1> t = Function::central(p);
    const Real64 a = abs(t).raw;
    if (a < 0.875) {
        if (x == Function::centre) return 0;
        const DoubleDouble<1> pair = {t, Function::centralRest(p, t)};
        return a < 0.125 ? series64<Function>(constants64, pair).raw : middle64<Function>(constants64, pair).raw;
    }
    const F64<1> u = Function::tailMass(p);
    const auto [n, m] = partsOf(constants64.common, u);
    const DoubleDouble<1> y = root64(constants64, minusLog64(constants64, n, m));
    const F64<1> sign = signOfResult<Function>(p);
    return asBits(u.raw) >> 52 >= nearField ? tail64<Function, true>(constants64, y, sign).raw
                                            : tail64<Function, false>(constants64, y, sign).raw;
}

// ---------------------------------------------------------------------------------------------------------------------
// Elements side by side

// Inside the domain, and normal numbers: the caller may have subnormal ones count as zeros.
template <class Function>
inline constexpr WordRange ordinary32{0x00800000, asBits(static_cast<Real32>(Function::end))};
template <class Function>
inline constexpr WordRange ordinary64{0x00100000, highWord(Function::end)};

template <class Function, int N>
inline F64<N> tailOf(const Constants32& k, F64<N> p) {
    return tail32<Function>(k, Function::tailMass(p), signOfResult<Function>(p));
}

template <class Function>
inline void array32(const Real32* src, Real32* dst, std::int32_t len, OktStatus& status) {
    const Constants32& k = inMemory(constants32);
    SetAside<Real32> tails;
    const auto tryBlock = [&](const Real32* from, Real32* to, std::int32_t place) OKT_INLINE {
        const F32<8> x = F32<8>::load(from);
        if (!ordinary32<Function>.holdsAll(asBits(x))) [[unlikely]]
            return false;
        const F64<8> t = Function::central(widen(x));
        const Mask64<8> small = abs(t) < F64<8>(k.common.smallLimit);
        const Mask64<8> central = abs(t) < F64<8>(k.common.middle);
        if (!all(central)) {
            Real32 block[8];
            x.store(block);
            tails.take(block, place, laneBits(~central));
        }
        // An element in the very middle is exact, so that the steps of others raise a flag only in their company.
        if (any(central & ~small)) [[likely]] {
            const F64<8> rational = middle32<Function>(k, select(central, t, F64<8>(0.5)));
            narrow(select(small, series32<Function>(k, t), rational)).store(to);
        } else if (any(small)) {
            narrow(series32<Function>(k, zeroUnless(small, t))).store(to);
        }
        return true;
    };
    const auto finish = [&](Real32* chunk) OKT_INLINE {
        tails.template work<8>([&k](F32<8> x) { return narrow(tailOf<Function>(k, widen(x))); }, chunk);
    };
    sortedElementLoop(src, dst, len, tryBlock, finish, element32<Function>, status);
}

template <class Function, int N>
inline DoubleDouble<N> centralPair(F64<N> p) {
    const F64<N> t = Function::central(p);
    return {t, Function::centralRest(p, t)};
}

template <class Function, bool nearRow, int N>
[[gnu::noinline]] F64<N> tailOf(const Constants64& k, F64<N> p) {
    const F64<N> u = Function::tailMass(p);
    const DoubleDouble<N> y =
        root64(k, minusLog64(k, exponentOf(k.common, asBits(u)), fractionOf(k.common, asBits(u))));
    return tail64<Function, nearRow>(k, y, signOfResult<Function>(p));
}

template <class Function>
inline void array64(const Real64* src, Real64* dst, std::int32_t len, OktStatus& status) {
    const Constants64& k = inMemory(constants64);
    SetAside<Real64> small, middle, near, far;
    const auto tryBlock = [&](const Real64* from, Real64* to, std::int32_t place) OKT_INLINE {
        const F64<8> x = F64<8>::load(from);
        if (!ordinary64<Function>.holdsAll(packHighWords(asBits(x)))) [[unlikely]]
            return false;
        const F64<8> a = abs(Function::central(x));
        const int smallBits = laneBits(a < F64<8>(k.common.smallLimit));
        const int tailBits = laneBits(a >= F64<8>(k.common.middle));
        if ((smallBits | tailBits) != 0) {
            Real64 block[8];
            x.store(block);
            if (smallBits != 0) {
                if (any(x == F64<8>(Function::centre))) return false;  // exact, by the element routine
                small.take(block, place, smallBits);
            }
            if (tailBits != 0) {
                const int farBits = laneBits(Function::tailMass(x) < F64<8>(0x1p-53)) & tailBits;
                near.take(block, place, tailBits & ~farBits);
                if (farBits != 0) far.take(block, place, farBits);
            }
            middle.take(block, place, 0xFF & ~(smallBits | tailBits));
            return true;
        }
        middle64<Function>(k, centralPair<Function>(x.lowHalf())).store(to);
        middle64<Function>(k, centralPair<Function>(x.highHalf())).store(to + 4);
        return true;
    };
    const auto finish = [&](Real64* chunk) OKT_INLINE {
        small.template work<4>([&k](F64<4> p) { return series64<Function>(k, centralPair<Function>(p)); }, chunk);
        middle.template work<4>([&k](F64<4> p) { return middle64<Function>(k, centralPair<Function>(p)); }, chunk);
        near.template work<4>([&k](F64<4> p) { return tailOf<Function, true>(k, p); }, chunk);
        far.template work<4>([&k](F64<4> p) { return tailOf<Function, false>(k, p); }, chunk);
    };
    sortedElementLoop(src, dst, len, tryBlock, finish, element64<Function>, status);
}

}  // namespace okt::quantile
