#include "commands/CompleteCommand.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <zettesting/HostFixture.h>
#include <zettesting/TextOf.h>

#include "commands/CommandLine.h"
#include "session/Language.h"

namespace zetaudiopluginmanager {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CompleteCommand : public zettesting::HostFixture
{
  protected:
    /// The exit status and what the program has printed.
    std::pair<int, std::string> Complete(const std::string& list)
    {
        std::ostringstream output;
        testing::internal::CaptureStderr();
        const int status = RunCommandLine({"--prefs", prefs.string(), "complete", list}, output);
        said = testing::internal::GetCapturedStderr();
        return {status, output.str()};
    }
    void WriteBans(const std::string& content) const
    {
        std::ofstream(BannedFile(), std::ios::binary) << content;
    }
    std::filesystem::path BannedFile() const { return prefs / "BannedAudioPlugins.xml"; }
    std::vector<std::string> FilesInPreferences() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(prefs))
            names.push_back(entry.path().filename().string());
        return names;
    }

    std::string said;
};

TEST_F(CompleteCommand, PrintsEachBannedFileOnceAndWritesNothing)
{
    const std::string content = R"(<?xml version="1.0" encoding="UTF-8"?>
<bannedplugins version="1.0">
  <plugin locator="VST|/p/shell.so|One" reason="r"/>
  <plugin locator="VST|/p/shell.so|Two" reason="r"/>
  <plugin locator="CLAP|/p/a file.clap|" reason="r"/>
  <plugin locator="VST|/p/line%0Aend.so|" reason="r"/>
</bannedplugins>
)";
    WriteBans(content);
    EXPECT_EQ(Complete("banned"), std::pair(0, std::string("/p/a file.clap\n/p/shell.so\n")));
    EXPECT_EQ(said, "");
    EXPECT_THAT(FilesInPreferences(), ElementsAre("BannedAudioPlugins.xml"));
    EXPECT_EQ(zettesting::ReadAll(BannedFile()), content);
}

TEST_F(CompleteCommand, LeavesADamagedListForTheCommandThatTellsOfIt)
{
    WriteBans("<bannedplugins");
    EXPECT_EQ(Complete("banned"), std::pair(0, std::string()));
    EXPECT_THAT(FilesInPreferences(), ElementsAre("BannedAudioPlugins.xml"));
}

TEST_F(CompleteCommand, PrintsNothingWhereNothingIsBanned)
{
    EXPECT_EQ(Complete("banned"), std::pair(0, std::string()));
    EXPECT_THAT(FilesInPreferences(), ElementsAre());
}

TEST_F(CompleteCommand, PrintsTheLanguages)
{
    std::string expected;
    for (const std::string& language : AvailableLanguages())
        expected += language + "\n";
    EXPECT_EQ(Complete("languages"), std::pair(0, expected));
    EXPECT_THAT(expected, HasSubstr("de\n"));
}

TEST_F(CompleteCommand, RefusesAnotherListAndNamesTheOnesThereAre)
{
    EXPECT_EQ(Complete("pets"), std::pair(2, std::string()));
    EXPECT_EQ(said, "zetaudiopluginmanager: complete pets: there are banned and languages\n");
}

TEST_F(CompleteCommand, IsNotInTheHelp)
{
    std::ostringstream output;
    EXPECT_EQ(RunCommandLine({"--help"}, output), 0);
    EXPECT_THAT(output.str(), testing::Not(HasSubstr("complete")));
}

} // namespace

} // namespace zetaudiopluginmanager
