#pragma once

#include <memory>
#include <string>
#include <vector>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>

namespace zetaudiopluginhost {

/// The step in a plug-in's life at which something happened.
enum class ScanPhase : int
{
    None,
    Load,   ///< the system loads the library and runs its initialisers
    Entry,  ///< its entry function
    Open,   ///< the call that opens what its entry function has made
    Query,  ///< questions about name, vendor, classes, sub-plug-ins
    Create, ///< creating and initialising a component (full effect scan)
    Start,  ///< switching it on and off again (full effect scan)
    Close,  ///< closing what was opened
    Unload, ///< the system unloads the library
};

/// The outcome of scanning one module.
struct ScanOutcome
{
    /// The records to keep: one for a plain module, one for each sub-plug-in of a shell, or one that says why
    /// there is none. Empty when the module misbehaved.
    std::vector<std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>> infos;
    /// True when the module must be banned: it let an exception out, or it is one that cannot be used. Then
    /// `reason` (UTF-8) and `phase` say why.
    bool misbehaved = false;
    /// True when the module misbehaved only in that the system did not load it. None of its code has run, and
    /// the library that it lacked may be there later.
    bool couldNotLoad = false;
    std::string reason;
    ScanPhase phase = ScanPhase::None;
    /// The module's file when the scan of it began.
    zetaudiofilterhost::ModuleFileStamp stamp{};
};

struct ScanOptions
{
    /// Enumerate every shell. When false, one whose plug-ins are there in another technology is skipped.
    bool disableShellSkipping = false;
    /// Ask the module only: no component is created and initialised, or started and stopped.
    bool quickEffectScan = true;
};

} // namespace zetaudiopluginhost
