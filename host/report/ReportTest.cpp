#include "report/Report.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <zetcore/string/Utf.h>
#include <zettesting/HostFixture.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginmanager {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using zettesting::ReadAll;
using zettesting::WriteAll;

constexpr const char* registryText =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<audioplugins version=\"1.2\">\n"
    "<technology name=\"VST\"><folder path=\"/home/anna/vst\"/></technology>\n"
    "<module locator=\"VST|/home/anna/vst/good.so|\" name=\"Good\" vendor=\"anna\" version=\"2.5\"/>\n"
    "<module locator=\"VST|/home/anna/vst/off.so|\" name=\"Off\" enabled=\"false\"/>\n"
    "<module locator=\"VST|/home/anna/vst/shell.so|One\" name=\"One\" status=\"failed\" reason=\"no "
    "entry\"/>\n"
    "<module locator=\"VST|/home/anna/vst/text.so|\" name=\"text\" status=\"notaplugin\" reason=\"a text "
    "file\"/>\n"
    "</audioplugins>\n";
constexpr const char* bansText =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<bannedplugins version=\"1.0\">\n"
    "<plugin locator=\"VST|/home/anna/vst/bad.so|\" reason=\"crashed near /home/anna/x\" time=\"1700000000\""
    " filesize=\"4096\" filetime=\"1\"/>\n"
    "<plugin locator=\"VST|/gone.so|\" reason=\"not there\" couldnotload=\"true\"/>\n"
    "<plugin locator=\"VST|/mine.so|\" reason=\"banned by hand\"/>\n"
    "</bannedplugins>\n";

class ReportTest : public zettesting::HostFixture
{
  protected:
    std::string Make() const
    {
        const zetcore::filesupport::Dir preferences(zetcore::string::UTF8to16(prefs.string()));
        return MakeReport("theprogram 0.1", preferences, PrivateWords({L"/home/anna"}, {L"anna"}));
    }
    void AddLog(const std::string& name, const std::string& text) const
    {
        std::filesystem::create_directories(prefs / "scan-logs");
        WriteAll(prefs / "scan-logs" / name, text);
    }
};

TEST_F(ReportTest, TellsVersionsSystemFoldersPluginsBansSwitchesAndLogs)
{
    WriteAll(prefs / "AudioPlugins.xml", registryText);
    WriteAll(prefs / "BannedAudioPlugins.xml", bansText);
    WriteAll(prefs / "DebugDatabase.txt", "# mine\nzetaudiofilterscan.Workers = 2\n");
    AddLog("scan-20260101T000000-1.log", "== VST|/home/anna/vst/bad.so|\nthe last words\n");
    const std::string report = Make();
    EXPECT_THAT(report, HasSubstr("\ntheprogram 0.1\ncompiler: "));
    EXPECT_THAT(report, HasSubstr("\nscanner: "));
    EXPECT_THAT(report, HasSubstr("\nprocessors: "));
    const std::string vst = std::filesystem::path("/vst").make_preferred().string();
    EXPECT_THAT(report, HasSubstr("\nVST  <home>" + vst + " (not there)\n"));
    EXPECT_THAT(report, HasSubstr("\nzetaudiofilterscan.Workers = 2\n"));
    EXPECT_THAT(report, HasSubstr("crashed near <home>/x\n"));
    EXPECT_THAT(report, HasSubstr("\n4 plug-ins do not work, 3 of them banned\n"));
    EXPECT_THAT(report, HasSubstr("\n    no entry\n"));
    EXPECT_THAT(report,
                HasSubstr("\nVST|<home>/vst/bad.so|\n    since 2023-11-14T22:13:20Z, this build: 4096 "
                          "bytes\n"));
    EXPECT_THAT(report, HasSubstr("\nVST|/gone.so|\n    since an unknown time, tried again by every scan\n"));
    EXPECT_THAT(report,
                HasSubstr("\nVST|/mine.so|\n    since an unknown time, every build, until it is reloaded\n"));
    EXPECT_THAT(report, HasSubstr("\nVST|<home>/vst/text.so|\n    a text file\n"));
    EXPECT_THAT(report, HasSubstr("\n1 plug-in on\n"));
    EXPECT_THAT(report, HasSubstr("\n1 plug-in off\n"));
    EXPECT_THAT(report,
                HasSubstr("\n-- scan-20260101T000000-1.log\n== VST|<home>/vst/bad.so|\nthe last words\n"));
    EXPECT_THAT(report, HasSubstr("\nAudioPlugins.xml, " + std::to_string(std::string(registryText).size()) +
                                  " bytes, 20"));
}

TEST_F(ReportTest, NamesNobodyAndIsFitToRead)
{
    WriteAll(prefs / "AudioPlugins.xml", registryText);
    WriteAll(prefs / "BannedAudioPlugins.xml", bansText);
    AddLog("scan-1.log", "file:///home/ANNA/x\r\n%2Fhome%2Fanna%2Fy\r\n\x1b[31mred\xff\n");
    const std::string report = Make();
    EXPECT_THAT(report, AllOf(Not(HasSubstr("anna")), Not(HasSubstr("ANNA"))));
    EXPECT_THAT(report, HasSubstr("file:<home>/x\n<home>%2Fy\n [31mred\xef\xbf\xbd\n"));
}

