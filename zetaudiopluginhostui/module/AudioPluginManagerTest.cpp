#include <zetaudiopluginhostui/AudioPluginManager.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <type_traits>

#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zettesting/HostFixture.h>

namespace zetaudiopluginhostui {
namespace {

constexpr char quickScanKey[] = "zetaudiofilterhost.EnableQuickEffectScan";
constexpr char shellSkippingKey[] = "zetaudiofilterhost.EnableWavesVST2ShellSkipping";

using zetcore::debug::DebugDatabase;

using FeatureSwitches = zettesting::HostFixture;

/// The processes in which it runs make their folders in this one's, because their ends leave them behind.
class FeatureSwitchesDeathTest : public FeatureSwitches
{
  protected:
    std::ptrdiff_t FoldersOfProcesses() const
    {
        return std::count_if(std::filesystem::directory_iterator(folder.Path()), {}, [](const auto& entry) {
            return entry.path().filename().string().starts_with("zettest-");
        });
    }

  private:
    const zettesting::ScopedTemporaryFolder temporary{folder.Path()};
};

TEST_F(FeatureSwitches, ADebugSwitchIsOnOnlyWhenTheEntryIsExactlyTrue)
{
    struct Case
    {
        const char* entry;
        bool on;
    };
    for (const Case& each : {Case{"true", true},
                             {"True", false},
                             {"TRUE", false},
                             {"1", false},
                             {"", false},
                             {"truely", false},
                             {"tru", false},
                             {"false", false}}) {
        DebugDatabase::Instance().SetEntry("some.key", each.entry);
        EXPECT_EQ(DebugDatabase::Instance().IsOn("some.key", true), each.on) << each.entry;
        EXPECT_EQ(DebugDatabase::Instance().IsOn("some.key", false), each.on) << each.entry;
    }
    EXPECT_TRUE(DebugDatabase::Instance().IsOn("another.key", true));
    EXPECT_FALSE(DebugDatabase::Instance().IsOn("another.key", false));
}

TEST_F(FeatureSwitches, NoEntryEnablesShellSkipping)
{
    EXPECT_TRUE(AudioPluginManager::IsVST2ShellSkippingFeatureEnabled());
}

TEST_F(FeatureSwitches, TrueWithACapitalTDisablesShellSkipping)
{
    DebugDatabase::Instance().SetEntry(shellSkippingKey, "True");
    EXPECT_FALSE(AudioPluginManager::IsVST2ShellSkippingFeatureEnabled());
}

TEST_F(FeatureSwitches, ShellSkippingIsReadAfreshOnEveryCall)
{
    EXPECT_TRUE(AudioPluginManager::IsVST2ShellSkippingFeatureEnabled());
    DebugDatabase::Instance().SetEntry(shellSkippingKey, "false");
    EXPECT_FALSE(AudioPluginManager::IsVST2ShellSkippingFeatureEnabled());
    DebugDatabase::Instance().SetEntry(shellSkippingKey, "true");
    EXPECT_TRUE(AudioPluginManager::IsVST2ShellSkippingFeatureEnabled());
}

// The quick scan's switch is read once a process: each of these asks a process of its own.

[[noreturn]] void ExitWithQuickScan()
{
    std::exit(AudioPluginManager::IsQuickEffectScanFeatureEnabled() ? 10 : 20);
}

TEST_F(FeatureSwitchesDeathTest, NoEntryEnablesTheQuickEffectScan)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(ExitWithQuickScan(), ::testing::ExitedWithCode(10), "");
    EXPECT_EQ(FoldersOfProcesses(), 1) << "it goes with this one's";
}

TEST_F(FeatureSwitchesDeathTest, TrueWithACapitalTDisablesTheQuickEffectScan)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    DebugDatabase::Instance().SetEntry(quickScanKey, "True");
    EXPECT_EXIT(ExitWithQuickScan(), ::testing::ExitedWithCode(20), "");
}

TEST_F(FeatureSwitchesDeathTest, TheQuickEffectScanIsReadOnceAProcess)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    DebugDatabase::Instance().SetEntry(quickScanKey, "false");
    EXPECT_EXIT(
        {
            const bool first = AudioPluginManager::IsQuickEffectScanFeatureEnabled();
            DebugDatabase::Instance().SetEntry(quickScanKey, "true");
            const bool second = AudioPluginManager::IsQuickEffectScanFeatureEnabled();
            std::exit(!first && !second ? 30 : 40);
        },
        ::testing::ExitedWithCode(30), "");
}

TEST(AudioPluginManager, ThereIsOneInstanceThatHoldsNothingButItsVirtualTable)
{
    static_assert(sizeof(AudioPluginManager) == sizeof(void*));
    static_assert(std::has_virtual_destructor_v<AudioPluginManager>);
    static_assert(std::is_default_constructible_v<AudioPluginManager> &&
                  std::is_copy_constructible_v<AudioPluginManager> &&
                  std::is_copy_assignable_v<AudioPluginManager>);
    EXPECT_EQ(&AudioPluginManager::GetInstance(), &AudioPluginManager::GetInstance());
}

TEST(AudioPluginManagerSettings, IsAPlainRecordWithItsDefaults)
{
    static_assert(std::is_trivially_copyable_v<AudioPluginManagerSettings>);
    static_assert(offsetof(AudioPluginManagerSettings, rescanExisting) <
                      offsetof(AudioPluginManagerSettings, sortColumn) &&
                  offsetof(AudioPluginManagerSettings, sortColumn) <
                      offsetof(AudioPluginManagerSettings, sortAscending) &&
                  offsetof(AudioPluginManagerSettings, sortAscending) <
                      offsetof(AudioPluginManagerSettings, hostFlag) &&
                  offsetof(AudioPluginManagerSettings, hostFlag) <
                      offsetof(AudioPluginManagerSettings, dialogBounds));
    const AudioPluginManagerSettings settings;
    EXPECT_FALSE(settings.rescanExisting);
    EXPECT_EQ(settings.sortColumn, 0u);
    EXPECT_FALSE(settings.sortAscending);
    EXPECT_TRUE(settings.hostFlag);
    EXPECT_EQ(settings.dialogBounds, (zetcore::geom::RectT<int>{0, 0, 0, 0}));
}

} // namespace
} // namespace zetaudiopluginhostui
