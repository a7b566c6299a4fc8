#include "plot.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace okt::accuracy {
namespace {

constexpr double width = 720, height = 400;
constexpr double left = 70, right = 700, top = 40, bottom = 345;
constexpr int stretches = 140;     // of the line of largest errors
constexpr std::size_t dots = 700;  // of each curve
constexpr const char* colours[] = {"#1f6fb4", "#e07b1a", "#3a9a4b", "#8a4fb0"};

struct Tick {
    double value;
    std::string label;
};

// One axis: values to positions, and where its ticks stand.
class Axis {
public:
    Axis(double low, double high, bool logarithmic, double from, double to)
        : low_(logarithmic ? std::log10(low) : low),
          high_(logarithmic ? std::log10(high) : high),
          from_(from),
          to_(to),
          logarithmic_(logarithmic) {
        if (!(low_ < high_)) {
            low_ -= 0.5;
            high_ += 0.5;
        }
    }

    double fraction(double value) const {
        const double x = logarithmic_ ? std::log10(value) : value;
        return std::clamp((x - low_) / (high_ - low_), 0.0, 1.0);
    }
    double position(double value) const { return from_ + (to_ - from_) * fraction(value); }

    std::vector<Tick> ticks(int wanted) const {
        std::vector<Tick> result;
        const double raw = (high_ - low_) / wanted;
        double step = std::pow(10.0, std::floor(std::log10(raw)));
        if (logarithmic_) step = std::max(1.0, step);
        for (double factor : {1.0, 2.0, 5.0, 10.0}) {
            if (step * factor >= raw) {
                step *= factor;
                break;
            }
        }
        for (double n = std::ceil(low_ / step - 1e-9); n * step <= high_ + 1e-9 * step; n += 1) {
            const double value = n * step;
            if (logarithmic_)
                result.push_back({std::pow(10.0, value), value == 0 ? "1" : fmt::format("1e{:.0f}", value)});
            else
                result.push_back({value, fmt::format("{:.6g}", std::abs(value) < 1e-9 * step ? 0.0 : value)});
        }
        return result;
    }

private:
    double low_, high_, from_, to_;
    bool logarithmic_;
};

std::string text(double x, double y, const char* anchor, const std::string& what, int size = 12) {
    return fmt::format("<text x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"{}\" font-size=\"{}\">{}</text>\n", x, y, anchor,
                       size, what);
}

// Moduli of complex arguments may overflow.
bool isShown(const Sample& sample) { return std::isfinite(sample.argument) && std::isfinite(sample.error); }

struct Extent {
    double low = std::numeric_limits<double>::infinity(), high = -low;
    void include(double x) {
        low = std::min(low, x);
        high = std::max(high, x);
    }
};

}  // namespace