TEST_F(ReportTest, AFolderWithoutFilesHasAReportToo)
{
    const std::string report = Make();
    EXPECT_THAT(report, HasSubstr("There is no list yet"));
    EXPECT_THAT(report, HasSubstr("\n0 plug-ins do not work"));
    EXPECT_THAT(report, HasSubstr("== Logs of scans, the newest first ==\nThere are none.\n"));
}

TEST_F(ReportTest, NamesDamageAndChangesNothing)
{
    const std::string damaged = "<audioplugins version=\"1.2\">\n<module/>";
    WriteAll(prefs / "AudioPlugins.xml", damaged);
    WriteAll(prefs / "BannedAudioPlugins.xml", "no list");
    std::filesystem::create_directory(prefs / "DebugDatabase.txt");
    std::filesystem::create_directories(prefs / "scan-logs" / "scan-2.log");
    WriteAll(prefs / "scan-logs" / "scan-1.log", "words\n");
    WriteAll(prefs / "scan-logs" / "notes.txt", "not ours\n");
    WriteAll(prefs / "ScannedPluginPath.txt", "VST|/home/anna/vst/killer.so|");
    const std::string report = Make();
    EXPECT_THAT(report, HasSubstr("== Folders ==\n[cannot be read: "));
    EXPECT_THAT(report, HasSubstr("AudioPlugins.xml, line 2"));
    EXPECT_THAT(report, HasSubstr("BannedAudioPlugins.xml, line 1"));
    EXPECT_THAT(report, HasSubstr("== Switches (DebugDatabase.txt) ==\n[cannot be read: "));
    EXPECT_THAT(report, HasSubstr("-- scan-2.log\n[cannot be read: "));
    EXPECT_THAT(report, HasSubstr("-- scan-1.log\nwords\n"));
    EXPECT_THAT(report, Not(HasSubstr("not ours")));
    EXPECT_THAT(report, HasSubstr("\nScannedPluginPath.txt names: VST|<home>/vst/killer.so|\n"));
    EXPECT_EQ(ReadAll(prefs / "AudioPlugins.xml"), damaged);
    EXPECT_EQ(ReadAll(prefs / "BannedAudioPlugins.xml"), "no list");
    EXPECT_TRUE(std::filesystem::exists(prefs / "ScannedPluginPath.txt"));
    EXPECT_FALSE(std::filesystem::exists(prefs / "AudioPlugins.xml.damaged"));
}

TEST_F(ReportTest, IsOfABoundedSizeAndKeepsTheEndOfEachLog)
{
    std::string many = "<audioplugins version=\"1.2\">\n";
    for (int number = 0; number < 20'000; ++number)
        many += "<module locator=\"VST|/vst/" + std::to_string(number) +
                ".so|\" name=\"P\" status=\"failed\"/>\n";
    WriteAll(prefs / "AudioPlugins.xml", many + "</audioplugins>");
    for (int number = 10; number < 30; ++number) {
        std::string log;
        for (int line = 0; line < 20'000; ++line)
            log += "output that does not end\n";
        AddLog("scan-" + std::to_string(number) + ".log",
               log + "the end of " + std::to_string(number) + "\n");
    }
    const std::string report = Make();
    EXPECT_LT(report.size(), 2u << 20);
    EXPECT_THAT(report, HasSubstr(" lines are left out here]\n"));
    EXPECT_THAT(report, HasSubstr("the end of 29\n-- scan-28.log\n"));
    // All logs are named, although the oldest have no room.
    EXPECT_THAT(report, HasSubstr("-- scan-10.log\n"));
}

TEST_F(ReportTest, IsOfABoundedSizeWhenThePrivateWordsGrow)
{
    std::string path;
    for (int part = 0; part < 60; ++part)
        path += "/a";
    std::string many = "<audioplugins version=\"1.2\">\n";
    int number = 0;
    for (const char* state : {"status=\"failed\"", "status=\"notaplugin\"", "", "enabled=\"false\""})
        for (const int end = number + 3'000; number < end; ++number)
            many += "<module locator=\"VST|" + path + std::to_string(number) + ".so|\" name=\"P\" " + state +
                    "/>\n";
    WriteAll(prefs / "AudioPlugins.xml", many + "</audioplugins>");
    for (int log = 10; log < 20; ++log)
        AddLog("scan-" + std::to_string(log) + ".log", std::string(1 << 17, '\n'));
    const zetcore::filesupport::Dir preferences(zetcore::string::UTF8to16(prefs.string()));
    const std::string report = MakeReport("theprogram 0.1", preferences, PrivateWords({L"/a"}, {}));
    EXPECT_THAT(report, HasSubstr("It has 2 MiB at most."));
    EXPECT_THAT(report, testing::EndsWith(" left out here]\n"));
    EXPECT_LE(report.size(), 2u << 20);
    EXPECT_GT(report.size(), 2'000'000u);
}

TEST_F(ReportTest, LongNamesAndValuesAreShortened)
{
    WriteAll(prefs / "ScannedPluginPath.txt", std::string(100'000, 'x'));
    for (int number = 1'000; number < 1'400; ++number)
        AddLog("scan-" + std::to_string(number) + std::string(150, 'y') + ".log", "words\n");
    const std::string report = Make();
    EXPECT_THAT(report, HasSubstr("xxx [...]\n"));
    EXPECT_THAT(report, HasSubstr("-- scan-1399y")) << "the newest ones are there";
    EXPECT_THAT(report, HasSubstr("older logs are left out here]\n"));
    EXPECT_LT(report.size(), 100'000u);
}

} // namespace
} // namespace zetaudiopluginmanager
