#include "machine_model.h"

#include "process.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cmath>
#include <iterator>
#include <numeric>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace okt::bench {
namespace {

// What llvm-mca reads: one instruction a line.
std::string assembly(const std::vector<std::string>& instructions) {
    std::string text;
    for (const std::string& instruction : instructions) text += '\t' + instruction + '\n';
    return text;
}

std::string_view mnemonicOf(std::string_view instruction) {
    return instruction.substr(0, instruction.find_first_of(" \t"));
}

// Operands without memory references are compared as text.
std::pair<std::string_view, std::string_view> registerOperands(std::string_view instruction) {
    const std::size_t start = instruction.find('%'), comma = instruction.find(", ");
    if (start == std::string_view::npos || comma == std::string_view::npos || comma < start) return {};
    const std::string_view first = instruction.substr(start, comma - start), second = instruction.substr(comma + 2);
    if (!second.starts_with('%') || second.find(',') != std::string_view::npos) return {};
    return {first, second};
}

// Carried out while registers are renamed, without an execution port.
bool isRegisterMove(std::string_view instruction) {
    static const std::set<std::string_view> moves{"movaps", "movapd", "movdqa", "movups", "movupd",
                                                  "movdqu", "movq",   "movl",   "mov"};
    const auto [from, to] = registerOperands(instruction);
    return moves.contains(mnemonicOf(instruction)) && !from.empty() &&
           from.starts_with("%xmm") == to.starts_with("%xmm");
}
bool isZeroing(std::string_view instruction) {
    static const std::set<std::string_view> zeroing{"xorps", "xorpd", "pxor", "xorl", "xorq", "subl", "subq"};
    const auto [from, to] = registerOperands(instruction);
    return zeroing.contains(mnemonicOf(instruction)) && !from.empty() && from == to;
}

bool isConditionalJump(std::string_view mnemonic) { return mnemonic.starts_with('j') && mnemonic != "jmp"; }

// Fused with a conditional jump behind it into one operation.
bool fusesWithJump(std::string_view mnemonic) {
    return std::ranges::any_of(std::array{"cmp", "test", "add", "sub", "and", "inc", "dec"},
                               [&](const char* start) { return mnemonic.starts_with(start); }) &&
           !mnemonic.ends_with("s") && !mnemonic.ends_with("d");
}

bool isX87(std::string_view mnemonic) { return mnemonic.starts_with('f'); }

// The address has two registers. Units that compute addresses of stores alone cannot add them.
bool isIndexed(std::string_view instruction) {
    const std::size_t open = instruction.find("(%");
    return open != std::string_view::npos &&
           instruction.substr(open, instruction.find(')') - open).find(",%") != std::string_view::npos;
}

// What stands in for instructions that llvm-mca refuses or gives absurd costs: a call stores and jumps, a return loads
// and jumps. Exchanging the top of the x87 stack is not the microcode that the model has for it.
std::vector<std::string> standIn(const std::string& instruction) {
    const std::string_view mnemonic = mnemonicOf(instruction);
    if (mnemonic.starts_with("call")) return {"movq %rax, (%rsp)", "jmp 0"};
    if (mnemonic.starts_with("ret")) return {"jmpq *(%rsp)"};
    if (mnemonic == "fxch") return {"fnop"};
    return {instruction};
}

constexpr double tolerance = 0.02;  // the printed pressures have two decimals

double fraction(double x) { return x - std::floor(x + tolerance); }

double sum(const std::vector<double>& values, const std::vector<std::size_t>& chosen) {
    return std::accumulate(chosen.begin(), chosen.end(), 0.0, [&](double s, std::size_t i) { return s + values[i]; });
}

double rounded(double x) { return std::abs(x - std::round(x)) < 3 * tolerance ? std::round(x) : x; }

// What llvm-mca tabulates: the processor's units, and for each instruction its operations and cycles on every unit.
struct Table {
    std::vector<std::string> units;
    std::vector<double> operations;
    std::vector<std::vector<double>> pressures;
};

Table tableOf(const std::vector<std::string>& instructions, const std::string& processor) {
    Table table;
    enum { before, operations, between, pressures } part = before;
    for (const std::string& line :
         linesOf({OKT_LLVM_MCA, "-mcpu=" + processor, "-instruction-tables"}, assembly(instructions))) {
        if (line.starts_with('[') && line.find("Instructions:") != std::string::npos) {
            part = part == before ? operations : pressures;
        } else if (line.empty()) {
            if (part == operations) part = between;
        } else if (const std::size_t at = line.find("- "); part == between && line[0] == '[' && at < line.size()) {
            table.units.push_back(line.substr(at + 2));
        } else if (part == operations) {
            table.operations.push_back(std::stod(line));
        } else if (part == pressures) {
            std::istringstream cells(line);
            std::vector<double> row(table.units.size());
            std::string cell;
            for (double& value : row) value = cells >> cell && cell != "-" ? std::stod(cell) : 0;
            table.pressures.push_back(row);
        }
    }
    if (table.operations.size() != instructions.size() || table.pressures.size() != instructions.size())
        throw std::runtime_error("llvm-mca did not understand all instructions, or has no model of " + processor);
    return table;
}

}  // namespace

