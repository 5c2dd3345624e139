#include "reference/ManualPage.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace zetaudiopluginmanager {

namespace {

/// A text as `man` reads it: a dash is a dash of commands, and no line is taken for an instruction.
std::string QuotedForRoff(const std::string& text)
{
    std::string quoted;
    bool lineBegins = true;
    for (const char character : text) {
        if (character == '\\')
            quoted += "\\e";
        else if (character == '-')
            quoted += "\\-";
        else if (lineBegins && (character == '.' || character == '\''))
            quoted += std::string("\\&") + character;
        else
            quoted += character;
        lineBegins = character == '\n';
    }
    return quoted;
}

std::string Bold(const std::string& text)
{
    return "\\fB" + QuotedForRoff(text) + "\\fR";
}

std::string Italic(const std::string& text)
{
    return "\\fI" + QuotedForRoff(text) + "\\fR";
}

std::string NamesOf(const OptionText& option)
{
    std::string names;
    for (const std::string& name : option.names)
        names += (names.empty() ? "" : ", ") + Bold(name);
    return option.value.empty() ? names : names + " " + Italic(option.value);
}

void WriteOptions(std::ostream& page, const CommandText& command)
{
    for (const OptionText& option : command.options)
        page << ".TP\n" << NamesOf(option) << '\n' << QuotedForRoff(option.description) << '\n';
}

/// A command as it is typed, with options and words that follow.
std::string UseOf(const std::string& name, const CommandText& command)
{
    std::string use = Bold(name);
    if (!command.options.empty())
        use += " [" + Italic("OPTION") + "...]";
    if (command.operand.empty())
        return use;
    const std::string operand = Italic(command.operand) + "...";
    return use + " " + (command.operandRequired ? operand : "[" + operand + "]");
}

/// The option that every command has is told once.
CommandText WithoutHelp(CommandText command)
{
    std::erase_if(command.options, [](const OptionText& option) {
        return std::find(option.names.begin(), option.names.end(), "--help") != option.names.end();
    });
    return command;
}

void WriteCommand(std::ostream& page, const std::string& before, const CommandText& described)
{
    const CommandText command = WithoutHelp(described);
    const std::string name = before + command.name;
    page << ".SS " << UseOf(name, command) << '\n' << QuotedForRoff(command.description) << ".\n";
    WriteOptions(page, command);
    for (const CommandText& each : command.commands)
        WriteCommand(page, name + " ", each);
}

/// The help's last part has sentences, and then the exit statuses, one a line.
void WriteFooter(std::ostream& page, const std::string& footer)
{
    std::istringstream lines(footer);
    page << ".SH NOTES\n";
    bool inTable = false, isFirst = true;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty())
            continue;
        if (line == "Exit status:") {
            page << ".SH EXIT STATUS\n";
            inTable = true;
            continue;
        }
        if (!inTable) {
            page << (isFirst ? "" : ".PP\n") << QuotedForRoff(line) << '\n';
            isFirst = false;
            continue;
        }
        std::istringstream words(line);
        std::string status, meaning;
        words >> status >> std::ws;
        std::getline(words, meaning);
        page << ".TP\n" << Bold(status) << '\n' << QuotedForRoff(meaning) << '\n';
    }
}

/// The installed documents, and what somebody who reads a manual page would look for in each.
constexpr std::pair<const char*, const char*> documents[] = {
    {"docs/troubleshooting.md",
     "A plug-in is not listed, does not work or was banned; logs; how to report a problem"},
    {"docs/questions.md", "Quick scans, the folders that are searched, bans, traces"},
    {"docs/files.md", "The preferences, logs, switches and environment variables"},
    {"SECURITY.md", "What a plug-in can reach while it is scanned"},
    {"docs/embedding.md", "Scans in programs of your own (Debian: package libzetaudiopluginhostui-dev)"}};

void WriteDocuments(std::ostream& page)
{
    page << ".SH DOCUMENTS\nThey lie in " << Italic("share/doc/zetaudiopluginhostui")
         << " below the folder into which the program was installed (" << Italic("/usr")
         << " where it came as a package).\n";
    for (const auto& [name, content] : documents)
        page << ".TP\n" << Italic(name) << '\n' << QuotedForRoff(content) << '\n';
}

} // namespace

std::string WriteManualPage(const CommandText& program, const std::string& version)
{
    std::string title = program.name;
    std::transform(title.begin(), title.end(), title.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    std::string summary = program.description;
    while (summary.ends_with('.'))
        summary.pop_back();
    std::ostringstream page;
    page << ".TH " << title << " 1 \"\" \"" << program.name << ' ' << version << "\" \"User Commands\"\n"
         << ".SH NAME\n"
         << program.name << " \\- " << QuotedForRoff(summary) << '\n'
         << ".SH SYNOPSIS\n"
         << Bold(program.name) << " [" << Italic("OPTION") << "...] [" << Italic("COMMAND") << "]\n"
         << ".SH OPTIONS\nThey may stand before the command and after it.\n";
    WriteOptions(page, program);
    page << ".SH COMMANDS\n";
    for (const CommandText& command : program.commands)
        WriteCommand(page, "", command);
    WriteFooter(page, program.footer);
    WriteDocuments(page);
    page << ".SH SEE ALSO\n" << Bold("zetaudiofilterscan") << "(1)\n";
    return page.str();
}

} // namespace zetaudiopluginmanager
