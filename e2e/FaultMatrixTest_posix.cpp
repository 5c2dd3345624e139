// Kills the host, the scanner or both at every step of a scan. The next start must be right all the same.
#include <algorithm>

#include <gmock/gmock.h>

#include "FaultFixture.h"
#include "FaultMatrixFixture.h"
#include "FaultSteps.h"

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

struct Row
{
    Step step;
    Victim victim;
    int workers = 1;

    std::string Name() const
    {
        constexpr const char* victims[] = {"Host", "Scanner", "Both", "Worker"};
        return NameOf(step, workers, victims[static_cast<std::size_t>(victim)]);
    }
    friend void PrintTo(const Row& row, std::ostream* stream) { *stream << row.Name(); }
};

void AddRows(std::vector<Row>& rows, const Step& step, int workers)
{
    rows.push_back({step, Victim::Host, workers});
    if (step.phase == Phase::NoScanner)
        return;
    rows.push_back({step, Victim::Scanner, workers});
    rows.push_back({step, Victim::Both, workers});
    if (IsWorkers(step))
        rows.push_back({step, Victim::Worker, workers});
}

std::vector<Row> Rows()
{
    constexpr int several = 4;
    std::vector<Row> rows;
    for (const Step& step : StepsInTurn())
        AddRows(rows, step, 1);
    for (const Step& step : StepsAhead())
        AddRows(rows, step, several);
    return rows;
}

class FaultMatrix : public FaultMatrixFixture<FaultFixture, Row>
{
  protected:
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

    /// How many plug-ins were done when the last line "[done/total] path" was written.
    static int CountDone(const std::string& progress)
    {
        const std::size_t line = progress.rfind("\n[");
        return line == progress.npos ? 0 : std::atoi(progress.c_str() + line + 2);
    }

    /// The good plug-ins whose results the host had before the kill: it had gone on to the next one. With
    /// several workers the host may also show one that it waits for, so that nothing is known of single ones.
    Strings Finished(const std::string& progress) const
    {
        if (GetParam().workers > 1)
            return {};
        std::vector<std::pair<std::size_t, std::string>> shown;
        Strings all = good;
        all.insert(all.end(), bad.begin(), bad.end());
        for (const std::string& path : all)
            if (const auto at = progress.find(path); at != std::string::npos)
                shown.emplace_back(at, path);
        std::sort(shown.begin(), shown.end());
        Strings finished;
        for (std::size_t index = 0; index + 1 < shown.size(); ++index)
            if (!IsBad(shown[index].second))
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
};

INSTANTIATE_TEST_SUITE_P(Steps, FaultMatrix, testing::ValuesIn(Rows()),
                         [](const auto& test) { return test.param.Name(); });

TEST_P(FaultMatrix, NothingIsLost)
{
    const Row& row = GetParam();
    StopAt(row.step.place, row.step.visit);
    // When the scanner is killed before it has told its port, the host waits for a minute. Where the port is
    // told, the next scanner's may be late instead, and a restart that fails goes on only when the user
    // cancels.
    if (row.victim == Victim::Scanner && IsBeforePort(row.step))
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
        EXPECT_EQ(plugin.IsBanned(), IsBad(plugin.path)) << plugin.path << " " << plugin.reason;
        known.push_back(plugin.path);
    }
    // When a line is written, one result more may be on its way.
    EXPECT_GE(static_cast<int>(known.size()) + 1, CountDone(scan.error)) << scan.error;
    const bool isComplete = hostLives && scan.exitStatus == 0;
    EXPECT_THAT(known, testing::IsSupersetOf(isComplete ? good : Finished(scan.error))) << scan.error;

    ExpectNextScanFindsAll();
}

} // namespace
