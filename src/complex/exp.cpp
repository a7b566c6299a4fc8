// e^(a + ib) = e^a·cos b + i·e^a·sin b, in blocks that need no branch; an
// element outside the blocks' range is worked again by the written steps.
//
// Complex32, first routine: all in Real32. e^a as the real function computes it; b = n·pi/2
// + r, a polynomial for the sine and one for the cosine of r, exchange and signs by n.
// Complex32, second routine: all in Real64. e^a by a table of 2^(j/64) and three terms, sine and
// cosine by the table of 64 steps a turn, each result rounded twice, to Real64 and to Real32.
// Complex64: the same with longer series, and the three factors as heads and tails: products
// of the heads, whose lower bits are cleared, are exact, those with a tail are added up
// below them. The sine and its tail are scaled by 2^100, so that a tiny one can be split.
//
// Largest errors seen, real and imaginary part:
//   Complex32 in Real32  3.382 ulp at (-0x1.63b9a8p+4, 0x1.1da196p+13), 3.150 ulp at (0x1.285ac2p+6, -0x1.330044p+13)
//   Complex32 in Real64  0.5004 ulp at (-0x1.b97e36p+5, 0x1.58c362p+2) and (0x1.cb201ep+4, 0x1.08e0eep+4)
//   Complex64            0.5105 ulp at (0x1.8e4b97af4f301p+8, 0x1.bd3220ec85f04p+8),
//                        0.5133 ulp at (-0x1.78965c80ccd6p+8, -0x1.37d03a384b4ffp+4)
//
// GCC: -fschedule-insns -fsched-pressure --param=sched-pressure-algorithm=2 (0.97)
#include "exports/Exp.h"
#include "complex/block_loop.h"
#include "complex/cosine_and_sine.h"
#include "complex/exp_tables.h"
#include "complex/single_elements.h"
#include "lanes/constant.h"
#include "lanes/lookup.h"
#include "tables/power_pairs32.h"

namespace okt::complex {
namespace {

template <class T>
using ComplexOfPart = std::conditional_t<sizeof(T) == 8, Complex64, Complex32>;

template <class T, int N>
struct ComplexLanes {
    Vec<T, N> re, im;

