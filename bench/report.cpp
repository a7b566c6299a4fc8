// Writes docs/performance.md and its plots: every built routine beside its peers, measured in short rounds by turns.
//
//   performance-report DOCS-DIRECTORY [--quick] [--only PART-OF-NAME] [--bounds FILE [--bounds-only]]
//
// --bounds appends the section that okt_bound wrote; with --bounds-only it takes the place of the one in the document,
// and nothing is measured.
#include "measure.h"
#include "processor.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace okt::bench;

constexpr std::size_t tableLength = 2048;  // arrays that stay in the caches near the core
constexpr std::string_view libraries[] = {"SLEEF SSE2", "SLEEF AVX2", "libm", "scalar loop", "plain loop", "copy"};
constexpr std::string_view colours[] = {"#1b6ca8", "#7fb2d6", "#d1495b", "#8d6a9f", "#3a7d44", "#9a9a9a"};
constexpr std::string_view ourColour = "#f2a900";

std::string_view colourOf(std::string_view library) {
    const auto found = std::ranges::find(libraries, library);
    return found == std::end(libraries) ? "#000000" : colours[found - std::begin(libraries)];
}

struct Routine {
    const okt::Export* function;
    std::string label;
    std::vector<Comparison> lengths;

    const Comparison* at(std::size_t length) const {
        const auto found = std::ranges::find(lengths, length, &Comparison::length);
        return found == lengths.end() ? nullptr : &*found;
    }
};

struct Group {
    std::string name;
    std::vector<Routine> routines;
};

std::string slug(std::string text) {
    for (char& c : text) c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// Three significant digits.
std::string digits(double value) {
    if (value >= 99.95) return fmt::format("{:.0f}", value);
    if (value >= 9.995) return fmt::format("{:.1f}", value);
    return fmt::format("{:.2f}", value);
}

class Svg {
public:
    Svg(double width, double height)
        : text_(fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.0f}\" height=\"{1:.0f}\" "
                            "viewBox=\"0 0 {0:.0f} {1:.0f}\" font-family=\"sans-serif\" font-size=\"11\">\n"
                            "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n",
                            width, height)) {}

    void line(double x1, double y1, double x2, double y2, std::string_view colour, double width = 1) {
        text_ += fmt::format("<path d=\"M{:.1f} {:.1f}L{:.1f} {:.1f}\" stroke=\"{}\" stroke-width=\"{}\"/>\n", x1, y1,
                             x2, y2, colour, width);
    }
    void dot(double x, double y, std::string_view colour) {
        text_ += fmt::format("<circle cx=\"{:.1f}\" cy=\"{:.1f}\" r=\"4\" fill=\"{}\"/>\n", x, y, colour);
    }
    void curve(const std::vector<std::pair<double, double>>& points, std::string_view colour, double width) {
        std::string path;
        for (const auto& [x, y] : points) path += fmt::format("{}{:.1f} {:.1f}", path.empty() ? "M" : "L", x, y);
        text_ += fmt::format("<path d=\"{}\" fill=\"none\" stroke=\"{}\" stroke-width=\"{}\"/>\n", path, colour, width);
    }
    void label(double x, double y, std::string_view text, std::string_view anchor = "start",
               std::string_view more = "") {
        text_ +=
            fmt::format("<text x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"{}\" {}>{}</text>\n", x, y, anchor, more, text);
    }
    void save(const fs::path& path) { std::ofstream(path) << text_ << "</svg>\n"; }

private:
    std::string text_;
};

void legend(Svg& svg, double x, double y, const std::vector<std::string_view>& used) {
    for (const std::string_view library : used) {
        svg.dot(x, y - 4, library == "oktvm" ? ourColour : colourOf(library));
        svg.label(x + 9, y, library);
        x += 24 + 6.5 * static_cast<double>(library.size());
    }
}

// The peers that occur in the group, in the order of the list above.
std::vector<std::string_view> librariesIn(const Group& group) {
    std::vector<std::string_view> used;
    for (const std::string_view library : libraries)
        for (const Routine& routine : group.routines) {
            const auto& peers = routine.lengths.front().peers;
            if (std::ranges::any_of(peers, [&](const PeerTime& p) { return p.peer.library == library; })) {
                used.push_back(library);
                break;
            }
        }
    return used;
}

