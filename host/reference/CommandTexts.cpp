#include "reference/CommandTexts.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "commands/Choice.h"
#include "commands/LookNames.h"

namespace zetaudiopluginmanager {

namespace {

/// The names that the parser's texts have for values, and what they stand for.
WordKind KindOf(const std::string& name, const CLI::App& command)
{
    if (name == "PLUGIN-FILE")
        return command.get_name() == "reload" ? WordKind::BannedFile : WordKind::File;
    if (name == "FILE")
        return WordKind::File;
    if (name == "DIR" || name == "FOLDER")
        return WordKind::Folder;
    if (name == "TAG")
        return WordKind::Language;
    return name.empty() ? WordKind::Nothing : WordKind::AnyText;
}

/// The parser writes the words that it checks for behind the name: "KIND:{json,text}". The checks of skins
/// and themes are our own.
std::vector<std::string> WordsOf(const std::string& name, const std::string& checks)
{
    if (name == "SKIN")
        return SkinNames();
    if (name == "THEME")
        return ThemeNames();
    if (!checks.starts_with('{') || !checks.ends_with('}'))
        return {};
    return CLI::detail::split(checks.substr(1, checks.size() - 2), ',');
}

OptionText Describe(const CLI::Option& option, const CLI::App& command)
{
    OptionText text;
    for (const std::string& name : option.get_snames())
        text.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        text.names.push_back("--" + name);
    text.description = option.get_description();
    if (option.get_items_expected_max() == 0)
        return text;
    const std::string type = option.get_type_name();
    const std::size_t colon = type.find(':');
    text.value = type.substr(0, colon);
    text.words = WordsOf(text.value, colon == std::string::npos ? "" : type.substr(colon + 1));
    text.kind = text.words.empty() ? KindOf(text.value, command) : WordKind::OneOf;
    return text;
}

bool IsHidden(const CLI::App& command)
{
    return command.get_group().empty();
}

} // namespace

CommandText DescribeCommands(const CLI::App& app)
{
    CommandText text;
    text.name = app.get_name();
    text.description = app.get_description();
    text.footer = app.get_footer();
    for (const CLI::Option* option : app.get_options()) {
        if (!option->get_positional()) {
            text.options.push_back(Describe(*option, app));
            continue;
        }
        text.operand = option->get_name(true);
        text.operandKind = KindOf(text.operand, app);
        text.operandRequired = option->get_required();
    }
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        if (!IsHidden(*command))
            text.commands.push_back(DescribeCommands(*command));
    return text;
}

CommandText DescribeProgram()
{
    Choice choice;
    CLI::App app(programDescription, "zetaudiopluginmanager");
    AddOptionsAndCommands(app, choice, true);
    return DescribeCommands(app);
}

} // namespace zetaudiopluginmanager
