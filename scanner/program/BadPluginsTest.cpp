#include "BadPluginReasons.h"
#include "ScannerFixture.h"

#include <ostream>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiopluginhost/BanReasons.h>

// Each misbehaving plug-in in the real scanner, between two good ones.
namespace zetaudiofilterscan {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using BadPluginAndWorkers = std::tuple<BadPluginReason, int>;

class BannedPlugin : public ScannerFixture, public testing::WithParamInterface<BadPluginAndWorkers>
{
  protected:
    BannedPlugin() : ScannerFixture(std::get<int>(GetParam())) {}
};

TEST_P(BannedPlugin, TakesDownTheScannerAndLeavesItsReasonAndTheGoodOnesAroundItAreFound)
{
    const auto& [plugin, wanted, secondsLimit] = std::get<BadPluginReason>(GetParam());
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = " + std::to_string(secondsLimit) + "\n");
    const auto bad = Plugin(plugin);
    const WholeScan scan = ScanAll(prefs, {Plugin("good/vst2_effect"), bad, Plugin("good/vst2_synth")});

    // Several workers are ahead of the bad one, which is told last.
    EXPECT_EQ(scan.scannersStarted, workers == 1 ? 2 : 1);
    ASSERT_EQ(scan.failed.size(), 1U);
    EXPECT_THAT(scan.failed.at(bad.GetPath()), StartsWith(wanted));
    EXPECT_THAT(scan.results, AllOf(HasSubstr("vst2_effect"), HasSubstr("vst2_synth")));
    EXPECT_EQ(scan.reported.size(), 3U);
}

INSTANTIATE_TEST_SUITE_P(Each, BannedPlugin,
                         testing::Combine(testing::ValuesIn(BadPluginReasons()), testing::Values(1, 4)),
                         [](const auto& bad) {
                             return std::string(std::get<0>(bad.param).plugin).substr(4) + "_with_" +
                                    std::to_string(std::get<1>(bad.param));
                         });

struct Harmless
{
    const char* plugin;
    const char* status;
};

std::ostream& operator<<(std::ostream& stream, const Harmless& harmless)
{
    return stream << harmless.plugin;
}

class HarmlessPlugin : public ScannerFixture, public testing::WithParamInterface<Harmless>
{};

TEST_P(HarmlessPlugin, IsNotBannedAndTheScanGoesOnInTheSameScanner)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 50\n");
    const auto bad = Plugin(GetParam().plugin);
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect"), bad, Plugin("good/vst2_synth")});
    std::vector<std::string> results;
    for (zetscanprotocol::ScanInfo info = client.GetScanInfo(); info.continues; info = client.GetScanInfo()) {
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        results.push_back(zettesting::ReadAll(client.ResultPath()));
    }
    ASSERT_EQ(results.size(), 3U);
    EXPECT_THAT(results[0], HasSubstr("status=\"working\""));
    EXPECT_THAT(results[1], AllOf(HasSubstr(std::string("status=\"") + GetParam().status + "\""),
                                  HasSubstr(std::string(GetParam().plugin).substr(4))));
    EXPECT_THAT(results[2], HasSubstr("status=\"working\""));
}

INSTANTIATE_TEST_SUITE_P(Each, HarmlessPlugin,
                         testing::Values(Harmless{"bad/floods_output", "working"},
                                         Harmless{"bad/changes_process", "working"},
                                         Harmless{"bad/leaves_threads", "working"},
                                         Harmless{"bad/poisons_process", "working"},
                                         Harmless{"bad/unterminated_names", "working"},
                                         Harmless{"bad/invalid_utf8_names", "working"},
                                         Harmless{"bad/vst3_unterminated_names", "working"},
                                         Harmless{"bad/no_entry_point", "notaplugin"}),
                         [](const auto& harmless) { return std::string(harmless.param.plugin).substr(4); });

class PluginsTogether : public ScannerFixture
{};

TEST_F(PluginsTogether, ThoseThatTheLoaderStopsAreNotBannedAndTheGoodOnesAreFound)
{
    std::vector<zetaudiofilterhost::PluginLocator> locators{Plugin("good/vst2_effect")};
    for (const char* const plugin : PluginsThatTheLoaderStops())
        locators.push_back(Plugin(plugin));
    locators.push_back(Plugin("good/vst2_synth"));
    const WholeScan scan = ScanAll(prefs, locators);
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_THAT(scan.failed, IsEmpty());
    EXPECT_THAT(scan.results, AllOf(HasSubstr("vst2_effect"), HasSubstr("vst2_synth")));
}

