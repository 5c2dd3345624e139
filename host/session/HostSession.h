#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetui/dialogs/TerminalPresentation.h>

#include "scan/ScanNote.h"
#include "scan/ScanWatch.h"
#include "session/CautionCounter.h"
#include "session/ExitStatus.h"

namespace zetaudiopluginmanager {

/// Writes the text to standard error, with the program's name before each line.
void Say(std::string_view text);

/// There is no display to open windows on.
class no_display : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// The place where progress, alerts and dialogs are shown.
enum class Surface
{
    Terminal,
    Windows,
};

/// The host program's surroundings while a command runs: the main thread's event loop, dialogs in the
/// terminal or in windows, the module, and the registries as the preferences folder holds them. There is at
/// most one session at a time. Main thread.
class HostSession
{
  public:
    /// Starts as every host does: it initialises the module and lets it load the lists and the registry and
    /// act on what a crash has left. Without a registry file, it sets and saves the default folders. It names
    /// a damaged file, which is kept aside, and goes on without it. It puts back the records that an
    /// interrupted scan has left aside, and says so. In windows, it shows a note after each scan. With
    /// `quiet`, the terminal shows alerts only. Throws `file_exception` when an existing file cannot be read,
    /// and `no_display` when windows are wanted and there is no display.
    explicit HostSession(Surface surface, bool quiet = false);
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    zetaudiofilterhost::PluginModuleInfoManager& Registry() const noexcept { return *registry; }
    zetaudiopluginhost::BannedPluginManager& Banned() const noexcept { return *banned; }
    bool IsQuiet() const noexcept { return quiet; }
    /// Knows the results of the scans since the start.
    const ScanWatch& Scans() const noexcept { return *scans; }
    /// Counts the alerts in the terminal. All counts are 0 when there are windows.
    zetui::dialogs::TerminalPresentation::Counts Shown() const;

    /// These save a file. A failure is said on standard error and remembered for `Status`. `SaveRegistry`
    /// also raises the registry's signal.
    void SaveRegistry();
    void SaveBannedList();
    void Save(const std::function<void()>& save);

    /// `NotSaved` when these operations could not save something, or the module, which then showed a caution,
    /// or when a file was damaged at the start.
    ExitStatus Status() const;

  private:
    /// The destructor undoes the start, even when the session's constructor fails later.
    struct Surroundings
    {
        Surroundings(Surface surface, bool quiet);
        ~Surroundings();
        Surroundings(const Surroundings&) = delete;
        Surroundings& operator=(const Surroundings&) = delete;

        /// Null when there are windows.
        std::shared_ptr<zetcore::threads::PlainEventLoop> eventLoop;
        std::shared_ptr<zetui::dialogs::TerminalPresentation> terminal;
        /// Null in the terminal.
        std::shared_ptr<CautionCounter> windows;
    };

    void CheckAtStart();
    /// Says it on standard error, and where the file is kept, in windows in a note, too.
    void TellOfDamage(const zetcore::filesupport::File& file, const std::string& damage, bool isKept);
    /// Puts back the records that an interrupted scan has left aside.
    void PutBackAtStart();
    void WriteRegistry();
    ScanWatch::Actions ScanActions();
    /// Counts the cautions that the user has seen so far, in the terminal or in windows.
    int Cautions() const;

    bool quiet;
    Surroundings surroundings;
    zetaudiofilterhost::PluginModuleInfoManager* registry;
    zetaudiopluginhost::BannedPluginManager* banned;
    bool notSaved = false;
    bool wasDamaged = false;
    /// The cautions of the check at the start have nothing to do with the command.
    int cautionsAtStart = 0;
    ScanNoteTeller scanNote;
    std::unique_ptr<ScanWatch> scans;
};

} // namespace zetaudiopluginmanager
