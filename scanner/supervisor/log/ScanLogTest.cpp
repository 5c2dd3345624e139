#include "supervisor/log/ScanLog.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>
#include <zettesting/HostFixture.h>

namespace zetaudiofilterscan {
namespace {

class ScanLogTest : public zettesting::HostFixture
{
  protected:
    const std::filesystem::path logs = prefs / "scan-logs";
    ScanLog log{zettesting::ToWide(logs), "17"};

    std::string Text() const { return zettesting::ReadAll(zetcore::string::UTF16to8(log.Path())); }
};

TEST_F(ScanLogTest, MakesNoFileWhileThereIsNothingToWrite)
{
    log.Output("");
    EXPECT_FALSE(std::filesystem::exists(logs));
    EXPECT_TRUE(log.Path().empty());
}

TEST_F(ScanLogTest, BeginsItsOwnLinesOnNewLines)
{
    log.Heading("a");
    log.Output("one\ntw");
    log.Note("b");
    log.Output("three\n");
    log.Heading("c");
    EXPECT_EQ(Text(), "== a\none\ntw\n-- b\nthree\n== c\n");
}

TEST_F(ScanLogTest, StopsAtItsLimit)
{
    const std::string block(65536, '~');
    for (std::size_t bytes = 0; bytes < 2 * ScanLog::maxBytes; bytes += block.size())
        log.Output(block);
    log.Output("\nthe end");
    EXPECT_LE(Text().size(), ScanLog::maxBytes + 200);
    EXPECT_NE(Text().find("reached its limit"), std::string::npos);
}

TEST_F(ScanLogTest, KeepsTheNewestFilesAndThoseThatAreNotItsOwn)
{
    std::filesystem::create_directories(logs);
    for (int i = 10; i < 40; ++i)
        zettesting::WriteAll(logs / ("scan-200001" + std::to_string(i) + "-000000-000-1.log"), "old");
    zettesting::WriteAll(logs / "notes.txt", "mine");
    log.Note("new");
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(logs))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    ASSERT_EQ(names.size(), ScanLog::maxFiles + 1);
    EXPECT_EQ(names[0], "notes.txt");
    EXPECT_EQ(names[1], "scan-20000121-000000-000-1.log");
    EXPECT_EQ(Text(), "-- new\n");
}

TEST_F(ScanLogTest, TracesOnceAndGoesOnWhenItCannotWrite)
{
    zettesting::WriteAll(logs, "a file where the folder should be");
    zetcore::debug::SetMasterTraceVolume(1);
    log.Output("one\n");
    log.Output("two\n");
    EXPECT_EQ(traceLines->size(), 1U);
}

} // namespace
} // namespace zetaudiofilterscan
