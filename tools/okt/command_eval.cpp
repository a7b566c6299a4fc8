// okt eval: one function on values from the command line.
#include "commands.h"
#include "names.h"
#include "registry.h"
#include "tool_error.h"
#include "values.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace okt::tool {
namespace {

struct EvalOptions {
    std::string name, scalar;
    std::vector<std::string> values;
};

// Elements of one array, with the start aligned for any element type.
class Elements {
public:
    Elements(std::size_t count, ElementType type) : type_(type), storage_(count * sizeOf(type) / 4 + 4) {}
    void* data() { return storage_.data(); }
    void* at(std::size_t i) { return reinterpret_cast<unsigned char*>(storage_.data()) + i * sizeOf(type_); }

private:
    ElementType type_;
    std::vector<std::uint32_t> storage_;
};

void parseInto(void* to, const std::string& text, ElementType type, std::string_view what) {
    if (const std::string wrong = parseElement(text, type, to); !wrong.empty()) fail(exitUsage, "{}: {}", what, wrong);
}

int eval(const EvalOptions& options) {
    const Export& function = requireExport(options.name);
    const std::size_t sources = function.form == Form::B ? 2 : 1;
    if (options.values.size() % sources != 0)
        fail(exitUsage, "{} takes its values in pairs, src1 src2; there are {}", function.name, options.values.size());
    if (function.form == Form::S && options.scalar.empty()) fail(exitUsage, "{} needs --scalar", function.name);
    if (function.form != Form::S && !options.scalar.empty())
        fail(exitUsage, "{} has no scalar: --scalar does not belong here", function.name);

    const std::size_t count = options.values.size() / sources;
    Elements src1(count, function.source), src2(count, function.source);
    Elements dst1(count, function.destination), dst2(count, function.destination), scalar(1, function.source);
    for (std::size_t i = 0; i < count; ++i) {
        parseInto(src1.at(i), options.values[sources * i], function.source, fmt::format("value {}", sources * i + 1));
        if (sources == 2)
            parseInto(src2.at(i), options.values[2 * i + 1], function.source, fmt::format("value {}", 2 * i + 2));
    }
    if (function.form == Form::S) parseInto(scalar.data(), options.scalar, function.source, "--scalar");

    Arguments arguments;
    arguments.src1 = src1.data();
    arguments.src2 = sources == 2 ? src2.data() : nullptr;
    arguments.scalar = scalar.data();
    arguments.dst1 = dst1.data();
    arguments.dst2 = function.form == Form::D ? dst2.data() : nullptr;
    arguments.len = static_cast<std::int32_t>(count);
    const OktStatus status = function.call(arguments);

    struct Row {
        std::string label, value, pattern;
    };
    std::vector<Row> rows;
    const auto row = [&](std::string_view array, std::size_t i, const void* element, ElementType type) {
        rows.push_back({count == 1 ? std::string(array) : fmt::format("{}[{}]", array, i), formatElement(element, type),
                        formatPattern(element, type)});
    };
    for (std::size_t i = 0; i < count; ++i) {
        row(sources == 2 ? "src1" : "src", i, src1.at(i), function.source);
        if (sources == 2) row("src2", i, src2.at(i), function.source);
        if (function.form == Form::S) row("scalar", i, scalar.data(), function.source);
        if (status < 0) continue;  // nothing was computed
        row(function.form == Form::D ? "dst1" : "dst", i, dst1.at(i), function.destination);
        if (function.form == Form::D) row("dst2", i, dst2.at(i), function.destination);
    }
    std::size_t label = 6, value = 0;
    for (const Row& r : rows) {
        label = std::max(label, r.label.size());
        value = std::max(value, r.value.size());
    }
    for (const Row& r : rows) fmt::print("{:<{}}  {:<{}}  {}\n", r.label, label, r.value, value, r.pattern);
    fmt::print("{:<{}}  {} ({})\n", "status", label, statusName(status), status);
    return exitOk;
}

}  // namespace

Command addEval(CLI::App& app) {
    auto options = std::make_shared<EvalOptions>();
    CLI::App* command = app.add_subcommand("eval", "Compute a function of values on the command line, in one call");
    command->add_option("name", options->name, "The exported function")->required();
    command
        ->add_option("values", options->values,
                     "Elements: 1.5, 0x1.8p3, inf, nan, 3,4 (complex), or a bit pattern of 8 or 16 hexadecimal digits; "
                     "src1 src2 in turn for a function of two sources")
        ->required();
    command->add_option("--scalar", options->scalar, "The scalar argument, for functions that have one");
    return [options] { return eval(*options); };
}

}  // namespace okt::tool