    static ComplexLanes load(const ComplexOfPart<T>* from) {
        const auto [re, im] = loadInterleaved<N>(partsOf(from));
        return {re, im};
    }
    void store(ComplexOfPart<T>* to) const {
        if constexpr (Register<Vec<T, N>>) {
            storeInterleaved(partsOf(to), re, im);
        } else {
            ComplexLanes<T, N / 2>{re.lowHalf(), im.lowHalf()}.store(to);
            ComplexLanes<T, N / 2>{re.highHalf(), im.highHalf()}.store(to + N / 2);
        }
    }
};

// A kernel is made of
//   block, atOnce       elements of a pass, and of those worked side by side
//   flagged(z)          one bit for each element that is out of its range
//   withoutFlagged(z)   what the arithmetic gets in a block that has such elements
//   work(z, to)         the arithmetic on `atOnce` elements
template <int N, class Kernel, class T>
OKT_INLINE inline void work(const Kernel& kernel, const ComplexLanes<T, N>& z, ComplexOfPart<T>* to) {
    if constexpr (N > Kernel::atOnce) {
        work(kernel, ComplexLanes<T, N / 2>{z.re.lowHalf(), z.im.lowHalf()}, to);
        work(kernel, ComplexLanes<T, N / 2>{z.re.highHalf(), z.im.highHalf()}, to + N / 2);
    } else {
        kernel.work(z, to);
    }
}

// Every flagged element is worked once more by itself, in order, after its block was stored; `to` may be its source.
template <int N, class Kernel, class T>
[[gnu::noinline, gnu::cold]] void workMixed(const Kernel& kernel, const ComplexLanes<T, N>& z, int flagged,
                                            ComplexOfPart<T>* to) {
    ComplexOfPart<T> source[N];
    z.store(source);
    work(kernel, kernel.withoutFlagged(z), to);
    for (int k = 0; k < N; ++k)
        if ((flagged >> k & 1) != 0) storeElement(to + k, singleExp(source[k]));
}

template <class Kernel, class Z>
void blocks(const Kernel& kernel, const Z* src, Z* dst, std::int32_t len) {
    constexpr int N = Kernel::block;
    paddedBlocks<N>(src, dst, len, [&kernel](const Z* from, Z* to) OKT_INLINE {
        const auto z = ComplexLanes<decltype(Z::re), N>::load(from);
        if (const int flagged = kernel.flagged(z); flagged != 0) [[unlikely]]
            workMixed(kernel, z, flagged, to);
        else
            work(kernel, z, to);
    });
}

// ---------------------------------------------------------------------------------------------------------------------
// Complex32 in Real32

struct SingleConstants {
    Constant32 invLn2x128 = 0x1.715476p+7F;  // 128/ln 2
    Constant32 shiftRe = 0x1.6p+23F;         // an integer multiple of 128 whose unit in the last place is 1
    Constant32 ln2Over128Hi = 0x1.63p-8F;    // nine bits, so that its product with n is exact
    Constant32 ln2Over128Lo = -0x1.bd0106p-20F;
    Constant32 half = 0.5F;
    Constant32 one = 1.0F;
    Constant32 twoOverPi = 0x1.45f306p-1F;
    Constant32 shiftIm = 0x1.8p+23F;
    Constant32 halfPi1 = 0x1.92p+0F;  // pi/2 in four parts; n times the first three is exact
    Constant32 halfPi2 = 0x1.fb4p-12F;
    Constant32 halfPi3 = 0x1.444p-24F;
    Constant32 halfPi4 = 0x1.68c234p-39F;
    // sin r = r (1 + s3 r^2 + ...) on |r| <= pi/4, relative error 2^-26.8; fitted.
    Constant32 s3 = -0x1.555546p-3F;
    Constant32 s5 = 0x1.11073ap-7F;
    Constant32 s7 = -0x1.9943ep-13F;
    // cos r = 1 + c2 r^2 + ... on |r| <= pi/4, relative error 2^-32.4; fitted but for -1/2.
    Constant32 c2 = -0.5F;
    Constant32 c4 = 0x1.55554ap-5F;
    Constant32 c6 = -0x1.6c0c34p-10F;
    Constant32 c8 = 0x1.99eb9cp-16F;
    Pattern32 scaleOfN = ~std::uint32_t{127};
    Pattern32 scaleBias = std::uint32_t{127 << 7};
    Pattern32 magnitude = std::uint32_t{0x7FFFFFFF};
    Pattern32 boundRe = std::uint32_t{0x42AEAC50};  // 87.3365478515625, in range itself
    Pattern32 boundIm = std::uint32_t{0x461C4000};  // 10000.0, in range itself
};

struct Single {
    static constexpr int block = 8;
    static constexpr int atOnce = 8;
    const SingleConstants& c;

    template <int N>
    int flagged(const ComplexLanes<Real32, N>& z) const {
        return laneBits(greaterSigned(asBits(z.re) & c.magnitude, U32<N>(c.boundRe)) |
                        greaterSigned(asBits(z.im) & c.magnitude, U32<N>(c.boundIm)));
    }

    // Flagged elements go through the same arithmetic.
    template <int N>
    static ComplexLanes<Real32, N> withoutFlagged(const ComplexLanes<Real32, N>& z) {
        return z;
    }

