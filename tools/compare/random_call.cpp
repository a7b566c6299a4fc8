#include "random_call.h"

#include "support/mixtures.h"
#include "values.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <limits>

namespace okt::compare {
namespace {

using test::Random;

bool oneIn(Random& random, std::uint64_t n) { return random.below(n) == 0; }

// Short arrays, which meet every remainder of a block, and some that fill several of the largest blocks.
std::int32_t drawLength(Random& random) {
    const std::uint64_t kind = random.below(64);
    if (kind == 0) return 0;
    if (kind == 1) return oneIn(random, 2) ? std::numeric_limits<std::int32_t>::min() : -1;
    if (kind < 10) return 1 + static_cast<std::int32_t>(random.below(8));
    if (kind < 44) return 1 + static_cast<std::int32_t>(random.below(40));
    if (kind < 60) return 1 + static_cast<std::int32_t>(random.below(80));
    return 81 + static_cast<std::int32_t>(random.below(620));
}

// The default state in half of the calls, since set sticky flags hide what a call raises; otherwise anything, with all
// exceptions masked.
test::FloatingState drawState(Random& random) {
    test::FloatingState state;
    if (oneIn(random, 2)) return state;
    state.control.mxcsr |= static_cast<std::uint32_t>(random.below(4)) << 13;
    if (oneIn(random, 3)) state.control.mxcsr |= test::flushToZero;
    if (oneIn(random, 3)) state.control.mxcsr |= test::denormalsAreZero;
    if (oneIn(random, 4)) state.control.mxcsr |= static_cast<std::uint32_t>(random.bits()) & test::stickyFlags;
    if (oneIn(random, 2)) {
        constexpr std::array<unsigned, 3> precisions = {0x0000, 0x0200, 0x0300};
        state.control.x87 = static_cast<std::uint16_t>(0x007F | precisions[random.below(3)] | random.below(4) << 10);
    }
    if (oneIn(random, 4))
        state.x87Flags = static_cast<std::uint16_t>(random.bits() & test::x87::exceptionsAndStackFault);
    return state;
}

// From the begin of one array to the begin of another that overlaps it: in place, some elements up or down, next to
// the lengths of blocks and chunks, or any number, and sometimes an odd number of bytes.
std::ptrdiff_t drawShift(Random& random, std::size_t elementSize, std::size_t elements) {
    std::uint64_t distance = 0;
    const std::uint64_t kind = random.below(8);
    if (kind < 2) return 0;
    if (kind < 5)
        distance = 1 + random.below(20);
    else if (kind < 7)
        distance = (std::uint64_t{4} << random.below(8)) + random.below(3) - 1;
    else
        distance = 1 + random.below(std::max<std::uint64_t>(elements, 1));
    auto shift = static_cast<std::ptrdiff_t>(distance * elementSize);
    if (oneIn(random, 6)) shift -= static_cast<std::ptrdiff_t>(random.below(elementSize));
    return oneIn(random, 2) ? shift : -shift;
}

// Places arrays one behind the other, or over one that has its place.
class Arrangement {
public:
    Arrangement(Random& random, std::size_t elements) : random_(random), elements_(elements) {}

    void place(Place& array, std::size_t elementSize, std::initializer_list<const Place*> others) {
        array.bytes = elementSize * elements_;
        std::ptrdiff_t begin = end_;
        if (others.size() != 0 && oneIn(random_, 2)) {
            const Place& other = *others.begin()[random_.below(others.size())];
            const std::size_t unit = oneIn(random_, 2) && elements_ != 0 ? other.bytes / elements_ : elementSize;
            begin = signedBegin(other) + drawShift(random_, unit, elements_);
        } else {
            begin += 16 + static_cast<std::ptrdiff_t>(random_.below(4) * 16 + alignment(elementSize));
        }
        array.begin = static_cast<std::size_t>(begin);
        begin_ = std::min(begin_, begin);
        end_ = std::max(end_, begin + static_cast<std::ptrdiff_t>(array.bytes));
        placed_.push_back(&array);
    }

    // Moves all so that there is room in front and behind; the size of the whole.
    std::size_t settle() {
        constexpr std::ptrdiff_t room = 64;
        const std::ptrdiff_t aligned = (-begin_ + 15) / 16 * 16;
        for (Place* array : placed_) array->begin = static_cast<std::size_t>(signedBegin(*array) + aligned + room);
        return static_cast<std::size_t>(end_ + aligned + 2 * room);
    }

private:
    static std::ptrdiff_t signedBegin(const Place& array) { return static_cast<std::ptrdiff_t>(array.begin); }

