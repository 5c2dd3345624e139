#include "commands/CommandLine.h"

#include <algorithm>
#include <array>
#include <iostream>

#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/TimeEntry.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>
#include <zetui/application/Application.h>
#include <zetui/skins/Skins.h>

#include "commands/Choice.h"
#include "commands/LookNames.h"
#include "commands/UsageError.h"
#include "session/Language.h"
#include "terminal/Console.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

namespace {

/// The parser would read "[a,b]" as a list of two values. Here it is one file name.
std::vector<std::string> KeepBracketedNames(std::vector<std::string> arguments)
{
    constexpr std::array<std::string_view, 8> textOptions{"--filter", "--client",  "--lang", "--skin",
                                                          "--theme",  "--timeout", "--jobs", "--progress"};
    std::string before;
    for (std::string& argument : arguments) {
        const bool isText = std::find(textOptions.begin(), textOptions.end(), before) != textOptions.end();
        before = argument;
        if (!isText && argument.starts_with('[') && argument.ends_with(']'))
            argument.insert(0, "./");
    }
    return arguments;
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

/// Tells the entry to the scanner processes, and to the texts of this process about them.
void SetForScanners(const std::string& entry, const std::string& value)
{
    const std::string others = EnvironmentText("ZET_DEBUG_DATABASE");
    SetEnvironmentText("ZET_DEBUG_DATABASE", (others.empty() ? "" : others + ";") + entry + "=" + value);
    zetcore::debug::DebugDatabase::Instance().SetEntry(entry, value);
}

void ChooseTimeout(const std::string& seconds)
{
    if (!zetcore::debug::ParseSeconds(seconds))
        throw usage_error("--timeout " + seconds + ": a number of seconds above 0 is expected");
    SetForScanners(zetaudiopluginhostui::entityTimeoutKey, seconds);
}

void ChooseJobs(const std::string& jobs)
{
    using zetaudiopluginhostui::mostWorkers;
    const auto number = zetcore::string::ParseNumber<unsigned>(jobs);
    if (!number || *number < 1 || *number > mostWorkers)
        throw usage_error("--jobs " + jobs + ": a number from 1 to " + std::to_string(mostWorkers) +
                          " is expected");
    SetForScanners(zetaudiopluginhostui::workersKey, jobs);
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

/// Alerts in windows are titled with the program's own name and not with its command's. The preferences stay
/// in the folder that the command uses.
void ChooseNameInWindows(const Choice& choice)
{
    using zetcore::filesupport::Dir;
    if (choice.surface != Surface::Windows || !choice.client.empty())
        return;
    Dir::SetPrefDir(Dir::PrefDir().FullPath());
    zetcore::utility::SetClientName(zetcore::config::Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/DialogTitle=Audio Plug-In Manager"));
}

ExitStatus Carry(const Choice& choice, std::ostream& output)
{
    if (!choice.client.empty())
        zetcore::utility::SetClientName(zetcore::string::UTF8to16(choice.client));
    ChoosePreferences(choice);
    ChooseLanguage(choice.language);
    if (!choice.skin.empty())
        zetui::skins::SetSkin(SkinOfName(choice.skin));
    if (!choice.theme.empty())
        zetui::skins::SetScheme(SchemeOfName(choice.theme));
    if (!choice.timeout.empty())
        ChooseTimeout(choice.timeout);
    if (!choice.jobs.empty())
        ChooseJobs(choice.jobs);
    ExitStatus status = ExitStatus::Done;
    if (choice.plainCommand) {
        status = choice.plainCommand(output);
    } else {
        ChooseNameInWindows(choice);
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
    CLI::App app(programDescription, "zetaudiopluginmanager");
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
    if (!choice.command && !choice.plainCommand)
        ChooseManager(choice);
    return static_cast<int>(CarryAndSay(choice, output));
}

} // namespace zetaudiopluginmanager
