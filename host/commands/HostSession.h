#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetui/dialogs/TerminalPresentation.h>

#include "commands/ExitStatus.h"

namespace zetaudiopluginmanager {

/// One line on standard error, with the program's name before it.
void Say(std::string_view text);

/// The host program's surroundings while a command runs: the main thread's event loop, dialogs in the
/// terminal, the module, and the registries as the preferences folder holds them. Main thread; one at a time.
class HostSession
{
  public:
    /// Loads the unsupported list, the banned list and the registry. Without a registry file, the default
    /// folders are set and saved. What a damaged file was about is said, and the program goes on without it.
    /// Throws `file_exception` when an existing file cannot be read.
    HostSession();
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    zetaudiofilterhost::PluginModuleInfoManager& Registry() const noexcept { return *registry; }
    zetaudiopluginhost::BannedPluginManager& Banned() const noexcept { return *banned; }
    const zetui::dialogs::TerminalPresentation::Counts& Shown() const { return terminal->GetCounts(); }

    /// Saves; what cannot be is said and remembered for `Status`. `SaveRegistry` also raises the registry's
    /// signal.
    void SaveRegistry();
    void SaveBannedList();

    /// `NotSaved` when something could not be saved, by these operations or by the module (which then showed
    /// a caution).
    ExitStatus Status() const;

  private:
    void LoadLists();
    template<typename Save>
    void TrySaving(Save save);

    std::shared_ptr<zetcore::threads::PlainEventLoop> eventLoop;
    std::shared_ptr<zetui::dialogs::TerminalPresentation> terminal;
    zetaudiofilterhost::PluginModuleInfoManager* registry;
    zetaudiopluginhost::BannedPluginManager* banned;
    bool notSaved = false;
};

} // namespace zetaudiopluginmanager
