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
    Constant64 series[5] = {0.8862269254528556, 0.23201366622277247, 0.12755633460153998, 0.08652369094055386,
                            0.06702456814866439};
    Constant64 middleNumerator[7] = {1.2397566172219774, -11.891018087093427, 40.30868893509604,  -58.26529300766244,
                                     34.39795285063038,  -6.541173409811038,  0.17961450959744676};
    Constant64 middleDenominator[7] = {1.0,
                                       -10.452694338280539,
                                       39.66120929452019,
                                       -66.93599804137493,
                                       49.63692733458368,
                                       -13.78918983644795,
                                       0.9112468451579203};
    Constant64 tailNumerator[7] = {spread64(0xBFE4A4387D25DBBA), spread64(0x4046587C5F919F2C),
                                   spread64(0x40573B9FA8902AAC), spread64(0x40648ACB938984EF),
                                   spread64(0x405FC271651A35CD), spread64(0x4038E4D27C5EA7C2),
                                   spread64(0x3FF00030858A3E1F)};
    Constant64 tailDenominator[7] = {spread64(0x4046F5A7FFFC17FB), spread64(0x405D1E6A5778B0D8),
                                     spread64(0x40685A49E4B657D3), spread64(0x40691BC57A32A049),
                                     spread64(0x40602DF4FF643849), spread64(0x4038E6F1DE947E93),
                                     spread64(0x3FF0000000000000)};
    Constant64 log[5] = {spread64(0xBFE0000000000000), spread64(0x3FD555551DBFC1DD),  // z^2 to z^6
                         spread64(0xBFCFFFFF815EEF03), spread64(0x3FC99F951AAC2647), spread64(0xBFC55B1E471DAADD)};
    Constant64 root[5] = {spread64(0x3FE0000000000000), spread64(0xBFBFFFFFE05C4FFB),  // z to z^5
                          spread64(0x3FAFFFFF941190D0), spread64(0xBFA4036CAD71ED67), spread64(0x3F9C07909E448B69)};
    Constant64 ln2 = spread64(0x3FE62E42FEFA39EF);
    Constant64 rootTwo = spread64(0x3FF6A09E667F3BCD);
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

constexpr SplitPolynomial<8> seriesTerms = {{0.03373123612254858, -7.261765494481764e-11},
                                            {
                                                {0.886226925452758, -3.8332919812157375e-17},
                                                {0.2320136665346545, -1.2109724793986283e-18},
                                                {0.12755617530559818, 2.6932826951855787e-18},
                                                {0.0865521292414006, 5.3829105528752144e-18},
                                                {0.06495961779365295, 6.173933310229921e-20},
                                                {0.051731273083680945, -2.2242512320521565e-18},
                                                {0.04283768367207295, -3.2052209418105908e-18},
                                                {0.03640535287477883, -7.743440446784187e-19},
                                                {0.033731236049930925, -3.344281377853773e-18},
                                            }};
constexpr SplitPolynomial<10> middleNumerator = {{0.04713474307209253, 3.6390474661418537e-10},
                                                 {
                                                     {1.2397566172220378, 9.352370023398099e-17},
                                                     {-20.636275809146454, -1.2081421313357034e-15},
                                                     {141.73956705027214, -6.053317710932726e-15},
                                                     {-520.5564941869616, -3.7902441946002304e-14},
                                                     {1108.7954980651432, 2.435826302641561e-14},
                                                     {-1392.3849174795268, -1.4997447757109094e-14},
                                                     {1005.1478089800004, 5.5853192072116487e-14},
                                                     {-389.7095153679463, -2.54432685833488e-14},
                                                     {71.03065413765944, 5.8123168143423814e-15},
                                                     {-4.617904322703956, -2.377953500635408e-16},
                                                     {0.04713474343599728, 3.082263494300143e-18},
                                                 }};
constexpr SplitPolynomial<10> middleDenominator = {{0.3557053878903389, 2.3486818045981295e-10},
                                                   {
                                                       {1.0, 0.0},
                                                       {-17.50670606979832, 5.891506382159018e-16},
                                                       {127.55184959089254, -1.3980483879859926e-15},
                                                       {-502.4388203190141, 5.968047966493524e-15},
                                                       {1164.7731572234024, 3.709533929410378e-14},
                                                       {-1624.1177644283844, 6.760559961873022e-14},
                                                       {1339.6254722712079, -5.418339401153821e-14},
                                                       {-619.9221276983031, -4.866183927587615e-14},
                                                       {145.1907725843825, 2.1101289976214795e-15},
                                                       {-14.10998848682359, 8.581266791633685e-16},
                                                       {0.3557053881252071, 1.0675794366948005e-17},
                                                   }};
