#pragma once

#include <memory>
#include <string>
#include <vector>

#include <boost/config.hpp>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhostui/Export.h>
#include <zetaudiopluginhostui/ScanEnd.h>
#include <zetcore/filesupport/File.h>
#include <zetcore/utility/EnableSharedAs.h>
#include <zetui/dialogs/UI_ProgressDialog.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/ui/WindowVariant.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetaudiopluginhostui {

class ExternalAudioPluginScan;

/// One scan of audio plug-ins with its progress dialog, in this process or in the scanner process. Each call
/// blocks the main thread until the scan is over, and leaves the registry saved. Make it with a shared
/// pointer; main thread. Windows exports the members that are marked.
class BOOST_SYMBOL_VISIBLE AudioPluginScan : public zetcore::utility::EnableSharedAs<AudioPluginScan>
{
  public:
    /// The supplier is not owned and must outlive the scan; null is allowed.
    ZETAUDIOPLUGINHOSTUI_API explicit AudioPluginScan(const zetui::pixmill::SupplierInterface* supplier);
    ZETAUDIOPLUGINHOSTUI_API AudioPluginScan(const AudioPluginScan&);
    ZETAUDIOPLUGINHOSTUI_API AudioPluginScan& operator=(const AudioPluginScan&);
    ZETAUDIOPLUGINHOSTUI_API ~AudioPluginScan() override;

    /// Scans what the registered folders hold: new and changed plug-ins, or all with `rescanExisting`.
    /// Plug-ins whose files are gone leave the registry first.
    ZETAUDIOPLUGINHOSTUI_API void ScanForPlugins(HWND parent, bool rescanExisting,
                                                 bool disableVST2ShellSkipping, bool quickEffectScan,
                                                 bool useSeparateProcess);
    /// Scans exactly these.
    ZETAUDIOPLUGINHOSTUI_API void
    ScanForPlugins(HWND parent, const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
                   bool disableVST2ShellSkipping, bool quickEffectScan, bool useSeparateProcess);

    /// The same for whoever tells the user about a preferences folder that cannot be written: false then, and
    /// no alert.
    bool ScanForPluginsWithoutAlerts(HWND parent,
                                     const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
                                     bool disableVST2ShellSkipping, bool quickEffectScan,
                                     bool useSeparateProcess);

    /// How this object's last scan ended; `Done` before the first. Main thread.
    ZETAUDIOPLUGINHOSTUI_API const ScanEnd& GetEnd() const;
    /// The same for this process's last scan, whoever ran it. It is known before the registry's changed
    /// signal is raised, so that who is called there can ask. Main thread.
    ZETAUDIOPLUGINHOSTUI_API static ScanEnd GetLastEnd();

    /// The marker that names the plug-in being loaded in this process; it exists only during a scan, and
    /// after a crash.
    ZETAUDIOPLUGINHOSTUI_API static zetcore::filesupport::File GetLastScannedPluginPath();

  private:
    using ProgressDialogPtr = zetui::utility::IntrusivePtr<zetui::dialogs::UI_ProgressDialog>;

    void ScanInThisProcess(HWND parent, const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
                           bool disableVST2ShellSkipping, bool quickEffectScan,
                           const ProgressDialogPtr& progressDialog);
    void ScanInSeparateProcess(const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
                               bool disableVST2ShellSkipping, bool quickEffectScan,
                               const ProgressDialogPtr& progressDialog);
    bool ScanProgressCallback(const zetaudiofilterhost::PluginLocator& plugin, const std::string& statusText,
                              int progress, int total, ProgressDialogPtr progressDialog, HWND parent);
    void ExternalScanProgressCallback(const zetaudiofilterhost::PluginLocator& plugin,
                                      const std::string& statusText, int progress, int total,
                                      ProgressDialogPtr progressDialog);
    void ReportPreferenceAccessError(HWND parent);
    bool OnProgressPostClose(zetui::dialogs::UI_DialogViewContainer::Response response);
    void SetEnd(ScanEnd newEnd);

    const zetui::pixmill::SupplierInterface* supplier;
    std::shared_ptr<ExternalAudioPluginScan> externalScan;
    bool cancelled = false;
    bool withoutAlerts = false;
    bool preferencesInaccessible = false;
    ScanEnd end;
};

} // namespace zetaudiopluginhostui
