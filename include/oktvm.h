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
 * mean that all elements were computed; when several elements warn, the last one in the array decides the status.
 *
 * MXCSR and the x87 control word are, after each call, what they were before it.
 *
 * Generated from catalogue/catalogue.toml by tools/catalogue/generate.py; do not edit.
 */
#ifndef OKTVM_H
#define OKTVM_H

#include <stdint.h>

#if defined(_WIN32)
#if defined(OKT_BUILD)
#define OKT_API __declspec(dllexport)
#elif defined(OKT_STATIC)
#define OKT_API
#else
#define OKT_API __declspec(dllimport)
#endif
#else
#define OKT_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** IEEE 754 binary32 element. */
typedef float Real32;

/** IEEE 754 binary64 element. */
typedef double Real64;

/** A pair of Real32, real part first; arrays are interleaved. */
typedef struct Complex32 {
    Real32 re; /**< real part */
    Real32 im; /**< imaginary part */
} Complex32;

/** A pair of Real64, real part first; arrays are interleaved. */
typedef struct Complex64 {
    Real64 re; /**< real part */
    Real64 im; /**< imaginary part */
} Complex64;

/** Result of every vector function: 0 success, negative error, positive warning. A signed 32-bit integer. */
typedef int32_t OktStatus;

/** The values of OktStatus. No other value exists. */
enum {
    oktStatusOk = 0,           /**< all elements computed, none warned */
    oktStatusBadLength = -6,   /**< the element count is zero or negative; nothing was done */
    oktStatusNullPointer = -8, /**< a pointer argument is null; nothing was done */
    oktStatusOverflow = 12,    /**< a result overflowed */
    oktStatusUnderflow = 17,   /**< a result underflowed */
    oktStatusSingularity = 18, /**< an element hit a pole of the function */
    oktStatusDomain = 19       /**< an element lay outside the function's domain */
};

/** The version record of the library; one constant instance exists. */
typedef struct OktLibraryVersion {
    int32_t majorVersion;    /**< major version number */
    int32_t minorVersion;    /**< minor version number */
    int32_t buildMajor;      /**< build number */
    int32_t buildCounter;    /**< counter of builds */
    char cpuTag[4];          /**< tag of the processor level, NUL-filled */
    const char* fileName;    /**< file name of the library */
    const char* versionText; /**< version and build as text */
    const char* buildDate;   /**< date of the build line */
} OktLibraryVersion;

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
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAbs_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Absolute value; of a complex element, its modulus, for each element.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAbs_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Absolute value; of a complex element, its modulus, for each element.
 *
 * @param[in] src source array of len Complex32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAbs_32fc_A11(const Complex32* src, Real32* dst, int32_t len);
/** @copydoc oktsAbs_32fc_A11 */
OKT_API OktStatus oktsAbs_32fc_A21(const Complex32* src, Real32* dst, int32_t len);
/** @copydoc oktsAbs_32fc_A11 */
OKT_API OktStatus oktsAbs_32fc_A24(const Complex32* src, Real32* dst, int32_t len);

/**
 * @brief Absolute value; of a complex element, its modulus, for each element.
 *
 * @param[in] src source array of len Complex64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAbs_64fc_A26(const Complex64* src, Real64* dst, int32_t len);
/** @copydoc oktsAbs_64fc_A26 */
OKT_API OktStatus oktsAbs_64fc_A50(const Complex64* src, Real64* dst, int32_t len);
/** @copydoc oktsAbs_64fc_A26 */
OKT_API OktStatus oktsAbs_64fc_A53(const Complex64* src, Real64* dst, int32_t len);

/**
 * @brief Src1 + src2, for each element.
 *
 * @param[in] src1 first source array of len Real32
 * @param[in] src2 second source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAdd_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);

/**
 * @brief Src1 + src2, for each element.
 *
 * @param[in] src1 first source array of len Real64
 * @param[in] src2 second source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAdd_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);

/**
 * @brief Src1 + src2, for each element.
 *
 * @param[in] src1 first source array of len Complex32
 * @param[in] src2 second source array of len Complex32
 * @param[out] dst destination array of len Complex32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAdd_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);

/**
 * @brief Src1 + src2, for each element.
 *
 * @param[in] src1 first source array of len Complex64
 * @param[in] src2 second source array of len Complex64
 * @param[out] dst destination array of len Complex64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAdd_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief Complex conjugate, for each element.
 *
 * @param[in] src source array of len Complex32
 * @param[out] dst destination array of len Complex32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsConj_32fc_A24(const Complex32* src, Complex32* dst, int32_t len);

/**
 * @brief Complex conjugate, for each element.
 *
 * @param[in] src source array of len Complex64
 * @param[out] dst destination array of len Complex64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsConj_64fc_A53(const Complex64* src, Complex64* dst, int32_t len);

/**
 * @brief Src1 / src2, for each element.
 *
 * @param[in] src1 first source array of len Complex32
 * @param[in] src2 second source array of len Complex32
 * @param[out] dst destination array of len Complex32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsDiv_32fc_A11(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsDiv_32fc_A11 */
