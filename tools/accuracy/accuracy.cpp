#include "accuracy.h"

#include "plot.h"
#include "ulp.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <thread>

namespace okt::accuracy {
namespace {

constexpr std::size_t scalarGroup = 256;
constexpr std::size_t padding = 64;  // at least one block of every routine

// An array of elements on a cache line boundary, so that no routine peels elements off its front.
class ElementArray {
public:
    ElementArray(ElementType type, std::size_t length)
        : part_(partOf(type)), data_(std::aligned_alloc(64, (sizeOf(type) * length + 63) / 64 * 64)) {
        if (!data_) throw std::bad_alloc();
        std::memset(data_.get(), 0xFF, sizeOf(type) * length);
    }

    void* data() { return data_.get(); }
    void set(std::size_t index, double value) {
        if (part_ == ElementType::Real32)
            static_cast<float*>(data())[index] = static_cast<float>(value);
        else
            static_cast<double*>(data())[index] = value;
    }
    double get(std::size_t index) const {
        if (part_ == ElementType::Real32) return static_cast<const float*>(data_.get())[index];
        return static_cast<const double*>(data_.get())[index];
    }

private:
    struct Free {
        void operator()(void* p) const { std::free(p); }
    };
    ElementType part_;
    std::unique_ptr<void, Free> data_;
};

std::size_t partsOf(ElementType type) { return isComplex(type) ? 2 : 1; }

// The arrays of one call of any form.
class Call {
public:
    Call(const Export& function, std::size_t length)
        : function_(function),
          length_(length),
          parts_(partsOf(function.source)),
          src1_(function.source, length),
          src2_(function.source, function.form == Form::B ? length : 1),
          dst1_(function.destination, length),
          dst2_(function.destination, function.form == Form::D ? length : 1) {}

    void setInputs(std::size_t index, const Inputs& inputs) {
        for (std::size_t k = 0; k < parts_; ++k) src1_.set(index * parts_ + k, inputs[k]);
        if (function_.form != Form::B && function_.form != Form::S) return;
        const std::size_t second = function_.form == Form::B ? index : 0;
        for (std::size_t k = 0; k < parts_; ++k) src2_.set(second * parts_ + k, inputs[parts_ + k]);
    }

    void run() {
        Arguments arguments;
        arguments.src1 = src1_.data();
        if (function_.form == Form::B) arguments.src2 = src2_.data();
        if (function_.form == Form::S) arguments.scalar = src2_.data();
        arguments.dst1 = dst1_.data();
        if (function_.form == Form::D) arguments.dst2 = dst2_.data();
        arguments.len = static_cast<std::int32_t>(length_);
        const OktStatus status = function_.call(arguments);
        if (status < 0) throw std::runtime_error(fmt::format("{}: {}", function_.name, statusName(status)));
    }