    std::size_t alignment(std::size_t elementSize) {
        const std::uint64_t kind = random_.below(4);
        if (kind == 0) return 0;
        if (kind == 1) return random_.below(16);
        return random_.below(16 / elementSize) * elementSize;
    }

    Random& random_;
    std::size_t elements_;
    std::ptrdiff_t begin_ = 0, end_ = 0;  // of all arrays so far
    std::vector<Place*> placed_;
};

std::string nameOf(const RandomCall& call, const Place* place) {
    return place == &call.src1 ? "src1" : place == &call.src2 ? "src2" : place == &call.dst1 ? "dst1" : "dst2";
}

}  // namespace

void draw(std::size_t exportIndex, std::uint64_t seed, RandomCall& call) {
    const Export& f = exports()[exportIndex];
    // Neighbouring seeds of the generator are as good as any, but the exports shall not all meet the same calls.
    Random random(Random(seed ^ (static_cast<std::uint64_t>(exportIndex) << 48)).bits());
    call.function = &f;
    call.index = exportIndex;
    call.seed = seed;
    call.len = drawLength(random);
    call.state = drawState(random);
    call.src1 = call.src2 = call.dst1 = call.dst2 = Place{};

    const std::size_t in = sizeOf(f.source), out = sizeOf(f.destination);
    Arrangement arrangement(random, call.elements());
    arrangement.place(call.src1, in, {});
    if (f.form == Form::B) {
        if (oneIn(random, 16))
            arrangement.place(call.src2, in, {&call.src1});
        else
            arrangement.place(call.src2, in, {});
        arrangement.place(call.dst1, out, {&call.src1, &call.src2});
    } else {
        arrangement.place(call.dst1, out, {&call.src1});
    }
    if (f.form == Form::D) arrangement.place(call.dst2, out, {&call.src1, &call.dst1});

    call.memory.resize(arrangement.settle());
    const std::uint64_t surroundings = random.bits();
    for (std::size_t i = 0; i < call.memory.size(); ++i)
        call.memory[i] = static_cast<std::byte>(surroundings >> i % 8 * 8);
    test::fillElements(random, f.source, call.memory.data() + call.src1.begin, call.elements());
    if (f.form == Form::B) test::fillElements(random, f.source, call.memory.data() + call.src2.begin, call.elements());
    if (f.form == Form::S) test::fillElements(random, f.source, call.scalar.data(), 1);

    if (oneIn(random, 100)) {
        const std::array places = {&call.src1, &call.dst1, f.form == Form::B ? &call.src2 : &call.dst2};
        places[random.below(places.size())]->isNull = true;
    }
}

Arguments RandomCall::arguments(std::byte* at) const {
    const auto address = [at](const Place& place) { return place.isNull ? nullptr : at + place.begin; };
    return {address(src1), address(src2), scalar.data(), address(dst1), address(dst2), len};
}

std::string RandomCall::inputs(std::size_t element) const {
    const std::size_t size = sizeOf(function->source);
    const auto pattern = [&](const std::byte* from) { return tool::formatPattern(from, function->source); };
    std::string text = pattern(memory.data() + src1.begin + element * size);
    if (function->form == Form::B) text += " and " + pattern(memory.data() + src2.begin + element * size);
    if (function->form == Form::S) text += " and " + pattern(scalar.data());
    return text;
}

std::string RandomCall::description() const {
    std::string text = fmt::format("length {}", len);
    std::vector<const Place*> places = {&src1};
    if (function->form == Form::B) places.push_back(&src2);
    places.push_back(&dst1);
    if (function->form == Form::D) places.push_back(&dst2);
    for (const Place* place : places) {
        text += fmt::format(", {}", nameOf(*this, place));
        if (place->isNull) {
            text += " null";
            continue;
        }
        text += fmt::format(" at {} of 16", place->begin % 16);
        for (const Place* other : places) {
            if (other == place) break;
            if (place->begin < other->begin + other->bytes && other->begin < place->begin + place->bytes)
                text +=
                    fmt::format(" ({} {:+} bytes)", nameOf(*this, other),
                                static_cast<std::ptrdiff_t>(place->begin) - static_cast<std::ptrdiff_t>(other->begin));
        }
    }
    constexpr std::size_t most = 16;
    text += "\n    elements";
    for (std::size_t i = 0; i < std::min(elements(), most); ++i) text += (i == 0 ? " " : "; ") + inputs(i);
    if (elements() > most) text += " ...";
    return text;
}

}  // namespace okt::compare
