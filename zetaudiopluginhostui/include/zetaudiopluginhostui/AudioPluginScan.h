#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
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

/// Scans audio plug-ins with a progress dialog, in this process or in the scanner process. Each call of
/// `ScanForPlugins` blocks the main thread until the scan is over, and leaves the registry saved.
///
/// A shared pointer may own the object, and the host may then drop it while the scan runs; without one it
/// must outlive the scan. On another thread than the main one, `ScanForPlugins` throws `std::logic_error`
/// before anything is touched.
///
/// An exception of the host's own may leave a scan, from a slot, from the progress callback, or from the
/// presentation that shows the progress, whichever of its operations it was. Then the scanner is ended, the
/// registry is saved too, all plug-ins that were not reached are put back, and the changed signal is not
/// raised.
class ZETAUDIOPLUGINHOSTUI_TYPE AudioPluginScan : public zetcore::utility::EnableSharedAs<AudioPluginScan>
{
  public:
    /// The supplier is not owned and must outlive the scan; null is allowed.
    ZETAUDIOPLUGINHOSTUI_API explicit AudioPluginScan(const zetui::pixmill::SupplierInterface* supplier);
    ZETAUDIOPLUGINHOSTUI_API AudioPluginScan(const AudioPluginScan&);
    ZETAUDIOPLUGINHOSTUI_API AudioPluginScan& operator=(const AudioPluginScan&);
    ZETAUDIOPLUGINHOSTUI_API ~AudioPluginScan() override;

    /// Scans the plug-ins in the registered folders: the new and changed ones, or all with `rescanExisting`.
    /// Plug-ins whose files are gone leave the registry first.
    ZETAUDIOPLUGINHOSTUI_API void ScanForPlugins(HWND parent, bool rescanExisting,
                                                 bool disableVST2ShellSkipping, bool quickEffectScan,
                                                 bool useSeparateProcess);
    /// Scans exactly these plug-ins.
    ZETAUDIOPLUGINHOSTUI_API void
    ScanForPlugins(HWND parent, const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
                   bool disableVST2ShellSkipping, bool quickEffectScan, bool useSeparateProcess);

    /// The same as a part of a larger operation, whose preferences tell the user what the scan could not
    /// write.
    ZETAUDIOPLUGINHOSTUI_LOCAL void
    ScanForPluginsWithin(Preferences& operation, HWND parent,
                         const std::vector<zetaudiofilterhost::PluginLocator>& plugins,
                         bool disableVST2ShellSkipping, bool quickEffectScan, bool useSeparateProcess);

    /// Called on the main thread before each plug-in, whichever process scans it, with the number of plug-ins
    /// that are done and that there are. What is known of the plug-in before it is then in the registry and
    /// in the banned list. A scanner process with several workers tells a plug-in when its result is there.
    /// Null ends it.
    using ProgressCallback = std::function<void(const zetaudiofilterhost::PluginLocator& plugin,
                                                std::size_t done, std::size_t total)>;
    ZETAUDIOPLUGINHOSTUI_API void SetProgressCallback(ProgressCallback callback);

    /// The scanner program is looked for beside the running program, beside this module's library, and where
    /// the installation puts programs, in this order. A host that keeps it elsewhere says so here. An empty
    /// path goes back to the search; a relative one is made absolute at once. Where the host has called
    /// `commondirs::SetExecutableDir`, the program is looked for there only. Any thread.
    ZETAUDIOPLUGINHOSTUI_API static void SetScannerDir(const std::wstring& path);
    /// The program that a scan would start; it need not exist. Any thread.
    ZETAUDIOPLUGINHOSTUI_API static zetcore::filesupport::File GetScannerProgram();

    /// How this object's last scan ended; `Done` before the first. Main thread.
    ZETAUDIOPLUGINHOSTUI_API const ScanEnd& GetEnd() const;
    /// How this process's last scan ended, whoever ran it. It is known before the registry's changed signal
    /// is raised, so that the slots of that signal can ask. Main thread.
    ZETAUDIOPLUGINHOSTUI_API static ScanEnd GetLastEnd();
    /// The number of scans that this process has begun, and the plug-ins of the last one. A slot of the
    /// registry's changed signal finds out with them whether a scan has ended, and which plug-ins it did not
    /// reach. Main thread.
    ZETAUDIOPLUGINHOSTUI_API static unsigned GetScanCount();
    ZETAUDIOPLUGINHOSTUI_API static std::vector<zetaudiofilterhost::PluginLocator> GetLastPlugins();

    /// The file that names the plug-in which is being loaded in this process. It exists only during a scan,
    /// and after a crash.
    ZETAUDIOPLUGINHOSTUI_API static zetcore::filesupport::File GetLastScannedPluginPath();

  private:
    friend class AudioPluginScanAccess;
    using ProgressDialogPtr = zetui::utility::IntrusivePtr<zetui::dialogs::UI_ProgressDialog>;

    ZETAUDIOPLUGINHOSTUI_LOCAL static void CheckThatItMayScan();
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
    ZETAUDIOPLUGINHOSTUI_LOCAL void TellProgress(const zetaudiofilterhost::PluginLocator& plugin,
                                                 int progress, int total) const;
    /// Puts back what was not reached and saves, before an exception leaves the scan.
    ZETAUDIOPLUGINHOSTUI_LOCAL void KeepWhatIsThere(Preferences& preferences, const std::string& reason);
    ZETAUDIOPLUGINHOSTUI_LOCAL bool
    OnProgressPostClose(zetui::dialogs::UI_DialogViewContainer::Response response);
    ZETAUDIOPLUGINHOSTUI_LOCAL void SetEnd(ScanEnd newEnd);

    const zetui::pixmill::SupplierInterface* supplier;
    std::shared_ptr<ExternalAudioPluginScan> externalScan;
    bool cancelled = false;
    /// The exception of the host's progress callback or presentation, from a call that was posted.
    std::exception_ptr hostError;
    ProgressCallback progressCallback;
    /// False when the current plug-in must not be loaded, because an older marker cannot be removed.
    bool mayLoad = true;
    /// Why a plug-in of this scan must not be loaded, if that was so for any.
    std::optional<std::string> markerProblem;
    ScanEnd end;
};

} // namespace zetaudiopluginhostui
