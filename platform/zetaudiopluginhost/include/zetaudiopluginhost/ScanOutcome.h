#pragma once

#include <memory>
#include <vector>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetaudiopluginhost/PluginFailure.h>

namespace zetaudiopluginhost {

/// The outcome of scanning one module.
struct ScanOutcome
{
    /// The records to keep: one for a plain module, one for each sub-plug-in of a shell, or one that says why
    /// there is none. Empty when the module misbehaved.
    std::vector<std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>> infos;
    /// True when the module must be banned: it let an exception out, or it is one that cannot be used. Then
    /// `failure` says why.
    bool misbehaved = false;
    /// True when the module misbehaved only in that the system did not load it. None of its code has run, and
    /// the library that it lacked may be there later.
    bool couldNotLoad = false;
    PluginFailure failure;
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