// One row a routine, one dot a peer: how many times our time the peer takes, on a logarithmic axis.
void plotRatios(const Group& group, const fs::path& path) {
    double low = 0.8, high = 2;
    for (const Routine& routine : group.routines)
        for (const PeerTime& peer : routine.at(tableLength)->peers) {
            low = std::min(low, peer.ratio);
            high = std::max(high, peer.ratio);
        }
    low = std::exp2(std::floor(std::log2(low)));
    high = std::exp2(std::ceil(std::log2(high)));
    const double left = 130, right = 690, top = 46, step = 18;
    const double bottom = top + step * static_cast<double>(group.routines.size());
    const auto place = [&](double ratio) {
        return left + (right - left) * std::log2(ratio / low) / std::log2(high / low);
    };
    Svg svg(right + 20, bottom + 34);
    legend(svg, left, 18, librariesIn(group));
    for (double tick = low; tick <= high; tick *= 2) {
        svg.line(place(tick), top - 6, place(tick), bottom, tick == 1 ? "#444444" : "#dddddd", tick == 1 ? 1.5 : 1);
        svg.label(place(tick), bottom + 14, fmt::format("{:g}", tick), "middle");
    }
    svg.label((left + right) / 2, bottom + 28, "time of the peer over time of oktvm: right of 1 oktvm is faster",
              "middle");
    double y = top + step / 2;
    for (const Routine& routine : group.routines) {
        svg.line(left, y, right, y, "#eeeeee");
        svg.label(left - 8, y + 4, routine.label, "end");
        for (const PeerTime& peer : routine.at(tableLength)->peers)
            svg.dot(place(peer.ratio), y, colourOf(peer.peer.library));
        y += step;
    }
    svg.save(path);
}

// A small panel a routine: nanoseconds an element over the length of the array, both axes logarithmic.
void plotLengths(const Group& group, const fs::path& path) {
    const int columns = 4;
    const double width = 200, height = 150, left = 34, top = 40;
    const auto rows = (static_cast<int>(group.routines.size()) + columns - 1) / columns;
    Svg svg(columns * width + 20, top + rows * height + 30);
    auto used = librariesIn(group);
    used.insert(used.begin(), "oktvm");
    legend(svg, 14, 18, used);
    int index = 0;
    for (const Routine& routine : group.routines) {
        const double x0 = left + (index % columns) * width, y0 = top + (index / columns) * height + 14;
        const double w = width - 46, h = height - 46;
        ++index;
        double low = 1e300, high = 0;
        for (const Comparison& c : routine.lengths) {
            low = std::min(low, c.ours.best);
            high = std::max(high, c.ours.best);
            for (const PeerTime& peer : c.peers) {
                low = std::min(low, peer.time.best);
                high = std::max(high, peer.time.best);
            }
        }
        low = std::pow(10, std::floor(std::log10(low)));
        high = std::pow(10, std::ceil(std::log10(high)));
        const double longest = std::log2(static_cast<double>(routine.lengths.back().length));
        const auto placeX = [&](std::size_t length) {
            return x0 + w * std::log2(static_cast<double>(length)) / longest;
        };
        const auto placeY = [&](double ns) { return y0 + h - h * std::log10(ns / low) / std::log10(high / low); };
        for (double tick = low; tick <= high * 1.01; tick *= 10) {
            svg.line(x0, placeY(tick), x0 + w, placeY(tick), "#dddddd");
            svg.label(x0 - 4, placeY(tick) + 3, fmt::format("{:g}", tick), "end", "font-size=\"9\"");
        }
        for (int power = 0; power <= longest; power += 8) {
            const double x = x0 + w * power / longest;
            svg.line(x, y0, x, y0 + h, "#eeeeee");
            svg.label(x, y0 + h + 13, fmt::format("2^{}", power), "middle", "font-size=\"9\"");
        }
        svg.label(x0, y0 - 4, routine.label, "start", "font-weight=\"bold\"");
        for (const std::string_view library : used) {
            std::vector<std::pair<double, double>> points;
            for (const Comparison& c : routine.lengths) {
                if (library == "oktvm") points.emplace_back(placeX(c.length), placeY(c.ours.best));
                for (const PeerTime& peer : c.peers)
                    if (peer.peer.library == library) points.emplace_back(placeX(c.length), placeY(peer.time.best));
            }
            if (!points.empty())
                svg.curve(points, library == "oktvm" ? ourColour : colourOf(library), library == "oktvm" ? 2.2 : 1.2);
        }
    }
    svg.label(14, top + rows * height + 16, "nanoseconds an element over the length of the arrays");
    svg.save(path);
}

// A Markdown table of one length.
std::string table(const Group& group, const std::vector<std::string_view>& used,
                  const Comparison* (*choose)(const Routine&)) {
    std::string text = "| Function | ns an element |";
    for (const std::string_view library : used) text += fmt::format(" {} |", library);
    text += "\n| --- | ---: |";
    for (std::size_t i = 0; i < used.size(); ++i) text += " ---: |";
    text += "\n";
    for (const Routine& routine : group.routines) {
        const Comparison* c = choose(routine);
        text += fmt::format("| {} | {} |", routine.label, digits(c->ours.best));
        for (const std::string_view library : used) {
            std::string cell;
            for (const PeerTime& peer : c->peers)
                if (peer.peer.library == library) {
                    cell = fmt::format(" {} ({})", digits(peer.ratio), digits(peer.time.best));
                    if (peer.peer.function.ends_with("for scale")) cell += " \\*";
                }
            text += (cell.empty() ? " -" : cell) + " |";
        }
        text += "\n";
    }
    return text + "\n";
}

std::string textOf(const fs::path& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error(fmt::format("cannot read {}", path.string()));
    return {std::istreambuf_iterator<char>(file), {}};
}

bool write(const fs::path& path, const std::string& text) {
    std::ofstream file(path);
    file << text;
    file.close();
    if (file)
        fmt::print("wrote {}\n", path.string());
    else
        fmt::print(stderr, "cannot write {}\n", path.string());
    return static_cast<bool>(file);
}

