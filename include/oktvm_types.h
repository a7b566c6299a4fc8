/**
 * @file oktvm_types.h
 * @brief The types of oktvm: elements, status, version record. Included by oktvm.h.
 */
#ifndef OKTVM_TYPES_H
#define OKTVM_TYPES_H

#include <stdint.h>

/** @def OKT_API
 *  Marks what the library exports; define OKT_STATIC to link the static archive on Windows. */
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

#endif
