#pragma once

#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zetaudiopluginhostui/Export.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>

namespace zetaudiopluginhostui {

/// Hosts use the module through this. Main thread.
class ZETAUDIOPLUGINHOSTUI_API AudioPluginManager
{
  public:
    AudioPluginManager() = default;
    AudioPluginManager(const AudioPluginManager&) = default;
    AudioPluginManager& operator=(const AudioPluginManager&) = default;
    virtual ~AudioPluginManager();

    static AudioPluginManager& GetInstance();

    /// The host calls this once at start-up, after `Initialize` and before any scan. It loads the list of
    /// unsupported plug-ins, the banned list and the registry. Where the first list is missing or damaged, it
    /// is written first. A scan marker that is still there names the plug-in that brought the host down: that
    /// plug-in is banned, and the user is told. The call returns when every alert has been dismissed. The
    /// supplier is not owned; null is allowed for both. Throws `file_exception` when an existing file cannot
    /// be read, and the null-pointer error before `Initialize`.
    void CheckForCrashedPluginsAndNotifyUser(const zetui::pixmill::SupplierInterface* supplier, HWND parent);

    /// Runs the modal Audio Plug-In Manager. Windows are initialised first if need be.
    ///
    /// True only when the user confirmed with OK and the saved configuration differs from the file before. A
    /// file that cannot be read counts as different. Any other end loads the configuration from disk again,
    /// which takes every change back. Where it cannot be loaded, the registry becomes what it was when the
    /// dialog opened. The settings are read when the dialog opens and written when it closes. Null is allowed
    /// for supplier and parent.
    ///
    /// A preferences folder that cannot be written is told to the user once, after the dialog. After OK, only
    /// the save decides that. Throws `std::runtime_error` where there is no display, and the null-pointer
    /// error before `Initialize`. Exceptions other than `file_exception` that leave a load or a save (those
    /// of a host's slot, for example) pass. One that ends the dialog takes the changes back, as Cancel does.
    bool DoPluginManagerDialog(const zetui::pixmill::SupplierInterface* supplier,
                               AudioPluginManagerSettings& settings, HWND parent);

    /// True when the debug-database entry "zetaudiofilterhost.EnableQuickEffectScan" (default "true") is
    /// exactly "true". The entry is read once a process, on first use.
    static bool IsQuickEffectScanFeatureEnabled();
    /// The same for "zetaudiofilterhost.EnableWavesVST2ShellSkipping", which every call reads afresh.
    static bool IsVST2ShellSkippingFeatureEnabled();
};

} // namespace zetaudiopluginhostui
