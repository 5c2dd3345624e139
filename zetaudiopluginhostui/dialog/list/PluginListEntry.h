#pragma once

#include <memory>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>

namespace zetaudiopluginhostui {

/// The plug-in that a row of the list shows.
struct PluginListEntry
{
    zetaudiofilterhost::PluginLocator locator;
    /// The registry's record. Null for a banned plug-in.
    std::shared_ptr<zetaudiofilterhost::PluginModuleInfo> info;
};

} // namespace zetaudiopluginhostui
