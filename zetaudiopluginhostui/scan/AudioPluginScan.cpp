#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <utility>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/PluginModuleScanner.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/FaultPoint.h>
#include <zetcore/filesupport/Dir.h>
#include <zetcore/filesupport/FileException.h>
#include <zetcore/filesupport/FileUtils.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/dialogs/messagebox.h>

#include "module/DebugSwitch.h"
#include "module/PreferenceAccessError.h"
#include "scan/ExternalAudioPluginScan.h"

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;
using zetaudiopluginhost::PluginModuleScanner;
using zetcore::debug::FaultPoint;

constexpr char titleKey[] = "$$$/AudioPluginManager/ScanAudioPlugIns=Scanning Audio Plug-Ins";
constexpr wchar_t markerName[] = L"ScannedPluginPath.txt";

filesupport::File InPrefDir(const std::wstring& name)
{
    return {filesupport::Dir::PrefDir(), name};
}

/// False when the preferences folder does not let it.
bool SaveRegistry()
{
    try {
        PluginModuleInfoManager::GetInstance()->SaveConfiguration(
            InPrefDir(PluginModuleInfoManager::GetSettingsFileName()), true);
        return true;
    } catch (const filesupport::file_exception&) {
        return false;
    }
}

bool WriteMarker(const PluginLocator& plugin)
{
    try {
        filesupport::FileUtils::SimpleWriteStringToFile(
            AudioPluginScan::GetLastScannedPluginPath().FullPath(),
            zetcore::string::UTF16to8(plugin.ToString()));
        return true;
    } catch (const filesupport::file_exception&) {
        return false;
    }
}

bool DeleteMarker()
{
    try {
        const filesupport::File marker = AudioPluginScan::GetLastScannedPluginPath();
        if (marker.Exists())
            marker.Delete();
        return true;
    } catch (const filesupport::file_exception&) {
        return false;
    }
}

struct Begun
{
    unsigned scans = 0;
    std::vector<PluginLocator> plugins;
};

Begun& LastBegun()
{
    static Begun begun;
    return begun;
}

ScanEnd& LastEnd()
{
    static ScanEnd end;
    return end;
}

std::string ExtraText(const PluginLocator& plugin, const std::string& statusText)
{
    return zetcore::string::UTF16to8(
               PluginModuleInfoManager::GetInstance()->GetDisplayStringForLocator(plugin)) +
           statusText;
}

} // namespace

AudioPluginScan::AudioPluginScan(const zetui::pixmill::SupplierInterface* drawingSupplier)
    : supplier(drawingSupplier), externalScan(std::make_shared<ExternalAudioPluginScan>())
{}

AudioPluginScan::AudioPluginScan(const AudioPluginScan&) = default;

AudioPluginScan& AudioPluginScan::operator=(const AudioPluginScan&) = default;

AudioPluginScan::~AudioPluginScan() = default;

const ScanEnd& AudioPluginScan::GetEnd() const
{
    return end;
}

unsigned AudioPluginScan::GetScanCount()
{
    return LastBegun().scans;
}

const std::vector<PluginLocator>& AudioPluginScan::GetLastPlugins()
{
    return LastBegun().plugins;
}

ScanEnd AudioPluginScan::GetLastEnd()
{
    return LastEnd();
}

void AudioPluginScan::SetEnd(ScanEnd newEnd)
{
    end = std::move(newEnd);
    LastEnd() = end;
}

filesupport::File AudioPluginScan::GetLastScannedPluginPath()
{
    return InPrefDir(markerName);
}

void AudioPluginScan::ScanForPlugins(HWND parent, bool rescanExisting, bool disableVST2ShellSkipping,
                                     bool quickEffectScan, bool useSeparateProcess)
{
    std::vector<PluginLocator> vanished;
    const auto candidates =
        PluginModuleInfoManager::GetInstance()->CollectPotentialPlugins(!rescanExisting, vanished);
    PluginModuleInfoManager::GetInstance()->RemovePluginLocators(vanished);
    ScanForPlugins(parent, candidates, disableVST2ShellSkipping, quickEffectScan, useSeparateProcess);
}

void AudioPluginScan::ScanForPlugins(HWND parent, const std::vector<PluginLocator>& plugins,
                                     bool disableVST2ShellSkipping, bool quickEffectScan,
                                     bool useSeparateProcess)
{
    cancelled = false;
    SetEnd({});
    ++LastBegun().scans;
    LastBegun().plugins = plugins;
    bool preferencesAccessible = true;
    const ProgressDialogPtr progressDialog = zetui::utility::MakeIntrusive<zetui::dialogs::UI_ProgressDialog>(
        supplier, zetcore::config::Localizer::Get().Localize(titleKey), std::string(),
        zetui::ui::WindowVariant(parent), false, true, false);
    PluginModuleInfoManager::GetInstance()->RemovePluginLocators(plugins);
    FaultPoint("host.scan-begins");

    if (useSeparateProcess) {
        preferencesAccessible = SaveRegistry();
        try {
            ScanInSeparateProcess(plugins, disableVST2ShellSkipping, quickEffectScan, progressDialog);
        } catch (const filesupport::file_exception& error) {
            // The result file of an earlier scan is there and cannot be deleted.
            preferencesAccessible = false;
            SetEnd({ScanEnd::How::NotStarted, error.what()});
        }
    } else {
        ScanInThisProcess(parent, plugins, disableVST2ShellSkipping, quickEffectScan, progressDialog);
        if (cancelled)
            SetEnd({ScanEnd::How::Cancelled, {}});
    }

    FaultPoint("host.scan-done");
    preferencesAccessible = DeleteMarker() && preferencesAccessible;
    preferencesAccessible = SaveRegistry() && preferencesAccessible;
    PluginModuleInfoManager::GetInstance()->GetPluginInfosChangedSignal()();
    if (!preferencesAccessible)
        ReportPreferenceAccessError(parent);
}

