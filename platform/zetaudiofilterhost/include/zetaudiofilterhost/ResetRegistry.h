#pragma once

#include <zetaudiofilterhost/PluginModuleInfoManager.h>

namespace zetaudiofilterhost {

/// Makes the registry empty, as at program start; for tests.
ZETAUDIOFILTERHOST_API void ResetRegistry(PluginModuleInfoManager& registry);

} // namespace zetaudiofilterhost
