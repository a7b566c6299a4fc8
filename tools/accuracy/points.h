// Where functions are measured: distributions of arguments, written as short texts, and the points drawn from them.
//
//   log LO HI        magnitude log-uniform, 0 < LO < HI
//   uniform LO HI    uniform on the number line
//   bits LO HI       every value of the type from LO to HI equally likely
//   list V V ...     the values in turn
//
// followed by any of
//
//   both             either sign, one half each
//   near C           C plus the value drawn
//
// A number is decimal (1e-3), hexadecimal (0x1.8p-3), a bit pattern (0x3FC00000: 8 digits for single precision, 16
// for double), or one of the words sub (smallest subnormal), min (smallest normal), max (largest finite), pi; a minus
// sign may precede it. The two parts of a complex argument are divided by a bar, "log 1e-9 1e9 both | uniform -3 3";
// one distribution without a bar serves both parts, drawn twice. "polar M | P" gives modulus and phase.
#pragma once

#include "registry.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace okt::accuracy {

// Numbers of the element types are held in double, which holds each exactly.
double parseNumber(std::string_view text, ElementType part);

// "0x3F800000": the pattern of the value in its type.
std::string bitPattern(double value, ElementType part);

// The same deterministic sequence on every machine.
class SplitMix64 {
public:
    explicit SplitMix64(std::uint64_t seed) : state_(seed) {}
    std::uint64_t next();
    long double unit();  // uniform in [0, 1)

private:
    std::uint64_t state_;
};

struct Interval {
    double first, last;
};

// The distribution of one real number.
class Distribution {
public:
    Distribution(std::string_view text, ElementType part);
    double draw(SplitMix64& random);
    bool isLogarithmic() const { return kind_ == Kind::log; }
    // Where the values lie: intervals, of a uniform distribution the eight binades where most of them do; none for a
    // list.
    std::vector<Interval> intervals() const;

private:
    enum class Kind { log, uniform, bits, list };

    double magnitude(SplitMix64& random);

    ElementType part_;
    Kind kind_;
    double low_ = 0, high_ = 0;
    bool bothSigns_ = false;
    double near_ = 0;
    std::vector<double> values_;
    std::size_t turn_ = 0;
};

// The distribution of an element of any type.
class ArgumentRange {
public:
    ArgumentRange(std::string_view text, ElementType type);
    // Writes one number, or two for a complex type.
    void draw(SplitMix64& random, double* out);
    const std::string& text() const { return text_; }
    std::vector<Interval> intervals() const {
        return parts_.size() == 1 ? parts_[0].intervals() : std::vector<Interval>();
    }

private:
    std::string text_;
    ElementType type_;
    std::vector<Distribution> parts_;
    bool polar_ = false;
};

}  // namespace okt::accuracy
