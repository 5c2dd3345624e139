#include <zetcore/filesupport/sharing/TemporaryFiles.h>

#include <gtest/gtest.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zettesting/HostFixture.h>

#include "filesupport/content/FileReplacement.h"

namespace zetcore::filesupport {
namespace {

using namespace std::chrono_literals;

class TemporaryFilesTest : public zettesting::HostFixture
{
  protected:
    std::filesystem::path Make(const std::string& name, std::chrono::seconds age) const
    {
        zettesting::WriteAll(prefs / name, "half a file");
        std::filesystem::last_write_time(prefs / name, std::filesystem::file_time_type::clock::now() - age);
        return prefs / name;
    }
    std::size_t Delete() const { return DeleteAbandonedTemporaries(Dir(zettesting::ToWide(prefs))); }
};

TEST_F(TemporaryFilesTest, OldOnesOfOursGo)
{
    const auto old = Make(MakeTemporaryName(), 2h);
    EXPECT_EQ(Delete(), 1u);
    EXPECT_FALSE(std::filesystem::exists(old));
    EXPECT_EQ(Delete(), 0u);
}

TEST_F(TemporaryFilesTest, WhatMayStillBeWrittenToStays)
{
    const auto fresh = Make(MakeTemporaryName(), 10s);
    EXPECT_EQ(Delete(), 0u);
    EXPECT_TRUE(std::filesystem::exists(fresh));
}

TEST_F(TemporaryFilesTest, WhatIsNotOursStays)
{
    for (const char* name : {"AudioPlugins.xml", ".zet-.tmp", ".zet-12.tmp", ".zet-12-.tmp", ".zet-12-3g.tmp",
                             ".zet-12-34.tmp2", "zet-12-34.tmp", ".zet-12-34-56.tmp"})
        Make(name, 48h);
    std::filesystem::create_directory(prefs / ".zet-1-2.tmp");
    EXPECT_EQ(Delete(), 0u);
}

TEST_F(TemporaryFilesTest, AFolderThatIsNotThereHasNone)
{
    EXPECT_EQ(DeleteAbandonedTemporaries(Dir(zettesting::ToWide(prefs / "not there"))), 0u);
}

} // namespace
} // namespace zetcore::filesupport
