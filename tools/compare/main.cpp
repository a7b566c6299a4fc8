// okt_compare LIBRARY1 LIBRARY2: random calls of every export of two builds of the library, side by side. What one
// leaves behind the other must leave behind, too: results bit for bit, the bytes around the arrays, the status, MXCSR
// and the x87 words. See CONTRIBUTING.md.
#include "compare.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <tuple>
#include <vector>

namespace {

using okt::compare::Comparison;
using okt::compare::Difference;
using okt::compare::Library;
using okt::compare::RandomCall;

constexpr std::string_view versionExport = "oktvmGetLibVersion";
constexpr int differ = 1, cannotRun = 2, crashed = 3;

struct Options {
    std::string first, second;
    double seconds = 10;
    std::uint64_t calls = 0;  // none: until the time is over
    std::uint64_t seed = 1;
    std::vector<std::string> families, names, expected;
    unsigned threads = std::max(1u, std::thread::hardware_concurrency());
    std::uint64_t shown = 2;
};

// A name, or its begin and a star.
bool matches(std::string_view pattern, std::string_view name) {
    if (pattern.ends_with('*')) return name.starts_with(pattern.substr(0, pattern.size() - 1));
    return pattern == name;
}

// A difference that is meant: EXPORT:KIND. "mxcsr" stands for all kinds that begin with it and a hyphen.
class Expectation {
public:
    explicit Expectation(const std::string& text) {
        const std::size_t colon = text.find(':');
        if (colon != std::string::npos) name_ = text.substr(0, colon), kind_ = text.substr(colon + 1);
        if (!std::ranges::any_of(okt::compare::kinds(), [&](std::string_view kind) { return covers(kind); }))
            throw std::runtime_error(fmt::format("{} is not EXPORT:KIND, with one of the kinds {}", text,
                                                 fmt::join(okt::compare::kinds(), ", ")));
    }
    bool covers(std::string_view name, std::string_view kind) const { return matches(name_, name) && covers(kind); }

private:
    bool covers(std::string_view kind) const {
        return kind == kind_ || (kind.starts_with(kind_) && kind.substr(kind_.size()).starts_with('-'));
    }

    std::string name_, kind_;
};

// Counts of all threads, and the differences in full as long as an export has not had its share.
class Report {
public:
    explicit Report(const Options& options) : options_(options) {
        for (const std::string& text : options.expected) expectations_.emplace_back(text);
    }

    void add(std::string_view name, const std::vector<Difference>& differences, const RandomCall* call) {
        const std::lock_guard lock(mutex_);
        bool unexpected = false;
        for (const Difference& difference : differences) {
            const bool expected = std::ranges::any_of(
                expectations_, [&](const Expectation& e) { return e.covers(name, difference.kind); });
            ++counts_[{std::string(name), difference.kind, expected}];
            ++(expected ? expectedDifferences_ : differences_);
            unexpected = unexpected || !expected;
        }
        if (!unexpected || shown_[std::string(name)]++ >= options_.shown) return;
        fmt::print("{}", name);
        if (call != nullptr) fmt::print(", seed {}: {}", call->seed, call->description());
        fmt::print("\n");
        for (const Difference& difference : differences) fmt::print("    {}: {}\n", difference.kind, difference.text);
        std::fflush(stdout);
    }

    void addWork(std::uint64_t calls, std::uint64_t elements) {
        const std::lock_guard lock(mutex_);
        calls_ += calls;
        elements_ += elements;
    }

