#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>

#include "preferences/Preferences.h"

namespace zetaudiopluginhostui {

/// The message with every "@PLUGINNAME" replaced by the name; what has been inserted is not searched again.
/// UTF-8. Any thread.
std::string InsertPluginName(std::string_view message, std::string_view name);

/// The check at start-up: loads the lists and the registry, and bans the plug-in that the last scan's marker
/// names. Each change of the preferences folder is guarded: writing the unsupported list for the first time,
/// saving the ban, deleting the marker. The first one that fails is told to the user, once a check, and the
/// check goes on: a host that cannot write must start all the same. A marker that is too long to name a
/// plug-in names none. Main thread.
class CrashRecovery
{
  public:
    /// The supplier is not owned; null is allowed for both.
    CrashRecovery(const zetui::pixmill::SupplierInterface* supplier, HWND parent);

    /// In this order: unsupported list, banned list, marker, registry. Throws `file_exception` when an
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
