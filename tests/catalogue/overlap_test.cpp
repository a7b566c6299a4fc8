// Loops over one element after the other: where the destination overlaps the source, each element is read as it stands
// when those in front of it have been written. Elements that are worked together, or set aside and stored late, must
// not show it.
#include "support/call.h"

#include <algorithm>

namespace okt::test {
namespace {

// The others promise nothing, or something of their own: what their blocks leave, complex sums and products.
bool isElementLoop(const Export& f) {
    const bool complex = isComplex(f.source);
    const auto isOneOf = [&](std::initializer_list<std::string_view> families) {
        return std::ranges::find(families, f.family) != families.end();
    };
    if (f.source != f.destination || f.frame == Frame::doubleGuard) return false;
    if (f.frame == Frame::mxcsr) return f.name.starts_with("oktsAtan_64f");
    if (complex && isOneOf({"Add", "Sub", "Mul", "MulByConj", "Div", "Exp", "Ln"})) return false;
    return !f.name.starts_with("oktsErfInv_64f_A26") && !f.name.starts_with("oktsSqrt_32fc");
}

std::vector<const Export*> elementLoops() {
    std::vector<const Export*> loops = routines();
    std::erase_if(loops, [](const Export* f) { return !isElementLoop(*f); });
    return loops;
}

class OverlapOf : public testing::TestWithParam<const Export*> {
protected:
    static constexpr std::int32_t len = 520, room = 300, all = len + 2 * room;
    const Export& f = *GetParam();

    // A call from the middle of the sources to a place `shift` elements above one of them, in one piece or in steps of
    // an element; that array as it is left.
    Bytes leftBy(const Sources& sources, bool second, std::int32_t shift, std::int32_t step) const {
        const auto size = static_cast<std::ptrdiff_t>(sizeOf(f.source));
        Sources changed = sources;
        Bytes other(static_cast<std::size_t>(all * size));
        std::byte* const source1 = changed.src1.data();
        std::byte* const source2 = f.form == Form::B ? changed.src2.data() : nullptr;
        Bytes& shared = second && f.form == Form::B ? changed.src2 : changed.src1;
        for (std::int32_t i = room; i < room + len; i += step) {
            std::byte *to = shared.data() + (i + shift) * size, *elsewhere = other.data();
            if (second && f.form == Form::D) std::swap(to, elsewhere);
            f.call({source1 + i * size, source2 ? source2 + i * size : nullptr, changed.scalar.data(), to, elsewhere,
                    step});
        }
        return shared;
    }
};
INSTANTIATE_TEST_SUITE_P(Catalogue, OverlapOf, testing::ValuesIn(elementLoops()), exportName);

TEST_P(OverlapOf, IsThatOfTheAscendingLoop) {
    std::vector<std::int32_t> shifts{-room, 16, 31, 63, 64, 65, 100, 127, 128, 129, 255, 256, 257, room};
    for (std::int32_t shift = -12; shift <= 12; ++shift) shifts.push_back(shift);
    for (const auto& sourcesOf : {mixtureSources, unitSources}) {
        const Sources sources = sourcesOf(f, all, 20);
        for (const bool second : {false, f.form == Form::B || f.form == Form::D})
            for (const std::int32_t shift : shifts)
                ASSERT_EQ(leftBy(sources, second, shift, len), leftBy(sources, second, shift, 1))
                    << f.name << ", " << shift << " above source or destination " << second + 1;
    }
}

}  // namespace
}  // namespace okt::test
