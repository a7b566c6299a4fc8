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
    bool built = false, missing = false, namesOnly = false;
};

std::string_view signature(std::string_view form) {
    if (form == "B") return "src1 src2 dst";
    if (form == "S") return "src scalar dst";
    if (form == "D") return "src dst1 dst2";
    return "src dst";
}

int list(const ListOptions& options) {
    std::vector<const CatalogueEntry*> chosen;
    for (const CatalogueEntry& entry : catalogue()) {
        if (!options.pattern.empty() && !matches(options.pattern, entry.name)) continue;
        if (!options.family.empty() && !matchesWhole(options.family, entry.family)) continue;
        if (!options.type.empty() && options.type != entry.type) continue;
        if (!options.group.empty() && !matches(options.group, entry.group)) continue;
        if (!options.form.empty() && options.form != entry.form) continue;
        if (!options.warns.empty() && !matches(options.warns, entry.warnings)) continue;
        if (options.built && !entry.built) continue;
        if (options.missing && entry.built) continue;
        chosen.push_back(&entry);
    }
    if (options.namesOnly) {
        for (const CatalogueEntry* entry : chosen) fmt::print("{}\n", entry->name);
        return exitOk;
    }

    std::size_t name = 4, warnings = 8;
    for (const CatalogueEntry* entry : chosen) {
        name = std::max(name, entry->name.size());
        warnings = std::max(warnings, entry->warnings.size());
    }
    if (!chosen.empty())
        fmt::print("{:<{}}  {:<5}  {:<14}  {:<12}  {:<{}}  {}\n", "name", name, "built", "arguments", "frame",
                   "warnings", warnings, "computes");
    for (const CatalogueEntry* entry : chosen)
        fmt::print("{:<{}}  {:<5}  {:<14}  {:<12}  {:<{}}  {}\n", entry->name, name, entry->built ? "yes" : "no",
                   signature(entry->form), entry->frame, entry->warnings.empty() ? "-" : entry->warnings, warnings,
                   entry->summary);
    fmt::print(stderr, "{} of {} names\n", chosen.size(), catalogue().size());
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
    auto* built = command->add_flag("--built", options->built, "Only what this library has");
    command->add_flag("--missing", options->missing, "Only what this library does not have yet")->excludes(built);
    command->add_flag("--names", options->namesOnly, "Names alone, one a line");
    return [options] { return list(*options); };
}

}  // namespace okt::tool
