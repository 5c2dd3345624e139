#include "supervisor/lookahead/Trials.h"

#include <chrono>
#include <csignal>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zettesting/HostFixture.h>
#include <zettesting/TestPlugins.h>

#include "supervisor/log/ScanLog.h"
#include "testing/StopPipe_posix.h"

namespace zetaudiofilterscan {
namespace {

using testing::SizeIs;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::PluginFailure;
using zettesting::ScopedEnvironment;
using Time = Trials::Time;
using Clock = std::chrono::steady_clock;

/// The workers are real processes. One of them stops itself at a place, so that the supervisor's side, which
/// is this process, can be as late as it likes.
class TrialsTest : public zettesting::HostFixture
{
  protected:
    TrialsTest()
    {
        Trials::Terms terms;
        terms.settings.preferencesFolder = zettesting::ToWide(prefs);
        terms.settings.refuseWriting = false;
        terms.entityLimit = std::chrono::seconds(1);
        trials.Configure(terms, log);
    }

    void StopAt(const std::string& place)
    {
        pipeName.emplace("ZET_FAULT_PIPE", pipe.Name());
        fault.emplace("ZET_FAULT", place + ":1:stop");
    }

    void Start(Trials::Number worker, const char* plugin, Time deadline)
    {
        trials.Start({worker, 0, deadline},
                     {TechnologyType::VST, zettesting::ToWide(zettesting::TestPlugin(plugin))});
    }

    /// A worker that stands still in the middle of a trial ends by the signal.
    void EndTrialBy(int signal)
    {
        StopAt("worker.scanned");
        Start(0, "good/vst2_effect", Time::max());
        const int worker = pipe.WaitForStop();
        ASSERT_NE(worker, 0) << "no worker has stopped";
        ::kill(worker, signal);
        ::kill(worker, SIGCONT);
    }

    Trials::Event Await()
    {
        for (;;) {
            if (std::optional<Trials::Event> event = trials.Take())
                return std::move(*event);
            trials.Wait(interrupt, Time::max(), {});
        }
    }

    bool HasLogged(const std::string& text) const
    {
        return !log.Path().empty() && zettesting::ReadAll(log.Path()).find(text) != std::string::npos;
    }

    void ExpectForgottenAfter(const std::function<void()>& action)
    {
        EndTrialBy(SIGTERM);
        while (!HasLogged(askedToEnd)) {
            ASSERT_FALSE(trials.Take());
            trials.Wait(interrupt, Clock::now() + std::chrono::milliseconds(10), {});
        }
        action();
        trials.Wait(interrupt, Clock::now() + std::chrono::milliseconds(1500), {});
        EXPECT_FALSE(trials.Take());
    }

    static constexpr char askedToEnd[] = "a signal has asked its process to end";

    Interrupt interrupt;
    ScanLog log{zettesting::ToWide(folder / "logs"), "test"};
    Trials trials{WorkerProcess::mostAtOnce};

    const StopPipe pipe{folder / "stop"};

  private:
    std::optional<ScopedEnvironment> pipeName, fault;
};

TEST_F(TrialsTest, AnAnswerThatIsThereAtTheDeadlineCountsThoughNobodyHasReadIt)
{
    StopAt("worker.answered");
    Start(0, "good/vst2_effect", Time::min());
    ASSERT_NE(pipe.WaitForStop(), 0) << "no worker has stopped";
    const std::optional<Trials::Event> event = trials.Take();
    ASSERT_TRUE(event);
    EXPECT_EQ(event->worker, 0u);
    const auto* passed = std::get_if<Trials::Passed>(&event->what);
    ASSERT_TRUE(passed) << "the supervisor was busy, and the plug-in pays for it";
    EXPECT_TRUE(passed->wasLoaded);
    EXPECT_THAT(passed->outcome.infos, SizeIs(1));
    EXPECT_FALSE(trials.Take());
}

TEST_F(TrialsTest, WithoutAnAnswerAtTheDeadlineItTookTooLong)
{
    StopAt("worker.scanned");
    Start(0, "good/vst2_effect", Time::min());
    ASSERT_NE(pipe.WaitForStop(), 0) << "no worker has stopped";
    const std::optional<Trials::Event> event = trials.Take();
    ASSERT_TRUE(event);
    const auto* failure = std::get_if<LookAhead::TrialFailure>(&event->what);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->facts.kind, PluginFailure::Kind::TookTooLong);
    EXPECT_EQ(failure->facts.limit, std::chrono::seconds(1));
    EXPECT_FALSE(trials.Take());
}

TEST_F(TrialsTest, BeforeTheDeadlineAnAnswerIsWaitedFor)
{
    StopAt("worker.answered");
    Start(3, "good/vst2_effect", Time::max());
    ASSERT_NE(pipe.WaitForStop(), 0) << "no worker has stopped";
    EXPECT_FALSE(trials.Take()) << "nothing is read outside of a wait";
    trials.Wait(interrupt, Time::max(), {});
    const std::optional<Trials::Event> event = trials.Take();
    ASSERT_TRUE(event);
    EXPECT_EQ(event->worker, 3u);
    EXPECT_TRUE(std::holds_alternative<Trials::Passed>(event->what));
}

TEST_F(TrialsTest, WhoCrashedIsToldOfAtOnce)
{
    EndTrialBy(SIGSEGV);
    const Trials::Event event = Await();
    EXPECT_TRUE(std::holds_alternative<LookAhead::TrialFailure>(event.what));
    EXPECT_FALSE(HasLogged(askedToEnd));
}

/// The host may be asked to end, too, and must have the time for that.
class WorkerAskedToEndTest : public TrialsTest, public testing::WithParamInterface<int>
{};

TEST_P(WorkerAskedToEndTest, IsToldOfALittleLater)
{
    const Time before = Clock::now();
    EndTrialBy(GetParam());
    const Trials::Event event = Await();
    const auto took = Clock::now() - before;
    EXPECT_GE(took, std::chrono::seconds(1));
    EXPECT_LT(took, std::chrono::seconds(40)) << "the wait has not ended for it";
    EXPECT_TRUE(HasLogged(askedToEnd));
    EXPECT_EQ(event.worker, 0u);
    const auto* failure = std::get_if<LookAhead::TrialFailure>(&event.what);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->facts.kind, PluginFailure::Kind::Crashed);
    EXPECT_EQ(failure->facts.code, GetParam());
    EXPECT_FALSE(trials.Take()) << "it is told of once";
}

INSTANTIATE_TEST_SUITE_P(Signals, WorkerAskedToEndTest, testing::Values(SIGTERM, SIGINT, SIGHUP, SIGQUIT));

TEST_F(TrialsTest, WhoWasAskedToEndIsForgottenWhenItsWorkerIsKilled)
{
    ExpectForgottenAfter([this] { trials.Kill(0); });
}

TEST_F(TrialsTest, WhoWasAskedToEndIsForgottenWhenAllAreKilled)
{
    ExpectForgottenAfter([this] { trials.KillAll(); });
}

TEST_F(TrialsTest, WhoWasAskedToEndIsForgottenWithItsList)
{
    ExpectForgottenAfter([this] { trials.Configure({}, log); });
}

} // namespace
} // namespace zetaudiofilterscan
