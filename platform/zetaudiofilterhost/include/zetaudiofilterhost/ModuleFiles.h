#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <zetaudiofilterhost/Export.h>
#include <zetcore/filesupport/File.h>

namespace zetaudiofilterhost {

/// Where the parts of a module are. A module is a bundle (a folder with Contents) or a single file.
struct ModuleFiles
{
    /// The library for this process; empty when there is none, and then `problem` (UTF-8) says why.
    std::wstring library;
    std::string problem;
    /// The problem is that a folder of the bundle may not be read: there may be a library all the same.
    bool isUnreadable = false;
    /// A bundle's description, where it has one.
    std::optional<zetcore::filesupport::File> moduleInfo;
};

/// Of a bundle, the library that has the bundle's name, or else the only one there is: bundles that were
/// renamed keep their library's name. A path that is no folder is the library itself, there or not. Any
/// thread.
ZETAUDIOFILTERHOST_API ModuleFiles FindModuleFiles(const std::wstring& modulePath);

/// The folder inside a bundle's Contents that holds the library for this process, and that library's
/// extension with its dot.
ZETAUDIOFILTERHOST_API std::string_view BundleArchitecture();
ZETAUDIOFILTERHOST_API std::string_view BundleLibraryExtension();

} // namespace zetaudiofilterhost
