// A service manager ends a service by a signal to each of its processes, a shell by one to the group.
#include <csignal>
#include <functional>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <unistd.h>
#include <zettesting/Patience.h>

#include "FaultFixture.h"

namespace {

using testing::HasSubstr;
using zettesting::ChildProcess;

class ServiceEnd : public FaultFixture
{
  protected:
    ServiceEnd()
    {
        Install("good/vst2_effect", "a_first");
        hanging = Install("bad/loops_forever", "m_hanging");
    }

    /// Lets the scan come to the plug-in that hangs, and then sends the signals.
    const zettesting::ChildResult& ScanUntil(const std::function<void()>& sendSignals)
    {
        scan.emplace(Command({"scan", "--json", "--progress", "json", "--jobs", "1"}));
        EXPECT_TRUE(scan->WaitForError(hanging.string()));
        EXPECT_FALSE(AwaitNumbers(SeenProcess::Kind::Worker).empty());
        sendSignals();
        return scan->Wait();
    }
    std::vector<int> NumbersOf(std::vector<SeenProcess::Kind> kinds)
    {
        std::vector<int> all;
        for (const SeenProcess::Kind kind : kinds)
            for (const int number : AwaitNumbers(kind))
                all.push_back(number);
        return all;
    }
    static void Send(const std::vector<int>& numbers)
    {
        for (const int number : numbers)
            ::kill(number, SIGTERM);
    }
    std::filesystem::path hanging;
    std::optional<ChildProcess> scan;
};

TEST_F(ServiceEnd, ASignalToTheGroupCancels)
{
    ExpectCancelledAtTheSecond(ScanUntil([this] {
        const auto hosts = AwaitNumbers(SeenProcess::Kind::Host);
        ASSERT_EQ(hosts.size(), 1u);
        EXPECT_EQ(::getpgid(hosts.front()), hosts.front());
        ::kill(-hosts.front(), SIGTERM);
    }));
}

TEST_F(ServiceEnd, ASignalToEachProcessCancels)
{
    using Kind = SeenProcess::Kind;
    ExpectCancelledAtTheSecond(ScanUntil([this] {
        Send(NumbersOf({Kind::Host, Kind::Supervisor, Kind::Worker}));
    }));
}

TEST_F(ServiceEnd, ItIsTheSameWhenTheHostIsTheLastToGetIt)
{
    using Kind = SeenProcess::Kind;
    ExpectCancelledAtTheSecond(ScanUntil([this] {
        Send(NumbersOf({Kind::Worker, Kind::Supervisor, Kind::Host}));
    }));
}

// Service managers look for processes until they find no more.
TEST_F(ServiceEnd, ItIsTheSameWhenTheWorkersAreSoughtSeveralTimes)
{
    using Kind = SeenProcess::Kind;
    ExpectCancelledAtTheSecond(ScanUntil([this] {
        Send(NumbersOf({Kind::Worker}));
        EXPECT_TRUE(zettesting::Becomes(
            [this] { return ScanLogs().find("asked its process to end") != std::string::npos; }));
        Send(Numbers(Kind::Worker));
        Send(NumbersOf({Kind::Supervisor, Kind::Host}));
    }));
}

TEST_F(ServiceEnd, ASignalToTheScannerAloneEndsNothing)
{
    const auto& result = ScanUntil([this] {
        Send(NumbersOf({SeenProcess::Kind::Supervisor}));
        Send(NumbersOf({SeenProcess::Kind::Host}));
    });
    ExpectCancelledAtTheSecond(result);
    EXPECT_THAT(ScanLogs(), testing::Not(HasSubstr("crashed")));
}

} // namespace
