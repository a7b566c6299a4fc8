// libFuzzer target over (export, bytes): any bytes as elements, at any alignment, under any control state. The
// export must give what its scalar model gives where it has one, the same bits at every alignment, leave its
// sources and the control registers alone, and stay inside its arrays, which the address sanitizer watches.
#include "caller.h"
#include "family_models.inc"  // the headers of all models
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
    std::string_view name;  // of the export
    OktStatus (*call)(const Arguments&);
};

// The models that tests/models has, found by their names.
const Model models[] = {
#define OKT_MODEL_ROW(name, function) {#name, &okt::Caller<&okt::model::function>::call},
#include "family_models.inc"
#undef OKT_MODEL_ROW
};

const Model* modelOf(const Export& f) {
    const auto found = std::ranges::find(models, f.name, &Model::name);
    return found == std::end(models) ? nullptr : found;
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