Listing disassemble(const std::string& path) {
    Listing listing;
    for (const std::string& line : linesOf({OKT_OBJDUMP, "-d", "--no-show-raw-insn", path})) {
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos || line.find_first_not_of(" 0123456789abcdef") != colon) continue;
        std::string text = line.substr(std::min(line.size(), line.find_first_not_of(" \t", colon + 1)));
        text.resize(std::min({text.size(), text.find(" <"), text.find('#')}));  // no names, no remarks
        text.resize(text.find_last_not_of(" \t") + 1);
        std::ranges::replace(text, '\t', ' ');
        if (!text.empty()) listing[std::stoull(line, nullptr, 16)] = text;
    }
    if (listing.empty()) throw std::runtime_error("no code in " + path);
    return listing;
}

double shareOfJumpLines(const std::vector<std::uint64_t>& addresses, const Listing& listing) {
    constexpr std::uint64_t line = 32;
    std::set<std::uint64_t> lines, slow;
    for (std::size_t i = 0; i < addresses.size(); ++i) {
        const auto here = listing.find(addresses[i]);
        const auto next = std::next(here);
        lines.insert(addresses[i] / line);
        const std::string_view mnemonic = mnemonicOf(here->second);
        const bool jump = mnemonic.starts_with('j') || mnemonic.starts_with("call") || mnemonic.starts_with("ret");
        if (!jump || next == listing.end()) continue;
        std::uint64_t begin = addresses[i];
        if (here != listing.begin() && isConditionalJump(mnemonic)) {
            const auto previous = std::prev(here);
            if (fusesWithJump(mnemonicOf(previous->second))) begin = previous->first;
        }
        const std::uint64_t end = next->first;
        if (begin / line == (end - 1) / line && end % line != 0) continue;
        slow.insert(begin / line);
        slow.insert((end - 1) / line);
    }
    return lines.empty() ? 0 : static_cast<double>(slow.size()) / static_cast<double>(lines.size());
}

bool hasJumpErratum(const std::string& processor) {
    for (const char* start : {"skylake", "skx", "cascadelake", "cooperlake"})
        if (processor.starts_with(start)) return true;
    return false;
}

std::string hostIn(const std::vector<std::string>& version) {
    constexpr std::string_view label = "Host CPU: ";
    for (const std::string& line : version)
        if (const std::size_t at = line.find(label); at != std::string::npos) {
            const std::string host = line.substr(at + label.size());
            return host == "(unknown)" ? "" : host;
        }
    return "";
}

std::string hostProcessor() { return hostIn(linesOf({OKT_LLVM_MCA, "--version"})); }

