#include "output/PluginTable.h"

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "terminal/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

using testing::HasSubstr;
using testing::Not;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

PluginRow Working(const std::wstring& name, const std::wstring& path)
{
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST, path);
    row.name = name;
    row.version = L"1.0";
    row.vendor = L"Maker";
    row.enabled = true;
    row.effect = true;
    return row;
}

PluginRow Banned(const std::wstring& name, const std::string& reason)
{
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST3, L"/p/" + name);
    row.name = name;
    row.status = RowStatus::Banned;
    row.reason = reason;
    return row;
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

TEST(PluginTable, AnEmptyListIsAHeadingAndACount)
{
    EXPECT_EQ(FormatPluginTable({}, {}),
              "Name  Type  Status  Version  Vendor  Path\n\n0 plug-ins, 0 banned\n");
}

TEST(PluginTable, OnlyWhatTheChoiceShowsIsCounted)
{
    PluginRow off = Working(L"Chorus", L"/p/chorus.so");
    off.enabled = false;
    PluginRow unreadable = Banned(L"locked.so", "Permission denied");
    unreadable.status = RowStatus::Unreadable;
    PluginRow waiting = Banned(L"later.so", "no memory");
    waiting.status = RowStatus::NotScanned;
    PluginRow empty = Banned(L"empty.so", "returned nothing");
    empty.status = RowStatus::Failed;
    const std::vector<PluginRow> all{
        Working(L"Reverb", L"/p/r.so"), off, Banned(L"bad.vst3", ""), empty, unreadable, waiting};
    struct Case
    {
        RowChoice choice;
        const char* line;
    };
    for (const Case& each : {Case{RowChoice::All, "2 plug-ins (1 off), 1 banned"},
                             {RowChoice::Enabled, "1 plug-in on"},
                             {RowChoice::Disabled, "1 plug-in off"},
                             {RowChoice::Banned, "1 banned plug-in"},
                             {RowChoice::Failed, "4 plug-ins do not work, 1 of them banned"}}) {
        const std::string table = FormatPluginTable(FilterRows(all, L"", each.choice), {}, each.choice);
        EXPECT_EQ(Lines(table).back(), each.line);
    }
    const std::string table =
        FormatPluginTable(FilterRows(all, L"", RowChoice::Failed), {}, RowChoice::Failed);
    for (const char* text : {"failed", "unreadable", "not scanned", "banned", "    Permission denied"})
        EXPECT_THAT(table, HasSubstr(text));
}

TEST(PluginTable, ColumnsAreAlignedAndBannedOnesComeLastWithTheirReason)
{
    PluginRow off = Working(L"Chorus", L"/p/chorus.so");
    off.enabled = false;
    const std::string table = FormatPluginTable(
        {Banned(L"bad.vst3", "first line\nsecond line"), Working(L"Reverb", L"/p/r.so"), off}, {});
    EXPECT_EQ(table, "Name      Type  Status        Version  Vendor  Path\n"
                     "Chorus    VST   working, off  1.0      Maker   /p/chorus.so\n"
                     "Reverb    VST   working       1.0      Maker   /p/r.so\n"
                     "bad.vst3  VST3  banned        -        -       /p/bad.vst3\n"
                     "    first line\n"
                     "    second line\n"
                     "\n"
                     "2 plug-ins (1 off), 1 banned\n");
}

TEST(PluginTable, LongTextsGiveWaySoThatLinesFitTheTerminal)
{
    const std::wstring longName(100, L'n');
    PluginRow row = Working(longName, L"/" + std::wstring(100, L'd') + L"/end.so");
    row.vendor = std::wstring(60, L'v');
    row.version = std::wstring(40, L'1');
    const std::string reason =
        "ended by signal 11 while its entry function ran, after it had written a good deal "
        "of output that is repeated here";
    for (const std::size_t width : {80u, 100u, 132u}) {
        const auto lines = Lines(FormatPluginTable({row, Banned(L"bad.vst3", reason)}, {width, false}));
        for (const std::string& line : lines)
            EXPECT_LE(DisplayWidth(line), width) << line;
        EXPECT_THAT(lines[1], HasSubstr("end.so"));
    }
    EXPECT_THAT(FormatPluginTable({row}, {}), HasSubstr("d/end.so"));
}

TEST(PluginTable, ATerminalBelowEightyColumnsGetsEighty)
{
    const PluginRow row = Working(std::wstring(60, L'n'), L"/" + std::wstring(60, L'p'));
    EXPECT_EQ(FormatPluginTable({row}, {20, false}), FormatPluginTable({row}, {80, false}));
}

TEST(PluginTable, WideCharactersKeepTheColumnsAligned)
{
    const auto lines =
        Lines(FormatPluginTable({Working(L"\u65e5\u672c", L"/a.so"), Working(L"abcd", L"/b.so")}, {}));
    EXPECT_EQ(lines[1], "abcd  VST   working  1.0      Maker   /b.so");
    EXPECT_EQ(lines[2], "\u65e5\u672c  VST   working  1.0      Maker   /a.so");
}

TEST(PluginTable, ControlCharactersDoNotReachTheTerminal)
{
    PluginRow row = Working(L"evil\x1b[2J\n", L"/p/\x07.so");
    const std::string table = FormatPluginTable({row, Banned(L"b", "why\x1b]0;x\x07")}, {});
    EXPECT_THAT(table, Not(HasSubstr("\x1b")));
    EXPECT_THAT(table, Not(HasSubstr("\x07")));
    EXPECT_EQ(Lines(table).size(), 6u);
}

TEST(PluginTable, ColourMarksBannedAndDisabledOnes)
{
    PluginRow off = Working(L"Off", L"/off.so");
    off.enabled = false;
    const std::string table = FormatPluginTable({off, Banned(L"b", "")}, {0, true});
    EXPECT_THAT(table, HasSubstr("\x1b[2mOff"));
    EXPECT_THAT(table, HasSubstr("\x1b[31mb "));
    EXPECT_THAT(table, HasSubstr("\x1b[1mName"));
}

} // namespace

} // namespace zetaudiopluginmanager
