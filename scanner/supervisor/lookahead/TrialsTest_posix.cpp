#include "supervisor/lookahead/Trials.h"

#include <chrono>
#include <optional>
#include <string>

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

} // namespace
} // namespace zetaudiofilterscan
