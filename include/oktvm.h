/**
 * @file oktvm.h
 * @brief oktvm: elementary, transcendental and special functions over whole arrays.
 *
 * Every vector function takes source arrays, destination arrays and an element count, applies one function to
 * each element in ascending order, and returns a status. There is nothing to initialise, no state between calls,
 * and every function may run on any number of threads at once. Arrays need no particular alignment.
 *
 * A name gives the family, the element type and the accuracy grade: `oktsExp_64f_A53` is the exponential of an
 * array of Real64 in the grade that promises all 53 significand bits. But for ErfInv on 64f and Exp and Ln on
 * 32fc, the grades of one family and type are one routine and give the same bits.
 *
 * Errors (negative) are found before anything is done and leave the destination untouched. Warnings (positive)
 * mean that all elements were computed; when several elements warn, the last one in the array decides the status
 * (InvSqrt on 32f has an exception).
 *
 * After each call the x87 control word and the control bits of MXCSR (rounding, flush-to-zero, denormals-are-zero,
 * exception masks) are what they were before it. The sticky exception flags are not: a call clears none, but may raise
 * some. What a function's text says of flags holds for a caller with the settings that threads start with. Beyond that,
 * steps on the way to a result may raise inexact, underflow and denormal. There are three kinds of functions:
 *
 * - These compute under round to nearest, without flush-to-zero and denormals-are-zero. Where the caller's MXCSR has
 *   another setting, it is changed for the call and then put back as it was, flags included, so that those the call
 *   raised are gone. Where it has none, MXCSR is not written, and the flags stay.
 *   - Acos on 32f, 64f
 *   - Arg on 32fc, 64fc
 *   - Asin on 32f, 64f
 *   - Atan on 32f, 64f
 *   - Atan2 on 32f, 64f
 *   - Atanh on 32f
 *   - Cbrt on 32f, 64f
 *   - Cos on 32f, 64f
 *   - Cosh on 64f
 *   - Erf on 32f, 64f
 *   - Erfc on 32f, 64f
 *   - Exp on 32f, 64f
 *   - InvCbrt on 32f, 64f
 *   - InvSqrt on 32f, 64f
 *   - Ln on 32f, 64f
 *   - Log10 on 32f, 64f
 *   - Pow on 32f, 64f
 *   - Powx on 32f, 64f
 *   - Sin on 32f, 64f
 *   - SinCos on 32f, 64f
 *   - Sinh on 64f
 *   - Sqrt on 32f, 64f
 *   - Tan on 32f, 64f
 *   - Tanh on 32f, 64f
 * - These do the same, but for the caller's denormals-are-zero, which stays in force and alone makes no flag disappear.
 *   - Cosh on 32f
 *   - Ln on 32fc (A11), 32fc (A24), 64fc
 *   - Sinh on 32f
 * - All others leave MXCSR alone: its settings act on their arithmetic, and the flags that they raise stay.
 *
 * Where a text speaks of extended precision, flags are raised in the x87 status word, too, and stay there. Exceptions
 * are meant to be masked: with an unmasked one, the step that raises it traps.
 *
 * Generated from catalogue/catalogue.toml by tools/catalogue/generate.py; do not edit.
 */
#ifndef OKTVM_H
#define OKTVM_H

#include "oktvm_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @brief The library's version record.
 *
 * Never fails, touches no floating-point state, and gives the same pointer at every call.
 *
 * @return the constant record; the caller neither writes through it nor frees it
 */
OKT_API const OktLibraryVersion* oktvmGetLibVersion(void);

/** @defgroup Arithmetic Arithmetic
 *  @{ */

/**
 * @brief Absolute value; of a complex element, its modulus, for each element.
 *
 * Real elements: the sign bit cleared by an integer operation; a signalling NaN stays signalling and no flag is raised.
 *
 * Complex elements: sqrt(re^2 + im^2), the root from a seed table, three multiplicative steps and one correction by an
 * exact split; on 32fc in Real64, on 64fc in extended precision, so that no square overflows or underflows, and rounded
 * once. Largest errors seen: 0.5000001 ulp on 32fc, 0.5005 ulp on 64fc. An infinite part gives plus infinity, also
 * beside a NaN; otherwise a NaN part gives a NaN. Only the last rounding can overflow. No status.
 *
 * dst may be src where both have real elements.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAbs_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAbs_32f_A24 */
OKT_API OktStatus oktsAbs_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAbs_32f_A24 */
OKT_API OktStatus oktsAbs_32fc_A11(const Complex32* src, Real32* dst, int32_t len);
/** @copydoc oktsAbs_32f_A24 */
OKT_API OktStatus oktsAbs_32fc_A21(const Complex32* src, Real32* dst, int32_t len);
/** @copydoc oktsAbs_32f_A24 */
OKT_API OktStatus oktsAbs_32fc_A24(const Complex32* src, Real32* dst, int32_t len);
/** @copydoc oktsAbs_32f_A24 */
OKT_API OktStatus oktsAbs_64fc_A26(const Complex64* src, Real64* dst, int32_t len);
/** @copydoc oktsAbs_32f_A24 */
OKT_API OktStatus oktsAbs_64fc_A50(const Complex64* src, Real64* dst, int32_t len);
/** @copydoc oktsAbs_32f_A24 */
OKT_API OktStatus oktsAbs_64fc_A53(const Complex64* src, Real64* dst, int32_t len);

/**
 * @brief src1 + src2, for each element.
 *
 * One IEEE addition a real part, under the caller's MXCSR; of two NaNs the one of src1 comes through, quieted. No
 * status.
 *
 * Real elements: dst may be a source or overlap one; the results are then those of a loop over the elements in
 * ascending order. Complex elements: dst may be a source, lie below one, or at least eight reals above one; closer
 * overlaps are undefined.
 *
 * @param[in] src1 first source array of len elements
 * @param[in] src2 second source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAdd_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsAdd_32f_A24 */
OKT_API OktStatus oktsAdd_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsAdd_32f_A24 */
OKT_API OktStatus oktsAdd_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsAdd_32f_A24 */
OKT_API OktStatus oktsAdd_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief Argument (phase angle) of a complex element, for each element.
 *
 * The angle of the point (real part, imaginary part), from -pi to pi: the routine of Atan2 with the imaginary part as
 * src1 and the real part as src2, bit for bit, with its accuracy, its block sizes and its special values. Errors below
 * 0.89 ulp on 32fc, 0.87 ulp on 64fc. The last bit may differ on another processor model. There is no warning.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsArg_32fc_A11(const Complex32* src, Real32* dst, int32_t len);
/** @copydoc oktsArg_32fc_A11 */
OKT_API OktStatus oktsArg_32fc_A21(const Complex32* src, Real32* dst, int32_t len);
/** @copydoc oktsArg_32fc_A11 */
OKT_API OktStatus oktsArg_32fc_A24(const Complex32* src, Real32* dst, int32_t len);
/** @copydoc oktsArg_32fc_A11 */
OKT_API OktStatus oktsArg_64fc_A26(const Complex64* src, Real64* dst, int32_t len);
/** @copydoc oktsArg_32fc_A11 */
OKT_API OktStatus oktsArg_64fc_A50(const Complex64* src, Real64* dst, int32_t len);
/** @copydoc oktsArg_32fc_A11 */
OKT_API OktStatus oktsArg_64fc_A53(const Complex64* src, Real64* dst, int32_t len);

/**
 * @brief Complex conjugate, for each element.
 *
 * The sign bit of the imaginary part inverted by an integer operation, also that of a zero or a NaN: a signalling NaN
 * stays signalling and no flag is raised. No status. dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsConj_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsConj_32fc_A24 */
OKT_API OktStatus oktsConj_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief src1 / src2, for each element.
 *
 * Real elements: one IEEE division under the caller's MXCSR, correctly rounded. A finite element divided by a zero
 * gives the infinity or NaN of the division and oktStatusSingularity, 0/0 too; an infinity or a NaN divided by a zero
 * does not warn. With the caller's denormals-are-zero set a subnormal divisor gives the results of a zero on both types
 * and warns on 64f alone.
 *
 * Complex elements: src1 times the conjugate of src2, times 1/|src2|^2, on 32fc in Real64, on 64fc in extended
 * precision with compensated numerators. No status.
 *
 * dst may be a source on real elements. In place on complex elements (dst the same as src1 or src2) the part that is
 * computed last, the imaginary one on 32fc, is computed from the other's result and is not that part of the quotient,
 * except on 64fc where all four parts are finite and not zero. Give a destination of its own.
 *
 * @param[in] src1 first source array of len elements
 * @param[in] src2 second source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusSingularity
 */
