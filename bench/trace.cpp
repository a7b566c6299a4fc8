#include "trace.h"

#include <link.h>
#include <sys/ptrace.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <stdexcept>

namespace okt::bench {
namespace {

int findLibrary(dl_phdr_info* info, std::size_t, void* found) {
    if (!std::strstr(info->dlpi_name, "liboktvmmx")) return 0;
    LoadedLibrary& library = *static_cast<LoadedLibrary*>(found);
    library.path = info->dlpi_name;
    library.base = library.begin = info->dlpi_addr;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const auto& segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD) continue;
        library.end = std::max<std::uint64_t>(library.end, info->dlpi_addr + segment.p_vaddr + segment.p_memsz);
    }
    return 1;
}

// The stopped child, ended and collected when the trace is complete or given up.
class TracedChild {
public:
    TracedChild(const Export& function, const Arguments& arguments) : process_(fork()) {
        if (process_ < 0) throw std::runtime_error("cannot start a process");
        if (process_ == 0) {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0) {
                raise(SIGSTOP);
                function.call(arguments);
            }
            _exit(0);
        }
        if (!stopped()) throw std::runtime_error("processes may not be traced here");
    }
    ~TracedChild() {
        if (over_) return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    TracedChild(const TracedChild&) = delete;
    TracedChild& operator=(const TracedChild&) = delete;

    // One instruction. False when the process has ended.
    bool step() {
        if (ptrace(PTRACE_SINGLESTEP, process_, nullptr, nullptr) != 0) throw std::runtime_error("cannot step");
        return stopped();
    }
    std::uint64_t instructionPointer() const {
        return static_cast<std::uint64_t>(ptrace(PTRACE_PEEKUSER, process_, offsetof(user_regs_struct, rip), nullptr));
    }

private:
    bool stopped() {
        int status = 0;
        over_ = waitpid(process_, &status, 0) != process_ || !WIFSTOPPED(status);
        return !over_;
    }

    pid_t process_;
    bool over_ = false;
};

// The smallest p with values[i] = values[i + p] throughout.
std::size_t smallestPeriod(const std::vector<std::uint64_t>& values) {
    std::vector<std::size_t> border(values.size() + 1,
                                    0);  // of the first i values: longest proper prefix that ends them
    for (std::size_t i = 1; i < values.size(); ++i) {
        std::size_t length = border[i];
        while (length > 0 && values[length] != values[i]) length = border[length];
        border[i + 1] = values[length] == values[i] ? length + 1 : 0;
    }
    return values.size() - border[values.size()];
}

// How many of the values around the middle repeat with this period.
std::size_t repeating(const std::vector<std::uint64_t>& values, std::size_t period) {
    const std::size_t middle = values.size() / 2;
    std::size_t begin = middle, end = middle;
    while (begin > 0 && values[begin - 1] == values[begin - 1 + period]) --begin;
    while (end + period < values.size() && values[end] == values[end + period]) ++end;
    return end - begin + period;
}

// Elements an iteration, between its share of the whole trace, which is a little low for what surrounds the loop, and
// the length over the count of iterations, which is high for elements that the surroundings compute. Loops take a
// power of two nearly always.
double wholeElements(double low, double high) {
    const double power = std::exp2(std::floor(std::log2(high * 1.01)));
    return power >= low * 0.99 ? power : std::max(1.0, std::round(low));
}

}  // namespace

LoadedLibrary loadedLibrary() {
    LoadedLibrary library;
    if (!dl_iterate_phdr(findLibrary, &library)) throw std::runtime_error("the library is not loaded");
    return library;
}

std::vector<std::uint64_t> traceCall(const Export& function, const Arguments& arguments) {
    const LoadedLibrary library = loadedLibrary();
    function.call(arguments);  // binds the name here, not in the child
    TracedChild child(function, arguments);
    std::vector<std::uint64_t> trace;
    bool inside = true;
    while (inside && child.step()) {
        const std::uint64_t address = child.instructionPointer();
        inside = address >= library.begin && address < library.end;
        if (inside) trace.push_back(address - library.base);
        inside = inside || trace.empty();  // not there yet
    }
    if (trace.empty()) throw std::runtime_error("the traced call did not reach the library");
    return trace;
}

SteadyLoop steadyLoop(const std::vector<std::uint64_t>& trace, std::size_t length, std::size_t most) {
    const auto begin = trace.begin() + static_cast<std::ptrdiff_t>(trace.size() / 4);
    const std::vector<std::uint64_t> middle(begin, begin + static_cast<std::ptrdiff_t>(trace.size() / 2));
    const double elementsPerInstruction = static_cast<double>(length) / static_cast<double>(trace.size());
    SteadyLoop loop;
    const std::size_t period = smallestPeriod(middle);
    loop.periodic = period > 0 && period <= middle.size() / 2;
    if (loop.periodic) {
        loop.addresses.assign(middle.begin(), middle.begin() + static_cast<std::ptrdiff_t>(period));
        // Any place of the loop is its begin; the lowest address reads best.
        std::rotate(loop.addresses.begin(), std::ranges::min_element(loop.addresses), loop.addresses.end());
        const std::size_t iterations = repeating(trace, period) / period;
        loop.elements = wholeElements(elementsPerInstruction * static_cast<double>(period),
                                      static_cast<double>(length) / static_cast<double>(iterations));
    } else {
        loop.addresses.assign(middle.begin(),
                              middle.begin() + static_cast<std::ptrdiff_t>(std::min(most, middle.size())));
        loop.elements = elementsPerInstruction * static_cast<double>(loop.addresses.size());
    }
    return loop;
}

}  // namespace okt::bench
