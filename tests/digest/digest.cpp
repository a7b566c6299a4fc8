// Prints a digest of the results of every built export on fixed inputs, one line a
// name. Every compiler and system must print the same. The digests of exports that use no approximate instruction of
// the processor are kept in the repository, and those of the others for approximations from the table.
//
//   okt_digest           all exports
//   okt_digest --stored  those that do not depend on the processor
//   okt_digest --seeded  those that start from approximations
#include "support/call.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>

namespace {

using okt::test::Bytes;

// FNV-1a over 64 bits.
class Digest {
public:
    void add(const void* data, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            value_ ^= static_cast<const unsigned char*>(data)[i];
            value_ *= 0x100000001B3;
        }
    }
    std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 0xCBF29CE484222325;
};

std::uint64_t digestOf(const okt::Export& f) {
    Digest digest;
    const auto add = [&](const okt::test::Sources& sources, std::int32_t len) {
        const okt::test::Outcome outcome = okt::test::call(f, sources, len);
        digest.add(&outcome.status, sizeof outcome.status);
        digest.add(outcome.dst1.data(), outcome.dst1.size());
        digest.add(outcome.dst2.data(), outcome.dst2.size());
    };
    for (std::int32_t len = 1; len <= 40; ++len) {
        add(okt::test::mixedSources(f, len, static_cast<std::uint64_t>(len)), len);
        add(okt::test::ordinarySources(f, len, static_cast<std::uint64_t>(len)), len);
    }
    add(okt::test::mixedSources(f, 4001, 41), 4001);
    add(okt::test::ordinarySources(f, 4001, 42), 4001);
    return digest.value();
}

}  // namespace

int main(int argc, char** argv) {
    const char* choice = argc == 2 ? argv[1] : "";
    for (const okt::Export& f : okt::exports())
        if (std::strcmp(choice, f.seed ? "--stored" : "--seeded") != 0)
            std::printf("%s %016" PRIx64 "\n", f.name.data(), digestOf(f));
}
