#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/threads/MainThread.h>

#include "preferences/Preferences.h"
#include "scan/driver/ScanMarker.h"
#include "scan/launch/ScannerPlace.h"
#include "scan/session/ExternalAudioPluginScan.h"

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::debug::FaultPoint;

constexpr char titleKey[] = "$$$/AudioPluginManager/ScanAudioPlugIns=Scanning Audio Plug-Ins";
constexpr wchar_t markerName[] = L"ScannedPluginPath.txt";

struct LastScan
{
    unsigned count = 0;
    std::vector<PluginLocator> plugins;
    ScanEnd end;
};

LastScan& TheLastScan()
{
    static LastScan scan;
    return scan;
}

/// The same plug-in with an absolute path, because the current folder may change later. A path from the root
/// stays exactly as it is, and so does a name that is no path: that of a format which has no files here.
PluginLocator AbsoluteLocator(const PluginLocator& plugin)
{
    const auto* format = zetaudiofilterhost::FindPluginFormat(plugin.GetTechnologyType());
    if (plugin.IsEmpty() || !format || !format->IsOnThisPlatform() ||
        filesupport::ToNativePath(plugin.GetPath()).has_root_directory())
        return plugin;
    return {plugin.GetTechnologyType(), filesupport::Dir(plugin.GetPath()).FullPath(),
            plugin.GetSubcomponent()};
}

} // namespace

AudioPluginScan::AudioPluginScan(const zetui::pixmill::SupplierInterface* drawingSupplier)
    : supplier(drawingSupplier), externalScan(std::make_shared<ExternalAudioPluginScan>())
{}

AudioPluginScan::AudioPluginScan(const AudioPluginScan&) = default;

AudioPluginScan& AudioPluginScan::operator=(const AudioPluginScan&) = default;

AudioPluginScan::~AudioPluginScan() = default;

void AudioPluginScan::SetProgressCallback(ProgressCallback callback)
{
    zetcore::threads::AssertMainThread();
    progressCallback = std::move(callback);
}

void AudioPluginScan::SetScannerDir(const std::wstring& path)
{
    SetScannerFolder(path);
}

filesupport::File AudioPluginScan::GetScannerProgram()
{
    return FindScannerProgram();
}

void AudioPluginScan::TellProgress(const PluginLocator& plugin, int progress, int total) const
{
    // The callback may set another one.
    const ProgressCallback callback = progressCallback;
    // A scanner may claim any number.
    if (callback && !plugin.GetPath().empty())
        callback(plugin, static_cast<std::size_t>(std::max(progress, 0)),
                 static_cast<std::size_t>(std::max(total, 0)));
}

const ScanEnd& AudioPluginScan::GetEnd() const
{
    zetcore::threads::AssertMainThread();
    return end;
}

unsigned AudioPluginScan::GetScanCount()
{
    zetcore::threads::AssertMainThread();
    return TheLastScan().count;
}

std::vector<PluginLocator> AudioPluginScan::GetLastPlugins()
{
    zetcore::threads::AssertMainThread();
    return TheLastScan().plugins;
}

ScanEnd AudioPluginScan::GetLastEnd()
{
    zetcore::threads::AssertMainThread();
    return TheLastScan().end;
}

void AudioPluginScan::SetEnd(ScanEnd newEnd)
{
    end = std::move(newEnd);
    TheLastScan().end = end;
}

filesupport::File AudioPluginScan::GetLastScannedPluginPath()
{
    return {filesupport::Dir::PrefDir(), markerName};
}

void AudioPluginScan::ScanForPlugins(HWND parent, bool rescanExisting, bool disableVST2ShellSkipping,
                                     bool quickEffectScan, bool useSeparateProcess)
{
    CheckThatItMayScan();
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
    Preferences preferences(supplier, parent);
    std::vector<PluginLocator> absolute;
    std::ranges::transform(plugins, std::back_inserter(absolute), AbsoluteLocator);
    Scan(preferences, parent, absolute, disableVST2ShellSkipping, quickEffectScan, useSeparateProcess);
}

void AudioPluginScan::ScanForPluginsWithin(Preferences& operation, HWND parent,
                                           const std::vector<PluginLocator>& plugins,
                                           bool disableVST2ShellSkipping, bool quickEffectScan,
                                           bool useSeparateProcess)
{
    Preferences preferences([&operation] { operation.NoteFailure(); });
    Scan(preferences, parent, plugins, disableVST2ShellSkipping, quickEffectScan, useSeparateProcess);
}

void AudioPluginScan::Scan(Preferences& preferences, HWND parent, const std::vector<PluginLocator>& plugins,
                           bool disableVST2ShellSkipping, bool quickEffectScan, bool useSeparateProcess)
{
    CheckThatItMayScan();
    // The host may drop its last pointer to this object while the progress is shown.
    auto self = SharedThis();
    // An object of the host's own stays until this returns. What refers to it weakly finds nobody afterwards.
    if (!self)
        self = std::shared_ptr<AudioPluginScan>(this, [](AudioPluginScan*) {});
    cancelled = false;
    hostError = nullptr;
    markerProblem.reset();
    SetEnd({});
    ++TheLastScan().count;
    TheLastScan().plugins = plugins;
    const ProgressDialogPtr progressDialog = zetui::utility::MakeIntrusive<zetui::dialogs::UI_ProgressDialog>(
        supplier, zetcore::config::Localizer::Get().Localize(titleKey), std::string(),
        zetui::ui::WindowVariant(parent), false, true, false);
    try {
        PluginModuleInfoManager::GetInstance()->RemovePluginLocators(plugins);
        FaultPoint("host.scan-begins");
        if (useSeparateProcess)
            ScanInSeparateProcess(preferences, plugins, disableVST2ShellSkipping, quickEffectScan,
                                  progressDialog);
        else
            ScanInThisProcess(preferences, parent, plugins, disableVST2ShellSkipping, quickEffectScan,
                              progressDialog);

        FaultPoint("host.scan-done");
        // A marker that can be neither replaced nor deleted may have been told already.
        if (!ScanMarker::Delete() && !markerProblem)
            preferences.NoteFailure();
        preferences.SaveRegistry();
        PluginModuleInfoManager::GetInstance()->GetPluginInfosChangedSignal()();
    } catch (const std::exception& error) {
        KeepWhatIsThere(preferences, error.what());
        throw;
    } catch (...) {
        KeepWhatIsThere(preferences, zetaudiopluginhost::reasons::InEnglish(
                                         zetaudiopluginhost::reasons::unknownException));
        throw;
    }
    preferences.TellUser();
}

void AudioPluginScan::CheckThatItMayScan()
{
    if (zetcore::threads::GetRegisteredMainThread() && !zetcore::threads::IsMainThread())
        throw std::logic_error("AudioPluginScan::ScanForPlugins must be called on the main thread, the one "
                               "that called RegisterMainThread");
}

void AudioPluginScan::KeepWhatIsThere(Preferences& preferences, const std::string& reason)
{
    SetEnd({ScanEnd::How::GaveUp, reason});
    try {
        ScanMarker::Delete();
        PluginModuleInfoManager::GetInstance()->PutBackUnreached();
        preferences.SaveRegistry();
    } catch (const std::exception& error) {
        // The exception that is on its way to the host tells more than this one.
        zetcore::debug::TraceLine(1, "AudioPluginScan", error.what());
    }
}

} // namespace zetaudiopluginhostui
