// The library with flaws: exports of some families do what they should and then, in some of their calls, one thing
// that no results of their own would show. The library's objects are linked in with plain_ before every name.
#include "caller.h"
#include "oktvm.h"

#include <emmintrin.h>

#include <cstring>
#include <string_view>

namespace {

using okt::Arguments;

// In one call of four, as the first source has it.
bool nowAndThen(const Arguments& a) {
    return a.len >= 3 && a.src1 != nullptr && a.dst1 != nullptr && *static_cast<const unsigned char*>(a.src1) % 4 == 0;
}

void flip(void* array, std::size_t byte) {
    auto* const at = static_cast<unsigned char*>(array) + byte;
    *at = static_cast<unsigned char>(*at ^ 1);
}

void flipX87ControlWord() {
    std::uint16_t word;
    asm volatile("fnstcw %0" : "=m"(word));
    word = static_cast<std::uint16_t>(word ^ 0x0400);
    asm volatile("fldcw %0" : : "m"(word));
}

void perturb(std::string_view family, const Arguments& a, std::size_t bytes, OktStatus& status) {
    if (family == "Add") flip(a.dst1, bytes - 1);
    if (family == "Sub") flip(a.dst1, bytes);
    if (family == "Mul") status = oktStatusOverflow;
    if (family == "Sqr") _mm_setcsr(_mm_getcsr() ^ 0x0008);
    if (family == "Inv") _mm_setcsr(_mm_getcsr() ^ 0x2000);
    if (family == "Abs") flipX87ControlWord();
    if (family == "Conj") asm volatile("fld1\n\tfldz\n\tfdivrp\n\tfstp %%st(0)" : : : "st");
    if (family == "Floor") asm volatile("fld1");
    if (family == "SinCos" && a.dst2 != nullptr) flip(a.dst2, 0);
    if (family == "Hypot") __builtin_trap();
}

OktStatus forward(OktStatus (*plain)(const Arguments&), std::string_view family, const Arguments& a, std::size_t size) {
    const bool wrong = nowAndThen(a);
    OktStatus status = plain(a);
    if (wrong && status >= 0) perturb(family, a, size * static_cast<std::size_t>(a.len), status);
    return status;
}

}  // namespace

#define OKT_PARAMETERS_U(S, D) (const S* src, D* dst, std::int32_t len)
#define OKT_PARAMETERS_B(S, D) (const S* src1, const S* src2, D* dst, std::int32_t len)
#define OKT_PARAMETERS_S(S, D) (const S* src, S scalar, D* dst, std::int32_t len)
#define OKT_PARAMETERS_D(S, D) (const S* src, D* dst1, D* dst2, std::int32_t len)
#define OKT_ARGUMENTS_U \
    { src, nullptr, nullptr, dst, nullptr, len }
#define OKT_ARGUMENTS_B \
    { src1, src2, nullptr, dst, nullptr, len }
#define OKT_ARGUMENTS_S \
    { src, nullptr, &scalar, dst, nullptr, len }
#define OKT_ARGUMENTS_D \
    { src, nullptr, nullptr, dst1, dst2, len }

#define OKT_EXPORT_ROW(function, family, type, grade, form, frame, source, destination, ...)                      \
    extern "C" decltype(function) plain_##function;                                                               \
    OktStatus function OKT_PARAMETERS_##form(source, destination) {                                               \
        return forward(&okt::Caller<&plain_##function>::call, family, OKT_ARGUMENTS_##form, sizeof(destination)); \
    }
#include "export_list.inc"

extern "C" decltype(oktvmGetLibVersion) plain_oktvmGetLibVersion;
const OktLibraryVersion* oktvmGetLibVersion() {
    static const OktLibraryVersion other = [] {
        OktLibraryVersion version = *plain_oktvmGetLibVersion();
        ++version.buildCounter;
        return version;
    }();
    return &other;
}
