// Kills the host, the scanner or both at every step of a scan. The next start must be right all the same.
#include <algorithm>

#include <gmock/gmock.h>

#include "FaultFixture.h"

namespace {

using Strings = std::vector<std::string>;
using zettesting::ChildProcess;
using Kind = SeenProcess::Kind;

enum class Victim
{
    Host,
    Scanner,
    Both,
    Worker,
};

/// The state of the scanner at a step.
enum class Phase
{
    /// The scanner has not been started, or is ending. There is none to kill.
    NoScanner,
    /// When the scanner is killed, the host's scan may not have begun. Then the host reports that it could
    /// not start a scanner.
    BeforeConnection,
    Connected,
    /// The host's main thread has stopped. Until then, the thread that talks to the scanner may have come as
    /// far as the plug-in that crashes the scanner. The scanner is killed if it is there.
    PerhapsConnected,
};

struct Step
{
    const char* place;
    unsigned visit;
    Phase phase = Phase::Connected;
};

/// The steps, in the order of a scan. The registry is written once before the scan and once after it.
const Step steps[] = {
    {"host.scan-begins", 1, Phase::NoScanner},
    {"write.AudioPlugins.xml.write", 1, Phase::NoScanner},
    {"write.AudioPlugins.xml.rename", 1, Phase::NoScanner},
    {"write.AudioPlugins.xml.done", 1, Phase::NoScanner},
    {"host.launching", 1, Phase::NoScanner},
    {"host.launched", 1, Phase::BeforeConnection},
    {"supervisor.started", 1, Phase::BeforeConnection},
    {"supervisor.listening", 1, Phase::BeforeConnection},
    {"supervisor.port-told", 1, Phase::BeforeConnection},
    {"host.port-read", 1, Phase::BeforeConnection},
    {"host.connected", 1},
    {"host.connect-sent", 1},
    {"supervisor.accepted", 1},
    {"supervisor.connected", 1},
    {"host.connect-answered", 1},
    {"supervisor.list", 1},
    {"host.list-answered", 1},
    {"worker.started", 1, Phase::BeforeConnection},
    {"worker.settings", 1},
    {"supervisor.answering", 3},
    {"supervisor.answered", 3},
    {"host.info-read", 1},
    {"host.progress-shown", 1, Phase::PerhapsConnected},
    {"worker.entity", 1},
    {"worker.entity", 2},
    {"worker.scanned", 1},
    {"worker.answered", 2},
    {"supervisor.entity", 2},
    {"supervisor.scanned", 2},
    {"write.AudioPlugins.xml.scan.write", 1},
    {"write.AudioPlugins.xml.scan.rename", 2},
    {"write.AudioPlugins.xml.scan.done", 2},
    {"host.entity-answered", 1},
    {"host.result-read", 2},
    {"write.AudioPlugins.xml.journal.write", 1, Phase::PerhapsConnected},
    {"write.AudioPlugins.xml.journal.done", 1, Phase::PerhapsConnected},
    {"append.AudioPlugins.xml.journal.write", 1, Phase::PerhapsConnected},
    {"append.AudioPlugins.xml.journal.done", 1, Phase::PerhapsConnected},
    {"host.result-merged", 2, Phase::PerhapsConnected},
    {"host.info-read", 2},
    {"supervisor.failed", 1},
    {"write.BannedAudioPlugins.xml.reasons.write", 1},
    {"write.BannedAudioPlugins.xml.reasons.rename", 1},
    {"supervisor.failure-told", 1, Phase::NoScanner},
    {"host.closed", 1, Phase::NoScanner},
    {"write.BannedAudioPlugins.xml.write", 1, Phase::NoScanner},
    {"write.BannedAudioPlugins.xml.rename", 1, Phase::NoScanner},
    {"write.BannedAudioPlugins.xml.done", 1, Phase::NoScanner},
    {"host.banned", 1, Phase::NoScanner},
    {"host.restarting", 1, Phase::NoScanner},
    {"host.finished", 1},
    {"host.stopping", 1},
    {"host.disconnected", 1, Phase::NoScanner},
    {"host.scanner-ended", 1, Phase::NoScanner},
    {"host.scan-done", 1, Phase::NoScanner},
    {"write.AudioPlugins.xml.write", 2, Phase::NoScanner},
    {"write.AudioPlugins.xml.rename", 2, Phase::NoScanner},
    {"write.AudioPlugins.xml.done", 2, Phase::NoScanner},
};

struct Row
{
    Step step;
    Victim victim;

