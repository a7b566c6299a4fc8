// The C library's functions called element by element, as a program without a vector library would do it; complex
// functions through std::complex, which calls cexp, clog and so on, and has the language's own products and quotients,
// with its rules for infinities. Compiled without vectorisation.
#include "formulas.h"
#include "loops.h"

#include <cstdint>
#include <vector>

namespace okt::bench {
namespace {

volatile int lastStatus = 0;

// Division as a scalar loop that notices zero divisors.
template <class Real, bool Reciprocal>
void divisionLoop(const Arguments& a) {
    const auto* numerators = static_cast<const Real*>(a.src1);
    const auto* divisors = static_cast<const Real*>(Reciprocal ? a.src1 : a.src2);
    auto* dst = static_cast<Real*>(a.dst1);
    int status = 0;
    for (std::int32_t i = 0; i < a.len; ++i) {
        const Real divisor = divisors[i];
        dst[i] = (Reciprocal ? Real{1} : numerators[i]) / divisor;
        if (divisor == 0) status = 18;
    }
    lastStatus = status;
}

template <class Real>
constexpr auto quotientWithZeroTest = &divisionLoop<Real, false>;
template <class Real>
constexpr auto reciprocalWithZeroTest = &divisionLoop<Real, true>;

}  // namespace
}  // namespace okt::bench

namespace okt::formulas {
namespace {

using namespace bench;

#define OKT_LIBM(family, type, shape, part, source, result, arguments, ...)   \
    {family, type, "libm", #__VA_ARGS__, [] {                                 \
         using T [[maybe_unused]] = part;                                     \
         const auto formula = [] arguments -> result { return __VA_ARGS__; }; \
         return &shape##Loop<source, result, decltype(formula)>;              \
     }()},
#define OKT_SCALAR_LOOP(family, type, name, ...) {family, type, "scalar loop", name, __VA_ARGS__},

std::vector<Peer> peers() {
    return {
#include "peers_libm.inc"
    };
}

#undef OKT_LIBM
#undef OKT_SCALAR_LOOP

}  // namespace
}  // namespace okt::formulas

namespace okt::bench {

std::vector<Peer> libmPeers() { return formulas::peers(); }

}  // namespace okt::bench
