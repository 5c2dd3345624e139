// The scan that looks for the plug-ins itself.
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include "testing/AudioPluginScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using zetaudiofilterhost::TechnologyType;

class CollectingScanTest : public AudioPluginScanFixture
{
  protected:
    CollectingScanTest()
    {
        for (const auto type : {TechnologyType::VST, TechnologyType::VST3, TechnologyType::AU})
            registry.GetPluginTechnology(type)->SetPluginDirectories({});
        std::filesystem::create_directories(folder / "plugins");
        registry.GetPluginTechnology(TechnologyType::VST)
            ->SetPluginDirectories({zettesting::ToWide(folder / "plugins")});
    }
    PluginLocator MakeModule(const std::string& name) { return MakeFile(name + ZET_TEST_MODULE_SUFFIX); }
    void ScanAll(bool rescanExisting)
    {
        shown.calls.clear();
        scan->ScanForPlugins(nullptr, rescanExisting, false, true, false);
    }
};

TEST_F(CollectingScanTest, ScansNewPluginsOnlyUnlessExistingOnesAreToBeScannedAgain)
{
    const auto a = MakeModule("a");
    ScanAll(false);
    EXPECT_THAT(shown.Starting("step"), ElementsAre("step " + Path(a) + " (0/1)"));
    ScanAll(false);
    EXPECT_THAT(shown.Starting("step"), IsEmpty());
    ScanAll(true);
    EXPECT_THAT(shown.Starting("step"), SizeIs(1));
}

TEST_F(CollectingScanTest, PluginsWhoseFilesAreGoneLeaveTheRegistryBeforeTheScan)
{
    const auto a = MakeModule("a");
    const auto gone = MakeModule("gone");
    ScanAll(false);
    ASSERT_TRUE(IsKnown(gone));
    std::filesystem::remove(folder / "plugins" / ("gone" ZET_TEST_MODULE_SUFFIX));
    MakeModule("new");
    bool knownDuringScan = true;
    shown.onStep = [&] {
        knownDuringScan = IsKnown(gone);
        return false;
    };
    ScanAll(false);
    EXPECT_FALSE(knownDuringScan);
    EXPECT_FALSE(IsSaved(gone));
    EXPECT_TRUE(IsKnown(a));
}

TEST_F(CollectingScanTest, ThePlaceTheWindowAndTheFlagsAreHandedOn)
{
    const auto a = MakeModule("a");
    const auto window = reinterpret_cast<HWND>(std::uintptr_t{0x1234});
    for (const bool disableShellSkipping : {false, true}) {
        const int number = Launches() + 1;
        Script(number, {"listen", "ok", "ok", Info(none, 0, 0, false)});
        scan->ScanForPlugins(window, true, disableShellSkipping, !disableShellSkipping, true);
        ASSERT_EQ(Launches(), number);
        EXPECT_TRUE(Log(number).at(1).ends_with(disableShellSkipping ? ",true,false]" : ",false,true]"))
            << Log(number).at(1);
        EXPECT_EQ(Log(number).at(2), "BeginScanForPlugins [[" + Quoted(a) + "]]");
    }
    EXPECT_THAT(shown.parents, ElementsAre(window, window));
}

} // namespace
} // namespace zetaudiopluginhostui