MachineModel::MachineModel(const std::string& processor, const std::string& host)
    : processor_(!processor.empty() ? processor
                 : !host.empty()    ? host
                                    : standInProcessor),
      standsIn_(processor.empty() && host.empty()) {
    // The models hand out operations before fusion; what renames registers hands out fewer, after fusion.
    for (const auto& [start, width] : {std::pair{"icelake", 5.0},
                                       {"tigerlake", 5.0},
                                       {"alderlake", 6.0},
                                       {"sapphirerapids", 6.0},
                                       {"znver1", 5.0},
                                       {"znver2", 6.0},
                                       {"znver3", 6.0}})
        if (processor_.starts_with(start)) width_ = width;

    // Which units load and which store is seen from a load and a store; dividers are known by their name.
    const Table probes = tableOf({"movaps (%rax), %xmm0", "movaps %xmm0, (%rax)"}, processor_);
    const std::vector<double>&load = probes.pressures[0], &store = probes.pressures[1];
    units_ = probes.units;
    for (std::size_t unit = 0; unit < units_.size(); ++unit) {
        if (units_[unit].find("Divider") != std::string::npos)
            dividers_.push_back(unit);
        else if (store[unit] > 1 - tolerance)
            storeUnits_.push_back(unit);
        else if (load[unit] > 0 || store[unit] > 0)
            addressUnits_.push_back(unit);
        else
            ports_.push_back(unit);
        if (load[unit] > 0) loadUnits_.push_back(unit);
    }
}

std::string MachineModel::description() const {
    if (standsIn_) return fmt::format("modelled as {}, the host is unknown to llvm-mca", processor_);
    return processor_ + " in llvm-mca";
}

MachineModel::Use MachineModel::decode(double operations, const std::vector<double>& pressure) const {
    Use use;
    use.stores = rounded(sum(pressure, storeUnits_));
    use.loads = std::max(0.0, rounded(sum(pressure, addressUnits_)) - use.stores);
    for (const std::size_t unit : dividers_) use.dividers.push_back(pressure[unit]);

    // A store's two halves are one operation until they are executed, as are a load and what works on it.
    use.operations = operations;
    if (use.stores > 0)
        use.operations = std::max(1.0, operations - use.stores);
    else if (use.loads > 0 && operations > use.loads)
        use.operations = operations - 1;

    // The table spreads each operation evenly over the ports that can take it. Equal shares belong to one set of
    // ports; otherwise whole operations are bound to their port and the remaining shares are spread.
    const auto add = [&](unsigned set, double count) {
        if (count > tolerance) use.ports[set] += count;
    };
    unsigned used = 0, spread = 0;
    double least = 1e9, most = 0;
    for (std::size_t i = 0; i < ports_.size(); ++i) {
        const double share = pressure[ports_[i]];
        if (share <= 0) continue;
        used |= 1u << i;
        least = std::min(least, share);
        most = std::max(most, share);
    }
    if (used && most - least < tolerance) {
        add(used, rounded(sum(pressure, ports_)));
        return use;
    }
    double shares = 0;
    for (std::size_t i = 0; i < ports_.size(); ++i) {
        const double share = pressure[ports_[i]], rest = std::max(0.0, fraction(share));
        add(1u << i, std::round(share - rest));
        if (rest > tolerance) spread |= 1u << i;
        shares += rest;
    }
    if (spread) add(spread, rounded(shares));
    return use;
}

void MachineModel::learn(const std::vector<std::string>& instructions) {
    std::vector<std::string> fresh;
    for (const std::string& instruction : std::set<std::string>(instructions.begin(), instructions.end()))
        if (!uses_.contains(instruction)) fresh.push_back(instruction);
    if (fresh.empty()) return;
    const Table table = tableOf(fresh, processor_);
    for (std::size_t i = 0; i < fresh.size(); ++i) {
        Use use = decode(table.operations[i], table.pressures[i]);
        if (isRegisterMove(fresh[i]) || isZeroing(fresh[i])) use.ports.clear();
        // The processors of one of the models, which have the erratum of jumps, too, divide doubles in four cycles,
        // where the model has three. The stand-in is that model under another name.
        const std::string_view mnemonic = mnemonicOf(fresh[i]);
        if ((mnemonic == "divpd" || mnemonic == "divsd") &&
            (hasJumpErratum(processor_) || processor_ == standInProcessor))
            for (double& cycles : use.dividers)
                if (cycles > 0) cycles = 4;
        if (isIndexed(fresh[i])) use.indexedStores = use.stores;
        uses_[fresh[i]] = use;
    }
}

