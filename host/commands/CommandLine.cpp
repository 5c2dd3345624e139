#include "commands/CommandLine.h"

#include <algorithm>
#include <array>
#include <iostream>

#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/TimeEntry.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>
#include <zetui/application/Application.h>
#include <zetui/skins/Skins.h>

#include "commands/Choice.h"
#include "commands/UsageError.h"
#include "session/Language.h"
#include "terminal/Console.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

namespace {

/// The parser would read "[a,b]" as a list of two values. Here it is one file name.
std::vector<std::string> KeepBracketedNames(std::vector<std::string> arguments)
{
    constexpr std::array<std::string_view, 5> textOptions{"--filter", "--client", "--lang", "--skin",
                                                          "--timeout"};
    std::string before;
    for (std::string& argument : arguments) {
        const bool isText = std::find(textOptions.begin(), textOptions.end(), before) != textOptions.end();
        before = argument;
        if (!isText && argument.starts_with('[') && argument.ends_with(']'))
            argument.insert(0, "./");
    }
    return arguments;
}

zetui::skins::Skin SkinOfName(const std::string& name)
{
    for (const zetui::skins::Skin skin : zetui::skins::AllSkins()) {
        if (CLI::detail::to_lower(name) == NameOf(skin))
            return skin;
    }
    throw usage_error("--skin " + name + ": there are " + JoinWords(SkinNames()));
}

void ChooseLanguage(const std::string& asked)
{
    if (!asked.empty()) {
        if (!LoadLanguage(asked))
            throw usage_error("--lang " + asked + ": there are " + JoinWords(AvailableLanguages()));
        return;
    }
    try {
        LoadLanguage(SystemLanguage());
    } catch (const std::runtime_error& error) {
        Say(error.what());
    }
}

/// Tells the limit to the scanner processes, and to the texts of this process about them.
void ChooseTimeout(const std::string& seconds)
{
    if (!zetcore::debug::ParseSeconds(seconds))
        throw usage_error("--timeout " + seconds + ": a number of seconds above 0 is expected");
    const std::string entry = zetaudiopluginhostui::entityTimeoutSeconds;
    const std::string others = EnvironmentText("ZET_DEBUG_DATABASE");
    SetEnvironmentText("ZET_DEBUG_DATABASE", (others.empty() ? "" : others + ";") + entry + "=" + seconds);
    zetcore::debug::DebugDatabase::Instance().SetEntry(entry, seconds);
}

void ChoosePreferences(const Choice& choice)
{
    if (choice.preferences.empty())
        return;
    const std::wstring folder = AbsolutePath(choice.preferences);
    if (choice.onlyLooks && !PathExists(folder))
        throw usage_error("--prefs " + choice.preferences + ": there is no such folder, and it was not made");
    zetcore::filesupport::Dir::SetPrefDir(folder);
}

ExitStatus Carry(const Choice& choice, std::ostream& output)
{
    if (!choice.client.empty())
        zetcore::utility::SetClientName(zetcore::string::UTF8to16(choice.client));
    ChoosePreferences(choice);
    ChooseLanguage(choice.language);
    if (!choice.skin.empty())
        zetui::skins::SetSkin(SkinOfName(choice.skin));
    if (!choice.timeout.empty())
        ChooseTimeout(choice.timeout);
    ExitStatus status = ExitStatus::Done;
    {
        HostSession session(choice.surface, choice.quiet);
        status = choice.command(session, output);
    }
    if (!output.flush()) {
        Say("standard output cannot be written");
        status = Worse(status, ExitStatus::NotSaved);
    }
    return status;
}

ExitStatus CarryAndSay(const Choice& choice, std::ostream& output)
{
    try {
        return Carry(choice, output);
    } catch (const usage_error& error) {
        Say(error.what());
        return ExitStatus::WrongUsage;
    } catch (const no_display& error) {
        Say(std::string(error.what()) + "; the other commands need none");
        return ExitStatus::WrongUsage;
    } catch (const zetcore::filesupport::file_exception& error) {
        Say(error.what());
        return ExitStatus::NotSaved;
    } catch (const std::exception& error) {
        Say(std::string("unexpected error: ") + error.what());
        return ExitStatus::Unexpected;
    }
}

} // namespace

int RunCommandLine(const std::vector<std::string>& arguments, std::ostream& output)
{
    Choice choice;
    CLI::App app("Scans and manages audio plug-ins.", "zetaudiopluginmanager");
    AddOptionsAndCommands(app, choice, zetui::ui::IsDisplayAvailable());
    try {
        std::vector<std::string> reversed = KeepBracketedNames(arguments);
        std::reverse(reversed.begin(), reversed.end());
        app.parse(reversed);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app.exit(error, output, std::cerr);
        Say(DescribeUsageError(app, error));
        return static_cast<int>(ExitStatus::WrongUsage);
    }
    if (!choice.command)
        ChooseManager(choice);
    return static_cast<int>(CarryAndSay(choice, output));
}

} // namespace zetaudiopluginmanager
