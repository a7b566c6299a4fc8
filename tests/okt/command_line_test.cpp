// The tool as a program: arguments, what it prints, and its exit code.
#include "registry.h"
#include "temporary_directory.h"

#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace okt::tool {
namespace {

class CommandLine : public TemporaryDirectory {
protected:
    struct Outcome {
        int code;
        std::string out, err;
    };

    Outcome okt(const std::string& arguments) const {
        const std::string command =
            std::string(OKT_BINARY) + " " + arguments + " >" + path("stdout") + " 2>" + path("stderr") + " </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, get("stdout"), get("stderr")};
    }
};

#define EXPECT_CONTAINS(text, part) EXPECT_NE((text).find(part), std::string::npos) << (text)

TEST_F(CommandLine, EvalPrintsValuesPatternsAndStatus) {
    const Outcome o = okt("eval oktsAbs_64fc_A53 3,4");
    EXPECT_EQ(o.code, 0);
    EXPECT_EQ(o.out,
              "src     3,4  0x4008000000000000,0x4010000000000000\n"
              "dst     5    0x4014000000000000\n"
              "status  oktStatusOk (0)\n");
    EXPECT_EQ(o.err, "");
}

TEST_F(CommandLine, EvalTakesNegativeValuesAndPatterns) {
    EXPECT_CONTAINS(okt("eval oktsAbs_64f_A53 -1.5").out, "dst     1.5   0x3FF8000000000000");
    EXPECT_CONTAINS(okt("eval oktsAbs_64f_A53 -inf").out, "dst     inf   0x7FF0000000000000");
    EXPECT_CONTAINS(okt("eval oktsAbs_32f_A24 0xFF800001").out, "0x7F800001  0x7F800001");
    EXPECT_CONTAINS(okt("eval oktsAbs_64fc_A53 -3,-4").out, "dst     5 ");
    EXPECT_CONTAINS(okt("eval oktsAbs_64f_A53 -- -2").out, "dst     2 ");
}

TEST_F(CommandLine, EvalComputesPairsInOneCallAndNamesWarnings) {
    if (!findExport("oktsDiv_64f_A53")) GTEST_SKIP() << "oktsDiv_64f_A53 is not built";
    const Outcome o = okt("eval oktsDiv_64f_A53 1 4 -1 0");
    EXPECT_EQ(o.code, 0);
    EXPECT_CONTAINS(o.out, "dst[0]   0.25");
    EXPECT_CONTAINS(o.out, "dst[1]   -inf");
    EXPECT_CONTAINS(o.out, "status   oktStatusSingularity (18)");
}

TEST_F(CommandLine, EvalTakesComplexPairs) {
    const Outcome o = okt("eval oktsDiv_64fc_A53 -1,2 2,0");
    EXPECT_EQ(o.code, 0);
    EXPECT_CONTAINS(o.out, "dst     -0.5,1");
    EXPECT_CONTAINS(o.out, "0xBFE0000000000000,0x3FF0000000000000");
}

TEST_F(CommandLine, WrongArgumentsGiveCode2AndAMessage) {
    for (const char* arguments :
         {"", "frobnicate", "eval", "eval oktsAdd_64f_A53", "eval oktsAdd_64f_A53 1", "eval oktsAdd_64f_A53 1 x",
          "eval oktsAdd_64f_A53 1 2 --scalar 3", "eval oktsAdd_64f_A53 1 2 --what", "eval oktsAdd_32f_A24 1e40 1",
          "apply oktsAdd_64f_A53", "list --type 65f", "apply oktsSqr_64f_A53 --in a --out b --in-format doc"}) {
        const Outcome o = okt(arguments);
        EXPECT_EQ(o.code, 2) << arguments;
        EXPECT_NE(o.err + o.out, "") << arguments;
    }
}

TEST_F(CommandLine, UnknownNamesBringSuggestions) {
    const Outcome o = okt("eval oktsAdd_64f_A35 1 2");
    EXPECT_EQ(o.code, 2);
    EXPECT_CONTAINS(o.err, "did you mean oktsAdd_64f_A53");
}

TEST_F(CommandLine, ListFilters) {
    EXPECT_EQ(okt("list --names --family Add").out,
              "oktsAdd_32f_A24\noktsAdd_64f_A53\noktsAdd_32fc_A24\noktsAdd_64fc_A53\n");
    EXPECT_EQ(okt("list --names --family Sqr --type 64f").out, "oktsSqr_64f_A53\n");
    EXPECT_EQ(okt("list --names 'oktsdiv_32f_*'").out, "oktsDiv_32f_A11\noktsDiv_32f_A21\noktsDiv_32f_A24\n");
    EXPECT_CONTAINS(okt("list mulbyconj_64fc").out, "src1 src2 dst");
    const std::string all = std::to_string(exports().size());
    EXPECT_CONTAINS(okt("list").err, all + " of " + all + " names");
    EXPECT_EQ(okt("list nothing-like-this").out, "");
}

TEST_F(CommandLine, ApplyOverNpy) {
    const std::vector<Complex64> z(100000, {3, -4});
    put("in.npy", npy(npyHeader("<c16", "(1000, 100)"), bytes(z)));
    const Outcome o =
        okt("apply oktsAbs_64fc_A53 --in " + path("in.npy") + " --out " + path("out.npy") + " --piece 4096");
    EXPECT_EQ(o.code, 0);
    EXPECT_CONTAINS(o.err, "100000 elements in 25 pieces, no warning");
    EXPECT_EQ(get("out.npy"), npy(npyHeader("<f8", "(1000, 100)"), bytes(std::vector<double>(z.size(), 5.0))));
}

TEST_F(CommandLine, ApplyOverTextWithWarnings) {
    if (!findExport("oktsDiv_64f_A53")) GTEST_SKIP() << "oktsDiv_64f_A53 is not built";
    const std::string in = put("a.csv", "1\n2\n3\n"), in2 = put("b.csv", "2\n0\n4\n");
    const std::string arguments = "apply oktsDiv_64f_A53 --in " + in + " --in2 " + in2 + " --out " + path("c.csv");
    const Outcome o = okt(arguments);
    EXPECT_EQ(o.code, 0);
    EXPECT_CONTAINS(o.err, "1 of them warned, the last with oktStatusSingularity");
    EXPECT_EQ(get("c.csv"), "0.5\ninf\n0.75\n");
    EXPECT_EQ(okt(arguments + " --fail-on-warning").code, 3);
    EXPECT_EQ(okt(arguments + " --quiet").err, "");
}

TEST_F(CommandLine, ApplyReadsPipes) {
    put("a.raw", bytes(std::vector<float>{1, -2, 3}));
    const std::string command = "cat " + path("a.raw") + " | " + OKT_BINARY +
                                " apply oktsSqr_32f_A24 --quiet --in /dev/stdin --out " + path("b.raw");
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(values<float>(get("b.raw")), (std::vector<float>{1, 4, 9}));
}

TEST_F(CommandLine, FileErrorsGiveCode1AndLeaveNoFile) {
    const std::string out = " --out " + path("out.npy");
    put("truncated.npy", npy(npyHeader("<f8", "(9,)"), std::string(64, '\0')));
    put("odd.raw", "12345");
    for (const char* in : {"missing.npy", "truncated.npy", "odd.raw"}) {
        const Outcome o = okt("apply oktsSqr_64f_A53 --in " + path(in) + out);
        EXPECT_EQ(o.code, 1) << in;
        EXPECT_CONTAINS(o.err, in);
        EXPECT_FALSE(std::filesystem::exists(path("out.npy")));
    }
    put("good.raw", std::string(8, '\0'));
    const Outcome o = okt("apply oktsSqr_64f_A53 --in " + path("good.raw") + " --out " + path("no/out.npy"));
    EXPECT_EQ(o.code, 1);
    EXPECT_CONTAINS(o.err, "cannot write");
}

TEST_F(CommandLine, AccuracyMeasuresBothPathsAndPlots) {
    const Outcome o = okt("accuracy oktsAbs_64fc_A53 --points 500 --range 'uniform -3 3' --plot " + path("a.svg"));
    EXPECT_EQ(o.code, 0) << o.err;
    EXPECT_CONTAINS(o.out, "uniform -3 3");
    EXPECT_CONTAINS(o.out, "block");
    EXPECT_CONTAINS(o.out, "element");
    EXPECT_CONTAINS(get("a.svg"), "<svg");
    // Sums of two elements are rounded once: no error beyond half a unit.
    EXPECT_CONTAINS(okt("accuracy oktsAdd_64f_A53 --points 500").out, "100.000%");
}

TEST_F(CommandLine, AccuracyRefusesWrongRanges) {
    Outcome o = okt("accuracy oktsAdd_64f_A53 --points 10 --range 'uniform 0 1'");
    EXPECT_EQ(o.code, 2);
    EXPECT_CONTAINS(o.err, "takes two arguments");
    o = okt("accuracy oktsSqr_64f_A53 --points 10 --range 'unifrom 0 1'");
    EXPECT_EQ(o.code, 2);
    EXPECT_CONTAINS(o.err, "unifrom");
    o = okt("accuracy oktsSqr_64f_A53 --points 10 --plot " + path("no/a.svg"));
    EXPECT_EQ(o.code, 1);
    EXPECT_CONTAINS(o.err, "cannot write");
}

TEST_F(CommandLine, HelpAndVersion) {
    const Outcome help = okt("--help");
    EXPECT_EQ(help.code, 0);
    for (const char* command : {"list", "eval", "apply", "accuracy"}) EXPECT_CONTAINS(help.out, command);
    EXPECT_EQ(okt("--version").out, "6.1 build 137.36\n");
}

}  // namespace
}  // namespace okt::tool
