#include "names.h"

#include "tool_error.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <tuple>

namespace okt::tool {
namespace {

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

// Number of insertions, deletions, replacements and exchanges of neighbours that turn one text into the other.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[b.size()];
}

struct Words {
    std::string family, rest;  // exp, 64f_a53
};

Words split(std::string_view name) {
    std::string lower = lowerCase(name);
    if (lower.starts_with("okts")) lower.erase(0, 4);
    const std::size_t underscore = lower.find('_');
    if (underscore == std::string::npos) return {lower, ""};
    return {lower.substr(0, underscore), lower.substr(underscore + 1)};
}

// After a mismatch only the latest star need take one letter more, so the time is bounded by the lengths' product.
bool glob(std::string_view pattern, std::string_view text) {
    std::size_t p = 0, t = 0, star = std::string_view::npos, taken = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = t;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++taken;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

}  // namespace

std::vector<std::string_view> nearestNames(std::string_view typed, std::span<const std::string_view> names,
                                           std::size_t most) {
    // The family weighs most, then type and grade. Where these are not typed at all each type is offered once, by its
    // highest grade, the plain 64f first.
    struct Candidate {
        std::size_t family, rest;
        std::string_view name;
        std::string type;
    };
    const auto order = [](const std::string& type) {
        return type == "64f" ? 0 : type == "32f" ? 1 : type == "64fc" ? 2 : 3;
    };
    const Words want = split(typed);
    std::vector<Candidate> candidates;
    for (const std::string_view name : names) {
        const Words have = split(name);
        const std::size_t family = editDistance(want.family, have.family);
        if (family > std::max<std::size_t>(1, want.family.size() / 3)) continue;
        const std::size_t rest = want.rest.empty() ? 0 : editDistance(want.rest, have.rest);
        candidates.push_back({family, rest, name, have.rest.substr(0, have.rest.find('_'))});
    }
    std::ranges::stable_sort(candidates, [&](const Candidate& a, const Candidate& b) {
        return std::tuple(a.family, a.rest, order(a.type), b.name) <
               std::tuple(b.family, b.rest, order(b.type), a.name);
    });
    std::vector<std::string_view> nearest;
    const Candidate* previous = nullptr;
    for (const Candidate& candidate : candidates) {
        if (nearest.size() == most) break;
        const bool lowerGrade = want.rest.empty() && previous && previous->family == candidate.family &&
                                previous->type == candidate.type &&
                                split(previous->name).family == split(candidate.name).family;
        if (!lowerGrade) nearest.push_back(candidate.name);
        previous = &candidate;
    }
    return nearest;
}

const Export& requireExport(std::string_view name) {
    if (const Export* found = findExport(name)) return *found;
    std::vector<std::string_view> names;
    for (const Export& e : exports()) names.push_back(e.name);
    const auto nearest = nearestNames(name, names);
    if (nearest.empty()) fail(exitUsage, "there is no function {}; 'okt list' shows all names", name);
    fail(exitUsage, "there is no function {}; did you mean {}?", name, fmt::join(nearest, ", "));
}

bool matchesWhole(std::string_view pattern, std::string_view text) { return glob(lowerCase(pattern), lowerCase(text)); }

bool matches(std::string_view pattern, std::string_view text) {
    if (pattern.find_first_of("*?") == std::string_view::npos)
        return lowerCase(text).find(lowerCase(pattern)) != std::string::npos;
    return matchesWhole(pattern, text);
}

}  // namespace okt::tool
