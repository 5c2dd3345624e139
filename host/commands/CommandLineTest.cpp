#include "commands/CommandLine.h"

#include <regex>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <zettesting/HostFixture.h>
#include <zettesting/NoDisplay.h>

namespace zetaudiopluginmanager {

namespace {

using testing::HasSubstr;
using Arguments = std::vector<std::string>;

class CommandLineInAFolder : public zettesting::HostFixture
{};

TEST(CommandLine, WrongUsageExitsWithTwoAndPrintsNothingToStandardOutput)
{
    // With a display, no command at all opens the manager.
    const zettesting::NoDisplay noDisplay;
    const Arguments cases[] = {
        {},
        {"frobnicate"},
        {"scan", "--no-such-option"},
        {"--prefs"},
        {"list", "--enabled", "--disabled"},
        {"list", "--banned", "--disabled"},
        {"list", "--enabled", "--banned"},
        {"list", "stray"},
        {"enable"},
        {"disable"},
        {"enable", "--all", "x.so"},
        {"ban"},
        {"reload"},
        {"folders", "frobnicate"},
        {"folders", "add"},
        {"folders", "remove"},
        {"folders", "reset", "x"},
        {"folders", "list", "add", "x"},
        {"scan", "list", "--json", "--enabled"},
    };
    for (const Arguments& arguments : cases) {
        std::ostringstream output;
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunCommandLine(arguments, output), 2) << testing::PrintToString(arguments);
        EXPECT_NE(testing::internal::GetCapturedStderr(), "") << testing::PrintToString(arguments);
        EXPECT_EQ(output.str(), "") << testing::PrintToString(arguments);
    }
}

TEST_F(CommandLineInAFolder, AFileNameInBracketsIsOneName)
{
    std::ostringstream output;
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunCommandLine({"--prefs", prefs.string(), "scan", "[no such,file]"}, output), 2);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr(std::filesystem::path("/[no such,file]").make_preferred().string() + "\n"));
}

TEST(CommandLine, HelpNamesEveryCommandAndExitStatus)
{
    std::ostringstream output;
    EXPECT_EQ(RunCommandLine({"--help"}, output), 0);
    for (const char* text : {"scan", "list", "enable", "disable", "ban", "reload", "folders", "--prefs",
                             "--client", "Exit status:", "  0 ", "  1 ", "  2 ", "  3 ", "  130 "})
        EXPECT_THAT(output.str(), HasSubstr(text));
}

TEST(CommandLine, EveryCommandHasItsOwnHelp)
{
    for (const char* command : {"scan", "list", "enable", "disable", "ban", "reload", "folders"}) {
        std::ostringstream output;
        EXPECT_EQ(RunCommandLine({command, "--help"}, output), 0);
        EXPECT_THAT(output.str(), HasSubstr(command));
    }
}

TEST(CommandLine, VersionPrintsOneLine)
{
    std::ostringstream output;
    EXPECT_EQ(RunCommandLine({"--version"}, output), 0);
    EXPECT_TRUE(
        std::regex_match(output.str(), std::regex("zetaudiopluginmanager [0-9]+\\.[0-9]+\\.[0-9]+\n")))
        << output.str();
}

} // namespace

} // namespace zetaudiopluginmanager
