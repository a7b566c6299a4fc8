#include "apply.h"

#include "temporary_directory.h"
#include "tool_error.h"

#include <vector>

namespace okt::tool {
namespace {

// Exports of every form made for these tests, so that they do not depend on any function of the library.
OktStatus doubled(const Arguments& a) {
    const auto* src = static_cast<const double*>(a.src1);
    OktStatus status = oktStatusOk;
    for (std::int32_t i = 0; i < a.len; ++i) {
        static_cast<double*>(a.dst1)[i] = 2 * src[i];
        if (src[i] > 100) status = oktStatusOverflow;
        if (src[i] < -100) status = oktStatusDomain;
    }
    return status;
}

OktStatus difference(const Arguments& a) {
    for (std::int32_t i = 0; i < a.len; ++i)
        static_cast<double*>(a.dst1)[i] = static_cast<const double*>(a.src1)[i] - static_cast<const double*>(a.src2)[i];
    return oktStatusOk;
}

OktStatus scaled(const Arguments& a) {
    for (std::int32_t i = 0; i < a.len; ++i)
        static_cast<double*>(a.dst1)[i] = static_cast<const double*>(a.src1)[i] * *static_cast<const double*>(a.scalar);
    return oktStatusOk;
}

OktStatus parts(const Arguments& a) {
    for (std::int32_t i = 0; i < a.len; ++i) {
        static_cast<double*>(a.dst1)[i] = static_cast<const double*>(a.src1)[i] + 1;
        static_cast<double*>(a.dst2)[i] = static_cast<const double*>(a.src1)[i] - 1;
    }
    return oktStatusOk;
}

OktStatus realPart(const Arguments& a) {
    for (std::int32_t i = 0; i < a.len; ++i)
        static_cast<double*>(a.dst1)[i] = static_cast<const Complex64*>(a.src1)[i].re;
    return oktStatusOk;
}

Export makeExport(std::string_view name, Form form, OktStatus (*call)(const Arguments&),
                  ElementType source = ElementType::Real64) {
    Export made{};
    made.name = name;
    made.form = form;
    made.source = source;
    made.destination = ElementType::Real64;
    made.call = call;
    return made;
}

const Export one = makeExport("doubled", Form::U, doubled), two = makeExport("difference", Form::B, difference),
             withScalar = makeExport("scaled", Form::S, scaled), twoResults = makeExport("parts", Form::D, parts),
             modulus = makeExport("realPart", Form::U, realPart, ElementType::Complex64);

class Apply : public TemporaryDirectory {
protected:
    ApplyRequest request(const Export& function) const {
        ApplyRequest r;
        r.function = &function;
        r.in = path("in.raw");
        r.out = path("out.raw");
        r.piece = 16;
        return r;
    }

    static ApplyResult run(const ApplyRequest& r) {
        return apply(
            r, [](std::uint64_t, double) {}, [] { return false; });
    }

    std::string refusal(const ApplyRequest& r, ExitCode code) const {
        const auto before = names().size();
        try {
            run(r);
        } catch (const ToolError& error) {
            EXPECT_EQ(error.code(), code);
            EXPECT_EQ(names().size(), before) << "something was left behind";
            return error.what();
        }
        return "";
    }

