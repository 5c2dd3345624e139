#include "commands/Choice.h"

#include <zetaudiopluginhostui/ScanLimits.h>

#include "commands/BanCommand.h"
#include "commands/CompleteCommand.h"
#include "commands/LookNames.h"
#include "commands/ManageCommand.h"
#include "commands/UsageError.h"
#include "commands/Version.h"

namespace zetaudiopluginmanager {

namespace {

constexpr const char* footer =
    "PLUGIN-FILE is the plug-in's file or bundle; a file name that starts with '-' goes behind '--'.\n"
    "'scan' also takes folders, and scans the plug-ins that lie in them.\n"
    "A folder that is added is searched for plug-ins of every kind.\n"
    "In JSON, bytes of a path that are no Unicode are written like \"%uDCFF\" (for the byte 0xFF).\n\n"
    "Exit status:\n"
    "  0    done\n"
    "  1    done, but something could not be saved, or an existing file could not be read\n"
    "  2    wrong usage, or no display for windows\n"
    "  3    the scanner process could not be started, or kept failing\n"
    "  4    an unexpected error ended it\n"
    "  130  cancelled";

/// Newer versions of the parser fill the lines of the text below the help. Older ones leave them as they are.
template<typename Formatter>
void KeepLines(Formatter& formatter)
{
    if constexpr (requires { formatter.enable_footer_formatting(false); })
        formatter.enable_footer_formatting(false);
}

CLI::Option* AddFiles(CLI::App& app, std::vector<std::string>& files, const std::string& name)
{
    return app.add_option(name, files)->type_name("");
}

void AddManage(CLI::App& app, Choice& choice)
{
    CLI::App* manage =
        app.add_subcommand("manage", "Open the Audio Plug-In Manager (the default where there is a display)");
    manage->callback([&choice] { ChooseManager(choice); });
}

std::string JobsText()
{
    return "How many plug-ins are loaded at the same time, 1 to " +
           std::to_string(zetaudiopluginhostui::mostWorkers) + " (twice the number of processors)";
}

void AddScan(CLI::App& app, Choice& choice)
{
    CLI::App* scan = app.add_subcommand(
        "scan", "Look for new and changed plug-ins, or scan those given (files or folders)");
    scan->add_flag("--rescan", choice.scan.rescan, "Scan known plug-ins again");
    CLI::Option* inProcess =
        scan->add_flag("--in-process", choice.scan.inProcess, "Load plug-ins into this process");
    // A plug-in that takes too long can be ended only in a process of its own.
    inProcess->excludes(app.get_option("--timeout"));
    // In one process, plug-ins are loaded one after the other.
    inProcess->excludes(scan->add_option("--jobs", choice.jobs, JobsText())->type_name("N"));
    CLI::Option* json = scan->add_flag("--json", choice.scan.json, "Print the result as JSON");
    // Plug-ins that are loaded into this process may write between the lines.
    inProcess->excludes(scan->add_option("--progress", choice.scan.progress,
                                         "Print a line of JSON for each plug-in file, too: json")
                            ->type_name("KIND")
                            ->check(CLI::IsMember({"json"}))
                            ->needs(json));
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
    CLI::Option* failed = addChoice("--failed", RowChoice::Failed,
                                    "Only those that do not work, or could not be read or scanned, and why");
    enabled->excludes(disabled)->excludes(banned)->excludes(failed);
    disabled->excludes(banned)->excludes(failed);
    banned->excludes(failed);
    list->callback([&choice] {
        choice.onlyLooks = true;
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

void AddBan(CLI::App& app, Choice& choice)
{
    CLI::App* ban = app.add_subcommand("ban", "Never load these plug-ins");
    AddFiles(*ban, choice.files, "PLUGIN-FILE")->required();
    ban->callback([&choice] {
        choice.command = [&choice](HostSession& session, std::ostream&) {
            return RunBanCommand(session, choice.files);
        };
    });
}

void AddReload(CLI::App& app, Choice& choice)
{
    CLI::App* reload = app.add_subcommand("reload", "Take plug-ins from the banned list and scan them again");
    CLI::Option* all = reload->add_flag("--all", choice.reload.all, "All banned plug-ins");
    all->excludes(AddFiles(*reload, choice.reload.files, "PLUGIN-FILE"));
    reload->callback([&choice] {
        if (!choice.reload.all && choice.reload.files.empty())
            throw CLI::RequiredError("--all or PLUGIN-FILE");
        choice.command = [&choice](HostSession& session, std::ostream& output) {
            return RunReloadCommand(session, choice.reload, output);
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
    CLI::App* add = addAction("add", FolderAction::Add, "Look in these folders too");
    add->add_flag("--offline", choice.folders.offline, "Also where there is no folder now");
    AddFiles(*add, choice.folders.folders, "FOLDER")->required();
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

void AddReport(CLI::App& app, Choice& choice)
{
    CLI::App* report = app.add_subcommand(
        "report", "Write versions, folders, plug-ins, bans and logs into one file, to report a problem");
    report->add_flag("--force", choice.report.force, "Replace the file if it is there");
    report->add_option("FILE", choice.report.file, "The file to write; '-' is standard output")
        ->type_name("")
        ->required();
    report->callback([&choice] {
        choice.onlyLooks = true;
        choice.plainCommand = [&choice](std::ostream& output) {
            choice.report.quiet = choice.quiet;
            return RunReportCommand(choice.report, output);
        };
    });
}

/// Shells call it for the user, who need not know of it. So it is hidden.
void AddComplete(CLI::App& app, Choice& choice)
{
    CLI::App* complete = app.add_subcommand("complete", "Print words for a shell that completes one");
    complete->group("");
    complete->add_option("LIST", choice.completionList)->required();
    complete->callback([&choice] {
        choice.onlyLooks = true;
        choice.plainCommand = [&choice](std::ostream& output) {
            return RunCompleteCommand(choice.completionList, output);
        };
    });
}

} // namespace

void ChooseManager(Choice& choice)
{
    choice.surface = Surface::Windows;
    choice.command = [](HostSession& session, std::ostream&) { return RunManageCommand(session); };
}

void AddOptionsAndCommands(CLI::App& app, Choice& choice, bool hasDisplay)
{
    app.set_version_flag("--version", VersionLine());
    app.add_option("--prefs", choice.preferences, "The preferences folder to use")->type_name("DIR");
    app.add_option("--client", choice.client,
                   "The host's name, for the default preferences folder and alerts")
        ->type_name("NAME");
    app.add_option("--skin", choice.skin, "How windows look: " + JoinWords(SkinNames(), "or"))
        ->type_name("SKIN");
    app.add_option("--theme", choice.theme,
                   "Whether windows are " + JoinWords(ThemeNames(), "or") + ": as the desktop (system)")
        ->type_name("THEME");
    app.add_option("--lang", choice.language, "The language of windows and alerts, for example de")
        ->type_name("TAG");
    app.add_option("--timeout", choice.timeout, "How long a plug-in may take to scan before it is ended (60)")
        ->type_name("SECONDS");
    app.add_flag("--quiet", choice.quiet, "No progress and no summary, only what went wrong");
    app.require_subcommand(hasDisplay ? 0 : 1, 1);
    app.fallthrough();
    // Paths may start with a slash on Windows, too.
    app.allow_windows_style_options(false);
    app.footer(footer);
    KeepLines(*app.get_formatter());
    AddManage(app, choice);
    AddScan(app, choice);
    AddList(app, choice);
    AddEnable(app, choice, true);
    AddEnable(app, choice, false);
    AddBan(app, choice);
    AddReload(app, choice);
    AddFolders(app, choice);
    AddReport(app, choice);
    AddComplete(app, choice);
}

} // namespace zetaudiopluginmanager