    std::string Name() const
    {
        constexpr const char* victims[] = {"Host", "Scanner", "Both", "Worker"};
        std::string name = std::string(step.place) + "." + std::to_string(step.visit) + "." +
                           victims[static_cast<std::size_t>(victim)];
        std::replace_if(
            name.begin(), name.end(), [](char character) { return !std::isalnum(character); }, '_');
        return name;
    }
    friend void PrintTo(const Row& row, std::ostream* stream) { *stream << row.Name(); }
};

std::vector<Row> Rows()
{
    std::vector<Row> rows;
    for (const Step& step : steps) {
        rows.push_back({step, Victim::Host});
        if (step.phase == Phase::NoScanner)
            continue;
        rows.push_back({step, Victim::Scanner});
        rows.push_back({step, Victim::Both});
        if (std::string(step.place).starts_with("worker."))
            rows.push_back({step, Victim::Worker});
    }
    return rows;
}

class FaultMatrix : public FaultFixture, public testing::WithParamInterface<Row>
{
  protected:
    FaultMatrix()
        : good{Install("good/vst2_effect", "a_effect").string(),
               Install("good/vst2_synth", "b_synth").string(),
               Install("good/vst2_main_entry", "z_main").string()},
          bad(Install("bad/crash_in_entry", "m_bad").string())
    {}

    void KillVictims(const Stop& stop) const
    {
        const Victim victim = GetParam().victim;
        // All victims are looked up first, because the end of one may end another.
        std::vector<int> numbers;
        const auto add = [&](Kind kind) {
            const bool isThere = kind == Kind::Host || GetParam().step.phase != Phase::PerhapsConnected;
            const std::vector<int> found = isThere ? AwaitNumbers(kind) : Numbers(kind);
            EXPECT_TRUE(!isThere || !found.empty())
                << "of kind " << static_cast<int>(kind) << " among "
                << testing::PrintToString(zettesting::ProcessesWithEnvironment(folder.Path().string()));
            numbers.insert(numbers.end(), found.begin(), found.end());
        };
        if (victim == Victim::Host || victim == Victim::Both)
            add(Kind::Host);
        if (victim == Victim::Scanner || victim == Victim::Both)
            add(Kind::Supervisor);
        if (victim == Victim::Worker)
            add(Kind::Worker);
        KillAll(numbers);
        Continue(stop);
    }

    /// The good plug-ins whose results the host had before the kill: it had gone on to the next one.
    Strings Finished(const std::string& progress) const
    {
        std::vector<std::pair<std::size_t, std::string>> shown;
        Strings all = good;
        all.push_back(bad);
        for (const std::string& path : all)
            if (const auto at = progress.find(path); at != std::string::npos)
                shown.emplace_back(at, path);
        std::sort(shown.begin(), shown.end());
        Strings finished;
        for (std::size_t index = 0; index + 1 < shown.size(); ++index)
            if (shown[index].second != bad)
                finished.push_back(shown[index].second);
        return finished;
    }

    /// Reads the preferences with a new host, which must not complain.
    std::vector<ListedPlugin> ReadBack() const
    {
        const auto list = Run({"list", "--json"});
        EXPECT_EQ(list.exitStatus, 0) << list.error;
        EXPECT_EQ(list.error, "");
        EXPECT_EQ(DamagedFiles(), Strings());
        return ReadList(list.output);
    }

    const Strings good;
    const std::string bad;
};

INSTANTIATE_TEST_SUITE_P(Steps, FaultMatrix, testing::ValuesIn(Rows()),
                         [](const auto& test) { return test.param.Name(); });

TEST_P(FaultMatrix, NothingIsLost)
{
    const Row& row = GetParam();
    StopAt(row.step.place, row.step.visit);
    // When the scanner is killed before it has told its port, the host waits for a minute.
    if (row.victim == Victim::Scanner && row.step.phase == Phase::BeforeConnection)
        AddFault("host.port-wait:200:late=61");
    ChildProcess host(Command({"scan"}));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop) << "nothing has stopped there: " << host.Wait().error;
    KillVictims(*stop);
    const auto& scan = host.Wait();
    EXPECT_FALSE(scan.timedOut) << scan.error;
    ExpectNoProcessLeft();
    WithoutFaults();

