// The exported functions as data: what the tests, the benchmark and the command line tool run over.
#pragma once

#include "oktvm_types.h"

#include <cstddef>
#include <span>
#include <string>
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

// An address to call; it says nothing of the function's type.
using AnyFunction = void (*)();

// One exported function.
struct Export {
    std::string_view name;    // oktsExp_64f_A53
    std::string_view family;  // Exp
    std::string_view type;    // 64f
    std::string_view grade;   // A53, or empty
    Form form;
    Frame frame;
    ElementType source, destination;
    unsigned warnings;                // a set of Warnings
    int routine;                      // exports with the same number are one routine
    bool seed;                        // last bits follow the processor's approximate reciprocals
    bool inPlace;                     // a destination of the source's type may be the source
    std::string_view group, summary;  // of the family
    OktStatus (*call)(const Arguments&);
    OktStatus (*callAt)(AnyFunction, const Arguments&);  // the same export of another build of the library
};

std::span<const Export> exports();  // families in the order of the catalogue
const Export* findExport(std::string_view name);
std::string_view statusName(OktStatus status);  // "oktStatusOk" and so on

// As the catalogue writes them: "B", "x87-53", "Overflow Underflow".
std::string_view formName(Form form);
std::string_view frameName(Frame frame);
std::string warningNames(unsigned warnings);

}  // namespace okt
