#include "reference/CommandTexts.h"

#include <algorithm>

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/LookNames.h"

namespace zetaudiopluginmanager {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Not;

const CommandText& Named(const CommandText& command, const std::string& name)
{
    const auto found = std::ranges::find(command.commands, name, &CommandText::name);
    if (found == command.commands.end())
        throw std::runtime_error("there is no command " + name);
    return *found;
}

const OptionText& OptionOf(const CommandText& command, const std::string& name)
{
    const auto found = std::ranges::find_if(command.options, [&name](const OptionText& option) {
        return std::ranges::find(option.names, name) != option.names.end();
    });
    if (found == command.options.end())
        throw std::runtime_error("there is no option " + name);
    return *found;
}

TEST(CommandTexts, HaveTheCommandsThatTheHelpShows)
{
    const CommandText program = DescribeProgram();
    std::vector<std::string> names;
    for (const CommandText& command : program.commands)
        names.push_back(command.name);
    for (const char* shown : {"manage", "scan", "list", "enable", "disable", "ban", "reload", "folders"})
        EXPECT_THAT(names, Contains(shown));
    EXPECT_THAT(names, Not(Contains("complete")));
    EXPECT_EQ(program.name, "zetaudiopluginmanager");
    EXPECT_EQ(Named(Named(program, "folders"), "add").operand, "FOLDER");
}

TEST(CommandTexts, TellFlagsFromOptionsWithValues)
{
    const CommandText program = DescribeProgram();
    EXPECT_EQ(OptionOf(program, "--quiet").value, "");
    EXPECT_EQ(OptionOf(program, "--quiet").kind, WordKind::Nothing);
    EXPECT_EQ(OptionOf(program, "--version").value, "");
    EXPECT_EQ(OptionOf(program, "--timeout").value, "SECONDS");
    EXPECT_EQ(OptionOf(program, "--timeout").kind, WordKind::AnyText);
    EXPECT_THAT(OptionOf(program, "--help").names, ElementsAre("-h", "--help"));
}

TEST(CommandTexts, KnowWhatMayStandInEachPlace)
{
    const CommandText program = DescribeProgram();
    EXPECT_EQ(OptionOf(program, "--prefs").kind, WordKind::Folder);
    EXPECT_EQ(OptionOf(program, "--lang").kind, WordKind::Language);
    EXPECT_EQ(OptionOf(program, "--skin").kind, WordKind::OneOf);
    EXPECT_THAT(OptionOf(program, "--skin").words, ElementsAreArray(SkinNames()));
    EXPECT_THAT(OptionOf(program, "--theme").words, ElementsAreArray(ThemeNames()));
    const OptionText progress = OptionOf(Named(program, "scan"), "--progress");
    EXPECT_EQ(progress.value, "KIND");
    EXPECT_EQ(progress.kind, WordKind::OneOf);
    EXPECT_THAT(progress.words, ElementsAre("json"));
    EXPECT_EQ(Named(program, "scan").operandKind, WordKind::File);
    EXPECT_EQ(Named(program, "reload").operandKind, WordKind::BannedFile);
    EXPECT_EQ(Named(Named(program, "folders"), "add").operandKind, WordKind::Folder);
    EXPECT_EQ(Named(program, "list").operandKind, WordKind::Nothing);
    EXPECT_TRUE(Named(program, "ban").operandRequired);
    EXPECT_FALSE(Named(program, "scan").operandRequired);
}

TEST(CommandTexts, TakeTheWordsOfAValueFromTheParsersCheck)
{
    CLI::App app("tool");
    std::string speed, size;
    app.add_option("--speed", speed)->type_name("SPEED")->check(CLI::IsMember({"slow", "fast"}));
    app.add_option("--size", size)->type_name("N")->check(CLI::Range(1, 9));
    const CommandText program = DescribeCommands(app);
    EXPECT_EQ(OptionOf(program, "--speed").value, "SPEED");
    EXPECT_EQ(OptionOf(program, "--speed").kind, WordKind::OneOf);
    EXPECT_THAT(OptionOf(program, "--speed").words, ElementsAre("slow", "fast"));
    // A range is no list of words.
    EXPECT_EQ(OptionOf(program, "--size").value, "N");
    EXPECT_EQ(OptionOf(program, "--size").kind, WordKind::AnyText);
    EXPECT_THAT(OptionOf(program, "--size").words, ElementsAre());
}

// Each shell has marks of its own for what is behind a value. No text of the parser's may be read as one of
// them.
TEST(CommandTexts, NameValuesWithoutMarks)
{
    const auto look = [](const CommandText& command, const auto& again) -> void {
        for (const OptionText& option : command.options)
            EXPECT_EQ(option.value.find_first_of(":{}()[]'$`"), std::string::npos) << option.value;
        for (const CommandText& each : command.commands)
            again(each, again);
    };
    look(DescribeProgram(), look);
}

TEST(CommandTexts, DescribeEveryOptionAndCommand)
{
    const CommandText program = DescribeProgram();
    for (const CommandText& command : program.commands) {
        EXPECT_NE(command.description, "") << command.name;
        for (const OptionText& option : command.options)
            EXPECT_NE(option.description, "") << command.name << ' ' << option.names.front();
    }
}

} // namespace

} // namespace zetaudiopluginmanager
