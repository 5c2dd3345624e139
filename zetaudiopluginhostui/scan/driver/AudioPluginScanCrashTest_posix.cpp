// A plug-in can bring down the host that scans it in its own process, and the marker that would say so may
// not be writable. The tests fork and kill processes, and make the file system fail.
#include <csignal>

#include <unistd.h>

#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetaudiopluginhostui/Module.h>
#include <zettesting/ScopedFaults.h>

#include "scan/driver/ScanMarker.h"
#include "testing/AudioPluginScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;

class ScanDeathTest : public AudioPluginScanFixture
{
  protected:
    /// Scans in a process of its own, which is killed where the last of the plug-ins would be loaded.
    void ScanUpToTheLoadOfTheLast(const std::vector<PluginLocator>& plugins)
    {
        // A forked process, which has this test's folder.
        GTEST_FLAG_SET(death_test_style, "fast");
        const zettesting::ScopedFaults faults("host.plugin-loading:" + std::to_string(plugins.size()) +
                                              ":kill");
        EXPECT_EXIT(Scan(plugins), ::testing::KilledBySignal(SIGKILL), "");
    }
};

TEST_F(ScanDeathTest, EverythingFoundSoFarIsSavedBeforeTheNextPluginIsLoaded)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    const auto c = MakeFile("c.so");
    const auto other = MakeKnownFile("other.so");
    // A scan keeps each result at once. Only the save keeps a choice that the user makes meanwhile.
    int step = 0;
    shown.onStep = [&] {
        if (++step == 3)
            registry.Find(other)->SetEnabled(false);
        return false;
    };
    ScanUpToTheLoadOfTheLast({a, b, c});
    EXPECT_EQ(MarkerText(), MarkerOf(c));
    EXPECT_TRUE(IsSaved(a));
    EXPECT_TRUE(IsSaved(b));
    EXPECT_FALSE(IsSaved(c));
    PluginModuleInfoManager loaded;
    loaded.LoadConfiguration(zetcore::filesupport::File(zettesting::ToWide(Saved())));
    ASSERT_NE(loaded.Find(other), nullptr);
    EXPECT_FALSE(loaded.Find(other)->IsEnabled());
}

TEST_F(ScanDeathTest, WhatWasNotReachedIsKeptAside)
{
    const auto a = MakeKnownFile("a.so");
    const auto b = MakeKnownFile("b.so");
    const auto c = MakeKnownFile("c.so");
    ScanUpToTheLoadOfTheLast({a, b, c});
    PluginModuleInfoManager loaded;
    loaded.LoadConfiguration(zetcore::filesupport::File(zettesting::ToWide(Saved())));
    EXPECT_EQ(loaded.Find(c), nullptr);
    EXPECT_THAT(loaded.PutBackUnreached(), ElementsAre(c));
}

TEST_F(ScanDeathTest, EveryLocatorThatAScanCanMarkIsBannedExactlyAtTheNextStart)
{
    Initialize();
    auto& banned = *zetaudiopluginhost::BannedPluginManager::GetInstance();
    for (const PluginLocator& each :
         {PluginLocator(TechnologyType::VST, L"/short.so"),
          PluginLocator(TechnologyType::VST3, L"/a b/\x00E4\x00F6\x4E2D\x1F3B9.vst3"),
          PluginLocator(TechnologyType::AU, L"aufx:a|b%\r\n\t\"<>&:" + std::wstring(5000, L'x')),
          PluginLocator(TechnologyType::VST, L"/shell.so", L"H\x00E4ll | 1"),
          PluginLocator(TechnologyType::VST, L"/shell.so", L"1396851060"),
          PluginLocator(TechnologyType::VST, std::wstring(L"/stray") + static_cast<wchar_t>(0xDCFF))}) {
        ScanUpToTheLoadOfTheLast({each});
        ASSERT_EQ(MarkerText(), MarkerOf(each));
        ResetBannedPlugins(banned);
        std::filesystem::remove(prefs / banned.GetSettingsFileName());
        shown.calls.clear();
        AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(nullptr, nullptr);
        EXPECT_THAT(shown.Starting("caution"), SizeIs(1)) << MarkerOf(each);
        EXPECT_THAT(std::vector<PluginLocator>(banned.BannedBegin(), banned.BannedEnd()), ElementsAre(each));
        EXPECT_FALSE(std::filesystem::exists(Marker()));
        ResetBannedPlugins(banned);
    }
    Terminate();
}

class MarkerFault : public AudioPluginScanFixture
{
  protected:
    std::vector<std::string> MarkersOfAScan(const std::vector<PluginLocator>& plugins)
    {
        std::vector<std::string> markers;
        shown.onStep = [&] {
            markers.push_back(MarkerText());
            return false;
        };
        Scan(plugins);
        return markers;
    }

    const PluginLocator a = MakeFile("a.so");
    const PluginLocator b = MakeFile("b.so");
    const PluginLocator c = MakeFile("c.so");
};

TEST_F(MarkerFault, AMarkerThatCannotBeReplacedIsDeletedAndTheScanGoesOnWithoutOne)
{
    const zettesting::ScopedFaults faults("write.ScannedPluginPath.txt.open:2:read-only");
    EXPECT_THAT(MarkersOfAScan({a, b, c}), ElementsAre(MarkerOf(a), "no marker", "no marker"));
    for (const auto& plugin : {a, b, c})
        EXPECT_TRUE(IsSaved(plugin));
    // Nobody would know which plug-in caused a crash, and the user is told so.
    EXPECT_THAT(shown.Starting("caution"), ElementsAre(Caution(), Caution()));
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
}

TEST_F(MarkerFault, AMarkerThatStaysIsNotThereWhileAnotherPluginIsLoaded)
{
    const zettesting::ScopedFaults faults(
        "write.ScannedPluginPath.txt.open:2:denied;delete.ScannedPluginPath.txt:1:denied");
    EXPECT_THAT(MarkersOfAScan({a, b, c}), ElementsAre(MarkerOf(a), MarkerOf(a), MarkerOf(a)));
    EXPECT_TRUE(IsSaved(a));
    EXPECT_FALSE(IsKnown(b));
    EXPECT_FALSE(IsKnown(c));
    EXPECT_THAT(shown.Starting("caution"), SizeIs(1));
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::GaveUp);
}

TEST_F(MarkerFault, WhereNobodyMayLookAnOldMarkerMayBeThere)
{
    GTEST_FLAG_SET(death_test_style, "fast");
    constexpr int isStale = 7;
    constexpr uid_t nobody = 65534;
    zettesting::WriteAll(Marker(), MarkerOf(a));
    std::filesystem::permissions(prefs, std::filesystem::perms::none);
    EXPECT_EXIT(
        {
            // The administrator may look everywhere.
            if (::geteuid() == 0 && ::seteuid(nobody) != 0)
                _exit(1);
            _exit(ScanMarker::Write(b).state == ScanMarker::State::Stale ? isStale : 0);
        },
        ::testing::ExitedWithCode(isStale), "");
    std::filesystem::permissions(prefs, std::filesystem::perms::owner_all);
}

} // namespace
} // namespace zetaudiopluginhostui
