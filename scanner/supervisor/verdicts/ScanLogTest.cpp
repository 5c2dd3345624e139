#include "supervisor/verdicts/ScanLog.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>
#include <zettesting/HostFixture.h>

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

class ScanLogTest : public zettesting::HostFixture
{
  protected:
    const std::filesystem::path logs = prefs / "scan-logs";
    ScanLog log{zettesting::ToWide(logs), "17"};

    std::string Text() const { return zettesting::ReadAll(zetcore::string::UTF16to8(log.Path())); }
    static PluginLocator Plugin(const wchar_t* path) { return {TechnologyType::VST, path}; }
};

TEST_F(ScanLogTest, makes_no_file_while_there_is_nothing_to_write)
{
    log.BeginEntity(Plugin(L"/a.so"));
    log.Output("");
    EXPECT_FALSE(std::filesystem::exists(logs));
    EXPECT_TRUE(log.Path().empty());
}

TEST_F(ScanLogTest, says_whose_output_it_is)
{
    log.BeginEntity(Plugin(L"/a.so"));
    log.Output("one\ntw");
    log.Output("o");
    log.BeginEntity(Plugin(L"/silent.so"));
    log.BeginEntity(Plugin(L"/b.so"));
    log.Output("three\n");
    log.Note("four");
    EXPECT_EQ(Text(), "== VST|/a.so|\none\ntwo\n== VST|/b.so|\nthree\n-- four\n");
}

TEST_F(ScanLogTest, knows_the_last_line_of_the_plugin)
{
    log.BeginEntity(Plugin(L"/a.so"));
    EXPECT_EQ(log.LastLine(), "");
    log.Output("first\nsecond\r\n \n");
    EXPECT_EQ(log.LastLine(), "second");
    log.Output("thi");
    log.Output("rd");
    EXPECT_EQ(log.LastLine(), "third");
    log.Output(std::string(100000, 'x') + "\nlast");
    EXPECT_EQ(log.LastLine(), "last");
    log.BeginEntity(Plugin(L"/b.so"));
    EXPECT_EQ(log.LastLine(), "");
}

TEST_F(ScanLogTest, stops_at_its_limit)
{
    log.BeginEntity(Plugin(L"/a.so"));
    const std::string block(65536, '~');
    for (std::size_t bytes = 0; bytes < 2 * ScanLog::maxBytes; bytes += block.size())
        log.Output(block);
    log.Output("\nthe end");
    EXPECT_LE(Text().size(), ScanLog::maxBytes + 200);
    EXPECT_NE(Text().find("reached its limit"), std::string::npos);
    EXPECT_EQ(log.LastLine(), "the end");
}

TEST_F(ScanLogTest, keeps_the_newest_files_and_those_that_are_not_its_own)
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

TEST_F(ScanLogTest, traces_once_and_goes_on_when_it_cannot_write)
{
    zettesting::WriteAll(logs, "a file where the folder should be");
    zetcore::debug::SetMasterTraceVolume(1);
    log.BeginEntity(Plugin(L"/a.so"));
    log.Output("one\n");
    log.Output("two\n");
    EXPECT_EQ(traceLines->size(), 1U);
    EXPECT_EQ(log.LastLine(), "two");
}

} // namespace
} // namespace zetaudiofilterscan