    double result(std::size_t index, std::size_t part) const {
        if (function_.form == Form::D) return (part == 0 ? dst1_ : dst2_).get(index);
        return dst1_.get(index * partsOf(function_.destination) + part);
    }

private:
    const Export& function_;
    std::size_t length_, parts_;
    ElementArray src1_, src2_, dst1_, dst2_;
};

// The results of all points, part after part, by one path.
std::vector<double> computedResults(const PointSet& points, Path path) {
    const Export& function = points.function();
    const auto parts = static_cast<std::size_t>(points.parts());
    std::vector<double> results(points.inputs().size() * parts);
    auto take = [&](const Call& call, std::size_t index, std::size_t point) {
        for (std::size_t k = 0; k < parts; ++k) results[point * parts + k] = call.result(index, k);
    };
    for (const PointSet::Group& group : points.groups()) {
        const std::size_t count = group.end - group.begin;
        if (path == Path::block) {
            Call call(function, count + padding);
            for (std::size_t i = 0; i < count; ++i) call.setInputs(i, points.inputs()[group.begin + i]);
            for (std::size_t i = 0; i < padding; ++i) call.setInputs(count + i, points.inputs()[group.begin]);
            call.run();
            for (std::size_t i = 0; i < count; ++i) take(call, i, group.begin + i);
        } else {
            Call call(function, 1);
            for (std::size_t point = group.begin; point < group.end; ++point) {
                call.setInputs(0, points.inputs()[point]);
                call.run();
                take(call, 0, point);
            }
        }
    }
    return results;
}

double quantile(const std::vector<double>& sorted, double q) {
    const auto at = static_cast<std::size_t>(q * static_cast<double>(sorted.size() - 1) + 0.5);
    return sorted[at];
}

double argumentOf(const Export& function, const Inputs& inputs) {
    return isComplex(function.source) ? std::hypot(inputs[0], inputs[1]) : inputs[0];
}

std::vector<ArgumentRange> parsed(const Export& function, const std::vector<std::string>& texts) {
    std::vector<ArgumentRange> ranges;
    for (const std::string& text : texts) ranges.emplace_back(text, function.source);
    return ranges;
}

}  // namespace

std::string_view pathName(Path path) { return path == Path::block ? "block" : "element"; }

int inputsOf(const Export& function) {
    const int arguments = function.form == Form::B || function.form == Form::S ? 2 : 1;
    return arguments * static_cast<int>(partsOf(function.source));
}

ElementType inputPart(const Export& function) { return partOf(function.source); }
ElementType resultPart(const Export& function) { return partOf(function.destination); }

std::vector<std::string> ordinaryRanges(const Export& function) {
    const std::size_t arguments = function.form == Form::B || function.form == Form::S ? 2 : 1;
    const std::vector<std::string_view>& told = referenceOf(function).ordinary;
    std::vector<std::string> ranges(told.begin(), told.end());
    if (ranges.empty()) ranges.emplace_back("log 1e-3 1e3 both");
    ranges.resize(arguments, ranges.front());
    return ranges;
}

PointSet::PointSet(const Export& function, const std::vector<std::string>& ranges, std::size_t count,
                   std::uint64_t seed, unsigned threads)
    : PointSet(function, parsed(function, ranges), count, seed, threads, {}) {}

PointSet::PointSet(const Export& function, std::vector<ArgumentRange> ranges, std::size_t count, std::uint64_t seed,
                   unsigned threads, const std::vector<Inputs>& alsoThese)
    : function_(&function), parts_(referenceOf(function).parts), inputs_(alsoThese) {
    const bool twoArguments = function.form == Form::B || function.form == Form::S;
    if (ranges.size() != (twoArguments ? 2u : 1u))
        throw std::invalid_argument(fmt::format("{}: a range is needed for each argument", function.name));
    // The points asked for by name stand alone, so that they keep no other point off the block path.
    for (std::size_t i = 0; i < inputs_.size(); ++i) groups_.push_back({i, i + 1});

    const std::size_t parts = partsOf(function.source);
    SplitMix64 random(seed);
    Inputs point{};
    const std::size_t limit = function.form == Form::S ? scalarGroup : count;
    for (std::size_t drawn = 0; drawn < count;) {
        const std::size_t begin = inputs_.size();
        if (function.form == Form::S) ranges[1].draw(random, &point[parts]);
        for (std::size_t i = 0; i < limit && drawn < count; ++i, ++drawn) {
            ranges[0].draw(random, point.data());
            if (function.form == Form::B) ranges[1].draw(random, &point[parts]);
            inputs_.push_back(point);
        }
        groups_.push_back({begin, inputs_.size()});
    }
    evaluate(threads);
}

void PointSet::evaluate(unsigned threads) {
    const Reference& reference = referenceOf(*function_);
    const ElementType part = resultPart(*function_);
    const auto parts = static_cast<std::size_t>(parts_);
    const std::size_t count = inputs_.size();
    exact_.resize(count * parts);
    measured_.assign(count, 1);

    auto evaluateRange = [&](std::size_t begin, std::size_t end) {
        Real in[maxInputs], out[maxParts];
        for (std::size_t i = begin; i < end; ++i) {
            for (std::size_t k = 0; k < maxInputs; ++k) in[k] = inputs_[i][k];
            reference.evaluate(in, out);
            for (std::size_t k = 0; k < parts; ++k) {
                if (!out[k].isFinite() || !std::isfinite(roundedToNearest(out[k], part))) measured_[i] = 0;
                exact_[i * parts + k] = std::move(out[k]);
                out[k] = Real();
            }
        }
    };
    if (threads <= 1) return evaluateRange(0, count);
    std::vector<std::thread> workers;
    for (unsigned t = 0; t < threads; ++t) {
        workers.emplace_back([&, t] {
            evaluateRange(count * t / threads, count * (t + 1) / threads);
            mpfr_free_cache();
        });
    }
    for (std::thread& worker : workers) worker.join();
}

Measurement measure(const PointSet& points, Path path, Yardstick yardstick) {
    Measurement result;
    result.function = &points.function();
    result.path = path;
    result.parts = points.parts();
    const auto parts = static_cast<std::size_t>(points.parts());
    const ElementType type = resultPart(points.function());
    const std::vector<double> computed = computedResults(points, path);

    std::array<std::vector<double>, maxParts> errors;
    for (std::size_t i = 0; i < points.inputs().size(); ++i) {
        if (!points.isMeasured(i)) {
            ++result.skipped;
            continue;
        }
        double floor = yardstick.floor;
        if (yardstick.ofModulus && parts == 2)
            floor = std::max(floor, modulusFloor(points.exact(i, 0), points.exact(i, 1)));
        double largestOfPoint = 0;
        for (std::size_t k = 0; k < parts; ++k) {
            const Real& exact = points.exact(i, static_cast<int>(k));
            const double value = computed[i * parts + k];
            const double error = ulpError(value, exact, type, floor);
            PartStatistics& statistics = result.part[k];
            errors[k].push_back(error);
            largestOfPoint = std::max(largestOfPoint, error);
            statistics.mean += error;
            if (value == roundedToNearest(exact, type)) ++statistics.correctlyRounded;
            if (error > statistics.largest.error) {
                statistics.largest.error = error;
                statistics.largest.point = i;
            }
        }
        result.samples.push_back(
            {argumentOf(points.function(), points.inputs()[i]), static_cast<float>(largestOfPoint)});
    }
    for (std::size_t k = 0; k < parts; ++k) {
        PartStatistics& statistics = result.part[k];
        std::vector<double>& sorted = errors[k];
        statistics.count = sorted.size();
        if (sorted.empty()) continue;
        std::ranges::sort(sorted);
        statistics.mean /= static_cast<double>(sorted.size());
        statistics.correctlyRounded /= static_cast<double>(sorted.size());
        statistics.median = quantile(sorted, 0.5);
        statistics.quantile90 = quantile(sorted, 0.9);
        statistics.quantile99 = quantile(sorted, 0.99);
        statistics.quantile999 = quantile(sorted, 0.999);
        LargestError& largest = statistics.largest;
        largest.inputs = points.inputs()[largest.point];
        largest.computed = computed[largest.point * parts + k];
        char* text = nullptr;
        mpfr_asprintf(&text, "%.30Rg", points.exact(largest.point, static_cast<int>(k)).get());
        largest.exact = text;
        mpfr_free_str(text);
    }
    return result;
}

bool sameErrors(const Measurement& a, const Measurement& b) {
    return a.function == b.function && a.samples == b.samples;
}

std::string_view partName(const Export& function, int part) {
    if (function.form == Form::D) return part == 0 ? "dst1" : "dst2";
    if (isComplex(function.destination)) return part == 0 ? "re" : "im";
    return "";
}

std::string inputsText(const Export& function, const Inputs& inputs) {
    const std::size_t parts = partsOf(function.source);
    const bool two = function.form == Form::B || function.form == Form::S;
    std::string text;
    for (std::size_t argument = 0; argument < (two ? 2u : 1u); ++argument) {
        if (argument > 0) text += ", ";
        text += argument == 1 && function.form == Form::S ? "scalar"
                : function.form != Form::B                ? "src"
                : argument == 0                           ? "src1"
                                                          : "src2";
        for (std::size_t k = 0; k < parts; ++k) {
            const double value = inputs[argument * parts + k];
            const std::string pattern = bitPattern(value, inputPart(function));
            if (inputPart(function) == ElementType::Real32)
                text += fmt::format(" {} ({})", pattern, static_cast<float>(value));
            else
                text += fmt::format(" {} ({})", pattern, value);
        }
    }
    return text;
}

std::string describe(const Measurement& m) {
    std::string text = fmt::format("{}, {} path, {} points", m.function->name, pathName(m.path), m.part[0].count);
    if (m.skipped > 0) text += fmt::format(" ({} more without a finite result)", m.skipped);
    text += '\n';
    if (m.part[0].count == 0) return text;
    text += fmt::format("  {:>4} {:>9} {:>9} {:>9} {:>9} {:>9} {:>10} {:>11}\n", "", "mean", "median", "90%", "99%",
                        "99.9%", "largest", "rounded ok");
    for (int k = 0; k < m.parts; ++k) {
        const PartStatistics& s = m.part[static_cast<std::size_t>(k)];
        text += fmt::format("  {:>4} {:9.4f} {:9.4f} {:9.4f} {:9.4f} {:9.4f} {:10.5g} {:10.3f}%\n",
                            partName(*m.function, k), s.mean, s.median, s.quantile90, s.quantile99, s.quantile999,
                            s.largest.error, 100 * s.correctlyRounded);
    }
    for (int k = 0; k < m.parts; ++k) {
        const LargestError& largest = m.part[static_cast<std::size_t>(k)].largest;
        text += fmt::format("  largest{}{}: {} ulp at {}: {} {}, exact {}\n", m.parts > 1 ? " " : "",
                            partName(*m.function, k), largest.error, inputsText(*m.function, largest.inputs),
                            bitPattern(largest.computed, resultPart(*m.function)), largest.computed, largest.exact);
    }
    return text;
}

std::string plotErrors(const std::vector<const Measurement*>& measurements, std::optional<double> bound) {
    Plot plot;
    plot.bound = bound;
    for (const Measurement* m : measurements) {
        plot.title = m->function->name;
        plot.argumentLabel = m->function->form == Form::B ? "first argument" : "argument";
        if (isComplex(m->function->source)) plot.argumentLabel = "modulus of the " + plot.argumentLabel;
        const auto curve = std::ranges::find(plot.curves, pathName(m->path), &Curve::label);
        if (curve == plot.curves.end())
            plot.curves.push_back({std::string(pathName(m->path)), m->samples});
        else
            curve->samples.insert(curve->samples.end(), m->samples.begin(), m->samples.end());
    }
    if (plot.curves.size() == 2 && plot.curves[0].samples == plot.curves[1].samples) {
        plot.curves.pop_back();
        plot.curves[0].label = "block and element";
    }
    return svg(plot);
}

}  // namespace okt::accuracy
