// These tests need a real terminal and real signals.
#include <zetui/dialogs/TerminalPresentation.h>

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>
#include <zetui/dialogs/UI_ProgressDialog.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::dialogs {
namespace {

/// A pseudo terminal of 80 columns.
class TerminalLine : public zettesting::HostFixture
{
  protected:
    TerminalLine() : master(::posix_openpt(O_RDWR | O_NOCTTY))
    {
        ::grantpt(master);
        ::unlockpt(master);
        const int slave = ::open(::ptsname(master), O_RDWR | O_NOCTTY);
        struct termios raw = {};
        ::tcgetattr(slave, &raw);
        ::cfmakeraw(&raw);
        ::tcsetattr(slave, TCSANOW, &raw);
        SetColumns(80);
        stream.reset(::fdopen(slave, "w"));
        presentation = std::make_shared<TerminalPresentation>(stream.get(), false, [this] { return time; });
    }
    ~TerminalLine() override { ::close(master); }

    void SetColumns(unsigned short columns)
    {
        struct winsize size = {};
        size.ws_col = columns;
        size.ws_row = 24;
        ::ioctl(master, TIOCSWINSZ, &size);
    }

    /// All that has reached the terminal since the last call. The system passes it on in its own time: an end
    /// mark tells that all of it has come.
    std::string Output() const
    {
        constexpr char endMark = 5;
        std::fputc(endMark, stream.get());
        std::fflush(stream.get());
        std::string all;
        char byte = 0;
        while (::read(master, &byte, 1) == 1 && byte != endMark)
            all += byte;
        return all;
    }

    /// The progress line is due again.
    void Redraw(ProgressPresentation& progress)
    {
        time += redrawInterval;
        progress.ProcessEvents(false);
    }

    static constexpr std::chrono::milliseconds redrawInterval{50};
    std::chrono::steady_clock::time_point time{std::chrono::hours(1)};
    int master;
    zettesting::ScopedEnvironment term{"TERM", "xterm"};
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream{nullptr, &std::fclose};
    std::shared_ptr<TerminalPresentation> presentation;
};

TEST_F(TerminalLine, IsRedrawnInPlaceAndLeavesACleanLine)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    progress->SetExtraText("/vst/reverb.so");
    progress->SetProgress(1, 2, "");
    Redraw(*progress);
    progress->Hide();
    EXPECT_EQ(Output(), "\rScanning\x1b[K"
                        "\rScanning  [##########----------] 1/2  50%  /vst/reverb.so\x1b[K"
                        "\r\x1b[K");
}

TEST_F(TerminalLine, TheBarNeverGoesBackAndIsFullBeforeTheLineIsTakenAway)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    progress->SetProgress(2, 4, "");
    progress->SetProgress(1, 4, "");
    Redraw(*progress);
    progress->SetProgress(3, 4, "");
    progress->Finish();
    progress->Hide();
    EXPECT_EQ(Output(), "\rScanning\x1b[K"
                        "\rScanning  [##########----------] 1/4  50%\x1b[K"
                        "\rScanning  [####################] 4/4 100%\x1b[K"
                        "\r\x1b[K");
    progress->Show("Scanning", "", true);
    progress->SetProgress(1, 4, "");
    Redraw(*progress);
    EXPECT_NE(Output().find("1/4  25%"), std::string::npos) << "shown again, it begins anew";
}

TEST_F(TerminalLine, FollowsTheTerminalsWidth)
{
    SetColumns(30);
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    progress->SetExtraText("/usr/lib/vst/reverb.so");
    progress->SetProgress(1, 2, "");
    Redraw(*progress);
    EXPECT_NE(Output().find("\r1/2  50%  ...ib/vst/reverb.so\x1b[K"), std::string::npos);
}

TEST_F(TerminalLine, IsNotRedrawnForEveryOneOfManyQuickSteps)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    EXPECT_EQ(Output(), "\rScanning\x1b[K");
    std::vector<int> drawnAt;
    for (int step = 1; step <= 120; ++step) {
        time += std::chrono::milliseconds(1);
        progress->SetExtraText("/vst/" + std::to_string(step));
        progress->SetProgress(static_cast<unsigned long long>(step), 200, "");
        progress->ProcessEvents(false);
        if (const std::string output = Output(); !output.empty()) {
            drawnAt.push_back(step);
            EXPECT_TRUE(output.ends_with("/vst/" + std::to_string(step) + "\x1b[K")) << output;
        }
    }
    EXPECT_EQ(drawnAt, (std::vector<int>{50, 100}));
    Redraw(*progress);
    EXPECT_NE(Output().find("120/200  60%  /vst/120\x1b[K"), std::string::npos) << "the last step is shown";
    Redraw(*progress);
    EXPECT_EQ(Output(), "") << "nothing has changed";
}

