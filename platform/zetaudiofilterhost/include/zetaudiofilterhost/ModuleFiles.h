#pragma once

#include <optional>
#include <string>
#include <variant>

#include <zetaudiofilterhost/Export.h>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetaudiofilterhost {

/// Why a module has no library for this process.
struct NoLibrary
{
    /// UTF-8, for people.
    std::string reason;
    /// A folder of the bundle may not be read: there may be a library all the same.
    bool isUnreadable = false;
};

/// The places of a module's parts. A module is a bundle, when its format has such, or a single file.
struct ModuleFiles
{
    /// The path of the library for this process.
    std::variant<std::wstring, NoLibrary> library;
    /// A bundle's description, where it has one.
    std::optional<zetcore::filesupport::File> description;
};

/// Finds the parts of a module. A bundle's library is the one that has the bundle's name, or else the only
/// one there is, because bundles that were renamed keep their library's name. A path that is no bundle is
/// taken for the library itself, whether it is there or not. Any thread.
ZETAUDIOFILTERHOST_API ModuleFiles FindModuleFiles(const PluginLocator& module);

/// The locator of the module that the file or bundle is, or of the bundle that it lies in. The extension
/// tells the format, in any letter case; empty when it tells none that this platform can load. Looks at the
/// path only. Any thread.
ZETAUDIOFILTERHOST_API PluginLocator LocatorOfModuleFile(const std::wstring& path);

} // namespace zetaudiofilterhost
