#pragma once

#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiofilterscan {

/// The modules of these technologies that work and are not banned, each once, from the host's registry file
/// and its journal. A file that is missing, damaged or unreadable gives no modules. It stays as it is,
/// because it is the host's. Damage is traced.
std::vector<zetaudiofilterhost::PluginLocator>
WorkingModules(const std::wstring& registryPath,
               const std::vector<zetaudiofilterhost::TechnologyType>& technologies);

} // namespace zetaudiofilterscan