TEST_F(PluginsTogether, OneThatCrashesOnlyAfterAnotherPassesAloneAndIsNotBanned)
{
    const WholeScan scan = ScanAll(prefs, {Plugin("bad/poisons_process"), Plugin("bad/crashes_when_poisoned"),
                                           Plugin("good/vst2_effect")});
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_THAT(scan.failed, IsEmpty());
    EXPECT_THAT(scan.results, AllOf(HasSubstr("poisons_process"), HasSubstr("crashes_when_poisoned"),
                                    HasSubstr("vst2_effect")));
    EXPECT_THAT(ScanLogs(), AllOf(HasSubstr("loaded before it in the same process"),
                                  HasSubstr("poisons_process"), HasSubstr("passed when it was alone")));
}

TEST_F(PluginsTogether, EachTryAloneIsInAWorkerThatHasLoadedNothing)
{
    // The plug-in passes alone, and would crash in the worker in which it has passed.
    const WholeScan scan =
        ScanAll(prefs, {Plugin("bad/poisons_process"), Plugin("bad/crashes_when_loaded_twice")});
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_THAT(scan.failed, IsEmpty());
    EXPECT_THAT(ScanLogs(), HasSubstr("passed when it was alone"));
}

TEST_F(PluginsTogether, AnExceptionIsAnswerEnoughOfOneThatWasAloneAndOfNoOther)
{
    const auto bad = Plugin("bad/throws_exception");
    EXPECT_EQ(ScanAll(prefs, {bad}).failed.size(), 1U);
    EXPECT_THAT(ScanLogs(), AllOf(HasSubstr("threw an exception"), Not(HasSubstr("tried once more"))));
    EXPECT_EQ(ScanAll(prefs, {Plugin("good/vst2_effect"), bad}).failed.size(), 1U);
    EXPECT_THAT(ScanLogs(), HasSubstr("tried once more"));
}

TEST_F(PluginsTogether, OneThatCrashesWhenItIsStartedDoesSoInTheFullScanOnly)
{
    const auto bad = Plugin("bad/crash_on_start");
    EXPECT_THAT(ScanAll(prefs, {bad}).results, HasSubstr("status=\"working\""));

    ScannerClient client(prefs);
    ASSERT_TRUE(client.Open());
    ASSERT_TRUE(client.Connect(false, false).Succeeded());
    ASSERT_TRUE(client.BeginScan({bad}).Succeeded());
    ASSERT_TRUE(client.GetScanInfo().continues);
    EXPECT_TRUE(client.ScanOneEntity().closed);
    const auto reason = zetaudiopluginhost::FindBanReason(zettesting::ToWide(client.BannedPath()), bad);
    ASSERT_TRUE(reason);
    EXPECT_THAT(reason->reason, HasSubstr("while being started and stopped"));
}

TEST_F(PluginsTogether, OneThatGivesNothingOnlyAfterAnotherIsNotBanned)
{
    const WholeScan scan =
        ScanAll(prefs, {Plugin("bad/poisons_process"), Plugin("bad/nothing_when_poisoned")});
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_THAT(scan.failed, IsEmpty());
    EXPECT_THAT(scan.results, HasSubstr("Nothing When Poisoned"));
    EXPECT_THAT(ScanLogs(), HasSubstr("passed when it was alone"));
}

TEST_F(PluginsTogether, AReasonComesWithTheBuildAndSaysWhenTheSystemDidNotLoadIt)
{
    const auto crashes = Plugin("bad/crash_in_entry"), lacks = Plugin("bad/missing_library"),
               gives = Plugin("bad/returns_null");
    ScanAll(prefs, {crashes, lacks, gives});
    const auto bannedPath = zettesting::ToWide(ScannerClient::BannedPath(prefs));
    for (const auto& locator : {crashes, lacks, gives}) {
        const auto ban = zetaudiopluginhost::FindBanReason(bannedPath, locator);
        ASSERT_TRUE(ban);
        EXPECT_EQ(ban->stamp, zetaudiofilterhost::GetModuleFileStamp(locator));
        EXPECT_EQ(ban->couldNotLoad, locator == lacks);
        EXPECT_GT(ban->time, 0);
    }
}

