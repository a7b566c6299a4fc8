// The exported functions as data: what the tests, the benchmark and the command line tool run over.
#pragma once

#include "oktvm.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace okt {

enum class Form { U, B, S, D };  // one source | two sources | source and scalar | two destinations
enum class Frame { plain, mxcsr, x87_53, x87_64, doubleGuard };
enum class ElementType { Real32, Real64, Complex32, Complex64 };

enum Warnings : unsigned {
    warnsNothing = 0,
    warnsOverflow = 1,
    warnsUnderflow = 2,
    warnsSingularity = 4,
    warnsDomain = 8
};

constexpr std::size_t sizeOf(ElementType type) {
    constexpr std::size_t sizes[] = {4, 8, 8, 16};
    return sizes[static_cast<int>(type)];
}

constexpr bool isComplex(ElementType type) { return type == ElementType::Complex32 || type == ElementType::Complex64; }

// The real type of the element or of its parts.
constexpr ElementType partOf(ElementType type) {
    return type == ElementType::Complex32   ? ElementType::Real32
           : type == ElementType::Complex64 ? ElementType::Real64
                                            : type;
}

// Arrays of one call, whatever the form: unused ones are null. The scalar of form S is read from its address.
struct Arguments {
    const void* src1 = nullptr;
    const void* src2 = nullptr;
    const void* scalar = nullptr;
    void* dst1 = nullptr;
    void* dst2 = nullptr;
    std::int32_t len = 0;
};

// One built export.
struct Export {
    std::string_view name;    // oktsExp_64f_A53
    std::string_view family;  // Exp
    std::string_view type;    // 64f
    std::string_view grade;   // A53, or empty
    Form form;
    Frame frame;
    ElementType source, destination;
    unsigned warnings;  // a set of Warnings
    int routine;        // exports with the same number are one routine
    bool seed;          // last bits follow the processor's approximate reciprocals
    OktStatus (*call)(const Arguments&);
};

// One name of the catalogue, built or not.
struct CatalogueEntry {
    std::string_view name, family, type, group, form, frame, warnings, summary;
    bool built;
};

std::span<const Export> exports();            // built exports, families in catalogue order
std::span<const CatalogueEntry> catalogue();  // all 390 names
const Export* findExport(std::string_view name);
std::string_view statusName(OktStatus status);  // "oktStatusOk" and so on

}  // namespace okt
