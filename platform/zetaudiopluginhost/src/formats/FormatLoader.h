#pragma once

#include <optional>
#include <string>
#include <vector>

#include <zetaudiofilterhost/ModuleFiles.h>

#include "formats/ModuleQuestions.h"
#include "header/ModuleFileHeader.h"

namespace zetaudiopluginhost {

/// A format's shells are left out of a scan when their plug-ins are there in another format, too.
struct ShellReplacement
{
    /// The other format. `Unknown` means that shells are never left out.
    zetaudiofilterhost::TechnologyType by = zetaudiofilterhost::TechnologyType::Unknown;
    /// A shell and a module of the other format are one product when they have the same.
    std::wstring (*comparisonName)(const std::wstring& path) = nullptr;
};

/// How the plug-ins of one format are asked what they are.
struct FormatLoader
{
    zetaudiofilterhost::TechnologyType type;
    /// A library of this format exports at least one of these.
    std::vector<EntryPoint> entryPoints;
    /// Makes the module's plug-ins, asks them, and closes them. Throws `PluginUnusable`, `PluginMissing` and
    /// `PluginThrew`.
    InfoList (*ask)(const ModuleQuestions& questions);
    /// For the quick scan: what the module's own description says, without loading it. Gives nothing when
    /// the description cannot be used; null for a format without descriptions.
    std::optional<InfoList> (*describe)(const zetaudiofilterhost::PluginLocator& module,
                                        const zetaudiofilterhost::ModuleFiles& files) = nullptr;
    ShellReplacement shells = {};
    /// Unique ids are 32-bit numbers in decimal: those that the list of unsupported plug-ins names.
    bool hasNumericIds = false;
};

} // namespace zetaudiopluginhost
