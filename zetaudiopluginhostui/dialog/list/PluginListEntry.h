#pragma once

#include <memory>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>

namespace zetaudiopluginhostui {

/// A row of the plug-in list shows this.
struct PluginListEntry
{
    zetaudiofilterhost::PluginLocator locator;
    /// The registry's record; null for a banned plug-in.
    std::shared_ptr<zetaudiofilterhost::PluginModuleInfo> info;
};

} // namespace zetaudiopluginhostui
