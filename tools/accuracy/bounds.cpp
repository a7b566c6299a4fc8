#include "bounds.h"

#include "exhaustive.h"

#include <fmt/format.h>
#include <toml++/toml.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>

namespace okt::accuracy {
namespace {

namespace fs = std::filesystem;

// Reads one file and reports mistakes with their place in it.
class BoundsFile {
public:
    BoundsFile(const fs::path& file, std::span<const Export> functions) : functions_(functions) {
        const fs::path parent = file.parent_path();
        name_ = (parent.parent_path().filename() / parent.filename() / file.filename()).string();
        try {
            table_ = toml::parse_file(file.string());
        } catch (const toml::parse_error& error) {
            throw std::runtime_error(fmt::format("{}:{}: {}", name_, error.source().begin.line, error.description()));
        }
    }

    std::vector<Bound> read() {
        checkKeys(table_, {"family", "real", "complex", "range"});  // the tables are compiled
        const std::string family = string(table_, "family").value_or("");
        const toml::array* ranges = table_["range"].as_array();
        if (!ranges) fail(table_, "no [[range]]");
        std::vector<Bound> result;
        int number = 0;
        for (const toml::node& node : *ranges) {
            if (!node.is_table()) fail(node, "[[range]] is not a table");
            readRange(*node.as_table(), family, ++number, result);
        }
        return result;
    }

private:
    [[noreturn]] void fail(const toml::node& node, std::string_view why) const {
        throw std::runtime_error(fmt::format("{}:{}: {}", name_, node.source().begin.line, why));
    }

    void checkKeys(const toml::table& table, const std::set<std::string_view>& known) const {
        for (const auto& [key, value] : table)
            if (!known.contains(key.str())) fail(value, fmt::format("unknown key \"{}\"", key.str()));
    }

    std::optional<std::string> string(const toml::table& table, std::string_view key) const {
        const toml::node* node = table.get(key);
        if (!node) return {};
        if (!node->is_string()) fail(*node, fmt::format("{} is not a string", key));
        return node->value<std::string>();
    }

    // A string or a list of strings.
    std::vector<std::string> strings(const toml::table& table, std::string_view key) const {
        const toml::node* node = table.get(key);
        if (!node) return {};
        if (!node->is_array()) return {*string(table, key)};
        std::vector<std::string> result;
        for (const toml::node& element : *node->as_array()) {
            if (!element.is_string()) fail(element, fmt::format("{} is not a list of strings", key));
            result.push_back(*element.value<std::string>());
        }
        return result;
    }

    // One number for all parts, or one for each.
    std::optional<PartBounds> bounds(const toml::table& table, std::string_view key) const {
        const toml::node* node = table.get(key);
        if (!node) return {};
        std::vector<double> values;
        if (const toml::array* list = node->as_array()) {
            for (const toml::node& element : *list) values.push_back(positive(element, key));
        } else {
            values.push_back(positive(*node, key));
        }
        if (values.empty() || values.size() > maxParts) fail(*node, fmt::format("{} needs one number or two", key));
        return PartBounds{values.front(), values.back()};
    }

    double positive(const toml::node& node, std::string_view key) const {
        const auto value = node.value<double>();
        if (!value || !(*value >= 0)) fail(node, fmt::format("{} is not a positive number", key));
        return *value;
    }

    // All real inputs of one element, divided by blanks or commas.
    Inputs inputs(const toml::node& node, const std::string& text, const Export& function) const {
        std::string separated = text;
        std::ranges::replace(separated, ',', ' ');
        std::istringstream stream(separated);
        std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
        const auto needed = static_cast<std::size_t>(inputsOf(function));
        if (words.size() != needed) fail(node, fmt::format("\"{}\": {} needs {} numbers", text, function.name, needed));
        Inputs result{};
        try {
            std::ranges::transform(words, result.begin(),
                                   [&](const std::string& word) { return parseNumber(word, inputPart(function)); });
        } catch (const std::invalid_argument& error) {
            fail(node, error.what());
        }
        return result;
    }

