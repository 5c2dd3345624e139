// The driver with the real scanner process and real modules.
#include <algorithm>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/string/Utf.h>
#include <zettesting/TestPlugins.h>

#include "testing/RecordingPresentation.h"
#include "testing/ScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BannedPluginManager;

class RealScanner : public ScanFixture
{
  protected:
    RealScanner() { zetcore::filesupport::commondirs::SetExecutableDir({}); }

    static PluginLocator TestPlugin(std::string_view name)
    {
        return zetaudiofilterhost::LocatorOfModuleFile(zettesting::ToWide(zettesting::TestPlugin(name)));
    }
    /// The names of all that works, in order.
    std::vector<std::string> Names(const std::vector<PluginLocator>& plugins, bool useSeparateProcess)
    {
        PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
        const auto scan = std::make_shared<AudioPluginScan>(nullptr);
        scan->ScanForPlugins(nullptr, plugins, true, false, useSeparateProcess);
        std::vector<std::string> names;
        for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info)
            names.push_back(zetcore::string::UTF16to8((*info)->GetName()));
        return names;
    }

    RecordingPresentation shown;
};

TEST_F(RealScanner, FindsTheSameInASeparateProcessAsInThisOne)
{
    const std::vector<PluginLocator> plugins{
        TestPlugin("good/vst2_effect"), TestPlugin("good/vst2_synth"), TestPlugin("good/vst2_shell"),
        TestPlugin("good/vst3_with_moduleinfo"), TestPlugin("good/vst3_several_classes")};
    const auto outside = Names(plugins, true);
    PluginModuleInfoManager::GetInstance()->Reset();
    const auto inside = Names(plugins, false);
    EXPECT_GT(outside.size(), plugins.size());
    EXPECT_EQ(outside, inside);
    EXPECT_EQ(shown.Starting("step").size(), 2 * plugins.size());
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(RealScanner, BothFlagsReachTheEngineOfThisProcess)
{
    const std::filesystem::path path =
        zettesting::CopyTestPlugin("good/vst2_shell", folder.Path(), "House-VST 2");
    const PluginLocator shell(TechnologyType::VST, zettesting::ToWide(path));
    const PluginLocator newer(TechnologyType::VST3, L"/elsewhere/house-vst3 2.vst3");
    auto& registry = *PluginModuleInfoManager::GetInstance();
    const auto scanned = [&](bool disableShellSkipping, bool quick) {
        const auto scan = std::make_shared<AudioPluginScan>(nullptr);
        scan->ScanForPlugins(nullptr, {shell, newer}, disableShellSkipping, quick, false);
        return registry.FindModule(shell);
    };
    // A shell is skipped when it is there as VST3 too.
    ASSERT_EQ(scanned(false, true).size(), 1u);
    EXPECT_EQ(registry.FindModule(shell).front()->GetStatus(), ModuleStatus::Skipped);
    const auto isSynth = [](const auto& info) { return info->HasAnySynth(); };
    // Only the full scan makes an instance of each of its plug-ins, and sees which are instruments.
    const auto quick = scanned(true, true);
    EXPECT_EQ(quick.size(), 3u);
    EXPECT_TRUE(std::none_of(quick.begin(), quick.end(), isSynth));
    const auto full = scanned(true, false);
    EXPECT_EQ(full.size(), 3u);
    EXPECT_TRUE(std::any_of(full.begin(), full.end(), isSynth));
}

TEST_F(RealScanner, SurvivesAPluginThatCrashesBansItAndFindsTheOthers)
{
    const auto before = TestPlugin("good/vst2_effect");
    const auto crashing = TestPlugin("bad/crash_in_entry");
    const auto after = TestPlugin("good/vst2_synth");
    const auto names = Names({before, crashing, after}, true);
    EXPECT_EQ(names.size(), 2u);
    const auto& banned = *BannedPluginManager::GetInstance();
    EXPECT_TRUE(banned.IsBanned(crashing));
    EXPECT_EQ(std::distance(banned.BannedBegin(), banned.BannedEnd()), 1);
    const auto info = banned.GetBanInfo(crashing);
    ASSERT_TRUE(info);
    EXPECT_NE(info->reason, "");
    EXPECT_TRUE(std::filesystem::exists(prefs / BannedPluginManager::GetSettingsFileName()));
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(RealScanner, CancelledBansNothingAndLeavesNoProcess)
{
    shown.onStep = [] { return true; };
    Names({TestPlugin("good/vst2_effect"), TestPlugin("bad/loops_forever")}, true);
    const auto& banned = *BannedPluginManager::GetInstance();
    EXPECT_EQ(banned.BannedBegin(), banned.BannedEnd());
    EXPECT_TRUE(ScannersEnd());
}

} // namespace
} // namespace zetaudiopluginhostui
