#include "points.h"

#include <fmt/format.h>

#include <bit>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace okt::accuracy {
namespace {

[[noreturn]] void fail(std::string_view text, std::string_view why) {
    throw std::invalid_argument(fmt::format("\"{}\": {}", text, why));
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> result;
    for (text = trimmed(text); !text.empty(); text = trimmed(text)) {
        const auto end = std::min(text.find_first_of(" \t"), text.size());
        result.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return result;
}

bool isBitPattern(std::string_view text) {
    if (!text.starts_with("0x") || (text.size() != 10 && text.size() != 18)) return false;
    return text.substr(2).find_first_not_of("0123456789abcdefABCDEF") == text.npos;
}

double ofPattern(std::string_view text, ElementType part) {
    const bool single = text.size() == 10;
    if (single != (part == ElementType::Real32)) fail(text, "the bit pattern is not of the argument's type");
    const std::uint64_t bits = std::strtoull(std::string(text).c_str(), nullptr, 16);
    return single ? std::bit_cast<float>(static_cast<std::uint32_t>(bits)) : std::bit_cast<double>(bits);
}

// Values in ascending order as consecutive integers, with both zeros at 0.
std::int64_t ordinal(double value, ElementType part) {
    const double magnitude = std::abs(value);
    const std::int64_t bits = part == ElementType::Real32 ? std::bit_cast<std::int32_t>(static_cast<float>(magnitude))
                                                          : std::bit_cast<std::int64_t>(magnitude);
    return std::signbit(value) ? -bits : bits;
}

double ofOrdinal(std::int64_t n, ElementType part) {
    const std::int64_t bits = std::abs(n);
    const double magnitude = part == ElementType::Real32 ? std::bit_cast<float>(static_cast<std::int32_t>(bits))
                                                         : std::bit_cast<double>(bits);
    return n < 0 ? -magnitude : magnitude;
}

double nearest(long double value, ElementType part) {
    return part == ElementType::Real32 ? static_cast<float>(value) : static_cast<double>(value);
}

// The bounds of a range as values of the type that lie inside it.
double roundedUp(double value, ElementType part) {
    const double rounded = nearest(value, part);
    return rounded < value ? ofOrdinal(ordinal(rounded, part) + 1, part) : rounded;
}

double roundedDown(double value, ElementType part) { return -roundedUp(-value, part); }

}  // namespace

double parseNumber(std::string_view text, ElementType part) {
    const bool single = part == ElementType::Real32;
    if (text.starts_with('-')) return -parseNumber(text.substr(1), part);
    if (isBitPattern(text)) return ofPattern(text, part);
    if (text == "sub")
        return single ? std::numeric_limits<float>::denorm_min() : std::numeric_limits<double>::denorm_min();
    if (text == "min") return single ? std::numeric_limits<float>::min() : std::numeric_limits<double>::min();
    if (text == "max") return single ? std::numeric_limits<float>::max() : std::numeric_limits<double>::max();
    if (text == "pi") return 3.14159265358979323846;
    const std::string copy(text);
    char* end = nullptr;
    const double value = std::strtod(copy.c_str(), &end);
    const bool isNumber = !copy.empty() && *end == '\0' && (std::isdigit(copy[0]) != 0 || copy[0] == '.');
    if (!isNumber || !std::isfinite(value)) fail(text, "not a number");
    return value;
}

std::string bitPattern(double value, ElementType part) {
    if (part == ElementType::Real32)
        return fmt::format("0x{:08X}", std::bit_cast<std::uint32_t>(static_cast<float>(value)));
    return fmt::format("0x{:016X}", std::bit_cast<std::uint64_t>(value));
}

std::uint64_t SplitMix64::next() {
    std::uint64_t z = state_ += 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
}

long double SplitMix64::unit() { return std::ldexp(static_cast<long double>(next() >> 1), -63); }

Distribution::Distribution(std::string_view text, ElementType part) : part_(part) {
    auto tokens = words(text);
    if (tokens.empty()) fail(text, "no distribution");
    const std::string_view kind = tokens.front();
    std::size_t at = 1;
    auto number = [&] {
        if (at == tokens.size()) fail(text, "a number is missing");
        return parseNumber(tokens[at++], part);
    };
    if (kind == "list") {
        kind_ = Kind::list;
        while (at < tokens.size() && tokens[at] != "both" && tokens[at] != "near") values_.push_back(number());
        if (values_.empty()) fail(text, "the list is empty");
    } else {
        if (kind == "log")
            kind_ = Kind::log;
        else if (kind == "uniform")
            kind_ = Kind::uniform;
        else if (kind == "bits")
            kind_ = Kind::bits;
        else
            fail(text, "expected log, uniform, bits or list");
        const double low = number(), high = number();
        if (!(low < high)) fail(text, "the lower end is not below the upper end");
        if (kind_ == Kind::log && !(low > 0)) fail(text, "a logarithmic range begins above zero");
        low_ = roundedUp(low, part);
        high_ = roundedDown(high, part);
    }
    for (; at < tokens.size();) {
        const std::string_view word = tokens[at++];
        if (word == "both")
            bothSigns_ = true;
        else if (word == "near")
            near_ = number();
        else
            fail(text, fmt::format("unexpected \"{}\"", word));
    }
}

double Distribution::magnitude(SplitMix64& random) {
    switch (kind_) {
        case Kind::list: return values_[turn_++ % values_.size()];
        case Kind::bits: {
            // Unsigned, as the whole double range has more values than a signed difference holds.
            const auto low = static_cast<std::uint64_t>(ordinal(low_, part_));
            const std::uint64_t count = static_cast<std::uint64_t>(ordinal(high_, part_)) - low + 1;
            return ofOrdinal(static_cast<std::int64_t>(low + random.next() % count), part_);
        }
        case Kind::uniform: {
            const long double span = static_cast<long double>(high_) - low_;
            return std::min(high_, std::max(low_, nearest(low_ + span * random.unit(), part_)));
        }
        case Kind::log: break;
    }
    const long double low = std::log2(static_cast<long double>(low_)),
                      high = std::log2(static_cast<long double>(high_));
    return std::min(high_, std::max(low_, nearest(std::exp2(low + (high - low) * random.unit()), part_)));
}

double Distribution::draw(SplitMix64& random) {
    const double value = magnitude(random);
    const bool negative = bothSigns_ && (random.next() >> 63) != 0;
    return nearest(near_ + (negative ? -static_cast<long double>(value) : value), part_);
}

std::vector<Interval> Distribution::intervals() const {
    std::vector<Interval> result;
    const double smallest = parseNumber("sub", part_);
    const auto add = [&](double first, double last) {
        first = roundedUp(near_ + first, part_), last = roundedDown(near_ + last, part_);
        if (first < 0 && last > 0) {
            result.push_back({first, -smallest});
            first = smallest;
        }
        if (first <= last) result.push_back({first, last});
    };
    // Magnitudes of one sign.
    const auto addSide = [&](double low, double high, bool negative) {
        if (!(low <= high)) return;
        if (kind_ == Kind::uniform) low = std::max(low, high / 256);
        negative ? add(-high, -low) : add(low, high);
    };
    if (kind_ == Kind::list) return result;
    addSide(std::max(low_, smallest), high_, false);
    addSide(std::max(-high_, smallest), -low_, true);
    if (bothSigns_) {
        addSide(std::max(low_, smallest), high_, true);
        addSide(std::max(-high_, smallest), -low_, false);
    }
    return result;
}

ArgumentRange::ArgumentRange(std::string_view text, ElementType type) : text_(text), type_(type) {
    const ElementType part = partOf(type);
    std::string_view rest = trimmed(text);
    polar_ = rest.starts_with("polar ");
    if (polar_) rest.remove_prefix(6);
    const auto bar = rest.find('|');
    if (!isComplex(type) && (polar_ || bar != rest.npos)) fail(text, "the argument is real");
    if (polar_ && bar == rest.npos) fail(text, "modulus and phase are divided by a bar");
    parts_.emplace_back(rest.substr(0, bar), part);
    if (isComplex(type)) parts_.emplace_back(bar == rest.npos ? rest : rest.substr(bar + 1), part);
}

void ArgumentRange::draw(SplitMix64& random, double* out) {
    for (Distribution& part : parts_) *out++ = part.draw(random);
    if (!polar_) return;
    out -= 2;
    const long double modulus = out[0], phase = out[1];
    out[0] = nearest(modulus * std::cos(phase), partOf(type_));
    out[1] = nearest(modulus * std::sin(phase), partOf(type_));
}

}  // namespace okt::accuracy
