#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetui/dialogs/TerminalPresentation.h>

#include "commands/CautionCounter.h"
#include "commands/ExitStatus.h"
#include "commands/ScanNote.h"
#include "commands/ScanWatch.h"

namespace zetaudiopluginmanager {

/// One line on standard error, with the program's name before it.
void Say(std::string_view text);

/// There is no display to open windows on.
class no_display : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// Progress, alerts and dialogs are shown on it.
enum class Surface
{
    Terminal,
    Windows,
};

/// The host program's surroundings while a command runs: the main thread's event loop, dialogs in the
/// terminal or in windows, the module, and the registries as the preferences folder holds them. Main thread;
/// one at a time.
class HostSession
{
  public:
    /// Starts as every host does: initialises the module and lets it load the lists and the registry and
    /// act on what a crash has left. Without a registry file, the default folders are set and saved. What a
    /// damaged file was about is said, and the program goes on without it. What an interrupted scan has left
    /// aside is put back, which is said too. In windows, what a scan has come to is told when it is over.
    /// Throws `file_exception` when an existing file cannot be read, and `no_display` when there is none to
    /// open windows on.
    /// `quiet`: the terminal shows alerts only.
    explicit HostSession(Surface surface, bool quiet = false);
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    zetaudiofilterhost::PluginModuleInfoManager& Registry() const noexcept { return *registry; }
    zetaudiopluginhost::BannedPluginManager& Banned() const noexcept { return *banned; }
    bool IsQuiet() const noexcept { return quiet; }
    /// Knows the results of the scans since the start.
    const ScanWatch& Scans() const noexcept { return *scans; }
    /// Counts of the alerts in the terminal; all are 0 when there are windows.
    zetui::dialogs::TerminalPresentation::Counts Shown() const;

    /// Saves; what cannot be is said and remembered for `Status`. `SaveRegistry` also raises the registry's
    /// signal.
    void SaveRegistry();
    void SaveBannedList();
    void Save(const std::function<void()>& save);

    /// `NotSaved` when something could not be saved, by these operations or by the module (which then showed
    /// a caution).
    ExitStatus Status() const;

  private:
    /// Its destructor undoes the start, even one that fails.
    struct Surroundings
    {
        Surroundings(Surface surface, bool quiet);
        ~Surroundings();
        Surroundings(const Surroundings&) = delete;
        Surroundings& operator=(const Surroundings&) = delete;

        /// Null when there are windows.
        std::shared_ptr<zetcore::threads::PlainEventLoop> eventLoop;
        std::shared_ptr<zetui::dialogs::TerminalPresentation> terminal;
        /// Null when there are none.
        std::shared_ptr<CautionCounter> windows;
    };

    void CheckAtStart();
    /// Puts back the records that an interrupted scan has left aside.
    void PutBackAtStart();
    void WriteRegistry();
    ScanWatch::Actions ScanActions();
    /// Told to the user so far, wherever.
    int Cautions() const;

    bool quiet;
    Surroundings surroundings;
    zetaudiofilterhost::PluginModuleInfoManager* registry;
    zetaudiopluginhost::BannedPluginManager* banned;
    bool notSaved = false;
    /// Of the check at the start, which are not about what the command does.
    int cautionsAtStart = 0;
    ScanNoteTeller scanNote;
    std::unique_ptr<ScanWatch> scans;
};

} // namespace zetaudiopluginmanager