    void readRange(const toml::table& table, const std::string& family, int number, std::vector<Bound>& result) {
        checkKeys(table, {"type", "grade", "name", "src", "src1", "src2", "scalar", "bound", "block", "element",
                          "short_seeds", "of_modulus", "floor", "worst", "reason"});
        const std::vector<std::string> types = strings(table, "type");
        const std::vector<std::string> grades = strings(table, "grade");
        if (types.empty()) fail(table, "no type");
        for (const std::string& type : types) {
            const auto known = [&](const Export& entry) { return entry.family == family && entry.type == type; };
            if (std::ranges::none_of(exports(), known))
                fail(table, fmt::format("the catalogue has no {} on {}", family, type));
            for (const Export* function : routines(family, type, grades))
                result.push_back(bound(table, *function, number));
        }
    }

    // The top grade of each routine that a family, type and choice of grades names.
    std::vector<const Export*> routines(const std::string& family, const std::string& type,
                                        const std::vector<std::string>& grades) const {
        std::vector<const Export*> result;
        for (const Export& function : functions_) {
            if (function.family != family || function.type != type) continue;
            if (!grades.empty() && std::ranges::find(grades, function.grade) == grades.end()) continue;
            const auto same = std::ranges::find(result, function.routine, [](const Export* f) { return f->routine; });
            if (same == result.end())
                result.push_back(&function);
            else
                *same = &function;
        }
        return result;
    }

    Bound bound(const toml::table& table, const Export& function, int number) const {
        Bound result{};
        result.function = &function;
        result.name = string(table, "name").value_or(fmt::format("range{}", number));
        result.origin = fmt::format("{}:{}", name_, table.source().begin.line);
        result.reason = string(table, "reason").value_or("");

        const auto add = [&](std::string_view key) {
            if (const auto text = string(table, key))
                result.ranges.push_back(*text);
            else
                fail(table, fmt::format("{} needs {}", function.name, key));
        };
        add(function.form == Form::B ? "src1" : "src");
        if (function.form == Form::B) add("src2");
        if (function.form == Form::S) add("scalar");
        for (const std::string& text : result.ranges) {
            try {
                const ArgumentRange checked(text, function.source);
            } catch (const std::invalid_argument& error) {
                fail(table, error.what());
            }
        }

        result.block = result.element = bounds(table, "bound");
        if (const auto own = bounds(table, "block")) result.block = own;
        if (const auto own = bounds(table, "element")) result.element = own;
        if (!result.block && !result.element) fail(table, "no bound");
        result.shortSeeds = bounds(table, "short_seeds");
        if (result.shortSeeds && !function.seed)
            fail(table, fmt::format("{} does not start from approximate reciprocals", function.name));
        if (const toml::node* node = table.get("of_modulus")) {
            if (!node->is_boolean()) fail(*node, "of_modulus is true or false");
            result.yardstick.ofModulus = *node->value<bool>();
        }
        if (const toml::node* node = table.get("floor")) result.yardstick.floor = positive(*node, "floor");
        if (const toml::node* worst = table.get("worst"))
            for (const std::string& text : strings(table, "worst"))
                result.worst.push_back(inputs(*worst, text, function));
        return result;
    }

    std::string name_;
    std::span<const Export> functions_;
    toml::table table_;
};

std::uint64_t seedOf(const Bound& bound) {
    std::uint64_t hash = 0xCBF29CE484222325u;  // FNV-1a
    auto add = [&](std::string_view text) {
        for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    };
    add(bound.function->name);
    add(bound.name);
    for (const std::string& range : bound.ranges) add(range);
    return hash;
}

}  // namespace

std::vector<Bound> loadBounds(const fs::path& file, std::span<const Export> functions) {
    return BoundsFile(file, functions).read();
}

std::vector<Bound> loadAllBounds(const fs::path& sources, std::span<const Export> functions) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(sources))
        if (entry.path().extension() == ".toml") files.push_back(entry.path());
    std::ranges::sort(files);
    std::vector<Bound> result;
    for (const fs::path& file : files) std::ranges::move(loadBounds(file, functions), std::back_inserter(result));
    return result;
}

