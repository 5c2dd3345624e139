#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

#include "scan/launch/ScannerLauncher.h"
#include "scan/session/RestartCount.h"
#include "scan/session/ScanResultFile.h"
#include "scan/session/ScannerConnection.h"
#include "scan/session/SocketConnection.h"

namespace zetaudiopluginhostui {

/// Runs one scan at a time in the scanner process. It starts the scanner, sends the requests, and merges the
/// results into the registry. When the scanner dies on a plug-in, it bans that plug-in and starts a new
/// scanner for the rest.
///
///     prepared --launched--> launching --port read--> connecting --"Connect" answered--> connected
///     connected --> polling (GetScanInfo and ScanOneEntity in turn) --nothing left--> finished
///     connecting, connected, polling --session closed, plug-ins pending--> launching again
///     connecting, connected, polling --session closed, none pending--> finished
///     any --StopScan--> ended
///
/// A scanner that dies is replaced as often as it takes, unless the host has set a limit (ScanLimits.h).
///
/// An error reply leaves the state where it is. A launch that fails does not end the scanner that it may have
/// started, because a scanner that nobody connects to ends by itself.
///
/// Make it with a shared pointer.
class ExternalAudioPluginScan : public std::enable_shared_from_this<ExternalAudioPluginScan>
{
  public:
    using PluginLocator = zetaudiofilterhost::PluginLocator;
    /// Gets the plug-in that is being scanned, its sub-component (UTF-8), and how many plug-ins of how many
    /// are done. Progress 1 of total 0 is the end of the scan.
    using ProgressCallback = std::function<void(const PluginLocator& plugin, const std::string& subcomponent,
                                                int progress, int total)>;

    explicit ExternalAudioPluginScan(PortWait portWait = {}, std::unique_ptr<ScannerConnection> connection =
                                                                 std::make_unique<SocketConnection>());
    ~ExternalAudioPluginScan();
    ExternalAudioPluginScan(const ExternalAudioPluginScan&) = delete;
    ExternalAudioPluginScan& operator=(const ExternalAudioPluginScan&) = delete;

    /// Launches the scanner and sends the first request. False when that fails; `StartFailure` says why.
    /// After true, `StopScan` must follow. The callback is called on the main thread. Throws `file_exception`
    /// when the result file of an earlier scan cannot be deleted. Main thread.
    bool StartScan(const std::wstring& pluginSettingsPath, const std::wstring& bannedSettingsPath,
                   const std::wstring& permanentBannedSettingsPath,
                   const std::vector<PluginLocator>& locators, bool disableVST2ShellSkipping,
                   bool quickEffectScan, ProgressCallback progressCallback);

    /// Why the scanner that was started last could not be started or reached, if that was so: a sentence for
    /// people (UTF-8), which names the program. Main thread.
    const std::optional<std::string>& StartFailure() const noexcept { return startFailure; }

    /// Why the last scan gave up, if it did so because its scanners never got on: a sentence for people
    /// (UTF-8), with the end of the last scanner if that was known by then. Main thread.
    const std::optional<std::string>& WhyGaveUp() const noexcept { return restarts.WhyTooMany(); }

    /// Lets the main thread carry out the calls that were posted, and ends the session and the scanner. Then
    /// it reports the end of the scan, unless that was done before. Main thread.
    void StopScan();

  private:
    friend class ExternalAudioPluginScanAccess;

    // Main thread.
    bool LaunchServerAndConnect();
    bool Connect(std::uint16_t port);
    void RestartSession();
    void ReportProgress(const PluginLocator& plugin, const std::string& subcomponent);
    void NotifyScanFinished();

    // Transport threads.
    void OnServerConnectOK();
    void SendScanRequest();
    void OnScanRequestSuccess();
    void SendGetScanInfo();
    void OnGetScanInfo(const std::shared_ptr<std::any>& reply);
    void SendScanOneEntity();
    void OnScanOneEntitySuccess();
    void OnServerFailed(int code, const std::wstring& message, long long id);
    zettransport::TransportError OnSessionClosed(const std::shared_ptr<zettransport::Session>& closed);
    void OnServerQuitDone();

    // Any thread. `PostToMainThread` needs the mutex to be held.
    void PostToMainThread(std::function<void(ExternalAudioPluginScan&)> call);
    void
    SendRequest(const zetcore::serialization::Call& call,
                std::function<void(ExternalAudioPluginScan&, const std::shared_ptr<std::any>&)> onResult);

    const std::unique_ptr<ScannerConnection> connection;

    /// Guards the flags, the counters, the pending list, the current locator and the result file.
    std::mutex mutex;
    /// True before the first scan as well.
    bool finished = true;
    std::int32_t progress = 0;
    /// The progress when the current scanner was started.
    std::int32_t progressBase = 0;
    std::int32_t total = 0;
    /// The plug-ins that the scanner has not yet reported.
    std::vector<PluginLocator> pending;
    bool connected = false;
    bool restartAllowed = false;
    PluginLocator currentLocator;
    /// Counts the scans, so that a call that one scan has posted does nothing to the next.
    unsigned scanNumber = 0;

    // `StartScan` sets these before there is any other thread.
    ProgressCallback progressCallback;
    std::wstring pluginSettingsPath;
    std::wstring bannedSettingsPath;
    std::wstring permanentBannedSettingsPath;
    ScanResultFile resultFile;
    bool disableVST2ShellSkipping = false;
    bool quickEffectScan = false;

    // Main thread.
    RestartCount restarts{0};
    ScannerProcess process;
    ScannerLauncher launcher;
    std::optional<std::string> startFailure;
};

} // namespace zetaudiopluginhostui