// The document with this last section; one of the same heading is replaced.
std::string withLastSection(std::string document, const std::string& section) {
    const std::string heading = fmt::format("\n{}\n", section.substr(0, section.find('\n')));
    if (const std::size_t old = document.find(heading); old != std::string::npos) document.resize(old);
    return fmt::format("{}\n{}", document, section);
}

}  // namespace

int main(int argc, char** argv) {
    fs::path docs, bounds;
    std::string only;
    bool quick = false, boundsOnly = false;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--quick") == 0)
            quick = true;
        else if (std::strcmp(argv[i], "--only") == 0 && i + 1 < argc)
            only = argv[++i];
        else if (std::strcmp(argv[i], "--bounds") == 0 && i + 1 < argc)
            bounds = argv[++i];
        else if (std::strcmp(argv[i], "--bounds-only") == 0)
            boundsOnly = true;
        else if (docs.empty() && argv[i][0] != '-')
            docs = argv[i];
        else
            docs.clear(), i = argc;
    }
    if (docs.empty() || (boundsOnly && bounds.empty())) {
        fmt::print(stderr,
                   "usage: performance-report DOCS-DIRECTORY [--quick] [--only PART-OF-NAME] [--bounds FILE "
                   "[--bounds-only]]\n");
        return 2;
    }
    const fs::path document = docs / "performance.md";
    std::string boundsSection;
    try {
        if (!bounds.empty()) boundsSection = textOf(bounds);
        if (boundsOnly) return write(document, withLastSection(textOf(document), boundsSection)) ? 0 : 1;
    } catch (const std::exception& error) {
        fmt::print(stderr, "{}\n", error.what());
        return 1;
    }

    Effort effort;
    if (quick) effort = {7, 30e-6, 0.05};
    std::vector<Group> groups;
    const std::vector<const okt::Export*> all = routines();
    std::size_t done = 0;
    for (const okt::Export* function : all) {
        ++done;
        if (function->name.find(only) == std::string_view::npos) continue;
        fmt::print(stderr, "{:>3} of {}: {}\n", done, all.size(), function->name);
        Routine routine{function, labelOf(*function), {}};
        for (const int length : {1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 2048, 8192, 32768, 131072, 524288})
            if (static_cast<std::size_t>(length) == tableLength || !quick || length == 1 || length == 64)
                routine.lengths.push_back(measure(*function, static_cast<std::size_t>(length), effort));
        routine.lengths.push_back(measure(*function, lengthBeyondCache(*function), effort));
        const std::string group = std::string(function->group);
        auto found = std::ranges::find(groups, group, &Group::name);
        if (found == groups.end()) found = groups.insert(groups.end(), {group, {}});
        found->routines.push_back(std::move(routine));
    }
    fs::create_directories(docs / "performance");
    std::string text = fmt::format(
        "# Performance\n\n"
        "<!-- Written by the target performance-report; do not edit. -->\n\n"
        "Measured on a processor of {}, code compiled by {}.\n\n"
        "A cell holds the ratio of the peer's time to ours, above 1 where oktvm is faster, and in brackets the peer's\n"
        "nanoseconds an element. Ours and the peers take turns in rounds of a fraction of a millisecond, and the best "
        "round\n"
        "of each counts. Grades that share a routine are measured once. Arguments are spread over the ordinary range "
        "of each\n"
        "function.\n\n"
        "The peers: SLEEF's 1-ulp forms for SSE2 and AVX2 (0.5 ulp for Hypot and Sqrt, 1.5 ulp for Erfc), called once "
        "a\n"
        "vector; libm's function, or the C library's complex function, in a scalar loop; a scalar division loop that\n"
        "notices zero divisors; a plain loop that the compiler made SSE2 code of; a copy that moves the same arrays. "
        "oktvm\n"
        "itself uses nothing beyond SSE2. A star marks SLEEF's exponential as a yardstick where SLEEF has no "
        "counterpart.\n",
        processorDescription(),
#if defined(__clang__)
        fmt::format("Clang {}", __clang_version__)
#else
        fmt::format("GCC {}", __VERSION__)
#endif
    );
    for (const Group& group : groups) {
        const auto used = librariesIn(group);
        text += fmt::format("\n## {}\n\nArrays of {} elements:\n\n", group.name, tableLength);
        text += table(group, used, [](const Routine& r) { return r.at(tableLength); });
        text += "Arrays half as large again as the last cache level together:\n\n";
        text += table(group, used, [](const Routine& r) -> const Comparison* { return &r.lengths.back(); });
        plotRatios(group, docs / "performance" / (slug(group.name) + "-ratios.svg"));
        plotLengths(group, docs / "performance" / (slug(group.name) + "-lengths.svg"));
        text += fmt::format(
            "![Ratios of {0}](performance/{1}-ratios.svg)\n\n![{0} over the length](performance/{1}-lengths.svg)\n",
            group.name, slug(group.name));
    }
    if (!boundsSection.empty()) text = withLastSection(text, boundsSection);
    return write(document, text) ? 0 : 1;
}
