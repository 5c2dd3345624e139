// The scan in the scanner process.
#include <string_view>
#include <utility>

#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/TimeEntry.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "preferences/Preferences.h"
#include "scan/driver/ScanTexts.h"
#include "scan/session/ExternalAudioPluginScan.h"

namespace zetaudiopluginhostui {

namespace {

using zetaudiofilterhost::PluginLocator;
using zetui::dialogs::UI_DialogViewContainer;

static_assert(std::string_view(entityTimeoutKey) == zetscanprotocol::entityTimeoutKey);
static_assert(std::string_view(workersKey) == zetscanprotocol::workersKey);
static_assert(mostWorkers == zetscanprotocol::mostWorkers);

/// Most plug-ins are done after this time. Until then no user wonders.
constexpr std::chrono::seconds patience{3};

} // namespace

void AudioPluginScan::ScanInSeparateProcess(Preferences& preferences,
                                            const std::vector<PluginLocator>& plugins,
                                            bool disableVST2ShellSkipping, bool quickEffectScan,
                                            const ProgressDialogPtr& progressDialog)
{
    // The scanner process starts from the registry file.
    preferences.SaveRegistry();
    const auto limit = zetcore::debug::TimeFromDebugDatabase(zetscanprotocol::entityTimeoutKey,
                                                             zetscanprotocol::defaultEntityTimeout);
    // The dialog holds the session weakly, because the session's callback holds the dialog.
    progressDialog->SetPatience(patience,
                                [limit, session = std::weak_ptr(externalScan)](std::chrono::seconds passed) {
                                    const auto running = session.lock();
                                    const bool isGone = running && running->StartFailure();
                                    return isGone ? ScannerIsGoneText() : StillScanningText(passed, limit);
                                });

    bool started = false;
    try {
        started = externalScan->StartScan(
            Preferences::RegistryFile().FullPath(), Preferences::BannedListFile().FullPath(),
            Preferences::UnsupportedListFile().FullPath(), plugins, disableVST2ShellSkipping, quickEffectScan,
            [weak = WeakThis(), progressDialog](const PluginLocator& plugin, const std::string& statusText,
                                                int progress, int total) {
                const auto self = weak.lock();
                if (!self || self->hostError)
                    return;
                // This call was posted and has no caller, so the exception waits for the end of the dialog.
                try {
                    self->ExternalScanProgressCallback(plugin, statusText, progress, total, progressDialog);
                } catch (...) {
                    self->hostError = std::current_exception();
                    progressDialog->PostClose();
                    // Hidden now, the dialog does not fill its bar: the scan has not reached its end.
                    progressDialog->UI_Show(false);
                }
            });
    } catch (const zetcore::filesupport::file_exception& error) {
        // The result file of an earlier scan is there and cannot be deleted.
        SetEnd({ScanEnd::How::NotStarted, error.what()});
        preferences.NoteFailure();
        return;
    }
    if (!started) {
        SetEnd({ScanEnd::How::NotStarted, externalScan->StartFailure().value()});
        return;
    }

    auto response = UI_DialogViewContainer::kCancel;
    try {
        response = progressDialog->RunModal();
    } catch (...) {
        progressDialog->UI_Show(false);
        externalScan->StopScan();
        throw;
    }
    externalScan->StopScan();
    if (hostError)
        std::rethrow_exception(std::exchange(hostError, nullptr));
    if (const auto& why = externalScan->WhyGaveUp())
        SetEnd({ScanEnd::How::GaveUp, *why});
    else if (const auto& failure = externalScan->StartFailure())
        // A scanner that could not be replaced ended the scan, although only the user could close the dialog.
        SetEnd({ScanEnd::How::GaveUp, *failure});
    else if (response == UI_DialogViewContainer::kCancel)
        SetEnd({ScanEnd::How::Cancelled, {}});
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
    TellProgress(plugin, progress, total);
    progressDialog->SetExtraText(ScannedPluginText(plugin, statusText));
    progressDialog->SetProgress(static_cast<unsigned long long>(progress),
                                static_cast<unsigned long long>(total), std::string());
}

} // namespace zetaudiopluginhostui
