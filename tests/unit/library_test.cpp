// The library as a whole: version record, catalogue counts.
#include "oktvm.h"
#include "registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <string>

namespace okt::test {
namespace {

TEST(Version, RecordHoldsItsConstants) {
    const OktLibraryVersion* version = oktvmGetLibVersion();
    EXPECT_EQ(version, oktvmGetLibVersion());
    EXPECT_EQ(version->majorVersion, 6);
    EXPECT_EQ(version->minorVersion, 1);
    EXPECT_EQ(version->buildMajor, 137);
    EXPECT_EQ(version->buildCounter, 761);
    const char* level = std::getenv("OKT_LEVEL_TAG");  // of the library that was asked for
    const std::string tag(version->cpuTag, strnlen(version->cpuTag, sizeof version->cpuTag));
    EXPECT_TRUE(level == nullptr ? tag == "mx" || tag == "mx3" || tag == "mx4" : tag == level) << tag;
    EXPECT_STREQ(version->fileName, "oktvmmx-6.1.dll");
    EXPECT_STREQ(version->versionText, "6.1 build 137.36");
    EXPECT_STREQ(version->buildDate, "Sep 29 2009");
}

TEST(Version, PointersStandAtTheirNaturalAlignmentAndTheGapIsZero) {
    EXPECT_EQ(offsetof(OktLibraryVersion, cpuTag), 16u);
    EXPECT_EQ(offsetof(OktLibraryVersion, fileName), 24u);
    std::uint32_t gap;
    std::memcpy(&gap, reinterpret_cast<const char*>(oktvmGetLibVersion()) + 20, 4);
    EXPECT_EQ(gap, 0u);
}

TEST(Catalogue, TopGradeFamiliesAndTheRoundingGroupHaveNoOtherNames) {
    std::set<std::string_view> names;
    for (const Export& entry : exports()) names.insert(entry.name);
    for (const char* name : {"oktsAdd_32f_A11", "oktsSqr_64f_A26", "oktsConj_32fc_A11", "oktsCeil_32fc",
                             "oktsCeil_32f_A24", "oktsMul_32f_A11", "oktsAbs_64f_A26"})
        EXPECT_FALSE(names.contains(name)) << name;
    for (const char* name : {"oktsCeil_32f", "oktsAbs_32fc_A11", "oktsMul_64fc_A26", "oktsAdd_64fc_A53"})
        EXPECT_TRUE(names.contains(name)) << name;
}

TEST(Catalogue, StatusTypeIsASigned32BitInteger) {
    static_assert(std::is_same_v<OktStatus, std::int32_t>);
    EXPECT_EQ(statusName(oktStatusDomain), "oktStatusDomain");
}

}  // namespace
}  // namespace okt::test
