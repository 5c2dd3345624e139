#include "commands/ManageCommand.h"

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetui/application/Application.h>

#include "commands/WindowSettings.h"

namespace zetaudiopluginmanager {

namespace {

/// The window's content when it opens for the first time: columns and some twenty plug-ins have room, and so
/// has the window on the screen of a small notebook.
constexpr int firstWidth = 1120;
constexpr int firstHeight = 680;

} // namespace

ExitStatus RunManageCommand(HostSession& session)
{
    zetaudiopluginhostui::AudioPluginManagerSettings settings = LoadWindowSettings();
    if (settings.dialogBounds.width < 1 || settings.dialogBounds.height < 1)
        settings.dialogBounds = zetui::ui::PlaceInMiddleOfScreen(firstWidth, firstHeight);
    // The screen that the window was on may be gone since.
    settings.dialogBounds = zetui::ui::FindPlaceOnScreen(settings.dialogBounds);
    zetaudiopluginhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings, nullptr);
    session.Save([&settings] { SaveWindowSettings(settings); });
    return session.Status();
}

} // namespace zetaudiopluginmanager
