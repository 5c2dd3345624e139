#include "commands/CommandLine.h"

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>

#include <CLI/CLI.hpp>

#include <zetcore/config/ClientName.h>
#include <zetcore/filesupport/Dir.h>
#include <zetcore/string/Utf.h>
#include <zetui/skins/Skins.h>
#include <zetui/ui/Application.h>

#include "commands/BanCommand.h"
#include "commands/EnableCommand.h"
#include "commands/FoldersCommand.h"
#include "commands/Language.h"
#include "commands/ListCommand.h"
#include "commands/ManageCommand.h"
#include "commands/PluginFile.h"
#include "commands/ScanCommand.h"

namespace zetaudiopluginmanager {

namespace {

constexpr const char* footer =
    "PLUGIN-FILE is the plug-in's file or bundle; a file name that starts with '-' goes behind '--'.\n"
    "A folder that is added is searched for VST and for VST3 plug-ins.\n"
    "In JSON, bytes of a path that are no Unicode are written like \"%uDCFF\" (for the byte 0xFF).\n\n"
    "Exit status:\n"
    "  0    done\n"
    "  1    done, but something could not be saved\n"
    "  2    wrong usage, or no display for windows\n"
    "  3    the scanner process could not be started, or kept failing\n"
    "  130  cancelled";

/// The look that is chosen with --skin.
const std::map<std::string, zetui::skins::Skin> skinNames = {{"classic", zetui::skins::Skin::Classic},
                                                             {"v7", zetui::skins::Skin::V7}};

using Command = std::function<ExitStatus(HostSession&, std::ostream&)>;

/// The options' values, and the command that the arguments name.
struct Choice
{
    std::string preferences, client, language;
    zetui::skins::Skin skin = zetui::skins::GetSkin();
    Surface surface = Surface::Terminal;
    ScanOptions scan;
    ListOptions list;
    EnableOptions enable;
    FolderOptions folders;
    std::vector<std::string> files;
    Command command;
};

CLI::Option* AddFiles(CLI::App& app, std::vector<std::string>& files, const std::string& name)
{
    return app.add_option(name, files)->type_name("");
}

void ChooseManager(Choice& choice)
{
    choice.surface = Surface::Windows;
    choice.command = [](HostSession& session, std::ostream&) { return RunManageCommand(session); };
}

void AddManage(CLI::App& app, Choice& choice)
{
    CLI::App* manage =
        app.add_subcommand("manage", "Open the Audio Plug-In Manager (the default where there is a display)");
    manage->callback([&choice] { ChooseManager(choice); });
}

void AddScan(CLI::App& app, Choice& choice)
{
    CLI::App* scan = app.add_subcommand("scan", "Look for new and changed plug-ins, or scan those given");
    scan->add_flag("--rescan", choice.scan.rescan, "Scan known plug-ins again");
    scan->add_flag("--in-process", choice.scan.inProcess, "Load plug-ins into this process");
    scan->add_flag("--json", choice.scan.json, "Print the result as JSON");
    AddFiles(*scan, choice.scan.files, "PLUGIN-FILE");
    scan->callback([&choice] {
        choice.command = [&choice](HostSession& session, std::ostream& output) {
            return RunScanCommand(session, choice.scan, output);
        };
    });
}

void AddList(CLI::App& app, Choice& choice)
{
    CLI::App* list = app.add_subcommand("list", "Show the plug-ins");
    list->add_flag("--json", choice.list.json, "Print the list as JSON");
    list->add_option("--filter", choice.list.filter, "Only where name, path or version contains the text")
        ->type_name("TEXT");
    const auto addChoice = [&](const std::string& name, RowChoice rows, const std::string& description) {
        return list->add_flag_callback(
            name, [&choice, rows] { choice.list.choice = rows; }, description);
    };
    CLI::Option* enabled = addChoice("--enabled", RowChoice::Enabled, "Only enabled ones");
    CLI::Option* disabled = addChoice("--disabled", RowChoice::Disabled, "Only disabled ones");
    CLI::Option* banned = addChoice("--banned", RowChoice::Banned, "Only banned ones");
    enabled->excludes(disabled)->excludes(banned);
    disabled->excludes(banned);
    list->callback([&choice] {
        choice.command = [&choice](HostSession& session, std::ostream& output) {
            return RunListCommand(session, choice.list, output);
        };
    });
}

void AddEnable(CLI::App& app, Choice& choice, bool enabled)
{
    CLI::App* command = app.add_subcommand(enabled ? "enable" : "disable",
                                           enabled ? "Let the host use plug-ins" : "Switch plug-ins off");
    CLI::Option* all = command->add_flag("--all", choice.enable.all, "All working plug-ins");
    CLI::Option* files = AddFiles(*command, choice.enable.files, "PLUGIN-FILE");
    all->excludes(files);
    command->callback([&choice, enabled] {
        if (!choice.enable.all && choice.enable.files.empty())
            throw CLI::RequiredError("--all or PLUGIN-FILE");
        choice.enable.enabled = enabled;
        choice.command = [&choice](HostSession& session, std::ostream&) {
            return RunEnableCommand(session, choice.enable);
        };
    });
}

void AddBanAndReload(CLI::App& app, Choice& choice)
{
    CLI::App* ban = app.add_subcommand("ban", "Never load these plug-ins");
    AddFiles(*ban, choice.files, "PLUGIN-FILE")->required();
    ban->callback([&choice] {
        choice.command = [&choice](HostSession& session, std::ostream&) {
            return RunBanCommand(session, choice.files);
        };
    });
    CLI::App* reload = app.add_subcommand("reload", "Take plug-ins from the banned list and scan them again");
    AddFiles(*reload, choice.files, "PLUGIN-FILE")->required();
    reload->callback([&choice] {
        choice.command = [&choice](HostSession& session, std::ostream& output) {
            return RunReloadCommand(session, choice.files, output);
        };
    });
}

void AddFolders(CLI::App& app, Choice& choice)
{
    CLI::App* folders = app.add_subcommand("folders", "Show or change where plug-ins are looked for");
    folders->require_subcommand(0, 1);
    const auto addAction = [&](const std::string& name, FolderAction action, const std::string& description) {
        CLI::App* command = folders->add_subcommand(name, description);
        command->callback([&choice, action] { choice.folders.action = action; });
        return command;
    };
    addAction("list", FolderAction::List, "Show the folders (the default)");
    AddFiles(*addAction("add", FolderAction::Add, "Look in these folders too"), choice.folders.folders,
             "FOLDER")
        ->required();
    AddFiles(*addAction("remove", FolderAction::Remove, "Look in these folders no more"),
             choice.folders.folders, "FOLDER")
        ->required();
    addAction("reset", FolderAction::Reset, "Back to the default folders");
    folders->callback([&choice] {
        choice.command = [&choice](HostSession& session, std::ostream& output) {
            return RunFoldersCommand(session, choice.folders, output);
        };
    });
}

/// The parser takes "[a,b]" for a list of two. As a file name it means what it says.
std::vector<std::string> KeepBracketedNames(std::vector<std::string> arguments)
{
    std::string before;
    for (std::string& argument : arguments) {
        const bool isText = before == "--filter" || before == "--client" || before == "--lang";
        before = argument;
        if (!isText && argument.starts_with('[') && argument.ends_with(']'))
            argument.insert(0, "./");
    }
    return arguments;
}

/// False when the user asked for a language that there is no table for.
bool ChooseLanguage(const std::string& asked)
{
    if (!asked.empty()) {
        if (LoadLanguage(asked))
            return true;
        Say("there are no texts in this language: " + asked);
        return false;
    }
    try {
        LoadLanguage(SystemLanguage());
    } catch (const std::runtime_error& error) {
        Say(error.what());
    }
    return true;
}

ExitStatus Carry(const Choice& choice, std::ostream& output)
{
    if (!choice.client.empty())
        zetcore::config::SetClientName(zetcore::string::UTF8to16(choice.client));
    if (!choice.preferences.empty())
        zetcore::filesupport::Dir::SetPrefDir(AbsolutePath(choice.preferences));
    if (!ChooseLanguage(choice.language))
        return ExitStatus::WrongUsage;
    zetui::skins::SetSkin(choice.skin);
    ExitStatus status = ExitStatus::Done;
    {
        HostSession session(choice.surface);
        status = choice.command(session, output);
    }
    if (!output.flush()) {
        Say("standard output cannot be written");
        status = Worse(status, ExitStatus::NotSaved);
    }
    return status;
}

} // namespace

int RunCommandLine(const std::vector<std::string>& arguments, std::ostream& output)
{
    Choice choice;
    CLI::App app("Scans and manages audio plug-ins.", "zetaudiopluginmanager");
    app.set_version_flag("--version", "zetaudiopluginmanager " ZET_VERSION);
    app.add_option("--prefs", choice.preferences, "The preferences folder to use")->type_name("DIR");
    app.add_option("--client", choice.client,
                   "The host's name, for the default preferences folder and alerts")
        ->type_name("NAME");
    app.add_option("--skin", choice.skin, "How windows look: classic or v7")
        ->type_name("SKIN")
        ->transform(CLI::CheckedTransformer(skinNames, CLI::ignore_case).description(""));
    app.add_option("--lang", choice.language, "The language of windows and alerts, for example de")
        ->type_name("TAG");
    const bool hasDisplay = zetui::ui::IsDisplayAvailable();
    app.require_subcommand(hasDisplay ? 0 : 1, 1);
    app.fallthrough();
    // A path may start with a slash on Windows too.
    app.allow_windows_style_options(false);
    app.footer(footer);
    AddManage(app, choice);
    AddScan(app, choice);
    AddList(app, choice);
    AddEnable(app, choice, true);
    AddEnable(app, choice, false);
    AddBanAndReload(app, choice);
    AddFolders(app, choice);
    try {
        std::vector<std::string> reversed = KeepBracketedNames(arguments);
        std::reverse(reversed.begin(), reversed.end());
        app.parse(reversed);
        if (!choice.command)
            ChooseManager(choice);
    } catch (const CLI::ParseError& error) {
        const bool asked = app.exit(error, output, std::cerr) == 0;
        return static_cast<int>(asked ? ExitStatus::Done : ExitStatus::WrongUsage);
    }
    try {
        return static_cast<int>(Carry(choice, output));
    } catch (const no_display& error) {
        Say(std::string(error.what()) + "; the other commands need none");
        return static_cast<int>(ExitStatus::WrongUsage);
    } catch (const std::exception& error) {
        Say(error.what());
        return static_cast<int>(ExitStatus::NotSaved);
    }
}

} // namespace zetaudiopluginmanager
