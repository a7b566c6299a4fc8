#include "registry.h"

#include "caller.h"
#include "oktvm.h"

#include <algorithm>
#include <iterator>

namespace okt {
namespace {

constexpr Export allExports[] = {
#define OKT_EXPORT_ROW(function, family, type, grade, form, frame, source, destination, ...) \
    {#function,                                                                              \
     family,                                                                                 \
     type,                                                                                   \
     grade,                                                                                  \
     Form::form,                                                                             \
     Frame::frame,                                                                           \
     ElementType::source,                                                                    \
     ElementType::destination,                                                               \
     __VA_ARGS__,                                                                            \
     &Caller<&function>::call,                                                               \
     &Caller<&function>::callAt},
#include "export_list.inc"
#undef OKT_EXPORT_ROW
};

}  // namespace

std::span<const Export> exports() { return allExports; }

const Export* findExport(std::string_view name) {
    const auto found = std::ranges::find(allExports, name, &Export::name);
    return found == std::end(allExports) ? nullptr : found;
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

std::string_view formName(Form form) {
    constexpr std::string_view names[] = {"U", "B", "S", "D"};
    return names[static_cast<int>(form)];
}

std::string_view frameName(Frame frame) {
    constexpr std::string_view names[] = {"plain", "mxcsr", "x87-53", "x87-64", "double-guard"};
    return names[static_cast<int>(frame)];
}

std::string warningNames(unsigned warnings) {
    std::string text;
    constexpr std::string_view names[] = {"Overflow", "Underflow", "Singularity", "Domain"};
    for (unsigned k = 0; k < std::size(names); ++k)
        if ((warnings >> k & 1) != 0) text.append(text.empty() ? "" : " ").append(names[k]);
    return text;
}

}  // namespace okt