TEST_F(PluginsTogether, ABannedOneIsTriedAgainWhenItsFileIsAnotherOrCouldNotBeLoaded)
{
    const auto changed = Plugin("good/vst2_effect"), lacking = Plugin("good/vst2_synth"),
               same = Plugin("good/vst3_single_file");
    zetaudiopluginhost::BannedPluginManager banned;
    banned.AddBannedPlugin(changed, {"crashed", 1, {1, 2}, false});
    banned.AddBannedPlugin(lacking,
                           {"did not load", 1, zetaudiofilterhost::GetModuleFileStamp(lacking), true});
    banned.AddBannedPlugin(same, {"crashed", 1, zetaudiofilterhost::GetModuleFileStamp(same), false});
    banned.SaveConfiguration(
        zetcore::filesupport::File(zettesting::ToWide(ScannerClient::BannedPath(prefs))));
    const WholeScan scan = ScanAll(prefs, {changed, lacking, same});
    EXPECT_EQ(scan.reported.size(), 3U);
    EXPECT_THAT(scan.results,
                AllOf(HasSubstr("vst2_effect"), HasSubstr("vst2_synth"), Not(HasSubstr("vst3_single_file"))));
}

TEST_F(PluginsTogether, OnePluginOfAShellThatWasAskedForAloneIsMarked)
{
    const auto shell = Plugin("good/vst2_shell");
    const zetaudiofilterhost::PluginLocator one(shell.GetTechnologyType(), shell.GetPath(), L"1366443892");
    EXPECT_THAT(ScanAll(prefs, {one}).results,
                AllOf(HasSubstr("Quarry Gate"), HasSubstr("alone=\"true\""), Not(HasSubstr("Quarry Mono"))));
    EXPECT_THAT(ScanAll(prefs, {shell}).results, AllOf(HasSubstr("Quarry Mono"), Not(HasSubstr("alone"))));
}

TEST_F(PluginsTogether, AFileThatMayNotBeReadIsNoPluginThatFailed)
{
    const auto secret = Plugin("good/vst2_synth");
    const WholeScan scan =
        ScanAll(prefs, {Plugin("good/vst2_effect"), secret},
                {{"ZET_FAULT", "read.vst2_synth" + std::string(zettesting::ModuleSuffix()) + ":1:denied"}});
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_THAT(scan.failed, IsEmpty());
    EXPECT_THAT(scan.results, AllOf(HasSubstr("status=\"unreadable\""), HasSubstr("ermission denied")));
}

class LostDisplay : public ScannerFixture
{
  protected:
    WholeScan ScanOneThatLosesItsDisplay(ScannerClient::Environment environment = {})
    {
        WriteDebugDatabase("zetaudiofilterscan.WritableFolders = " + folder.Path().string() + "\n");
        environment["ZET_TEST_PLUGIN_STATE"] = (folder / "state").string();
        return ScanAll(prefs,
                       {Plugin("good/vst2_effect"), Plugin("bad/loses_display"), Plugin("good/vst2_synth")},
                       environment);
    }
};

TEST_F(LostDisplay, IsNotHeldAgainstAPluginThatWorksWithout)
{
    const WholeScan scan = ScanOneThatLosesItsDisplay();
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_THAT(scan.failed, IsEmpty());
    EXPECT_THAT(scan.results, AllOf(HasSubstr("Loses Display"), HasSubstr("vst2_effect"),
                                    HasSubstr("vst2_synth"), Not(HasSubstr("unscanned"))));
    EXPECT_THAT(ScanLogs(), HasSubstr("ended with the display that it talked to. It is tried once more."));
}

TEST_F(LostDisplay, LeavesOneThatNeedsItForTheNextScan)
{
    const WholeScan scan = ScanOneThatLosesItsDisplay({{"ZET_TEST_PLUGIN_NEEDS_DISPLAY", "1"}});
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_THAT(scan.failed, IsEmpty());
    EXPECT_THAT(scan.results,
                AllOf(HasSubstr("status=\"unscanned\""), HasSubstr("the display that it talked to went away"),
                      HasSubstr("vst2_effect"), HasSubstr("vst2_synth")));
}