std::string svg(const Plot& plot) {
    Extent arguments, magnitudes, errors;
    std::size_t large = 0, small = 0;
    for (const Curve& curve : plot.curves) {
        for (const Sample& sample : curve.samples) {
            if (!isShown(sample)) continue;
            arguments.include(sample.argument);
            if (sample.argument != 0) magnitudes.include(std::abs(sample.argument));
            errors.include(sample.error);
        }
    }
    // Logarithmic when a good part of the points lies in the lowest thousandth of the axis.
    const double span = std::max(std::abs(arguments.low), std::abs(arguments.high));
    for (const Curve& curve : plot.curves)
        for (const Sample& sample : curve.samples) ++(std::abs(sample.argument) < 1e-3 * span ? small : large);
    const bool logArguments = small > (small + large) / 5;
    if (plot.bound) errors.include(*plot.bound);
    if (!(errors.high > 0)) errors.high = 0.5;
    const bool logErrors = errors.high > 20;

    const Axis xAxis = logArguments ? Axis(magnitudes.low, magnitudes.high, true, left, right)
                                    : Axis(arguments.low, arguments.high, false, left, right);
    const Axis yAxis =
        logErrors ? Axis(0.01, errors.high * 1.3, true, bottom, top) : Axis(0, errors.high * 1.08, false, bottom, top);
    auto argument = [&](const Sample& s) { return logArguments ? std::abs(s.argument) : s.argument; };
    auto error = [&](double e) { return yAxis.position(logErrors ? std::max(e, 0.01) : e); };

    std::string out = fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0:.0f} {1:.0f}\" width=\"{0:.0f}\" "
        "height=\"{1:.0f}\" "
        "font-family=\"sans-serif\" fill=\"#222\">\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n",
        width, height);
    out += text(left, 24, "start", plot.title, 15);

    std::string grid, labels;
    for (const Tick& tick : xAxis.ticks(8)) {
        const double x = xAxis.position(tick.value);
        grid += fmt::format("M{:.1f} {:.1f}V{:.1f}", x, top, bottom);
        labels += text(x, bottom + 18, "middle", tick.label);
    }
    for (const Tick& tick : yAxis.ticks(6)) {
        const double y = yAxis.position(tick.value);
        grid += fmt::format("M{:.1f} {:.1f}H{:.1f}", left, y, right);
        labels += text(left - 8, y + 4, "end", tick.label);
    }
    out += fmt::format("<path d=\"{}\" stroke=\"#e2e2e2\" fill=\"none\"/>\n", grid);
    out += fmt::format("<path d=\"M{0:.1f} {1:.1f}V{2:.1f}H{3:.1f}\" stroke=\"#444\" fill=\"none\"/>\n", left, top,
                       bottom, right);
    out += labels;
    out += text((left + right) / 2, bottom + 42, "middle",
                plot.argumentLabel + (logArguments && arguments.low < 0 ? " (magnitude)" : ""), 13);
    out += fmt::format(
        "<text transform=\"translate(20 {:.1f}) rotate(-90)\" text-anchor=\"middle\" font-size=\"13\">error in "
        "ulp</text>\n",
        (top + bottom) / 2);

    std::size_t index = 0;
    for (const Curve& curve : plot.curves) {
        const char* colour = colours[index % std::size(colours)];
        const std::size_t stride = curve.samples.size() / dots + 1;
        std::string points;
        std::vector<double> largest(stretches, -1);
        for (std::size_t i = 0; i < curve.samples.size(); ++i) {
            const Sample& sample = curve.samples[i];
            if (!isShown(sample) || (logArguments && sample.argument == 0)) continue;
            const double at = argument(sample);
            const int bin = std::min(stretches - 1, static_cast<int>(xAxis.fraction(at) * stretches));
            double& most = largest[static_cast<std::size_t>(bin)];
            most = std::max(most, static_cast<double>(sample.error));
            if (i % stride == 0) points += fmt::format("M{:.1f} {:.1f}h0", xAxis.position(at), error(sample.error));
        }
        std::string line;
        for (int bin = 0; bin < stretches; ++bin) {
            const double most = largest[static_cast<std::size_t>(bin)];
            if (most < 0) continue;
            line += fmt::format("{}{:.1f} {:.1f}", line.empty() ? "M" : "L",
                                left + (right - left) * (bin + 0.5) / stretches, error(most));
        }
        out +=
            fmt::format("<path d=\"{}\" stroke=\"{}\" stroke-width=\"2\" stroke-linecap=\"round\" opacity=\"0.5\"/>\n",
                        points, colour);
        out += fmt::format("<path d=\"{}\" stroke=\"{}\" stroke-width=\"1.3\" fill=\"none\"/>\n", line, colour);
        const double x = right - 60 - 90 * static_cast<double>(plot.curves.size() - index);
        out += fmt::format("<path d=\"M{:.1f} {:.1f}h18\" stroke=\"{}\" stroke-width=\"2.5\"/>\n", x, top - 14, colour);
        out += text(x + 23, top - 10, "start", curve.label);
        ++index;
    }
    if (plot.bound) {
        const double y = error(*plot.bound);
        out += fmt::format("<path d=\"M{:.1f} {:.1f}H{:.1f}\" stroke=\"#c22\" stroke-dasharray=\"6 4\"/>\n", left, y,
                           right);
        out += fmt::format("<text x=\"{:.1f}\" y=\"{:.1f}\" font-size=\"11\" fill=\"#c22\">bound {:.6g}</text>\n",
                           left + 4, y - 4, *plot.bound);
    }
    return out + "</svg>\n";
}

}  // namespace okt::accuracy
