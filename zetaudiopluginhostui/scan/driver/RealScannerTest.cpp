// The driver scans real modules with the real scanner process.
#include <algorithm>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/string/Utf.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/Patience.h>
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
    /// The names of all working plug-ins, in order.
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

    std::vector<std::string> LogsOfScans() const
    {
        std::vector<std::string> logs;
        if (std::filesystem::exists(prefs / "scan-logs"))
            for (const auto& entry : std::filesystem::directory_iterator(prefs / "scan-logs"))
                logs.push_back(zettesting::ReadAll(entry.path()));
        return logs;
    }

    RecordingPresentation shown;
};

TEST_F(RealScanner, FindsTheSameInASeparateProcessAsInThisOne)
{
    const std::vector<PluginLocator> plugins{
        TestPlugin("good/vst2_effect"), TestPlugin("good/vst2_synth"), TestPlugin("good/vst2_shell"),
        TestPlugin("good/vst3_with_moduleinfo"), TestPlugin("good/vst3_several_classes")};
    const auto outside = Names(plugins, true);
    ResetRegistry(*PluginModuleInfoManager::GetInstance());
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
    // A shell is skipped when its plug-ins are there as VST3 too.
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

TEST_F(RealScanner, BegunAgainRightAfterACancelItHasAllWorkersAndKnowsOfNoKill)
{
    constexpr std::size_t workers = 8;
    // The host's kill always comes before the scanner has cleared up.
    const zettesting::ScopedEnvironment fault("ZET_FAULT", "supervisor.closed:1:kill");
    zettesting::WriteAll(prefs / "DebugDatabase.txt",
                         "zetaudiofilterscan.EntityTimeoutSeconds = 500\nzetaudiofilterscan.Workers = " +
                             std::to_string(workers) + "\n");
    std::vector<PluginLocator> hanging;
    for (std::size_t number = 0; number < workers; ++number)
        hanging.push_back(
            zetaudiofilterhost::LocatorOfModuleFile(zettesting::ToWide(zettesting::CopyTestPlugin(
                "bad/hangs_on_load", folder.Path(), "hangs" + std::to_string(number)))));
    std::vector<std::size_t> running;
    std::chrono::steady_clock::time_point giveUp;
    shown.onInput = [&] {
        running.back() = zettesting::ProcessesWithEnvironment((folder / "runtime").string()).size();
        return running.back() > workers || std::chrono::steady_clock::now() >= giveUp;
    };
    for (int scan = 1; scan <= 3; ++scan) {
        giveUp = std::chrono::steady_clock::now() + zettesting::patience;
        running.push_back(0);
        Names(hanging, true);
    }
    // The supervisor, and at least one process for each worker.
    EXPECT_THAT(running, ::testing::Each(::testing::Gt(workers)));
    for (const auto& log : LogsOfScans())
        EXPECT_THAT(log, ::testing::Not(::testing::HasSubstr("killed")));
    const auto& banned = *BannedPluginManager::GetInstance();
    EXPECT_EQ(banned.BannedBegin(), banned.BannedEnd());
    EXPECT_TRUE(ScannersEnd());
}

} // namespace
} // namespace zetaudiopluginhostui
