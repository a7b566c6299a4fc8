// What an element gives, and which warning it has, is seen from the element alone: neither its place in the array nor
// its neighbours matter, but for the routines whose texts say so.
#include "support/call.h"
#include "support/flags.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace okt::test {
namespace {

bool isOneOf(std::string_view family, std::initializer_list<std::string_view> families) {
    return std::ranges::find(families, family) != families.end();
}

// A neighbour outside the main range changes last bits.
bool neighboursChangeResults(const Export& f) {
    return f.family == "Arg" ||
           (!isComplex(f.source) && isOneOf(f.family, {"Atan2", "Cos", "Pow", "Powx", "Sin", "SinCos"})) ||
           (f.source == ElementType::Real32 && isOneOf(f.family, {"Erfc", "InvSqrt", "Tan"}));
}

// A neighbour changes the warning, too: in a block of InvSqrt negative elements come last, and Erfc warns of a
// subnormal result only in the company of certain others.
bool neighboursChangeStatus(const Export& f) {
    return f.source == ElementType::Real32 && isOneOf(f.family, {"Erfc", "InvSqrt"});
}

// Elements of Erfc are taken in pairs.
bool neighboursChangeFlags(const Export& f) { return neighboursChangeResults(f) || f.family == "Erfc"; }

// What a call leaves to its caller, the flags of both units included.
struct Traces {
    Outcome outcome{oktStatusOk, {}, {}};
    std::uint32_t flags = 0, x87 = 0;
};

Traces tracesOf(const Export& f, const Sources& sources, std::int32_t len) {
    const FloatingState own = floatingState();
    FloatingState clear = own;
    clear.control.mxcsr &= ~stickyFlags;
    clear.x87Flags = 0;
    setFloatingState(clear);
    Traces traces{call(f, sources, len)};
    const FloatingState after = floatingState();
    setFloatingState(own);
    traces.flags = after.control.mxcsr & stickyFlags;
    traces.x87 = after.x87Flags;
    return traces;
}

// All elements, each alone; the status is the last warning, the flags are those of all.
Traces oneByOne(const Export& f, const Sources& sources, std::int32_t len) {
    Traces all;
    for (std::int32_t i = 0; i < len; ++i) {
        const auto element = [&](const Bytes& array) {
            const std::size_t size = sizeOf(f.source), at = static_cast<std::size_t>(i) * size;
            return array.empty() ? Bytes{} : Bytes(&array[at], &array[at] + size);
        };
        const Traces one = tracesOf(f, {element(sources.src1), element(sources.src2), sources.scalar}, 1);
        all.outcome.dst1.insert(all.outcome.dst1.end(), one.outcome.dst1.begin(), one.outcome.dst1.end());
        all.outcome.dst2.insert(all.outcome.dst2.end(), one.outcome.dst2.begin(), one.outcome.dst2.end());
        if (one.outcome.status != oktStatusOk) all.outcome.status = one.outcome.status;
        all.flags |= one.flags;
        all.x87 |= one.x87;
    }
    return all;
}

// Puts an element of other sources into a place.
void splice(const Export& f, Sources& sources, std::int32_t position, const Sources& others, std::int32_t from) {
    const std::size_t size = sizeOf(f.source);
    const auto to = static_cast<std::size_t>(position) * size, at = static_cast<std::size_t>(from) * size;
    std::memcpy(&sources.src1[to], &others.src1[at], size);
    if (f.form == Form::B) std::memcpy(&sources.src2[to], &others.src2[at], size);
}

class ElementsOf : public testing::TestWithParam<const Export*> {
protected:
    const Export& f = *GetParam();

