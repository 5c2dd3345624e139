#include <gmock/gmock.h>

#include <zettesting/UnwritableFile.h>

#include "ManagerFixture.h"

namespace {

using testing::HasSubstr;

class UnsavedBan : public ManagerFixture
{};

TEST_F(UnsavedBan, ABanThatCannotBeSavedIsOneAndNamesTheFile)
{
    const auto bad = Install("good/vst2_effect", "blamed");
    RunWell({"scan"});
    RunWell({"ban", Install("good/vst2_synth", "other").string()});
    zettesting::WriteAll(prefs / "ScannedPluginPath.txt", "VST|" + bad.string() + "|");
    const auto list = prefs / "BannedAudioPlugins.xml";
    const zettesting::UnwritableFile unwritable(list);
    const auto result = Run({"list"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.error, HasSubstr("Preferences folder"));
    EXPECT_THAT(result.error, HasSubstr("An error occurred when scanning the plug-in '" + bad.string()));
    EXPECT_THAT(result.error, HasSubstr(list.string()));
    // The ban of the other host is known as soon as the file can be read.
    EXPECT_THAT(result.output, testing::AnyOf(HasSubstr("1 banned"), HasSubstr("2 banned")));
}

} // namespace
