// What every export does with bad arguments and with arrays at every address, by its frame variant.
#include "support/call.h"
#include "support/control_state.h"
#include "support/guarded.h"

#include <algorithm>
#include <limits>

namespace okt::test {
namespace {

class EveryExport : public testing::TestWithParam<const Export*> {};
INSTANTIATE_TEST_SUITE_P(Catalogue, EveryExport, testing::ValuesIn(builtExports()), exportName);

TEST_P(EveryExport, ChecksArgumentsInTheOrderOfItsFrame) {
    const Export& f = *GetParam();
    const Sources sources = mixedSources(f, 8, 1);
    const Bytes canary(destinationBytes(f, 8), std::byte{0x5A});
    for (const std::int32_t len : {5, 0, -1, std::numeric_limits<std::int32_t>::min()}) {
        for (int nulls = 0; nulls < 16; ++nulls) {
            Bytes dst1 = canary, dst2 = canary;
            Arguments a{sources.src1.data(), sources.src2.data(), sources.scalar.data(), dst1.data(), dst2.data(), len};
            bool anyNull = false;
            const auto drop = [&](int bit, auto member) {
                if (nulls >> bit & 1) a.*member = nullptr, anyNull = true;
            };
            drop(0, &Arguments::src1);
            if (f.form == Form::B) drop(1, &Arguments::src2);
            drop(2, &Arguments::dst1);
            if (f.form == Form::D) drop(3, &Arguments::dst2);
            if (!anyNull && len > 0) continue;

            const ScopedControlState unusual({defaultMxcsr | roundUp | flushToZero | denormalsAreZero, 0x027F});
            const ControlState before = controlState();
            const OktStatus status = f.call(a);
            EXPECT_EQ(controlState(), before) << f.name;
            const bool nullFirst = f.frame == Frame::mxcsr;
            const OktStatus expected =
                (nullFirst ? anyNull : anyNull && len > 0) ? oktStatusNullPointer : oktStatusBadLength;
            EXPECT_EQ(status, expected) << f.name << " len " << len << " nulls " << nulls;
            EXPECT_EQ(dst1, canary) << f.name;
            EXPECT_EQ(dst2, canary) << f.name;
        }
    }
}

// One array of a call, at a place chosen byte by byte.
class PlacedArray {
public:
    explicit PlacedArray(std::size_t capacity) : memory_(capacity + 64) {}

    // Ends at the guard page behind.
    std::byte* atEnd(std::size_t bytes) { return memory_.end() - bytes; }
    // Starts at the guard page in front.
    std::byte* atBegin() { return memory_.begin(); }
    // Starts at an address with the given remainder modulo 16, well inside.
    std::byte* atAlignment(std::size_t remainder) { return memory_.begin() + 16 + remainder; }

    GuardedMemory& memory() { return memory_; }

private:
    GuardedMemory memory_;
};

constexpr std::int32_t longest = 40;

struct Arrays {
    explicit Arrays(const Export& function, std::int32_t capacity)
        : f(function),
          src1(sourceBytes(f, capacity)),
          src2(sourceBytes(f, capacity)),
          dst1(destinationBytes(f, capacity)),
          dst2(destinationBytes(f, capacity)) {}

    // A call on arrays at the places that `place` chooses; everything around the destinations must stay as it was.
    template <class Place>
    testing::AssertionResult check(const Sources& sources, std::int32_t len, const Outcome& expected,
                                   const Place& place) {
        const std::size_t in = sourceBytes(f, len), out = destinationBytes(f, len);
        const std::byte canary{0xA5};
        for (PlacedArray* array : {&src1, &src2, &dst1, &dst2})
            std::fill(array->memory().begin(), array->memory().end(), canary);
        std::byte* s1 = place(src1, in, 0);
        std::byte* s2 = place(src2, in, 1);
        std::byte* d1 = place(dst1, out, 2);
        std::byte* d2 = place(dst2, out, 3);
        std::memcpy(s1, sources.src1.data(), in);
        if (f.form == Form::B) std::memcpy(s2, sources.src2.data(), in);
        src1.memory().makeReadOnly();
        src2.memory().makeReadOnly();
        const OktStatus status = f.call({s1, s2, sources.scalar.data(), d1, d2, len});
        src1.memory().makeWritable();
        src2.memory().makeWritable();

        Outcome actual{status, Bytes(d1, d1 + out), {}};
        if (f.form == Form::D) actual.dst2 = Bytes(d2, d2 + out);
        auto same = sameOutcome(f, sources, expected, actual);
        if (!same) return same << " (length " << len << ")";
        std::fill(d1, d1 + out, canary);
        if (f.form == Form::D) std::fill(d2, d2 + out, canary);
        for (PlacedArray* array : {&dst1, &dst2})
            if (std::any_of(array->memory().begin(), array->memory().end(), [&](std::byte b) { return b != canary; }))
                return testing::AssertionFailure() << f.name << " wrote outside its destination, length " << len;
        return testing::AssertionSuccess();
    }