OKT_API OktStatus oktsDiv_32f_A11(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_32f_A21(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_64f_A26(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_64f_A50(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_32fc_A11(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_32fc_A21(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_64fc_A26(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_64fc_A50(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief 1 / src, for each element.
 *
 * One IEEE division under the caller's MXCSR, correctly rounded. A zero gives the infinity of its sign and
 * oktStatusSingularity; a subnormal whose reciprocal overflows gives an infinity and oktStatusOk.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusSingularity
 */
OKT_API OktStatus oktsInv_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInv_32f_A11 */
OKT_API OktStatus oktsInv_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInv_32f_A11 */
OKT_API OktStatus oktsInv_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInv_32f_A11 */
OKT_API OktStatus oktsInv_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInv_32f_A11 */
OKT_API OktStatus oktsInv_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInv_32f_A11 */
OKT_API OktStatus oktsInv_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief src1 times src2, for each element.
 *
 * Real elements: one IEEE multiplication under the caller's MXCSR; of two NaNs the one of src1 comes through, quieted.
 * dst may be a source or overlap one, with the results of a loop over the elements in ascending order.
 *
 * Complex elements: (re1 re2 - im1 im2, re1 im2 + im1 re2). On 32fc in Real64, each part rounded once; on 64fc from
 * exact products with compensated sums in extended precision, so that a part that cancels keeps its bits; elements with
 * a zero, infinite or NaN part take plain extended arithmetic. Infinities and NaNs go through the formula: (inf, inf)
 * times (1, 0) has NaN parts. Largest errors seen: 0.5000001 ulp of a part on 32fc, 0.5005 ulp on 64fc. No status.
 *
 * In place on complex elements (dst the same as src1 or src2) the real part is stored before the imaginary part is
 * computed, and the imaginary part is computed from it: dst.im is not the imaginary part of the product. Give a
 * destination of its own.
 *
 * @param[in] src1 first source array of len elements
 * @param[in] src2 second source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsMul_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsMul_32f_A24 */
OKT_API OktStatus oktsMul_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsMul_32f_A24 */
OKT_API OktStatus oktsMul_32fc_A11(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMul_32f_A24 */
OKT_API OktStatus oktsMul_32fc_A21(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMul_32f_A24 */
OKT_API OktStatus oktsMul_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMul_32f_A24 */
OKT_API OktStatus oktsMul_64fc_A26(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsMul_32f_A24 */
OKT_API OktStatus oktsMul_64fc_A50(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsMul_32f_A24 */
OKT_API OktStatus oktsMul_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief src1 times the conjugate of src2, for each element.
 *
 * (re1 re2 + im1 im2, im1 re2 - re1 im2), with the arithmetic of Mul: on 32fc in Real64, on 64fc from exact products
 * with compensated sums in extended precision; elements with a zero, infinite or NaN part take plain extended
 * arithmetic. Largest errors seen: 0.5000001 ulp of a part on 32fc, 0.5005 ulp on 64fc. No status.
 *
 * In place (dst the same as src1 or src2) the real part is stored before the imaginary part is computed, and the
 * imaginary part is computed from it: dst.im is not the imaginary part of the product. Give a destination of its own.
 *
 * @param[in] src1 first source array of len elements
 * @param[in] src2 second source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsMulByConj_32fc_A11(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMulByConj_32fc_A11 */
OKT_API OktStatus oktsMulByConj_32fc_A21(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMulByConj_32fc_A11 */
OKT_API OktStatus oktsMulByConj_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMulByConj_32fc_A11 */
OKT_API OktStatus oktsMulByConj_64fc_A26(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsMulByConj_32fc_A11 */
OKT_API OktStatus oktsMulByConj_64fc_A50(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsMulByConj_32fc_A11 */
OKT_API OktStatus oktsMulByConj_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief src squared, for each element.
 *
 * One IEEE multiplication of the element by itself under the caller's MXCSR. No status. dst may be src or overlap it,
 * with the results of a loop over the elements in ascending order.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsSqr_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSqr_32f_A24 */
OKT_API OktStatus oktsSqr_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief src1 - src2, for each element.
 *
 * One IEEE subtraction a real part, under the caller's MXCSR; of two NaNs the one of src1 comes through, quieted. No
 * status.
 *
 * Real elements: dst may be a source or overlap one; the results are then those of a loop over the elements in
 * ascending order. Complex elements: dst may be a source, lie below one, or at least eight reals above one; closer
 * overlaps are undefined.
 *
 * @param[in] src1 first source array of len elements
 * @param[in] src2 second source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsSub_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsSub_32f_A24 */
OKT_API OktStatus oktsSub_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsSub_32f_A24 */
OKT_API OktStatus oktsSub_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsSub_32f_A24 */
OKT_API OktStatus oktsSub_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/** @} */

/** @defgroup Trigonometric Trigonometric
 *  @{ */

/**
 * @brief Arc cosine, for each element.
 *
 * Real elements: pi/2 - asin x up to 1/2, beyond that 2 asin(sqrt((1 - |x|)/2)), and pi less that for negative x.
 * Approximate reciprocals and reciprocal roots of the processor are refined on the way, so that the last bit of a
 * result may differ on another processor model. Errors below 0.80 ulp on 32f with any approximation within the error
 * that is guaranteed of it; below 0.82 ulp on 64f with approximations of up to 16 significant bits, as processors give
 * them, 1.21 ulp with any.
 *
 * Special values: 1 gives +0 and -1 gives pi rounded, zeros give pi/2. An element beyond 1 in magnitude, infinities
 * among them, gives a NaN (0xFFC00000, 0xFFF8000000000000) and oktStatusDomain. A NaN raises no warning; on 32f it
 * comes through bit for bit, a signalling one too, on 64f it comes out quiet with its sign inverted. The sticky invalid
 * flag tells nothing: on 32f 1 and -1, zeros and elements below 2^-127 in magnitude raise it as well, on both types a
 * NaN does, and on 64f an element just beyond 1 does not.
 *
 * Complex elements: from half the sum and half the difference of the distances from two branch points (T. E. Hull, T.
 * F. Fairgrieve and P. T. P. Tang, Implementing the complex arcsine and arccosine functions using exception handling,
 * ACM TOMS 23, 1997), one at a time in extended precision, whatever the caller's x87 precision is. The branch cuts run
 * along the real axis from 1 and -1 outwards, the sign of a zero imaginary part choosing the side. Errors of each part
 * below 0.501 ulp on 32fc and 0.515 ulp on 64fc. A zero real part gives pi/2 whatever the imaginary part is, a NaN
 * included; infinities give multiples of pi/4 and an infinite imaginary part. There is no status on complex elements.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsAcos_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAcos_32f_A11 */
OKT_API OktStatus oktsAcos_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Arc sine, for each element.
 *
 * Real elements: an odd polynomial up to 1/2, beyond that pi/2 - 2 asin(sqrt((1 - |x|)/2)), with the root as a head and
 * a rest. The root is refined from the processor's approximate reciprocal root, so that the last bit of a result may
 * differ on another processor model. Errors below 1.0 ulp on 32f and 0.98 ulp on 64f with approximations of 13
 * significant bits, as processors give them; below 1.03 and 1.50 ulp with any approximation within the error that is
 * guaranteed of it.
 *
 * Special values: zeros give themselves, 1 and -1 give pi/2 and -pi/2 rounded. An element beyond 1 in magnitude,
 * infinities among them, gives a NaN (0xFFC00000, 0xFFF8000000000000) and oktStatusDomain. A NaN raises no warning; on
 * 32f it comes through bit for bit, a signalling one too, on 64f it comes out quiet. The sticky invalid flag tells
 * nothing: on 32f elements below 1/2 in magnitude, 1 and -1 raise it as well, on both types a NaN does, and an element
 * just beyond 1 does not.
 *
 * Complex elements: -i asinh(i z), one at a time in extended precision, whatever the caller's x87 precision is. The
 * branch cuts run along the real axis from 1 and -1 outwards, the sign of a zero imaginary part choosing the side.
 * Errors of each part below 0.501 ulp on 32fc and 0.515 ulp on 64fc. Special values are those of the complex Asinh at i
 * z, NaNs keeping their sign in the turn. There is no status on complex elements.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsAsin_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAsin_32f_A11 */
OKT_API OktStatus oktsAsin_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Arc tangent, for each element.
 *
 * Real elements: the addition theorem moves the argument onto a small interval about zero, an odd polynomial follows,
 * and the arctangent of the interval's centre is added in two parts. Largest errors seen: 0.96 ulp on 32f, 0.85 ulp on
 * 64f. Every element takes the same steps, wherever it stands.
 *
 * Special values: zeros and subnormals give themselves, infinities give pi/2 rounded with their sign; a NaN comes out
 * quiet with sign and payload. There is no warning.
 *
 * Complex elements: -i atanh(i z), one at a time in extended precision, whatever the caller's x87 precision is. The
 * branch cuts run along the imaginary axis from 1 and -1 outwards, the sign of a zero real part choosing the side.
 * Errors of each part below 0.501 ulp on 32fc and 0.55 ulp on 64fc. Special values are those of the complex Atanh at i
 * z, NaNs keeping their sign in the turn. There is no status on complex elements: the poles at i and -i give infinities
 * and raise divide-by-zero.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAtan_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAtan_32f_A11 */
OKT_API OktStatus oktsAtan_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Four-quadrant arc tangent of two sources, for each element.
 *
 * The angle of the point (x, y) = (src2, src1), from -pi to pi. Blocks of ordinary elements take a reduced quotient,
 * refined from the processor's approximate reciprocal, and a polynomial, with the arctangent of the interval's centre
 * and pi added in two parts: errors below 0.89 ulp on 32f (1.0 ulp where the result is subnormal) and 0.87 ulp on 64f.
 * A block with an element whose magnitude is not within 2^-125 and 0x7D000000 (32f) or 2^-1020 and 2^993 (64f) goes
 * through a careful path as a whole: 0.501 ulp on 32f, 0.52 ulp on 64f, 0.73 ulp where both are subnormal. The two
 * paths differ in the last bit for 5 to 9 % of elements with sources of like size, and for 1 % where these are many
 * orders apart, so that neighbours and the length of the call are visible in results: 64f has blocks of two as far as
 * len AND 0xFFFFFFF0 reaches, 32f blocks of four as far as len AND 0xFFFFFFF4 does, and the other elements go one at a
 * time. The last bit may also differ on another processor model.
 *
 * Special values are those of the C function: atan2(+-0, +0) = +-0, atan2(+-0, -0) = +-pi, atan2(+-inf, +inf) = +-pi/4,
 * atan2(+-inf, -inf) = +-3pi/4, and so on. A NaN comes out quiet with sign and payload, src1's where both are NaNs.
 * There is no warning, for an underflowing quotient neither.
 *
 * dst may be one of the sources.
 *
 * @param[in] src1 first source array of len elements
 * @param[in] src2 second source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAtan2_32f_A11(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsAtan2_32f_A11 */
OKT_API OktStatus oktsAtan2_32f_A21(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsAtan2_32f_A11 */
OKT_API OktStatus oktsAtan2_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsAtan2_32f_A11 */
OKT_API OktStatus oktsAtan2_64f_A26(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsAtan2_32f_A11 */
OKT_API OktStatus oktsAtan2_64f_A50(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsAtan2_32f_A11 */
OKT_API OktStatus oktsAtan2_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);

/**
 * @brief Cosine, for each element.
 *
 * Real elements of 32f up to 10000 are reduced by odd multiples of pi/2 and put through a polynomial of nine in double
 * precision; elements of 64f below 90112 use a table of 64 angles a turn, whose sines and cosines are held as head and
 * tail, and Taylor series between them (P. T. P. Tang, Table-lookup algorithms for elementary functions and their error
 * analysis, ARITH 10, 1991). Errors below 0.81 ulp on 32f and 0.526 ulp on 64f. A block of four with an element beyond
 * these bounds, an infinity or a NaN goes element by element through a path of its own, 0.501 ulp on 32f and 0.531 ulp
 * on 64f. The paths differ in the last bit for some 10 % of ordinary elements on 32f and 0.02 % on 64f, so that results
 * depend on the neighbours.
 *
 * Arguments from 2^17 up are reduced with as much of 4/pi as they need (M. H. Payne and R. N. Hanek, Radian reduction
 * for trigonometric functions, SIGNUM Newsletter 18, 1983), to a relative error below 2^-58. At a few arguments with
 * biased exponent 1403, 0x57B003E068000000 for one, the quadrant comes out wrong by one, and the result is that of an
 * argument a quarter turn off.
 *
 * Special values: An infinite element gives a NaN and oktStatusDomain: 0xFFC00000 on 32f, the default NaN
 * 0xFFF8000000000000 on 64f, and raises invalid. A NaN comes back quiet with sign and payload, without a warning. The
 * cosine of a zero is exactly 1.
 *
 * Complex elements: cosh(i z), one at a time in extended precision, whatever the caller's x87 precision is. Errors of
 * each part below 0.501 ulp on 32fc and 0.502 ulp on 64fc, for real parts of any size. Special values are those of the
 * complex Cosh at i z, NaNs keeping their sign in the turn: the imaginary part of the cosine of (1, +0) is -0. There is
 * no status on complex elements: overflow, underflow and invalid show in the results and in the sticky flags.
 *
 * dst may be src. The source is only read, and nothing behind its end is read.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsCos_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Sine, for each element.
 *
 * Real elements of 32f up to 10000 are reduced by multiples of pi and put through a polynomial of nine in double
 * precision; elements of 64f below 90112 use a table of 64 angles a turn, whose sines and cosines are held as head and
 * tail, and Taylor series between them (P. T. P. Tang, Table-lookup algorithms for elementary functions and their error
 * analysis, ARITH 10, 1991). Errors below 0.81 ulp on 32f and 0.526 ulp on 64f. A block of four with an element beyond
 * these bounds, an infinity or a NaN goes element by element through a path of its own, 0.501 ulp on 32f and 0.531 ulp
 * on 64f. The paths differ in the last bit for some 10 % of ordinary elements on 32f and 0.02 % on 64f, so that results
 * depend on the neighbours.
 *
 * Arguments from 2^17 up are reduced with as much of 4/pi as they need (M. H. Payne and R. N. Hanek, Radian reduction
 * for trigonometric functions, SIGNUM Newsletter 18, 1983), to a relative error below 2^-58. At a few arguments with
 * biased exponent 1403, 0x57B003E068000000 for one, the quadrant comes out wrong by one, and the result is that of an
 * argument a quarter turn off.
 *
 * Special values: An infinite element gives a NaN and oktStatusDomain: 0xFFC00000 on 32f, the default NaN
 * 0xFFF8000000000000 on 64f, and raises invalid. A NaN comes back quiet with sign and payload, without a warning. Zeros
 * keep their sign on 32f. On 64f the sine of -0 is +0, but -0 in a block that holds a large element.
 *
 * Complex elements: -i sinh(i z), one at a time in extended precision, whatever the caller's x87 precision is. Errors
 * of each part below 0.501 ulp on 32fc and 0.502 ulp on 64fc, for real parts of any size. Special values are those of
 * the complex Sinh at i z, NaNs keeping their sign in the turn. There is no status on complex elements: overflow,
 * underflow and invalid show in the results and in the sticky flags.
 *
 * dst may be src. The source is only read, and nothing behind its end is read.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsSin_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Sine and cosine of one source, for each element.
 *
 * The sine goes to dst1 and the cosine to dst2. Elements of 32f up to 10000 are reduced by multiples of pi/2 and put
 * through two polynomials in double precision; elements of 64f below 90112 use a table of 128 angles a turn, whose
 * sines and cosines are held as head and tail, and Taylor series between them (P. T. P. Tang, Table-lookup algorithms
 * for elementary functions and their error analysis, ARITH 10, 1991). Errors below 0.57 ulp on 32f and 0.542 ulp on
 * 64f. A block of four with an element beyond these bounds, an infinity or a NaN goes element by element through the
 * path that Sin and Cos have for it, 0.501 ulp on 32f and 0.531 ulp on 64f. The paths differ in the last bit of a
 * result for some 3 % of ordinary elements on 32f and 0.8 % on 64f, so that results depend on the neighbours. The
 * results are not always those of Sin and Cos in the last bit.
 *
 * Arguments from 2^17 up are reduced with as much of 4/pi as they need (M. H. Payne and R. N. Hanek, Radian reduction
 * for trigonometric functions, SIGNUM Newsletter 18, 1983), to a relative error below 2^-58. At a few arguments with
 * biased exponent 1403, 0x57B003E068000000 for one, the quadrant comes out wrong by one, and the result is that of an
 * argument a quarter turn off.
 *
 * Special values: An infinite element gives a NaN and oktStatusDomain: 0xFFC00000 on 32f, the default NaN
 * 0xFFF8000000000000 on 64f, and raises invalid. A NaN comes back quiet with sign and payload, without a warning. Both
 * destinations get the same NaN. The cosine of a zero is exactly 1; its sine keeps the sign on 32f, and on 64f is +0,
 * but for a zero in a block that holds a large element.
 *
 * dst1 or dst2 may be src; they may not be the same array. The source is only read, and nothing behind its end is read.
 *
 * @param[in] src source array of len elements
 * @param[out] dst1 first destination array of len elements
 * @param[out] dst2 second destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsSinCos_32f_A11(const Real32* src, Real32* dst1, Real32* dst2, int32_t len);
/** @copydoc oktsSinCos_32f_A11 */
OKT_API OktStatus oktsSinCos_32f_A21(const Real32* src, Real32* dst1, Real32* dst2, int32_t len);
/** @copydoc oktsSinCos_32f_A11 */
OKT_API OktStatus oktsSinCos_32f_A24(const Real32* src, Real32* dst1, Real32* dst2, int32_t len);
/** @copydoc oktsSinCos_32f_A11 */
OKT_API OktStatus oktsSinCos_64f_A26(const Real64* src, Real64* dst1, Real64* dst2, int32_t len);
/** @copydoc oktsSinCos_32f_A11 */
OKT_API OktStatus oktsSinCos_64f_A50(const Real64* src, Real64* dst1, Real64* dst2, int32_t len);
/** @copydoc oktsSinCos_32f_A11 */
OKT_API OktStatus oktsSinCos_64f_A53(const Real64* src, Real64* dst1, Real64* dst2, int32_t len);

/**
 * @brief Tangent, for each element.
 *
 * Real elements of 32f up to 10000 are reduced by multiples of pi/2 and put through a quotient of two polynomials in
 * double precision. Elements of 64f use expansions about 32 angles a period; next to a pole the reciprocal of the
 * distance is split off and carried to double-double precision. Errors below 0.94 ulp on 32f and 1.04 ulp on 64f. On
 * 32f a pair with an element beyond 10000, an infinity or a NaN goes through another path, 0.501 ulp. The paths differ
 * in the last bit for some 18 % of ordinary elements, so that results depend on the neighbour.
 *
 * Arguments from 12800 up on 64f and in the pairs beyond 10000 on 32f are reduced with as much of 4/pi as they need (M.
 * H. Payne and R. N. Hanek, Radian reduction for trigonometric functions, SIGNUM Newsletter 18, 1983), to a relative
 * error below 2^-58. At a few arguments with biased exponent 1403, 0x57B003E068000000 for one, the quadrant comes out
 * wrong by one, and the result is that of an argument a quarter turn off.
 *
 * Special values: An infinite element gives a NaN and oktStatusDomain: 0xFFC00000 on 32f, the default NaN
 * 0xFFF8000000000000 on 64f, and raises invalid. A NaN comes back quiet with sign and payload, without a warning. No
 * element lies on a pole: the tangent never overflows. Zeros keep their sign on 64f. On 32f the tangent of -0 is +0,
 * but -0 in a pair with an element beyond 10000.
 *
 * Complex elements: -i tanh(i z), one at a time in extended precision, whatever the caller's x87 precision is. Errors
 * of each part below 0.501 ulp on 32fc and 0.502 ulp on 64fc, for real parts of any size. Special values are those of
 * the complex Tanh at i z, NaNs keeping their sign in the turn. There is no status on complex elements.
 *
 * dst may be src. The source is only read, and nothing behind its end is read.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsTan_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/** @} */

/** @defgroup Hyperbolic Hyperbolic
 *  @{ */

/**
 * @brief Inverse hyperbolic cosine, for each element.
 *
 * Real elements: the logarithm of src + sqrt(src^2 - 1), sum and root as head and tail (64f) or in Real64 (32f); near 1
 * the root of 2 (src - 1) times a polynomial. Errors below 0.501 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: 1 gives +0, +Inf itself, a NaN itself, quiet. An element below 1, -Inf included, gives a NaN and
 * oktStatusDomain and raises the invalid flag. The caller's rounding mode, flush-to-zero and denormals-are-zero act on
 * the arithmetic.
 *
 * Complex elements: from half the sum and half the difference of the distances from two branch points (T. E. Hull, T.
 * F. Fairgrieve and P. T. P. Tang, Implementing the complex arcsine and arccosine functions using exception handling,
 * ACM TOMS 23, 1997), one at a time in extended precision, whatever the caller's x87 precision is. The branch cut runs
 * along the real axis from 1 downwards, the sign of a zero imaginary part choosing the side. Errors of each part below
 * 0.501 ulp on 32fc and 0.515 ulp on 64fc. Infinities give an infinite real part and multiples of pi/4. There is no
 * status on complex elements.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsAcosh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Inverse hyperbolic sine, for each element.
 *
 * Real elements: the logarithm of |src| + sqrt(src^2 + 1), sum and root as head and tail (64f) or in Real64 (32f); an
 * odd polynomial below 0.125, and the element itself below 2^-57. Errors below 0.501 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: zeros and infinities give themselves, a NaN itself, quiet. No element warns. The caller's rounding
 * mode, flush-to-zero and denormals-are-zero act on the arithmetic.
 *
 * Complex elements: from half the sum and half the difference of the distances from two branch points (T. E. Hull, T.
 * F. Fairgrieve and P. T. P. Tang, Implementing the complex arcsine and arccosine functions using exception handling,
 * ACM TOMS 23, 1997), one at a time in extended precision, whatever the caller's x87 precision is. The branch cuts run
 * along the imaginary axis from 1 and -1 outwards, the sign of a zero real part choosing the side. Errors of each part
 * below 0.501 ulp on 32fc and 0.515 ulp on 64fc. Infinities give an infinite real part and multiples of pi/4. There is
 * no status on complex elements.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAsinh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Inverse hyperbolic tangent, for each element.
 *
 * Real elements, 32f: in Real32, a polynomial around 0 or 0.6875 up to 0.75, half the logarithm of (1 + |src|)/(1 -
 * |src|) from there on; errors below 0.93 ulp. 64f: half the same logarithm as head and tail, an odd polynomial below
 * 0.0625, the element itself below 2^-57; errors below 0.52 ulp.
 *
 * Special values: a zero gives itself; 1 and -1 give an infinity with their sign and oktStatusSingularity; elements
 * beyond give a NaN and oktStatusDomain. A NaN gives itself, made quiet on 64f and untouched on 32f, where a signalling
 * NaN stays signalling. On 64f the warnings raise their IEEE flags; on 32f 1 and -1 do, while the flags of elements
 * beyond 1 tell nothing. On 64f the caller's rounding mode, flush-to-zero and denormals-are-zero act on the arithmetic.
 *
 * Complex elements: a quarter of the logarithm of the ratio of the squared distances from -1 and 1, or half the real
 * function where the two are close, and half the angle of (1 - |z|^2, 2y), one at a time in extended precision,
 * whatever the caller's x87 precision is. The branch cuts run along the real axis from 1 and -1 outwards. Errors of
 * each part below 0.501 ulp on 32fc and 0.55 ulp on 64fc. A large element gives a zero and pi/2. There is no status on
 * complex elements: the poles at 1 and -1 give infinities and raise divide-by-zero.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain; on 32f and 64f
 * oktStatusSingularity
 */
OKT_API OktStatus oktsAtanh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Hyperbolic cosine, for each element.
 *
 * Real elements: half the sum of e^src and e^-src from one reduction, a table of 2^(j/64), a polynomial in the rest;
 * 32f in extended precision, 64f with the powers as head and tail. Errors below 0.611 ulp on 32f and 0.76 ulp on 64f.
 *
 * Special values: a zero or subnormal gives 1, an infinity +Inf. An overflowing element gives +Inf and
 * oktStatusOverflow: on 32f from 89.41599 on, and on 64f from 710.475860073944 on. On 64f every |src| from
 * 708.4018337446123 up to, but not including, 710.4704448615958 gives an infinity without a warning; between
 * 710.4704448615958 and the overflow the results are finite again. A NaN comes back quiet with sign and payload on 32f;
 * on 64f every NaN gives the pattern of all ones. On 32f an overflow raises the overflow flag; on 64f the flags of
 * magnitudes from 708.4018337446123 on tell nothing, and infinities raise invalid.
 *
 * Complex elements x + iy: (cosh x cos y, sinh x sin y), one at a time in extended precision, whatever the caller's x87
 * precision is. Errors of each part below 0.501 ulp on 32fc and 0.502 ulp on 64fc, for imaginary parts of any size.
 * From |x| = 2^11 on both parts are infinite. A zero y gives (cosh x, a zero); a zero x with a NaN gives (NaN, -x); an
 * infinite x gives infinities with the signs of cos y and x sin y; everything else with a NaN or an infinite y gives
 * NaNs. There is no status on complex elements: overflow, underflow and invalid show in the results and in the sticky
 * flags.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusOverflow
 */
OKT_API OktStatus oktsCosh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Hyperbolic sine, for each element.
 *
 * Real elements: half the difference of e^src and e^-src from one reduction, a table of 2^(j/64), a polynomial in the
 * rest; 32f in extended precision, 64f with the powers as head and tail. Errors below 0.501 ulp on 32f and 0.77 ulp on
 * 64f.
 *
 * Special values: a zero or subnormal gives itself, on 32f every element below 0.0003; an infinity gives itself. An
 * overflowing element gives an infinity with its sign and oktStatusOverflow: on 32f from 89.41599 on, and on 64f from
 * 710.475860073944 on. On 64f every |src| from 708.4018337446123 up to, but not including, 710.4704448615958 gives an
 * infinity without a warning; between 710.4704448615958 and the overflow the results are finite again. A NaN comes back
 * quiet with sign and payload on 32f; on 64f every NaN gives the pattern of all ones. On 32f an overflow raises the
 * overflow flag; on 64f the flags of magnitudes from 708.4018337446123 on tell nothing, and infinities raise invalid.
 *
 * Complex elements x + iy: (sinh x cos y, cosh x sin y), one at a time in extended precision, whatever the caller's x87
 * precision is. Errors of each part below 0.501 ulp on 32fc and 0.502 ulp on 64fc, for imaginary parts of any size.
 * From |x| = 2^11 on both parts are infinite. A zero y gives (sinh x, y); a zero or infinite x with an infinite y or a
 * NaN gives (x, NaN); an infinite x with a finite y gives infinities with the signs of x cos y and sin y. There is no
 * status on complex elements: overflow, underflow and invalid show in the results and in the sticky flags.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusOverflow
 */
OKT_API OktStatus oktsSinh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Hyperbolic tangent, for each element.
 *
 * Real elements: the positive axis is cut by the bits of the argument into 27 (32f) or 60 (64f) intervals, each with a
 * minimax polynomial; there is no exponential and no division. 32f in Real64; 64f around the value at the interval's
 * centre, with the first-order term in two parts. Errors below 0.513 ulp on 32f, 0.755 ulp on 64f below 0.125 and 0.525
 * ulp elsewhere.
 *
 * Special values: a zero gives itself, an infinity 1 with its sign; so does every |src| from 10 up on 32f and from 20
 * up on 64f. A NaN gives itself, made quiet on 32f and untouched on 64f, where a signalling NaN stays signalling. On
 * 32f every NaN raises invalid, on 64f infinities do. No element warns.
 *
 * Complex elements x + iy: (sinh x cosh x, sin y cos y) over sinh^2 x + cos^2 y, one at a time in extended precision,
 * whatever the caller's x87 precision is. Errors of each part below 0.501 ulp on 32fc and 0.502 ulp on 64fc, for
 * imaginary parts of any size. From |x| = 2^9 on the result is 1 with the sign of x and a zero with the sign of sin y
 * cos y, infinite x included. A finite x with an infinite y or a NaN gives NaNs in both parts, a zero x too. There is
 * no status on complex elements.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsTanh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/** @} */

/** @defgroup PowersAndRoots Powers and roots
 *  @{ */

/**
 * @brief Cube root, for each element.
 *
 * The exponent is divided by three in integers; the significand goes through a polynomial (32f, in Real64) or a table
 * of 32 roots and a short series (64f). Errors below 0.91 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: zeros and infinities give themselves, a NaN itself, quiet; negative elements give negative roots.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsCbrt_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCbrt_32f_A11 */
OKT_API OktStatus oktsCbrt_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCbrt_32f_A11 */
OKT_API OktStatus oktsCbrt_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCbrt_32f_A11 */
OKT_API OktStatus oktsCbrt_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCbrt_32f_A11 */
OKT_API OktStatus oktsCbrt_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCbrt_32f_A11 */
OKT_API OktStatus oktsCbrt_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Square root of src1 squared plus src2 squared, for each element.
 *
 * Without a root or a division, under the caller's MXCSR: a seed from a table, three multiplicative steps and an exact
 * correction. On 32f in Real64, errors below 0.5001 ulp; the sum of squares is also rounded to Real32, which raises
 * overflow where the result is 2^64 or more, such as of (1e20, 1e20), and underflow where it is below 2^-63. On 64f
 * below 1.3 ulp but for two bands, which are settled behaviour: where the larger biased exponent is 500 to 511 nothing
 * is scaled, the sum of squares can be subnormal and the result is then about 2^-511 whatever the sources (1e-157 and 0
 * give 1.0548e-154); and where the sum of squares overflows, for equal sources from 9.4807519e153 on, for one large
 * source from 1.3407807929942597e154 on, the result is 2^512 (1.3407807929942597e154).
 *
 * An infinity in either source gives plus infinity, also beside a NaN; two zeros give +0; of two NaNs that of src1
 * comes out, quiet. No status.
 *
 * dst may be a source.
 *
 * @param[in] src1 first source array of len elements
 * @param[in] src2 second source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsHypot_32f_A11(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsHypot_32f_A11 */
OKT_API OktStatus oktsHypot_32f_A21(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsHypot_32f_A11 */
OKT_API OktStatus oktsHypot_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsHypot_32f_A11 */
OKT_API OktStatus oktsHypot_64f_A26(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsHypot_32f_A11 */
OKT_API OktStatus oktsHypot_64f_A50(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsHypot_32f_A11 */
OKT_API OktStatus oktsHypot_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);

/**
 * @brief 1 / cube root, for each element.
 *
 * The method of Cbrt. Errors below 0.871 ulp on 32f and 0.545 ulp on 64f.
 *
 * Special values: a zero gives the infinity of its sign and oktStatusSingularity, an infinity the zero of its sign, a
 * NaN itself, quiet; negative elements give negative results.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusSingularity
 */
OKT_API OktStatus oktsInvCbrt_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvCbrt_32f_A11 */
OKT_API OktStatus oktsInvCbrt_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvCbrt_32f_A11 */
OKT_API OktStatus oktsInvCbrt_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvCbrt_32f_A11 */
OKT_API OktStatus oktsInvCbrt_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInvCbrt_32f_A11 */
OKT_API OktStatus oktsInvCbrt_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInvCbrt_32f_A11 */
OKT_API OktStatus oktsInvCbrt_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief 1 / square root, for each element.
 *
 * The approximation and the series of Sqrt. Errors below 0.992 ulp on 32f with any approximation within the error that
 * is guaranteed of it; below 0.502 ulp on 64f with approximations of up to 16 significant bits, as processors give
 * them, 1.002 ulp with any. The last bit may follow the approximation of another processor model.
 *
 * Special values: a zero gives the infinity of its sign and oktStatusSingularity, plus infinity gives +0, a NaN itself,
 * quiet; an element below zero gives the NaN 0xFFC00000 (64f: 0xFFF8000000000000) and oktStatusDomain. On 32f zeros,
 * elements below zero and plus infinity raise invalid, on 64f none of them raises a flag.
 *
 * On 32f, elements are worked in blocks of four from the start of the array, the last len % 4 elements alone. A block
 * with an element that is not positive, normal and finite is computed by root and division, with errors below 0.5001
 * ulp; so the last bit of an element can depend on its neighbours in the block: some 10 % of ordinary elements change.
 * Inside one block an element below zero decides over a zero, whatever their order.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsInvSqrt_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvSqrt_32f_A11 */
OKT_API OktStatus oktsInvSqrt_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvSqrt_32f_A11 */
OKT_API OktStatus oktsInvSqrt_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvSqrt_32f_A11 */
OKT_API OktStatus oktsInvSqrt_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInvSqrt_32f_A11 */
OKT_API OktStatus oktsInvSqrt_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInvSqrt_32f_A11 */
OKT_API OktStatus oktsInvSqrt_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief src1 to the power src2, for each element.
 *
 * Real elements, 32f: y ln x in Real64, with a table of 257 logarithms and reciprocals and three terms of the series,
 * and the exponential of Exp. 64f: a base-2 logarithm of about 68 bits from a table of 1025 reciprocals, its product
 * with y split exactly, and 2^(j/128) from a table (the scheme of P. T. P. Tang, Table-driven implementation of the
 * logarithm function in IEEE floating-point arithmetic, ACM TOMS 16, 1990, carried to two lengths).
 *
 * Errors: 32f 0.56 ulp, but up to 3.2 ulp for bases within 2^-8 of 1 and 0.92 ulp just outside of there, since the
 * series has three terms. 64f 0.513 ulp, up to 1.0 ulp for bases within 0.001 of 1 with large exponents and for results
 * from 2^-1071 to 2^-1070, 0.75 ulp for smaller results.
 *
 * Special values, the first row that fits: x^0 is 1, and so is (-1)^Inf of either sign, and 1^y, also where the other
 * operand is a NaN; a NaN in src1, then in src2, comes back bit for bit, without a flag; infinite and zero operands
 * follow IEEE 754's pow, odd integer exponents keeping the sign. oktStatusDomain is the only warning: a negative base
 * with a fractional exponent gives the default NaN (sign bit set), a zero base with a negative exponent, -Inf included,
 * an infinity; both raise the invalid flag. Overflow and underflow warn of nothing: the result is infinite, zero or
 * subnormal.
 *
 * On 32f an element beside one outside the main range (a negative, zero or subnormal base, a result below 2^-126 or
 * above 2^126) may differ in its last bit from the same element elsewhere; some 1 % of ordinary elements do. On 64f
 * this happens for results between 2^-964 and 2^-963 only.
 *
 * Complex elements: e^(src2 ln src1), one at a time in extended precision, whatever the caller's x87 precision is, with
 * the logarithm and its product with the exponent rounded to Real64, four products and two sums without compensation.
 * The relative error of the result grows with the size of that product, up to 0.501 ulp of the modulus on 32fc and 20
 * on 64fc for parts up to 3; one part alone may be less accurate. There are no special cases: zero bases, integer or
 * real exponents and infinities take the same road, so that a zero base gives what the product with the infinite
 * logarithm gives. There is no status on complex elements, and the flags of intermediate results stay: on 64fc a
 * product with an exponent near the end of the range may raise overflow although the result is finite.
 *
 * dst may be src1 or src2. Nothing behind the ends of the sources is read.
 *
 * @param[in] src1 first source array of len elements
 * @param[in] src2 second source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsPow_32f_A11(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_32f_A21(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_64f_A26(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_64f_A50(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_32fc_A11(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_32fc_A21(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_64fc_A26(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_64fc_A50(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief src to the power 2/3, for each element.
 *
 * The cube root of the magnitude in double-length Real64 arithmetic under the caller's MXCSR, and its square. Errors
 * below 0.5001 ulp on 32f and 0.504 ulp on 64f.
 *
 * The function is even: a negative element gives the result of its magnitude, without a status. A zero gives +0, an
 * infinity plus infinity, a NaN itself, quiet.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsPow2o3_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsPow2o3_32f_A11 */
OKT_API OktStatus oktsPow2o3_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsPow2o3_32f_A11 */
OKT_API OktStatus oktsPow2o3_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsPow2o3_32f_A11 */
OKT_API OktStatus oktsPow2o3_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsPow2o3_32f_A11 */
OKT_API OktStatus oktsPow2o3_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsPow2o3_32f_A11 */
OKT_API OktStatus oktsPow2o3_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief src to the power 3/2, for each element.
 *
 * The square root to more than the working precision, by the steps of complex Abs, and its cube, in Real64 under the
 * caller's MXCSR. Errors below 0.5001 ulp on 32f and 0.508 ulp on 64f (0.75 ulp where the result is subnormal).
 *
 * A zero gives itself, plus infinity itself, a NaN itself, quiet; an element below zero gives the NaN of 0/0 and
 * oktStatusDomain. Overflow gives plus infinity and no status. With the caller's denormals-are-zero set a subnormal,
 * negative ones too, comes out unchanged and does not warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsPow3o2_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsPow3o2_32f_A11 */
OKT_API OktStatus oktsPow3o2_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsPow3o2_32f_A11 */
OKT_API OktStatus oktsPow3o2_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsPow3o2_32f_A11 */
OKT_API OktStatus oktsPow3o2_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsPow3o2_32f_A11 */
OKT_API OktStatus oktsPow3o2_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsPow3o2_32f_A11 */
OKT_API OktStatus oktsPow3o2_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief src to the power of one scalar, for each element.
 *
 * Real elements: the results of Pow with the same exponent for every element, and its accuracy, special values,
 * statuses and flags, with one exception: the scalar 2.0 squares. Then every element is src times src, an overflow is
 * infinite, a NaN comes back quiet, a signalling one raises the invalid flag, and nothing warns.
 *
 * Complex elements: the results of the complex Pow with the same exponent for every element; the scalar (2, 0) does not
 * square.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[in] scalar the same for every element
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsPowx_32f_A11(const Real32* src, Real32 scalar, Real32* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_32f_A21(const Real32* src, Real32 scalar, Real32* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_32f_A24(const Real32* src, Real32 scalar, Real32* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_64f_A26(const Real64* src, Real64 scalar, Real64* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_64f_A50(const Real64* src, Real64 scalar, Real64* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_64f_A53(const Real64* src, Real64 scalar, Real64* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_32fc_A11(const Complex32* src, Complex32 scalar, Complex32* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_32fc_A21(const Complex32* src, Complex32 scalar, Complex32* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_32fc_A24(const Complex32* src, Complex32 scalar, Complex32* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_64fc_A26(const Complex64* src, Complex64 scalar, Complex64* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_64fc_A50(const Complex64* src, Complex64 scalar, Complex64* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_64fc_A53(const Complex64* src, Complex64 scalar, Complex64* dst, int32_t len);

/**
 * @brief Square root, for each element.
 *
 * By neither a root nor a division: a 12-bit approximation of 1/sqrt(x), cut so that the leading products are exact,
 * and one evaluation of the binomial series. Errors below 0.984 ulp on 32f with any approximation within the error that
 * is guaranteed of it; on 64f below 0.503 ulp (0.753 ulp where the source is subnormal) with approximations of up to 16
 * significant bits, as processors give them, and half a unit more with any. The last bit may follow the approximation
 * of another processor model.
 *
 * Real special values: a zero or plus infinity gives itself, a NaN itself, quiet; an element below zero gives the NaN
 * 0xFFC00000 (64f: 0xFFF8000000000000) and oktStatusDomain, without the invalid flag.
 *
 * Complex elements: the principal root, with a real part that is not negative and an imaginary part of the sign of
 * src's, a zero's sign, too; the cut runs along the negative real axis. On 32fc it comes from |z| in double precision
 * and a refined 12-bit approximation of a reciprocal root (errors below 0.528 ulp; a last bit may differ on another
 * processor model). An element with a part that is a zero, infinite, a NaN or not above the smallest normal number goes
 * through the routine of 64fc, which works in extended precision: 0.501 ulp. The packed steps are done for such an
 * element as well, and their flags stay: a zero raises invalid on 32fc.
 *
 * Complex special values: an infinite imaginary part gives (+Inf, that part), whatever the real part is. For (-Inf, y)
 * the root is (+0, Inf with the sign of y), for (+Inf, y) it is (+Inf, 0 with the sign of y); with a NaN for y it is
 * (NaN, +Inf) and (+Inf, NaN). Any other element with a NaN gives (NaN, NaN). Complex elements never warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain
 */
OKT_API OktStatus oktsSqrt_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/** @} */

/** @defgroup ErrorFunctions Error functions
 *  @{ */

/**
 * @brief Cumulative normal distribution, for each element.
 *
 * The integral of the normal density from minus infinity to src. With a = |src| the function is evaluated on the lower
 * tail only; the exponent of (1 + a)^4 selects one of 22 polynomials of degree 15, and from a = 1.83 on the factor
 * exp(-a^2/2) is worked apart, all in pairs of Real64, so that the result keeps its relative accuracy down to the
 * smallest subnormal. Errors below 0.5001 ulp on 32f and 0.5035 ulp on 64f; all grades are one routine.
 *
 * Special values: +Inf gives 1, -Inf gives +0, both without a warning. Any magnitude below 2^-70, zeros included, gives
 * 0.5. From 5.42 (32f) or 8.2924 (64f) on the result is 1. Below -14.1702 (32f) or -38.4854 (64f) it is +0 with
 * oktStatusUnderflow; a subnormal result does not warn. A NaN comes back quiet with sign and payload.
 *
 * The caller's rounding mode, flush-to-zero and denormals-are-zero stay in force. dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusUnderflow
 */
OKT_API OktStatus oktsCdfNorm_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCdfNorm_32f_A11 */
OKT_API OktStatus oktsCdfNorm_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCdfNorm_32f_A11 */
OKT_API OktStatus oktsCdfNorm_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCdfNorm_32f_A11 */
OKT_API OktStatus oktsCdfNorm_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCdfNorm_32f_A11 */
OKT_API OktStatus oktsCdfNorm_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCdfNorm_32f_A11 */
OKT_API OktStatus oktsCdfNorm_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Inverse of CdfNorm, for each element.
 *
 * The x at which the normal distribution function is src: sqrt(2) erfinv(2 src - 1). With t = 2 src - 1: a polynomial
 * in t^2 below |t| = 0.125, a rational in t^2 - 0.875^2 below 0.875, and in the tails a rational in y = sqrt(-ln u),
 * where u = 2 min(src, 1 - src) is exact, so that the lower tail keeps its accuracy down to the smallest subnormal src.
 * 32f is worked in Real64, 64f in pairs of Real64 throughout; errors below 0.5001 ulp on both. All grades of a type are
 * one routine.
 *
 * Special values: 0.5 gives +0, exactly. Either zero gives -Inf and 1 gives +Inf, with oktStatusSingularity. Elements
 * below 0 or above 1 and infinities give a NaN with oktStatusDomain. A NaN comes back quiet with sign and payload. The
 * last warning stands. Rounding mode, flush-to-zero and denormals-are-zero of the caller act on the arithmetic: under
 * denormals-are-zero a subnormal element counts as 0. src and dst may be the same array.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsCdfNormInv_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCdfNormInv_32f_A11 */
OKT_API OktStatus oktsCdfNormInv_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCdfNormInv_32f_A11 */
OKT_API OktStatus oktsCdfNormInv_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCdfNormInv_32f_A11 */
OKT_API OktStatus oktsCdfNormInv_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCdfNormInv_32f_A11 */
OKT_API OktStatus oktsCdfNormInv_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCdfNormInv_32f_A11 */
OKT_API OktStatus oktsCdfNormInv_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Error function, for each element.
 *
 * A polynomial for every interval that the exponent and the first bits of the fraction of src tell apart: degree 6 in
 * Real64 for 32f, degree 10 with its last steps in split parts for 64f. Errors below 0.513 ulp on 32f; on 64f below
 * 0.64 ulp, 0.80 ulp for magnitudes from 4 to 4.5 and 1.25 ulp next to the subnormal numbers; subnormal results are
 * correctly rounded. All grades of a type are one routine.
 *
 * Special values: a zero keeps its sign, +Inf and -Inf give 1 and -1, and from 4 (32f) or 6 (64f) on the magnitude of
 * the result is exactly 1. A NaN comes back quiet with sign and payload on 32f and bit for bit, a signalling one too,
 * on 64f. Nothing warns.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsErf_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErf_32f_A11 */
OKT_API OktStatus oktsErf_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErf_32f_A11 */
OKT_API OktStatus oktsErf_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErf_32f_A11 */
OKT_API OktStatus oktsErf_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsErf_32f_A11 */
OKT_API OktStatus oktsErf_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsErf_32f_A11 */
OKT_API OktStatus oktsErf_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Complementary error function, for each element.
 *
 * exp(-src^2) times a polynomial for every interval of |src| of a quarter octave, and 2 minus that for negative
 * elements. On 64f the square, the exponential and the polynomial are carried in two parts. Errors below 0.53 ulp on
 * 32f; on 64f below 0.57 ulp up to 26.3, 0.75 ulp up to 26.54 and 1 ulp in the subnormal results behind it. All grades
 * of a type are one routine.
 *
 * Special values: +Inf gives +0 and -Inf gives 2, both without a warning. On 32f every element from 10.054195 on gives
 * +0 with oktStatusUnderflow, on 64f every element above 27.226017111108362. A NaN comes back quiet with sign and
 * payload.
 *
 * Elements are taken in pairs, and on 32f an element from 9.19455 to 10.054194, whose result is subnormal, gives
 * oktStatusUnderflow only if it stands alone at the end of an odd length or if the other one of its pair has a
 * magnitude above 10.054194. In the same way -3.8325067 gives 2 there and the number below 2 in an ordinary pair. On
 * 64f a subnormal result does not warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusUnderflow
 */
OKT_API OktStatus oktsErfc_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfc_32f_A11 */
OKT_API OktStatus oktsErfc_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfc_32f_A11 */
OKT_API OktStatus oktsErfc_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfc_32f_A11 */
OKT_API OktStatus oktsErfc_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsErfc_32f_A11 */
OKT_API OktStatus oktsErfc_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsErfc_32f_A11 */
OKT_API OktStatus oktsErfc_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Inverse of Erfc, for each element.
 *
 * The x at which erfc is src, for src from 0 to 2: erfinv(1 - src). The routine is that of CdfNormInv, on the same
 * polynomials, without the factor sqrt(2): ranges by |1 - src|, and tails by u = src or 2 - src, which is exact, so
 * that erfcinv(src) = -erfcinv(2 - src). 32f is worked in Real64, 64f in pairs of Real64; errors below 0.5001 ulp on
 * both. All grades of a type are one routine.
 *
 * Special values: 1 gives +0, exactly. Either zero gives +Inf and 2 gives -Inf, with oktStatusSingularity. Elements
 * below 0 or above 2 and infinities give a NaN with oktStatusDomain. A NaN comes back quiet with sign and payload. The
 * last warning stands. The caller's rounding mode, flush-to-zero and denormals-are-zero act on the arithmetic. src and
 * dst may be the same array.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsErfcInv_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfcInv_32f_A11 */
OKT_API OktStatus oktsErfcInv_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfcInv_32f_A11 */
OKT_API OktStatus oktsErfcInv_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfcInv_32f_A11 */
OKT_API OktStatus oktsErfcInv_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsErfcInv_32f_A11 */
OKT_API OktStatus oktsErfcInv_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsErfcInv_32f_A11 */
OKT_API OktStatus oktsErfcInv_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Inverse error function, for each element.
 *
 * The x at which erf is src. Three routines stand behind the name. 32f works in Real64: rationals in src^2 - 0.875^2
 * and in y = sqrt(-ln(1 - |src|)), a polynomial below 0.125; errors below 0.5001 ulp. 64f A50 and A53 are one routine:
 * polynomials of degree 12 and 14 for one of 32 cells of src^2 and one of 10 cells of 1/y, their first terms in two
 * parts; errors below 0.501 ulp. 64f A26 trades accuracy for speed: one polynomial of degree 4 in w = 1 - |src| for one
 * of 424 cells, eight an octave; its relative error is below 2.41e-9 (largest where |src| is just below 0.5), 1.3e-10
 * at the end of the range and 6e-11 below 1/16.
 *
 * Special values: zeros keep their bits. 1 and -1 give +Inf and -Inf with oktStatusSingularity. Larger magnitudes and
 * infinities give a NaN with oktStatusDomain. A NaN comes back quiet with sign and payload. The last warning stands.
 * Below 2^-35 the result is sqrt(pi)/2 times src, in 64f rounded once for subnormal results, too; a subnormal result
 * does not warn, and raises the underflow flag. A26 leaves x87 control word and MXCSR alone; in all routines the
 * caller's rounding mode acts on the arithmetic. src and dst may be the same array.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsErfInv_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfInv_32f_A11 */
OKT_API OktStatus oktsErfInv_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfInv_32f_A11 */
OKT_API OktStatus oktsErfInv_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsErfInv_32f_A11 */
OKT_API OktStatus oktsErfInv_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsErfInv_32f_A11 */
OKT_API OktStatus oktsErfInv_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsErfInv_32f_A11 */
OKT_API OktStatus oktsErfInv_64f_A53(const Real64* src, Real64* dst, int32_t len);

/** @} */

/** @defgroup Rounding Rounding
 *  @{ */

/**
 * @brief Round towards plus infinity, for each element.
 *
 * Exact. Infinities and zeros give themselves; a negative fraction gives -0. On 32f a NaN comes through bit for bit, a
 * signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. On 32f an element of magnitude 1
 * to 2^22 that is no integer raises inexact; nothing else does.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsCeil_32f(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCeil_32f */
OKT_API OktStatus oktsCeil_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Round towards minus infinity, for each element.
 *
 * Exact. Infinities and zeros give themselves; a positive fraction gives +0. On 32f a NaN comes through bit for bit, a
 * signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. On 32f an element of magnitude 1
 * to 2^22 that is no integer raises inexact; nothing else does.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsFloor_32f(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsFloor_32f */
OKT_API OktStatus oktsFloor_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Integer and fraction parts, for each element.
 *
 * dst1 gets the part towards zero, dst2 the fraction; both carry the element's sign and both are exact. An infinity
 * gives itself and a zero; a NaN comes out quiet in both.
 *
 * Either destination may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst1 first destination array of len elements
 * @param[out] dst2 second destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsModf_32f(const Real32* src, Real32* dst1, Real32* dst2, int32_t len);
/** @copydoc oktsModf_32f */
OKT_API OktStatus oktsModf_64f(const Real64* src, Real64* dst1, Real64* dst2, int32_t len);

/**
 * @brief Round to integer in the current rounding mode, for each element.
 *
 * By the rounding mode of the caller's MXCSR; halves go to even when that is to nearest. Rint and NearbyInt are one
 * routine: both raise inexact on every call, whatever the elements are. Infinities and zeros give themselves; a result
 * of zero has the element's sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out
 * quiet, and a signalling one raises invalid. Denormals-are-zero does not act: a subnormal rounded up gives 1.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsNearbyInt_32f(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsNearbyInt_32f */
OKT_API OktStatus oktsNearbyInt_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Round to integer in the current rounding mode, for each element.
 *
 * By the rounding mode of the caller's MXCSR; halves go to even when that is to nearest. Rint and NearbyInt are one
 * routine: both raise inexact on every call, whatever the elements are. Infinities and zeros give themselves; a result
 * of zero has the element's sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out
 * quiet, and a signalling one raises invalid. Denormals-are-zero does not act: a subnormal rounded up gives 1.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsRint_32f(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsRint_32f */
OKT_API OktStatus oktsRint_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Round to nearest integer, for each element.
 *
 * Halves are rounded away from zero. Exact. Infinities and zeros give themselves; a magnitude below one half gives the
 * zero of its sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out quiet, and a
 * signalling one raises invalid. Inexact is never raised.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsRound_32f(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsRound_32f */
OKT_API OktStatus oktsRound_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Round towards zero, for each element.
 *
 * Exact. Infinities and zeros give themselves; a fraction gives the zero of its sign. On 32f a NaN comes through bit
 * for bit, a signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. Inexact is never
 * raised.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsTrunc_32f(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTrunc_32f */
OKT_API OktStatus oktsTrunc_64f(const Real64* src, Real64* dst, int32_t len);

/** @} */

/** @defgroup ExponentialsAndLogarithms Exponentials and logarithms
 *  @{ */

/**
 * @brief Cos(src) + i sin(src): real source, complex destination, for each element.
 *
 * A table of 64 angles a turn, whose sines and cosines are held as head and tail, and Taylor series between them, in
 * double precision for both types (P. T. P. Tang, Table-lookup algorithms for elementary functions and their error
 * analysis, ARITH 10, 1991). Arguments from 2^17 up are reduced with as much of 4/pi as they need (M. H. Payne and R.
 * N. Hanek, Radian reduction for trigonometric functions, SIGNUM Newsletter 18, 1983); at a few with biased exponent
 * 1403, 0x57B003E068000000 for one, the quadrant comes out wrong by one. Errors of either part are below 0.501 ulp on
 * 32fc, and on 64fc 0.512 ulp below 40000 and 0.525 ulp up to 2^17.
 *
 * Special values: zeros give 1 and the zero itself; below 2^-252 the parts are 1 and src. An infinity gives two default
 * NaNs and raises invalid, a NaN comes back quiet in both parts, with sign and payload. There are no warnings. Rounding
 * mode, flush-to-zero and denormals-are-zero are the caller's: under denormals-are-zero a subnormal gives 1 and a zero.
 *
 * src and dst may share memory: the elements are worked in ascending order then, and an element that has been written
 * over is read as it stands.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsCIS_32fc_A11(const Real32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCIS_32fc_A11 */
OKT_API OktStatus oktsCIS_32fc_A21(const Real32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCIS_32fc_A11 */
OKT_API OktStatus oktsCIS_32fc_A24(const Real32* src, Complex32* dst, int32_t len);
/** @copydoc oktsCIS_32fc_A11 */
OKT_API OktStatus oktsCIS_64fc_A26(const Real64* src, Complex64* dst, int32_t len);
/** @copydoc oktsCIS_32fc_A11 */
OKT_API OktStatus oktsCIS_64fc_A50(const Real64* src, Complex64* dst, int32_t len);
/** @copydoc oktsCIS_32fc_A11 */
OKT_API OktStatus oktsCIS_64fc_A53(const Real64* src, Complex64* dst, int32_t len);

/**
 * @brief E to the power src, for each element.
 *
 * Real elements: the argument is split into a multiple of ln 2/128 (32f) or ln 2/64 (64f) and a rest; a table of powers
 * of two is joined with a polynomial in the rest (P. T. P. Tang, Table-driven implementation of the exponential
 * function in IEEE floating-point arithmetic, ACM TOMS 15, 1989). Errors below 0.57 ulp on 32f and 0.53 ulp on 64f;
 * subnormal results of 64f below 0.76 ulp. On 32f every argument from -103.27893829345703 down gives zero, although the
 * smallest subnormal would be nearer to some.
 *
 * Special values: +Inf gives +Inf, -Inf gives +0, both without a warning. An overflowing element gives +Inf and
 * oktStatusOverflow; a subnormal or zero result gives oktStatusUnderflow. A NaN comes back quiet with sign and payload
 * on 32f; on 64f every NaN gives the pattern of all ones and raises no flag. On 32f an overflow and a result of zero
 * raise the IEEE flag of their warning, on 64f they raise none.
 *
 * Complex elements a + ib: e^a cos b + i e^a sin b, in blocks without a branch. A11 and A21 of 32fc are one routine,
 * all in single precision: the exponential of 32f, and b reduced by multiples of pi/2 in four parts for a polynomial of
 * the sine and one of the cosine. A24 works in double precision, with a table of powers of two and the table of 64
 * angles a turn of Sin, and rounds the result to 32fc. 64fc adds longer series and carries the factors as heads and
 * tails, so that the products of the heads are exact (P. T. P. Tang, Table-lookup algorithms for elementary functions
 * and their error analysis, ARITH 10, 1991; T. J. Dekker, A floating-point technique for extending the available
 * precision, Numer. Math. 18, 1971). An element of which a part lies beyond the block's range is computed once more by
 * itself in extended precision: on A11 and A21 a real part above 87.3365478515625 or an imaginary part above 10000 in
 * magnitude, on A24 and 64fc a part from 512 up. Errors of the real and the imaginary part: A11 and A21 below 3.5 and
 * 3.4 ulp, A24 0.501 ulp, 64fc 0.512 and 0.514 ulp, elements in extended precision 0.501 ulp. An element gets the same
 * result in a block and behind the last one.
 *
 * Special values of complex elements: e^(a + i0) has an imaginary zero with the sign of b in extended precision and on
 * A11 and A21; in the blocks of A24 and 64fc it is +0. An infinite a and a finite b give an infinity or a zero in both
 * parts by the signs of cosine and sine. -Inf with an infinite b gives +0 and a zero with the sign of b, with a NaN b
 * two times +0; +Inf with either gives +Inf and a NaN. An infinite b with a finite a gives two default NaNs, a NaN b
 * that NaN in both parts. A NaN a comes through in both parts, but an imaginary zero stays, and of two NaNs the
 * imaginary part gets b. Every NaN comes back quiet. A complex call never warns; a subnormal part raises the IEEE
 * underflow flag. An element that is computed once more goes through the steps of its block as well, whose flags stay:
 * on A11 and A21 (1, 1e24) raises overflow and an infinite real part invalid. Rounding mode, flush-to-zero and
 * denormals-are-zero of the caller act on the blocks.
 *
 * dst may be src. The source is only read, and nothing behind its end is read.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusOverflow; on 32f and 64f
 * oktStatusUnderflow
 */
OKT_API OktStatus oktsExp_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief E to the power src, minus 1, for each element.
 *
 * No cancellation next to zero: a polynomial below 2^-8 in magnitude; above, e to the power src in two parts from a
 * table of 128 powers of two (P. T. P. Tang, Table-driven implementation of the expm1 function in IEEE floating-point
 * arithmetic, ACM TOMS 18, 1992), and a compensated subtraction. Both types are computed in Real64 under the caller's
 * MXCSR; 32f is rounded once. Errors below 0.5001 ulp on 32f; on 64f below 0.505 ulp, 1.95 ulp above 40.2.
 *
 * Special values: zeros give themselves, without a flag; what is below 2^-57 in magnitude gives itself and raises
 * underflow and inexact; +Inf gives +Inf, -Inf gives -1. A NaN comes back as it is on 64f, a signalling one too, and
 * quiet on 32f. Above 709.782712893384 the result is +Inf with oktStatusOverflow, on both types: an element of 32f from
 * 88.73 to there gives +Inf with the IEEE overflow flag alone, and oktStatusOk.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow
 */
OKT_API OktStatus oktsExpm1_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExpm1_32f_A11 */
OKT_API OktStatus oktsExpm1_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExpm1_32f_A11 */
OKT_API OktStatus oktsExpm1_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExpm1_32f_A11 */
OKT_API OktStatus oktsExpm1_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExpm1_32f_A11 */
OKT_API OktStatus oktsExpm1_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExpm1_32f_A11 */
OKT_API OktStatus oktsExpm1_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Natural logarithm, for each element.
 *
 * Real elements: a table holds short reciprocals of 64 (32f) or 512 (64f) leading parts of the significand and their
 * logarithms; the product with the reciprocal is split so that its large part is exact, and a polynomial takes the
 * rest. The relative accuracy is kept on both sides of 1. Errors below 0.57 ulp on 32f and 0.58 ulp on 64f.
 *
 * Special values: a zero of either sign gives -Inf and oktStatusSingularity; a negative element and -Inf give a NaN and
 * oktStatusDomain, the pattern 0x7FFC0000 on 32f, 0xFFF8000000000000 on 64f; neither raises a flag. +Inf gives +Inf. A
 * NaN comes back as it is, a signalling one too, which raises invalid on 64f and nothing on 32f. Subnormal elements do
 * not warn.
 *
 * Complex elements: ln|z| + i arg z with arg z in [-pi, pi], the cut along the negative real axis; the sign of a zero
 * imaginary part says from which side. ln|z| is half of ln s, s = a^2 + b^2 in double precision; where s is within 0.03
 * of 1 it comes from s - 1 without the rounding of s. The grades of 32fc are three routines. A11 uses short polynomials
 * and the processor's approximate reciprocal, without a table: good to 2^-12 (errors below 2600 ulp in the real, 3778
 * ulp in the imaginary part); a last bit may differ on another processor model. A21 takes the logarithm from a table in
 * double precision and the angle from a quotient and a polynomial in single precision: 0.84 and 3.0 ulp, the latter
 * beside the diagonal. A24 works in double precision: 0.5004 ulp. 64fc is one routine that works with heads and rests:
 * 0.5018 ulp in the real part, 0.522 in the imaginary part. An element with a part outside a routine's range goes
 * through a scalar kernel in extended precision, which is right to 0.501 ulp: A11 takes parts from 2^-125 to below
 * 2^123, A21 all that are neither zero nor infinite, A24 normal numbers, 64fc parts from 2^-450 to below 2^450. A11 and
 * A21 put such an element through their block's steps as well, whose flags stay: a quiet NaN, for one, raises invalid.
 * A11, A24 and 64fc work under round to nearest, and denormals-are-zero stays the caller's; A21 works under the
 * caller's MXCSR, where with denormals-are-zero a subnormal part is a zero of its sign.
 *
 * Complex special values: zero gives (-Inf, angle), the angle 0 or pi with the sign of the imaginary part; an infinite
 * part gives (+Inf, angle), the angle a multiple of pi/4. A NaN beside an infinite part gives (+Inf, NaN), beside a
 * finite part or another NaN (NaN, NaN). Complex elements never warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain; on 32f and 64f
 * oktStatusSingularity
 */
OKT_API OktStatus oktsLn_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Decimal logarithm, for each element.
 *
 * Real elements: as the natural logarithm, with reciprocals that hold the leading bits of log10 e, so that the result
 * needs no multiplication at its end; 128 (32f) or 512 (64f) table entries. Errors below 0.75 ulp on 32f and 0.59 ulp
 * on 64f.
 *
 * Special values: a zero of either sign gives -Inf and oktStatusSingularity; a negative element and -Inf give a NaN
 * with the sign set and oktStatusDomain; neither raises a flag. +Inf gives +Inf. A NaN comes back as it is, a
 * signalling one too, which raises invalid. Subnormal elements do not warn.
 *
 * Complex elements: log10|z| + i arg z log10 e, the natural logarithm's two parts times log10 e in extended precision,
 * one element at a time, whatever the caller's x87 precision is. Largest errors seen: 0.5001 ulp on 32fc, 0.5244 and
 * 0.5007 ulp in the real and the imaginary part on 64fc. The cut and the special values are those of the complex Ln,
 * angles times log10 e. Complex elements never warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer; on 32f and 64f oktStatusDomain; on 32f and 64f
 * oktStatusSingularity
 */
OKT_API OktStatus oktsLog10_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_64f_A53(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_32fc_A11(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_32fc_A21(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_64fc_A26(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_64fc_A50(const Complex64* src, Complex64* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Natural logarithm of 1 + src, for each element.
 *
 * Full relative accuracy next to zero: series below 0.0713 in magnitude; above, a table of 256 short reciprocals
 * applied to src and 1 apart, so that the rounding of their sum does not enter. Both types are computed in Real64 under
 * the caller's MXCSR; 32f is rounded once. Errors below 0.5001 ulp on 32f and 0.53 ulp on 64f.
 *
 * Special values: zeros give themselves, without a flag; what is below 2^-57 in magnitude gives itself and raises
 * underflow and inexact; +Inf gives +Inf. -1 gives -Inf and oktStatusSingularity; what is below, -Inf too, gives a NaN
 * with the sign set and oktStatusDomain; both raise the IEEE flag of their warning. A NaN comes back quiet.
 *
 * dst may be src.
 *
 * @param[in] src source array of len elements
 * @param[out] dst destination array of len elements
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsLog1p_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog1p_32f_A11 */
OKT_API OktStatus oktsLog1p_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog1p_32f_A11 */
OKT_API OktStatus oktsLog1p_32f_A24(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog1p_32f_A11 */
OKT_API OktStatus oktsLog1p_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog1p_32f_A11 */
OKT_API OktStatus oktsLog1p_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog1p_32f_A11 */
OKT_API OktStatus oktsLog1p_64f_A53(const Real64* src, Real64* dst, int32_t len);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
