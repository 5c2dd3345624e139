// Kills, full disks and missing processes while several workers look ahead.
#include <algorithm>

#include <fcntl.h>

#include <gmock/gmock.h>
#include <zetcore/filesupport/handles/Descriptor.h>

#include "FaultFixture.h"

namespace {

using Strings = std::vector<std::string>;
using testing::AllOf;
using testing::HasSubstr;
using zettesting::ChildProcess;
using Kind = SeenProcess::Kind;

/// The host has been told for which plug-in it waits. That one waits for this test.
class FaultMatrixWaiting : public FaultFixture, public testing::WithParamInterface<std::vector<Kind>>
{
  protected:
    FaultMatrixWaiting()
    {
        SetSwitch("zetaudiofilterscan.Workers", "4");
        const auto path = plugins / "folder.lock";
        file = zetcore::filesupport::Descriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        Lock(F_WRLCK);
    }

    void LetGoOn() const { Lock(F_UNLCK); }

    const Strings all{Install("good/vst2_effect", "a_effect").string(),
                      Install("bad/waits_for_lock", "b_waits").string(),
                      Install("good/vst2_synth", "c_synth").string()};

  private:
    void Lock(short type) const
    {
        struct flock whole
        {};
        whole.l_type = type;
        EXPECT_EQ(::fcntl(file.Get(), F_SETLK, &whole), 0);
    }

    zetcore::filesupport::Descriptor file;
};

const std::vector<Kind> victims[] = {
    {Kind::Host}, {Kind::Supervisor}, {Kind::Host, Kind::Supervisor}, {Kind::Worker}};

std::string NameOfVictims(const testing::TestParamInfo<std::vector<Kind>>& test)
{
    constexpr const char* names[] = {"Host", "Scanner", "Worker"};
    std::string name;
    for (const Kind kind : test.param)
        name += names[static_cast<std::size_t>(kind)];
    return name;
}

INSTANTIATE_TEST_SUITE_P(Steps, FaultMatrixWaiting, testing::ValuesIn(victims), NameOfVictims);

TEST_P(FaultMatrixWaiting, NothingIsLostAndNobodyIsBlamed)
{
    StopAt("supervisor.waiting-told", 1);
    // The plug-in opens the lock's file; the supervisor, which stops, may write anywhere.
    AllowWriting(plugins);
    ChildProcess host(Command({"scan", "--timeout", "4000"}));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop) << "nothing has stopped there: " << host.Wait().error;
    std::vector<int> numbers;
    for (const Kind kind : GetParam()) {
        const std::vector<int> found = AwaitNumbers(kind);
        EXPECT_FALSE(found.empty());
        numbers.insert(numbers.end(), found.begin(), found.end());
    }
    KillAll(numbers);
    Continue(*stop);
    LetGoOn();
    const auto& scan = host.Wait();
    ExpectNoProcessLeft();
    WithoutFaults();
    if (GetParam().front() == Kind::Host) {
        EXPECT_NE(scan.signal, 0);
    } else {
        EXPECT_EQ(scan.exitStatus, 0) << scan.error;
        EXPECT_EQ(ListedPaths({"--enabled"}), all);
    }
    EXPECT_EQ(List({"--banned"}).size(), 0u);
    const ScanSummary next = Scan();
    EXPECT_EQ(next.exitStatus, 0) << next.messages;
    EXPECT_EQ(ListedPaths({"--enabled"}), all);
    EXPECT_EQ(DamagedFiles(), Strings());
}

/// The disk is full, so that a scanner cannot leave its findings for the next one.
class FullDiskAhead : public FaultFixture, public testing::WithParamInterface<const char*>
{};

INSTANTIATE_TEST_SUITE_P(Each, FullDiskAhead, testing::Values("no-space", "read-only", "denied"),
                         [](const auto& test) {
                             std::string name = test.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST_P(FullDiskAhead, CostsAnotherTryOfEachCulpritAndNoVerdict)
{
    SetSwitch("zetaudiofilterscan.Workers", "4");
    AllowWriting(folder.Path());
    environment["ZET_TEST_PLUGIN_COUNT"] = (folder / "count").string();
    const auto good = Install("good/vst2_effect", "a_effect").string();
    const Strings bad{Install("bad/counts_and_crashes", "b_bad").string(),
                      Install("bad/counts_and_crashes", "c_bad").string()};
    AddFault(std::string("write.zetaudiofilterscan-culprits-*:1:") + GetParam());
    const ScanSummary scan = Scan();
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, bad);
    EXPECT_EQ(ListedPaths({"--enabled"}), Strings{good});
    const std::string tries = zettesting::ReadAll(folder / "count");
    EXPECT_GT(std::count(tries.begin(), tries.end(), '\n'), 2 * std::ssize(bad)) << "the fault has no effect";
}

/// The system has room for so many workers less one. None is left to try a plug-in that hangs beside another
/// one.
class NoWorkerAhead : public FaultFixture, public testing::WithParamInterface<int>
{};

INSTANTIATE_TEST_SUITE_P(From, NoWorkerAhead, testing::Values(2, 3),
                         [](const auto& test) { return test.param == 2 ? "TheSecond" : "TheThird"; });

TEST_P(NoWorkerAhead, IsThereForASecondTrySoTheOneThatHangsIsLeftForTheNextScan)
{
    SetSwitch("zetaudiofilterscan.Workers", "2");
    const auto good = Install("good/vst2_effect", "a_effect").string();
    const auto hanging = Install("bad/hangs_on_load", "b_hangs").string();
    AddFault("supervisor.worker:" + std::to_string(GetParam()) + ":no-space");
    // The good one has no second try either, so that it gets time also on a busy machine.
    const ScanSummary scan = Scan({"--timeout", "5"});
    EXPECT_EQ(scan.exitStatus, 3) << scan.messages;
    EXPECT_EQ(scan.scanned, 1);
    EXPECT_EQ(scan.banned, Strings());
    EXPECT_THAT(scan.messages, AllOf(HasSubstr("not scanned, the next scan tries it again: " + hanging),
                                     HasSubstr("the worker process could not be started: No space")));
    ExpectNoProcessLeft();
    WithoutFaults();
    EXPECT_EQ(ListedPaths(), Strings{good});
    const ScanSummary next = Scan({"--timeout", "1"});
    EXPECT_EQ(next.exitStatus, 0) << next.messages;
    EXPECT_EQ(next.banned, Strings{hanging});
}

} // namespace
