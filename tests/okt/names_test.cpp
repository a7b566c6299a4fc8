#include "names.h"

#include "tool_error.h"

#include <gtest/gtest.h>

#include <string>

namespace okt::tool {
namespace {

constexpr std::string_view some[] = {"oktsExp_32f_A11",  "oktsExp_32f_A24",   "oktsExp_64f_A26",  "oktsExp_64f_A53",
                                     "oktsExp_64fc_A53", "oktsExpm1_64f_A53", "oktsAdd_64f_A53",  "oktsCeil_32f",
                                     "oktsCeil_64f",     "oktsLog10_64f_A53", "oktsLog1p_64f_A53"};

std::string nearest(std::string_view typed) {
    const auto found = nearestNames(typed, some, 1);
    return found.empty() ? "" : std::string(found.front());
}

TEST(Names, SlipsOfTypingLeadToTheNearestName) {
    EXPECT_EQ(nearest("oktsExo_64f_A53"), "oktsExp_64f_A53");
    EXPECT_EQ(nearest("oktsEpx_32f_A24"), "oktsExp_32f_A24");
    EXPECT_EQ(nearest("oktsexp_64f_a26"), "oktsExp_64f_A26");
    EXPECT_EQ(nearest("Log10_64f_A53"), "oktsLog10_64f_A53");
    EXPECT_EQ(nearest("oktsLog1_64f_A53"), "oktsLog1p_64f_A53");
}

TEST(Names, AGradeThatDoesNotExistLeadsToOneThatDoes) {
    EXPECT_EQ(nearest("oktsAdd_64f_A26"), "oktsAdd_64f_A53");
    EXPECT_EQ(nearest("oktsCeil_32f_A24"), "oktsCeil_32f");
}

TEST(Names, ABareFamilyOffersEachTypeOnceByItsHighestGrade) {
    const auto found = nearestNames("exp", some, 3);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0], "oktsExp_64f_A53");
    EXPECT_EQ(found[1], "oktsExp_32f_A24");
    EXPECT_EQ(found[2], "oktsExp_64fc_A53");
}

TEST(Names, WhatIsNearNothingGetsNoSuggestion) {
    EXPECT_EQ(nearest("oktsWombat_64f_A53"), "");
    EXPECT_EQ(nearest(""), "");
}

TEST(Names, AnUnknownExportIsRefusedWithSuggestions) {
    EXPECT_EQ(requireExport("oktsAdd_64f_A53").name, "oktsAdd_64f_A53");
    try {
        requireExport("oktsAdd_64f_A35");
        FAIL();
    } catch (const ToolError& error) {
        EXPECT_EQ(error.code(), exitUsage);
        EXPECT_NE(std::string(error.what()).find("did you mean oktsAdd_64f_A53"), std::string::npos) << error.what();
    }
}

TEST(Names, PatternsMatchAnywhereOrAsAWholeWithWildcards) {
    EXPECT_TRUE(matches("exp_64", "oktsExp_64f_A53"));
    EXPECT_TRUE(matches("oktsexp*_A5?", "oktsExp_64f_A53"));
    EXPECT_FALSE(matches("exp*", "oktsExp_64f_A53"));
    EXPECT_FALSE(matches("ln", "oktsExp_64f_A53"));
    EXPECT_TRUE(matches("*", ""));
    EXPECT_TRUE(matches("*64*a5*", "oktsExp_64f_A53"));
    EXPECT_FALSE(matches("*64*a5", "oktsExp_64f_A53"));
    EXPECT_TRUE(matchesWhole("exp", "Exp"));
    EXPECT_FALSE(matchesWhole("exp", "Expm1"));
    EXPECT_TRUE(matchesWhole("exp*", "Expm1"));
}

}  // namespace
}  // namespace okt::tool