    int finish() const {
        if (!counts_.empty()) fmt::print("{:<26} {:<21} {:>9}\n", "export", "kind", "count");
        for (const auto& [key, count] : counts_) {
            const auto& [name, kind, expected] = key;
            fmt::print("{:<26} {:<21} {:>9}{}\n", name, kind, count, expected ? "  expected" : "");
        }
        fmt::print("{} calls, {} elements, {} differences", calls_, elements_, differences_);
        if (expectedDifferences_ != 0) fmt::print(", {} expected ones", expectedDifferences_);
        fmt::print("\n");
        return differences_ == 0 ? 0 : differ;
    }

private:
    const Options& options_;
    std::vector<Expectation> expectations_;
    std::mutex mutex_;
    std::map<std::tuple<std::string, std::string_view, bool>, std::uint64_t> counts_;  // by name, kind, expected
    std::map<std::string, std::uint64_t> shown_;
    std::uint64_t calls_ = 0, elements_ = 0, differences_ = 0, expectedDifferences_ = 0;
};

bool isWanted(const Options& options, std::string_view name, std::string_view family) {
    if (options.families.empty() && options.names.empty()) return true;
    return std::ranges::find(options.families, family) != options.families.end() ||
           std::ranges::any_of(options.names, [&](const std::string& pattern) { return matches(pattern, name); });
}

// The threads take seeds from one row, so that a number of calls is the same calls for any number of threads.
void work(const Options& options, const std::vector<std::size_t>& wanted, const Library& first, const Library& second,
          std::chrono::steady_clock::time_point end, std::atomic<std::uint64_t>& next, Report& report) {
    constexpr std::uint64_t batch = 64;
    Comparison comparison(first, second);
    RandomCall call;
    std::uint64_t calls = 0, elements = 0;
    while (options.calls != 0 || std::chrono::steady_clock::now() < end) {
        const std::uint64_t begin = next.fetch_add(batch);
        const std::uint64_t stop = options.calls == 0 ? begin + batch : std::min(begin + batch, options.calls);
        if (begin >= stop) break;
        for (std::uint64_t i = begin; i < stop; ++i) {
            const std::uint64_t seed = options.seed + i;
            okt::compare::draw(wanted[okt::test::Random(seed).below(wanted.size())], seed, call);
            const std::vector<Difference> differences = comparison.run(call);
            if (!differences.empty()) [[unlikely]]
                report.add(call.function->name, differences, &call);
            ++calls;
            elements += call.elements();
        }
    }
    report.addWork(calls, elements);
}

// Says which call it was; nothing but write() is safe here.
void onCrash(int) {
    const auto say = [](const char* text) {
        if (text != nullptr) [[maybe_unused]]
            const auto written = write(STDERR_FILENO, text, std::strlen(text));
    };
    const okt::compare::CurrentCall& call = okt::compare::currentCall();
    if (call.name != nullptr) {
        char digits[24] = {};
        char* digit = digits + sizeof digits - 1;
        for (std::uint64_t n = call.seed; digit == digits + sizeof digits - 1 || n != 0; n /= 10)
            *--digit = static_cast<char>('0' + n % 10);
        say(call.name);
        say(", seed ");
        say(digit);
        say(": no return from ");
        say(call.library);
        say("\n");
    }
    _exit(crashed);
}

int run(const Options& options) {
    Report report(options);
    std::vector<std::size_t> wanted;
    for (std::size_t i = 0; i < okt::exports().size(); ++i)
        if (isWanted(options, okt::exports()[i].name, okt::exports()[i].family)) wanted.push_back(i);
    const bool versionWanted = isWanted(options, versionExport, {});
    if (wanted.empty() && !versionWanted) throw std::runtime_error("no export of such a family or name");

    const Library first(options.first), second(options.second);
    fmt::print("first:  {}\nsecond: {}\n", first.file(), second.file());
    for (const std::size_t i : wanted)
        if (first.address(i) == second.address(i)) throw std::runtime_error("the two are one library in memory");

    if (versionWanted) report.add(versionExport, okt::compare::compareVersions(first, second), nullptr);
    if (!wanted.empty()) {
        for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP}) std::signal(signal, onCrash);
        const auto end = std::chrono::steady_clock::now() + std::chrono::duration_cast<std::chrono::nanoseconds>(
                                                                std::chrono::duration<double>(options.seconds));
        std::atomic<std::uint64_t> next = 0;
        std::vector<std::jthread> threads;
        for (unsigned t = 0; t < options.threads; ++t)
            threads.emplace_back([&] { work(options, wanted, first, second, end, next, report); });
    }
    return report.finish();
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app(
        "Random calls of two builds of the library, whose results, surroundings, statuses and floating-point state "
        "must "
        "agree bit for bit. The exit code is 1 where they do not.",
        "okt_compare");
    app.add_option("first", options.first, "liboktvmmx.so of one build")->required()->check(CLI::ExistingFile);
    app.add_option("second", options.second, "of another, or the same file")->required()->check(CLI::ExistingFile);
    app.add_option("--seconds", options.seconds, "How long")->check(CLI::PositiveNumber)->capture_default_str();
    app.add_option("--calls", options.calls, "How many calls, however long they take")->check(CLI::PositiveNumber);
    app.add_option("--seed", options.seed, "Of the first call; the next call's is higher by one")
        ->capture_default_str();
    app.add_option("--family", options.families, "These families alone, such as Exp");
    app.add_option("--export", options.names, "These exports alone, by name or by begin and *: oktsExp_64f*");
    app.add_option("--threads", options.threads)->check(CLI::Range(1, 1024))->capture_default_str();
    app.add_option("--expect-difference", options.expected,
                   fmt::format("EXPORT:KIND, which is counted but is no failure; kinds: {}",
                               fmt::join(okt::compare::kinds(), ", ")));
    app.add_option("--show", options.shown, "Differences shown of an export")->capture_default_str();
    app.footer("A call that differs is made again by its seed: --export NAME --seed SEED --calls 1");
    CLI11_PARSE(app, argc, argv);
    try {
        return run(options);
    } catch (const std::exception& error) {
        fmt::print(stderr, "okt_compare: {}\n", error.what());
        return cannotRun;
    }
}
