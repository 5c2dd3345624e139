// The scan in the host's own process.
#include <zetaudiopluginhost/PluginModuleScanner.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetui/dialogs/messagebox.h>

#include "preferences/Preferences.h"
#include "scan/driver/ScanMarker.h"
#include "scan/driver/ScanTexts.h"

namespace zetaudiopluginhostui {

using zetaudiofilterhost::PluginLocator;
using zetcore::debug::FaultPoint;
using zetui::dialogs::UI_DialogViewContainer;

void AudioPluginScan::ScanInThisProcess(Preferences& preferences, HWND parent,
                                        const std::vector<PluginLocator>& plugins,
                                        bool disableVST2ShellSkipping, bool quickEffectScan,
                                        const ProgressDialogPtr& progressDialog)
{
    progressDialog->SetPostCloseCallback(
        [this](UI_DialogViewContainer::Response response) { return OnProgressPostClose(response); });
    progressDialog->UI_Show(true);
    progressDialog->BeginModal();
    {
        // While the scanner lives, a save writes only what is new, so that the save before each plug-in stays
        // cheap.
        zetaudiopluginhost::PluginModuleScanner scanner(plugins, disableVST2ShellSkipping, quickEffectScan,
                                                        false);
        scanner.BeginScan();
        PluginLocator plugin;
        std::string statusText;
        int progress = 0;
        int total = 0;
        while (scanner.GetCurrentProgressInfo(plugin, statusText, progress, total)) {
            if (!ScanProgressCallback(plugin, statusText, progress, total, progressDialog, parent,
                                      preferences))
                break;
            const bool goesOn = mayLoad ? scanner.ContinueScan() : scanner.PassOverCurrent();
            FaultPoint("host.plugin-scanned");
            if (!goesOn)
                break;
        }
        scanner.EndScan();
        progressDialog->EndModal();
    }
    // Others may hold the dialog for longer than this scan lives.
    progressDialog->SetPostCloseCallback({});
    if (cancelled)
        SetEnd({ScanEnd::How::Cancelled, {}});
    else if (markerProblem)
        SetEnd({ScanEnd::How::GaveUp, *markerProblem});
}

bool AudioPluginScan::ScanProgressCallback(const PluginLocator& plugin, const std::string& statusText,
                                           int progress, int total, ProgressDialogPtr progressDialog,
                                           HWND parent, Preferences& preferences)
{
    TellProgress(plugin, progress, total);
    const ScanMarker::Outcome marker = ScanMarker::Write(plugin);
    if (progressDialog) {
        progressDialog->SetExtraText(ScannedPluginText(plugin, statusText));
        progressDialog->SetProgress(static_cast<unsigned long long>(progress),
                                    static_cast<unsigned long long>(total), std::string());
        progressDialog->ModalDuring();
    }
    mayLoad = marker.state != ScanMarker::State::Stale;
    if (!mayLoad) {
        // If this plug-in crashed, the plug-in that the old marker names would be banned for it.
        if (!markerProblem)
            preferences.NoteFailure();
        preferences.TellUser();
        markerProblem = marker.problem;
        return !cancelled;
    }
    if (zetcore::debug::DebugDatabase::Instance().IsOn("DebugPluginLoading", false))
        zetui::dialogs::messagebox::ShowNote(supplier, L"Scanning", plugin.GetPath(),
                                             zetui::ui::WindowVariant(parent));
    // Without a marker the scan goes on as it does when the save has failed: the user is told.
    if (marker.state == ScanMarker::State::Absent)
        preferences.NoteFailure();
    preferences.SaveRegistry();
    FaultPoint("host.plugin-loading");
    preferences.TellUser();
    return !cancelled;
}

bool AudioPluginScan::OnProgressPostClose(UI_DialogViewContainer::Response response)
{
    cancelled = response == UI_DialogViewContainer::kCancel;
    return false;
}

} // namespace zetaudiopluginhostui
