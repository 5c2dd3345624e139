// A save that fails half-way; its steps can be made to fail on POSIX systems.
#include <gmock/gmock.h>
#include <zettesting/ScopedFaults.h>

#include "testing/ManagerRunFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

using DoPluginManagerDialogFailedSave = ManagerRunFixture;

TEST_F(DoPluginManagerDialogFailedSave, ReportsNoChangeWhateverHasBecomeOfTheFile)
{
    SaveTwoPlugins();
    const zettesting::ScopedFaults faults("write." + configuration.filename().string() + ".open:1:no-space");
    EXPECT_FALSE(Run([&](QWidget& window) {
        Click(window, "Disable All");
        // The save keeps it aside before it fails.
        zettesting::WriteAll(configuration, "<pluginconfiguration><mod");
        PressOk(window);
    }));
    EXPECT_FALSE(std::filesystem::exists(configuration));
    EXPECT_THAT(shown->calls, ElementsAre(StartsWith("caution ")));
}

} // namespace
} // namespace zetaudiopluginhostui