OKT_API OktStatus oktsDiv_32fc_A21(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsDiv_32fc_A11 */
OKT_API OktStatus oktsDiv_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);

/**
 * @brief Src1 / src2, for each element.
 *
 * @param[in] src1 first source array of len Complex64
 * @param[in] src2 second source array of len Complex64
 * @param[out] dst destination array of len Complex64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsDiv_64fc_A26(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsDiv_64fc_A26 */
OKT_API OktStatus oktsDiv_64fc_A50(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsDiv_64fc_A26 */
OKT_API OktStatus oktsDiv_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief Src1 times src2, for each element.
 *
 * @param[in] src1 first source array of len Real32
 * @param[in] src2 second source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsMul_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);

/**
 * @brief Src1 times src2, for each element.
 *
 * @param[in] src1 first source array of len Real64
 * @param[in] src2 second source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsMul_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);

/**
 * @brief Src1 times src2, for each element.
 *
 * @param[in] src1 first source array of len Complex32
 * @param[in] src2 second source array of len Complex32
 * @param[out] dst destination array of len Complex32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsMul_32fc_A11(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMul_32fc_A11 */
OKT_API OktStatus oktsMul_32fc_A21(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMul_32fc_A11 */
OKT_API OktStatus oktsMul_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);

/**
 * @brief Src1 times src2, for each element.
 *
 * @param[in] src1 first source array of len Complex64
 * @param[in] src2 second source array of len Complex64
 * @param[out] dst destination array of len Complex64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsMul_64fc_A26(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsMul_64fc_A26 */
