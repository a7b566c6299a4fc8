#include "registry.h"

#include <algorithm>

namespace okt {
namespace {

// Calls an export of any form with the arrays of Arguments.
template <auto Function>
struct Caller;

template <class S, class D, OktStatus (*Function)(const S*, D*, std::int32_t)>
struct Caller<Function> {
    static OktStatus call(const Arguments& a) {
        return Function(static_cast<const S*>(a.src1), static_cast<D*>(a.dst1), a.len);
    }
};

template <class S, class D, OktStatus (*Function)(const S*, const S*, D*, std::int32_t)>
struct Caller<Function> {
    static OktStatus call(const Arguments& a) {
        return Function(static_cast<const S*>(a.src1), static_cast<const S*>(a.src2), static_cast<D*>(a.dst1), a.len);
    }
};

template <class S, class D, OktStatus (*Function)(const S*, S, D*, std::int32_t)>
struct Caller<Function> {
    static OktStatus call(const Arguments& a) {
        return Function(static_cast<const S*>(a.src1), *static_cast<const S*>(a.scalar), static_cast<D*>(a.dst1), a.len);
    }
};

template <class S, class D, OktStatus (*Function)(const S*, D*, D*, std::int32_t)>
struct Caller<Function> {
    static OktStatus call(const Arguments& a) {
        return Function(static_cast<const S*>(a.src1), static_cast<D*>(a.dst1), static_cast<D*>(a.dst2), a.len);
    }
};

constexpr Export builtExports[] = {
#define OKT_EXPORT_ROW(function, family, type, grade, form, frame, source, destination, warnings, routine, seed)    \
    {#function, family, type, grade, Form::form, Frame::frame, ElementType::source, ElementType::destination,     \
     warnings, routine, seed, &Caller<&function>::call},
#include "export_list.inc"
#undef OKT_EXPORT_ROW
};

constexpr CatalogueEntry allEntries[] = {
#define OKT_CATALOGUE_ROW(...) {__VA_ARGS__},
#include "catalogue_list.inc"
#undef OKT_CATALOGUE_ROW
};

}  // namespace

std::span<const Export> exports() { return builtExports; }

std::span<const CatalogueEntry> catalogue() { return allEntries; }

const Export* findExport(std::string_view name) {
    const auto found = std::ranges::find(builtExports, name, &Export::name);
    return found == std::end(builtExports) ? nullptr : found;
}

std::string_view statusName(OktStatus status) {
    switch (status) {
        case oktStatusOk: return "oktStatusOk";
        case oktStatusBadLength: return "oktStatusBadLength";
        case oktStatusNullPointer: return "oktStatusNullPointer";
        case oktStatusOverflow: return "oktStatusOverflow";
        case oktStatusUnderflow: return "oktStatusUnderflow";
        case oktStatusSingularity: return "oktStatusSingularity";
        case oktStatusDomain: return "oktStatusDomain";
        default: return "unknown status";
    }
}

}  // namespace okt