constexpr SplitPolynomial<11> nearNumerator = {{9.290177695220336e-05, 6.983499336535998e-13},
                                               {
                                                   {-5.839739322128422e-05, 1.742804033463758e-21},
                                                   {0.8868050437275852, -3.694685982377649e-17},
                                                   {2.9302479116560387, 5.597114239809448e-17},
                                                   {6.448787792216457, 6.154710740049124e-17},
                                                   {9.362325911338496, 6.626190074225319e-16},
                                                   {9.896178023349787, -2.316651880983526e-17},
                                                   {7.429911601212078, -1.5523513709134236e-16},
                                                   {3.4911342406316543, 1.2823146548987466e-16},
                                                   {0.9483218379467928, 4.900165629463605e-17},
                                                   {0.12465558125517977, -2.1462203544044758e-18},
                                                   {0.0064485781568118265, 1.0549260827794658e-19},
                                                   {9.29017776505533e-05, 6.184199479243381e-21},
                                               }};
constexpr SplitPolynomial<11> nearDenominator = {{9.290080015489366e-05, -8.90342717629368e-13},
                                                 {
                                                     {1.0, 0.0},
                                                     {3.3091104205939383, 3.7272692415195797e-17},
                                                     {7.771848808721214, -2.0512457427569886e-16},
                                                     {12.216113748734934, 2.09525688547992e-16},
                                                     {14.66095946056114, -6.009139003047892e-16},
                                                     {12.977153206341134, 5.195217817689384e-16},
                                                     {8.508105499677786, 1.24065211335145e-16},
                                                     {3.6809551072391598, 1.6713486165818718e-16},
                                                     {0.9615028782392243, -3.0341770430280365e-17},
                                                     {0.1249206124642317, 5.690545408340104e-18},
                                                     {0.006448918454877269, -3.1930026498809e-19},
                                                     {9.290079926455094e-05, -6.7560603192621534e-21},
                                                 }};
constexpr SplitPolynomial<11> farNumerator = {{3.938557188720715e-10, 1.7697019972507424e-18},
                                              {
                                                  {0.04491236418585928, 3.627845891140854e-19},
                                                  {0.654271843421605, -1.9366717565653495e-17},
                                                  {2.064599545056116, -2.037800395510143e-16},
                                                  {1.7644506095680803, -3.654295629320021e-17},
                                                  {2.2215687640840924, 1.608682021954641e-16},
                                                  {1.182341617417255, 1.0573929837243894e-16},
                                                  {0.2497465156003653, 9.59642275588532e-19},
                                                  {0.023520568338860057, 8.3916391366322635e-19},
                                                  {0.0010310180511501827, 8.022969512843284e-20},
                                                  {2.050890780883156e-05, 4.692911195479425e-22},
                                                  {1.6547394284765373e-07, -7.855812383390245e-24},
                                                  {3.938557206417735e-10, 1.3026535314511455e-26},
                                              }};
constexpr SplitPolynomial<11> farDenominator = {{3.938555870330873e-10, 5.43239079970472e-19},
                                                {
                                                    {1.0, -1e-120},
                                                    {1.717988654125873, -5.443121264970869e-17},
                                                    {3.2870076168388858, 1.7131758902394635e-16},
                                                    {2.8408522102451514, 1.5489699287891103e-16},
                                                    {2.544636340503929, 3.443353269296628e-17},
                                                    {1.2215294232401996, 5.0023888558165125e-17},
                                                    {0.2518540962946422, -2.2817317583266946e-17},
                                                    {0.023570948721111748, -1.1268159178277772e-18},
                                                    {0.001031507653087143, -3.1383850713037555e-20},
                                                    {2.0510380210273295e-05, -1.3899165049874828e-21},
                                                    {1.65474195079671e-07, -1.5496755375475885e-24},
                                                    {3.938555875763264e-10, -4.7200135937544375e-27},
                                                }};

struct Constants64 {
    SplitPolynomial<8> series = seriesTerms;
    SplitPolynomial<10> middleN = middleNumerator, middleD = middleDenominator;
    SplitPolynomial<11> nearN = nearNumerator, nearD = nearDenominator;
    SplitPolynomial<11> farN = farNumerator, farD = farDenominator;
    Constant64 ln2Hi = spread64(0x3FE62E4300000000);  // short, so that its product with an exponent is exact
    Constant64 ln2Lo = spread64(0xBE205C610CA86C39);
    Constant64 log2 = spread64(0xBFE0000000000000);
    Constant64 log3 = spread64(0x3FD55555555516C2);
    Constant64 log4 = spread64(0xBFCFFFFFFFFF71AB);
    Constant64 log5 = spread64(0x3FC9999FF151CD6B);
    Constant64 log6 = spread64(0xBFC5555B76AD7FA4);
    Constant64 root2 = spread64(0xBFC0000000000000);
    Constant64 root3 = spread64(0x3FAFFFFFFFFFBC81);
    Constant64 root4 = spread64(0xBFA3FFFFFFFF44CD);
    Constant64 root5 = spread64(0x3F9C00061EB82F5C);
    Constant64 root6 = spread64(0xBF95000812C497D6);
    SplitTerm rootTwo = {spread64(0x3FF6A09E667F3BCD), spread64(0xBC9BDD3413B26456)};
    SplitTerm rootTwoSplit = {spread64(0x3FF6A09E68000000), spread64(0xBE380C4330000000)};
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
