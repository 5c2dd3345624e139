#include <gmock/gmock.h>
#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiopluginhost/ScanRules.h>
#include <zetcore/filesupport/paths/Dir.h>

#include "testing/PluginModuleScannerFixture.h"

// The engine passes over banned plug-ins, and it bans.
namespace zetaudiopluginhost {
namespace {

using namespace testing;
using zetaudiofilterhost::PluginLocator;
using zetcore::filesupport::File;

class BansOfScansTest : public PluginModuleScannerFixture
{};

TEST_F(BansOfScansTest, BannedPluginsCountAsDoneButAreNotLoaded)
{
    BannedPluginManager::GetInstance()->AddBannedPlugin(first, "crashed");
    BannedPluginManager::GetInstance()->AddBannedPlugin(third.ModuleLocator(), "crashed");
    PluginModuleScanner scanner({first, second, third}, false, true, false);
    scanner.SetEntityScan(Recording());
    scanner.BeginScan();
    EXPECT_THAT(RunAll(scanner), ElementsAre(first, second, third));
    EXPECT_THAT(scanned, ElementsAre(second));
    EXPECT_THAT(scanner.LastOutcome().infos, IsEmpty());
    EXPECT_EQ(registry.RecordCount(), 1u);
}

TEST_F(BansOfScansTest, AMisbehavingPluginIsBannedWithItsReason)
{
    const PluginLocator bad = Vst2("bad/throws_exception");
    const PluginLocator good = Vst2("good/vst2_effect");
    registry.AddModule(Info(bad));
    PluginModuleScanner scanner({bad, good}, false, true, false);
    scanner.BeginScan();
    RunAll(scanner);
    scanner.EndScan();
    EXPECT_THAT(BannedPluginManager::GetInstance()->GetBanInfo(bad)->reason, HasSubstr("gave up"));
    EXPECT_EQ(registry.Find(bad), nullptr);
    EXPECT_EQ(registry.Find(good)->GetName(), L"Pebble Delay");
    BannedPluginManager saved;
    ASSERT_TRUE(saved.LoadConfiguration(
        File(zetcore::filesupport::Dir::PrefDir(), BannedPluginManager::GetSettingsFileName())));
    EXPECT_TRUE(saved.IsBanned(bad));
}

TEST_F(BansOfScansTest, APluginThatCannotBeUsedIsBannedWithItsReasonAndItsBuild)
{
    const PluginLocator null = Vst2("bad/returns_null");
    const PluginLocator lacking = Vst2("bad/missing_library");
    PluginModuleScanner scanner({null, lacking}, false, true, false);
    scanner.BeginScan();
    RunAll(scanner);
    const auto ofNull = BannedPluginManager::GetInstance()->GetBanInfo(null);
    ASSERT_TRUE(ofNull);
    EXPECT_THAT(ofNull->reason, HasSubstr("returned nothing"));
    EXPECT_EQ(ofNull->stamp, zetaudiofilterhost::GetModuleFileStamp(null));
    EXPECT_FALSE(ofNull->couldNotLoad);
    const auto ofLacking = BannedPluginManager::GetInstance()->GetBanInfo(lacking);
    ASSERT_TRUE(ofLacking);
    EXPECT_THAT(ofLacking->reason, HasSubstr("could not be loaded"));
    EXPECT_TRUE(ofLacking->couldNotLoad);
    EXPECT_EQ(registry.RecordCount(), 0u);
}

TEST_F(BansOfScansTest, ABanOfAnotherBuildIsTriedAgainAndEndsWhenThePluginPasses)
{
    const PluginLocator good = Vst2("good/vst2_effect");
    const PluginLocator bad = Vst2("bad/throws_exception");
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    for (const PluginLocator& locator : {good, bad})
        banned.AddBannedPlugin(locator, BanInfo{"an older build crashed", 1, {1, 2}, false});
    PluginModuleScanner scanner({good, bad}, false, true, false);
    scanner.BeginScan();
    EXPECT_FALSE(OutcomeWithoutLoading(good));
    EXPECT_THAT(RunAll(scanner), ElementsAre(good, bad));
    EXPECT_FALSE(banned.IsBanned(good));
    ASSERT_NE(registry.Find(good), nullptr);
    ASSERT_TRUE(banned.IsBanned(bad));
    EXPECT_THAT(banned.GetBanInfo(bad)->reason, HasSubstr("gave up"));
    EXPECT_EQ(banned.GetBanInfo(bad)->stamp, zetaudiofilterhost::GetModuleFileStamp(bad));
    EXPECT_FALSE(banned.IsDueAgain(bad));
}

TEST_F(BansOfScansTest, OneThatCouldNotBeLoadedIsTriedByEveryScan)
{
    const PluginLocator good = Vst2("good/vst2_effect");
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    banned.AddBannedPlugin(good, BanInfo{"could not be loaded: a library is missing", 1,
                                         zetaudiofilterhost::GetModuleFileStamp(good), true});
    PluginModuleScanner scanner({good}, false, true, false);
    scanner.BeginScan();
    RunAll(scanner);
    EXPECT_FALSE(banned.IsBanned(good));
    EXPECT_NE(registry.Find(good), nullptr);
}

TEST_F(BansOfScansTest, ABanOfTheBuildThatIsThereStays)
{
    const PluginLocator good = Vst2("good/vst2_effect");
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    banned.AddBannedPlugin(good, BanInfo{"crashed", 1, zetaudiofilterhost::GetModuleFileStamp(good), false});
    PluginModuleScanner scanner({good}, false, true, false);
    scanner.BeginScan();
    ASSERT_TRUE(OutcomeWithoutLoading(good));
    EXPECT_THAT(OutcomeWithoutLoading(good)->infos, IsEmpty());
    RunAll(scanner);
    EXPECT_TRUE(banned.IsBanned(good));
    EXPECT_EQ(registry.Find(good), nullptr);
}

TEST_F(BansOfScansTest, ABannedListThatCannotBeSavedDoesNotStopTheScan)
{
    const PluginLocator bad = Vst2("bad/throws_exception");
    zettesting::WriteAll(folder / "file", "");
    zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "file" / "prefs"));
    PluginModuleScanner scanner({bad}, false, true, false);
    scanner.BeginScan();
    EXPECT_FALSE(scanner.ContinueScan());
    EXPECT_TRUE(BannedPluginManager::GetInstance()->IsBanned(bad));
}

} // namespace
} // namespace zetaudiopluginhost
