// Complex conjugate: the sign bit of every imaginary part inverted, by integer operations alone, so that a signalling
// NaN stays signalling and no flag is raised.
#include "exports/Conj.h"
#include "arith/elementwise.h"

namespace okt {
namespace {

void conj32(const Complex32* src, Complex32* dst, std::int32_t len, OktStatus&) {
    // One complex element is one 64-bit pattern, the imaginary part above.
    const auto invert = [](auto z) { return z ^ decltype(z)(0x8000000000000000u); };
    vectorLoop(invert, reinterpret_cast<std::uint64_t*>(dst), static_cast<std::size_t>(len),
               reinterpret_cast<const std::uint64_t*>(src));
}

void conjugates(const Complex64* src, Complex64* dst, std::int32_t len) {
    const U64x2 imaginarySign(U64<1>(0), U64<1>(0x8000000000000000u));
#pragma GCC unroll 4
    for (std::int32_t i = 0; i < len; ++i)
        (U64x2::load(patterns(parts(src + i))) ^ imaginarySign).store(patterns(parts(dst + i)));
}

void conj64(const Complex64* src, Complex64* dst, std::int32_t len, OktStatus&) { conjugates(src, dst, len); }

}  // namespace

OKT_EXPORT(Conj, 32fc, conj32)
OKT_EXPORT(Conj, 64fc, conj64)

}  // namespace okt