TEST_F(PluginsTogether, TwoBadOnesInARowAreBannedEachForItsOwnReason)
{
    const WholeScan scan = ScanAll(prefs, {Plugin("good/vst2_effect"), Plugin("bad/aborts"),
                                           Plugin("bad/exits_zero"), Plugin("good/vst2_synth")});
    EXPECT_EQ(scan.scannersStarted, 3);
    EXPECT_EQ(scan.failed.size(), 2U);
    EXPECT_THAT(scan.failed.at(Plugin("bad/aborts").GetPath()), HasSubstr("aborted"));
    EXPECT_THAT(scan.failed.at(Plugin("bad/exits_zero").GetPath()), HasSubstr("exit code 0"));
    EXPECT_THAT(scan.results, AllOf(HasSubstr("vst2_effect"), HasSubstr("vst2_synth")));
}

TEST_F(PluginsTogether, ABadOneAtTheEndIsBannedToo)
{
    const WholeScan scan = ScanAll(prefs, {Plugin("good/vst2_effect"), Plugin("bad/crash_on_close")});
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_EQ(scan.failed.size(), 1U);
}

TEST_F(PluginsTogether, OutputGoesToTheLogAndNeverToTheScannersOwn)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("bad/floods_output")});
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    client.Close();
    const auto& result = client.Process().Wait();
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.error, Not(HasSubstr("~~~~")));
    std::uintmax_t bytes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(prefs / "scan-logs"))
        bytes += entry.file_size();
    EXPECT_GT(bytes, 100000U);
    EXPECT_LT(bytes, 8U << 20);
}

TEST_F(PluginsTogether, WhatAWorkerTracesComesOutWhereTheScannersOwnTraceDoes)
{
    const auto text = zettesting::MakeTextModule(folder.Path());
    ScannerClient client(prefs, {}, 9);
    client.StartScan({LocatorOf(text)});
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    client.Close();
    EXPECT_THAT(client.Process().Wait().error, HasSubstr(text.string() + ": a text file"));
    EXPECT_FALSE(std::filesystem::exists(prefs / "scan-logs"));
}

TEST_F(PluginsTogether, FilesThatCannotBePluginsAreSkippedAndNeverBanned)
{
    const auto made = folder / "made";
    std::filesystem::create_directory(made);
    std::vector<zetaudiofilterhost::PluginLocator> locators;
    for (const auto& file :
         {zettesting::MakeTextModule(made), zettesting::MakeEmptyModule(made),
          zettesting::MakeTruncatedModule(made), zettesting::Make32BitModule(made),
          zettesting::MakeOtherMachineModule(made), zettesting::MakeOtherSystemModule(made),
          made / std::string("not_there").append(zettesting::ModuleSuffix())})
        locators.push_back(LocatorOf(file));
    const WholeScan scan = ScanAll(prefs, locators);
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_THAT(scan.failed, IsEmpty());
    EXPECT_EQ(scan.reported.size(), locators.size());
    EXPECT_THAT(scan.results, Not(HasSubstr("status=\"working\"")));
}

TEST_F(PluginsTogether, NamesThatAreHardToCarryComeThrough)
{
    const auto made = folder / "made";
    std::filesystem::create_directory(made);
    std::vector<zetaudiofilterhost::PluginLocator> locators;
    for (const auto& file : zettesting::CopyTestPluginWithOddNames("good/vst2_effect", made))
        locators.push_back(LocatorOf(file));
    ASSERT_FALSE(locators.empty());
    locators.push_back(LocatorOf(zettesting::CopyTestPlugin("bad/aborts", made, QuotedFileName())));
    const WholeScan scan = ScanAll(prefs, locators);
    ASSERT_EQ(scan.reported.size(), locators.size());
    for (std::size_t i = 0; i < locators.size(); ++i)
        EXPECT_EQ(scan.reported[i], locators[i]);
    ASSERT_EQ(scan.failed.size(), 1U);
    EXPECT_EQ(scan.failed.begin()->first, locators.back().GetPath());
}

} // namespace
} // namespace zetaudiofilterscan
