// How fast a sequence of instructions can be at best, by the processor model of llvm-mca.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace okt::bench {

// Text of the instructions of a file, by address.
using Listing = std::map<std::uint64_t, std::string>;
Listing disassemble(const std::string& path);

// The share of a loop's code that processors with an erratum of jumps keep out of the cache of decoded operations:
// lines of 32 bytes in which a jump, with a comparison fused to it, ends or crosses into the next line. Counts for
// short loops.
double shareOfJumpLines(const std::vector<std::uint64_t>& addresses, const Listing& listing);
bool hasJumpErratum(const std::string& processor);

// llvm-mca's name of the processor that this runs on, empty where llvm-mca does not know it: from what llvm-mca prints
// about its version, and from llvm-mca itself.
std::string hostIn(const std::vector<std::string>& version);
std::string hostProcessor();

// What stands in for a host that llvm-mca does not know: a level of instruction sets, for which llvm-mca has the model
// of a processor that had them.
inline constexpr const char* standInProcessor = "x86-64-v4";

// Bounds of a sequence that repeats, in cycles a repetition.
struct Bound {
    std::size_t instructions = 0, calls = 0, x87 = 0;
    double operations = 0;  // what the front end hands out: loads and stores fused with what belongs to them
    double cycles = 0;      // the tightest of the bounds below
    std::string limit;      // which one that is: front end, loads, stores, ports 0 1 5, ...
    double simulated = 0;   // llvm-mca's run with its buffers and latencies; never below `cycles`
};

// The bounds are those of the execution ports together (every subset of ports must hold the operations that can go
// nowhere else), of the divider, of loads and stores, and of the front end. llvm-mca's own block throughput is less
// tight, as it looks at each port group alone. Register moves and zeroing occupy the front end only.
class MachineModel {
public:
    // An empty name takes the host, and the stand-in where that is empty, too.
    explicit MachineModel(const std::string& processor = "", const std::string& host = hostProcessor());
    const std::string& processor() const { return processor_; }
    bool standsIn() const { return standsIn_; }  // for a host that llvm-mca does not know
    std::string description() const;             // for the reader of a table
    Bound bound(const std::vector<std::string>& instructions);

private:
    // What one instruction takes of the machine, once.
    struct Use {
        double operations = 1;
        double loads = 0, stores = 0, indexedStores = 0;
        std::vector<double> dividers;
        std::map<unsigned, double> ports;  // operations by the set of ports they can go to, a bit each
    };
    void learn(const std::vector<std::string>& instructions);
    Use decode(double operations, const std::vector<double>& pressure) const;
    double simulate(const std::vector<std::string>& instructions, std::size_t iterations) const;

    std::string processor_;
    bool standsIn_ = false;
    double width_ = 4;  // operations that the front end hands out in a cycle
    std::vector<std::string> units_;
    std::vector<std::size_t> dividers_, ports_, loadUnits_, addressUnits_, storeUnits_;
    std::map<std::string, Use> uses_;
};

}  // namespace okt::bench