TEST_F(TerminalLine, IsRedrawnWhenItIsDueAlsoByAWaitForEvents)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    progress->SetProgress(1, 2, "");
    progress->ProcessEvents(true);
    EXPECT_EQ(Output(), "\rScanning\x1b[K") << "its time has stood still";
    time += redrawInterval;
    progress->ProcessEvents(true);
    EXPECT_NE(Output().find("1/2  50%"), std::string::npos);
}

TEST_F(TerminalLine, MakesRoomForAnAlert)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    presentation->ShowAlert(AlertKind::Caution, "Host", "Trouble.", {});
    EXPECT_EQ(Output(), "\rScanning\x1b[K\r\x1b[KHost: Trouble.\n");
}

TEST_F(TerminalLine, ADumbTerminalGetsPlainLines)
{
    const zettesting::ScopedEnvironment dumb("TERM", "dumb");
    TerminalPresentation plain(stream.get());
    plain.CreateProgress({})->Show("Scanning", "", true);
    EXPECT_EQ(Output(), "Scanning\n");
}

struct sigaction CurrentAction()
{
    struct sigaction action = {};
    ::sigaction(SIGINT, nullptr, &action);
    return action;
}

TEST_F(TerminalLine, CtrlCMeansCancelOnlyWhileACancellableProgressDialogIsOpen)
{
    EXPECT_EQ(CurrentAction().sa_handler, SIG_DFL);
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", false);
    EXPECT_EQ(CurrentAction().sa_handler, SIG_DFL);
    progress->Hide();
    progress->Show("Scanning", "", true);
    EXPECT_NE(CurrentAction().sa_handler, SIG_DFL);
    progress->Hide();
    EXPECT_EQ(CurrentAction().sa_handler, SIG_DFL);
}

TEST_F(TerminalLine, CtrlCStaysIgnoredWhereItWasIgnored)
{
    ::signal(SIGINT, SIG_IGN);
    {
        const auto progress = presentation->CreateProgress({});
        progress->Show("Scanning", "", true);
        EXPECT_EQ(CurrentAction().sa_handler, SIG_IGN);
    }
    EXPECT_EQ(CurrentAction().sa_handler, SIG_IGN);
    ::signal(SIGINT, SIG_DFL);
}

TEST_F(TerminalLine, CtrlCIsTheCancelButtonOfAnOpenProgressDialog)
{
    zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
    SetPresentation(presentation);
    const auto dialog = utility::MakeIntrusive<UI_ProgressDialog>(nullptr, "Scanning", "",
                                                                  ui::WindowVariant(), false, true, false);
    zetcore::threads::AsyncCallFromMainThread([] { ::raise(SIGINT); }, 0);
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kCancel);
    SetPresentation(nullptr);
    EXPECT_EQ(presentation->GetCounts().cancelled, 1);
}

TEST_F(TerminalLine, CtrlCIsReportedOnce)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    ::raise(SIGINT);
    EXPECT_TRUE(progress->ProcessEvents(false));
    EXPECT_FALSE(progress->ProcessEvents(false));
}

TEST_F(TerminalLine, CtrlCIsNoticedWhileTheMainThreadWaits)
{
    zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    std::thread user([] { ::kill(::getpid(), SIGINT); });
    while (!progress->ProcessEvents(true)) {
    }
    user.join();
    EXPECT_EQ(presentation->GetCounts().cancelled, 1);
}

/// The process that is killed makes its folder in this one's, because its end leaves it behind.
class TerminalLineDeathTest : public TerminalLine
{
    const zettesting::ScopedTemporaryFolder temporary{folder.Path()};
};

TEST_F(TerminalLineDeathTest, ASecondCtrlCEndsTheProgram)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            const auto progress = presentation->CreateProgress({});
            progress->Show("Scanning", "", true);
            ::raise(SIGINT);
            progress->ProcessEvents(false);
            ::raise(SIGINT);
            ::_exit(0);
        },
        ::testing::KilledBySignal(SIGINT), "");
}

} // namespace
} // namespace zetui::dialogs