    const bool hostLives = row.victim == Victim::Scanner || row.victim == Victim::Worker;
    if (!hostLives) {
        EXPECT_NE(scan.signal, 0);
    } else if (row.step.phase == Phase::BeforeConnection) {
        EXPECT_THAT(scan.exitStatus, testing::AnyOf(0, 3)) << scan.error;
    } else {
        EXPECT_EQ(scan.exitStatus, 0) << scan.error;
    }

    Strings known;
    for (const ListedPlugin& plugin : ReadBack()) {
        EXPECT_EQ(plugin.IsBanned(), plugin.path == bad) << plugin.path << " " << plugin.reason;
        known.push_back(plugin.path);
    }
    const bool isComplete = hostLives && scan.exitStatus == 0;
    EXPECT_THAT(known, testing::IsSupersetOf(isComplete ? good : Finished(scan.error))) << scan.error;

    const ScanSummary next = Scan();
    EXPECT_EQ(next.exitStatus, 0) << next.messages;
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
    const auto banned = FindListed(bad);
    ASSERT_TRUE(banned && banned->IsBanned());
    EXPECT_THAT(banned->reason, testing::HasSubstr("crashed"));
}

/// In the host's own process, the next start bans the plug-in that the marker names, because nobody can tell
/// a kill from a crash. Everything else is as above.
class FaultMatrixInProcess : public FaultFixture, public testing::WithParamInterface<Row>
{};

INSTANTIATE_TEST_SUITE_P(
    Steps, FaultMatrixInProcess,
    testing::Values(Row{{"host.scan-begins", 1}, Victim::Host},
                    Row{{"write.ScannedPluginPath.txt.write", 1}, Victim::Host},
                    Row{{"write.ScannedPluginPath.txt.rename", 2}, Victim::Host},
                    Row{{"write.ScannedPluginPath.txt.done", 2}, Victim::Host},
                    Row{{"write.AudioPlugins.xml.rename", 1}, Victim::Host},
                    Row{{"write.AudioPlugins.xml.journal.rename", 1}, Victim::Host},
                    Row{{"append.AudioPlugins.xml.journal.write", 1}, Victim::Host},
                    Row{{"host.plugin-loading", 2}, Victim::Host},
                    Row{{"host.plugin-scanned", 2}, Victim::Host},
                    Row{{"host.scan-done", 1, Phase::NoScanner}, Victim::Host},
                    Row{{"write.AudioPlugins.xml.rename", 2, Phase::NoScanner}, Victim::Host},
                    Row{{"write.AudioPlugins.xml.done", 2, Phase::NoScanner}, Victim::Host}),
    [](const auto& test) { return test.param.Name(); });

TEST_P(FaultMatrixInProcess, NothingIsLost)
{
    const Strings good{
        Install("good/vst2_effect", "a_effect").string(), Install("good/vst2_synth", "b_synth").string(),
        Install("good/vst2_main_entry", "c_main").string(), Install("good/vst2_effect", "d_effect").string()};
    StopAt(GetParam().step.place, GetParam().step.visit);
    ChildProcess host(Command({"scan", "--in-process"}));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop) << "nothing has stopped there: " << host.Wait().error;
    KillAll(Numbers(Kind::Host));
    EXPECT_NE(host.Wait().signal, 0);
    WithoutFaults();

    const auto marker = prefs / "ScannedPluginPath.txt";
    const std::string marked = std::filesystem::exists(marker) ? zettesting::ReadAll(marker) : "";
    const auto next = Run({"list", "--json"});
    EXPECT_EQ(next.exitStatus, 0) << next.error;
    EXPECT_EQ(DamagedFiles(), Strings());
    Strings known, banned;
    for (const ListedPlugin& plugin : ReadList(next.output))
        (plugin.IsBanned() ? banned : known).push_back(plugin.path);
    if (marked.empty()) {
        EXPECT_EQ(banned, Strings());
    } else {
        ASSERT_EQ(banned.size(), 1u);
        EXPECT_THAT(marked, testing::HasSubstr(banned.front()));
        // The plug-ins before it have been found and saved.
        EXPECT_THAT(known, testing::IsSupersetOf(
                               Strings(good.begin(), std::find(good.begin(), good.end(), banned.front()))));
        RunWell({"reload", banned.front()});
    }
    EXPECT_EQ(Scan({"--in-process"}).exitStatus, 0);
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
}

} // namespace
