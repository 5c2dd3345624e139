// The scanner's processes lack rights that they do not need.
#include <fstream>
#include <limits>
#include <sstream>

#include <gmock/gmock.h>

#include "FaultFixture.h"
#include "LoopbackSocket.h"

namespace {

using testing::HasSubstr;
using zettesting::ChildProcess;

class Privileges : public FaultFixture
{
  protected:
    /// Reads a line of a process's "status" or "limits": the text behind this name.
    static std::string Fact(int process, const std::string& file, const std::string& name)
    {
        std::ifstream stream("/proc/" + std::to_string(process) + "/" + file);
        for (std::string line; std::getline(stream, line);)
            if (line.starts_with(name)) {
                const auto value = line.find_first_not_of(" \t:", name.size());
                return value == line.npos ? "" : line.substr(value);
            }
        return "no such line";
    }
    /// Reads the hard limit. The word "unlimited" is above all numbers.
    static unsigned long Limit(int process, const std::string& name)
    {
        std::istringstream limits(Fact(process, "limits", name));
        unsigned long now = 0, most = 0;
        return limits >> now >> most ? most : std::numeric_limits<unsigned long>::max();
    }
    static unsigned long TasksOfTheSystem()
    {
        std::string running;
        std::getline(std::ifstream("/proc/loadavg"), running);
        return std::stoul(running.substr(running.find('/') + 1));
    }
    void ExpectPoor(int process) const
    {
        EXPECT_EQ(Fact(process, "status", "NoNewPrivs"), "1");
        EXPECT_THAT(Fact(process, "limits", "Max core file size"), testing::StartsWith("0 "));
        EXPECT_LE(Limit(process, "Max open files"), 8192u);
        EXPECT_LE(Limit(process, "Max processes"), TasksOfTheSystem() + 4096 + 1000) << "others come and go";
    }
    /// The plug-in's name. It tells the outcome of its connection.
    std::string NameOfTheOneThatConnects()
    {
        const LoopbackSocket listening = LoopbackSocket::Listening();
        environment["ZET_TEST_PORT"] = std::to_string(listening.Port());
        const auto plugin = Install("bad/connects_out", "connects");
        EXPECT_EQ(Scan().exitStatus, 0);
        const auto listed = FindListed(plugin);
        return listed ? listed->name : "not listed";
    }
};

TEST_F(Privileges, APluginCannotReachTheNetwork)
{
    EXPECT_EQ(NameOfTheOneThatConnects(), "Network Refused");
}

TEST_F(Privileges, UnlessTheUserWantsItForALicence)
{
    environment["ZET_DEBUG_DATABASE"] = "zetaudiofilterscan.RefuseNetwork=false";
    EXPECT_EQ(NameOfTheOneThatConnects(), "Network Reached");
}

TEST_F(Privileges, TheSettingMayStandInThePreferences)
{
    zettesting::WriteAll(prefs / "DebugDatabase.txt", "zetaudiofilterscan.RefuseNetwork = false\n");
    EXPECT_EQ(NameOfTheOneThatConnects(), "Network Reached");
}

TEST_F(Privileges, WorkerAndSupervisorHaveGivenUpWhatTheyDoNotNeed)
{
    Install("good/vst2_effect", "effect");
    StopAt("worker.entity", 1);
    ChildProcess host(Command({"scan"}));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop);
    ExpectPoor(stop->process);
    EXPECT_EQ(Fact(stop->process, "status", "Seccomp:"), "2") << "filtered";
    const auto supervisors = Numbers(SeenProcess::Kind::Supervisor);
    ASSERT_EQ(supervisors.size(), 1u);
    ExpectPoor(supervisors.front());
    Continue(*stop);
    EXPECT_EQ(host.Wait().exitStatus, 0);
}

} // namespace