    static std::vector<double> counting(std::size_t count) {
        std::vector<double> all(count);
        for (std::size_t i = 0; i < count; ++i) all[i] = static_cast<double>(i);
        return all;
    }
};

#define EXPECT_CONTAINS(text, part) EXPECT_NE((text).find(part), std::string::npos) << (text)

TEST_F(Apply, ArraysOfAnyLengthGoThroughInPieces) {
    for (const std::size_t count : {0u, 1u, 15u, 16u, 17u, 1000u}) {
        put("in.raw", bytes(counting(count)));
        const ApplyResult result = run(request(one));
        EXPECT_EQ(result.elements, count);
        EXPECT_EQ(result.pieces, (count + 15) / 16);
        const auto out = values<double>(get("out.raw"));
        ASSERT_EQ(out.size(), count);
        for (std::size_t i = 0; i < count; ++i) EXPECT_EQ(out[i], 2 * static_cast<double>(i));
    }
}

TEST_F(Apply, PiecesThatWarnedAreCountedAndTheLastWarningIsTold) {
    std::vector<double> source(100, 1.0);
    source[20] = 1000;
    source[21] = 1000;
    source[70] = -1000;
    put("in.raw", bytes(source));
    const ApplyResult result = run(request(one));
    EXPECT_EQ(result.pieces, 7u);
    EXPECT_EQ(result.warnedPieces, 2u);
    EXPECT_EQ(result.lastWarning, oktStatusDomain);
    EXPECT_EQ(values<double>(get("out.raw"))[20], 2000);
}

TEST_F(Apply, TwoSourcesOfDifferentFormats) {
    std::string csv;
    for (int i = 0; i < 100; ++i) csv += std::to_string(i) + "\n";
    ApplyRequest r = request(two);
    r.in = put("a.npy", npy(npyHeader("<f8", "(10, 10)"), bytes(std::vector<double>(100, 5.0))));
    r.in2 = put("b.csv", csv);
    r.out = path("out.npy");
    EXPECT_EQ(run(r).elements, 100u);
    const std::string out = get("out.npy");
    EXPECT_CONTAINS(out, "(10, 10)");
    EXPECT_EQ(values<double>(out.substr(out.size() - 800))[7], -2);
}

TEST_F(Apply, ScalarAndTwoDestinations) {
    put("in.raw", bytes(counting(40)));
    ApplyRequest r = request(withScalar);
    r.scalar = "-0.5";
    run(r);
    EXPECT_EQ(values<double>(get("out.raw"))[39], -19.5);

    r = request(twoResults);
    r.out2 = path("out2.csv");
    run(r);
    EXPECT_EQ(values<double>(get("out.raw"))[39], 40);
    EXPECT_EQ(get("out2.csv").substr(0, 8), "-1\n0\n1\n2");
}

TEST_F(Apply, SourceAndDestinationMayDifferInType) {
    put("in.raw", bytes(std::vector<double>{3, 4, 5, 6}));
    run(request(modulus));
    EXPECT_EQ(values<double>(get("out.raw")), (std::vector<double>{3, 5}));
}

TEST_F(Apply, TheSourceMayBeReplaced) {
    put("in.raw", bytes(counting(100)));
    ApplyRequest r = request(one);
    r.out = r.in;
    run(r);
    EXPECT_EQ(values<double>(get("in.raw"))[99], 198);
}

TEST_F(Apply, SourcesOfDifferentLengthAreRefused) {
    ApplyRequest r = request(two);
    r.in = put("a.raw", bytes(counting(50)));
    r.in2 = put("b.raw", bytes(counting(51)));
    EXPECT_CONTAINS(refusal(r, exitFile), "differ in length");
    // A text tells its length at its end only.
    r.in2 = put("b.csv", "1\n2\n3\n");
    EXPECT_CONTAINS(refusal(r, exitFile), "b.csv ends after 3 elements");
    r.in = put("a.csv", "1\n2\n3\n4\n");
    EXPECT_CONTAINS(refusal(r, exitFile), "b.csv ends after 3 elements");
}

TEST_F(Apply, SourcesOfDifferentShapeOrOrderAreRefused) {
    const std::string data(6 * 8, '\0');
    ApplyRequest r = request(two);
    r.in = put("a.npy", npy(npyHeader("<f8", "(2, 3)"), data));
    r.in2 = put("b.npy", npy(npyHeader("<f8", "(3, 2)"), data));
    EXPECT_CONTAINS(refusal(r, exitFile), "differ in shape");
    r.in2 = put("b.npy", npy(npyHeader("<f8", "(2, 3)", true), data));
    EXPECT_CONTAINS(refusal(r, exitFile), "Fortran order");
}

TEST_F(Apply, AnErrorInTheMiddleLeavesTheOldDestination) {
    put("out.raw", "before");
    ApplyRequest r = request(one);
    std::string text;
    for (int i = 0; i < 1000; ++i) text += "1\n";
    r.in = put("in.csv", text + "x\n");
    EXPECT_CONTAINS(refusal(r, exitFile), "line 1001");
    EXPECT_EQ(get("out.raw"), "before");
}

TEST_F(Apply, AnInterruptionLeavesTheOldDestination) {
    put("in.raw", bytes(counting(1000)));
    put("out.raw", "before");
    int pieces = 0;
    try {
        apply(
            request(one), [&](std::uint64_t, double) { ++pieces; }, [&] { return pieces == 3; });
        FAIL();
    } catch (const ToolError& error) {
        EXPECT_EQ(error.code(), exitInterrupted);
    }
    EXPECT_EQ(get("out.raw"), "before");
    EXPECT_EQ(names().size(), 2u);
}

TEST_F(Apply, ArgumentsMustSuitTheForm) {
    put("in.raw", bytes(counting(4)));
    EXPECT_CONTAINS(refusal(request(two), exitUsage), "needs --in2");
    EXPECT_CONTAINS(refusal(request(withScalar), exitUsage), "needs --scalar");
    EXPECT_CONTAINS(refusal(request(twoResults), exitUsage), "needs --out2");
    ApplyRequest r = request(one);
    r.in2 = r.in;
    EXPECT_CONTAINS(refusal(r, exitUsage), "--in2 does not belong here");
    r = request(one);
    r.scalar = "1";
    EXPECT_CONTAINS(refusal(r, exitUsage), "--scalar does not belong here");
    r = request(one);
    r.out2 = path("out2.raw");
    EXPECT_CONTAINS(refusal(r, exitUsage), "--out2 does not belong here");
    r = request(twoResults);
    r.out2 = (directory_ / "." / "out.raw").string();
    EXPECT_CONTAINS(refusal(r, exitUsage), "the same file");
    r = request(withScalar);
    r.scalar = "1,2";
    EXPECT_CONTAINS(refusal(r, exitUsage), "--scalar: '1,2'");
    r = request(one);
    r.piece = 0;
    EXPECT_CONTAINS(refusal(r, exitUsage), "--piece");
}

}  // namespace
}  // namespace okt::tool
