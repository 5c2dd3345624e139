#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "commands/EnableCommand.h"
#include "commands/FoldersCommand.h"
#include "commands/HostSession.h"
#include "commands/ListCommand.h"
#include "commands/ScanCommand.h"

namespace zetaudiopluginmanager {

using Command = std::function<ExitStatus(HostSession&, std::ostream&)>;

/// The options' values, and the command that the arguments name.
struct Choice
{
    std::string preferences, client, language, skin, timeout;
    bool quiet = false;
    Surface surface = Surface::Terminal;
    ScanOptions scan;
    ListOptions list;
    EnableOptions enable;
    FolderOptions folders;
    ReloadOptions reload;
    std::vector<std::string> files;
    /// It shows what is there, and makes no preferences folder for it.
    bool onlyLooks = false;
    Command command;
};

/// Gives the parser the program's options and commands, which write to the choice; it must outlive the
/// parser. Without a display, a command is required.
void AddOptionsAndCommands(CLI::App& app, Choice& choice, bool hasDisplay);

/// The words that `--skin` takes.
std::vector<std::string> SkinNames();

/// Opening the manager's window.
void ChooseManager(Choice& choice);

} // namespace zetaudiopluginmanager
