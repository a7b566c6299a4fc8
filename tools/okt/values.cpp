#include "values.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace okt::tool {
namespace {

template <class Real>
struct Shape;

template <>
struct Shape<Real32> {
    using Bits = std::uint32_t;
    static constexpr std::string_view name = "Real32";
    static constexpr Bits quietNaN = 0x7FC00000, signBit = 0x80000000;
};

template <>
struct Shape<Real64> {
    using Bits = std::uint64_t;
    static constexpr std::string_view name = "Real64";
    static constexpr Bits quietNaN = 0x7FF8000000000000, signBit = 0x8000000000000000;
};

std::string_view trimmed(std::string_view text) {
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b,
                              [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

template <class Real>
std::string parseReal(std::string_view text, void* to) {
    using S = Shape<Real>;
    using Bits = typename S::Bits;
    text = trimmed(text);
    if (text.empty()) return "a value is missing";

    Bits sign = 0;
    std::string_view digits = text;
    if (digits.front() == '+' || digits.front() == '-') {
        if (digits.front() == '-') sign = S::signBit;
        digits.remove_prefix(1);
    }
    const auto store = [&](Bits magnitude) {
        magnitude ^= sign;
        std::memcpy(to, &magnitude, sizeof magnitude);
        return std::string();
    };

    if (equalIgnoringCase(digits, "nan")) return store(S::quietNaN);
    if (equalIgnoringCase(digits, "inf") || equalIgnoringCase(digits, "infinity"))
        return store(std::bit_cast<Bits>(std::numeric_limits<Real>::infinity()));

    const bool hexadecimal = digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X');
    if (hexadecimal && digits.find_first_of(".pP") == std::string_view::npos) {
        Bits pattern = 0;
        const char *first = digits.data() + 2, *last = digits.data() + digits.size();
        const auto [end, error] = std::from_chars(first, last, pattern, 16);
        if (error == std::errc::invalid_argument || (error == std::errc() && end != last))
            return fmt::format("'{}' is not a number", text);
        if (last - first != 2 * sizeof(Bits))
            return fmt::format("'{}' is no bit pattern of {}, which has {} hexadecimal digits", text, S::name,
                               2 * sizeof(Bits));
        if (digits.data() != text.data()) return fmt::format("'{}': a bit pattern carries its own sign", text);
        return store(pattern);
    }

    Real magnitude{};
    const char *first = digits.data() + (hexadecimal ? 2 : 0), *last = digits.data() + digits.size();
    // A second sign, or an infinity or NaN in some other spelling, would pass the conversion below.
    if (first == last || (!std::isxdigit(static_cast<unsigned char>(*first)) && *first != '.'))
        return fmt::format("'{}' is not a number", text);
    const auto [end, error] =
        std::from_chars(first, last, magnitude, hexadecimal ? std::chars_format::hex : std::chars_format::general);
    if (error == std::errc::invalid_argument || end != last) return fmt::format("'{}' is not a number", text);
    if (error == std::errc::result_out_of_range) {
        // Too large is an error; too small becomes the nearest subnormal or zero.
        const std::string copy(digits);
        char* stop = nullptr;
        if constexpr (sizeof(Real) == 4)
            magnitude = std::strtof(copy.c_str(), &stop);
        else
            magnitude = std::strtod(copy.c_str(), &stop);
        if (std::isinf(magnitude)) return fmt::format("'{}' is too large for {}", text, S::name);
    }
    return store(std::bit_cast<Bits>(magnitude));
}

template <class Real>
std::string formatReal(const void* from) {
    using S = Shape<Real>;
    using Bits = typename S::Bits;
    Real value;
    Bits pattern;
    std::memcpy(&value, from, sizeof value);
    std::memcpy(&pattern, from, sizeof pattern);
    if (!std::isnan(value)) return fmt::format("{}", value);
    if ((pattern & ~S::signBit) == S::quietNaN) return pattern == S::quietNaN ? "nan" : "-nan";
    return fmt::format("0x{:0{}X}", pattern, 2 * sizeof(Bits));
}

template <class Real>
std::string patternOf(const void* from) {
    typename Shape<Real>::Bits pattern;
    std::memcpy(&pattern, from, sizeof pattern);
    return fmt::format("0x{:0{}X}", pattern, 2 * sizeof(pattern));
}

// The second part of a complex element.
const void* imaginary(const void* element, ElementType type) {
    return static_cast<const unsigned char*>(element) + sizeOf(type) / 2;
}

}  // namespace

std::string parseElement(std::string_view text, ElementType type, void* to) {
    const bool wide = partOf(type) == ElementType::Real64;
    const auto parse = wide ? parseReal<Real64> : parseReal<Real32>;
    const std::size_t comma = text.find(',');
    if (!isComplex(type)) {
        if (comma != std::string_view::npos)
            return fmt::format("'{}': one number is expected, not a pair", trimmed(text));
        return parse(text, to);
    }
    if (comma == std::string_view::npos)
        return fmt::format("'{}': a complex value is written as two numbers, 3,4", trimmed(text));
    if (text.find(',', comma + 1) != std::string_view::npos)
        return fmt::format("'{}': a complex value has two parts only", trimmed(text));
    if (auto wrong = parse(text.substr(0, comma), to); !wrong.empty()) return wrong;
    return parse(text.substr(comma + 1), static_cast<unsigned char*>(to) + sizeOf(type) / 2);
}

std::string formatElement(const void* element, ElementType type) {
    const auto format = partOf(type) == ElementType::Real64 ? formatReal<Real64> : formatReal<Real32>;
    if (!isComplex(type)) return format(element);
    return format(element) + "," + format(imaginary(element, type));
}

std::string formatPattern(const void* element, ElementType type) {
    const auto format = partOf(type) == ElementType::Real64 ? patternOf<Real64> : patternOf<Real32>;
    if (!isComplex(type)) return format(element);
    return format(element) + "," + format(imaginary(element, type));
}

std::string_view typeName(ElementType type) {
    constexpr std::string_view names[] = {"Real32", "Real64", "Complex32", "Complex64"};
    return names[static_cast<int>(type)];
}

}  // namespace okt::tool
