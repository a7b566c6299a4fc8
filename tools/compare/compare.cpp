#include "compare.h"

#include "values.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace okt::compare {
namespace {

thread_local CurrentCall current;

// The sticky flags from the lowest bit on, alike in both units.
constexpr std::array<std::string_view, 6> mxcsrFlags = {"mxcsr-invalid",  "mxcsr-denormal",  "mxcsr-divide-by-zero",
                                                        "mxcsr-overflow", "mxcsr-underflow", "mxcsr-inexact"};
constexpr std::array<std::string_view, 7> x87Flags = {"x87-invalid",    "x87-denormal",  "x87-divide-by-zero",
                                                      "x87-overflow",   "x87-underflow", "x87-inexact",
                                                      "x87-stack-fault"};

std::string both(std::string_view what, unsigned before, unsigned first, unsigned second) {
    return fmt::format("{} 0x{:04X} before, 0x{:04X} and 0x{:04X} after", what, before, first, second);
}

}  // namespace

const CurrentCall& currentCall() { return current; }

const std::vector<std::string_view>& kinds() {
    static const std::vector<std::string_view> all = [] {
        std::vector<std::string_view> names = {"result",      "elsewhere", "status", "mxcsr-control",
                                               "x87-control", "x87-stack", "version"};
        names.insert(names.end(), mxcsrFlags.begin(), mxcsrFlags.end());
        names.insert(names.end(), x87Flags.begin(), x87Flags.end());
        return names;
    }();
    return all;
}

void Comparison::Side::run(const RandomCall& call) {
    const std::size_t size = call.memory.size();
    if (memory.size() < size + memoryAlignment) {
        memory.resize(size + memoryAlignment);
        const auto address = reinterpret_cast<std::uintptr_t>(memory.data());
        begin = memory.data() + (memoryAlignment - address % memoryAlignment) % memoryAlignment;
    }
    std::memcpy(begin, call.memory.data(), size);
    const Arguments arguments = call.arguments(begin);
    const AnyFunction address = library->address(call.index);
    current = {call.function->name.data(), call.seed, library->file().c_str()};
    const test::FloatingState own = test::floatingState();
    test::setFloatingState(call.state);
    status = call.function->callAt(address, arguments);
    state = test::floatingState();
    test::setFloatingState(own);
    current = {};
}

void Comparison::compareMemory(const RandomCall& call, std::vector<Difference>& differences) const {
    const std::byte* const first = sides_[0].begin;
    const std::byte* const second = sides_[1].begin;
    const std::size_t size = call.memory.size();
    if (std::memcmp(first, second, size) == 0) return;

    const Export& f = *call.function;
    const std::size_t elementSize = sizeOf(f.destination);
    for (const Place* place : {&call.dst1, &call.dst2}) {
        std::size_t count = 0, element = 0;
        for (std::size_t i = place->bytes / elementSize; i-- > 0;) {
            const std::size_t at = place->begin + i * elementSize;
            if (std::memcmp(first + at, second + at, elementSize) != 0) ++count, element = i;
        }
        if (count == 0) continue;
        const std::size_t at = place->begin + element * elementSize;
        differences.push_back(
            {"result",
             fmt::format("element {} of {}, from {}: {} and {}{}", element, place == &call.dst1 ? "dst1" : "dst2",
                         call.inputs(element), tool::formatPattern(first + at, f.destination),
                         tool::formatPattern(second + at, f.destination),
                         count > 1 ? fmt::format("; {} elements in all", count) : std::string())});
    }
    for (std::size_t at = 0; at < size; ++at) {
        if (first[at] == second[at] || call.dst1.holds(at) || call.dst2.holds(at)) continue;
        differences.push_back(
            {"elsewhere", fmt::format("the byte {:+} from dst1: 0x{:02X} and 0x{:02X}, 0x{:02X} before",
                                      static_cast<std::ptrdiff_t>(at) - static_cast<std::ptrdiff_t>(call.dst1.begin),
                                      static_cast<unsigned>(first[at]), static_cast<unsigned>(second[at]),
                                      static_cast<unsigned>(call.memory[at]))});
        break;
    }
}

void Comparison::compareState(const RandomCall& call, std::vector<Difference>& differences) const {
    const test::FloatingState &before = call.state, &first = sides_[0].state, &second = sides_[1].state;
    if (first == second) return;
    const auto flags = [&](const auto& names, std::string_view word, std::uint32_t initial, std::uint32_t a,
                           std::uint32_t b) {
        for (std::size_t bit = 0; bit < names.size(); ++bit)
            if (((a ^ b) >> bit & 1) != 0) differences.push_back({names[bit], both(word, initial, a, b)});
    };
    const std::uint32_t mxcsr = first.control.mxcsr, otherMxcsr = second.control.mxcsr;
    if (((mxcsr ^ otherMxcsr) & ~test::stickyFlags) != 0)
        differences.push_back({"mxcsr-control", both("MXCSR", before.control.mxcsr, mxcsr, otherMxcsr)});
    flags(mxcsrFlags, "MXCSR", before.control.mxcsr, mxcsr, otherMxcsr);
    if (first.control.x87 != second.control.x87)
        differences.push_back(
            {"x87-control", both("x87 control word", before.control.x87, first.control.x87, second.control.x87)});
    flags(x87Flags, "x87 status flags", before.x87Flags, first.x87Flags, second.x87Flags);
    if (first.x87InUse != second.x87InUse)
        differences.push_back({"x87-stack", both("x87 registers in use", 0, first.x87InUse, second.x87InUse)});
}

std::vector<Difference> Comparison::run(const RandomCall& call) {
    for (Side& side : sides_) side.run(call);
    std::vector<Difference> differences;
    compareMemory(call, differences);
    if (sides_[0].status != sides_[1].status)
        differences.push_back(
            {"status", fmt::format("status {} and {}", statusName(sides_[0].status), statusName(sides_[1].status))});
    compareState(call, differences);
    return differences;
}

std::vector<Difference> compareVersions(const Library& first, const Library& second) {
    const auto text = [](const OktLibraryVersion& v) {
        return fmt::format("{}.{}.{}.{} {:.4} {} \"{}\" {}", v.majorVersion, v.minorVersion, v.buildMajor,
                           v.buildCounter, v.cpuTag, v.fileName, v.versionText, v.buildDate);
    };
    const std::string a = text(first.version()), b = text(second.version());
    if (a == b) return {};
    return {{"version", fmt::format("{} and {}", a, b)}};
}

}  // namespace okt::compare
