#pragma once

#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zetaudiopluginhostui/Export.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>

namespace zetaudiopluginhostui {

/// The module's face to its host. Main thread.
class ZETAUDIOPLUGINHOSTUI_API AudioPluginManager
{
  public:
    AudioPluginManager() = default;
    AudioPluginManager(const AudioPluginManager&) = default;
    AudioPluginManager& operator=(const AudioPluginManager&) = default;
    virtual ~AudioPluginManager();

    static AudioPluginManager& GetInstance();

    /// Once at start-up, after `Initialize` and before any scan. Loads the list of unsupported plug-ins
    /// (written first where it is missing or damaged), the banned list and the registry. A scan marker that
    /// is still there names the plug-in that brought the host down: it is banned, and the user is told.
    /// Returns when every alert has been dismissed. The supplier is not owned; null is allowed for both.
    /// Throws `file_exception` when an existing file cannot be read.
    void CheckForCrashedPluginsAndNotifyUser(const zetui::pixmill::SupplierInterface* supplier, HWND parent);

    /// Runs the modal Audio Plug-In Manager, on windows that are made when there are none yet. True only when
    /// the user confirmed with OK and the saved configuration differs from the file before (one that cannot
    /// be read counts as different). Any other end loads the configuration from disk again, which takes every
    /// change back; where it cannot be loaded, the registry becomes what it was when the dialog opened. The
    /// settings are read when the dialog opens and written when it closes; null is allowed for supplier and
    /// parent. That the preferences folder cannot be written is told to the user once, after the dialog;
    /// after OK, only the save decides that. Throws `std::runtime_error` where there is no display, the
    /// null-pointer error before `Initialize`, and whatever else than a `file_exception` leaves a load or
    /// save (of a host's slot, for example).
    bool DoPluginManagerDialog(const zetui::pixmill::SupplierInterface* supplier,
                               AudioPluginManagerSettings& settings, HWND parent);

    /// On when the debug-database entry "zetaudiofilterhost.EnableQuickEffectScan" (default "true") is
    /// exactly "true". Read once a process, on first use.
    static bool IsQuickEffectScanFeatureEnabled();
    /// The same for "zetaudiofilterhost.EnableWavesVST2ShellSkipping", read afresh on every call.
    static bool IsVST2ShellSkippingFeatureEnabled();
};

} // namespace zetaudiopluginhostui
