#pragma once

#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiofilterscan {

/// The modules of these technologies that work, by the host's registry file and its journal, and that are not
/// banned; each once. A file that is missing, damaged or unreadable has none. It stays as it is, because it
/// is the host's; damage is traced.
std::vector<zetaudiofilterhost::PluginLocator>
WorkingModules(const std::wstring& registryPath,
               const std::vector<zetaudiofilterhost::TechnologyType>& technologies);

} // namespace zetaudiofilterscan
