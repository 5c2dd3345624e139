#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginLocator.h>

/// Plug-in files and folders as they are named on the command line. Any thread.
namespace zetaudiopluginmanager {

class HostSession;

/// Absolute, without "." and "..", and without a separator at its end; relative to the current folder.
std::wstring AbsolutePath(std::string_view argument);

/// The locator of the module that the path names, or that it leads into. The file name's extension tells the
/// technology; it is `None` when it tells none.
zetaudiofilterhost::PluginLocator LocatorOfPath(const std::wstring& absolutePath);

/// The same of an argument. A plug-in that is known under a name that tells no technology is found, too.
zetaudiofilterhost::PluginLocator LocatorOfArgument(const HostSession& session, std::string_view argument);

/// The extensions that tell a technology, for messages.
std::string ModuleExtensions();

/// True when there is a file or a folder of that path; a link counts by what it points to.
bool PathExists(const std::wstring& path);
bool IsFolder(const std::wstring& path);

} // namespace zetaudiopluginmanager
