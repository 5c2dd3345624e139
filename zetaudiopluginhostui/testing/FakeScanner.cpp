// A scanner that does what a script says. The folder that the environment's ZET_FAKE_SCANNER names holds
// script.1 for the first process that is started there, script.2 for the second, and so on; log.N tells what
// each was asked. A script's lines:
//
//   none            do not write a port
//   dead            write a port at which nobody listens
//   word N          write this number as the port
//   high-bits       from now on, write ports with the high 16 bits set
//   listen [NAME]   listen, write the port and make a file of that name; the lines after it answer requests
//   listen-raw      the same without a file, for a scanner that may write anything; see below
//   wait NAME       wait until there is a file of that name in the folder
//   touch NAME      make one
//   say TEXT        write the line to standard error
//   say-much N      write so many bytes there
//   ok              answer the request with success
//   reply JSON      answer with this result
//   result TEXT     write the result file, then answer with success
//   error           answer with an error
//   hold            do not answer
//   die             end at once
//   die-when NAME   end as soon as there is a file of that name
//
// After listen-raw, these answer too ("@id" stands for the request's id):
//
//   slow JSON       this result, a byte at a time
//   twice JSON      this result, two times
//   message JSON    a frame with this message
//   bytes TEXT      these bytes, with \r and \n for the line end's
//   nested N        a result of this many arrays in each other
//
// A script without an answer left lets the scanner wait until its connection closes; it ends then.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/sharing/MemoryMappedFile.h>
#include <zetcore/serialization/Value.h>
#include <zetcore/utility/Backoff.h>
#include <zetmarshal/JsonValue.h>
#include <zetmarshal/RPCServer.h>
#include <zetscanprotocol/ScanInfo.h>
#include <zetscanprotocol/ScanProtocol.h>
#include <zetscanprotocol/ScanRequests.h>
#include <zettransport/SocketTransport.h>

#include "testing/RawServer.h"

namespace {

namespace protocol = zetscanprotocol;
namespace serialization = zetcore::serialization;
using zetcore::filesupport::MemoryMappedFile;
using zetmarshal::RPCResponder;

class FakeScanner
{
  public:
    explicit FakeScanner(std::filesystem::path scriptFolder) : folder(std::move(scriptFolder))
    {
        do
            ++number;
        while (!std::filesystem::create_directory(folder / ("launch." + std::to_string(number))));
        std::ifstream script(folder / ("script." + std::to_string(number)));
        for (std::string line; std::getline(script, line);)
            lines.push_back(line);
        if (!block.Init(protocol::blockName, protocol::blockSize, MemoryMappedFile::OpenShared))
            throw std::runtime_error("no block");
        Log("volume " + std::to_string(static_cast<int>(Word(protocol::traceVolumeWord).load())));
    }

    void Run()
    {
        while (!lines.empty()) {
            const auto [command, argument] = NextLine();
            if (command == "none")
                continue;
            if (command == "word")
                Word(protocol::portWord) = static_cast<std::uint32_t>(std::stoul(argument));
            else if (command == "dead")
                Word(protocol::portWord) = UnusedPort();
            else if (command == "high-bits")
                highBits = 0xABCD0000;
            else if (command == "listen")
                Serve(argument);
            else if (command == "listen-raw")
                ServeRaw();
            else
                DoBetween(command, argument);
        }
    }

  private:
    std::atomic_ref<std::uint32_t> Word(std::size_t index)
    {
        return std::atomic_ref(static_cast<std::uint32_t*>(block.GetAddress())[index]);
    }

    static std::uint16_t UnusedPort()
    {
        const auto transport = zettransport::SocketTransport::Create(1);
        return transport->ServerStart([](auto&&...) { return false; });
    }

    std::pair<std::string, std::string> NextLine()
    {
        const std::string line = lines.front();
        lines.erase(lines.begin());
        const auto space = line.find(' ');
        return {line.substr(0, space), space == std::string::npos ? std::string() : line.substr(space + 1)};
    }

    void Log(const std::string& line)
    {
        std::ofstream log(folder / ("log." + std::to_string(number)), std::ios::app);
        log << line << "\n";
    }

    void DoBetween(const std::string& command, const std::string& argument)
    {
        if (command == "touch")
            std::ofstream(folder / argument).flush();
        else if (command == "wait")
            for (zetcore::utility::Backoff pause; !std::filesystem::exists(folder / argument);)
                pause();
        else if (command == "say")
            std::fprintf(stderr, "%s\n", argument.c_str());
        else if (command == "say-much")
            for (std::size_t left = std::stoul(argument); left > 0; left -= std::min(left, dots.size()))
                std::fwrite(dots.data(), 1, std::min(left, dots.size()), stderr);
        else if (command == "die")
            std::_Exit(1);
        else if (command == "die-when")
            std::thread([this, argument] {
                DoBetween("wait", argument);
                std::_Exit(1);
            }).detach();
        else
            throw std::runtime_error("cannot do \"" + command + "\"");
    }

