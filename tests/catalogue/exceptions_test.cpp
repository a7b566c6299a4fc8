// No array raises invalid, divide by zero or overflow where none of its elements does so alone: elements are worked
// side by side, and a caller who has these exceptions unmasked must not be interrupted for what an element's neighbours
// are.
#include "support/call.h"
#include "support/control_state.h"
#include "support/flags.h"
#include "support/mixtures.h"
#include "support/model_check.h"

#include <algorithm>
#include <csetjmp>
#include <csignal>

namespace okt::test {
namespace {

constexpr std::uint32_t severe = flagInvalid | flagDivideByZero | flagOverflow;

// The severe exceptions of both units that the call leaves flagged, from none.
std::uint32_t severeFlags(const Export& f, const Arguments& a, std::uint32_t mxcsr) {
    const FloatingState own = floatingState();
    setFloatingState({{mxcsr, 0x037F}});
    f.call(a);
    const FloatingState after = floatingState();
    setFloatingState(own);
    return (after.control.mxcsr | after.x87Flags) & severe;
}

#ifndef _WIN32

sigjmp_buf afterTrap;

void onTrap(int) { siglongjmp(afterTrap, 1); }

class ScopedTrapHandler {
public:
    ScopedTrapHandler() {
        struct sigaction action = {};
        action.sa_handler = onTrap;
        sigaction(SIGFPE, &action, &previous_);
    }
    ~ScopedTrapHandler() { sigaction(SIGFPE, &previous_, nullptr); }
    ScopedTrapHandler(const ScopedTrapHandler&) = delete;
    ScopedTrapHandler& operator=(const ScopedTrapHandler&) = delete;

private:
    struct sigaction previous_ = {};
};

// Whether the call is interrupted when the severe exceptions are unmasked in both units.
[[gnu::noinline]] bool traps(const Export& f, const Arguments& a, std::uint32_t mxcsr) {
    const FloatingState own = floatingState();
    if (sigsetjmp(afterTrap, 1) == 0) {
        setFloatingState({{mxcsr & ~(severe << 7), 0x037F & ~severe}});
        f.call(a);
        asm volatile("fwait");  // an exception of the x87 unit interrupts the instruction behind it
        setFloatingState(own);
        return false;
    }
    setFloatingState(own);
    return true;
}

#endif

// Elements that alone raise nothing severe, in arrays of their own.
struct Elements {
    Sources sources;
    std::int32_t count = 0;

    void add(const Export& f, const std::byte* x, const std::byte* y) {
        const std::size_t size = sizeOf(f.source);
        sources.src1.insert(sources.src1.end(), x, x + size);
        if (f.form == Form::B) sources.src2.insert(sources.src2.end(), y, y + size);
        ++count;
    }
    const std::byte* first(const Export& f, std::size_t i) const { return sources.src1.data() + i * sizeOf(f.source); }
    const std::byte* second(const Export& f, std::size_t i) const {
        return f.form == Form::B ? sources.src2.data() + i * sizeOf(f.source) : nullptr;
    }
};

constexpr std::int32_t longest = 300;

// Calls of one export, with room for its results.
class Calls {
public:
    explicit Calls(const Export& f) : f_(f), dst1_(destinationBytes(f, longest)), dst2_(destinationBytes(f, longest)) {}
    Arguments arguments(const std::byte* x, const std::byte* y, const Bytes& scalar, std::int32_t len) {
        return {x, y, scalar.data(), dst1_.data(), dst2_.data(), len};
    }
    Arguments arguments(const Elements& e) {
        return arguments(e.sources.src1.data(), e.sources.src2.data(), e.sources.scalar, e.count);
    }

