// okt list: the catalogue, with filters.
#include "commands.h"
#include "names.h"
#include "registry.h"
#include "tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace okt::tool {
namespace {

struct ListOptions {
    std::string pattern, family, type, group, form, warns;
    bool namesOnly = false;
};

std::string_view signature(Form form) {
    switch (form) {
        case Form::U: return "src dst";
        case Form::B: return "src1 src2 dst";
        case Form::S: return "src scalar dst";
        case Form::D: return "src dst1 dst2";
    }
    return {};
}

int list(const ListOptions& options) {
    std::vector<const Export*> chosen;
    for (const Export& entry : exports()) {
        if (!options.pattern.empty() && !matches(options.pattern, entry.name)) continue;
        if (!options.family.empty() && !matchesWhole(options.family, entry.family)) continue;
        if (!options.type.empty() && options.type != entry.type) continue;
        if (!options.group.empty() && !matches(options.group, entry.group)) continue;
        if (!options.form.empty() && options.form != formName(entry.form)) continue;
        if (!options.warns.empty() && !matches(options.warns, warningNames(entry.warnings))) continue;
        chosen.push_back(&entry);
    }
    if (options.namesOnly) {
        for (const Export* entry : chosen) fmt::print("{}\n", entry->name);
        return exitOk;
    }

    std::size_t name = 4, warnings = 8;
    for (const Export* entry : chosen) {
        name = std::max(name, entry->name.size());
        warnings = std::max(warnings, warningNames(entry->warnings).size());
    }
    if (!chosen.empty())
        fmt::print("{:<{}}  {:<14}  {:<12}  {:<{}}  {}\n", "name", name, "arguments", "frame", "warnings", warnings,
                   "computes");
    for (const Export* entry : chosen)
        fmt::print("{:<{}}  {:<14}  {:<12}  {:<{}}  {}\n", entry->name, name, signature(entry->form),
                   frameName(entry->frame), entry->warnings == warnsNothing ? "-" : warningNames(entry->warnings),
                   warnings, entry->summary);
    fmt::print(stderr, "{} of {} names\n", chosen.size(), exports().size());
    return exitOk;
}

}  // namespace

Command addList(CLI::App& app) {
    auto options = std::make_shared<ListOptions>();
    CLI::App* command = app.add_subcommand("list", "Show the catalogue of functions");
    command->add_option("pattern", options->pattern, "Part of the name, or a pattern with * and ?");
    command->add_option("--family", options->family, "The family's name, or a pattern with * and ?");
    command->add_option("--type", options->type, "Element type")->check(CLI::IsMember({"32f", "64f", "32fc", "64fc"}));
    command->add_option("--group", options->group, "Part of the group's name (Arithmetic, Trigonometric, ...)");
    command->add_option("--form", options->form, "U one source, B two sources, S source and scalar, D two destinations")
        ->check(CLI::IsMember({"U", "B", "S", "D"}));
    command->add_option("--warns", options->warns, "A warning that the function can report")
        ->check(CLI::IsMember({"Overflow", "Underflow", "Singularity", "Domain"}, CLI::ignore_case));
    command->add_flag("--names", options->namesOnly, "Names alone, one a line");
    return [options] { return list(*options); };
}

}  // namespace okt::tool
