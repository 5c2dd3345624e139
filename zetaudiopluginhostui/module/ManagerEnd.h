#pragma once

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetui/dialogs/UI_Dialog.h>

#include "preferences/Preferences.h"

namespace zetaudiopluginhostui {

/// Ends a run of the manager when its window has closed. After OK it saves the registry and tells the
/// registry's listeners. After any other response it takes back what the dialog has changed: from the file,
/// or, where that cannot be loaded, from `copy`, which was made when the dialog opened.
///
/// True when the registry was saved and its file has another content than before. A content that cannot be
/// read counts as another, so that the host misses nothing. Exceptions that are no `file_exception` pass.
/// Main thread.
bool EndManagerRun(zetui::dialogs::UI_DialogViewContainer::Response response,
                   const zetaudiofilterhost::PluginModuleInfoManager::Copy& copy, Preferences& preferences);

/// Takes back what the dialog has changed when an exception is on its way to the host, which no other may
/// replace. Main thread.
void TakeBackManagerRun(const zetaudiofilterhost::PluginModuleInfoManager::Copy& copy,
                        Preferences& preferences);

} // namespace zetaudiopluginhostui
