// okt_accuracy_report: measures every built family where its bounds are declared, and writes docs/accuracy.md with
// one plot a routine.
#include "bounds.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace okt;
using namespace okt::accuracy;

namespace {

namespace fs = std::filesystem;

struct Row {
    const Bound* bound;
    std::vector<Measurement> measurements;
};

void writeFile(const fs::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

// "oktsExp_64f_A53" without its grade: the routine's name in the document, with the grade only where it tells apart.
std::string routineName(const Export& function) {
    bool severalRoutines = false;
    for (const Export& other : exports())
        severalRoutines |=
            other.family == function.family && other.type == function.type && other.routine != function.routine;
    const std::string stem = fmt::format("okts{}_{}", function.family, function.type);
    return severalRoutines ? std::string(function.name) : stem;
}

std::vector<Row> measureAll(const std::vector<Bound>& bounds, std::size_t count, unsigned threads) {
    std::vector<Row> rows(bounds.size());
    std::atomic<std::size_t> next = 0;
    std::mutex mutex;
    std::exception_ptr failure;
    std::vector<std::thread> workers;
    for (unsigned t = 0; t < std::max(1u, threads); ++t) {
        workers.emplace_back([&] {
            for (std::size_t i = next++; i < bounds.size(); i = next++) {
                try {
                    rows[i].bound = &bounds[i];
                    const PointSet points = pointsOf(bounds[i], count);
                    for (const Path path : {Path::block, Path::element})
                        if (bounds[i].of(path))
                            rows[i].measurements.push_back(measure(points, path, bounds[i].yardstick));
                } catch (...) {
                    const std::scoped_lock lock(mutex);
                    failure = std::current_exception();
                }
            }
            mpfr_free_cache();
        });
    }
    for (std::thread& worker : workers) worker.join();
    if (failure) std::rethrow_exception(failure);
    return rows;
}

std::string rangesText(const Bound& bound) {
    std::string text;
    for (const std::string& range : bound.ranges) text += (text.empty() ? "" : "; ") + range;
    for (std::size_t at = 0; (at = text.find('|', at)) != text.npos; at += 2) text.insert(at, "\\");
    return text;
}

// "0x3F800000 0x40000000, 0x3F000000 0x3F000000"
std::string patterns(const Export& function, const Inputs& inputs) {
    const int parts = isComplex(function.source) ? 2 : 1;
    std::string text;
    for (int k = 0; k < inputsOf(function); ++k) {
        if (k > 0) text += k % parts == 0 ? ", " : " ";
        text += bitPattern(inputs[static_cast<std::size_t>(k)], inputPart(function));
    }
    return text;
}

// Paths that made the same errors under the same bound share their rows.
std::string tableRows(const Row& row) {
    std::string text;
    const auto& list = row.measurements;
    const bool same = list.size() == 2 && sameErrors(list[0], list[1]) && row.bound->block == row.bound->element;
    for (std::size_t i = 0; i < (same ? 1 : list.size()); ++i) {
        const Measurement& m = list[i];
        for (int k = 0; k < m.parts; ++k) {
            const auto part = static_cast<std::size_t>(k);
            const PartStatistics& s = m.part[part];
            text +=
                fmt::format("| {} | {} | {} | {} | {:.4f} | {:.4f} | {:.6g} | {} | {:.2f} % | {} |\n", row.bound->name,
                            rangesText(*row.bound), same ? "both" : pathName(m.path), partName(*m.function, k), s.mean,
                            s.quantile99, s.largest.error, (*row.bound->of(m.path))[part], 100 * s.correctlyRounded,
                            patterns(*m.function, s.largest.inputs));
        }
    }
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Measures every built family against high-precision references and writes docs/accuracy.md.");
    std::size_t count = 20000;
    unsigned threads = std::max(1u, std::thread::hardware_concurrency());
    fs::path docs = sourceDirectory().parent_path() / "docs";
    std::vector<std::string> families;
    app.add_option("--points", count, "points for each entry")->capture_default_str();
    app.add_option("--threads", threads)->capture_default_str();
    app.add_option("--docs", docs, "directory of the documents")->capture_default_str();
    app.add_option("--family", families, "these families alone");
    CLI11_PARSE(app, argc, argv);

    try {
        std::vector<Bound> bounds = loadAllBounds(sourceDirectory(), exports());
        if (!families.empty())
            std::erase_if(bounds, [&](const Bound& b) {
                return std::ranges::find(families, b.function->family) == families.end();
            });
        const std::vector<Row> rows = measureAll(bounds, count, threads);

        std::map<std::string, std::map<std::string, std::vector<const Row*>>> byFamily;
        for (const Row& row : rows)
            byFamily[std::string(row.bound->function->family)][routineName(*row.bound->function)].push_back(&row);

        fs::create_directories(docs / "accuracy");
        std::string text = fmt::format(
            "# Accuracy\n\n"
            "Errors in units in the last place (ulp) of the result's type, against MPFR at 192 bits, at {} random "
            "points\n"
            "for each range. A correctly rounded result has an error of at most 0.5 ulp. The block path is the "
            "arithmetic\n"
            "of whole blocks in a long array, the element path that of a single element; in many routines they "
            "differ.\n"
            "The bounds stand in `src/*/*.toml` and are held by the tests. Written by "
            "`okt_accuracy_report`.\n\n"
            "Some functions start from the processor's approximate reciprocals, as their texts in the header say. "
            "Their\n"
            "errors here are those of one processor; their bounds hold for every one.\n",
            count);
        int beyond = 0;
        for (const auto& [family, routines] : byFamily) {
            text += fmt::format("\n## {}\n", family);
            for (const auto& [routine, members] : routines) {
                text += fmt::format(
                    "\n### {}\n\n| range | arguments | path | part | mean | 99 % | largest | bound | correctly rounded "
                    "| largest at |\n"
                    "| --- | --- | --- | --- | --- | --- | --- | --- | --- | --- |\n",
                    routine);
                std::vector<const Measurement*> measurements;
                double bound = 0;
                std::string reasons;
                for (const Row* row : members) {
                    text += tableRows(*row);
                    for (const Measurement& m : row->measurements) {
                        measurements.push_back(&m);
                        const auto broken = excesses(*row->bound, m);
                        for (const std::string& excess : broken) fmt::print(stderr, "{}\n", excess);
                        beyond += static_cast<int>(broken.size());
                        for (int k = 0; k < m.parts; ++k)
                            bound = std::max(bound, (*row->bound->of(m.path))[static_cast<std::size_t>(k)]);
                    }
                    if (const auto& shortSeeds = row->bound->shortSeeds)
                        reasons += fmt::format(
                            "\n{}: {} ulp where approximate reciprocals have at most 13 significant bits.\n",
                            row->bound->name, (*shortSeeds)[0]);
                    if (!row->bound->reason.empty())
                        reasons += fmt::format("\n{}: {}\n", row->bound->name, row->bound->reason);
                }
                text += reasons;
                writeFile(docs / "accuracy" / (routine + ".svg"), plotErrors(measurements, bound));
                text += fmt::format("\n![Error of {0}](accuracy/{0}.svg)\n", routine);
            }
        }
        writeFile(docs / "accuracy.md", text);
        fmt::print("{} entries, {} beyond their bounds\n", rows.size(), beyond);
        return beyond == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return 2;
    }
}
