#pragma once

#include <functional>

#include <zetui/controls/UI_ContextMenu.h>

#include "dialog/list/PluginListEntry.h"

namespace zetaudiopluginhostui {

/// The commands of a row's menu.
struct PluginRowCommands
{
    std::function<void()> reload;
    std::function<void(bool enable)> enable;
    std::function<void()> copyPath, copyDetails, showInFolder, showLog;
};

/// The menu of a plug-in's row. A banned one can be reloaded, another one switched.
zetui::controls::UI_ContextMenu MakePluginRowMenu(const PluginListEntry& entry,
                                                  const PluginRowCommands& commands);

} // namespace zetaudiopluginhostui
