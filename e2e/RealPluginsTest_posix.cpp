#include <algorithm>
#include <filesystem>
#include <set>

#include "ManagerFixture.h"

namespace {

using Strings = std::vector<std::string>;

/// The test suite's set-up installs these plug-ins from the distribution's packages.
class RealPlugins : public ManagerFixture
{
  protected:
    void SetUp() override
    {
        for (const char* each : {"/usr/lib/lxvst/DragonflyHallReverb-vst.so", "/usr/lib/vst/lsp-plugins",
                                 "/usr/lib/vst/Kars-vst.so", "/usr/lib/vst/iem.at",
                                 "/usr/lib/vst/ZynAddSubFX.so", "/usr/lib/vst/amsynth_vst.so"}) {
            ASSERT_TRUE(std::filesystem::exists(each))
                << "The test needs the packages lsp-plugins-vst, dragonfly-reverb-vst, dpf-plugins-vst, "
                   "iem-plugin-suite-vst, zynaddsubfx-vst and amsynth; '"
                << each << "' is not there. './dev test' installs them.";
        }
        UseFolders({"/usr/lib/vst", "/usr/lib/lxvst"});
    }
};

TEST_F(RealPlugins, BothWaysOfScanningFindTheSameAndNoneIsBanned)
{
    const ScanSummary external = Scan();
    EXPECT_EQ(external.exitStatus, 0) << external.messages;
    EXPECT_EQ(external.banned, Strings());
    const auto foundExternally = List();
    EXPECT_GE(foundExternally.size(), 150u);
    EXPECT_EQ(external.found, static_cast<long long>(foundExternally.size()));
    for (const ListedPlugin& plugin : foundExternally) {
        EXPECT_NE(plugin.name, "") << plugin.path;
        EXPECT_NE(plugin.vendor, "") << plugin.path;
    }

    // Leaks of plug-ins in the host's process are not the host's.
    environment["ASAN_OPTIONS"] = "detect_leaks=0";
    const ScanSummary inProcess = Scan({"--rescan", "--in-process"});
    EXPECT_EQ(inProcess.exitStatus, 0) << inProcess.messages;
    EXPECT_EQ(inProcess.banned, Strings());
    EXPECT_EQ(inProcess.scanned, external.scanned);
    EXPECT_EQ(List(), foundExternally);
}

TEST_F(RealPlugins, ASecondScanHasNothingToDo)
{
    Scan();
    EXPECT_EQ(Scan().scanned, 0);
}

} // namespace
