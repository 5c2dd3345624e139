#include "commands/ManageCommand.h"

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetui/ui/Application.h>

#include "commands/WindowSettings.h"

namespace zetaudiopluginmanager {

ExitStatus RunManageCommand(HostSession& session)
{
    zetaudiopluginhostui::AudioPluginManagerSettings settings = LoadWindowSettings();
    // The screen that the window was on may be gone since.
    settings.dialogBounds = zetui::ui::FindPlaceOnScreen(settings.dialogBounds);
    zetaudiopluginhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings, nullptr);
    session.Save([&settings] { SaveWindowSettings(settings); });
    return session.Status();
}

} // namespace zetaudiopluginmanager
