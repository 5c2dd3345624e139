#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using Strings = std::vector<std::string>;

/// Plug-in files that are named on the command line.
class Formats : public ManagerFixture
{
  protected:
    std::filesystem::path RegistryFile() const { return prefs / "AudioPlugins.xml"; }
};

TEST_F(Formats, AFileThatIsNotNamedLikeAPluginIsRefused)
{
    const auto known = Install("good/vst2_effect", "known");
    RunWell({"scan"});
    const auto before = List();
    const auto notes = plugins / "notes.txt";
    zettesting::WriteAll(notes, "no plug-in");
    for (const char* command : {"scan", "ban"}) {
        const auto result = Run({command, notes.string(), known.string()});
        EXPECT_EQ(result.exitStatus, 2) << command;
        EXPECT_THAT(result.error,
                    AllOf(HasSubstr("not named like a plug-in"), HasSubstr(".vst3"),
                          HasSubstr(std::string(zettesting::ModuleSuffix())), HasSubstr(notes.string())))
            << command;
    }
    for (const char* command : {"enable", "disable", "reload"})
        EXPECT_EQ(Run({command, notes.string()}).exitStatus, 2) << command;
    EXPECT_EQ(List(), before);
}

TEST_F(Formats, AFileThatIsOnlyNamedLikeAPluginIsToldByTheScan)
{
    const auto notes = plugins / ("notes" + std::string(zettesting::ModuleSuffix()));
    zettesting::WriteAll(notes, "Buy bread, then milk.\n");
    const std::string told = "Passed over: 1 file, no plug-in for this system or left out on purpose; "
                             "looked at again when it changes\n"
                             "    notes  " +
                             notes.string() + "\n        a text file\n";
    EXPECT_THAT(RunWell({"scan"}), HasSubstr(told));
    EXPECT_THAT(RunWell({"scan"}), Not(HasSubstr("Passed over"))) << "it is not looked at again";
    EXPECT_THAT(RunWell({"scan", notes.string()}), HasSubstr(told));
    const ScanSummary summary = Scan({"--rescan"});
    EXPECT_EQ(summary.passedOver, Strings{notes.string()});
    EXPECT_EQ(summary.reasons.at(notes.string()), "a text file");
    EXPECT_EQ(List({"--failed"}).size(), 0u);
    EXPECT_THAT(RunWell({"report", "-"}), HasSubstr("    a text file\n"));
}

TEST_F(Formats, APluginThatIsKnownUnderAnOddNameIsStillFoundByIt)
{
    const auto odd = plugins / "odd.plug";
    std::filesystem::copy_file(zettesting::TestPlugin("good/vst2_effect"), odd);
    zettesting::WriteAll(RegistryFile(),
                         "<audioplugins version=\"1.1\"><technology name=\"VST\"><folder path=\"" +
                             plugins.string() + "\"/></technology><module locator=\"VST|" + odd.string() +
                             "|\" name=\"Odd\" effect=\"true\"/></audioplugins>");
    RunWell({"disable", odd.string()});
    EXPECT_EQ(ListedPaths({"--disabled"}), Strings{odd.string()});
    EXPECT_EQ(Scan({odd.string()}).found, 1);
    RunWell({"ban", odd.string()});
    EXPECT_EQ(ListedPaths({"--banned"}), Strings{odd.string()});
    EXPECT_THAT(RunWell({"reload", odd.string()}), HasSubstr("1 plug-in found"));
}

TEST_F(Formats, WhatAnotherSystemsFormatHasInTheRegistryStays)
{
    const auto component = folder / "Other.component";
    zettesting::WriteAll(RegistryFile(),
                         "<audioplugins version=\"1.1\"><technology name=\"AU\"><folder path=\"" +
                             folder.Path().string() + "\"/></technology><module locator=\"AU|" +
                             component.string() +
                             "|aufx\" name=\"Component\" effect=\"true\"/></audioplugins>");
    RunWell({"disable", component.string()});
    const auto listed = List({"--disabled"});
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_EQ(listed.front().technology, "AU");
    EXPECT_EQ(listed.front().subcomponent, "aufx");
    EXPECT_THAT(RunWell({"folders"}), HasSubstr("AU    " + folder.Path().string()));
    RunWell({"folders", "remove", folder.Path().string()});
    EXPECT_THAT(RunWell({"folders"}), Not(HasSubstr("AU ")));
}

TEST_F(Formats, AFolderIsAddedForEveryFormatThatCanBeLoaded)
{
    const auto more = folder / "more";
    std::filesystem::create_directory(more);
    RunWell({"folders", "add", more.string()});
    const std::string folders = RunWell({"folders"});
    EXPECT_THAT(folders, AllOf(HasSubstr("VST   " + more.string()), HasSubstr("VST3  " + more.string()),
                               Not(HasSubstr("AU "))));
}

// On Linux, the name of the user's own folder looks like an extension.
TEST_F(Formats, AFolderWithNothingButAnExtensionForItsNameIsNoBundle)
{
    const auto own = folder / ".vst3";
    std::filesystem::create_directory(own);
    const auto single = zettesting::CopyTestPlugin("good/vst3_single_file", own, "single");
    const auto bundle = zettesting::CopyTestPlugin("good/vst3_without_moduleinfo", own, "bundle");
    EXPECT_EQ(Scan({single.string()}).found, 1);
    EXPECT_EQ(ListedPaths(), Strings{single.string()});
    EXPECT_EQ(Scan({own.string()}).found, 2);
    EXPECT_EQ(ListedPaths(), (Strings{bundle.string(), single.string()}));
}

} // namespace
