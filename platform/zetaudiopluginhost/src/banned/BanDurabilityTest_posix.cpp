#include <gmock/gmock.h>
#include <zettesting/RecordedFileCalls_posix.h>

#include "testing/BannedFixture.h"

namespace zetaudiopluginhost {
namespace {

TEST_F(BannedPluginManagerTest, ABanIsOnTheMediumWhenItsSaveReturns)
{
    manager.AddBannedPlugin(first, "why");
    const zettesting::RecordedFileCalls recorded;
    manager.SaveConfiguration(ListFile());
    EXPECT_THAT(recorded.Calls(),
                testing::ElementsAre("synchronise temporary, " +
                                         std::to_string(std::filesystem::file_size(ListPath())) + " bytes",
                                     "rename to BannedAudioPlugins.xml",
                                     "synchronise folder " + prefs.filename().string()));
}

} // namespace
} // namespace zetaudiopluginhost
