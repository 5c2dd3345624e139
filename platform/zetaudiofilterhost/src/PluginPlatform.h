#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

/// What plug-ins look like on this platform, and where they are.
namespace zetaudiofilterhost {

/// By the file name alone: a VST library, or a VST3 module (bundle or single file).
bool HasPluginExtension(TechnologyType type, const std::filesystem::path& path);

/// The technology's documented locations, whether or not they exist, in the order of searching.
std::vector<std::wstring> DefaultPluginFolders(TechnologyType type);

/// Whether two names of path components are one to the file system.
bool IsSameFileName(const std::wstring& left, const std::wstring& right);

} // namespace zetaudiofilterhost
