#include "exhaustive.h"

#include "quick_reference.h"
#include "ulp.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <limits>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace okt::accuracy {
namespace {

using Quick = long double;

const QuickReference* quickReferenceOf(const Export& function) {
    return findQuickReference(function.family, function.type.ends_with('c'));
}

// Error in ulp of the exact value's binade, as ulpError has it.
double quickError(float computed, Quick exact, Quick floor) {
    if (!std::isfinite(computed)) return std::numeric_limits<double>::infinity();
    int exponent = 0;
    std::frexp(std::max(std::abs(exact), floor), &exponent);
    const int ulp = exact == 0 && floor == 0 ? -149 : std::max(-149, exponent - 24);
    return static_cast<double>(std::ldexp(std::abs(computed - exact), -ulp));
}

struct Candidate {
    double error;
    std::uint32_t input;
    float computed;
};

// The worst few inputs of a thread.
class Worst {
public:
    void offer(const Candidate& candidate) {
        if (kept_.size() == capacity && candidate.error <= kept_.front().error) return;
        if (kept_.size() == capacity) {
            std::ranges::pop_heap(kept_, larger);
            kept_.pop_back();
        }
        kept_.push_back(candidate);
        std::ranges::push_heap(kept_, larger);
    }
    const std::vector<Candidate>& kept() const { return kept_; }

private:
    static constexpr std::size_t capacity = 16;
    static bool larger(const Candidate& a, const Candidate& b) { return a.error > b.error; }
    std::vector<Candidate> kept_;  // a heap with the smallest error in front
};

class ExhaustiveRun {
public:
    ExhaustiveRun(const Export& function, const ExhaustiveOptions& options)
        : function_(function),
          options_(options),
          reference_(referenceOf(function)),
          quick_(*quickReferenceOf(function)) {
        result_.parts = reference_.parts;
        total_ = (static_cast<std::uint64_t>(options.to) - options.from) / options.stride + 1;
    }

    ExhaustiveResult run() {
        std::vector<std::thread> workers;
        std::exception_ptr failure;
        for (unsigned t = 0; t < std::max(1u, options_.threads); ++t) {
            workers.emplace_back([&, t] {
                try {
                    work(t == 0);
                } catch (...) {
                    const std::scoped_lock lock(mutex_);
                    failure = std::current_exception();
                }
                mpfr_free_cache();
            });
        }
        for (std::thread& worker : workers) worker.join();
        if (failure) std::rethrow_exception(failure);
        return result_;
    }

private:
    static constexpr std::uint64_t chunk = 1 << 14;
    static constexpr std::uint64_t padding = 64;
    static constexpr std::uint32_t sampleEvery = 1u << 20;

    struct Arrays {
        alignas(64) float src[chunk + padding], dst1[2 * (chunk + padding)], dst2[chunk + padding];
    };

    void work(bool reports) {
        const auto arrays = std::make_unique<Arrays>();
        ExhaustiveResult own;
        std::array<Worst, maxParts> worst;
        for (;;) {
            const std::uint64_t begin = next_.fetch_add(chunk);
            if (begin >= total_) break;
            const std::uint64_t count = std::min(chunk, total_ - begin);
            compute(*arrays, begin, count);
            for (std::uint64_t i = 0; i < count; ++i) judge(*arrays, begin, i, own, worst);
            if (reports && options_.progress)
                options_.progress(static_cast<double>(begin + count) / static_cast<double>(total_));
        }
        const std::scoped_lock lock(mutex_);
        result_.measured += own.measured;
        result_.skipped += own.skipped;
        result_.quickReferenceError = std::max(result_.quickReferenceError, own.quickReferenceError);
        for (int k = 0; k < result_.parts; ++k) {
            const auto part = static_cast<std::size_t>(k);
            result_.correctlyRounded[part] += own.correctlyRounded[part];
            for (const Candidate& candidate : worst[part].kept()) confirm(candidate, k, result_, true);
        }
    }

    // The pattern with a number. Of each stride another one, so that their last bits are of all kinds.
    std::uint32_t pattern(std::uint64_t number) const {
        const std::uint64_t within = (number * 0x9E3779B97F4A7C15) >> 32 & (options_.stride - 1);
        return static_cast<std::uint32_t>(
            std::min<std::uint64_t>(options_.from + number * options_.stride + within, options_.to));
    }

    void compute(Arrays& arrays, std::uint64_t begin, std::uint64_t count) const {
        for (std::uint64_t i = 0; i < count + padding; ++i)
            arrays.src[i] = std::bit_cast<float>(pattern(begin + std::min(i, count - 1)));
        Arguments arguments;
        const bool elementwise = options_.path == Path::element;
        const std::uint64_t step = elementwise ? 1 : count + padding;
        arguments.len = static_cast<std::int32_t>(step);
        for (std::uint64_t i = 0; i < (elementwise ? count : 1); ++i) {
            arguments.src1 = arrays.src + i;
            arguments.dst1 = arrays.dst1 + i * (isComplex(function_.destination) ? 2 : 1);
            if (function_.form == Form::D) arguments.dst2 = arrays.dst2 + i;
            if (function_.call(arguments) < 0) throw std::runtime_error(fmt::format("{} failed", function_.name));
        }
    }