bool AudioPluginScan::ScanForPluginsWithoutAlerts(HWND parent, const std::vector<PluginLocator>& plugins,
                                                  bool disableVST2ShellSkipping, bool quickEffectScan,
                                                  bool useSeparateProcess)
{
    struct WithoutAlerts
    {
        explicit WithoutAlerts(bool& switchedOn) : flag(switchedOn) { flag = true; }
        ~WithoutAlerts() { flag = false; }
        bool& flag;
    };
    const WithoutAlerts quiet(withoutAlerts);
    preferencesInaccessible = false;
    ScanForPlugins(parent, plugins, disableVST2ShellSkipping, quickEffectScan, useSeparateProcess);
    return !preferencesInaccessible;
}

void AudioPluginScan::ReportPreferenceAccessError(HWND parent)
{
    preferencesInaccessible = true;
    if (!withoutAlerts)
        ShowPreferenceAccessCaution(supplier, parent);
}

void AudioPluginScan::ScanInSeparateProcess(const std::vector<PluginLocator>& plugins,
                                            bool disableVST2ShellSkipping, bool quickEffectScan,
                                            const ProgressDialogPtr& progressDialog)
{
    // Nothing would ever close the dialog of a scan object that cannot be referred to weakly.
    if (!SharedThis())
        zetcore::utility::DoThrowNullPtrException("AudioPluginScan");
    const bool started = externalScan->StartScan(
        InPrefDir(PluginModuleInfoManager::GetSettingsFileName()).FullPath(),
        InPrefDir(BannedPluginManager::GetSettingsFileName()).FullPath(),
        InPrefDir(BannedPluginManager::GetPermanentBannedSettingsFileName()).FullPath(), plugins,
        disableVST2ShellSkipping, quickEffectScan,
        [weak = WeakThis(), progressDialog](const PluginLocator& plugin, const std::string& statusText,
                                            int progress, int total) {
            if (const auto self = weak.lock())
                self->ExternalScanProgressCallback(plugin, statusText, progress, total, progressDialog);
        });
    if (!started) {
        SetEnd({ScanEnd::How::NotStarted, {}});
        return;
    }
    const auto response = progressDialog->RunModal();
    externalScan->StopScan();
    if (response == zetui::dialogs::UI_DialogViewContainer::kCancel)
        SetEnd({ScanEnd::How::Cancelled, {}});
    else if (externalScan->GaveUp())
        SetEnd({ScanEnd::How::GaveUp, {}});
}

void AudioPluginScan::ScanInThisProcess(HWND parent, const std::vector<PluginLocator>& plugins,
                                        bool disableVST2ShellSkipping, bool quickEffectScan,
                                        const ProgressDialogPtr& progressDialog)
{
    progressDialog->SetPostCloseCallback([this](zetui::dialogs::UI_DialogViewContainer::Response response) {
        return OnProgressPostClose(response);
    });
    progressDialog->UI_Show(true);
    progressDialog->BeginModal();
    {
        // While it scans, a save writes only what is new: one before each plug-in stays cheap.
        PluginModuleScanner scanner(plugins, disableVST2ShellSkipping, quickEffectScan, false);
        scanner.BeginScan();
        PluginLocator plugin;
        std::string statusText;
        int progress = 0;
        int total = 0;
        while (scanner.GetCurrentProgressInfo(plugin, statusText, progress, total)) {
            if (!ScanProgressCallback(plugin, statusText, progress, total, progressDialog, parent))
                break;
            const bool goesOn = scanner.ContinueScan();
            FaultPoint("host.plugin-scanned");
            if (!goesOn)
                break;
        }
        scanner.EndScan();
        progressDialog->EndModal();
    }
    // It may outlive this scan only in hands that are not ours.
    progressDialog->SetPostCloseCallback({});
}

bool AudioPluginScan::ScanProgressCallback(const PluginLocator& plugin, const std::string& statusText,
                                           int progress, int total, ProgressDialogPtr progressDialog,
                                           HWND parent)
{
    // Without its marker the scan goes on like without a save: the caution below tells the user.
    const bool marked = WriteMarker(plugin);
    if (progressDialog) {
        progressDialog->SetExtraText(ExtraText(plugin, statusText));
        progressDialog->SetProgress(static_cast<unsigned long long>(progress),
                                    static_cast<unsigned long long>(total), std::string());
        progressDialog->ModalDuring();
    }
    if (IsDebugSwitchOn("DebugPluginLoading", "false"))
        zetui::dialogs::messagebox::ShowNote(supplier, L"Scanning", plugin.GetPath(),
                                             zetui::ui::WindowVariant(parent));
    const bool saved = SaveRegistry();
    FaultPoint("host.plugin-loading");
    if (!marked || !saved)
        ReportPreferenceAccessError(parent);
    return !cancelled;
}

void AudioPluginScan::ExternalScanProgressCallback(const PluginLocator& plugin, const std::string& statusText,
                                                   int progress, int total, ProgressDialogPtr progressDialog)
{
    if (!progressDialog)
        return;
    if (total == 0 && progress == 1) {
        progressDialog->PostClose();
        return;
    }
    progressDialog->SetExtraText(ExtraText(plugin, statusText));
    progressDialog->SetProgress(static_cast<unsigned long long>(progress),
                                static_cast<unsigned long long>(total), std::string());
}

bool AudioPluginScan::OnProgressPostClose(zetui::dialogs::UI_DialogViewContainer::Response response)
{
    cancelled = response == zetui::dialogs::UI_DialogViewContainer::kCancel;
    return false;
}

} // namespace zetaudiopluginhostui
