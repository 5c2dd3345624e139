#include <sstream>

#include "reference/Completions.h"

namespace zetaudiopluginmanager {

namespace {

/// A description in square brackets, inside single quotes.
std::string QuotedForZsh(const std::string& text)
{
    std::string quoted;
    for (const char character : text) {
        if (character == '[' || character == ']' || character == ':' || character == '\\')
            quoted += '\\';
        quoted += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return quoted;
}

std::string ZshActionFor(WordKind kind, const std::vector<std::string>& words)
{
    switch (kind) {
    case WordKind::File:
        return "_files";
    case WordKind::Folder:
        return "_path_files -/";
    case WordKind::BannedFile:
    case WordKind::Language:
        return "_zetaudiopluginmanager_list " + CompletionListOf(kind);
    case WordKind::OneOf: {
        std::string action = "(";
        for (const std::string& word : words)
            action += (action.size() > 1 ? " " : "") + word;
        return action + ")";
    }
    case WordKind::Nothing:
    case WordKind::AnyText:
        break;
    }
    return " ";
}

void WriteOptions(std::ostream& script, const CommandText& command, const std::string& indent)
{
    for (const OptionText& option : command.options)
        for (const std::string& name : option.names) {
            const bool takesValue = !option.value.empty();
            script << indent << '\'' << name << (takesValue && name.starts_with("--") ? "=" : "") << '['
                   << QuotedForZsh(option.description) << ']';
            if (takesValue)
                script << ':' << option.value << ':' << ZshActionFor(option.kind, option.words);
            script << "'\n";
        }
}

void WriteFunction(std::ostream& script, const CommandText& command, const std::string& name)
{
    script << "\n" << name << "() {\n    local -a options=(\n        $program_options\n";
    if (!command.commands.empty()) {
        // Inside a command's function, its own options count.
        WriteOptions(script, command, "        ");
        script << "    )\n    local -a commands=(\n";
        for (const CommandText& each : command.commands)
            script << "        '" << each.name << ':' << QuotedForZsh(each.description) << "'\n";
        script << "    )\n    local state\n"
                  "    _arguments -C $options '1: :->command' '*:: :->rest'\n"
                  "    case $state in\n"
                  "    command) _describe -t commands command commands ;;\n"
                  "    rest)\n        case $words[1] in\n";
        for (const CommandText& each : command.commands)
            script << "        " << each.name << ") " << name << '_' << each.name << " ;;\n";
        script << "        esac\n        ;;\n    esac\n}\n";
    } else {
        WriteOptions(script, command, "        ");
        script << "    )\n    _arguments $options";
        if (!command.operand.empty())
            script << " '*:" << command.operand << ':' << ZshActionFor(command.operandKind, {}) << '\'';
        script << "\n}\n";
    }
    for (const CommandText& each : command.commands)
        WriteFunction(script, each, name + '_' + each.name);
}

constexpr const char* zshBeginning = R"(#compdef zetaudiopluginmanager
# Completes the command line of zetaudiopluginmanager in zsh.

# Offers the words of one of the program's lists, from the preferences folder that the command line names.
_zetaudiopluginmanager_list() {
    local -a found where
    local index
    for ((index = 2; index < $#whole_line; ++index)); do
        case $whole_line[index] in
        --prefs | --client) where+=("$whole_line[index]=${(Q)whole_line[index + 1]/#\~\//$HOME/}") ;;
        --prefs=* | --client=*) where+=("${(Q)whole_line[index]}") ;;
        esac
    done
    # The list's name comes last, behind the settings of zsh's own.
    found=("${(@f)$("${(Q)whole_line[1]}" $where complete $@[-1] 2>/dev/null)}")
    [[ -z $found ]] || compadd "${@[1,-2]}" -f -a found
}
)";

} // namespace

std::string WriteZshCompletion(const CommandText& program)
{
    CommandText withoutOptions = program;
    withoutOptions.options.clear();
    std::ostringstream script;
    script << zshBeginning;
    WriteFunction(script, withoutOptions, "_zetaudiopluginmanager_command");
    script << "\n_zetaudiopluginmanager() {\n    local -a whole_line=(\"${words[@]}\")\n"
              "    # They may stand before a command and after it.\n    local -a program_options=(\n";
    WriteOptions(script, program, "        ");
    script << "    )\n    _zetaudiopluginmanager_command\n}\n\n_zetaudiopluginmanager \"$@\"\n";
    return script.str();
}

} // namespace zetaudiopluginmanager
