// Tests of processes that talk to the scanner and are not its host.
#include <atomic>
#include <thread>

#include <gmock/gmock.h>

#include <sys/wait.h>
#include <unistd.h>

#include "FaultFixture.h"
#include "LoopbackSocket.h"

namespace {

using Strings = std::vector<std::string>;
using zettesting::ChildProcess;

std::string Frame(const std::string& payload)
{
    return "Content-Length: " + std::to_string(payload.size()) + "\r\n\r\n" + payload;
}

class Strangers : public FaultFixture
{
  protected:
    Strangers()
        : good{Install("good/vst2_effect", "a_effect").string(),
               Install("good/vst2_synth", "b_synth").string(),
               Install("good/vst2_main_entry", "z_main").string()}
    {}

    /// Stops the host after it has read the port and before it connects.
    std::optional<Stop> StopBeforeConnecting()
    {
        StopAt("host.port-read", 1);
        host = std::make_unique<ChildProcess>(Command({"scan", "--json"}));
        return WaitForStop();
    }
    /// Reads the port, as any process of the same user can.
    std::uint16_t Port() const
    {
        // The scanner works in this folder, too, so an entry may be gone when its turn comes.
        std::error_code gone;
        std::filesystem::recursive_directory_iterator entry(folder / "runtime", gone);
        for (; !gone && entry != std::filesystem::recursive_directory_iterator(); entry.increment(gone))
            if (entry->path().filename() == "ZETAudioFilterScan2") {
                const std::string block = zettesting::ReadAll(entry->path());
                return static_cast<std::uint16_t>(static_cast<unsigned char>(block.at(0)) |
                                                  static_cast<unsigned char>(block.at(1)) << 8);
            }
        return 0;
    }
    /// A request that would make the scanner write where the stranger wants.
    std::string Orders() const
    {
        const std::string target = Target().string();
        std::string paths;
        for (const char* suffix : {"", ".banned", ".permanent", ".scan"})
            paths += "\"" + target + suffix + "\",";
        return Frame(
            R"({"jsonrpc":"2.0","id":1,"method":"com.quorvex.zetaudiofilterscan.Connect","params":[)" +
            paths + "false,false]}");
    }
    std::filesystem::path Target() const { return folder / "strangers"; }

    void ExpectTheScanToBeRight()
    {
        const ScanSummary summary = ReadScanSummary(host->Wait());
        EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
        EXPECT_EQ(summary.found, 3);
        EXPECT_EQ(summary.banned, Strings());
        WithoutFaults();
        EXPECT_EQ(ListedPaths({"--enabled"}), good);
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
            EXPECT_FALSE(entry.path().filename().string().starts_with("strangers")) << entry.path();
    }

    const Strings good;
    std::unique_ptr<ChildProcess> host;
};

TEST_F(Strangers, ThatComeFirstAndHoldOnAreSentAwayAndLearnNothing)
{
    const auto stop = StopBeforeConnecting();
    ASSERT_TRUE(stop);
    std::vector<LoopbackSocket> strangers;
    for (int number = 0; number < 50; ++number) {
        strangers.push_back(LoopbackSocket::ConnectedTo(Port()));
        ASSERT_TRUE(strangers.back().IsOpen());
        strangers.back().Send(Orders());
    }
    Continue(*stop);
    ExpectTheScanToBeRight();
    for (const LoopbackSocket& stranger : strangers)
        EXPECT_EQ(stranger.ReadToEnd(), "");
}

TEST_F(Strangers, OfAnotherUserAreSentAwayAndLearnNothing)
{
    const auto stop = StopBeforeConnecting();
    ASSERT_TRUE(stop);
    const std::uint16_t port = Port();
    const std::string orders = Orders();
    const pid_t stranger = ::fork();
    if (stranger == 0) {
        // Only an administrator can become another user. Otherwise the stranger is just another process.
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && ::setuid(nobody) != 0)
            ::_exit(2);
        const LoopbackSocket socket = LoopbackSocket::ConnectedTo(port);
        socket.Send(orders);
        ::_exit(socket.IsOpen() && socket.ReadToEnd().empty() ? 0 : 1);
    }
    // The stranger is first: the host connects only now.
    while (LoopbackSocket::ConnectedTo(port).ReadToEnd() != "") {
    }
    Continue(*stop);
    ExpectTheScanToBeRight();
    int status = -1;
    EXPECT_EQ(::waitpid(stranger, &status, 0), stranger);
    EXPECT_EQ(status, 0);
}

TEST_F(Strangers, ThatFloodTheScannerDoNotKeepTheHostFromIt)
{
    const auto stop = StopBeforeConnecting();
    ASSERT_TRUE(stop);
    const std::uint16_t port = Port();
    std::atomic<bool> goOn = true;
    std::atomic<int> connections = 0;
    std::thread flood;
    struct End
    {
        ~End()
        {
            goOn = false;
            flood.join();
        }
        std::atomic<bool>& goOn;
        std::thread& flood;
    };
    flood = std::thread([&] {
        const std::string garbage = Frame("{]") + std::string(5000, '\xFF');
        while (goOn) {
            const LoopbackSocket socket = LoopbackSocket::ConnectedTo(port);
            if (!socket.IsOpen())
                continue;
            socket.Send(garbage);
            ++connections;
        }
    });
    {
        const End end{goOn, flood};
        Continue(*stop);
        ExpectTheScanToBeRight();
    }
    EXPECT_GT(connections, 0);
}

} // namespace
