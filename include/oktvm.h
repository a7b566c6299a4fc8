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
 * Real elements: one IEEE division under the caller's MXCSR, correctly rounded. A finite element divided by a zero gives the
 * infinity or NaN of the division and oktStatusSingularity, 0/0 too; an infinity or a NaN divided by a zero does not warn.
 * With the caller's denormals-are-zero set a subnormal divisor gives the results of a zero on both types and warns on 64f
 * alone.
 *
 * Complex elements: src1 times the conjugate of src2, times 1/|src2|^2, on 32fc in Real64, on 64fc in extended precision with
 * compensated numerators. No status.
 *
 * dst may be a source. On complex elements in place the imaginary part is computed from what the real part's store left,
 * except on 64fc where all four parts are finite and not zero.
 *
 * @param[in] src1 first source array of len Real32
 * @param[in] src2 second source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusSingularity
 */
OKT_API OktStatus oktsDiv_32f_A11(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_32f_A21(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);
/** @copydoc oktsDiv_32f_A11 */
OKT_API OktStatus oktsDiv_32f_A24(const Real32* src1, const Real32* src2, Real32* dst, int32_t len);

/**
 * @brief Src1 / src2, for each element.
 *
 * Real elements: one IEEE division under the caller's MXCSR, correctly rounded. A finite element divided by a zero gives the
 * infinity or NaN of the division and oktStatusSingularity, 0/0 too; an infinity or a NaN divided by a zero does not warn.
 * With the caller's denormals-are-zero set a subnormal divisor gives the results of a zero on both types and warns on 64f
 * alone.
 *
 * Complex elements: src1 times the conjugate of src2, times 1/|src2|^2, on 32fc in Real64, on 64fc in extended precision with
 * compensated numerators. No status.
 *
 * dst may be a source. On complex elements in place the imaginary part is computed from what the real part's store left,
 * except on 64fc where all four parts are finite and not zero.
 *
 * @param[in] src1 first source array of len Real64
 * @param[in] src2 second source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusSingularity
 */
OKT_API OktStatus oktsDiv_64f_A26(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsDiv_64f_A26 */
OKT_API OktStatus oktsDiv_64f_A50(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);
/** @copydoc oktsDiv_64f_A26 */
OKT_API OktStatus oktsDiv_64f_A53(const Real64* src1, const Real64* src2, Real64* dst, int32_t len);

/**
 * @brief Src1 / src2, for each element.
 *
 * Real elements: one IEEE division under the caller's MXCSR, correctly rounded. A finite element divided by a zero gives the
 * infinity or NaN of the division and oktStatusSingularity, 0/0 too; an infinity or a NaN divided by a zero does not warn.
 * With the caller's denormals-are-zero set a subnormal divisor gives the results of a zero on both types and warns on 64f
 * alone.
 *
 * Complex elements: src1 times the conjugate of src2, times 1/|src2|^2, on 32fc in Real64, on 64fc in extended precision with
 * compensated numerators. No status.
 *
 * dst may be a source. On complex elements in place the imaginary part is computed from what the real part's store left,
 * except on 64fc where all four parts are finite and not zero.
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
 * Real elements: one IEEE division under the caller's MXCSR, correctly rounded. A finite element divided by a zero gives the
 * infinity or NaN of the division and oktStatusSingularity, 0/0 too; an infinity or a NaN divided by a zero does not warn.
 * With the caller's denormals-are-zero set a subnormal divisor gives the results of a zero on both types and warns on 64f
 * alone.
 *
 * Complex elements: src1 times the conjugate of src2, times 1/|src2|^2, on 32fc in Real64, on 64fc in extended precision with
 * compensated numerators. No status.
 *
 * dst may be a source. On complex elements in place the imaginary part is computed from what the real part's store left,
 * except on 64fc where all four parts are finite and not zero.
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
 * @brief 1 / src, for each element.
 *
 * One IEEE division under the caller's MXCSR, correctly rounded. A zero gives the infinity of its sign and
 * oktStatusSingularity; a subnormal whose reciprocal overflows gives an infinity and oktStatusOk.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusSingularity
 */
OKT_API OktStatus oktsInv_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInv_32f_A11 */
OKT_API OktStatus oktsInv_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInv_32f_A11 */
OKT_API OktStatus oktsInv_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief 1 / src, for each element.
 *
 * One IEEE division under the caller's MXCSR, correctly rounded. A zero gives the infinity of its sign and
 * oktStatusSingularity; a subnormal whose reciprocal overflows gives an infinity and oktStatusOk.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusSingularity
 */
OKT_API OktStatus oktsInv_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInv_64f_A26 */
OKT_API OktStatus oktsInv_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInv_64f_A26 */
OKT_API OktStatus oktsInv_64f_A53(const Real64* src, Real64* dst, int32_t len);

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

/** @defgroup Trigonometric Trigonometric
 *  @{ */

/**
 * @brief Cosine, for each element.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsCos_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCos_32f_A11 */
OKT_API OktStatus oktsCos_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Cosine, for each element.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsCos_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCos_64f_A26 */
OKT_API OktStatus oktsCos_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCos_64f_A26 */
OKT_API OktStatus oktsCos_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Sine, for each element.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsSin_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSin_32f_A11 */
OKT_API OktStatus oktsSin_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Sine, for each element.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsSin_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSin_64f_A26 */
OKT_API OktStatus oktsSin_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSin_64f_A26 */
OKT_API OktStatus oktsSin_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Sine and cosine of one source, for each element.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst1 first destination array of len Real32
 * @param[out] dst2 second destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsSinCos_32f_A11(const Real32* src, Real32* dst1, Real32* dst2, int32_t len);
/** @copydoc oktsSinCos_32f_A11 */
OKT_API OktStatus oktsSinCos_32f_A21(const Real32* src, Real32* dst1, Real32* dst2, int32_t len);
/** @copydoc oktsSinCos_32f_A11 */
OKT_API OktStatus oktsSinCos_32f_A24(const Real32* src, Real32* dst1, Real32* dst2, int32_t len);

/**
 * @brief Sine and cosine of one source, for each element.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst1 first destination array of len Real64
 * @param[out] dst2 second destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsSinCos_64f_A26(const Real64* src, Real64* dst1, Real64* dst2, int32_t len);
/** @copydoc oktsSinCos_64f_A26 */
OKT_API OktStatus oktsSinCos_64f_A50(const Real64* src, Real64* dst1, Real64* dst2, int32_t len);
/** @copydoc oktsSinCos_64f_A26 */
OKT_API OktStatus oktsSinCos_64f_A53(const Real64* src, Real64* dst1, Real64* dst2, int32_t len);

/**
 * @brief Tangent, for each element.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsTan_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTan_32f_A11 */
OKT_API OktStatus oktsTan_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Tangent, for each element.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsTan_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTan_64f_A26 */
OKT_API OktStatus oktsTan_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTan_64f_A26 */
OKT_API OktStatus oktsTan_64f_A53(const Real64* src, Real64* dst, int32_t len);

/** @} */

/** @defgroup Hyperbolic Hyperbolic
 *  @{ */

/**
 * @brief Inverse hyperbolic cosine, for each element.
 *
 * Real elements: the logarithm of src + sqrt(src^2 - 1), sum and root as head and tail (64f) or in Real64 (32f); near 1 the
 * root of 2 (src - 1) times a polynomial. Errors below 0.501 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: 1 gives +0, +Inf itself, a NaN itself, quiet. An element below 1, -Inf included, gives a NaN and
 * oktStatusDomain and raises the invalid flag. The caller's rounding mode, flush-to-zero and denormals-are-zero act on the
 * arithmetic.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsAcosh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAcosh_32f_A11 */
OKT_API OktStatus oktsAcosh_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Inverse hyperbolic cosine, for each element.
 *
 * Real elements: the logarithm of src + sqrt(src^2 - 1), sum and root as head and tail (64f) or in Real64 (32f); near 1 the
 * root of 2 (src - 1) times a polynomial. Errors below 0.501 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: 1 gives +0, +Inf itself, a NaN itself, quiet. An element below 1, -Inf included, gives a NaN and
 * oktStatusDomain and raises the invalid flag. The caller's rounding mode, flush-to-zero and denormals-are-zero act on the
 * arithmetic.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsAcosh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAcosh_64f_A26 */
OKT_API OktStatus oktsAcosh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAcosh_64f_A26 */
OKT_API OktStatus oktsAcosh_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Inverse hyperbolic sine, for each element.
 *
 * Real elements: the logarithm of |src| + sqrt(src^2 + 1), sum and root as head and tail (64f) or in Real64 (32f); an odd
 * polynomial below 0.125, and the element itself below 2^-57. Errors below 0.501 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: zeros and infinities give themselves, a NaN itself, quiet. No element warns. The caller's rounding mode,
 * flush-to-zero and denormals-are-zero act on the arithmetic.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAsinh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAsinh_32f_A11 */
OKT_API OktStatus oktsAsinh_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Inverse hyperbolic sine, for each element.
 *
 * Real elements: the logarithm of |src| + sqrt(src^2 + 1), sum and root as head and tail (64f) or in Real64 (32f); an odd
 * polynomial below 0.125, and the element itself below 2^-57. Errors below 0.501 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: zeros and infinities give themselves, a NaN itself, quiet. No element warns. The caller's rounding mode,
 * flush-to-zero and denormals-are-zero act on the arithmetic.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsAsinh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAsinh_64f_A26 */
OKT_API OktStatus oktsAsinh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAsinh_64f_A26 */
OKT_API OktStatus oktsAsinh_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Inverse hyperbolic tangent, for each element.
 *
 * Real elements, 32f: in Real32, a polynomial around 0 or 0.6875 up to 0.75, half the logarithm of (1 + |src|)/(1 - |src|)
 * from there on; errors below 0.93 ulp. 64f: half the same logarithm as head and tail, an odd polynomial below 0.0625, the
 * element itself below 2^-57; errors below 0.52 ulp.
 *
 * Special values: a zero gives itself; 1 and -1 give an infinity with their sign and oktStatusSingularity; elements beyond
 * give a NaN and oktStatusDomain. A NaN gives itself, made quiet on 64f and untouched on 32f, where a signalling NaN stays
 * signalling. On 64f the warnings raise their IEEE flags, and the caller's rounding mode, flush-to-zero and
 * denormals-are-zero act on the arithmetic.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsAtanh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsAtanh_32f_A11 */
OKT_API OktStatus oktsAtanh_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Inverse hyperbolic tangent, for each element.
 *
 * Real elements, 32f: in Real32, a polynomial around 0 or 0.6875 up to 0.75, half the logarithm of (1 + |src|)/(1 - |src|)
 * from there on; errors below 0.93 ulp. 64f: half the same logarithm as head and tail, an odd polynomial below 0.0625, the
 * element itself below 2^-57; errors below 0.52 ulp.
 *
 * Special values: a zero gives itself; 1 and -1 give an infinity with their sign and oktStatusSingularity; elements beyond
 * give a NaN and oktStatusDomain. A NaN gives itself, made quiet on 64f and untouched on 32f, where a signalling NaN stays
 * signalling. On 64f the warnings raise their IEEE flags, and the caller's rounding mode, flush-to-zero and
 * denormals-are-zero act on the arithmetic.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsAtanh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAtanh_64f_A26 */
OKT_API OktStatus oktsAtanh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsAtanh_64f_A26 */
OKT_API OktStatus oktsAtanh_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Hyperbolic cosine, for each element.
 *
 * Real elements: half the sum of e^src and e^-src from one reduction, a table of 2^(j/64), a polynomial in the rest; 32f
 * in extended precision, 64f with the powers as head and tail. Errors below 0.608 ulp on 32f and 0.76 ulp on 64f.
 *
 * Special values: a zero or subnormal gives 1, an infinity +Inf. An overflowing element gives +Inf and oktStatusOverflow:
 * on 32f from 89.41599 on, and on 64f from 710.475860073944 on. On 64f every |src| from 708.4018337446123 up to, but not
 * including, 710.4704448615958 gives an infinity without a warning; between 710.4704448615958 and the overflow the results
 * are finite again. A NaN comes back quiet with sign and payload on 32f; on 64f every NaN gives the pattern of all ones.
 * On 32f an overflow raises the overflow flag.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow
 */
OKT_API OktStatus oktsCosh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCosh_32f_A11 */
OKT_API OktStatus oktsCosh_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Hyperbolic cosine, for each element.
 *
 * Real elements: half the sum of e^src and e^-src from one reduction, a table of 2^(j/64), a polynomial in the rest; 32f
 * in extended precision, 64f with the powers as head and tail. Errors below 0.608 ulp on 32f and 0.76 ulp on 64f.
 *
 * Special values: a zero or subnormal gives 1, an infinity +Inf. An overflowing element gives +Inf and oktStatusOverflow:
 * on 32f from 89.41599 on, and on 64f from 710.475860073944 on. On 64f every |src| from 708.4018337446123 up to, but not
 * including, 710.4704448615958 gives an infinity without a warning; between 710.4704448615958 and the overflow the results
 * are finite again. A NaN comes back quiet with sign and payload on 32f; on 64f every NaN gives the pattern of all ones.
 * On 32f an overflow raises the overflow flag.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow
 */
OKT_API OktStatus oktsCosh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCosh_64f_A26 */
OKT_API OktStatus oktsCosh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCosh_64f_A26 */
OKT_API OktStatus oktsCosh_64f_A53(const Real64* src, Real64* dst, int32_t len);

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
 * overflow flag.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow
 */
OKT_API OktStatus oktsSinh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSinh_32f_A11 */
OKT_API OktStatus oktsSinh_32f_A24(const Real32* src, Real32* dst, int32_t len);

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
 * overflow flag.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusOverflow
 */
OKT_API OktStatus oktsSinh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSinh_64f_A26 */
OKT_API OktStatus oktsSinh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSinh_64f_A26 */
OKT_API OktStatus oktsSinh_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Hyperbolic tangent, for each element.
 *
 * Real elements: the positive axis is cut by the bits of the argument into 27 (32f) or 60 (64f) intervals, each with a
 * minimax polynomial; there is no exponential and no division. 32f in Real64; 64f around the value at the interval's centre,
 * with the first-order term in two parts. Errors below 0.513 ulp on 32f, 0.755 ulp on 64f below 0.125 and 0.525 ulp
 * elsewhere.
 *
 * Special values: a zero gives itself, an infinity 1 with its sign; so does every |src| from 10 up on 32f and from 20 up on
 * 64f. A NaN gives itself, made quiet on 32f and untouched on 64f, where a signalling NaN stays signalling. No element
 * warns.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsTanh_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsTanh_32f_A11 */
OKT_API OktStatus oktsTanh_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Hyperbolic tangent, for each element.
 *
 * Real elements: the positive axis is cut by the bits of the argument into 27 (32f) or 60 (64f) intervals, each with a
 * minimax polynomial; there is no exponential and no division. 32f in Real64; 64f around the value at the interval's centre,
 * with the first-order term in two parts. Errors below 0.513 ulp on 32f, 0.755 ulp on 64f below 0.125 and 0.525 ulp
 * elsewhere.
 *
 * Special values: a zero gives itself, an infinity 1 with its sign; so does every |src| from 10 up on 32f and from 20 up on
 * 64f. A NaN gives itself, made quiet on 32f and untouched on 64f, where a signalling NaN stays signalling. No element
 * warns.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsTanh_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTanh_64f_A26 */
OKT_API OktStatus oktsTanh_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsTanh_64f_A26 */
OKT_API OktStatus oktsTanh_64f_A53(const Real64* src, Real64* dst, int32_t len);

/** @} */

/** @defgroup PowersAndRoots Powers and roots
 *  @{ */

/**
 * @brief Cube root, for each element.
 *
 * The exponent is divided by three in integers; the significand goes through a polynomial (32f, in Real64) or a table of 32
 * roots and a short series (64f). Errors below 0.91 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: zeros and infinities give themselves, a NaN itself, quiet; negative elements give negative roots.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsCbrt_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCbrt_32f_A11 */
OKT_API OktStatus oktsCbrt_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsCbrt_32f_A11 */
OKT_API OktStatus oktsCbrt_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Cube root, for each element.
 *
 * The exponent is divided by three in integers; the significand goes through a polynomial (32f, in Real64) or a table of 32
 * roots and a short series (64f). Errors below 0.91 ulp on 32f and 0.52 ulp on 64f.
 *
 * Special values: zeros and infinities give themselves, a NaN itself, quiet; negative elements give negative roots.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsCbrt_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCbrt_64f_A26 */
OKT_API OktStatus oktsCbrt_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsCbrt_64f_A26 */
OKT_API OktStatus oktsCbrt_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief 1 / cube root, for each element.
 *
 * The method of Cbrt. Errors below 0.871 ulp on 32f and 0.545 ulp on 64f.
 *
 * Special values: a zero gives the infinity of its sign and oktStatusSingularity, an infinity the zero of its sign, a NaN
 * itself, quiet; negative elements give negative results.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusSingularity
 */
OKT_API OktStatus oktsInvCbrt_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvCbrt_32f_A11 */
OKT_API OktStatus oktsInvCbrt_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvCbrt_32f_A11 */
OKT_API OktStatus oktsInvCbrt_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief 1 / cube root, for each element.
 *
 * The method of Cbrt. Errors below 0.871 ulp on 32f and 0.545 ulp on 64f.
 *
 * Special values: a zero gives the infinity of its sign and oktStatusSingularity, an infinity the zero of its sign, a NaN
 * itself, quiet; negative elements give negative results.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusSingularity
 */
OKT_API OktStatus oktsInvCbrt_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInvCbrt_64f_A26 */
OKT_API OktStatus oktsInvCbrt_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInvCbrt_64f_A26 */
OKT_API OktStatus oktsInvCbrt_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief 1 / square root, for each element.
 *
 * The approximation and the series of Sqrt. Errors below 0.985 ulp on 32f and 0.501 ulp on 64f; the last bit may follow
 * the approximation of another processor model.
 *
 * Special values: a zero gives the infinity of its sign and oktStatusSingularity, plus infinity gives +0, a NaN itself,
 * quiet; an element below zero gives the NaN 0xFFC00000 (64f: 0xFFF8000000000000) and oktStatusDomain.
 *
 * On 32f, elements are worked in blocks of four from the start of the array, the last len % 4 elements alone. A block with
 * an element that is not positive, normal and finite is computed by root and division, with errors below 0.5001 ulp; so the
 * last bit of an element can depend on its neighbours in the block. Inside one block an element below zero decides over a
 * zero, whatever their order.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsInvSqrt_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvSqrt_32f_A11 */
OKT_API OktStatus oktsInvSqrt_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsInvSqrt_32f_A11 */
OKT_API OktStatus oktsInvSqrt_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief 1 / square root, for each element.
 *
 * The approximation and the series of Sqrt. Errors below 0.985 ulp on 32f and 0.501 ulp on 64f; the last bit may follow
 * the approximation of another processor model.
 *
 * Special values: a zero gives the infinity of its sign and oktStatusSingularity, plus infinity gives +0, a NaN itself,
 * quiet; an element below zero gives the NaN 0xFFC00000 (64f: 0xFFF8000000000000) and oktStatusDomain.
 *
 * On 32f, elements are worked in blocks of four from the start of the array, the last len % 4 elements alone. A block with
 * an element that is not positive, normal and finite is computed by root and division, with errors below 0.5001 ulp; so the
 * last bit of an element can depend on its neighbours in the block. Inside one block an element below zero decides over a
 * zero, whatever their order.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain, oktStatusSingularity
 */
OKT_API OktStatus oktsInvSqrt_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInvSqrt_64f_A26 */
OKT_API OktStatus oktsInvSqrt_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsInvSqrt_64f_A26 */
OKT_API OktStatus oktsInvSqrt_64f_A53(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Square root, for each element.
 *
 * By neither a root nor a division: a 12-bit approximation of 1/sqrt(x), cut so that the leading products are exact, and
 * one evaluation of the binomial series. Errors below 0.761 ulp on 32f and 0.501 ulp on 64f (0.75 ulp where the source is
 * subnormal on 64f); the last bit may follow the approximation of another processor model. Complex elements take the
 * principal root.
 *
 * Real special values: a zero or plus infinity gives itself, a NaN itself, quiet; an element below zero gives the NaN
 * 0xFFC00000 (64f: 0xFFF8000000000000) and oktStatusDomain, without the invalid flag.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsSqrt_32f_A11(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_32f_A21(const Real32* src, Real32* dst, int32_t len);
/** @copydoc oktsSqrt_32f_A11 */
OKT_API OktStatus oktsSqrt_32f_A24(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Square root, for each element.
 *
 * By neither a root nor a division: a 12-bit approximation of 1/sqrt(x), cut so that the leading products are exact, and
 * one evaluation of the binomial series. Errors below 0.761 ulp on 32f and 0.501 ulp on 64f (0.75 ulp where the source is
 * subnormal on 64f); the last bit may follow the approximation of another processor model. Complex elements take the
 * principal root.
 *
 * Real special values: a zero or plus infinity gives itself, a NaN itself, quiet; an element below zero gives the NaN
 * 0xFFC00000 (64f: 0xFFF8000000000000) and oktStatusDomain, without the invalid flag.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer, oktStatusDomain
 */
OKT_API OktStatus oktsSqrt_64f_A26(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSqrt_64f_A26 */
OKT_API OktStatus oktsSqrt_64f_A50(const Real64* src, Real64* dst, int32_t len);
/** @copydoc oktsSqrt_64f_A26 */
OKT_API OktStatus oktsSqrt_64f_A53(const Real64* src, Real64* dst, int32_t len);

/** @} */

/** @defgroup Rounding Rounding
 *  @{ */

/**
 * @brief Round towards plus infinity, for each element.
 *
 * Exact. Infinities and zeros give themselves; a negative fraction gives -0. On 32f a NaN comes through bit for bit, a
 * signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. On 32f an element of magnitude 1 to
 * 2^22 that is no integer raises inexact; nothing else does.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsCeil_32f(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Round towards plus infinity, for each element.
 *
 * Exact. Infinities and zeros give themselves; a negative fraction gives -0. On 32f a NaN comes through bit for bit, a
 * signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. On 32f an element of magnitude 1 to
 * 2^22 that is no integer raises inexact; nothing else does.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsCeil_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Round towards minus infinity, for each element.
 *
 * Exact. Infinities and zeros give themselves; a positive fraction gives +0. On 32f a NaN comes through bit for bit, a
 * signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. On 32f an element of magnitude 1 to
 * 2^22 that is no integer raises inexact; nothing else does.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsFloor_32f(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Round towards minus infinity, for each element.
 *
 * Exact. Infinities and zeros give themselves; a positive fraction gives +0. On 32f a NaN comes through bit for bit, a
 * signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. On 32f an element of magnitude 1 to
 * 2^22 that is no integer raises inexact; nothing else does.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsFloor_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Integer and fraction parts, for each element.
 *
 * dst1 gets the part towards zero, dst2 the fraction; both carry the element's sign and both are exact. An infinity gives
 * itself and a zero; a NaN comes out quiet in both.
 *
 * Either destination may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst1 first destination array of len Real32
 * @param[out] dst2 second destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsModf_32f(const Real32* src, Real32* dst1, Real32* dst2, int32_t len);

/**
 * @brief Integer and fraction parts, for each element.
 *
 * dst1 gets the part towards zero, dst2 the fraction; both carry the element's sign and both are exact. An infinity gives
 * itself and a zero; a NaN comes out quiet in both.
 *
 * Either destination may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst1 first destination array of len Real64
 * @param[out] dst2 second destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsModf_64f(const Real64* src, Real64* dst1, Real64* dst2, int32_t len);

/**
 * @brief Round to integer in the current rounding mode, for each element.
 *
 * By the rounding mode of the caller's MXCSR; halves go to even when that is to nearest. Rint and NearbyInt are one routine:
 * both raise inexact on every call, whatever the elements are. Infinities and zeros give themselves; a result of zero has the
 * element's sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out quiet, and a signalling
 * one raises invalid. Denormals-are-zero does not act: a subnormal rounded up gives 1.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsNearbyInt_32f(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Round to integer in the current rounding mode, for each element.
 *
 * By the rounding mode of the caller's MXCSR; halves go to even when that is to nearest. Rint and NearbyInt are one routine:
 * both raise inexact on every call, whatever the elements are. Infinities and zeros give themselves; a result of zero has the
 * element's sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out quiet, and a signalling
 * one raises invalid. Denormals-are-zero does not act: a subnormal rounded up gives 1.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsNearbyInt_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Round to integer in the current rounding mode, for each element.
 *
 * By the rounding mode of the caller's MXCSR; halves go to even when that is to nearest. Rint and NearbyInt are one routine:
 * both raise inexact on every call, whatever the elements are. Infinities and zeros give themselves; a result of zero has the
 * element's sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out quiet, and a signalling
 * one raises invalid. Denormals-are-zero does not act: a subnormal rounded up gives 1.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsRint_32f(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Round to integer in the current rounding mode, for each element.
 *
 * By the rounding mode of the caller's MXCSR; halves go to even when that is to nearest. Rint and NearbyInt are one routine:
 * both raise inexact on every call, whatever the elements are. Infinities and zeros give themselves; a result of zero has the
 * element's sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out quiet, and a signalling
 * one raises invalid. Denormals-are-zero does not act: a subnormal rounded up gives 1.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsRint_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Round to nearest integer, for each element.
 *
 * Halves are rounded away from zero. Exact. Infinities and zeros give themselves; a magnitude below one half gives the zero of
 * its sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out quiet, and a signalling one
 * raises invalid. Inexact is never raised.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsRound_32f(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Round to nearest integer, for each element.
 *
 * Halves are rounded away from zero. Exact. Infinities and zeros give themselves; a magnitude below one half gives the zero of
 * its sign. On 32f a NaN comes through bit for bit, a signalling one too; on 64f it comes out quiet, and a signalling one
 * raises invalid. Inexact is never raised.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsRound_64f(const Real64* src, Real64* dst, int32_t len);

/**
 * @brief Round towards zero, for each element.
 *
 * Exact. Infinities and zeros give themselves; a fraction gives the zero of its sign. On 32f a NaN comes through bit for bit,
 * a signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. Inexact is never raised.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real32
 * @param[out] dst destination array of len Real32
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsTrunc_32f(const Real32* src, Real32* dst, int32_t len);

/**
 * @brief Round towards zero, for each element.
 *
 * Exact. Infinities and zeros give themselves; a fraction gives the zero of its sign. On 32f a NaN comes through bit for bit,
 * a signalling one too; on 64f it comes out quiet, and a signalling one raises invalid. Inexact is never raised.
 *
 * dst may be src.
 *
 * @param[in] src source array of len Real64
 * @param[out] dst destination array of len Real64
 * @param[in] len number of elements, 1 or more
 * @return oktStatusOk, oktStatusBadLength, oktStatusNullPointer
 */
OKT_API OktStatus oktsTrunc_64f(const Real64* src, Real64* dst, int32_t len);

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
 * @brief Natural logarithm, for each element.
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

/** @} */

#ifdef __cplusplus
}
#endif

#endif
