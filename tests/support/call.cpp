#include "support/call.h"

#include "support/mixtures.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

namespace okt::test {
namespace {

template <class T>
Bytes toBytes(const std::vector<T>& values) {
    Bytes bytes(values.size() * sizeof(T));
    std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

// `value(T{}, random)` makes one part.
template <class Value>
Sources makeSources(const Export& f, std::int32_t len, std::uint64_t seed, const Value& value) {
    const std::size_t parts = static_cast<std::size_t>(len) * (isComplex(f.source) ? 2 : 1);
    const auto filled = [&]<class T>(T part, std::size_t count, std::uint64_t s) {
        Random random(s);
        std::vector<T> values(count);
        for (T& x : values) storeBits(&x, asBits(value(part, random)));
        return toBytes(values);
    };
    const auto array = [&](std::size_t count, std::uint64_t s) {
        return partOf(f.source) == ElementType::Real32 ? filled(Real32{}, count, s) : filled(Real64{}, count, s);
    };
    Sources sources{array(parts, seed), {}, {}};
    if (f.form == Form::B) sources.src2 = array(parts, seed + 0x1000);
    if (f.form == Form::S) sources.scalar = array(isComplex(f.source) ? 2 : 1, seed + 0x2000);
    return sources;
}

}  // namespace

Sources mixedSources(const Export& f, std::int32_t len, std::uint64_t seed) {
    return makeSources(f, len, seed, []<class T>(T, Random& random) { return mixedValue<T>(random); });
}

Sources ordinarySources(const Export& f, std::int32_t len, std::uint64_t seed) {
    return makeSources(f, len, seed, []<class T>(T, Random& random) { return ofMagnitude<T>(random, -4, 4); });
}

Sources mixtureSources(const Export& f, std::int32_t len, std::uint64_t seed) {
    Random random(seed);
    const auto array = [&](std::size_t elements) {
        Bytes bytes(elements * sizeOf(f.source));
        fillElements(random, f.source, bytes.data(), elements);
        return bytes;
    };
    const auto count = static_cast<std::size_t>(len);
    Sources sources{array(count), {}, {}};
    if (f.form == Form::B) sources.src2 = array(count);
    if (f.form == Form::S) sources.scalar = array(1);
    return sources;
}

Sources specialSources(const Export& f, std::int32_t len, std::uint64_t seed) {
    return makeSources(f, len, seed, []<class T>(T, Random& random) {
        const std::vector<T>& values = specialValues<T>();
        return values[random.below(values.size())];
    });
}

Sources uniformSources(const Export& f, std::int32_t len, std::uint64_t seed, double low, double high) {
    return makeSources(f, len, seed,
                       [=]<class T>(T, Random& random) { return static_cast<T>(random.between(low, high)); });
}

Warnings warningOf(OktStatus status) {
    switch (status) {
        case oktStatusOverflow: return warnsOverflow;
        case oktStatusUnderflow: return warnsUnderflow;
        case oktStatusSingularity: return warnsSingularity;
        case oktStatusDomain: return warnsDomain;
        default: return warnsNothing;
    }
}

Outcome call(const Export& f, const Sources& sources, std::int32_t len) {
    Outcome outcome{0, Bytes(destinationBytes(f, len)), Bytes(f.form == Form::D ? destinationBytes(f, len) : 0)};
    outcome.status = f.call({sources.src1.data(), sources.src2.data(), sources.scalar.data(), outcome.dst1.data(),
                             outcome.dst2.data(), len});
    return outcome;
}

std::string patternText(ElementType type, const std::byte* element) {
    char text[80];
    const auto word = [&](std::size_t i) {
        std::uint32_t w;
        std::memcpy(&w, element + 4 * i, 4);
        return w;
    };
    switch (type) {
        case ElementType::Real32: std::snprintf(text, sizeof text, "0x%08X", word(0)); break;
        case ElementType::Complex32: std::snprintf(text, sizeof text, "(0x%08X, 0x%08X)", word(0), word(1)); break;
        case ElementType::Real64: std::snprintf(text, sizeof text, "0x%08X%08X", word(1), word(0)); break;
        case ElementType::Complex64:
            std::snprintf(text, sizeof text, "(0x%08X%08X, 0x%08X%08X)", word(1), word(0), word(3), word(2));
            break;
    }
    return text;
}

testing::AssertionResult sameOutcome(const Export& f, const Sources& sources, const Outcome& expected,
                                     const Outcome& actual) {
    if (expected == actual) return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure() << f.name << ": ";
    if (expected.status != actual.status)
        failure << "status " << statusName(actual.status) << " instead of " << statusName(expected.status) << "; ";
    const std::size_t size = sizeOf(f.destination);
    for (const auto& [wanted, got] :
         {std::pair(&expected.dst1, &actual.dst1), std::pair(&expected.dst2, &actual.dst2)}) {
        for (std::size_t i = 0; i * size < wanted->size(); ++i) {
            if (std::memcmp(wanted->data() + i * size, got->data() + i * size, size) == 0) continue;
            failure << "element " << i << " of " << patternText(f.source, sources.src1.data() + i * sizeOf(f.source));
            if (f.form == Form::B)
                failure << " and " << patternText(f.source, sources.src2.data() + i * sizeOf(f.source));
            if (f.form == Form::S) failure << " and " << patternText(f.source, sources.scalar.data());
            return failure << " gives " << patternText(f.destination, got->data() + i * size) << " instead of "
                           << patternText(f.destination, wanted->data() + i * size);
        }
    }
    return failure;
}

std::vector<const Export*> builtExports() {
    std::vector<const Export*> all;
    for (const Export& function : exports()) all.push_back(&function);
    return all;
}

std::vector<const Export*> routines() {
    std::vector<const Export*> firsts;
    for (const Export& function : exports())
        if (std::ranges::find(firsts, function.routine, &Export::routine) == firsts.end()) firsts.push_back(&function);
    return firsts;
}

std::string exportName(const testing::TestParamInfo<const Export*>& info) { return std::string(info.param->name); }

}  // namespace okt::test

namespace okt {
void PrintTo(const Export* function, std::ostream* out) { *out << function->name; }
}  // namespace okt
