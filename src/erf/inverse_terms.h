// What the inverse of erf shares with the normal quantile and the inverse of erfc, which are inverses of erf, too.
#pragma once

#include "lanes/constant.h"
#include "lanes/lanes.h"

#include <cstddef>
#include <cstdint>

namespace okt::inverse_erf {

// The exponent of a positive normal number, and its fraction with exponent 0.
template <int N>
inline F64<N> exponentOf(F64<N> w) {
    return asReal((asBits(w) >> 52) | U64<N>(std::uint64_t{0x4330000000000000})) - F64<N>(0x1p52 + 1023);
}
template <int N>
inline F64<N> fractionOf(F64<N> w) {
    return asReal((asBits(w) & U64<N>(std::uint64_t{0x000FFFFFFFFFFFFF})) | U64<N>(std::uint64_t{0x3FF0000000000000}));
}

template <int N, std::size_t terms>
inline F64<N> horner(const Constant64 (&c)[terms], F64<N> x) {
    F64<N> sum(c[terms - 1]);
    for (std::size_t i = terms - 1; i-- > 0;) sum = sum * x + F64<N>(c[i]);
    return sum;
}

// Coefficients for arguments up to 7/8 on Real32.
struct CentralTerms32 {
    // Constant terms first. erfinv x = x times a polynomial in x^2 below 1/8, relative error 2^-43.0; minimax.
    Constant64 small[5] = {0x1.c5bf891b4f2dap-1, 0x1.db29fb2537066p-3, 0x1.053c416c1708ep-3, 0x1.6266aa6eb3c65p-4,
                           0x1.12885a83a1f16p-4};
    // x times a rational function of x^2 - 0.875^2 up to 7/8, relative error 2^-44.2; minimax.
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
};

}  // namespace okt::inverse_erf
