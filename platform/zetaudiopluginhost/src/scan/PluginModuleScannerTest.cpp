#include <stdexcept>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ScanRules.h>
#include <zetcore/filesupport/paths/Dir.h>

#include "testing/PluginModuleScannerFixture.h"

namespace zetaudiopluginhost {
namespace {

using namespace testing;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetcore::filesupport::File;

class PluginModuleScannerTest : public PluginModuleScannerFixture
{};

TEST_F(PluginModuleScannerTest, EveryLocatorIsReportedOnceInTheGivenOrder)
{
    PluginModuleScanner scanner({second, third, first}, false, true, true);
    scanner.SetEntityScan(Recording());
    PluginLocator locator;
    std::string status;
    int progress = 0, total = 0;
    EXPECT_FALSE(scanner.GetCurrentProgressInfo(locator, status, progress, total));
    EXPECT_FALSE(scanner.ContinueScan());
    scanner.BeginScan();
    EXPECT_TRUE(scanner.ContinueScan());
    ASSERT_TRUE(scanner.GetCurrentProgressInfo(locator, status, progress, total));
    EXPECT_EQ(locator, third);
    EXPECT_EQ(status, " (42)");
    EXPECT_EQ(progress, 1);
    EXPECT_EQ(total, 3);
    EXPECT_TRUE(scanner.ContinueScan());
    EXPECT_FALSE(scanner.ContinueScan());
    EXPECT_FALSE(scanner.GetCurrentProgressInfo(locator, status, progress, total));
    EXPECT_FALSE(scanner.ContinueScan());
    scanner.EndScan();
    EXPECT_THAT(scanned, ElementsAre(second, third, first));
}

TEST_F(PluginModuleScannerTest, NothingComesOfOneThatIsPassedOver)
{
    PluginModuleScanner scanner({first, second}, false, true, false);
    scanner.SetEntityScan(Recording());
    EXPECT_FALSE(scanner.PassOverCurrent()) << "it has not begun";
    scanner.BeginScan();
    EXPECT_TRUE(scanner.ContinueScan());
    EXPECT_FALSE(scanner.PassOverCurrent());
    EXPECT_THAT(scanner.LastOutcome().infos, IsEmpty());
    EXPECT_FALSE(scanner.PassOverCurrent()) << "nothing is left";
    scanner.EndScan();
    EXPECT_THAT(scanned, ElementsAre(first));
    EXPECT_EQ(registry.Find(second), nullptr);

    scanner.BeginScan();
    EXPECT_TRUE(scanner.PassOverCurrent());
    EXPECT_FALSE(scanner.ContinueScan());
    EXPECT_THAT(scanned, ElementsAre(first, second));
}

TEST_F(PluginModuleScannerTest, AnEmptyListIsCompleteAtOnce)
{
    PluginModuleScanner scanner({}, false, true, false);
    scanner.BeginScan();
    EXPECT_THAT(RunAll(scanner), IsEmpty());
    EXPECT_FALSE(scanner.ContinueScan());
    scanner.EndScan();
}

TEST_F(PluginModuleScannerTest, NothingIsReportedAfterTheEnd)
{
    PluginModuleScanner scanner({first}, false, true, true);
    scanner.SetEntityScan(Recording());
    scanner.BeginScan();
    scanner.EndScan();
    EXPECT_THAT(RunAll(scanner), IsEmpty());
    EXPECT_FALSE(scanner.ContinueScan());
    EXPECT_THAT(scanned, IsEmpty());
}

TEST_F(PluginModuleScannerTest, UnsupportedFilesAreRefusedBeforeTheyAreLoaded)
{
    Unsupported("<plugin filename=\"A.SO\"/>");
    PluginModuleScanner scanner({first, second}, false, true, false);
    scanner.SetEntityScan(Recording());
    scanner.BeginScan();
    RunAll(scanner);
    EXPECT_THAT(scanned, ElementsAre(second));
    ASSERT_NE(registry.Find(first), nullptr);
    EXPECT_EQ(registry.Find(first)->GetStatus(), ModuleStatus::Skipped);
    EXPECT_THAT(registry.Find(first)->GetReason(), HasSubstr("unsupported"));
}

TEST_F(PluginModuleScannerTest, SaysBeforehandWhetherThePluginWillBeLoaded)
{
    BannedPluginManager::GetInstance()->AddBannedPlugin(third.ModuleLocator(), "crashed");
    Unsupported("<plugin filename=\"A.SO\"/>");
    const std::optional<ScanOutcome> unsupported = OutcomeWithoutLoading(first);
    ASSERT_TRUE(unsupported);
    ASSERT_EQ(unsupported->infos.size(), 1u);
    EXPECT_EQ(unsupported->infos[0]->GetStatus(), zetaudiofilterhost::ModuleStatus::Skipped);
    EXPECT_FALSE(OutcomeWithoutLoading(second));
    const std::optional<ScanOutcome> ofBanned = OutcomeWithoutLoading(third);
    ASSERT_TRUE(ofBanned);
    EXPECT_THAT(ofBanned->infos, IsEmpty());
}

TEST_F(PluginModuleScannerTest, UnsupportedIdsAndVersionsAreAppliedAfterTheQuestions)
{
    Unsupported("<plugin filename=\"a.so\" uniqueid=\"7\" version=\"2400\"/>"
                "<plugin filename=\"b.so\" uniqueid=\"8\"/>");
    PluginModuleScanner scanner({first, second}, false, true, false);
    scanner.SetEntityScan(Recording());
    scanner.BeginScan();
    RunAll(scanner);
    EXPECT_THAT(scanned, ElementsAre(first, second));
    EXPECT_EQ(registry.Find(first)->GetStatus(), ModuleStatus::Skipped);
    EXPECT_EQ(registry.Find(second)->GetStatus(), ModuleStatus::Working);
}

TEST_F(PluginModuleScannerTest, ResultsOnlyLeavesRegistryAndBannedListAlone)
{
    PluginModuleScanner scanner({first, second}, false, true, true);
    scanner.SetEntityScan([this](const PluginLocator& locator) {
        ScanOutcome outcome;
        outcome.infos.push_back(Info(locator));
        outcome.misbehaved = locator == second;
        return outcome;
    });
    scanner.BeginScan();
    scanner.ContinueScan();
    ASSERT_EQ(scanner.LastOutcome().infos.size(), 1u);
    EXPECT_EQ(scanner.LastOutcome().infos[0]->GetLocator(), first);
    scanner.ContinueScan();
    EXPECT_TRUE(scanner.LastOutcome().misbehaved);
    EXPECT_EQ(registry.RecordCount(), 0u);
    EXPECT_FALSE(BannedPluginManager::GetInstance()->IsBanned(second));
}

TEST_F(PluginModuleScannerTest, AnExceptionOfTheEntityScanLeavesItAtThePlugin)
{
    PluginModuleScanner scanner({first, second}, false, true, true);
    bool fails = true;
    scanner.SetEntityScan([&](const PluginLocator& locator) {
        if (fails)
            throw std::runtime_error("the worker is gone");
        return Recording()(locator);
    });
    scanner.BeginScan();
    EXPECT_THROW(scanner.ContinueScan(), std::runtime_error);
    fails = false;
    EXPECT_THAT(RunAll(scanner), ElementsAre(first, second));
}

TEST_F(PluginModuleScannerTest, ARecordKnowsWhetherItsPluginWasAskedForAlone)
{
    PluginModuleScanner scanner({third, first}, false, true, true);
    scanner.SetEntityScan(Recording());
    scanner.BeginScan();
    scanner.ContinueScan();
    EXPECT_TRUE(scanner.LastOutcome().infos.at(0)->IsScannedAlone());
    scanner.ContinueScan();
    EXPECT_FALSE(scanner.LastOutcome().infos.at(0)->IsScannedAlone());
}

TEST_F(PluginModuleScannerTest, AShellsOlderRecordsAreReplaced)
{
    const PluginLocator shell = Vst2("good/vst2_shell");
    const PluginLocator gone(TechnologyType::VST, shell.GetPath(), L"1");
    registry.AddModule(Info(gone));
    PluginModuleScanner scanner({shell}, false, true, false);
    scanner.BeginScan();
    RunAll(scanner);
    EXPECT_EQ(registry.Find(gone), nullptr);
    EXPECT_EQ(registry.FindModule(shell).size(), 3u);
}

TEST_F(PluginModuleScannerTest, AShellThatTheRegistryKnowsAsVst3IsSkipped)
{
    const PluginLocator shell = Vst2("good/vst2_shell");
    registry.AddModule(Info(PluginLocator(TechnologyType::VST3, L"/elsewhere/VST3_Shell.vst3")));
    for (const bool disableSkipping : {false, true}) {
        PluginModuleScanner scanner({shell}, disableSkipping, true, false);
        scanner.BeginScan();
        RunAll(scanner);
        EXPECT_EQ(registry.FindModule(shell).size(), disableSkipping ? 3u : 1u);
    }
}

TEST_F(PluginModuleScannerTest, SavesDuringTheScanAreWholeAfterIt)
{
    const File file(zetcore::filesupport::Dir::PrefDir(), PluginModuleInfoManager::GetSettingsFileName());
    std::vector<PluginLocator> locators;
    for (int i = 0; i < 50; ++i)
        locators.emplace_back(TechnologyType::VST, L"/plugins/" + std::to_wstring(i) + L".so");
    {
        PluginModuleScanner scanner(locators, false, true, false);
        scanner.SetEntityScan(Recording());
        scanner.BeginScan();
        do
            registry.SaveConfiguration(file, true);
        while (scanner.ContinueScan());
    }
    registry.SaveConfiguration(file, true);
    ResetRegistry(registry);
    ASSERT_TRUE(registry.LoadConfiguration(file));
    EXPECT_EQ(registry.RecordCount(), locators.size());
}

} // namespace
} // namespace zetaudiopluginhost
