#include "ManagerFixture.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using zettesting::ReadAll;

namespace {

class Report : public ManagerFixture
{};

TEST_F(Report, OfAScanWithAPluginThatCrashesTellsAllAndNamesNobody)
{
    environment["USER"] = environment["USERNAME"] = "annalee";
    Install("bad/crash_in_entry", "crash");
    const auto good = Install("good/vst2_effect", "annalee_effect");
    EXPECT_EQ(Scan().banned.size(), 1u);
    const auto inHome = folder / "home" / "vst folder";
    std::filesystem::create_directory(inHome);
    UseFolders({plugins, inHome});

    const auto file = folder / "report.txt";
    const auto result = Run({"report", file.string()});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.error, HasSubstr("the report is in " + file.string()));
    const std::string report = ReadAll(file);
    EXPECT_THAT(report, HasSubstr("VST  <home>"));
    EXPECT_THAT(report, HasSubstr("crashed"));
    EXPECT_THAT(report, HasSubstr("1 plug-in on"));
    EXPECT_THAT(report, HasSubstr("-- scan-"));
    EXPECT_THAT(report, HasSubstr("<user>_effect"));
    EXPECT_THAT(report, AllOf(Not(HasSubstr("annalee")), Not(HasSubstr((folder / "home").string()))));
}

TEST_F(Report, GoesToStandardOutputAndReplacesAFileOnlyWhenTold)
{
    EXPECT_THAT(RunWell({"report", "-"}), HasSubstr("== Versions ==\nzetaudiopluginmanager "));

    const auto file = folder / "report.txt";
    zettesting::WriteAll(file, "mine");
    const auto refused = Run({"report", file.string()});
    EXPECT_EQ(refused.exitStatus, 2);
    EXPECT_THAT(refused.error, AllOf(HasSubstr(file.string()), HasSubstr("--force")));
    EXPECT_EQ(ReadAll(file), "mine");
    RunWell({"--quiet", "report", "--force", file.string()});
    EXPECT_THAT(ReadAll(file), HasSubstr("== Versions ==\n"));
}

TEST_F(Report, AFileThatCannotBeWrittenIsNamed)
{
    const auto result = Run({"report", (folder / "no such folder" / "report.txt").string()});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.error, HasSubstr("report.txt"));
    EXPECT_EQ(Run({"report", plugins.string()}).exitStatus, 2);
    EXPECT_EQ(Run({"report"}).exitStatus, 2);
}

TEST_F(Report, IsMadeAndChangesNothingWhenThePreferencesAreDamaged)
{
    zettesting::WriteAll(prefs / "AudioPlugins.xml", "damaged");
    zettesting::WriteAll(prefs / "BannedAudioPlugins.xml", "damaged");
    const std::string report = RunWell({"report", "-"});
    EXPECT_THAT(report, AllOf(HasSubstr("AudioPlugins.xml, line 1"), HasSubstr("== Logs of scans")));
    EXPECT_EQ(ReadAll(prefs / "AudioPlugins.xml"), "damaged");
    EXPECT_EQ(ReadAll(prefs / "BannedAudioPlugins.xml"), "damaged");
}

} // namespace
