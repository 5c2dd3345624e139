#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "commands/EnableCommand.h"
#include "commands/FoldersCommand.h"
#include "commands/ListCommand.h"
#include "commands/ReportCommand.h"
#include "commands/ScanCommand.h"
#include "session/HostSession.h"

namespace zetaudiopluginmanager {

using Command = std::function<ExitStatus(HostSession&, std::ostream&)>;
/// A command that only looks, and needs no session to do so.
using PlainCommand = std::function<ExitStatus(std::ostream&)>;

/// The options' values, and the command that the arguments name.
struct Choice
{
    std::string preferences, client, language, skin, theme, timeout, jobs;
    bool quiet = false;
    Surface surface = Surface::Terminal;
    ScanOptions scan;
    ListOptions list;
    EnableOptions enable;
    FolderOptions folders;
    ReloadOptions reload;
    ReportOptions report;
    std::vector<std::string> files;
    std::string completionList;
    /// The command changes nothing, so the preferences folder must exist already.
    bool onlyLooks = false;
    Command command;
    /// Set in place of `command`.
    PlainCommand plainCommand;
};

/// The help begins with it.
constexpr const char* programDescription = "Scans and manages audio plug-ins.";

/// Gives the parser the program's options and commands. They write to the choice, which must outlive the
/// parser. Without a display, a command is required.
void AddOptionsAndCommands(CLI::App& app, Choice& choice, bool hasDisplay);

/// Chooses the command that opens the manager's window.
void ChooseManager(Choice& choice);

} // namespace zetaudiopluginmanager
