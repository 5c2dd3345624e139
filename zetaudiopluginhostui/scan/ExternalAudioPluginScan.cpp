#include "scan/ExternalAudioPluginScan.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/FileException.h>
#include <zetcore/filesupport/IPlatformByteStream.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "scan/ScanMessages.h"
#include "scan/ScanTrace.h"

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
namespace protocol = zetscanprotocol;
namespace threads = zetcore::threads;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

constexpr std::chrono::seconds drainLimit{86400};
constexpr wchar_t clientName[] = L"ClientUnknown";

std::string ReadWhole(const filesupport::File& file)
{
    const auto stream = filesupport::IPlatformByteStream::OpenForReading(file);
    std::string text(static_cast<std::size_t>(stream->Length()), '\0');
    std::size_t read = 0;
    while (read < text.size()) {
        const std::size_t count = stream->ReadBlock(text.data() + read, text.size() - read);
        if (count == 0)
            break;
        read += count;
    }
    text.resize(read);
    return text;
}

/// 0: no limit.
int MostFruitlessRestarts()
{
    const std::string entry = zetcore::debug::DebugDatabase::Instance().GetEntry(mostFruitlessRestarts, "");
    int most = 0;
    const auto [end, error] = std::from_chars(entry.data(), entry.data() + entry.size(), most);
    return error == std::errc() && end == entry.data() + entry.size() ? std::max(most, 0) : 0;
}

} // namespace

ExternalAudioPluginScan::ExternalAudioPluginScan(PortWait portWait) : launcher(std::move(portWait)) {}

// Ends no process: a scanner that a failed start has left behind is none of ours any more.
ExternalAudioPluginScan::~ExternalAudioPluginScan() = default;

bool ExternalAudioPluginScan::StartScan(const std::wstring& pluginSettings,
                                        const std::wstring& bannedSettings,
                                        const std::wstring& permanentBannedSettings,
                                        const std::vector<PluginLocator>& locators, bool disableShellSkipping,
                                        bool quickScan, ProgressCallback callback)
{
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
        resultFilePath = pluginSettings + protocol::resultFileSuffix;
        progress = 0;
        progressBase = 0;
        total = 0;
        connected = false;
        restartAllowed = true;
        finished = false;
        ++scanNumber;
        pendingAtRestart = locators.size();
        fruitlessRestarts = 0;
        gaveUp = false;
        process = ScannerProcess();
        if (ResultFile().Exists())
            ResultFile().Delete();
    }
    return LaunchServerAndConnect();
}

void ExternalAudioPluginScan::StopScan()
{
    const auto mainThread = threads::GetRegisteredMainThread();
    if (mainThread && mainThread->CanRun())
        mainThread->Run(std::chrono::steady_clock::now() + drainLimit);

    bool wasFinished = false;
    {
        const std::lock_guard lock(mutex);
        restartAllowed = false;
        wasFinished = std::exchange(finished, true);
    }

    // Taken out under the lock and let go of without it: dropping the transport waits for its handlers.
    std::shared_ptr<zettransport::SocketTransport> oldTransport;
    std::shared_ptr<zettransport::Session> oldSession;
    std::shared_ptr<zetmarshal::RPCClient> oldClient;
    {
        const std::lock_guard lock(connectionMutex);
        if (session) {
            oldTransport = std::move(transport);
            oldSession = std::move(session);
            oldClient = std::move(client);
        }
    }
    if (oldSession) {
        oldSession->Close();
        oldClient.reset();
        oldSession.reset();
        oldTransport.reset();
    }

    if (process)
        EndScannerProcess(std::exchange(process, ScannerProcess()));
    if (!wasFinished)
        NotifyScanFinished();
}

bool ExternalAudioPluginScan::LaunchServerAndConnect()
{
    const std::uint16_t port = launcher.Launch(process);
    return port != 0 && Connect(port);
}

bool ExternalAudioPluginScan::Connect(std::uint16_t port)
{
    static ScanTraceSite portSite;
    portSite.Write("Scan server's port: ", port);

    const auto newTransport = zettransport::SocketTransport::Create(1);
    auto oldTransport = newTransport;
    {
        const std::lock_guard lock(connectionMutex);
        transport.swap(oldTransport);
    }
    oldTransport.reset();

    const auto newSession = newTransport->ClientStart(protocol::loopbackAddress, port);
    auto oldSession = newSession;
    {
        const std::lock_guard lock(connectionMutex);
        session.swap(oldSession);
    }
    oldSession.reset();
    if (!newSession)
        return false;

    auto oldClient = std::make_shared<zetmarshal::RPCClient>(newSession, clientName);
    {
        const std::lock_guard lock(connectionMutex);
        client.swap(oldClient);
    }
    oldClient.reset();

    newSession->SetCloseCallback([weak = weak_from_this()](std::shared_ptr<zettransport::Session> closed) {
        const auto self = weak.lock();
        return self ? self->OnSessionClosed(closed) : zettransport::TransportError{0};
    });
    SendRequest(BuildConnect({pluginSettingsPath, bannedSettingsPath, permanentBannedSettingsPath,
                              resultFilePath, disableVST2ShellSkipping, quickEffectScan}),
                [](ExternalAudioPluginScan& self, const auto&) { self.OnServerConnectOK(); });
    static ScanTraceSite sentSite;
    sentSite.Write("Sent connection request");
    return true;
}

