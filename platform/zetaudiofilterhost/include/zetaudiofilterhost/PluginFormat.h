#pragma once

#include <span>
#include <string_view>

#include <zetaudiofilterhost/Export.h>
#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiofilterhost {

/// One entry in the list of folders where a format's plug-ins are by default.
struct DefaultFolder
{
    enum class Kind
    {
        Absolute,        ///< `text` is the folder
        InHome,          ///< `text` inside the user's home folder
        BesideProgram,   ///< `text` inside the folder of the running program
        InVariable,      ///< `text` inside the folder that the environment variable `place` names
        PathList,        ///< every folder in the environment variable `text`, which is a list like PATH
        MachineRegistry, ///< the folder that the value `text` of the machine's key `place` names; Windows
                         ///< only
    };
    Kind kind;
    const char* text;
    const char* place = "";
};

/// The inside of a bundle, which is a folder that stands for one module. All paths are relative to it.
struct BundleLayout
{
    /// A folder with the format's extension is a bundle when it has this folder.
    std::string_view content;
    /// The folder inside `content` with the libraries for this process.
    std::string_view architecture;
    /// A library's extension with its dot.
    std::wstring_view libraryExtension;
    /// The places of the description, in the order in which they are looked at; empty for a format without.
    std::span<const std::string_view> descriptions;
};

/// The look of a format's modules in the file system of this platform.
struct FormatFiles
{
    /// A module's, with its dot. Empty for a format whose plug-ins this platform cannot load: nothing is
    /// searched for it, but its records and folders are kept.
    std::wstring_view extension;
    /// Null when each module is a single file; otherwise it is a bundle or a single file.
    const BundleLayout* bundle = nullptr;
    /// In the order of searching.
    std::span<const DefaultFolder> defaultFolders;
};

struct PluginFormat
{
    TechnologyType type;
    /// The name that files hold and users see.
    std::wstring_view name;
    FormatFiles files;

    bool IsOnThisPlatform() const noexcept { return !files.extension.empty(); }
};

/// Every format, in the order in which technologies are listed and searched.
ZETAUDIOFILTERHOST_API std::span<const PluginFormat> PluginFormats();

/// Null for a format that is not among them.
ZETAUDIOFILTERHOST_API const PluginFormat* FindPluginFormat(TechnologyType type);
ZETAUDIOFILTERHOST_API const PluginFormat* FindPluginFormat(std::wstring_view name);

} // namespace zetaudiofilterhost
