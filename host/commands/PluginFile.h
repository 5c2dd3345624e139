#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginLocator.h>

/// Plug-in files and folders as they are named on the command line. Any thread.
namespace zetaudiopluginmanager {

/// Absolute, without "." and "..", and without a separator at its end; relative to the current folder.
std::wstring AbsolutePath(std::string_view argument);

/// The locator of a module by its path: the technology follows from the file name's end (".vst3" in any
/// letter case is VST3, all else VST). A file inside a ".vst3" bundle stands for the bundle.
zetaudiofilterhost::PluginLocator LocatorOfPath(const std::wstring& absolutePath);

/// The two together.
zetaudiofilterhost::PluginLocator LocatorOfArgument(std::string_view argument);

/// As the system's operations take it.
std::filesystem::path ToPath(const std::wstring& path);

/// True when there is a file or a folder of that path; a link counts by what it points to.
bool PathExists(const std::wstring& path);
bool IsFolder(const std::wstring& path);

} // namespace zetaudiopluginmanager
