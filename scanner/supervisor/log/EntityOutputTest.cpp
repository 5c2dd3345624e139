#include "supervisor/log/EntityOutput.h"

#include <gtest/gtest.h>
#include <zetcore/string/Utf.h>
#include <zettesting/HostFixture.h>

#include "supervisor/log/ScanLog.h"

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

class EntityOutputTest : public zettesting::HostFixture
{
  protected:
    ScanLog log{zettesting::ToWide(prefs / "scan-logs"), "17"};
    EntityOutput output{log, Plugin(L"/a.so")};

    std::string Text() const { return zettesting::ReadAll(zetcore::string::UTF16to8(log.Path())); }
    static PluginLocator Plugin(const wchar_t* path) { return {TechnologyType::VST, path}; }
};

TEST_F(EntityOutputTest, NamesNoPluginThatIsSilent)
{
    output.Take("");
    EXPECT_TRUE(log.Path().empty());
}

TEST_F(EntityOutputTest, SaysWhoseOutputItIs)
{
    output.Take("one\ntw");
    output.Take("o");
    const EntityOutput silent(log, Plugin(L"/silent.so"));
    EntityOutput second(log, Plugin(L"/b.so"));
    second.Take("three\n");
    log.Note("four");
    EntityOutput again(log, Plugin(L"/b.so"));
    again.Take("five\n");
    EXPECT_EQ(Text(), "== VST|/a.so|\none\ntwo\n== VST|/b.so|\nthree\n-- four\n== VST|/b.so|\nfive\n");
}

TEST_F(EntityOutputTest, SaysItAgainWhenSeveralPluginsTakeTurns)
{
    EntityOutput second(log, Plugin(L"/b.so"));
    output.Take("one\n");
    output.Take("two\n");
    second.Take("thr");
    output.Take("four\n");
    second.Take("ee\n");
    EXPECT_EQ(Text(), "== VST|/a.so|\none\ntwo\n== VST|/b.so|\nthr\n== VST|/a.so|\nfour\n"
                      "== VST|/b.so|\nee\n");
}

TEST_F(EntityOutputTest, KnowsTheLastLineOfThePlugin)
{
    EXPECT_EQ(output.LastLine(), "");
    output.Take("first\nsecond\r\n \n");
    EXPECT_EQ(output.LastLine(), "second");
    output.Take("thi");
    output.Take("rd");
    EXPECT_EQ(output.LastLine(), "third");
    output.Take(std::string(100000, 'x') + "\nlast");
    EXPECT_EQ(output.LastLine(), "last");
}

TEST_F(EntityOutputTest, KnowsTheLastLineWhenTheLogIsFullToo)
{
    const std::string block(65536, '~');
    for (std::size_t bytes = 0; bytes < 2 * ScanLog::maxBytes; bytes += block.size())
        output.Take(block);
    output.Take("\nthe end");
    EXPECT_EQ(output.LastLine(), "the end");
}

TEST_F(EntityOutputTest, KnowsTheLastLineWhenTheLogCannotBeWrittenToo)
{
    zettesting::WriteAll(prefs / "scan-logs", "a file where the folder should be");
    output.Take("one\n");
    output.Take("two\n");
    EXPECT_EQ(output.LastLine(), "two");
}

} // namespace
} // namespace zetaudiofilterscan
