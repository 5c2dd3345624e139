#include "ScannerLaunch.h"

#include <atomic>
#include <future>
#include <memory>
#include <stdexcept>

#include <zetcore/filesupport/sharing/MemoryMappedFile.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/Backoff.h>
#include <zetmarshal/RPCClient.h>
#include <zetscanprotocol/ScanProtocol.h>
#include <zetscanprotocol/ScanRequests.h>
#include <zettransport/SocketTransport.h>

#include "Measure.h"
#include "scan/ScannerProcess.h"

namespace bench {

double SecondsToConnect(const std::filesystem::path& scanner, const std::filesystem::path& prefs)
{
    using namespace zetcore;
    filesupport::MemoryMappedFile block;
    if (!block.Init(zetscanprotocol::blockName, zetscanprotocol::blockSize,
                    filesupport::MemoryMappedFile::CreateLocked))
        throw std::runtime_error("no shared block");
    std::atomic_ref<std::uint32_t> port(
        static_cast<std::uint32_t*>(block.GetAddress())[zetscanprotocol::portWord]);
    port = 0;

    std::shared_ptr<zettransport::SocketTransport> transport;
    std::shared_ptr<zettransport::Session> session;
    std::unique_ptr<zetmarshal::RPCClient> client;
    zetaudiopluginhostui::ScannerProcess process;
    const double seconds = Seconds([&] {
        process = zetaudiopluginhostui::StartScannerProcess(filesupport::File(scanner.wstring()));
        if (!process)
            throw std::runtime_error("cannot start " + scanner.string());
        utility::Backoff backoff;
        while ((port & 0xffff) == 0)
            backoff();
        block.CloseFileHandleIfPossible();
        transport = zettransport::SocketTransport::Create(1);
        session = transport->ClientStart(zetscanprotocol::loopbackAddress,
                                         static_cast<std::uint16_t>(port & 0xffff));
        if (!session)
            throw std::runtime_error("cannot connect to the scanner");
        client = std::make_unique<zetmarshal::RPCClient>(session, L"ScanBench");

        const auto file = [&prefs](const char* name) {
            return zetcore::string::UTF8to16((prefs / name).string());
        };
        const auto connect = zetscanprotocol::BuildConnect(
            {file("AudioPlugins.xml"), file("BannedAudioPlugins.xml"), file("UnsupportedAudioPlugins.xml"),
             file("AudioPlugins.xml.scan"), false, true});
        std::promise<bool> answered;
        client->SendRequest(
            connect, [&](const auto&, long long) { answered.set_value(true); },
            [&](int, const std::wstring&, long long) { answered.set_value(false); });
        if (!answered.get_future().get())
            throw std::runtime_error("the scanner refused to connect");
    });
    session->Close();
    zetaudiopluginhostui::EndScannerProcess(process);
    return seconds;
}

} // namespace bench