    void Serve(const std::string& whenListening)
    {
        const auto transport = zettransport::SocketTransport::Create(1);
        std::promise<void> closed;
        std::unique_ptr<zetmarshal::RPCServer> server;
        const std::uint16_t port = transport->ServerStart(
            [&](std::shared_ptr<zettransport::Session> session, const zettransport::SocketTransport::Peer&) {
                server = std::make_unique<zetmarshal::RPCServer>(session);
                for (const char* method : protocol::methods)
                    server->Register(method, [this, method](const serialization::Array& params,
                                                            std::shared_ptr<RPCResponder> responder) {
                        Answer(method, params, responder);
                    });
                server->Start();
                session->SetCloseCallback([&closed](auto&&) {
                    closed.set_value();
                    return 0;
                });
                return true;
            });
        Word(protocol::portWord) = port | highBits;
        if (!whenListening.empty())
            DoBetween("touch", whenListening);
        closed.get_future().wait();
        transport->ServerStop();
        lines.clear();
    }

    void ServeRaw()
    {
        zetaudiopluginhostui::RawServer server;
        Word(protocol::portWord) = server.Port();
        server.Accept();
        while (const auto frame = server.NextFrame()) {
            const serialization::ValuePtr request = zetmarshal::FromJson(*frame);
            const auto& members = std::any_cast<const serialization::Object&>(*request);
            const auto id = members.find(serialization::ToUtf8String("id"));
            if (id == members.end())
                continue;
            const auto method = std::any_cast<serialization::Utf8String>(
                *serialization::GetVariantInObject(request, "method"));
            LogRequest(serialization::ToStdString(method),
                       serialization::GetVariantInObject(request, "params"));
            AnswerRaw(server, zetmarshal::ToJson(id->second));
        }
        lines.clear();
    }

    static std::string Frame(const std::string& payload)
    {
        return "Content-Length: " + std::to_string(payload.size()) + "\r\n\r\n" + payload;
    }

    static std::string Replaced(std::string text, const std::string& old, const std::string& with)
    {
        for (std::size_t at = 0; (at = text.find(old, at)) != std::string::npos; at += with.size())
            text.replace(at, old.size(), with);
        return text;
    }

    void AnswerRaw(zetaudiopluginhostui::RawServer& server, const std::string& id)
    {
        const auto result = [&id](const std::string& json) {
            return Frame(R"({"jsonrpc":"2.0","id":)" + id + R"(,"result":)" + json + "}");
        };
        constexpr std::size_t atOnce = 65536;
        while (!lines.empty()) {
            const auto [command, text] = NextLine();
            const std::string argument = Replaced(text, "@id", id);
            if (command == "ok")
                return server.Write(result("{}"), atOnce);
            if (command == "reply")
                return server.Write(result(argument), atOnce);
            if (command == "slow")
                return server.Write(result(argument), 1);
            if (command == "twice")
                return server.Write(result(argument) + result(argument), atOnce);
            if (command == "message")
                return server.Write(Frame(argument), atOnce);
            if (command == "bytes")
                return server.Write(Replaced(Replaced(argument, "\\r", "\r"), "\\n", "\n"), atOnce);
            if (command == "nested") {
                const std::size_t depth = std::stoul(argument);
                return server.Write(result(std::string(depth, '[') + std::string(depth, ']')), atOnce);
            }
            DoBetween(command, text);
        }
    }

    void LogRequest(const std::string& method, const serialization::ValuePtr& params)
    {
        Log(method.substr(method.rfind('.') + 1) + " " + zetmarshal::ToJson(params));
    }

    void Answer(const std::string& method, const serialization::Array& params,
                const std::shared_ptr<RPCResponder>& responder)
    {
        LogRequest(method, serialization::MakeValue(params));
        if (method == protocol::connectMethod)
            resultFile = protocol::ReadConnect(params).resultFilePath;
        while (!lines.empty()) {
            const auto [command, argument] = NextLine();
            if (command == "ok")
                return responder->Succeed(protocol::BuildDoneReply());
            if (command == "reply")
                return responder->Succeed(zetmarshal::FromJson(argument));
            if (command == "error")
                return responder->Fail(zetmarshal::RPCErrorCode::Failed, "as the script says");
            if (command == "hold") {
                held.push_back(responder);
                return;
            }
            if (command == "result") {
                zetcore::filesupport::FileUtils::SimpleWriteStringToFile(resultFile, argument);
                return responder->Succeed(protocol::BuildDoneReply());
            }
            DoBetween(command, argument);
        }
        held.push_back(responder);
    }

    const std::filesystem::path folder;
    int number = 0;
    std::vector<std::string> lines;
    MemoryMappedFile block;
    const std::string dots = std::string(79, '.') + "\n";
    std::uint32_t highBits = 0;
    std::wstring resultFile;
    std::vector<std::shared_ptr<RPCResponder>> held;
};

} // namespace

int main()
{
    // Whatever a script asks for, nothing is left behind for long.
    std::thread([] {
        std::promise<void>().get_future().wait_for(std::chrono::minutes(3));
        std::_Exit(2);
    }).detach();
    const char* const folder = std::getenv("ZET_FAKE_SCANNER");
    if (!folder)
        return 3;
    try {
        FakeScanner(folder).Run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fake scanner: %s\n", error.what());
        return 4;
    }
    return 0;
}
