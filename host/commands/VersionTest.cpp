#include "commands/Version.h"

#include <gtest/gtest.h>

namespace zetaudiopluginmanager {

namespace {

TEST(Version, SaysTheCommitInBracketsAndNothingWhereThereIsNone)
{
    EXPECT_EQ(WriteVersionLine("1.2.3", "0123456789"), "zetaudiopluginmanager 1.2.3 (0123456789)");
    EXPECT_EQ(WriteVersionLine("1.2.3", "0123456789, changed"),
              "zetaudiopluginmanager 1.2.3 (0123456789, changed)");
    EXPECT_EQ(WriteVersionLine("1.2.3", ""), "zetaudiopluginmanager 1.2.3");
}

TEST(Version, LineBeginsWithTheNumber)
{
    EXPECT_TRUE(VersionLine().starts_with("zetaudiopluginmanager " + VersionNumber()));
}

} // namespace

} // namespace zetaudiopluginmanager
