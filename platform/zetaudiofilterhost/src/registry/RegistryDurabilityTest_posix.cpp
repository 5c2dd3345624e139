// When a save returns, its content is on the medium.
#include <gmock/gmock.h>
#include <zettesting/RecordedFileCalls_posix.h>

#include "testing/RegistryFixture.h"

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RegistryDurabilityTest : public RegistryFixture
{
  protected:
    std::vector<std::string> CallsOfSaving()
    {
        const zettesting::RecordedFileCalls recorded;
        registry.SaveConfiguration(file, true);
        return recorded.Calls();
    }
};

TEST_F(RegistryDurabilityTest, AWholeSaveIsSynchronisedBeforeTheRenameAndItsFolderAfterIt)
{
    registry.AddModule(MakeInfo(Vst(L"/a.so")));
    const std::vector<std::string> calls = CallsOfSaving();
    EXPECT_THAT(
        calls,
        ElementsAre("synchronise temporary, " + std::to_string(std::filesystem::file_size(path)) + " bytes",
                    "rename to AudioPlugins.xml", "synchronise folder " + prefs.filename().string()));
}

TEST_F(RegistryDurabilityTest, ASaveInTheMiddleOfAScanWaitsForNothing)
{
    registry.BeginIncrementalSaves();
    registry.SaveConfiguration(file, true);
    for (const wchar_t* name : {L"/a.so", L"/b.so"}) {
        const zettesting::RecordedFileCalls recorded;
        registry.AddModule(MakeInfo(Vst(name)));
        EXPECT_THAT(CallsOfSaving(), IsEmpty());
        for (const std::string& call : recorded.Calls())
            EXPECT_EQ(call, "rename to AudioPlugins.xml.journal");
    }
}

} // namespace

} // namespace zetaudiofilterhost