    // Some hundred elements of all kinds, without those that raise something alone; one scalar for all of them.
    Elements harmless(Random& random, std::uint32_t mxcsr) {
        constexpr std::size_t drawn = 40, draws = 10;
        Elements all;
        all.sources.scalar.resize(sizeOf(f_.source));
        fillElements(random, f_.source, all.sources.scalar.data(), 1);
        for (std::size_t draw = 0; draw < draws; ++draw) {
            Bytes x(sourceBytes(f_, drawn)), y(sourceBytes(f_, drawn));
            fillElements(random, f_.source, x.data(), drawn);
            fillElements(random, f_.source, y.data(), drawn);
            for (std::size_t i = 0; i < drawn * sizeOf(f_.source); i += sizeOf(f_.source))
                if (severeFlags(f_, arguments(&x[i], &y[i], all.sources.scalar, 1), mxcsr) == 0)
                    all.add(f_, &x[i], &y[i]);
        }
        return all;
    }

private:
    const Export& f_;
    Bytes dst1_, dst2_;
};

// An array of elements from a pool: of any, of two of them, or of one with a stranger.
Elements drawArray(const Export& f, const Elements& pool, Random& random) {
    const auto any = [&] { return random.below(static_cast<std::uint64_t>(pool.count)); };
    const std::uint64_t kind = random.below(4);
    const std::uint64_t len = 1 + random.below(random.below(8) == 0 ? longest : 40);
    const std::uint64_t usual = any(), other = any(), place = random.below(len);
    Elements array;
    array.sources.scalar = pool.sources.scalar;
    for (std::uint64_t i = 0; i < len; ++i) {
        std::uint64_t from = any();
        if (kind == 0) from = random.below(2) == 0 ? usual : other;
        if (kind == 1) from = i == place ? other : usual;
        array.add(f, pool.first(f, from), pool.second(f, from));
    }
    return array;
}

std::string textOf(const Export& f, const Elements& e) {
    std::string text;
    for (std::size_t i = 0; i < static_cast<std::size_t>(e.count); ++i) {
        text += (i == 0 ? "" : "; ") + patternText(f.source, e.first(f, i));
        if (f.form == Form::B) text += " and " + patternText(f.source, e.second(f, i));
    }
    if (f.form == Form::S) text += ", scalar " + patternText(f.source, e.sources.scalar.data());
    return text;
}

// One export of each routine.
std::vector<const Export*> routines() {
    std::vector<const Export*> all = builtExports();
    std::erase_if(all,
                  [](const Export* f) { return f != &*std::ranges::find(exports(), f->routine, &Export::routine); });
    return all;
}

class ExceptionsOf : public testing::TestWithParam<const Export*> {};
INSTANTIATE_TEST_SUITE_P(Catalogue, ExceptionsOf, testing::ValuesIn(routines()), exportName);

TEST_P(ExceptionsOf, AnArrayRaisesNothingSevereThatItsElementsDoNotRaiseAlone) {
    const Export& f = *GetParam();
    const std::size_t rounds = 1 + elementsToCompare() / 30000;
    bool anyPool = false;
    Calls calls(f);
    Random random(static_cast<std::uint64_t>(f.routine));
#ifndef _WIN32
    const ScopedTrapHandler handler;
#endif
    for (const std::uint32_t setting : {0u, roundDown, roundUp, roundTowardsZero, flushToZero | denormalsAreZero}) {
        // A guard that changes MXCSR hides all flags, and the call computes as it does under the default.
        if ((setting & clearedMxcsrBits(f.frame)) != 0) continue;
        const std::uint32_t mxcsr = defaultMxcsr | setting;
        for (std::size_t round = 0; round < rounds; ++round) {
            const Elements pool = calls.harmless(random, mxcsr);
            if (pool.count == 0) continue;  // a scalar with which every element raises something
            anyPool = true;
            for (int arrays = 0; arrays < 60; ++arrays) {
                const Elements array = drawArray(f, pool, random);
                const Arguments arguments = calls.arguments(array);
                ASSERT_EQ(severeFlags(f, arguments, mxcsr), 0u)
                    << f.name << ", MXCSR " << std::hex << mxcsr << ": " << textOf(f, array);
#ifndef _WIN32
                ASSERT_FALSE(traps(f, arguments, mxcsr))
                    << f.name << " traps, MXCSR " << std::hex << mxcsr << ": " << textOf(f, array);
#endif
            }
        }
    }
    EXPECT_TRUE(anyPool) << f.name;
}

#ifndef _WIN32

// Both units, in calls of elements that do raise something: a division of SSE2, a rounding of the x87 unit.
TEST(Exceptions, InterruptACallWhereTheyAreUnmasked) {
    const ScopedTrapHandler handler;
    const Real64 one = 1, zero = 0;
    Real64 result;
    const Export& quotient = *findExport("oktsDiv_64f_A53");
    EXPECT_EQ(severeFlags(quotient, {&one, &zero, nullptr, &result, nullptr, 1}, defaultMxcsr), flagDivideByZero);
    EXPECT_TRUE(traps(quotient, {&one, &zero, nullptr, &result, nullptr, 1}, defaultMxcsr));
    EXPECT_FALSE(traps(quotient, {&zero, &one, nullptr, &result, nullptr, 1}, defaultMxcsr));

    const Complex64 largest = {bits64(0x7FEFFFFFFFFFFFFF), bits64(0x7FEFFFFFFFFFFFFF)};
    const Export& modulus = *findExport("oktsAbs_64fc_A53");
    EXPECT_EQ(severeFlags(modulus, {&largest, nullptr, nullptr, &result, nullptr, 1}, defaultMxcsr), flagOverflow);
    EXPECT_TRUE(traps(modulus, {&largest, nullptr, nullptr, &result, nullptr, 1}, defaultMxcsr));
}

#endif

}  // namespace
}  // namespace okt::test
