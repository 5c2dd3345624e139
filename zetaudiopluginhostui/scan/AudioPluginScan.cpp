#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <stdexcept>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/NullPtrException.h>

#include "preferences/Preferences.h"
#include "scan/ExternalAudioPluginScan.h"
#include "scan/ScanMarker.h"

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
    return TheLastScan().count;
}

std::vector<PluginLocator> AudioPluginScan::GetLastPlugins()
{
    return TheLastScan().plugins;
}

ScanEnd AudioPluginScan::GetLastEnd()
{
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
    CheckThatItMayScan(useSeparateProcess);
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
    Scan(preferences, parent, plugins, disableVST2ShellSkipping, quickEffectScan, useSeparateProcess);
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
    CheckThatItMayScan(useSeparateProcess);
    // The host may let go of the last pointer to this object while it is shown the progress.
    const auto self = SharedThis();
    cancelled = false;
    markerProblem.clear();
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
        // That the marker can be neither replaced nor deleted may have been told already.
        if (!ScanMarker::Delete() && markerProblem.empty())
            preferences.NoteFailure();
        preferences.SaveRegistry();
        PluginModuleInfoManager::GetInstance()->GetPluginInfosChangedSignal()();
    } catch (const std::exception& error) {
        KeepWhatIsThere(preferences, error.what());
        throw;
    } catch (...) {
        KeepWhatIsThere(preferences, "An unknown exception ended the scan");
        throw;
    }
    preferences.TellUser();
}

void AudioPluginScan::CheckThatItMayScan(bool useSeparateProcess)
{
    if (zetcore::threads::GetRegisteredMainThread() && !zetcore::threads::IsMainThread())
        throw std::logic_error("AudioPluginScan::ScanForPlugins must be called on the main thread, the one "
                               "that called RegisterMainThread");
    // A scan object that cannot be referred to weakly would never get its dialog closed.
    if (useSeparateProcess && !SharedThis())
        zetcore::utility::DoThrowNullPtrException("AudioPluginScan");
}

void AudioPluginScan::KeepWhatIsThere(Preferences& preferences, const std::string& reason)
{
    SetEnd({ScanEnd::How::GaveUp, reason});
    try {
        ScanMarker::Delete();
        PluginModuleInfoManager::GetInstance()->PutBackUnreached();
        preferences.SaveRegistry();
    } catch (const std::exception& error) {
        // The exception that is on its way to the host says more.
        zetcore::debug::TraceLine(1, "AudioPluginScan", error.what());
    }
}

} // namespace zetaudiopluginhostui