    void judge(const Arrays& arrays, std::uint64_t begin, std::uint64_t i, ExhaustiveResult& own,
               std::array<Worst, maxParts>& worst) const {
        const std::uint32_t input = pattern(begin + i);
        const auto x = std::bit_cast<float>(input);
        float computed[maxParts];
        computed[0] = isComplex(function_.destination) ? arrays.dst1[2 * i] : arrays.dst1[i];
        computed[1] = isComplex(function_.destination) ? arrays.dst1[2 * i + 1] : arrays.dst2[i];
        Quick exact[maxParts] = {};
        bool finite = std::isfinite(x);
        if (finite) quick_.evaluate(x, 0, computed, exact);
        for (int k = 0; k < result_.parts; ++k) finite = finite && std::isfinite(static_cast<float>(exact[k]));
        if (!finite) {
            ++own.skipped;
            return;
        }
        ++own.measured;
        for (std::size_t k = 0; k < static_cast<std::size_t>(result_.parts); ++k) {
            const double error = quickError(computed[k], exact[k], options_.floor);
            if (computed[k] == static_cast<float>(exact[k])) ++own.correctlyRounded[k];
            const Candidate candidate{std::isnan(error) ? std::numeric_limits<double>::infinity() : error, input,
                                      computed[k]};
            worst[k].offer(candidate);
            if ((begin + i) % sampleEvery == 0) confirm(candidate, static_cast<int>(k), own, false);
        }
    }

    // Measures against the exact reference.
    void confirm(const Candidate& candidate, int part, ExhaustiveResult& into, bool keep) const {
        Real in[maxInputs], out[maxParts];
        in[0] = std::bit_cast<float>(candidate.input);
        reference_.evaluate(in, out);
        const Real& exact = out[part];
        const double error = ulpError(candidate.computed, exact, ElementType::Real32, options_.floor);
        if (std::isfinite(error) && std::isfinite(candidate.error))
            into.quickReferenceError = std::max(into.quickReferenceError, std::abs(error - candidate.error));
        LargestError& largest = into.largest[static_cast<std::size_t>(part)];
        if (!keep || error <= largest.error) return;
        largest.error = error;
        largest.inputs = {std::bit_cast<float>(candidate.input)};
        largest.computed = candidate.computed;
        char* text = nullptr;
        mpfr_asprintf(&text, "%.20Rg", exact.get());
        largest.exact = text;
        mpfr_free_str(text);
    }

    const Export& function_;
    const ExhaustiveOptions& options_;
    const Reference& reference_;
    const QuickReference& quick_;
    std::uint64_t total_ = 0;
    std::atomic<std::uint64_t> next_ = 0;
    std::mutex mutex_;
    ExhaustiveResult result_;
};

}  // namespace

bool canRunExhaustively(const Export& function) {
    return function.source == ElementType::Real32 && (function.form == Form::U || function.form == Form::D) &&
           quickReferenceOf(function) != nullptr;
}

ExhaustiveResult runExhaustively(const Export& function, const ExhaustiveOptions& options) {
    if (!canRunExhaustively(function))
        throw std::invalid_argument(
            fmt::format("{} has no single Real32 source, or no quick reference", function.name));
    if (options.to < options.from) throw std::invalid_argument("the range of bit patterns is empty");
    return ExhaustiveRun(function, options).run();
}

std::string describe(const Export& function, const ExhaustiveOptions& options, const ExhaustiveResult& result) {
    std::string text =
        fmt::format("{}, {} path, 0x{:08X} to 0x{:08X}: {} inputs ({} more without a finite result)\n", function.name,
                    pathName(options.path), options.from, options.to, result.measured, result.skipped);
    if (result.measured == 0) return text;
    for (int k = 0; k < result.parts; ++k) {
        const auto part = static_cast<std::size_t>(k);
        const LargestError& largest = result.largest[part];
        text += fmt::format(
            "  {}{}largest error {:.6f} ulp at {}: {} {}, exact {}; {:.6f}% correctly rounded\n", partName(function, k),
            result.parts > 1 ? ": " : "", largest.error, inputsText(function, largest.inputs),
            bitPattern(largest.computed, ElementType::Real32), static_cast<float>(largest.computed), largest.exact,
            100 * static_cast<double>(result.correctlyRounded[part]) / static_cast<double>(result.measured));
    }
    return text + fmt::format("  quick reference off by at most {:.1e} ulp\n", result.quickReferenceError);
}

}  // namespace okt::accuracy
