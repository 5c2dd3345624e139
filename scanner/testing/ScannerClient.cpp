#include "ScannerClient.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/Backoff.h>
#include <zetmarshal/RPCClient.h>
#include <zetscanprotocol/ScanProtocol.h>
#include <zettesting/TemporaryFolder.h>
#include <zettesting/TestPlugins.h>
#include <zettransport/SocketTransport.h>

namespace zetaudiofilterscan {

using zetaudiofilterhost::PluginLocator;
using zetaudiopluginhost::BannedPluginManager;
using zetcore::filesupport::MemoryMappedFile;
using zetcore::serialization::ValuePtr;
using zetscanprotocol::ScanInfo;
using zettesting::ToWide;
using zettransport::Session;

namespace {

constexpr std::chrono::minutes limit{1};

std::filesystem::path ToNative(const std::wstring& path)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return path;
    else
        return zetcore::string::UTF16to8(path);
}

} // namespace

struct ScannerClient::Conversation
{
    std::mutex mutex;
    std::condition_variable changed;
    bool closed = false;
    long long lastRequest = 0;
    std::map<long long, Reply> replies;
    std::shared_ptr<zettransport::SocketTransport> transport = zettransport::SocketTransport::Create(1);
    std::shared_ptr<Session> session;
    std::unique_ptr<zetmarshal::RPCClient> client;

    ~Conversation() { transport.reset(); }

    void OnReply(long long request, Reply reply)
    {
        const std::scoped_lock lock(mutex);
        replies[request] = std::move(reply);
        changed.notify_all();
    }
};

ScannerClient::ScannerClient(std::filesystem::path preferences, Environment environment, int traceVolume)
    : prefs(std::move(preferences))
{
    if (!block.Init(zetscanprotocol::blockName, zetscanprotocol::blockSize, MemoryMappedFile::CreateLocked))
        throw std::runtime_error("the port block cannot be made");
    auto* words = static_cast<std::uint32_t*>(block.GetAddress());
    const std::atomic_ref<std::uint32_t> portWord(words[zetscanprotocol::portWord]);
    std::atomic_ref<std::uint32_t>(words[zetscanprotocol::traceVolumeWord])
        .store(static_cast<std::uint32_t>(traceVolume));
    portWord.store(0);

    zettesting::ChildProcess::Options options;
    options.program = Program();
    options.environment = std::move(environment);
    options.interruptible = true;
    process = std::make_unique<zettesting::ChildProcess>(options);

    const auto giveUp = std::chrono::steady_clock::now() + limit;
    zetcore::utility::Backoff pause;
    while ((port = static_cast<std::uint16_t>(portWord.load())) == 0) {
        if (std::chrono::steady_clock::now() >= giveUp)
            throw std::runtime_error("the scanner tells no port");
        pause();
    }
    block.CloseFileHandleIfPossible();
}

ScannerClient::~ScannerClient() = default;

std::filesystem::path ScannerClient::Program()
{
    const bool isWindows = zettesting::ModuleSuffix() == ".dll";
    return ToNative(zetcore::filesupport::commondirs::ExecutableDir().FullPath()) /
           (isWindows ? "zetaudiofilterscan.exe" : "zetaudiofilterscan");
}

std::filesystem::path ScannerClient::BannedPath(const std::filesystem::path& prefs)
{
    return prefs / ToNative(BannedPluginManager::GetSettingsFileName());
}

std::filesystem::path ScannerClient::PermanentBannedPath() const
{
    return prefs / ToNative(BannedPluginManager::GetPermanentBannedSettingsFileName());
}

bool ScannerClient::Open()
{
    auto opened = std::make_unique<Conversation>();
    opened->session = opened->transport->ClientStart(zetscanprotocol::loopbackAddress, port);
    if (!opened->session)
        return false;
    opened->session->SetCloseCallback([self = opened.get()](const std::shared_ptr<Session>&) {
        const std::scoped_lock lock(self->mutex);
        self->closed = true;
        self->changed.notify_all();
        return 0;
    });
    opened->client = std::make_unique<zetmarshal::RPCClient>(opened->session, L"ClientUnknown");
    conversation = std::move(opened);
    return true;
}