    template <int N>
    OKT_INLINE void work(const ComplexLanes<Real32, N>& z, Complex32* to) const {
        const F32<N> t = z.re * c.invLn2x128 + c.shiftRe;
        const InMemory<std::uint32_t, N> n(asBits(t));
        const F32<N> m = t - c.shiftRe;
        const F32<N> rho = (z.re - m * c.ln2Over128Hi) - m * c.ln2Over128Lo;
        const auto [hi, lo] = gatherPairsByLowBits<8, Real32>(powerPairs32.pairs, n);
        const F32<N> p = (rho * rho) * c.half + (lo + rho);
        // 2^k as a factor: at the lower bound the product is subnormal.
        const F32<N> e = (p * hi + hi) * asReal(((asBits(t) & c.scaleOfN) + c.scaleBias) << 16);

        const F32<N> u = z.im * c.twoOverPi + c.shiftIm;
        const F32<N> q = u - c.shiftIm;
        const F32<N> r0 = ((z.im - q * c.halfPi1) - q * c.halfPi2) - q * c.halfPi3;
        const F32<N> x = r0 * r0;
        const F32<N> r = r0 - q * c.halfPi4;
        const F32<N> s = (((x * c.s7 + c.s5) * x + c.s3) * x + c.one) * r;
        const F32<N> k = (((x * c.c8 + c.c6) * x + c.c4) * x + c.c2) * x + c.one;

        // An odd n exchanges the two. The sine is negative where bit 1
        // of n is set, the cosine where bits 0 and 1 differ.
        const U32<N> parity = asBits(u) << 31;
        const U32<N> exchange = (asBits(s) ^ asBits(k)) & shiftRightSigned(parity, 31);
        const U32<N> sineSign = (asBits(u) << 30) & ~U32<N>(c.magnitude);
        const F32<N> re = asReal(asBits(k) ^ exchange ^ (sineSign ^ parity)) * e;
        const F32<N> im = asReal(asBits(s) ^ exchange ^ sineSign) * e;
        ComplexLanes<Real32, N>{re, im}.store(to);
    }
};

// ---------------------------------------------------------------------------------------------------------------------
// What the two kernels in Real64 share

struct DoubleConstants {
    Constant64 invLn2x64 = 0x1.71547652b82fep+6;  // 64/ln 2
    Constant64 shift = 0x1.8p+52;
    Constant64 ln2Over64Hi = 0x1.62e42fefap-7;
    Constant64 ln2Over64Lo = 0x1.cf79abc9e3b3ap-46;
    Constant64 half = 0.5;
    // e^r = 1 + r + r^2/2 + r^3/6 on |r| <= ln 2/128, relative error 2^-34.6; Taylor.
    Constant64 sixth = 0x1.5555555555555p-3;
    // e^r = 1 + r + r^2/2 + r^3 (e3 + e4 r + ...) on |r| <= ln 2/128, relative error 2^-70.1; minimax.
    Constant64 e3 = 0x1.55555555548f8p-3;
    Constant64 e4 = 0x1.5555555558fccp-5;
    Constant64 e5 = 0x1.111123aaf20d3p-7;
    Constant64 e6 = 0x1.6c16a1c2a3ffdp-10;
    AlternatingConstant<std::uint64_t> magnified{0, std::uint64_t{100} << 52};
    Pattern64 head = std::uint64_t{0xFFFFFFFFF8000000};
    AlternatingConstant<std::uint64_t> upperWordOfImaginary{0, 0xFFFFFFFF00000000};
    Pattern64 scaleOfN = ~std::uint64_t{63};
    Pattern64 scaleBias = std::uint64_t{1023 << 6};
    angle::Constants angle;
};

// a = n·ln 2/64 + rho, n = 64 k + j.
template <int N>
struct Exponent {
    F64<N> rho, hi, lo;  // 2^(j/64) = hi (1 + lo)
    F64<N> scale;        // 2^k
};

template <int N>
inline Exponent<N> exponentOf(const DoubleConstants& c, F64<N> a) {
    const F64<N> t = a * c.invLn2x64 + c.shift;
    const InMemory<std::uint64_t, N> n(asBits(t));
    const F64<N> m = t - c.shift;
    const F64<N> rho = (a - m * c.ln2Over64Hi) - m * c.ln2Over64Lo;
    const auto [hi, lo] = gatherPairsByLowBits<6, Real64>(tables::ExpComplexTable, n);
    return {rho, hi, lo, asReal(((asBits(t) + c.scaleBias) & c.scaleOfN) << 46)};
}

// ---------------------------------------------------------------------------------------------------------------------
// Complex32 in Real64

struct Wide {
    static constexpr int block = 8;
    static constexpr int atOnce = 4;
    const DoubleConstants& c;

    static constexpr std::uint32_t bound = 0x44000000;  // 512.0

    template <int N>
    static Mask32<N> isOut(F32<N> part) {
        return greaterSigned(asBits(part) & U32<N>(0x7FFFFFFF), U32<N>(bound - 1));
    }
    template <int N>
    static int flagged(const ComplexLanes<Real32, N>& z) {
        return laneBits(isOut(z.re) | isOut(z.im));
    }
    // A part out of range becomes 0.0.
    template <int N>
    static ComplexLanes<Real32, N> withoutFlagged(const ComplexLanes<Real32, N>& z) {
        return {zeroIf(isOut(z.re), z.re), zeroIf(isOut(z.im), z.im)};
    }