    const Export& f;
    PlacedArray src1, src2, dst1, dst2;
};

TEST_P(EveryExport, GivesTheSameBitsAtEveryAlignmentAndLengthAndTouchesNothingElse) {
    const Export& f = *GetParam();
    Arrays arrays(f, longest);
    for (std::int32_t len = 1; len <= longest; ++len) {
        const auto atEnd = [](PlacedArray& a, std::size_t bytes, int) { return a.atEnd(bytes); };
        const Sources calm = unitSources(f, len, static_cast<std::uint64_t>(len));  // whole blocks on the main path
        ASSERT_TRUE(arrays.check(calm, len, call(f, calm, len), atEnd));
        const Sources sources = mixedSources(f, len, static_cast<std::uint64_t>(len));
        const Outcome expected = call(f, sources, len);
        ASSERT_TRUE(arrays.check(sources, len, expected, atEnd));
        ASSERT_TRUE(arrays.check(sources, len, expected, [](PlacedArray& a, std::size_t, int) { return a.atBegin(); }));
        for (std::size_t alignment = 0; alignment < 16; ++alignment) {
            ASSERT_TRUE(arrays.check(sources, len, expected, [=](PlacedArray& a, std::size_t, int index) {
                constexpr std::size_t step[] = {1, 5, 3, 7};
                return a.atAlignment((alignment * step[index] + (index == 1 ? 4 : 0)) % 16);
            }));
        }
    }
}

TEST_P(EveryExport, HandlesLongArraysBehindAGuardPage) {
    const Export& f = *GetParam();
    for (const std::int32_t len : {1000, 4099}) {
        Arrays arrays(f, len);
        const Sources sources = ordinarySources(f, len, 7);
        const Outcome expected = call(f, sources, len);
        ASSERT_TRUE(arrays.check(sources, len, expected,
                                 [](PlacedArray& a, std::size_t bytes, int) { return a.atEnd(bytes); }));
    }
}

// All exports with one element type but those of which the catalogue says that results change: complex products, whose
// imaginary part sees the new real part.
std::vector<const Export*> inPlaceExports() {
    std::vector<const Export*> all = builtExports();
    std::erase_if(all, [](const Export* f) { return f->source != f->destination || !f->inPlace; });
    return all;
}

class InPlaceExport : public testing::TestWithParam<const Export*> {};
INSTANTIATE_TEST_SUITE_P(Catalogue, InPlaceExport, testing::ValuesIn(inPlaceExports()), exportName);

TEST_P(InPlaceExport, GivesWhatSeparateArraysGive) {
    const Export& f = *GetParam();
    const auto check = [&](const Sources& sources, std::int32_t len) {
        const Outcome expected = call(f, sources, len);
        // The second source or the second destination takes part as the first one does.
        for (const bool second : {false, f.form == Form::B || f.form == Form::D}) {
            Sources changed = sources;
            Outcome actual{0, Bytes(expected.dst1.size()), Bytes(expected.dst2.size())};
            Bytes& source = second && f.form == Form::B ? changed.src2 : changed.src1;
            Bytes& destination = second && f.form == Form::D ? actual.dst2 : actual.dst1;
            const auto placeOf = [&](Bytes& array) { return &array == &destination ? source.data() : array.data(); };
            actual.status = f.call({changed.src1.data(), changed.src2.data(), changed.scalar.data(),
                                    placeOf(actual.dst1), placeOf(actual.dst2), len});
            destination = source;
            ASSERT_TRUE(sameOutcome(f, sources, expected, actual)) << "length " << len << (second ? ", second" : "");
        }
    };
    for (std::int32_t len = 1; len <= 4 * longest; len += len < longest ? 1 : 7) {
        const auto seed = 100 + static_cast<std::uint64_t>(len);
        for (const auto& sourcesOf : {mixedSources, mixtureSources, specialSources, unitSources})
            check(sourcesOf(f, len, seed), len);
    }
}

TEST_P(EveryExport, AgreesWithTheOtherGradesOfItsRoutine) {
    const Export& f = *GetParam();
    const Export& first = *std::ranges::find(exports(), f.routine, &Export::routine);
    for (const std::int32_t len : {1, 3, 7, 16, 33, 1000}) {
        const Sources sources = mixedSources(f, len, 200 + static_cast<std::uint64_t>(len));
        ASSERT_TRUE(sameOutcome(f, sources, call(first, sources, len), call(f, sources, len)));
    }
}

TEST_P(EveryExport, ReturnsOnlyTheStatusesOfItsCatalogueRow) {
    const Export& f = *GetParam();
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        const OktStatus status = call(f, mixedSources(f, 1 + static_cast<std::int32_t>(seed % 9), seed),
                                      1 + static_cast<std::int32_t>(seed % 9))
                                     .status;
        const unsigned warning = status == oktStatusOverflow      ? warnsOverflow
                                 : status == oktStatusUnderflow   ? warnsUnderflow
                                 : status == oktStatusSingularity ? warnsSingularity
                                 : status == oktStatusDomain      ? warnsDomain
                                                                  : warnsNothing;
        EXPECT_TRUE(status == oktStatusOk || (warning & f.warnings)) << f.name << " returned " << statusName(status);
    }
}

}  // namespace
}  // namespace okt::test
