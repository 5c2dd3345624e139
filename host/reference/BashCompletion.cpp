#include <sstream>

#include "reference/Completions.h"

namespace zetaudiopluginmanager {

namespace {

std::string Joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

/// The part of the script for a place at which words of this kind stand.
std::string BashActionFor(WordKind kind, const std::vector<std::string>& words)
{
    switch (kind) {
    case WordKind::File:
        return "files";
    case WordKind::Folder:
        return "folders";
    case WordKind::BannedFile:
    case WordKind::Language:
        return "list " + CompletionListOf(kind);
    case WordKind::OneOf:
        return "words " + Joined(words);
    case WordKind::Nothing:
    case WordKind::AnyText:
        break;
    }
    return "nothing";
}

void WriteValues(std::ostream& script, const CommandText& command)
{
    for (const OptionText& option : command.options) {
        if (option.value.empty())
            continue;
        std::string names;
        for (const std::string& name : option.names)
            names += (names.empty() ? "" : " | ") + name;
        script << "    " << names << ") action=\"" << BashActionFor(option.kind, option.words) << "\" ;;\n";
    }
    for (const CommandText& each : command.commands)
        WriteValues(script, each);
}

void WritePlaces(std::ostream& script, const CommandText& command, const std::string& path)
{
    std::vector<std::string> options, commands;
    for (const OptionText& option : command.options)
        options.insert(options.end(), option.names.begin(), option.names.end());
    for (const CommandText& each : command.commands)
        commands.push_back(each.name);
    script << "    \"" << path << "\")\n        options=\"" << Joined(options) << "\" commands=\""
           << Joined(commands) << "\" operand=\"" << BashActionFor(command.operandKind, {})
           << "\"\n        ;;\n";
    for (const CommandText& each : command.commands)
        WritePlaces(script, each, path + " " + each.name);
}

constexpr const char* bashBeginning = R"(# Completes the command line of zetaudiopluginmanager in bash.

# The value of an option decides what is offered for it. Sets `action`.
_zetaudiopluginmanager_value() {
    action=
    case $1 in
)";

constexpr const char* afterValues = R"(    esac
    [ -n "$action" ]
}

# Sets what a command takes: `options`, `commands` and `operand`.
_zetaudiopluginmanager_place() {
    case $1 in
)";

constexpr const char* ending = R"(    *) return 1 ;;
    esac
}

# The words of one of the program's lists, from the preferences folder that the command line names.
_zetaudiopluginmanager_list() {
    "${COMP_WORDS[0]}" "${where[@]}" complete "$1" 2>/dev/null
}

_zetaudiopluginmanager_offer() {
    local action=$1 line
    case $action in
    files) return ;;
    folders) compopt +o default -o dirnames ;;
    list*)
        compopt +o default -o filenames
        while IFS= read -r line; do
            [[ $line != "$plain"* ]] || COMPREPLY+=("$line")
        done < <(_zetaudiopluginmanager_list "${action#list }")
        ;;
    words*)
        compopt +o default
        mapfile -t COMPREPLY < <(compgen -W "${action#words }" -- "$current")
        ;;
    *) compopt +o default ;;
    esac
}

_zetaudiopluginmanager() {
    local current=${COMP_WORDS[COMP_CWORD]} plain path= index word action options commands operand
    local program_options= only_words= where=()
    COMPREPLY=()
    # "=" is a word of its own: "--lang=de" is three words.
    [ "$current" != = ] || current=
    # The user may have begun with a quote, or quoted single characters.
    plain=${current#[\"\']}
    plain=${plain//\\/}
    _zetaudiopluginmanager_place ""
    program_options=$options
    for ((index = 1; index < COMP_CWORD; ++index)); do
        word=${COMP_WORDS[index]}
        if [ -z "$only_words" ] && _zetaudiopluginmanager_value "$word"; then
            [ "${COMP_WORDS[index + 1]}" != = ] || ((++index))
            if ((++index >= COMP_CWORD)); then
                _zetaudiopluginmanager_offer "$action"
                return
            fi
            case $word in
            --prefs | --client)
                # The value is as the user typed it, with its quotes.
                word+="=${COMP_WORDS[index]/#\~\//$HOME/}"
                word=${word//[\\\"\']/}
                where+=("$word")
                ;;
            esac
        elif [ -z "$only_words" ] && [ "$word" = -- ]; then
            only_words=yes
        elif [ -z "$only_words" ] && [[ " $commands " == *" $word "* ]]; then
            path+=" $word"
            _zetaudiopluginmanager_place "$path"
        fi
    done
    if [ -z "$only_words" ] && [[ $current == -* ]]; then
        compopt +o default
        mapfile -t COMPREPLY < <(compgen -W "$options $program_options" -- "$current")
        # Both lists have some options.
        mapfile -t COMPREPLY < <(printf '%s\n' "${COMPREPLY[@]}" | sort -u)
    elif [ -n "$commands" ]; then
        compopt +o default
        mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
    else
        _zetaudiopluginmanager_offer "$operand"
    fi
}

complete -o default -F _zetaudiopluginmanager zetaudiopluginmanager
)";

} // namespace

std::string CompletionListOf(WordKind kind)
{
    if (kind == WordKind::BannedFile)
        return "banned";
    return kind == WordKind::Language ? "languages" : "";
}

std::string WriteBashCompletion(const CommandText& program)
{
    std::ostringstream script;
    script << bashBeginning;
    WriteValues(script, program);
    script << afterValues;
    WritePlaces(script, program, "");
    script << ending;
    return script.str();
}

} // namespace zetaudiopluginmanager