double MachineModel::simulate(const std::vector<std::string>& instructions, std::size_t iterations) const {
    const std::vector<std::string> command{OKT_LLVM_MCA, "-mcpu=" + processor_,
                                           fmt::format("-iterations={}", iterations), "-instruction-info=0",
                                           "-resource-pressure=0"};
    for (const std::string& line : linesOf(command, assembly(instructions)))
        if (line.starts_with("Total Cycles:"))
            return std::stod(line.substr(line.find(':') + 1)) / static_cast<double>(iterations);
    throw std::runtime_error("llvm-mca printed no cycles");
}

Bound MachineModel::bound(const std::vector<std::string>& executed) {
    Bound bound;
    bound.instructions = executed.size();
    std::vector<std::string> instructions;
    for (const std::string& instruction : executed) {
        const std::string_view mnemonic = mnemonicOf(instruction);
        if (mnemonic.starts_with("call")) ++bound.calls;
        if (isX87(mnemonic)) ++bound.x87;
        for (std::string& text : standIn(instruction)) instructions.push_back(std::move(text));
    }
    learn(instructions);

    double loads = 0, stores = 0, indexedStores = 0;
    std::vector<double> dividers(dividers_.size());
    std::map<unsigned, double> demand;
    for (std::size_t i = 0; i < instructions.size(); ++i) {
        const std::string& instruction = instructions[i];
        const std::string& next = instructions[(i + 1) % instructions.size()];
        const Use& use = uses_.at(instruction);
        loads += use.loads;
        stores += use.stores;
        indexedStores += use.indexedStores;
        for (std::size_t k = 0; k < dividers.size(); ++k) dividers[k] += use.dividers[k];
        // A comparison fused with its jump is executed where the jump is.
        if (fusesWithJump(mnemonicOf(instruction)) && isConditionalJump(mnemonicOf(next))) continue;
        bound.operations += use.operations;
        for (const auto& [set, count] : use.ports) demand[set] += count;
    }

    const auto consider = [&](double cycles, const std::string& limit) {
        if (cycles <= bound.cycles * (1 + 1e-9)) return;
        bound.cycles = cycles;
        bound.limit = limit;
    };
    consider(bound.operations / width_, "front end");
    if (!loadUnits_.empty()) consider(loads / static_cast<double>(loadUnits_.size()), "loads");
    if (!storeUnits_.empty()) consider(stores / static_cast<double>(storeUnits_.size()), "stores");
    // Where stores share the units of loads, those with an index cannot evade to the unit of their own.
    if (!loadUnits_.empty() && std::ranges::includes(addressUnits_, loadUnits_))
        consider((loads + indexedStores) / static_cast<double>(loadUnits_.size()), "loads and indexed stores");
    if (!addressUnits_.empty())
        consider((loads + stores) / static_cast<double>(addressUnits_.size()), "loads and stores");
    for (std::size_t i = 0; i < dividers.size(); ++i) consider(dividers[i], "divider");
    for (unsigned set = 1; set < 1u << ports_.size(); ++set) {
        double bounded = 0;  // operations that can go nowhere else
        for (const auto& [ports, count] : demand)
            if ((ports & ~set) == 0) bounded += count;
        std::string name = std::popcount(set) == 1 ? "port" : "ports";
        for (std::size_t i = 0; i < ports_.size(); ++i) {
            if (!(set >> i & 1)) continue;
            const std::string& unit = units_[ports_[i]];
            const std::size_t digits = unit.find("Port");
            name += ' ' + (digits == std::string::npos ? unit : unit.substr(digits + 4));
        }
        consider(bounded / std::popcount(set), name);
    }
    const std::size_t enough = 20000;
    const std::size_t iterations = std::max<std::size_t>(1, enough / std::max<std::size_t>(1, instructions.size()));
    bound.simulated = std::max(bound.cycles, simulate(instructions, iterations));
    return bound;
}

}  // namespace okt::bench