void ScannerClient::Close()
{
    conversation.reset();
}

void ScannerClient::Send(const zetcore::serialization::Call& call)
{
    Conversation* self = conversation.get();
    const long long request = ++self->lastRequest;
    self->client->SendRequest(
        call,
        [self, request](const ValuePtr& result, long long) {
            self->OnReply(request, {false, result, 0, {}});
        },
        [self, request](int code, const std::wstring& message, long long) {
            self->OnReply(request, {false, nullptr, code, message});
        });
}

Reply ScannerClient::Call(const zetcore::serialization::Call& call)
{
    Send(call);
    std::unique_lock lock(conversation->mutex);
    const long long request = conversation->lastRequest;
    if (!conversation->changed.wait_for(
            lock, limit, [&] { return conversation->closed || conversation->replies.contains(request); }))
        throw std::runtime_error(call.method + " was not answered");
    const auto reply = conversation->replies.extract(request);
    return reply.empty() ? Reply{true, nullptr, 0, {}} : reply.mapped();
}

bool ScannerClient::WaitForClose()
{
    std::unique_lock lock(conversation->mutex);
    return conversation->changed.wait_for(lock, limit, [&] { return conversation->closed; });
}

zetscanprotocol::ConnectArguments ScannerClient::ConnectArguments(bool disableShellSkipping, bool quick) const
{
    return {ToWide(SettingsPath()), ToWide(BannedPath()), ToWide(PermanentBannedPath()),
            ToWide(ResultPath()),   disableShellSkipping, quick};
}

Reply ScannerClient::Connect(bool disableShellSkipping, bool quick)
{
    return Call(zetscanprotocol::BuildConnect(ConnectArguments(disableShellSkipping, quick)));
}

Reply ScannerClient::BeginScan(const std::vector<PluginLocator>& locators)
{
    return Call(zetscanprotocol::BuildBeginScanForPlugins(locators));
}

ScanInfo ScannerClient::GetScanInfo()
{
    const Reply reply = Call(zetscanprotocol::BuildGetScanInfo());
    if (!reply.Succeeded())
        throw std::runtime_error("GetScanInfo failed: " + zetcore::string::UTF16to8(reply.errorMessage));
    return zetscanprotocol::ReadScanInfoReply(reply.result);
}

Reply ScannerClient::ScanOneEntity()
{
    return Call(zetscanprotocol::BuildScanOneEntity());
}

void ScannerClient::StartScan(const std::vector<PluginLocator>& locators)
{
    if (!Open())
        throw std::runtime_error("no connection");
    for (const Reply& reply : {Connect(), BeginScan(locators)})
        if (!reply.Succeeded())
            throw std::runtime_error("refused: " + zetcore::string::UTF16to8(reply.errorMessage));
}

WholeScan ScanAll(const std::filesystem::path& prefs, const std::vector<PluginLocator>& locators,
                  const ScannerClient::Environment& environment)
{
    WholeScan scan;
    std::vector<PluginLocator> pending = locators;
    while (!pending.empty()) {
        ScannerClient client(prefs, environment);
        ++scan.scannersStarted;
        client.StartScan(pending);
        for (ScanInfo info = client.GetScanInfo(); info.continues; info = client.GetScanInfo()) {
            // Without a locator the host waits for a plug-in, or reads results once more.
            if (!info.locator.GetPath().empty())
                scan.reported.push_back(info.locator);
            std::erase(pending, info.locator);
            if (client.ScanOneEntity().closed) {
                const auto reason =
                    zetaudiopluginhost::FindBanReason(ToWide(client.BannedPath()), info.locator);
                scan.failed[info.locator.GetPath()] = reason ? reason->reason : "no reason was recorded";
                break;
            }
            scan.results += zettesting::ReadAll(client.ResultPath());
        }
        client.Close();
        client.Process().Wait();
    }
    return scan;
}

PluginLocator LocatorOf(const std::filesystem::path& module)
{
    return zetaudiofilterhost::LocatorOfModuleFile(ToWide(module));
}

} // namespace zetaudiofilterscan
