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

/** @defgroup PowersAndRoots Powers and roots
 *  @{ */

/**
 * @brief Src1 to the power src2, for each element.
 *
 * Real elements, 32f: y ln x in Real64, with a table of 257 logarithms and reciprocals and three terms of the series, and the
 * exponential of Exp. 64f: a base-2 logarithm of about 68 bits from a table of 1025 reciprocals, its product with y split
 * exactly, and 2^(j/128) from a table (the scheme of P. T. P. Tang, Table-driven implementation of the logarithm function in
 * IEEE floating-point arithmetic, ACM TOMS 16, 1990, carried to two lengths).
 *
 * Errors: 32f 0.56 ulp, but up to 3.2 ulp for bases within 2^-8 of 1 and 0.92 ulp just outside of there, since the series
 * has three terms. 64f 0.51 ulp, up to 1.0 ulp for bases within 0.001 of 1 with large exponents and for results from 2^-1071
 * to 2^-1070, 0.75 ulp for smaller results.
 *
 * Special values, the first row that fits: x^0 is 1, and so is (-1)^Inf of either sign, and 1^y, also where the other operand is a
 * NaN; a NaN in src1, then in src2, comes back bit for bit, without a flag; infinite and zero operands follow IEEE 754's pow,
 * odd integer exponents keeping the sign. oktStatusDomain is the only warning: a negative base with a fractional exponent
 * gives the default NaN (sign bit set), a zero base with a negative exponent, -Inf included, an infinity; both raise the
 * invalid flag. Overflow and underflow warn of nothing: the result is infinite, zero or subnormal.
 *
 * On 32f an element beside one outside the main range (a negative, zero or subnormal base, a result below 2^-126 or above
 * 2^126) may differ in its last bit from the same element elsewhere. On 64f this happens for results between 2^-964 and
 * 2^-963 only.
 *
 * dst may be src1 or src2. Nothing behind the ends of the sources is read.
 *
 * @param[in] src1 first source array of len Real32
 * @param[in] src2 second source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsPow_32f_A11(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_32f_A21(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsPow_32f_A11 */
OKT_API OktStatus oktsPow_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);

/**
 * @brief Src1 to the power src2, for each element.
 *
 * Real elements, 32f: y ln x in Real64, with a table of 257 logarithms and reciprocals and three terms of the series, and the
 * exponential of Exp. 64f: a base-2 logarithm of about 68 bits from a table of 1025 reciprocals, its product with y split
 * exactly, and 2^(j/128) from a table (the scheme of P. T. P. Tang, Table-driven implementation of the logarithm function in
 * IEEE floating-point arithmetic, ACM TOMS 16, 1990, carried to two lengths).
 *
 * Errors: 32f 0.56 ulp, but up to 3.2 ulp for bases within 2^-8 of 1 and 0.92 ulp just outside of there, since the series
 * has three terms. 64f 0.51 ulp, up to 1.0 ulp for bases within 0.001 of 1 with large exponents and for results from 2^-1071
 * to 2^-1070, 0.75 ulp for smaller results.
 *
 * Special values, the first row that fits: x^0 is 1, and so is (-1)^Inf of either sign, and 1^y, also where the other operand is a
 * NaN; a NaN in src1, then in src2, comes back bit for bit, without a flag; infinite and zero operands follow IEEE 754's pow,
 * odd integer exponents keeping the sign. oktStatusDomain is the only warning: a negative base with a fractional exponent
 * gives the default NaN (sign bit set), a zero base with a negative exponent, -Inf included, an infinity; both raise the
 * invalid flag. Overflow and underflow warn of nothing: the result is infinite, zero or subnormal.
 *
 * On 32f an element beside one outside the main range (a negative, zero or subnormal base, a result below 2^-126 or above
 * 2^126) may differ in its last bit from the same element elsewhere. On 64f this happens for results between 2^-964 and
 * 2^-963 only.
 *
 * dst may be src1 or src2. Nothing behind the ends of the sources is read.
 *
 * @param[in] src1 first source array of len Real64
 * @param[in] src2 second source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsPow_64f_A26(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsPow_64f_A26 */
OKT_API OktStatus oktsPow_64f_A50(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsPow_64f_A26 */
OKT_API OktStatus oktsPow_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);

/**
 * @brief Src to the power of one scalar, for each element.
 *
 * Real elements: the results of Pow with the same exponent for every element, and its accuracy, special values, statuses
 * and flags, with one exception: the scalar 2.0 squares. Then every element is src times src, an overflow is infinite, a NaN
 * comes back quiet, a signalling one raises the invalid flag, and nothing warns.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[in] scalar scalar Real32, the same for every element
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsPowx_32f_A11(const Real32* src, Real32 scalar, Real32* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_32f_A21(const Real32* src, Real32 scalar, Real32* dst, int32_t len);
/** @copydoc oktsPowx_32f_A11 */
OKT_API OktStatus oktsPowx_32f_A24(const Real32* src, Real32 scalar, Real32* dst, int32_t len);

/**
 * @brief Src to the power of one scalar, for each element.
 *
 * Real elements: the results of Pow with the same exponent for every element, and its accuracy, special values, statuses
 * and flags, with one exception: the scalar 2.0 squares. Then every element is src times src, an overflow is infinite, a NaN
 * comes back quiet, a signalling one raises the invalid flag, and nothing warns.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[in] scalar scalar Real64, the same for every element
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsPowx_64f_A26(const Real64* src, Real64 scalar, Real64* dst, int32_t len);
/** @copydoc oktsPowx_64f_A26 */
OKT_API OktStatus oktsPowx_64f_A50(const Real64* src, Real64 scalar, Real64* dst, int32_t len);
/** @copydoc oktsPowx_64f_A26 */
OKT_API OktStatus oktsPowx_64f_A53(const Real64* src, Real64 scalar, Real64* dst, int32_t len);

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

/** @} */

#ifdef __cplusplus
}
#endif

#endif
