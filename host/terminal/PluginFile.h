#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

/// Plug-in files and folders as they are named on the command line. Any thread.
namespace zetaudiopluginmanager {

/// The absolute path without "." and "..", and without a separator at its end. A relative path starts in the
/// current folder.
std::wstring AbsolutePath(std::string_view argument);

/// The locator of the module that the path names, or leads into. The extension of the file name tells the
/// technology, which is `Unknown` for an unknown extension.
zetaudiofilterhost::PluginLocator LocatorOfPath(const std::wstring& absolutePath);

/// The locator of the module that an argument names. A plug-in that the registry or the banned list knows is
/// found even when its extension is unknown.
zetaudiofilterhost::PluginLocator
LocatorOfArgument(const zetaudiofilterhost::PluginModuleInfoManager& registry,
                  const zetaudiopluginhost::BannedPluginManager& bannedList, std::string_view argument);

/// The extensions of this system's plug-ins, for messages.
std::string ModuleExtensions();

/// True when a file or a folder has that path. For a link, its target counts.
bool PathExists(const std::wstring& path);
bool IsFolder(const std::wstring& path);

} // namespace zetaudiopluginmanager
