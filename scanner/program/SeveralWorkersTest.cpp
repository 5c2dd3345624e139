// Plug-ins are scanned ahead of the host by several workers.
#include <zetaudiopluginhost/BanReasons.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/process/OwnProcess.h>
#include <zetscanprotocol/ScanRelay.h>

#include "ScannerFixture.h"

namespace zetaudiofilterscan {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::UnorderedElementsAreArray;
using zetaudiofilterhost::PluginLocator;
using zetscanprotocol::ScanInfo;

class SeveralWorkers : public ScannerFixture
{
  protected:
    SeveralWorkers() : ScannerFixture(4) {}

    /// The files that scanners of this process have left for those that follow.
    static std::vector<std::string> LeftByScanners()
    {
        namespace filesupport = zetcore::filesupport;
        const std::string ours = zetscanprotocol::RelayNamesOf(zetcore::process::OwnProcessNumber());
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(
                 filesupport::ToNativePath(filesupport::commondirs::RuntimeDir().FullPath())))
            if (const std::string name = entry.path().filename().string(); name.starts_with(ours))
                names.push_back(name);
        return names;
    }

    /// Copies of a plug-in that works.
    std::vector<PluginLocator> GoodOnes(int count)
    {
        const auto made = folder / "made";
        std::filesystem::create_directory(made);
        std::vector<PluginLocator> locators;
        for (int number = 0; number < count; ++number)
            locators.push_back(LocatorOf(
                zettesting::CopyTestPlugin("good/vst2_effect", made, "good" + std::to_string(number))));
        return locators;
    }
};

TEST_F(SeveralWorkers, TellEachPluginOnceAndTheBadOnesLast)
{
    std::vector<PluginLocator> locators = GoodOnes(12);
    const std::vector<PluginLocator> bad{Plugin("bad/aborts"), Plugin("bad/throws_exception")};
    locators.insert(locators.begin(), bad.begin(), bad.end());
    const WholeScan scan = ScanAll(prefs, locators);
    EXPECT_THAT(scan.reported, UnorderedElementsAreArray(locators));
    EXPECT_THAT(std::vector(scan.reported.end() - 2, scan.reported.end()), UnorderedElementsAreArray(bad));
    EXPECT_THAT(scan.failed, SizeIs(2));
    EXPECT_EQ(scan.scannersStarted, 2) << "nobody is left after the last one";
    for (int number = 0; number < 12; ++number)
        EXPECT_THAT(scan.results, HasSubstr("good" + std::to_string(number) + "."));
}

TEST_F(SeveralWorkers, TheHostLearnsForWhomItWaitsAndEverythingElseBefore)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 500\n");
    const auto hanging = Plugin("bad/loops_forever");
    std::vector<PluginLocator> locators = GoodOnes(5);
    locators.insert(locators.begin() + 1, hanging);
    ScannerClient client(prefs);
    client.StartScan(locators);
    std::vector<PluginLocator> told;
    ScanInfo info = client.GetScanInfo();
    for (int waits = 0; told.size() < 5; info = client.GetScanInfo()) {
        ASSERT_TRUE(info.continues);
        if (info.locator.GetPath().empty())
            ASSERT_LT(++waits, 100) << "it waits while others are there";
        else
            told.push_back(info.locator);
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    }
    EXPECT_THAT(told, Not(testing::Contains(hanging)));
    EXPECT_TRUE(info.continues);
    EXPECT_EQ(info.locator.GetPath(), L"");
    EXPECT_EQ(info.subcomponent, hanging.GetPath());
    EXPECT_EQ(info.progress, 5);
    EXPECT_EQ(info.total, 6);
    EXPECT_EQ(zetaudiopluginhost::FindBanReason(zettesting::ToWide(client.BannedPath()), hanging),
              std::nullopt);
}

TEST_F(SeveralWorkers, AClosedConnectionEndsThemAllAndNobodyIsBannedOrRecorded)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 500\n");
    const std::vector<PluginLocator> locators{Plugin("bad/hangs_on_load"), Plugin("bad/loops_forever"),
                                              Plugin("bad/hangs_when_asked_name"), Plugin("bad/aborts")};
    ScannerClient client(prefs);
    client.StartScan(locators);
    ASSERT_EQ(client.GetScanInfo().locator.GetPath(), L"") << "it waits";
    EXPECT_GT(RunningProcesses().size(), 3u) << "all are at work";
    client.Close();
    client.Process().Wait();
    EXPECT_THAT(LeftProcesses(), testing::IsEmpty());
    for (const PluginLocator& locator : locators)
        EXPECT_EQ(zetaudiopluginhost::FindBanReason(zettesting::ToWide(client.BannedPath()), locator),
                  std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(client.ResultPath()));
}

