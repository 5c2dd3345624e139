#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>

#include "preferences/Preferences.h"

namespace zetaudiopluginhostui {

/// Returns the message with every "@PLUGINNAME" replaced by the name. A token inside the name stays. All
/// texts are UTF-8. Any thread.
std::string InsertPluginName(std::string_view message, std::string_view name);

/// The check at start-up loads the lists and the registry, and bans the plug-in that the last scan's marker
/// names. It changes the preferences folder in three places: it writes the unsupported list for the first
/// time, saves the ban, and deletes the marker. When the first of them fails, the user is told at once, and
/// the check goes on, because a host that cannot write must start all the same. The others are not told. A
/// marker that is too long to name a plug-in names none. Main thread.
class CrashRecovery
{
  public:
    /// The supplier is not owned; null is allowed for both.
    CrashRecovery(const zetui::pixmill::SupplierInterface* supplier, HWND parent);

    /// The order is: unsupported list, banned list, marker, registry. Throws `file_exception` when an
    /// existing file cannot be read.
    void Run();

  private:
    void LoadUnsupportedList();
    void ActOnMarker();
    void BanAndNotify(const zetaudiofilterhost::PluginLocator& plugin);
    void NotifyUser(const zetaudiofilterhost::PluginLocator& plugin);

    const zetui::pixmill::SupplierInterface* supplier;
    HWND parent;
    Preferences preferences;
};

} // namespace zetaudiopluginhostui
