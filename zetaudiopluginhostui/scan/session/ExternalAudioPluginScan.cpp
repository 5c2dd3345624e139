#include "scan/session/ExternalAudioPluginScan.h"

#include <algorithm>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/process/OwnProcess.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>
#include <zetscanprotocol/ScanInfo.h>
#include <zetscanprotocol/ScanProtocol.h>
#include <zetscanprotocol/ScanRelay.h>
#include <zetscanprotocol/ScanRequests.h>

#include "scan/ScanTrace.h"

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
namespace protocol = zetscanprotocol;
namespace reasons = zetaudiopluginhost::reasons;
namespace threads = zetcore::threads;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;
using zetcore::debug::FaultPoint;

constexpr std::chrono::seconds drainLimit{86400};

} // namespace

ExternalAudioPluginScan::ExternalAudioPluginScan(PortWait portWait,
                                                 std::unique_ptr<ScannerConnection> scannerConnection)
    : connection(std::move(scannerConnection)), launcher(std::move(portWait))
{}

// This ends no process. A scanner that a failed start has left behind ends by itself.
ExternalAudioPluginScan::~ExternalAudioPluginScan() = default;

bool ExternalAudioPluginScan::StartScan(const std::wstring& pluginSettings,
                                        const std::wstring& bannedSettings,
                                        const std::wstring& permanentBannedSettings,
                                        const std::vector<PluginLocator>& locators, bool disableShellSkipping,
                                        bool quickScan, ProgressCallback callback)
{
    zetcore::threads::AssertMainThread();
    startFailure.reset();
    {
        const std::lock_guard lock(mutex);
        currentLocator = PluginLocator();
        pending = locators;
        disableVST2ShellSkipping = disableShellSkipping;
        quickEffectScan = quickScan;
        progressCallback = std::move(callback);
        pluginSettingsPath = pluginSettings;
        bannedSettingsPath = bannedSettings;
        permanentBannedSettingsPath = permanentBannedSettings;
        resultFile = ScanResultFile(pluginSettings);
        progress = 0;
        progressBase = 0;
        total = 0;
        connected = false;
        restartAllowed = true;
        finished = false;
        ++scanNumber;
        restarts = RestartCount(locators.size());
        process = ScannerProcess();
        resultFile.DeleteIfThere();
    }
    return LaunchServerAndConnect();
}

void ExternalAudioPluginScan::StopScan()
{
    zetcore::threads::AssertMainThread();
    FaultPoint("host.stopping");
    const auto mainThread = threads::GetRegisteredMainThread();
    if (mainThread && mainThread->CanRun())
        mainThread->Run(std::chrono::steady_clock::now() + drainLimit);

    bool wasFinished = false;
    {
        const std::lock_guard lock(mutex);
        restartAllowed = false;
        wasFinished = std::exchange(finished, true);
    }

    connection->Close();
    FaultPoint("host.disconnected");
    if (process)
        EndScannerProcess(std::exchange(process, ScannerProcess()));
    // The scanner has had no time to take its own away.
    protocol::DeleteRelayOf(zetcore::process::OwnProcessNumber());
    FaultPoint("host.scanner-ended");
    if (!wasFinished)
        NotifyScanFinished();
}

bool ExternalAudioPluginScan::LaunchServerAndConnect()
{
    startFailure.reset();
    const auto launch = launcher.Launch(process);
    if (const auto* const failure = std::get_if<LaunchFailure>(&launch))
        startFailure = failure->reason;
    else if (const auto port = std::get<std::uint16_t>(launch); !Connect(port))
        startFailure =
            reasons::InEnglish(reasons::scannerIsDeaf, {std::to_string(port), protocol::loopbackAddress});
    if (startFailure)
        zetcore::debug::TraceLine(1, "ExternalAudioPluginScan", *startFailure);
    return !startFailure;
}