    void expectOneByOne(const Sources& sources, std::int32_t len) const {
        Traces actual = tracesOf(f, sources, len);
        const Traces expected = oneByOne(f, sources, len);
        if (neighboursChangeStatus(f)) actual.outcome.status = expected.outcome.status;
        if (neighboursChangeResults(f))
            EXPECT_EQ(actual.outcome.status, expected.outcome.status) << "length " << len;
        else
            EXPECT_TRUE(sameOutcome(f, sources, expected.outcome, actual.outcome)) << "length " << len;
        if (!neighboursChangeFlags(f)) {
            EXPECT_EQ(actual.flags, expected.flags) << "length " << len;
            EXPECT_EQ(actual.x87, expected.x87) << "length " << len;
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Catalogue, ElementsOf, testing::ValuesIn(routines()), exportName);

// Sources on the main paths of nearly all functions, which a special element interrupts.
Sources fromOneSources(const Export& f, std::int32_t len, std::uint64_t seed) {
    return uniformSources(f, len, seed, 1, 9);
}
constexpr auto calmSources = {ordinarySources, unitSources, fromOneSources};

// All up to whole blocks of the largest size, and some at the bounds of the chunks in which loops work.
std::vector<std::int32_t> lengths() {
    std::vector<std::int32_t> all{63, 64, 65, 127, 128, 129, 300};
    for (std::int32_t len = 40; len >= 1; --len) all.insert(all.begin(), len);
    return all;
}

TEST_P(ElementsOf, AreThoseOfOneCallAfterTheOtherAndTheLastWarningDecides) {
    for (const std::int32_t len : lengths()) {
        const auto seed = static_cast<std::uint64_t>(400 + len);
        for (const auto& sourcesOf : {mixedSources, mixtureSources, specialSources})
            expectOneByOne(sourcesOf(f, len, seed), len);
        for (const auto& sourcesOf : calmSources) expectOneByOne(sourcesOf(f, len, seed), len);
    }
}

TEST_P(ElementsOf, AreNotTouchedByASpecialOneAtAnyPlace) {
    for (const auto& sourcesOf : calmSources)
        for (const std::int32_t len : {7, 19, 40, 150})
            for (std::int32_t position = 0; position < len; position += len < 100 ? 1 : 13) {
                const auto seed = static_cast<std::uint64_t>(1200 + position);
                Sources sources = sourcesOf(f, len, seed);
                splice(f, sources, position, specialSources(f, len, seed), position);
                expectOneByOne(sources, len);
            }
}

// The settings that the frame leaves to the caller, and those that it does not.
TEST_P(ElementsOf, AreThoseOfOneCallAfterTheOtherUnderEveryMxcsr) {
    inEveryRoundingMode([&] {
        for (const std::int32_t len : {37, 130}) {
            for (const auto& sourcesOf : {mixedSources, mixtureSources}) expectOneByOne(sourcesOf(f, len, 1400), len);
            for (const auto& sourcesOf : calmSources) expectOneByOne(sourcesOf(f, len, 1400), len);
        }
    });
}

// An element that has this status alone.
Sources elementWith(const Export& f, OktStatus status) {
    for (std::uint64_t seed = 0; seed < 2000; ++seed)
        for (const auto& sourcesOf : {unitSources, fromOneSources, specialSources}) {
            const Sources sources = sourcesOf(f, 1, seed);
            if (call(f, sources, 1).status == status) return sources;
        }
    ADD_FAILURE() << f.name << " never gives " << statusName(status);
    return unitSources(f, 1, 0);
}

// Every pair of warnings at every pair of places among elements that do not warn.
TEST_P(ElementsOf, LeaveTheirLastWarningWhereverItStands) {
    if (f.form != Form::U || neighboursChangeStatus(f)) return;
    const Sources plain = elementWith(f, oktStatusOk);
    std::vector<std::pair<OktStatus, Sources>> warning;
    for (const OktStatus status : {oktStatusOverflow, oktStatusUnderflow, oktStatusSingularity, oktStatusDomain})
        if (warningOf(status) & f.warnings) warning.emplace_back(status, elementWith(f, status));
    for (const auto& [first, firstElement] : warning)
        for (const auto& [second, secondElement] : warning)
            for (const std::int32_t len : {2, 3, 7, 19, 40, 67}) {
                Sources sources = plain;
                for (std::int32_t i = 1; i < len; ++i)
                    sources.src1.insert(sources.src1.end(), plain.src1.begin(), plain.src1.end());
                EXPECT_EQ(call(f, sources, len).status, oktStatusOk);
                for (std::int32_t i = 0; i < len; ++i)
                    for (std::int32_t j = i + 1; j < len; ++j) {
                        Sources placed = sources;
                        splice(f, placed, i, firstElement, 0);
                        splice(f, placed, j, secondElement, 0);
                        ASSERT_EQ(call(f, placed, len).status, second)
                            << statusName(first) << " at " << i << " of " << len << ", the other one at " << j;
                    }
            }
}

// Such sources meet every warning, so that the tests above say something of each.
TEST_P(ElementsOf, MeetEveryWarningOfTheirRow) {
    unsigned met = warnsNothing;
    for (std::uint64_t seed = 400; seed < 500; ++seed)
        for (const auto& sourcesOf : {mixedSources, specialSources})
            met |= warningOf(call(f, sourcesOf(f, 40, seed), 40).status);
    EXPECT_EQ(met, f.warnings) << f.name;
}

// -----------------------------------------------------------------------------------------------------------------------
// Where neighbours show: the share of ordinary elements whose result is another one beside a NaN, in percent. The last
// bits of Arg, Atan2 and InvSqrt follow the processor, and so does their share.

// The share of the second elements of all blocks whose results change when the first ones become NaNs.
double shareChangedByNaNs(const Export& f) {
    constexpr std::int32_t len = 1 << 17;
    constexpr std::size_t block = 4;
    const bool positive = isOneOf(f.family, {"InvSqrt", "Pow", "Powx"});
    Sources sources = uniformSources(f, len, 600, positive ? 0 : -8, 8);
    const Outcome usual = call(f, sources, len);
    const std::size_t size = sizeOf(f.source), result = sizeOf(f.destination);
    const Real32 nan32 = std::numeric_limits<Real32>::quiet_NaN();
    const Real64 nan64 = std::numeric_limits<Real64>::quiet_NaN();
    for (std::size_t i = 0; i < len; i += block) {
        if (partOf(f.source) == ElementType::Real32)
            std::memcpy(&sources.src1[i * size], &nan32, sizeof nan32);
        else
            std::memcpy(&sources.src1[i * size], &nan64, sizeof nan64);
    }
    const Outcome beside = call(f, sources, len);
    const auto differ = [=](const Bytes& a, const Bytes& b, std::size_t i) {
        return !a.empty() && std::memcmp(&a[i * result], &b[i * result], result) != 0;
    };
    int changed = 0;
    for (std::size_t i = 1; i < len; i += block)
        changed += differ(usual.dst1, beside.dst1, i) || differ(usual.dst2, beside.dst2, i);
    return 100.0 * changed / (len / block);
}

TEST(Neighbours, ChangeTheShareOfResultsThatTheTextsName) {
    struct Row {
        std::string_view name;
        double low, high;
    };
    for (const Row& row :
         {Row{"oktsArg_32fc_A24", 5, 10}, Row{"oktsArg_64fc_A53", 4, 10}, Row{"oktsAtan2_32f_A24", 5, 10},
          Row{"oktsAtan2_64f_A53", 4, 10}, Row{"oktsCos_32f_A24", 8, 12}, Row{"oktsCos_64f_A53", 0.002, 0.06},
          Row{"oktsInvSqrt_32f_A24", 6, 14}, Row{"oktsPow_32f_A24", 0.5, 2}, Row{"oktsPowx_32f_A24", 0.5, 2},
          Row{"oktsSin_32f_A24", 8, 12}, Row{"oktsSin_64f_A53", 0.002, 0.06}, Row{"oktsSinCos_32f_A24", 2, 4},
          Row{"oktsSinCos_64f_A53", 0.5, 1.2}, Row{"oktsTan_32f_A24", 14, 22}}) {
        const double share = shareChangedByNaNs(*findExport(row.name));
        EXPECT_GE(share, row.low) << row.name;
        EXPECT_LE(share, row.high) << row.name;
    }
}

}  // namespace
}  // namespace okt::test
