#include <gmock/gmock.h>

#include "testing/CrashRecoveryFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;

class UnwritableLists : public CrashRecoveryFixture
{
  protected:
    /// Links into a folder that is not there: as if missing for a reader, and not to be written, even by an
    /// administrator.
    void MakeUnwritable(const std::filesystem::path& file) const
    {
        std::filesystem::remove(file);
        std::filesystem::create_symlink(folder / "missing" / file.filename(), file);
    }
};

TEST_F(UnwritableLists, ABannedListThatCannotBeWrittenShowsBothAlertsAndBansForThisRun)
{
    Start();
    MakeUnwritable(bannedList);
    WriteMarker(plugin);
    EXPECT_THAT(Start(), ElementsAre(AccessAlert(), ScanErrorAlert("/plugins/Bad one.so")));
    EXPECT_TRUE(banned.IsBanned(plugin));
    EXPECT_FALSE(std::filesystem::exists(marker)) << "the marker is deleted all the same";
    EXPECT_THAT(Start(), ElementsAre()) << "and the ban was for one run only";
    EXPECT_FALSE(banned.IsBanned(plugin));
}

TEST_F(UnwritableLists, WhenNoListCanBeWrittenTheUserIsToldSoOnce)
{
    MakeUnwritable(unsupportedList);
    MakeUnwritable(bannedList);
    WriteMarker(plugin);
    EXPECT_THAT(Start(), ElementsAre(AccessAlert(), ScanErrorAlert("/plugins/Bad one.so")));
    EXPECT_TRUE(banned.IsBanned(plugin));
}

} // namespace
} // namespace zetaudiopluginhostui
