#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace zetaudiopluginmanager {

/// The words of a place of the command line, as far as a shell can offer something for it.
enum class WordKind
{
    Nothing,
    AnyText,
    File,
    Folder,
    BannedFile,
    Language,
    OneOf,
};

/// An option, as the parser describes it.
struct OptionText
{
    /// With their dashes, the short ones first.
    std::vector<std::string> names;
    std::string description;
    /// How the help calls its value. Empty for a flag.
    std::string value;
    WordKind kind = WordKind::Nothing;
    /// The words of `OneOf`.
    std::vector<std::string> words;
};

/// A command, or the program itself, with what may follow it.
struct CommandText
{
    std::string name;
    std::string description;
    std::vector<OptionText> options;
    /// How the help calls the words that follow. Empty where none may.
    std::string operand;
    WordKind operandKind = WordKind::Nothing;
    bool operandRequired = false;
    std::vector<CommandText> commands;
    /// The end of the program's help.
    std::string footer;
};

/// Everything that the parser's help shows; hidden commands are left out. The parser is that of
/// `AddOptionsAndCommands`.
CommandText DescribeCommands(const CLI::App& app);

/// The same for this program, as it is where there is a display.
CommandText DescribeProgram();

} // namespace zetaudiopluginmanager
