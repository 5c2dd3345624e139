#include "commands/UsageError.h"

#include <algorithm>

namespace zetaudiopluginmanager {

namespace {

using Words = std::vector<std::string>;

/// The last command on the command line, or the program itself when there is no command.
const CLI::App& InnermostCommand(const CLI::App& app)
{
    const CLI::App* innermost = &app;
    while (!innermost->get_subcommands().empty())
        innermost = innermost->get_subcommands().back();
    return *innermost;
}

/// The program and its commands as a user types them: "zetaudiopluginmanager folders add".
std::string FullName(const CLI::App& command)
{
    const CLI::App* const parent = command.get_parent();
    return parent ? FullName(*parent) + " " + command.get_name() : command.get_name();
}

Words CommandsOf(const CLI::App& app)
{
    Words names;
    for (const CLI::App* command :
         app.get_subcommands([](const CLI::App* each) { return !each->get_group().empty(); }))
        names.push_back(command->get_name());
    return names;
}

/// The options of the command, then those of the commands around it.
Words OptionsOf(const CLI::App& command)
{
    Words names;
    for (const CLI::App* app = &command; app; app = app->get_parent())
        for (const CLI::Option* option : app->get_options()) {
            const std::string name = option->get_name();
            if (name.starts_with('-') && std::find(names.begin(), names.end(), name) == names.end())
                names.push_back(name);
        }
    return names;
}

/// The option that the parser's text begins with.
const CLI::Option* OptionThatBegins(const CLI::App& command, const std::string& text)
{
    for (const CLI::App* app = &command; app; app = app->get_parent())
        for (const CLI::Option* option : app->get_options())
            if (text.starts_with(option->get_name() + ":"))
                return option;
    return nullptr;
}

std::string DescribeUnexpected(const CLI::App& command, const std::string& word)
{
    if (word.starts_with('-') && word.size() > 1)
        return "there is no option " + word + "; there are " + JoinWords(OptionsOf(command));
    const Words commands = CommandsOf(command);
    if (!commands.empty())
        return "there is no command " + word + "; there are " + JoinWords(commands);
    return command.get_name() + " takes no more words: " + word;
}

std::string DescribeMissing(const CLI::App& command, const CLI::ParseError& error)
{
    const std::string text = error.what();
    const std::string missing = text.substr(0, text.find(" is required"));
    const Words commands = CommandsOf(command);
    if (!commands.empty() && missing.find("ubcommand") != std::string::npos)
        return "a command is needed; there are " + JoinWords(commands);
    return command.get_name() + " needs " + (missing.find(' ') == std::string::npos ? "a " : "") + missing;
}

template<typename Error>
bool Is(const CLI::ParseError& error)
{
    return dynamic_cast<const Error*>(&error) != nullptr;
}

std::string Describe(const CLI::App& app, const CLI::App& command, const CLI::ParseError& error)
{
    Words unexpected = app.remaining(true);
    std::erase(unexpected, "--");
    // The parser misses a command even where there is a wrong one.
    if (!unexpected.empty() && (Is<CLI::ExtrasError>(error) || Is<CLI::RequiredError>(error)))
        return DescribeUnexpected(command, unexpected.front());
    if (Is<CLI::RequiredError>(error))
        return DescribeMissing(command, error);
    const std::string text = error.what();
    if (Is<CLI::ArgumentMismatch>(error))
        if (const CLI::Option* option = OptionThatBegins(command, text))
            return option->get_name() + " needs a value: " + option->get_type_name();
    if (Is<CLI::ExcludesError>(error)) {
        constexpr std::string_view joint = " excludes ";
        if (const std::size_t at = text.find(joint); at != std::string::npos)
            return text.substr(0, at) + " and " + text.substr(at + joint.size()) + " do not go together";
    }
    return text;
}

} // namespace

std::string JoinWords(const std::vector<std::string>& words, std::string_view lastJoint)
{
    std::string text;
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (index > 0)
            text += index + 1 < words.size() ? ", " : " " + std::string(lastJoint) + " ";
        text += words[index];
    }
    return text;
}

std::string DescribeUsageError(const CLI::App& app, const CLI::ParseError& error)
{
    const CLI::App& command = InnermostCommand(app);
    return Describe(app, command, error) + "\n" + "'" + FullName(command) + " --help' tells more";
}

} // namespace zetaudiopluginmanager