bool ExternalAudioPluginScan::Connect(std::uint16_t port)
{
    static ScanTraceSite portSite;
    portSite.Write("Scan server's port: ", port);

    if (!connection->Open(port))
        return false;
    connection->SetCloseCallback(
        [weak = weak_from_this()](const std::shared_ptr<zettransport::Session>& closed) {
            const auto self = weak.lock();
            return self ? self->OnSessionClosed(closed) : zettransport::TransportError{0};
        });
    SendRequest(protocol::BuildConnect({pluginSettingsPath, bannedSettingsPath, permanentBannedSettingsPath,
                                        resultFile.Path(), disableVST2ShellSkipping, quickEffectScan}),
                [](ExternalAudioPluginScan& self, const auto&) { self.OnServerConnectOK(); });
    static ScanTraceSite sentSite;
    sentSite.Write("Sent connection request");
    FaultPoint("host.connect-sent");
    return true;
}

void ExternalAudioPluginScan::RestartSession()
{
    static ScanTraceSite site;
    site.Write("RestartSession()");
    FaultPoint("host.restarting");
    std::size_t left = 0;
    {
        // A restart that was posted while the scan was being stopped would start a scanner that nobody ends.
        const std::lock_guard lock(mutex);
        if (!restartAllowed)
            return;
        left = pending.size();
    }
    restarts.NoteRestart(left, process);
    if (WhyGaveUp())
        NotifyScanFinished();
    else
        LaunchServerAndConnect();
}

void ExternalAudioPluginScan::ReportProgress(const PluginLocator& plugin, const std::string& subcomponent)
{
    std::int32_t done = 0;
    std::int32_t all = 0;
    {
        // The report tells how far the scan is now, not how far it was when the report was posted.
        const std::lock_guard lock(mutex);
        done = progress;
        all = total;
    }
    progressCallback(plugin, subcomponent, done, all);
    FaultPoint("host.progress-shown");
}

void ExternalAudioPluginScan::NotifyScanFinished()
{
    // The callback is called with the mutex held. This cannot deadlock: the callback runs on the main thread,
    // only asks the dialog to close, and waits for nobody. No other thread waits for the main thread under
    // this mutex.
    const std::lock_guard lock(mutex);
    progressCallback(PluginLocator(), std::string(), 1, 0);
    try {
        resultFile.DeleteIfThere();
    } catch (const filesupport::file_exception&) {
        // The scan has ended all the same. The next scan deletes the file before it starts.
    }
    currentLocator = PluginLocator();
    finished = true;
    FaultPoint("host.finished");
}

void ExternalAudioPluginScan::OnServerConnectOK()
{
    static ScanTraceSite site;
    site.Write("OnServerConnectOK()");
    FaultPoint("host.connect-answered");
    {
        const std::lock_guard lock(mutex);
        connected = true;
    }
    SendScanRequest();
}

void ExternalAudioPluginScan::SendScanRequest()
{
    static ScanTraceSite site;
    site.Write("SendScanRequest");
    // The mutex is held while the request is handed over. This cannot deadlock, because the client only
    // queues the request and calls nobody.
    const std::lock_guard lock(mutex);
    SendRequest(protocol::BuildBeginScanForPlugins(pending),
                [](ExternalAudioPluginScan& self, const auto&) { self.OnScanRequestSuccess(); });
}

void ExternalAudioPluginScan::OnScanRequestSuccess()
{
    static ScanTraceSite site;
    site.Write("OnScanRequestSuccess");
    FaultPoint("host.list-answered");
    SendGetScanInfo();
}

void ExternalAudioPluginScan::SendGetScanInfo()
{
    static ScanTraceSite site;
    site.Write("SendGetScanInfo");
    SendRequest(protocol::BuildGetScanInfo(),
                [](ExternalAudioPluginScan& self, const auto& reply) { self.OnGetScanInfo(reply); });
}

void ExternalAudioPluginScan::OnGetScanInfo(const std::shared_ptr<std::any>& reply)
{
    static ScanTraceSite site;
    site.Write("OnScanInfo");
    const protocol::ScanInfo info = protocol::ReadScanInfoReply(reply);
    FaultPoint("host.info-read");

    const std::lock_guard lock(mutex);
    currentLocator = info.locator;
    if (!currentLocator.GetPath().empty()) {
        const auto reported = std::find(pending.begin(), pending.end(), currentLocator);
        if (reported != pending.end())
            pending.erase(reported);
    }
    // A scanner may claim any number, so the two are added without overflow, as unsigned 32-bit words.
    progress = static_cast<std::int32_t>(static_cast<std::uint32_t>(progressBase) +
                                         static_cast<std::uint32_t>(info.progress));
    if (total == 0)
        total = info.total;

    // Both calls only queue something, so that neither can deadlock under the mutex.
    if (info.continues) {
        PostToMainThread(
            [plugin = currentLocator, subcomponent = zetcore::string::UTF16to8(info.subcomponent)](
                ExternalAudioPluginScan& self) { self.ReportProgress(plugin, subcomponent); });
        SendScanOneEntity();
    } else if (!finished) {
        PostToMainThread(&ExternalAudioPluginScan::NotifyScanFinished);
    }
}

