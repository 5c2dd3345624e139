#pragma once

#include <zetaudiopluginhost/BannedPluginManager.h>

namespace zetaudiopluginhost {

/// Makes the lists of banned and of unsupported plug-ins empty, as at program start; for tests.
ZETAUDIOPLUGINHOST_API void ResetBannedPlugins(BannedPluginManager& list);

} // namespace zetaudiopluginhost
