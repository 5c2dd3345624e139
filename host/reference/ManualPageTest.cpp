#include "reference/ManualPage.h"

#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zetaudiopluginmanager {

namespace {

using testing::HasSubstr;

CommandText SmallProgram()
{
    CommandText program;
    program.name = "tool";
    program.description = "Does things.";
    program.options = {{{"-h", "--help"}, "Say how", "", WordKind::Nothing, {}},
                       {{"--size"}, ".5 or C:\\x", "N", WordKind::AnyText, {}}};
    program.footer = "A note.\n'quoted'\n\nExit status:\n  0    done\n  130  cancelled";
    CommandText command;
    command.name = "go";
    command.description = "Go there";
    command.options = {{{"-h", "--help"}, "Say how", "", WordKind::Nothing, {}},
                       {{"--fast"}, "Run", "", WordKind::Nothing, {}}};
    command.operand = "PLACE";
    command.operandRequired = true;
    program.commands = {command};
    return program;
}

TEST(ManualPage, TellsOptionsCommandsNotesAndExitStatuses)
{
    const std::string page = WriteManualPage(SmallProgram(), "1.2.3");
    EXPECT_THAT(page, HasSubstr(".TH TOOL 1 \"\" \"tool 1.2.3\""));
    EXPECT_THAT(page, HasSubstr("tool \\- Does things\n"));
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-\\-size\\fR \\fIN\\fR\n"));
    EXPECT_THAT(page, HasSubstr(".SS \\fBgo\\fR [\\fIOPTION\\fR...] \\fIPLACE\\fR...\nGo there.\n"));
    EXPECT_THAT(page, HasSubstr(".TP\n\\fB\\-\\-fast\\fR\nRun\n"));
    EXPECT_THAT(page, HasSubstr(".SH NOTES\nA note.\n"));
    EXPECT_THAT(page, HasSubstr(".SH EXIT STATUS\n.TP\n\\fB0\\fR\ndone\n.TP\n\\fB130\\fR\ncancelled\n"));
}

TEST(ManualPage, NamesTheDocuments)
{
    const std::string page = WriteManualPage(SmallProgram(), "1.2.3");
    EXPECT_THAT(page, HasSubstr("\n.SH DOCUMENTS\nThey lie in \\fIshare/doc/zetaudiopluginhostui\\fR "));
    EXPECT_THAT(page, HasSubstr("\n.TP\n\\fIdocs/troubleshooting.md\\fR\nA plug\\-in is not listed"));
    EXPECT_THAT(page, HasSubstr("\n.TP\n\\fISECURITY.md\\fR\n"));
}

TEST(ManualPage, TakesNoTextForAnInstruction)
{
    const std::string page = WriteManualPage(SmallProgram(), "1.2.3");
    EXPECT_THAT(page, HasSubstr("\n\\&.5 or C:\\ex\n"));
    EXPECT_THAT(page, HasSubstr("\n\\&'quoted'\n"));
}

TEST(ManualPage, TellsTheHelpOptionOnce)
{
    const std::string page = WriteManualPage(SmallProgram(), "1.2.3");
    EXPECT_EQ(page.find("Say how"), page.rfind("Say how"));
    EXPECT_THAT(page, HasSubstr("Say how"));
}

TEST(ManualPage, HasEveryTextOfTheProgram)
{
    const CommandText program = DescribeProgram();
    // Quotes and fonts are `man`'s own.
    const std::string page =
        std::regex_replace(WriteManualPage(program, "1.2.3"), std::regex(R"(\\f[BIR]|\\&|\\)"), "");
    const auto expectAll = [&page](const auto& self, const CommandText& command) -> void {
        EXPECT_THAT(page, HasSubstr(command.name));
        for (const OptionText& option : command.options) {
            EXPECT_THAT(page, HasSubstr(option.names.back()));
            EXPECT_THAT(page, HasSubstr(option.description));
        }
        for (const CommandText& each : command.commands) {
            EXPECT_THAT(page, HasSubstr(each.description));
            self(self, each);
        }
    };
    expectAll(expectAll, program);
    EXPECT_THAT(page, HasSubstr("the scanner process could not be started"));
}

} // namespace

} // namespace zetaudiopluginmanager