OKT_API OktStatus oktsMul_64fc_A50(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsMul_64fc_A26 */
OKT_API OktStatus oktsMul_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief Src1 times the conjugate of src2, for each element.
 *
 * @param[in] src1 first source array of len Complex32
 * @param[in] src2 second source array of len Complex32
 * @param[out] dst destination array of len Complex32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsMulByConj_32fc_A11(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMulByConj_32fc_A11 */
OKT_API OktStatus oktsMulByConj_32fc_A21(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);
/** @copydoc oktsMulByConj_32fc_A11 */
OKT_API OktStatus oktsMulByConj_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);

/**
 * @brief Src1 times the conjugate of src2, for each element.
 *
 * @param[in] src1 first source array of len Complex64
 * @param[in] src2 second source array of len Complex64
 * @param[out] dst destination array of len Complex64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsMulByConj_64fc_A26(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsMulByConj_64fc_A26 */
OKT_API OktStatus oktsMulByConj_64fc_A50(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);
/** @copydoc oktsMulByConj_64fc_A26 */
OKT_API OktStatus oktsMulByConj_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/**
 * @brief Src squared, for each element.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsSqr_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Src squared, for each element.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsSqr_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Src1 - src2, for each element.
 *
 * @param[in] src1 first source array of len Real32
 * @param[in] src2 second source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsSub_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);

/**
 * @brief Src1 - src2, for each element.
 *
 * @param[in] src1 first source array of len Real64
 * @param[in] src2 second source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsSub_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);

/**
 * @brief Src1 - src2, for each element.
 *
 * @param[in] src1 first source array of len Complex32
 * @param[in] src2 second source array of len Complex32
 * @param[out] dst destination array of len Complex32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsSub_32fc_A24(const Complex32* src1, const Complex32* src2, Complex32* dst, int32_t len);

/**
 * @brief Src1 - src2, for each element.
 *
 * @param[in] src1 first source array of len Complex64
 * @param[in] src2 second source array of len Complex64
 * @param[out] dst destination array of len Complex64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsSub_64fc_A53(const Complex64* src1, const Complex64* src2, Complex64* dst, int32_t len);

/** @} */

/** @defgroup ExponentialsAndLogarithms Exponentials and logarithms
 *  @{ */

/**
 * @brief E to the power src, for each element.
 *
 * Real elements: the argument is split into a multiple of ln 2/128 (32f) or ln 2/64 (64f) and a rest; a table of powers of
 * two is joined with a polynomial in the rest (P. T. P. Tang, Table-driven implementation of the exponential function in
 * IEEE floating-point arithmetic, ACM TOMS 15, 1989). Errors below 0.57 ulp on 32f and 0.53 ulp on 64f; subnormal results of
 * 64f below 0.76 ulp. On 32f every argument from -103.27893829345703 down gives zero, although the smallest subnormal would
 * be nearer to some.
 *
 * Special values: +Inf gives +Inf, -Inf gives +0, both without a warning. An overflowing element gives +Inf and
 * oktStatusOverflow; a subnormal or zero result gives oktStatusUnderflow. A NaN comes back quiet with sign and payload on
 * 32f; on 64f every NaN gives the pattern of all ones and raises no flag. On 32f an overflow and a result of zero raise the
 * IEEE flag of their warning, on 64f they raise none.
 *
 * dst may be src. The source is only read, and nothing behind its end is read.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow, oktStatusUnderflow
 */
OKT_API OktStatus oktsExp_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExp_32f_A11 */
OKT_API OktStatus oktsExp_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief E to the power src, for each element.
 *
 * Real elements: the argument is split into a multiple of ln 2/128 (32f) or ln 2/64 (64f) and a rest; a table of powers of
 * two is joined with a polynomial in the rest (P. T. P. Tang, Table-driven implementation of the exponential function in
 * IEEE floating-point arithmetic, ACM TOMS 15, 1989). Errors below 0.57 ulp on 32f and 0.53 ulp on 64f; subnormal results of
 * 64f below 0.76 ulp. On 32f every argument from -103.27893829345703 down gives zero, although the smallest subnormal would
 * be nearer to some.
 *
 * Special values: +Inf gives +Inf, -Inf gives +0, both without a warning. An overflowing element gives +Inf and
 * oktStatusOverflow; a subnormal or zero result gives oktStatusUnderflow. A NaN comes back quiet with sign and payload on
 * 32f; on 64f every NaN gives the pattern of all ones and raises no flag. On 32f an overflow and a result of zero raise the
 * IEEE flag of their warning, on 64f they raise none.
 *
 * dst may be src. The source is only read, and nothing behind its end is read.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow, oktStatusUnderflow
 */
OKT_API OktStatus oktsExp_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExp_64f_A26 */
OKT_API OktStatus oktsExp_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExp_64f_A26 */
OKT_API OktStatus oktsExp_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief E to the power src, minus 1, for each element.
 *
 * No cancellation next to zero: a polynomial below 2^-8 in magnitude; above, e to the power src in two parts from a table of
 * 128 powers of two (P. T. P. Tang, Table-driven implementation of the expm1 function in IEEE floating-point arithmetic, ACM
 * TOMS 18, 1992), and a compensated subtraction. Both types are computed in Real64 under the caller's MXCSR; 32f is rounded
 * once. Errors below 0.5001 ulp on 32f; on 64f below 0.505 ulp, 1.95 ulp above 40.2.
 *
 * Special values: zeros give themselves, without a flag; what is below 2^-57 in magnitude gives itself, inexact; +Inf gives
 * +Inf, -Inf gives -1. A NaN comes back as it is on 64f, a signalling one too, and quiet on 32f. Above 709.782712893384 the
 * result is +Inf with oktStatusOverflow, on both types: an element of 32f from 88.73 to there gives +Inf with the IEEE
 * overflow flag alone, and oktStatusOk.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow
 */
OKT_API OktStatus oktsExpm1_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExpm1_32f_A11 */
OKT_API OktStatus oktsExpm1_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsExpm1_32f_A11 */
OKT_API OktStatus oktsExpm1_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief E to the power src, minus 1, for each element.
 *
 * No cancellation next to zero: a polynomial below 2^-8 in magnitude; above, e to the power src in two parts from a table of
 * 128 powers of two (P. T. P. Tang, Table-driven implementation of the expm1 function in IEEE floating-point arithmetic, ACM
 * TOMS 18, 1992), and a compensated subtraction. Both types are computed in Real64 under the caller's MXCSR; 32f is rounded
 * once. Errors below 0.5001 ulp on 32f; on 64f below 0.505 ulp, 1.95 ulp above 40.2.
 *
 * Special values: zeros give themselves, without a flag; what is below 2^-57 in magnitude gives itself, inexact; +Inf gives
 * +Inf, -Inf gives -1. A NaN comes back as it is on 64f, a signalling one too, and quiet on 32f. Above 709.782712893384 the
 * result is +Inf with oktStatusOverflow, on both types: an element of 32f from 88.73 to there gives +Inf with the IEEE
 * overflow flag alone, and oktStatusOk.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow
 */
OKT_API OktStatus oktsExpm1_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExpm1_64f_A26 */
OKT_API OktStatus oktsExpm1_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsExpm1_64f_A26 */
OKT_API OktStatus oktsExpm1_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Natural logarithm, for each element.
 *
 * Real elements: a table holds short reciprocals of 64 (32f) or 512 (64f) leading parts of the significand and their
 * logarithms; the product with the reciprocal is split so that its large part is exact, and a polynomial takes the rest. The
 * relative accuracy is kept on both sides of 1. Errors below 0.57 ulp on 32f and 0.58 ulp on 64f.
 *
 * Special values: a zero of either sign gives -Inf and oktStatusSingularity; a negative element and -Inf give a NaN and
 * oktStatusDomain, the pattern 0x7FFC0000 on 32f, 0xFFF8000000000000 on 64f; neither raises a flag. +Inf gives +Inf. A NaN
 * comes back as it is, a signalling one too, which raises invalid on 64f and nothing on 32f. Subnormal elements do not warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsLn_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLn_32f_A11 */
OKT_API OktStatus oktsLn_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Natural logarithm, for each element.
 *
 * Real elements: a table holds short reciprocals of 64 (32f) or 512 (64f) leading parts of the significand and their
 * logarithms; the product with the reciprocal is split so that its large part is exact, and a polynomial takes the rest. The
 * relative accuracy is kept on both sides of 1. Errors below 0.57 ulp on 32f and 0.58 ulp on 64f.
 *
 * Special values: a zero of either sign gives -Inf and oktStatusSingularity; a negative element and -Inf give a NaN and
 * oktStatusDomain, the pattern 0x7FFC0000 on 32f, 0xFFF8000000000000 on 64f; neither raises a flag. +Inf gives +Inf. A NaN
 * comes back as it is, a signalling one too, which raises invalid on 64f and nothing on 32f. Subnormal elements do not warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsLn_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLn_64f_A26 */
OKT_API OktStatus oktsLn_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLn_64f_A26 */
OKT_API OktStatus oktsLn_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Decimal logarithm, for each element.
 *
 * Real elements: as the natural logarithm, with reciprocals that hold the leading bits of log10 e, so that the result needs
 * no multiplication at its end; 128 (32f) or 512 (64f) table entries. Errors below 0.75 ulp on 32f and 0.59 ulp on 64f.
 *
 * Special values: a zero of either sign gives -Inf and oktStatusSingularity; a negative element and -Inf give a NaN with the
 * sign set and oktStatusDomain; neither raises a flag. +Inf gives +Inf. A NaN comes back as it is, a signalling one too,
 * which raises invalid. Subnormal elements do not warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsLog10_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog10_32f_A11 */
OKT_API OktStatus oktsLog10_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Decimal logarithm, for each element.
 *
 * Real elements: as the natural logarithm, with reciprocals that hold the leading bits of log10 e, so that the result needs
 * no multiplication at its end; 128 (32f) or 512 (64f) table entries. Errors below 0.75 ulp on 32f and 0.59 ulp on 64f.
 *
 * Special values: a zero of either sign gives -Inf and oktStatusSingularity; a negative element and -Inf give a NaN with the
 * sign set and oktStatusDomain; neither raises a flag. +Inf gives +Inf. A NaN comes back as it is, a signalling one too,
 * which raises invalid. Subnormal elements do not warn.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsLog10_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog10_64f_A26 */
OKT_API OktStatus oktsLog10_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog10_64f_A26 */
OKT_API OktStatus oktsLog10_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Natural logarithm of 1 + src, for each element.
 *
 * Full relative accuracy next to zero: series below 0.0713 in magnitude; above, a table of 256 short reciprocals applied to
 * src and 1 apart, so that the rounding of their sum does not enter. Both types are computed in Real64 under the caller's
 * MXCSR; 32f is rounded once. Errors below 0.5001 ulp on 32f and 0.53 ulp on 64f.
 *
 * Special values: zeros give themselves, without a flag; what is below 2^-57 in magnitude gives itself, inexact; +Inf gives
 * +Inf. -1 gives -Inf and oktStatusSingularity; what is below, -Inf too, gives a NaN with the sign set and oktStatusDomain;
 * both raise the IEEE flag of their warning. A NaN comes back quiet.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsLog1p_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog1p_32f_A11 */
OKT_API OktStatus oktsLog1p_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsLog1p_32f_A11 */
OKT_API OktStatus oktsLog1p_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Natural logarithm of 1 + src, for each element.
 *
 * Full relative accuracy next to zero: series below 0.0713 in magnitude; above, a table of 256 short reciprocals applied to
 * src and 1 apart, so that the rounding of their sum does not enter. Both types are computed in Real64 under the caller's
 * MXCSR; 32f is rounded once. Errors below 0.5001 ulp on 32f and 0.53 ulp on 64f.
 *
 * Special values: zeros give themselves, without a flag; what is below 2^-57 in magnitude gives itself, inexact; +Inf gives
 * +Inf. -1 gives -Inf and oktStatusSingularity; what is below, -Inf too, gives a NaN with the sign set and oktStatusDomain;
 * both raise the IEEE flag of their warning. A NaN comes back quiet.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsLog1p_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog1p_64f_A26 */
OKT_API OktStatus oktsLog1p_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsLog1p_64f_A26 */
OKT_API OktStatus oktsLog1p_64f_A53(const Real64* src, Real64* dst, int32_t len);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