TEST_F(SeveralWorkers, AWaitEndsWithoutAResultAndThenThePluginIsNamed)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 50\n");
    const auto slow = Plugin("bad/waits");
    ScannerClient client(prefs, {{"ZET_TEST_PLUGIN_WAIT", "1500"}});
    client.StartScan({Plugin("good/vst2_effect"), slow});
    // On a slow machine the host may have to wait for the first one, too.
    for (bool isFirst = false; !isFirst;) {
        isFirst = client.GetScanInfo().locator == Plugin("good/vst2_effect");
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    }
    const ScanInfo wait = client.GetScanInfo();
    ASSERT_TRUE(wait.continues);
    EXPECT_EQ(wait.locator.GetPath(), L"");
    EXPECT_EQ(wait.subcomponent, slow.GetPath());
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_EQ(zettesting::ReadAll(client.ResultPath()), "");
    EXPECT_EQ(client.GetScanInfo().locator, slow);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_THAT(zettesting::ReadAll(client.ResultPath()), HasSubstr("waits"));
    EXPECT_FALSE(client.GetScanInfo().continues);
}

TEST_F(SeveralWorkers, AfterAScannerThatWasKilledEachPluginIsToldBeforeItIsLoaded)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 500\n");
    const std::vector<PluginLocator> locators{Plugin("bad/loops_forever"), Plugin("good/vst2_effect")};
    const auto isToldWhileItHangs = [&] {
        ScannerClient client(prefs);
        client.StartScan(locators);
        const PluginLocator told = client.GetScanInfo().locator;
        client.Process().Kill();
        client.Process().Wait();
        return told == locators.front();
    };
    EXPECT_FALSE(isToldWhileItHangs());
    EXPECT_TRUE(isToldWhileItHangs());
    EXPECT_THAT(ScanLogs(), HasSubstr("The scanner before this one was killed"));
}

TEST_F(SeveralWorkers, AScannerWhoseHostHasGoneOnIsNotTakenForOneThatWasKilled)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 500\n");
    const std::vector<PluginLocator> locators{Plugin("bad/loops_forever"), Plugin("bad/hangs_on_load"),
                                              Plugin("bad/hangs_when_asked_name")};
    ScannerClient first(prefs);
    first.StartScan(locators);
    ASSERT_EQ(first.GetScanInfo().locator.GetPath(), L"") << "it waits";
    first.Close();
    first.Process().Wait();
    EXPECT_THAT(LeftByScanners(), testing::IsEmpty());
    ScannerClient second(prefs);
    second.StartScan(locators);
    EXPECT_EQ(second.GetScanInfo().locator.GetPath(), L"") << "one worker would name the first";
    EXPECT_GT(RunningProcesses().size(), locators.size()) << "all are at work";
    EXPECT_THAT(ScanLogs(), Not(HasSubstr("killed")));
    second.Close();
    second.Process().Wait();
}

TEST_F(SeveralWorkers, AHostThatGoesBeforeItHasSentTheListTakesTheScansCulpritsWithIt)
{
    const std::vector<PluginLocator> bad{Plugin("bad/aborts"), Plugin("bad/throws_exception")};
    ScannerClient first(prefs);
    first.StartScan(bad);
    for (bool hasEnded = false; !hasEnded; hasEnded = first.ScanOneEntity().closed)
        first.GetScanInfo();
    first.Process().Wait();
    EXPECT_THAT(LeftByScanners(), SizeIs(1)) << "the other one, for the next scanner";
    ScannerClient second(prefs);
    ASSERT_TRUE(second.Open());
    ASSERT_TRUE(second.Connect().Succeeded());
    second.Close();
    second.Process().Wait();
    EXPECT_THAT(LeftByScanners(), testing::IsEmpty());
}

TEST_F(SeveralWorkers, WhatOneScannerHasFoundStandsInItsLogAlone)
{
    const std::vector<PluginLocator> bad{Plugin("bad/aborts"), Plugin("bad/throws_exception"),
                                         Plugin("bad/crash_in_entry")};
    const WholeScan scan = ScanAll(prefs, bad);
    EXPECT_EQ(scan.scannersStarted, 3);
    EXPECT_THAT(scan.failed, SizeIs(3));
    const auto logs = std::filesystem::directory_iterator(prefs / "scan-logs");
    EXPECT_EQ(std::distance(begin(logs), end(logs)), 1) << "more would push older ones out";
    for (const auto& [path, reason] : scan.failed)
        EXPECT_THAT(ScanLogs(), HasSubstr(reason + ".\n"));
}

TEST_F(SeveralWorkers, HangsThatWereFoundTogetherAreBannedOneAfterAnother)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 1\n");
    const WholeScan scan = ScanAll(prefs, {Plugin("bad/loops_forever"), Plugin("bad/hangs_on_load"),
                                           Plugin("bad/hangs_when_asked_name")});
    EXPECT_EQ(scan.scannersStarted, 3);
    EXPECT_THAT(scan.failed, SizeIs(3));
    for (const auto& [path, reason] : scan.failed)
        EXPECT_THAT(reason, HasSubstr("took longer than 1 second"));
}

} // namespace
} // namespace zetaudiofilterscan