void ExternalAudioPluginScan::RestartSession()
{
    static ScanTraceSite site;
    site.Write("RestartSession()");
    {
        // Posted while the scan was being stopped, it would start a scanner that nobody ends.
        const std::lock_guard lock(mutex);
        if (!restartAllowed)
            return;
        gaveUp = IsOneTooMany();
    }
    if (gaveUp)
        NotifyScanFinished();
    else
        LaunchServerAndConnect();
}

bool ExternalAudioPluginScan::IsOneTooMany()
{
    if (pending.size() < pendingAtRestart)
        fruitlessRestarts = 0;
    pendingAtRestart = pending.size();
    ++fruitlessRestarts;
    const int most = MostFruitlessRestarts();
    if (most == 0 || fruitlessRestarts <= most)
        return false;
    zetcore::debug::TraceLine(
        1, "ExternalAudioPluginScan",
        "The scanner was restarted " + std::to_string(most) +
            " times without getting on; plug-ins not scanned: " + std::to_string(pending.size()));
    return true;
}

void ExternalAudioPluginScan::ReportProgress(const PluginLocator& plugin, const std::string& subcomponent)
{
    std::int32_t done = 0;
    std::int32_t all = 0;
    {
        // How far the scan is now, not how far it was when this was posted.
        const std::lock_guard lock(mutex);
        done = progress;
        all = total;
    }
    progressCallback(plugin, subcomponent, done, all);
}

void ExternalAudioPluginScan::NotifyScanFinished()
{
    // The callback is called with the mutex held. It cannot deadlock: it runs on the main thread, only asks
    // the dialog to close, and waits for nobody; no other thread waits for the main thread under this mutex.
    const std::lock_guard lock(mutex);
    progressCallback(PluginLocator(), std::string(), 1, 0);
    try {
        if (ResultFile().Exists())
            ResultFile().Delete();
    } catch (const filesupport::file_exception&) {
        // The scan has ended all the same; the next one deletes the file before it starts.
    }
    currentLocator = PluginLocator();
    finished = true;
}

void ExternalAudioPluginScan::OnServerConnectOK()
{
    static ScanTraceSite site;
    site.Write("OnServerConnectOK()");
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
    // Held while the request is handed over. It cannot deadlock: the client queues it and calls nobody.
    const std::lock_guard lock(mutex);
    SendRequest(BuildBeginScanForPlugins(pending),
                [](ExternalAudioPluginScan& self, const auto&) { self.OnScanRequestSuccess(); });
}

void ExternalAudioPluginScan::OnScanRequestSuccess()
{
    static ScanTraceSite site;
    site.Write("OnScanRequestSuccess");
    SendGetScanInfo();
}

void ExternalAudioPluginScan::SendGetScanInfo()
{
    static ScanTraceSite site;
    site.Write("SendGetScanInfo");
    SendRequest(BuildGetScanInfo(),
                [](ExternalAudioPluginScan& self, const auto& reply) { self.OnGetScanInfo(reply); });
}

void ExternalAudioPluginScan::OnGetScanInfo(const std::shared_ptr<std::any>& reply)
{
    static ScanTraceSite site;
    site.Write("OnScanInfo");
    const ScanInfo info = ReadScanInfoReply(reply);

    const std::lock_guard lock(mutex);
    currentLocator = PluginLocator::FromString(info.locator);
    if (!currentLocator.GetPath().empty()) {
        const auto reported = std::find(pending.begin(), pending.end(), currentLocator);
        if (reported != pending.end())
            pending.erase(reported);
    }
    // A scanner may claim any number: added like the 32-bit words that they are.
    progress = static_cast<std::int32_t>(static_cast<std::uint32_t>(progressBase) +
                                         static_cast<std::uint32_t>(info.progress));
    if (total == 0)
        total = info.total;

    // Posting and sending under the mutex cannot deadlock: both only queue.
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
    SendRequest(BuildScanOneEntity(),
                [](ExternalAudioPluginScan& self, const auto&) { self.OnScanOneEntitySuccess(); });
}

void ExternalAudioPluginScan::OnScanOneEntitySuccess()
{
    {
        const std::lock_guard lock(mutex);
        const filesupport::File file = ResultFile();
        std::string text = file.Exists() ? ReadWhole(file) : std::string();
        if (!text.empty())
            threads::AsyncCallFromMainThread(
                [text = std::move(text)] {
                    PluginModuleInfoManager::GetInstance()->AddConfiguration(text, false);
                },
                0);
    }
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
    // Held while the ban is noted and saved. It cannot deadlock: the locks of the banned list and of the
    // registry come after this one, and nobody who holds one of them calls a session.
    const std::lock_guard lock(mutex);
    progressBase = progress;
    if (!currentLocator.GetPath().empty()) {
        BannedPluginManager::GetInstance()->AddBannedPlugin(currentLocator);
        try {
            BannedPluginManager::GetInstance()->SaveConfiguration(filesupport::File(bannedSettingsPath));
        } catch (const filesupport::file_exception&) {
            // The ban holds for this run.
        }
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

// Handlers and posted calls hold the object weakly: while it lives they do what a plain pointer would do, and
// one that comes too late does nothing.

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
    std::shared_ptr<zetmarshal::RPCClient> connection;
    {
        const std::lock_guard lock(connectionMutex);
        connection = client;
    }
    if (!connection)
        return;
    connection->SendRequest(
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

filesupport::File ExternalAudioPluginScan::ResultFile() const
{
    return filesupport::File(resultFilePath);
}

} // namespace zetaudiopluginhostui