void ExternalAudioPluginScan::SendScanOneEntity()
{
    static ScanTraceSite site;
    site.Write("SendScanOneEntity");
    SendRequest(protocol::BuildScanOneEntity(),
                [](ExternalAudioPluginScan& self, const auto&) { self.OnScanOneEntitySuccess(); });
}

void ExternalAudioPluginScan::OnScanOneEntitySuccess()
{
    FaultPoint("host.entity-answered");
    {
        const std::lock_guard lock(mutex);
        std::string text = resultFile.Read();
        if (!text.empty())
            threads::AsyncCallFromMainThread(
                [text = std::move(text)] {
                    PluginModuleInfoManager::GetInstance()->AddConfiguration(text, false);
                    FaultPoint("host.result-merged");
                },
                0);
    }
    FaultPoint("host.result-read");
    SendGetScanInfo();
}

void ExternalAudioPluginScan::OnServerFailed(int, const std::wstring&, long long)
{
    static ScanTraceSite site;
    site.Write("OnServerFailed()");
}

zettransport::TransportError
ExternalAudioPluginScan::OnSessionClosed(const std::shared_ptr<zettransport::Session>&)
{
    static ScanTraceSite site;
    site.Write("OnListenerClose()");
    FaultPoint("host.closed");
    // The mutex is held while the ban is noted and saved. This cannot deadlock: the locks of the banned list
    // and of the registry come after this one, and no code that holds one of them calls a session.
    const std::lock_guard lock(mutex);
    progressBase = progress;
    if (!currentLocator.GetPath().empty()) {
        BannedPluginManager::GetInstance()->AddBannedPlugin(currentLocator);
        try {
            BannedPluginManager::GetInstance()->SaveConfiguration(filesupport::File(bannedSettingsPath));
        } catch (const filesupport::file_exception&) {
            // The ban could not be saved. It holds for this run.
        }
        FaultPoint("host.banned");
    }
    if (restartAllowed && !pending.empty())
        PostToMainThread(&ExternalAudioPluginScan::RestartSession);
    else if (!finished)
        PostToMainThread(&ExternalAudioPluginScan::NotifyScanFinished);
    connected = false;
    return 0;
}

void ExternalAudioPluginScan::OnServerQuitDone()
{
    static ScanTraceSite site;
    site.Write("Server quitted");
    const std::lock_guard lock(mutex);
    PostToMainThread(&ExternalAudioPluginScan::NotifyScanFinished);
}

// Handlers and posted calls hold the object weakly. A call that comes after the object's end does nothing.

void ExternalAudioPluginScan::PostToMainThread(std::function<void(ExternalAudioPluginScan&)> call)
{
    threads::AsyncCallFromMainThread(
        [weak = weak_from_this(), number = scanNumber, call = std::move(call)] {
            const auto self = weak.lock();
            if (self && self->scanNumber == number)
                call(*self);
        },
        0);
}

void ExternalAudioPluginScan::SendRequest(
    const zetcore::serialization::Call& call,
    std::function<void(ExternalAudioPluginScan&, const std::shared_ptr<std::any>&)> onResult)
{
    connection->Send(
        call,
        [weak = weak_from_this(), onResult = std::move(onResult)](const std::shared_ptr<std::any>& result,
                                                                  long long) {
            if (const auto self = weak.lock())
                onResult(*self, result);
        },
        [weak = weak_from_this()](int code, const std::wstring& message, long long id) {
            if (const auto self = weak.lock())
                self->OnServerFailed(code, message, id);
        });
}

} // namespace zetaudiopluginhostui
