#include <sstream>

#include "reference/Completions.h"

namespace zetaudiopluginmanager {

namespace {

std::string QuotedForFish(const std::string& text)
{
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\')
            quoted += '\\';
        quoted += character;
    }
    return quoted + "'";
}

std::string WordsFor(WordKind kind, const std::vector<std::string>& words)
{
    switch (kind) {
    case WordKind::File:
        return " -F";
    case WordKind::Folder:
        return " -a '(__fish_complete_directories)'";
    case WordKind::BannedFile:
    case WordKind::Language:
        return " -a '(__zetaudiopluginmanager_list " + CompletionListOf(kind) + ")'";
    case WordKind::OneOf: {
        std::string joined;
        for (const std::string& word : words)
            joined += (joined.empty() ? "" : " ") + word;
        return " -a " + QuotedForFish(joined);
    }
    case WordKind::Nothing:
    case WordKind::AnyText:
        break;
    }
    return "";
}

void WriteCommand(std::ostream& script, const CommandText& command, const std::string& path)
{
    const std::string complete = "complete -c zetaudiopluginmanager -n ";
    for (const OptionText& option : command.options) {
        // The program's own options may stand anywhere.
        script << complete
               << QuotedForFish(path.empty() ? "true" : "__zetaudiopluginmanager_is_below" + path);
        for (const std::string& name : option.names)
            script << (name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1));
        if (!option.value.empty())
            script << " -x" << WordsFor(option.kind, option.words);
        script << " -d " << QuotedForFish(option.description) << '\n';
    }
    const std::string here = QuotedForFish("__zetaudiopluginmanager_is_at" + path);
    for (const CommandText& each : command.commands)
        script << complete << here << " -a " << each.name << " -d " << QuotedForFish(each.description)
               << '\n';
    if (!command.operand.empty())
        script << complete << here << WordsFor(command.operandKind, {}) << '\n';
    for (const CommandText& each : command.commands)
        WriteCommand(script, each, path + " " + each.name);
}

/// The options that take a value, and all paths of commands, for the function that reads the command line.
void CollectNames(const CommandText& command, const std::string& path, std::string& valued,
                  std::string& paths)
{
    for (const OptionText& option : command.options)
        if (!option.value.empty())
            for (const std::string& name : option.names)
                valued += " " + name;
    for (const CommandText& each : command.commands) {
        const std::string deeper = path.empty() ? each.name : path + " " + each.name;
        paths += " " + QuotedForFish(deeper);
        CollectNames(each, deeper, valued, paths);
    }
}

constexpr const char* functions = R"(
# The command before the cursor, for example "folders add". Values of options are no commands.
function __zetaudiopluginmanager_path
    set -l path
    set -l skip no
    for word in (commandline -opc)[2..]
        if test $skip = yes
            set skip no
        else if contains -- $word $__zetaudiopluginmanager_valued
            set skip yes
        else if contains -- (string trim -- "$path $word") $__zetaudiopluginmanager_paths
            set path (string trim -- "$path $word")
        end
    end
    echo $path
end

function __zetaudiopluginmanager_is_at
    test (__zetaudiopluginmanager_path) = "$argv"
end

function __zetaudiopluginmanager_is_below
    string match -q -- "$argv*" (__zetaudiopluginmanager_path)
end

# The words of one of the program's lists, from the preferences folder that the command line names.
function __zetaudiopluginmanager_list
    set -l where
    set -l option
    set -l words (commandline -opc)
    for word in $words[2..]
        if test -n "$option"
            set -a where "$option=$word"
            set option
        else if contains -- $word --prefs --client
            set option $word
        else if string match -q -- '--prefs=*' $word; or string match -q -- '--client=*' $word
            set -a where $word
        end
    end
    eval (string escape -- $words[1]) (string escape -- $where) complete $argv 2>/dev/null
end

complete -c zetaudiopluginmanager -f
)";

} // namespace

std::string WriteFishCompletion(const CommandText& program)
{
    std::string valued, paths;
    CollectNames(program, "", valued, paths);
    std::ostringstream script;
    script << "# Completes the command line of zetaudiopluginmanager in fish.\n\n"
           << "set -g __zetaudiopluginmanager_valued" << valued << '\n'
           << "set -g __zetaudiopluginmanager_paths" << paths << '\n'
           << functions;
    WriteCommand(script, program, "");
    return script.str();
}

} // namespace zetaudiopluginmanager
