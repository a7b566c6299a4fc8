#include "workload.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace okt::bench {
namespace {

struct FamilyRanges {
    std::string_view family;
    bool complex;
    Ranges ranges;
};

constexpr Range even(double low, double high) { return {Spread::even, low, high}; }
constexpr Range logarithmic(double low, double high) { return {Spread::logarithmic, low, high}; }
constexpr Range bothSigns(double low, double high) { return {Spread::logarithmicBothSigns, low, high}; }

constexpr FamilyRanges familyRanges[] = {
#define OKT_BENCHMARK_RANGES(family, complex, src1, src2, scalar) {family, complex, {src1, src2, scalar}},
#include "benchmark_ranges.inc"
#undef OKT_BENCHMARK_RANGES
};

// A fixed sequence: every run measures the same arguments.
class Random {
public:
    // Evenly between 0 and 1.
    double next() {
        state_ += 0x9E3779B97F4A7C15;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
    }

private:
    std::uint64_t state_ = 20090929;
};

// Values are drawn for the first elements and repeated: large arrays are ready sooner, and no branch predictor learns
// a period of this length.
constexpr std::size_t period = 1 << 16;

template <class Real>
void fill(void* to, std::size_t count, const Range& range, Random& random) {
    auto* values = static_cast<Real*>(to);
    const std::size_t drawn = count < period ? count : period;
    for (std::size_t i = 0; i < drawn; ++i) {
        const double u = random.next();
        if (range.spread == Spread::even) {
            values[i] = static_cast<Real>(range.low + (range.high - range.low) * u);
            continue;
        }
        const double size = std::exp(std::log(range.low) + std::log(range.high / range.low) * u);
        const bool negative = range.spread == Spread::logarithmicBothSigns && random.next() < 0.5;
        values[i] = static_cast<Real>(negative ? -size : size);
    }
    for (std::size_t i = drawn; i < count; i += period)
        std::memcpy(values + i, values, (count - i < period ? count - i : period) * sizeof(Real));
}

void fill(void* to, std::size_t length, ElementType type, const Range& range, Random& random) {
    const std::size_t count = isComplex(type) ? 2 * length : length;
    if (partOf(type) == ElementType::Real64)
        fill<double>(to, count, range, random);
    else
        fill<float>(to, count, range, random);
}

}  // namespace

Ranges rangesOf(std::string_view family, bool complexElements) {
    for (const FamilyRanges& row : familyRanges)
        if (row.family == family && row.complex == complexElements) return row.ranges;
    return {};
}

std::size_t bytesPerElement(const Export& function) {
    const std::size_t sources = function.form == Form::B ? 2 : 1, destinations = function.form == Form::D ? 2 : 1;
    return sources * sizeOf(function.source) + destinations * sizeOf(function.destination);
}

void Workload::Free::operator()(void* memory) const { std::free(memory); }

void* Workload::allocate(Memory& memory, std::size_t size) {
    // Processors take a load for one of what was just stored when the addresses agree in their low twelve bits. Arrays
    // begin a quarter of that apart, so that luck of the heap does not decide about a third of the time.
    constexpr std::size_t page = 4096, apart = page / 4 + 64;
    const std::size_t shift = apart * static_cast<std::size_t>(arrays_++);
    memory.reset(std::aligned_alloc(page, (size + shift + page - 1) / page * page));
    if (!memory) throw std::bad_alloc();
    void* begin = static_cast<unsigned char*>(memory.get()) + shift;
    std::memset(begin, 0, size);
    bytes_ += size;
    return begin;
}

Workload::Workload(const Export& function, std::size_t length) {
    const Ranges ranges = rangesOf(function.family, isComplex(function.source));
    const std::size_t source = length * sizeOf(function.source), destination = length * sizeOf(function.destination);
    Random random;
    void* src1 = allocate(src1_, source);
    fill(src1, length, function.source, ranges.src1, random);
    arguments_.src1 = src1;
    if (function.form == Form::B) {
        void* src2 = allocate(src2_, source);
        fill(src2, length, function.source, ranges.src2, random);
        arguments_.src2 = src2;
    }
    if (function.form == Form::S) {
        const Range exact{Spread::even, ranges.scalar, ranges.scalar};
        fill(scalar_, 1, function.source, exact, random);
        arguments_.scalar = scalar_;
    }
    arguments_.dst1 = allocate(dst1_, destination);
    if (function.form == Form::D) arguments_.dst2 = allocate(dst2_, destination);
    arguments_.len = static_cast<std::int32_t>(length);
}

}  // namespace okt::bench
