#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <zetaudiopluginhost/Export.h>
#include <zetaudiopluginhost/ScanOutcome.h>

namespace zetaudiopluginhost {

struct FormatLoader;
class SharedLibraries;

/// Loads one module into this process, asks it what it is, and unloads it. Current folder, locale, signal and
/// terminate handlers, floating-point mode and the mask for new files are put back after it; whatever else it
/// does to the process is not undone, and a crash is a crash. A module that leaves threads running or lets an
/// exception out stays loaded. Keeps nothing between calls. The thread that calls it must be the process's
/// main thread where plug-ins expect that.
class ZETAUDIOPLUGINHOST_API ModuleLoader
{
  public:
    /// Told before each phase begins; may be empty.
    using PhaseCallback = std::function<void(ScanPhase)>;

    ModuleLoader(ScanOptions scanOptions, PhaseCallback phaseCallback);
    ~ModuleLoader();
    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;

    /// From now on the libraries that modules bring along stay loaded until the process ends: for a process
    /// that does nothing but scan.
    void KeepSharedLibraries();
    /// For a process that goes on after the scan: only the system's libraries stay until it ends. A plug-in's
    /// own stay as long as the modules that follow are in the same folder, and as this object lives.
    void KeepSystemLibraries();

    /// Modules of this technology can be why a shell of another one is skipped.
    static bool ReplacesShells(zetaudiofilterhost::TechnologyType type);
    /// Finds other modules, of the same scan or known already: a shell that they replace may be skipped. It
    /// is called once, when the first shell has been met.
    using FindKnownModules = std::function<std::vector<zetaudiofilterhost::PluginLocator>()>;
    void SetKnownModules(FindKnownModules find);

    /// Never throws for what the module does or contains. A file that cannot be a plug-in for this process
    /// gives one record with `ModuleStatus::NotAPlugin`, one that may not be read `ModuleStatus::Unreadable`;
    /// its header is read before anything is loaded. One that is a plug-in by its header and cannot be used
    /// (it does not load, gives nothing, has no plug-in class) has misbehaved.
    /// A shell's sub-plug-ins have their unique id, in decimal, as sub-component; a locator with a
    /// sub-component gives that one's record only.
    /// `next` is the module that will be scanned after it, when that is known.
    ScanOutcome Scan(const zetaudiofilterhost::PluginLocator& locator,
                     const std::optional<zetaudiofilterhost::PluginLocator>& next = std::nullopt);

  private:
    bool IsShellSkipped(const FormatLoader& format, const zetaudiofilterhost::PluginLocator& shell);

    ScanOptions options;
    PhaseCallback onPhase;
    /// Null when they go with their modules.
    std::unique_ptr<SharedLibraries> sharedLibraries;
    /// Empty once it has been called.
    FindKnownModules findKnownModules;
    /// The shells that are replaced: their technology and comparison name.
    std::set<std::pair<zetaudiofilterhost::TechnologyType, std::wstring>> replacedShells;
};

} // namespace zetaudiopluginhost
