#include "registry.h"

#include "caller.h"

#include <algorithm>

namespace okt {
namespace {

constexpr Export builtExports[] = {
#define OKT_EXPORT_ROW(function, family, type, grade, form, frame, source, destination, warnings, routine, seed) \
    {#function,                                                                                                  \
     family,                                                                                                     \
     type,                                                                                                       \
     grade,                                                                                                      \
     Form::form,                                                                                                 \
     Frame::frame,                                                                                               \
     ElementType::source,                                                                                        \
     ElementType::destination,                                                                                   \
     warnings,                                                                                                   \
     routine,                                                                                                    \
     seed,                                                                                                       \
     &Caller<&function>::call},
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
