#pragma once

#include <memory>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhostui/Export.h>
#include <zetaudiopluginhostui/ExportedType.h>
#include <zetaudiopluginhostui/ScanEnd.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/utility/EnableSharedAs.h>
#include <zetui/dialogs/UI_ProgressDialog.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetaudiopluginhostui {

class ExternalAudioPluginScan;
class Preferences;

/// One scan of audio plug-ins with its progress dialog, in this process or in the scanner process. Each call
/// blocks the main thread until the scan is over, and leaves the registry saved. Make it with a shared
/// pointer, without which the scanner process cannot be used (the null-pointer error); on another thread than
/// the main one, `ScanForPlugins` throws `std::logic_error`. Both are refused before anything is touched.
///
/// An exception of the host's own that leaves a scan (from a slot, or from what shows the progress) leaves
/// the registry saved, too, with everything that was not reached put back; the changed signal is not raised
/// then.
class ZETAUDIOPLUGINHOSTUI_TYPE AudioPluginScan : public zetcore::utility::EnableSharedAs<AudioPluginScan>
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

    /// The same as a part of a larger operation, whose preferences tell the user what the scan could not
    /// write.
    ZETAUDIOPLUGINHOSTUI_LOCAL void
    ScanForPluginsWithin(Preferences& operation, HWND parent,
                         const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
                         bool disableVST2ShellSkipping, bool quickEffectScan, bool useSeparateProcess);

    /// How this object's last scan ended; `Done` before the first. Main thread.
    ZETAUDIOPLUGINHOSTUI_API const ScanEnd& GetEnd() const;
    /// The same for this process's last scan, whoever ran it. It is known before the registry's changed
    /// signal is raised, so that who is called there can ask. Main thread.
    ZETAUDIOPLUGINHOSTUI_API static ScanEnd GetLastEnd();
    /// How many scans this process has begun, and what the last one was to scan. A slot of the registry's
    /// changed signal tells by them whether a scan has ended, and which plug-ins it did not reach. Main
    /// thread.
    ZETAUDIOPLUGINHOSTUI_API static unsigned GetScanCount();
    ZETAUDIOPLUGINHOSTUI_API static std::vector<zetaudiofilterhost::PluginLocator> GetLastPlugins();

    /// The marker that names the plug-in being loaded in this process; it exists only during a scan, and
    /// after a crash.
    ZETAUDIOPLUGINHOSTUI_API static zetcore::filesupport::File GetLastScannedPluginPath();

  private:
    friend class AudioPluginScanAccess;
    using ProgressDialogPtr = zetui::utility::IntrusivePtr<zetui::dialogs::UI_ProgressDialog>;

    ZETAUDIOPLUGINHOSTUI_LOCAL void CheckThatItMayScan(bool useSeparateProcess);
    ZETAUDIOPLUGINHOSTUI_LOCAL void Scan(Preferences& preferences, HWND parent,
                                         const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
                                         bool disableVST2ShellSkipping, bool quickEffectScan,
                                         bool useSeparateProcess);
    ZETAUDIOPLUGINHOSTUI_LOCAL void ScanInThisProcess(
        Preferences& preferences, HWND parent, const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
        bool disableVST2ShellSkipping, bool quickEffectScan, const ProgressDialogPtr& progressDialog);
    ZETAUDIOPLUGINHOSTUI_LOCAL void ScanInSeparateProcess(
        Preferences& preferences, const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
        bool disableVST2ShellSkipping, bool quickEffectScan, const ProgressDialogPtr& progressDialog);
    ZETAUDIOPLUGINHOSTUI_LOCAL bool ScanProgressCallback(const zetaudiofilterhost::PluginLocator& plugin,
                                                         const std::string& statusText, int progress,
                                                         int total, ProgressDialogPtr progressDialog,
                                                         HWND parent, Preferences& preferences);
    ZETAUDIOPLUGINHOSTUI_LOCAL void
    ExternalScanProgressCallback(const zetaudiofilterhost::PluginLocator& plugin,
                                 const std::string& statusText, int progress, int total,
                                 ProgressDialogPtr progressDialog);
    /// Before an exception leaves the scan.
    ZETAUDIOPLUGINHOSTUI_LOCAL void KeepWhatIsThere(Preferences& preferences, const std::string& reason);
    ZETAUDIOPLUGINHOSTUI_LOCAL bool
    OnProgressPostClose(zetui::dialogs::UI_DialogViewContainer::Response response);
    ZETAUDIOPLUGINHOSTUI_LOCAL void SetEnd(ScanEnd newEnd);

    const zetui::pixmill::SupplierInterface* supplier;
    std::shared_ptr<ExternalAudioPluginScan> externalScan;
    bool cancelled = false;
    /// False when the current plug-in must not be loaded, because an older marker cannot be got rid of.
    bool mayLoad = true;
    /// Why not, where that was so for any plug-in of this scan.
    std::string markerProblem;
    ScanEnd end;
};

} // namespace zetaudiopluginhostui
