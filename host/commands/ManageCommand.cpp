#include "commands/ManageCommand.h"

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetui/application/Application.h>

#include "session/WindowSettings.h"

namespace zetaudiopluginmanager {

namespace {

/// The size of the window's content when it opens for the first time. All columns and some twenty plug-ins
/// have room in it, and the window fits on the screen of a small notebook.
constexpr int firstWidth = 1120;
constexpr int firstHeight = 680;

} // namespace

ExitStatus RunManageCommand(HostSession& session)
{
    zetaudiopluginhostui::AudioPluginManagerSettings settings = LoadWindowSettings();
    if (settings.dialogBounds.width < 1 || settings.dialogBounds.height < 1)
        settings.dialogBounds = zetui::ui::PlaceInMiddleOfScreen(firstWidth, firstHeight);
    // The screen that held the window at the last run may be gone.
    settings.dialogBounds = zetui::ui::FindPlaceOnScreen(settings.dialogBounds);
    zetaudiopluginhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings, nullptr);
    session.Save([&settings] { SaveWindowSettings(settings); });
    return session.Status();
}

} // namespace zetaudiopluginmanager
