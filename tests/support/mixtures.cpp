#include "support/mixtures.h"

#include <array>
#include <bit>
#include <limits>

namespace okt::test {
namespace {

enum class Kind {
    ordinary,      // a few orders around 1
    wide,          // thirty orders to either side
    oneOrder,      // all of one order of magnitude, whichever
    uniform,       // evenly up to a limit
    nearOne,       // 1 and what differs from it by any power of two
    smallInteger,  // with halves
    threshold,     // at and next to places where functions change their course
    extreme,       // the largest and the smallest normal numbers
    subnormal,
    special,
    anyPattern,
    mixed
};
constexpr std::size_t kinds = static_cast<std::size_t>(Kind::mixed) + 1;

// How the second kind stands among the first.
enum class Blend { pure, single, few, half, runs, constant };
constexpr std::uint64_t blends = static_cast<std::uint64_t>(Blend::constant) + 1;

template <class T>
using Pattern = decltype(asBits(T{}));
template <class T>
constexpr Pattern<T> signBit = Pattern<T>{1} << (8 * sizeof(T) - 1);
template <class T>
constexpr int significandBits = std::numeric_limits<T>::digits - 1;
template <class T>
constexpr int bias = std::numeric_limits<T>::max_exponent - 1;

// Reductions and results begin, end, overflow and underflow at such numbers and their multiples.
constexpr std::array thresholds = {0.78539816339744831,
                                   0.69314718055994531,
                                   2.30258509299404568,
                                   88.722839052068353,
                                   -87.336544750553102,
                                   -103.972077083991796,
                                   89.415986232628294,
                                   709.78271289338397,
                                   -708.39641853226408,
                                   -745.13321910194122,
                                   710.47586007394394,
                                   38.531839444989588,
                                   -45.154499349597179,
                                   308.25471555991674,
                                   -323.60724533877976,
                                   5.8636378180205557,
                                   9.1941495895385742,
                                   26.543258430632299,
                                   27.226017111108366,
                                   8.2923610758167353,
                                   37.519379347121092,
                                   0.1,
                                   0.3,
                                   0.7};

template <class T>
class Mixture {
public:
    explicit Mixture(Random& random)
        : random_(random),
          base_(anyKind()),
          other_(anyKind()),
          blend_(static_cast<Blend>(random.below(blends))),
          sign_(random.below(8)) {
        constexpr std::array limits = {1.0, 2.0, 10.0, 100.0, 750.0, 1e5, 1e10};
        limit_ = limits[random.below(limits.size())];
        const std::uint64_t span = random.below(2) == 0 ? 12 : bias<T> - 2;
        order_ = static_cast<int>(random.below(2 * span + 1)) - static_cast<int>(span);
    }

    void fill(std::byte* to, std::size_t count) {
        const std::size_t stranger = random_.below(count);
        T value = draw(base_);
        for (std::size_t i = 0; i < count; ++i) {
            if (blend_ != Blend::constant || i == stranger) value = draw(isOther(i, stranger) ? other_ : base_);
            storeBits(reinterpret_cast<T*>(to + i * sizeof(T)), withSign(asBits(value)));
        }
    }

private:
    Kind anyKind() { return static_cast<Kind>(random_.below(kinds)); }

    bool isOther(std::size_t i, std::size_t stranger) {
        switch (blend_) {
            case Blend::single: return i == stranger;
            case Blend::few: return random_.below(8) == 0;
            case Blend::half: return random_.below(2) == 0;
            case Blend::runs: return (i / 8 ^ stranger) % 2 == 0;
            default: return false;
        }
    }

    // Of three eighths of the arrays all are positive, of one eighth all negative.
    Pattern<T> withSign(Pattern<T> pattern) const {
        if (sign_ >= 4) return pattern;
        return sign_ == 3 ? pattern | signBit<T> : pattern & ~signBit<T>;
    }

    static T fromPattern(Pattern<T> pattern) { return std::bit_cast<T>(pattern); }
    Pattern<T> anyBits() { return static_cast<Pattern<T>>(random_.bits()); }
    T nextTo(T value) { return fromPattern(asBits(value) + static_cast<Pattern<T>>(random_.below(9)) - 4); }

    T drawThreshold() {
        if (random_.below(2) == 0) {
            const double constant = thresholds[random_.below(thresholds.size())];
            return nextTo(static_cast<T>(constant * static_cast<double>(1 + random_.below(8))));
        }
        // Few significant bits.
        const Pattern<T> significand = anyBits() << (significandBits<T> - static_cast<int>(random_.below(5)));
        constexpr Pattern<T> significandMask = (Pattern<T>{1} << significandBits<T>)-1;
        const T power = ofMagnitude<T>(random_, -70, 70);
        return nextTo(fromPattern((asBits(power) & ~significandMask) | (significand & significandMask)));
    }

    T drawNearOne() {
        const T apart = ofMagnitude<T>(random_, -significandBits<T> - 2, -1);
        return random_.below(8) == 0 ? T{1} : T{1} + apart;
    }

    T draw(Kind kind) {
        switch (kind) {
            case Kind::ordinary: return ofMagnitude<T>(random_, -4, 4);
            case Kind::wide: return ofMagnitude<T>(random_, -30, 30);
            case Kind::oneOrder: return ofMagnitude<T>(random_, order_, order_);
            case Kind::uniform: return static_cast<T>(random_.between(-limit_, limit_));
            case Kind::nearOne: return drawNearOne();
            case Kind::smallInteger: return static_cast<T>(random_.below(65)) / 2 - 16;
            case Kind::threshold: return drawThreshold();
            case Kind::extreme: {
                const int order = static_cast<int>(random_.below(6));
                const int signedOrder = random_.below(2) == 0 ? bias<T> - order : 1 - bias<T> + order;
                return ofMagnitude<T>(random_, signedOrder, signedOrder);
            }
            case Kind::subnormal: {
                const Pattern<T> fraction = anyBits() & ((Pattern<T>{2} << random_.below(significandBits<T>)) - 1);
                return fromPattern(fraction | (anyBits() & signBit<T>));
            }
            case Kind::special: return specialValues<T>()[random_.below(specialValues<T>().size())];
            case Kind::anyPattern: return fromPattern(anyBits());
            case Kind::mixed: return mixedValue<T>(random_);
        }
        return T{0};
    }

    Random& random_;
    Kind base_, other_;
    Blend blend_;
    std::uint64_t sign_;
    double limit_;
    int order_;
};

}  // namespace

void fillParts(Random& random, ElementType part, std::byte* to, std::size_t count) {
    if (count == 0) return;
    if (part == ElementType::Real32)
        Mixture<Real32>(random).fill(to, count);
    else
        Mixture<Real64>(random).fill(to, count);
}

}  // namespace okt::test
