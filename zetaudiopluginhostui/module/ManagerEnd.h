#pragma once

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetui/dialogs/Response.h>

namespace zetaudiopluginhostui {

/// The registry's lot when the manager's window has closed.
struct ManagerEnd
{
    /// The configuration was saved, and its file has another content than before. A content that cannot be
    /// read counts as another, so that the host misses nothing.
    bool hasChanged = false;
    /// False when the preferences folder does not let the configuration be saved, or be loaded again.
    bool isAccessible = true;
};

/// Saves the registry after OK, and then tells its listeners; any other response takes back what the dialog
/// has changed: from the file, or, where that cannot be loaded, from `copy`, which was made when the dialog
/// opened. Exceptions that are no `file_exception` pass. Main thread.
ManagerEnd EndManagerRun(zetui::dialogs::UI_DialogViewContainer::Response response,
                         const zetaudiofilterhost::PluginModuleInfoManager::Copy& copy);

} // namespace zetaudiopluginhostui
