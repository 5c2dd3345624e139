#include <gmock/gmock.h>
#include <zettesting/UnwritableFile.h>

#include "testing/CrashRecoveryFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;

class UnwritableLists : public CrashRecoveryFixture
{};

TEST_F(UnwritableLists, ABannedListThatCannotBeWrittenShowsBothAlertsAndBansForThisRun)
{
    Start();
    const zettesting::UnwritableFile heldList(bannedList);
    WriteMarker(plugin);
    EXPECT_THAT(Start(), ElementsAre(AccessAlert(), ScanErrorAlert("/plugins/Bad one.so")));
    EXPECT_TRUE(banned.IsBanned(plugin));
    EXPECT_FALSE(std::filesystem::exists(marker)) << "the marker is deleted all the same";
    EXPECT_THAT(Start(), ElementsAre()) << "and the ban was for one run only";
    EXPECT_FALSE(banned.IsBanned(plugin));
}

TEST_F(UnwritableLists, BothAlertsBelongToTheHostsWindow)
{
    Start();
    const zettesting::UnwritableFile heldList(bannedList);
    WriteMarker(plugin);
    const HWND parent = reinterpret_cast<HWND>(std::uintptr_t{0x123450});
    Start(parent);
    EXPECT_THAT(shown.parents, ElementsAre(parent, parent));
}

TEST_F(UnwritableLists, WhenNoListCanBeWrittenTheUserIsToldSoOnce)
{
    const zettesting::UnwritableFile unsupported(unsupportedList);
    const zettesting::UnwritableFile heldList(bannedList);
    WriteMarker(plugin);
    EXPECT_THAT(Start(), ElementsAre(AccessAlert(), ScanErrorAlert("/plugins/Bad one.so")));
    EXPECT_TRUE(banned.IsBanned(plugin));
}

} // namespace
} // namespace zetaudiopluginhostui
