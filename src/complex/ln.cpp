// Natural logarithm, ln|z| + i·arg z, as ln(s)/2 with s = a^2 + b^2 and the angle of the point (a, b). Where |s - 1| is
// not above 0.03, the logarithm is a polynomial in w = s - 1, taken from the squares without the rounding of s.
//
// Complex32 has three routines:
//   A11  s in Real64, the rest in Real32: a polynomial over [sqrt(1/2), sqrt(2)), and the arctangent of the quotient of
//        the smaller and the larger part, which comes from an approximate reciprocal (lanes/seeds.h) and one Newton
//        step.
//   A21  ln s by a table of short reciprocals in Real64 (see explog/ln.cpp), the angle in Real32 from a true quotient.
//   A24  everything in Real64. The angle is K + arctan((p·B - q·A)/(p·A + q·B)), A = |a|, B = |b|, with K the angle of
//        (p, q), one of five directions, and pi - K - arctan(...) for a < 0.
// Complex64 has one: as A24 with a finer table; s, its distance from 1, the
// two sides of the quotient and the quotient are sums of a head and a rest.
//
// An element with a part outside a routine's range goes through the written steps; its neighbours do not.
//
// Largest errors seen, real and imaginary part, in ulp:
//   A11        2524 at (0x1.8fff82p-19, 0x1.fffffep-1), 3775 with approximations of all kinds: the leading coefficient
//              of the angle 3771, one step from any reciprocal within its error of 1.5·2^-12 2.3, the roundings 4
//   A21        0.839 at (-0x1.19a096p-1, 0x1.ab497cp-1), 3.00 at (0x1.75a948p-1, 0x1.77f93ep-1): beside the diagonal
//   A24        0.5000, 0.5004 at (0x1.de23dep+34, 0x1.4552e4p+33)
//   Complex64  0.5018 at (0x1.e4016c940dd0dp-1, -0x1.7a5b3270bf60ep-2), 0.5215 at (0x1.e8b6b0012d14ep+0,
//              -0x1.a2a53fd964754p-1)
//
// GCC: -fschedule-insns -fsched-pressure (0.98)
#include "exports/Ln.h"
#include "complex/ln_packed32_a11.h"
#include "complex/ln_packed32_a21.h"
#include "complex/ln_packed32_a24.h"
#include "complex/ln_packed64.h"
#include "lanes/seeds.h"

namespace okt::complex::logarithm {

OKT_EXPORT_GRADES(Ln, 32fc, A11, lnc32A11)
OKT_EXPORT_GRADES(Ln, 32fc, A21, lnc32A21)
OKT_EXPORT_GRADES(Ln, 32fc, A24, lnc32A24)
OKT_EXPORT(Ln, 64fc, lnc64)

}  // namespace okt::complex::logarithm