    template <int N>
    OKT_INLINE void work(const ComplexLanes<Real32, N>& z, Complex32* to) const {
        const auto [rho, hi, lo, scale] = exponentOf(c, widen(z.re));
        const F64<N> p = ((rho * c.sixth + c.half) * rho) * rho + rho;
        // 2^k goes into the factor, which changes no rounding: every product is a normal number.
        const F64<N> e = (hi + (lo + p) * hi) * scale;
        const auto [main, low] = cosineAndSine(angle::rows, angle::reduce<3>(c.angle, widen(z.im)));
        narrow((main + low) * eachTwice(e)).store(reinterpret_cast<Real32*>(to));
    }
};

// ---------------------------------------------------------------------------------------------------------------------
// Complex64

struct Double {
    static constexpr int block = 4;
    static constexpr int atOnce = 4;
    const DoubleConstants& c;

    static constexpr std::uint32_t boundHigh = 0x40800000;  // high word of 512.0

    template <int N>
    static Mask32<N> isOut(F64<N> part) {
        return greaterSigned(packHighWords(asBits(part)) & U32<N>(0x7FFFFFFF), U32<N>(boundHigh - 1));
    }
    template <int N>
    static int flagged(const ComplexLanes<Real64, N>& z) {
        return laneBits(isOut(z.re) | isOut(z.im));
    }
    template <int N>
    static ComplexLanes<Real64, N> withoutFlagged(const ComplexLanes<Real64, N>& z) {
        return {zeroIf(widen(isOut(z.re)), z.re), zeroIf(widen(isOut(z.im)), z.im)};
    }

    template <int N>
    OKT_INLINE void work(const ComplexLanes<Real64, N>& z, Complex64* to) const {
        const auto [rho, hi, lo, scale] = exponentOf(c, z.re);
        const F64<N> p = (((((rho * c.e6 + c.e5) * rho + c.e4) * rho + c.e3) * rho + c.half) * rho) * rho + rho;
        const F64<N> rise = (p + lo) * hi;
        const F64<N> e = hi + rise;
        const F64<N> eh = e & U64<N>(c.head);
        const F64<N> el = (e - eh) + ((hi - e) + rise);

        const auto [m, w] = cosineAndSine(angle::rowsOfMagnifiedSine, angle::reduce<4>(c.angle, z.im));
        // The imaginary part needs all these steps; the real part
        // takes them with a factor of 1 and without the cut of x.
        const F64<2 * N> v = m + w;
        const F64<2 * N> vh = v & U64<2 * N>(c.head);
        const F64<2 * N> vl = (w - (v - m)) - (vh - v);
        const F64<2 * N> eh2 = eachTwice(eh);
        const F64<2 * N> el2 = eachTwice(el);
        const F64<2 * N> x = eh2 * vh;
        const F64<2 * N> xh = x & U64<2 * N>(c.upperWordOfImaginary);
        const F64<2 * N> y = (eh2 * vl + (vh * el2 + el2 * vl)) - (xh - x);
        const F64<2 * N> k = asReal(asBits(eachTwice(scale)) - U64<2 * N>(c.magnified));  // 2^k, 2^(k - 100)
        (xh * k + y * k).store(reinterpret_cast<Real64*>(to));
    }
};

constexpr SingleConstants singleConstants;
constexpr DoubleConstants doubleConstants;

void expSingle(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
    blocks(Single{inMemory(singleConstants)}, src, dst, len);
}

void expWide(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
    blocks(Wide{inMemory(doubleConstants)}, src, dst, len);
}

void expDouble(const Complex64* src, Complex64* dst, std::int32_t len, OktStatus&) {
    blocks(Double{inMemory(doubleConstants)}, src, dst, len);
}

}  // namespace

OKT_EXPORT_GRADES(Exp, 32fc, A11, expSingle)
OKT_EXPORT_GRADES(Exp, 32fc, A24, expWide)
OKT_EXPORT(Exp, 64fc, expDouble)

}  // namespace okt::complex
