#include "commands/CommandLine.h"

#include <regex>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/TimeEntry.h>
#include <zettesting/Environment.h>
#include <zettesting/HostFixture.h>
#include <zettesting/NoDisplay.h>

#include "commands/Version.h"
#include "terminal/Console.h"

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
        {"reload", "--all", "x.so"},
        {"list", "--failed", "--banned"},
        {"list", "--failed", "--enabled"},
        {"list", "--failed", "--disabled"},
        {"scan", "--in-process", "--timeout", "3"},
        {"scan", "--in-process", "--jobs", "3"},
        {"list", "--jobs", "3"},
        {"list", "--timeout", "0"},
        {"list", "--timeout", "-1"},
        {"list", "--timeout", "soon"},
        {"list", "--skin", "pink"},
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

TEST(CommandLine, WrongUsageIsSaidWithTheProgramTheWrongWordAndTheChoices)
{
    const zettesting::NoDisplay noDisplay;
    const std::string program = "zetaudiopluginmanager: ";
    const std::string commands =
        "there are manage, scan, list, enable, disable, ban, reload, folders and report\n";
    const auto more = [&program](const std::string& command) {
        return program + "'zetaudiopluginmanager" + command + " --help' tells more\n";
    };
    const struct
    {
        Arguments arguments;
        std::string said;
    } cases[] = {
        {{"--skin", "pink", "folders"}, program + "--skin pink: there are classic and v7\n"},
        {{"--timeout", "soon", "folders"},
         program + "--timeout soon: a number of seconds above 0 is expected\n"},
        {{}, program + "a command is needed; " + commands + more("")},
        {{"frobnicate"}, program + "there is no command frobnicate; " + commands + more("")},
        {{"--client"}, program + "--client needs a value: NAME\n" + more("")},
        {{"list", "--filter"}, program + "--filter needs a value: TEXT\n" + more(" list")},
        {{"list", "stray"}, program + "list takes no more words: stray\n" + more(" list")},
        {{"folders", "frob"},
         program + "there is no command frob; there are list, add, remove and reset\n" + more(" folders")},
        {{"folders", "reset", "x"}, program + "reset takes no more words: x\n" + more(" folders reset")},
        {{"enable"}, program + "enable needs --all or PLUGIN-FILE\n" + more(" enable")},
        {{"ban"}, program + "ban needs a PLUGIN-FILE\n" + more(" ban")},
        {{"list", "--enabled", "--banned"},
         program + "--enabled and --banned do not go together\n" + more(" list")},
        {{"reload", "--al"},
         program +
             "there is no option --al; there are --help, --all, --version, --prefs, --client, --skin, "
             "--theme, --lang, "
             "--timeout and --quiet\n" +
             more(" reload")},
    };
    for (const auto& each : cases) {
        std::ostringstream output;
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunCommandLine(each.arguments, output), 2) << testing::PrintToString(each.arguments);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), each.said);
        EXPECT_EQ(output.str(), "") << testing::PrintToString(each.arguments);
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

TEST_F(CommandLineInAFolder, TheTimeoutGoesBeforeTheEnvironmentsAndLeavesItsOtherSwitchesAlone)
{
    const std::string others = "One=1;zetaudiofilterscan.EntityTimeoutSeconds=500;Other=2";
    const zettesting::ScopedEnvironment environment("ZET_DEBUG_DATABASE", others);
    std::ostringstream output;
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunCommandLine({"--prefs", prefs.string(), "--timeout", "7.5", "folders"}, output), 0);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(EnvironmentText("ZET_DEBUG_DATABASE"), others + ";zetaudiofilterscan.EntityTimeoutSeconds=7.5");
    EXPECT_EQ(zetcore::debug::TimeFromDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds", {}),
              std::chrono::milliseconds(7500));
}

TEST_F(CommandLineInAFolder, TheNumberOfJobsReachesTheScannerAndLeavesItsOtherSwitchesAlone)
{
    const std::string others = "One=1;zetaudiofilterscan.Workers=3;Other=2";
    const zettesting::ScopedEnvironment environment("ZET_DEBUG_DATABASE", others);
    for (const std::string jobs : {"1", "16"}) {
        zettesting::ScopedEnvironment before("ZET_DEBUG_DATABASE", others);
        std::ostringstream output;
        testing::internal::CaptureStderr();
        // There is nothing to scan, so that no scanner is started.
        EXPECT_EQ(RunCommandLine({"--prefs", prefs.string(), "scan", "--jobs", jobs, "no such file"}, output),
                  2);
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("there is no such plug-in file"));
        EXPECT_EQ(EnvironmentText("ZET_DEBUG_DATABASE"), others + ";zetaudiofilterscan.Workers=" + jobs);
        EXPECT_EQ(zetcore::debug::DebugDatabase::Instance().GetEntry("zetaudiofilterscan.Workers", ""), jobs);
    }
}

TEST_F(CommandLineInAFolder, ANumberOfJobsThatCannotBeIsRefused)
{
    for (const std::string jobs : {"0", "17", "-1", "+1", "1.5", "many", "", " 4", "99999999999999999999"}) {
        std::ostringstream output;
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunCommandLine({"--prefs", prefs.string(), "scan", "--jobs=" + jobs}, output), 2) << jobs;
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_THAT(said, HasSubstr("--jobs")) << jobs;
        EXPECT_EQ(output.str(), "") << jobs;
    }
    std::ostringstream output;
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunCommandLine({"--prefs", prefs.string(), "scan", "--jobs", "17"}, output), 2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zetaudiopluginmanager: --jobs 17: a number from 1 to 16 is expected\n");
}

TEST(CommandLine, HelpNamesEveryCommandAndExitStatus)
{
    std::ostringstream output;
    EXPECT_EQ(RunCommandLine({"--help"}, output), 0);
    for (const char* text : {"scan",   "list",      "enable",  "disable",      "ban",
                             "reload", "folders",   "--prefs", "--client",     "--skin",
                             "--lang", "--timeout", "--quiet", "Exit status:", "  0 ",
                             "  1 ",   "  2 ",      "  3 ",    "  4 ",         "  130 "})
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
    EXPECT_EQ(output.str(), VersionLine() + "\n");
    EXPECT_TRUE(
        std::regex_match(output.str(), std::regex("zetaudiopluginmanager [0-9]+\\.[0-9]+\\.[0-9]+( .*)?\n")))
        << output.str();
}

} // namespace

} // namespace zetaudiopluginmanager
