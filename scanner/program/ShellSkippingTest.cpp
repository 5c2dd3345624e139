#include "ScannerFixture.h"

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

// A VST2 shell that the host's registry has as VST3, too, is passed over by the real scanner.
namespace zetaudiofilterscan {
namespace {

using testing::HasSubstr;
using testing::Not;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;

std::shared_ptr<PluginModuleInfo> Record(const PluginLocator& locator,
                                         ModuleStatus status = ModuleStatus::Working)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetStatus(status);
    return info;
}

class ShellSkipping : public ScannerFixture
{
  protected:
    /// The result of a scan of the shell, in a list with these before it.
    std::string Scan(std::vector<PluginLocator> list, bool disableShellSkipping = false)
    {
        list.push_back(shell);
        ScannerClient client(prefs);
        if (!client.Open() || !client.Connect(disableShellSkipping).Succeeded() ||
            !client.BeginScan(list).Succeeded())
            throw std::runtime_error("no scan");
        while (client.GetScanInfo().continues)
            if (!client.ScanOneEntity().Succeeded())
                throw std::runtime_error("the scanner has given up");
        const std::string result = zettesting::ReadAll(client.ResultPath());
        client.Close();
        client.Process().Wait();
        return result;
    }
    void Save()
    {
        registry.SaveConfiguration(zetcore::filesupport::File(zettesting::ToWide(prefs / "plugins.xml")),
                                   true);
    }

    const PluginLocator shell = Plugin("good/vst2_shell");
    const PluginLocator sameName{TechnologyType::VST3, L"/elsewhere/vst2_shell.vst3"};
    const PluginLocator otherName{TechnologyType::VST3, L"/elsewhere/other.vst3"};
    const testing::Matcher<std::string> isSkipped = HasSubstr("status=\"skipped\"");
    PluginModuleInfoManager registry;
};

TEST_F(ShellSkipping, NeedsAWorkingModuleOfTheNameInTheRegistry)
{
    EXPECT_THAT(Scan({}), Not(isSkipped));
    registry.AddModule(Record(otherName));
    registry.AddModule(Record({TechnologyType::VST, sameName.GetPath()}));
    registry.AddModule(Record(sameName, ModuleStatus::Failed));
    Save();
    EXPECT_THAT(Scan({}), Not(isSkipped));
    registry.AddModule(Record(sameName));
    Save();
    EXPECT_THAT(Scan({}), isSkipped);
    EXPECT_THAT(Scan({}, true), Not(isSkipped));
}

TEST_F(ShellSkipping, CountsWhatTheScanHasFoundBeforeTheScannerWasStartedAgain)
{
    registry.BeginIncrementalSaves();
    Save();
    registry.AddConfiguration(PluginModuleInfoManager::ToConfigurationText({Record(sameName)}), false);
    ASSERT_TRUE(std::filesystem::exists(prefs / "plugins.xml.journal"));
    ASSERT_THAT(zettesting::ReadAll(prefs / "plugins.xml"), Not(HasSubstr("elsewhere")));
    EXPECT_THAT(Scan({}), isSkipped);
}

TEST_F(ShellSkipping, CountsTheModulesOfItsOwnList)
{
    EXPECT_THAT(Scan({otherName}), Not(isSkipped));
    EXPECT_THAT(Scan({sameName}), isSkipped);
}

TEST_F(ShellSkipping, DoesNotCountABannedModule)
{
    registry.AddModule(Record(sameName));
    Save();
    zetaudiopluginhost::BannedPluginManager banned;
    banned.AddBannedPlugin(sameName, "for a test");
    banned.SaveConfiguration(
        zetcore::filesupport::File(zettesting::ToWide(ScannerClient::BannedPath(prefs))));
    EXPECT_THAT(Scan({}), Not(isSkipped));
}

TEST_F(ShellSkipping, ADamagedRegistryCountsAsEmptyAndEndsNothing)
{
    zettesting::WriteAll(prefs / "plugins.xml", "<audioplugins><damaged");
    EXPECT_THAT(Scan({}), Not(isSkipped));
    EXPECT_EQ(zettesting::ReadAll(prefs / "plugins.xml"), "<audioplugins><damaged");
    EXPECT_FALSE(std::filesystem::exists(prefs / "plugins.xml.damaged"));
}

TEST_F(ShellSkipping, EveryWorkerIsToldWhatIsKnown)
{
    registry.AddModule(Record(sameName));
    Save();
    // Between the two shells, a plug-in takes the first worker down and passes in others.
    const auto second = zettesting::CopyTestPlugin("good/vst2_shell", folder.Path(), "vst2_shell");
    const WholeScan scan = ScanAll(prefs, {shell, Plugin("bad/poisons_process"),
                                           Plugin("bad/crashes_when_poisoned"), LocatorOf(second)});
    EXPECT_EQ(scan.scannersStarted, 1);
    std::size_t skipped = 0;
    for (auto at = scan.results.find("status=\"skipped\""); at != std::string::npos;
         at = scan.results.find("status=\"skipped\"", at + 1))
        ++skipped;
    EXPECT_EQ(skipped, 2U);
}

TEST_F(ShellSkipping, AWorkerIsToldAgainForTheNextList)
{
    ScannerClient client(prefs);
    client.StartScan({shell});
    for (const bool isThere : {false, true}) {
        ASSERT_TRUE(client.BeginScan({shell}).Succeeded());
        ASSERT_TRUE(client.GetScanInfo().continues);
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        EXPECT_THAT(zettesting::ReadAll(client.ResultPath()), isThere ? isSkipped : Not(isSkipped));
        registry.AddModule(Record(sameName));
        Save();
    }
    EXPECT_THAT(ScanLogs(), Not(HasSubstr("tried once more")));
}

} // namespace
} // namespace zetaudiofilterscan
