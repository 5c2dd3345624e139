#include "commands/ManageCommand.h"

#include <memory>

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetui/application/Application.h>

#include "session/WindowSettings.h"
#include "session/WindowStore.h"
#include "terminal/Console.h"

namespace zetaudiopluginmanager {

namespace {

/// The size of the window's content when it opens for the first time. All columns and some twenty plug-ins
/// have room in it, and the window fits on the screen of a small notebook.
constexpr int firstWidth = 1120;
constexpr int firstHeight = 680;

} // namespace

ExitStatus RunManageCommand(HostSession& session)
{
    const WindowSettings remembered = LoadWindowSettings();
    zetaudiopluginhostui::AudioPluginManagerSettings settings = remembered.manager;
    if (settings.dialogBounds.width < 1 || settings.dialogBounds.height < 1)
        settings.dialogBounds = zetui::ui::PlaceInMiddleOfScreen(firstWidth, firstHeight);
    // The screen that held the window at the last run may be gone.
    settings.dialogBounds = zetui::ui::FindPlaceOnScreen(settings.dialogBounds);
    const auto store = std::make_shared<WindowStore>(remembered.controls);
    zetui::ui::SetControlStore(store);
    LeaveOwnConsole();
    zetaudiopluginhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings, nullptr);
    zetui::ui::SetControlStore(nullptr);
    session.Save([&] { SaveWindowSettings(settings, store->Written()); });
    return session.Status();
}

} // namespace zetaudiopluginmanager
