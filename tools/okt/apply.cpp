#include "apply.h"

#include "tool_error.h"
#include "values.h"

#include <algorithm>
#include <system_error>

namespace okt::tool {
namespace fs = std::filesystem;
namespace {

// Storage for one piece of an array, aligned like a good caller's.
class Piece {
public:
    Piece(std::size_t count, ElementType type) : storage_((count * sizeOf(type) + sizeof(Block) - 1) / sizeof(Block)) {}
    void* data() { return storage_.data(); }

private:
    struct alignas(64) Block {
        unsigned char bytes[64];
    };
    std::vector<Block> storage_;
};

void checkFiles(const ApplyRequest& request) {
    const Export& function = *request.function;
    const auto expect = [&](const std::string& given, bool wanted, std::string_view option, std::string_view what) {
        if (given.empty() && wanted) fail(exitUsage, "{} needs {} for its {}", function.name, option, what);
        if (!given.empty() && !wanted)
            fail(exitUsage, "{} has no {}: {} does not belong here", function.name, what, option);
    };
    expect(request.in2, function.form == Form::B, "--in2", "second source");
    expect(request.scalar, function.form == Form::S, "--scalar", "scalar");
    expect(request.out2, function.form == Form::D, "--out2", "second destination");
    if (!request.out2.empty()) {
        std::error_code ignored;
        if (request.out == request.out2 ||
            fs::weakly_canonical(request.out, ignored) == fs::weakly_canonical(request.out2, ignored))
            fail(exitUsage, "--out and --out2 name the same file");
    }
    if (request.piece < 1) fail(exitUsage, "--piece must be at least 1");
}

}  // namespace

ApplyResult apply(const ApplyRequest& request, const Progress& progress, const std::function<bool()>& interrupted) {
    checkFiles(request);
    const Export& function = *request.function;
    const bool twoSources = function.form == Form::B, twoDestinations = function.form == Form::D;
    const auto piece = static_cast<std::size_t>(request.piece);

    alignas(16) unsigned char scalar[16] = {};
    if (function.form == Form::S)
        if (const std::string wrong = parseElement(request.scalar, function.source, scalar); !wrong.empty())
            fail(exitUsage, "--scalar: {}", wrong);

    const auto open = [&](const std::string& path) {
        return openReader(path, request.inFormat.value_or(formatOf(path)), function.source);
    };
    const auto in = open(request.in);
    const auto in2 = twoSources ? open(request.in2) : nullptr;
    if (in2) {
        if (in->count() && in2->count() && *in->count() != *in2->count())
            fail(exitFile, "the sources differ in length: {} has {} elements, {} has {}", request.in, *in->count(),
                 request.in2, *in2->count());
        if (in->shape() && in2->shape() && in->shape() != in2->shape())
            fail(exitFile, "the sources differ in shape or order of elements: {} has {}{}, {} has {}{}", request.in,
                 describe(*in->shape()), in->shape()->columnsFirst ? " in Fortran order" : "", request.in2,
                 describe(*in2->shape()), in2->shape()->columnsFirst ? " in Fortran order" : "");
    }

    const auto shape = in->shape() ? in->shape() : in2 ? in2->shape() : std::nullopt;
    const auto create = [&](const std::string& path) {
        return openWriter(path, request.outFormat.value_or(formatOf(path)), function.destination, shape);
    };
    const auto out = create(request.out);
    const auto out2 = twoDestinations ? create(request.out2) : nullptr;

    Piece src1(piece, function.source), src2(twoSources ? piece : 0, function.source);
    Piece dst1(piece, function.destination), dst2(twoDestinations ? piece : 0, function.destination);

    ApplyResult result;
    for (;;) {
        if (interrupted()) fail(exitInterrupted, "interrupted; nothing was written");
        const std::size_t count = in->read(src1.data(), piece);
        if (in2) {
            const std::size_t count2 = in2->read(src2.data(), piece);
            if (count2 != count)
                fail(exitFile, "the sources differ in length: {} ends after {} elements, {} has more",
                     count < count2 ? request.in : request.in2, result.elements + std::min(count, count2),
                     count < count2 ? request.in2 : request.in);
        }
        if (count == 0) break;

        Arguments arguments;
        arguments.src1 = src1.data();
        arguments.src2 = twoSources ? src2.data() : nullptr;
        arguments.scalar = scalar;
        arguments.dst1 = dst1.data();
        arguments.dst2 = twoDestinations ? dst2.data() : nullptr;
        arguments.len = static_cast<std::int32_t>(count);
        const OktStatus status = function.call(arguments);
        if (status < 0) fail(exitFile, "{} refused the call: {}", function.name, statusName(status));

        result.elements += count;
        ++result.pieces;
        if (status > 0) {
            ++result.warnedPieces;
            result.lastWarning = status;
        }
        out->write(dst1.data(), count);
        if (out2) out2->write(dst2.data(), count);
        progress(result.elements, in->progress());
    }
    out->commit();
    if (out2) out2->commit();
    return result;
}

}  // namespace okt::tool
