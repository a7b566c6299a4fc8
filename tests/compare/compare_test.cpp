// The comparison of two builds as a program: silent where nothing differs, and nothing that differs escapes it.
#include "registry.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>

namespace okt {
namespace {

struct Outcome {
    int code;
    std::string text;
    bool has(const std::string& part) const { return text.find(part) != std::string::npos; }
};

Outcome compare(const std::string& libraries, const std::string& options) {
    const std::string command = std::string(OKT_COMPARE) + " " + libraries + " " + options + " 2>&1";
    std::FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return {-1, "cannot start " + command};
    Outcome outcome{};
    char piece[4096];
    while (std::fgets(piece, sizeof piece, pipe) != nullptr) outcome.text += piece;
    const int status = pclose(pipe);
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

const std::string twice = OKT_LIBRARY " " OKT_LIBRARY;
const std::string withFlaws = OKT_LIBRARY " " OKT_PERTURBED;

TEST(Compare, ABuildAgreesWithItself) {
    const Outcome outcome = compare(twice, "--calls 200000");
    EXPECT_EQ(outcome.code, 0) << outcome.text;
    EXPECT_TRUE(outcome.has("\n200000 calls, ")) << outcome.text;
    EXPECT_TRUE(outcome.has(" 0 differences\n")) << outcome.text;
    EXPECT_EQ(compare(twice, "--seconds 0.3").code, 0);
}

struct Flaw {
    const char *family, *kind;
};
class FlawOf : public testing::TestWithParam<Flaw> {};
INSTANTIATE_TEST_SUITE_P(Compare, FlawOf,
                         testing::Values(Flaw{"Add", "result"}, Flaw{"SinCos", "result"}, Flaw{"Sub", "elsewhere"},
                                         Flaw{"Mul", "status"}, Flaw{"Sqr", "mxcsr-overflow"},
                                         Flaw{"Inv", "mxcsr-control"}, Flaw{"Abs", "x87-control"},
                                         Flaw{"Conj", "x87-divide-by-zero"}, Flaw{"Floor", "x87-stack"}),
                         [](const auto& flaw) { return std::string(flaw.param.family); });

// Every export of the family is named with the kind; where the kind is expected, other kinds still count.
TEST_P(FlawOf, IsFoundInEveryExport) {
    const auto [family, kind] = GetParam();
    const std::string options = std::string("--calls 20000 --show 1 --family ") + family;
    const Outcome outcome = compare(withFlaws, options);
    EXPECT_EQ(outcome.code, 1) << outcome.text;
    EXPECT_FALSE(outcome.has(" 0 differences")) << outcome.text;
    const std::string table = outcome.text.substr(outcome.text.find("\nexport "));
    for (const Export& function : exports()) {
        if (function.family != family) continue;
        std::string row = "\n" + std::string(function.name);
        row.resize(28, ' ');
        EXPECT_NE(table.find(row + kind + " "), std::string::npos) << function.name << '\n' << outcome.text;
    }
    const std::string expected = std::string(" --expect-difference 'okts") + family + "_*:";
    EXPECT_EQ(compare(withFlaws, options + expected + kind + "'").code, 0);
    EXPECT_EQ(compare(withFlaws, options + expected + "x87-inexact'").code, 1);
}

TEST(Compare, TheSeedOfADifferenceMakesTheCallAgain) {
    const Outcome outcome = compare(withFlaws, "--calls 5000 --seed 77 --threads 3 --show 1 --family Add");
    const std::size_t name = outcome.text.find("oktsAdd"), seed = outcome.text.find(", seed ", name);
    ASSERT_NE(seed, std::string::npos) << outcome.text;
    const std::size_t end = outcome.text.find("\nokts", seed);
    const std::string shown = outcome.text.substr(name, end - name);
    const Outcome again =
        compare(withFlaws, "--calls 1 --export " + outcome.text.substr(name, seed - name) + " --seed " +
                               outcome.text.substr(seed + 7, outcome.text.find(':', seed) - seed - 7));
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.has(shown)) << shown << "\nand\n" << again.text;
    EXPECT_TRUE(again.has("\n1 calls, ")) << again.text;
}

TEST(Compare, ExportsWithoutAFlawAgree) {
    const Outcome outcome = compare(withFlaws, "--calls 20000 --export 'oktsE*' --export 'oktsP*' --export 'oktsCIS*'");
    EXPECT_EQ(outcome.code, 0) << outcome.text;
}

TEST(Compare, VersionRecordsAreCompared) {
    const Outcome outcome = compare(withFlaws, "--export oktvmGetLibVersion");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.has("version: 6.1.137.761 mx oktvmmx-6.1.dll \"6.1 build 137.36\" Sep 29 2009 and 6.1.137.762"))
        << outcome.text;
    EXPECT_EQ(compare(twice, "--export oktvmGetLibVersion").code, 0);
}

TEST(Compare, ACallThatDoesNotReturnIsNamed) {
    const Outcome outcome = compare(withFlaws, "--calls 10000 --family Hypot");
    EXPECT_EQ(outcome.code, 3);
    EXPECT_TRUE(outcome.has("oktsHypot_") && outcome.has(", seed ") && outcome.has("no return from " OKT_PERTURBED))
        << outcome.text;
}

TEST(Compare, WhatIsNoLibraryIsRefused) {
    EXPECT_EQ(compare(OKT_LIBRARY " " OKT_COMPARE, "--calls 1").code, 2);
    EXPECT_EQ(compare(twice, "--calls 1 --family NoSuch").code, 2);
    EXPECT_EQ(compare(twice, "--calls 1 --expect-difference oktsExp_64f_A53:colour").code, 2);
    EXPECT_NE(compare(OKT_LIBRARY " /nowhere.so", "--calls 1").code, 0);
}

}  // namespace
}  // namespace okt