fs::path sourceDirectory() {
    const char* set = std::getenv("OKT_SOURCES");
    return set ? set : OKT_SOURCE_DIRECTORY;
}

Bound withShortSeeds(Bound bound) {
    if (bound.shortSeeds)
        for (std::optional<PartBounds>* limits : {&bound.block, &bound.element})
            if (*limits) *limits = bound.shortSeeds;
    return bound;
}

PointSet pointsOf(const Bound& bound, std::size_t count, unsigned threads) {
    std::vector<ArgumentRange> ranges;
    for (const std::string& text : bound.ranges) ranges.emplace_back(text, bound.function->source);
    return {*bound.function, std::move(ranges), count, seedOf(bound), threads, bound.worst};
}

std::vector<std::string> excesses(const Bound& bound, const Measurement& measurement) {
    const std::optional<PartBounds>& limits = bound.of(measurement.path);
    std::vector<std::string> result;
    if (!limits) return result;
    const Export& function = *bound.function;
    if (measurement.part[0].count == 0)
        result.push_back(
            fmt::format("{} ({}): no point of the range has a finite result", function.name, bound.origin));
    for (int k = 0; k < measurement.parts; ++k) {
        const LargestError& largest = measurement.part[static_cast<std::size_t>(k)].largest;
        const double limit = (*limits)[static_cast<std::size_t>(k)];
        if (largest.error <= limit) continue;
        result.push_back(fmt::format(
            "{} ({}), {} path{}{}\n  input  {}\n  result {} ({})\n  exact  {}\n  error  {} ulp, bound {}",
            function.name, bound.origin, pathName(measurement.path), measurement.parts > 1 ? ", " : "",
            partName(function, k), inputsText(function, largest.inputs),
            bitPattern(largest.computed, resultPart(function)), largest.computed, largest.exact, largest.error, limit));
    }
    return result;
}

std::optional<Measurement> sweep(const Bound& bound, Path path, std::uint64_t count) {
    const Export& function = *bound.function;
    if (!canRunExhaustively(function)) return {};
    const std::vector<Interval> intervals = ArgumentRange(bound.ranges.front(), function.source).intervals();
    const auto patternOf = [](double value) { return std::bit_cast<std::uint32_t>(static_cast<float>(value)); };
    struct Patterns {
        std::uint32_t from, to;
    };
    std::vector<Patterns> patterns;
    std::uint64_t total = 0;
    for (const Interval& interval : intervals) {
        const auto [from, to] = std::minmax({patternOf(interval.first), patternOf(interval.last)});
        patterns.push_back({from, to});
        total += std::uint64_t{to} - from + 1;
    }
    if (total == 0) return {};

    ExhaustiveOptions options;
    options.stride = static_cast<std::uint32_t>(std::bit_floor(std::max<std::uint64_t>(1, total / count)));
    options.path = path;
    options.floor = bound.yardstick.floor;
    Measurement result;
    result.function = bound.function;
    result.path = path;
    for (const auto [from, to] : patterns) {
        options.from = from;
        options.to = to;
        const ExhaustiveResult part = runExhaustively(function, options);
        result.parts = part.parts;
        result.skipped += part.skipped;
        for (std::size_t k = 0; k < static_cast<std::size_t>(part.parts); ++k) {
            PartStatistics& statistics = result.part[k];
            statistics.count += part.measured;
            if (part.largest[k].error > statistics.largest.error) statistics.largest = part.largest[k];
        }
    }
    return result;
}

}  // namespace okt::accuracy
