// libFuzzer target over (export, bytes): any bytes as elements, at any alignment, under any control state. The
// export must give what its scalar model gives where it has one, the same bits at every alignment, leave its
// sources and the control registers alone, and stay inside its arrays, which the address sanitizer watches.
#include "caller.h"
#include "models/arith_model.h"
#include "models/atan2_model.h"
#include "models/cbrt_model.h"
#include "models/complex_exp_model.h"
#include "models/complex_log_model.h"
#include "models/complex_sqrt_model.h"
#include "models/division_model.h"
#include "models/erf_inv_model.h"
#include "models/erf_model.h"
#include "models/explog_model.h"
#include "models/fixed_power_model.h"
#include "models/hyper_model.h"
#include "models/hypot_model.h"
#include "models/inverse_trig_model.h"
#include "models/normal_model.h"
#include "models/quantile_model.h"
#include "models/rounding_model.h"
#include "models/sqrt_model.h"
#include "models/trig_model.h"
#include "registry.h"
#include "support/control_state.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using okt::Arguments;
using okt::Export;
using Bytes = std::vector<std::byte>;

struct Model {
    std::string_view name;  // family and type, and the grade where the grades are not one routine
    OktStatus (*call)(const Arguments&);
};

#define OKT_MODEL(name) \
    Model { #name, &okt::Caller < &okt::model::name> ::call }
#define OKT_REAL_MODELS(family) OKT_MODEL(family##_32f), OKT_MODEL(family##_64f)
#define OKT_COMPLEX_MODELS(family) OKT_MODEL(family##_32fc), OKT_MODEL(family##_64fc)

const Model models[] = {
    OKT_COMPLEX_MODELS(Abs),       OKT_COMPLEX_MODELS(Mul),
    OKT_COMPLEX_MODELS(MulByConj), OKT_COMPLEX_MODELS(Div),
    OKT_COMPLEX_MODELS(Arg),       OKT_REAL_MODELS(Acos),
    OKT_REAL_MODELS(Asin),         OKT_REAL_MODELS(Atan),
    OKT_REAL_MODELS(Atan2),        OKT_REAL_MODELS(Cbrt),
    OKT_REAL_MODELS(CdfNorm),      OKT_REAL_MODELS(CdfNormInv),
    OKT_REAL_MODELS(Ceil),         OKT_REAL_MODELS(Cos),
    OKT_REAL_MODELS(Cosh),         OKT_REAL_MODELS(Div),
    OKT_REAL_MODELS(Erf),          OKT_REAL_MODELS(Erfc),
    OKT_REAL_MODELS(ErfcInv),      OKT_REAL_MODELS(ErfInv),
    OKT_REAL_MODELS(Exp),          OKT_REAL_MODELS(Expm1),
    OKT_REAL_MODELS(Floor),        OKT_REAL_MODELS(Hypot),
    OKT_REAL_MODELS(Inv),          OKT_REAL_MODELS(InvCbrt),
    OKT_REAL_MODELS(InvSqrt),      OKT_REAL_MODELS(Ln),
    OKT_REAL_MODELS(Log10),        OKT_REAL_MODELS(Log1p),
    OKT_REAL_MODELS(Modf),         OKT_REAL_MODELS(NearbyInt),
    OKT_REAL_MODELS(Pow),          OKT_REAL_MODELS(Pow2o3),
    OKT_REAL_MODELS(Pow3o2),       OKT_REAL_MODELS(Powx),
    OKT_REAL_MODELS(Rint),         OKT_REAL_MODELS(Round),
    OKT_REAL_MODELS(Sin),          OKT_REAL_MODELS(SinCos),
    OKT_REAL_MODELS(Sinh),         OKT_REAL_MODELS(Sqrt),
    OKT_REAL_MODELS(Tan),          OKT_REAL_MODELS(Tanh),
    OKT_REAL_MODELS(Trunc),        OKT_MODEL(Atanh_32f),
    OKT_MODEL(ErfInv_64f_A26),     OKT_COMPLEX_MODELS(CIS),
    OKT_MODEL(Exp_32fc_A11),       OKT_MODEL(Exp_32fc_A24),
    OKT_MODEL(Exp_64fc),           {"Exp_32fc_A21", &okt::Caller<&okt::model::Exp_32fc_A11>::call},
    OKT_MODEL(Ln_32fc_A11),        OKT_MODEL(Ln_32fc_A21),
    OKT_MODEL(Sqrt_32fc),
};

const Model* modelOf(const Export& f) {
    const std::string_view name = f.name.substr(std::string_view("okts").size());
    const auto named = [](std::string_view wanted) {
        return std::ranges::find_if(models, [&](const Model& m) { return m.name == wanted; });
    };
    auto found = named(name);
    if (found == std::end(models)) found = named(name.substr(0, name.rfind('_')));
    return found == std::end(models) ? nullptr : &*found;
}

[[noreturn]] void fail(const Export& f, const char* what) {
    std::fprintf(stderr, "%s: %s\n", f.name.data(), what);
    std::abort();
}

// An exactly sized array at an address with the given remainder modulo 16; the sanitizer guards its end.
class Array {
public:
    Array(std::size_t bytes, std::size_t remainder)
        : storage_(new std::byte[bytes + remainder]), remainder_(remainder), size_(bytes) {}
    std::byte* data() const { return storage_.get() + remainder_; }
    Bytes bytes() const { return {data(), data() + size_}; }
    void fill(const Bytes& from) const { std::copy(from.begin(), from.end(), data()); }

private:
    std::unique_ptr<std::byte[]> storage_;
    std::size_t remainder_, size_;
};

struct Outcome {
    OktStatus status;
    Bytes dst1, dst2;
    bool operator==(const Outcome&) const = default;
};

// With a remainder every array has its own; without one all are aligned, as the models need them.
template <class Call>
Outcome run(const Export& f, const Call& call, const Bytes& src1, const Bytes& src2, const Bytes& scalar,
            std::int32_t len, std::size_t remainder) {
    const std::size_t out = sizeOf(f.destination) * static_cast<std::size_t>(len);
    const auto further = [=](std::size_t bytes) { return remainder == 0 ? 0 : (remainder + bytes) % 16; };
    const Array a(src1.size(), remainder), b(src2.size(), further(3)), d(out, further(5)), e(out, further(0));
    a.fill(src1);
    b.fill(src2);
    std::fill(d.data(), d.data() + out, std::byte{0});
    std::fill(e.data(), e.data() + out, std::byte{0});
    const OktStatus status = call({a.data(), b.data(), scalar.data(), d.data(), e.data(), len});
    if (a.bytes() != src1 || b.bytes() != src2) fail(f, "changed a source");
    return {status, d.bytes(), e.bytes()};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace okt::test;
    if (size < 4) return 0;
    const auto all = okt::exports();
    const Export& f = all[(data[0] | data[1] << 8) % all.size()];
    const std::size_t remainder = data[2] % 16;
    const auto states = allControlStates();
    const ControlState state = states[data[3] % states.size()];
    data += 4;
    size -= 4;

    const std::size_t element = sizeOf(f.source);
    const std::size_t arrays = f.form == okt::Form::B ? 2 : 1;
    const std::size_t scalarSize = f.form == okt::Form::S ? element : 0;
    if (size < scalarSize + arrays * element) return 0;
    const auto len = static_cast<std::int32_t>(std::min<std::size_t>((size - scalarSize) / (arrays * element), 100));
    const auto take = [&](std::size_t bytes) {
        const auto* from = reinterpret_cast<const std::byte*>(data);
        data += bytes;
        return Bytes(from, from + bytes);
    };
    const Bytes scalar = take(scalarSize);
    const Bytes src1 = take(element * static_cast<std::size_t>(len));
    const Bytes src2 = take(arrays == 2 ? element * static_cast<std::size_t>(len) : 0);

    const Outcome plain = run(f, f.call, src1, src2, scalar, len, 0);
    if (run(f, f.call, src1, src2, scalar, len, remainder) != plain) fail(f, "differs by alignment");
    if (const Model* model = modelOf(f))
        if (run(f, model->call, src1, src2, scalar, len, 0) != plain) fail(f, "differs from its model");

    ControlState after;
    {
        const ScopedControlState scope(state);
        run(f, f.call, src1, src2, scalar, len, remainder);
        after = controlState();
    }
    if (after.x87 != state.x87 || (after.mxcsr & ~stickyFlags) != (state.mxcsr & ~stickyFlags))
        fail(f, "changed a control register");
    return 0;
}
