// The one rule for what a host's callbacks throw, while the manager is open: it ends as with Cancel, and the
// exception comes out unchanged. AudioPluginScanEndTest has the same for scans, and CrashRecoveryTest for the
// check at the start.
#include <stdexcept>

#include <gmock/gmock.h>

#include "testing/AnsweringPresentation.h"
#include "testing/ManagerRunFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using zetcore::events::ScopedConnection;

class HostExceptions : public ManagerRunFixture
{
  protected:
    struct HostsError : std::runtime_error
    {
        using std::runtime_error::runtime_error;
    };
    static void Throw() { throw HostsError("the host's own trouble"); }

    /// The user switches all plug-ins off, and then does what calls the host.
    void ExpectThatItEndsAsWithCancel(const std::string& button, bool areEnabledThen = true)
    {
        SaveTwoPlugins();
        try {
            Run([&](QWidget& window) {
                Click(window, "Disable All");
                Click(window, button);
            });
            ADD_FAILURE() << "nothing was thrown";
        } catch (const HostsError& error) {
            EXPECT_STREQ(error.what(), "the host's own trouble");
        }
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        EXPECT_THAT(EnabledFlags(), ElementsAre(areEnabledThen, areEnabledThen));
        EXPECT_THAT(Folders(), ElementsAre(zettesting::ToWide("/plugins")));
        EXPECT_TRUE(answers.alerts.empty());
        // The manager opens again as if nothing had been.
        answers.onChoose = answers.onProgress = {};
        slot.reset();
        EXPECT_EQ(Run(DisableAllAnd(PressOk)), areEnabledThen);
    }

    AnsweringPresentation answers;
    std::optional<ScopedConnection> slot;
};

TEST_F(HostExceptions, APresentationThatAWindowsEventCalls)
{
    answers.onChoose = Throw;
    ExpectThatItEndsAsWithCancel("Add...");
}

TEST_F(HostExceptions, ASlotThatAWindowsEventCallsAlsoWhenItThrowsEachTime)
{
    answers.chosenFolder = folder.Wide();
    answers.onChoose = [this] {
        slot.emplace(Vst().GetDirectoriesChangedSignal().Connect([](const auto&) { Throw(); }));
    };
    ExpectThatItEndsAsWithCancel("Add...");
}

TEST_F(HostExceptions, ThePresentationOfAScanWhichHasSavedWhatWasChosenBeforeIt)
{
    answers.onProgress = Throw;
    ExpectThatItEndsAsWithCancel("Scan for Plug-Ins", false);
}

} // namespace
} // namespace zetaudiopluginhostui
