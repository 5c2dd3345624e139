#include <zetui/application/Application.h>

#include <chrono>
#include <clocale>
#include <string>
#include <thread>

#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetcore/utility/ClientName.h>
#include <zettesting/Patience.h>
#include <zetui/dialogs/ProgressPresentation.h>

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

namespace threads = zetcore::threads;

class ApplicationTest : public WindowsFixture
{};

/// A host with an application object of its own.
class QtHostTest : public zettesting::HostFixture
{
  protected:
    zettesting::ScopedEnvironment platform{"QT_QPA_PLATFORM", "offscreen"};
    int count = 1;
    char name[5] = "host";
    char* arguments[2] = {name, nullptr};
};

TEST_F(ApplicationTest, MakesAnApplicationWhereThereIsNone)
{
    EXPECT_TRUE(HaveWindows());
    EXPECT_NE(qobject_cast<QApplication*>(QCoreApplication::instance()), nullptr);
    EXPECT_TRUE(InitializeWindows());
    TerminateWindows();
    EXPECT_FALSE(HaveWindows());
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    EXPECT_EQ(threads::GetRegisteredMainThread(), nullptr);
    TerminateWindows();
    EXPECT_TRUE(InitializeWindows());
}

TEST_F(ApplicationTest, TheProgramHasTheHostsNameOrItsOwnAndNeverTheToolkits)
{
    const std::wstring before = zetcore::utility::GetClientName();
    TerminateWindows();
    zetcore::utility::SetClientName(L"H\u00f6st");
    ASSERT_TRUE(InitializeWindows());
    EXPECT_EQ(QCoreApplication::applicationName().toStdWString(), L"H\u00f6st");
    TerminateWindows();
    EXPECT_EQ(QGuiApplication::desktopFileName(), "") << "a host is not shown as another program";
    SetProgramName(L"List of Things", L"org.example.Things");
    ASSERT_TRUE(InitializeWindows());
    EXPECT_EQ(QCoreApplication::applicationName(), "List of Things");
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.example.Things");
    TerminateWindows();
    EXPECT_EQ(QGuiApplication::desktopFileName(), "");
    SetProgramName({});
    zetcore::utility::SetClientName(before);
}

TEST_F(QtHostTest, TheProcessKeepsItsLocale)
{
    const zettesting::ScopedEnvironment user("LC_ALL", "C.UTF-8");
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C");
    ASSERT_TRUE(InitializeWindows());
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    TerminateWindows();
    std::setlocale(LC_ALL, before.c_str());
}

TEST_F(ApplicationTest, TheLastWindowDoesNotEndTheHostsLoop)
{
    EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
}

TEST_F(ApplicationTest, PostedCallsRunInTheEventLoopInOrder)
{
    std::vector<int> calls;
    std::thread other([&] {
        threads::AsyncCallFromMainThread([&] { calls.push_back(1); }, 0);
        threads::AsyncCallFromMainThread([&] { calls.push_back(2); }, 0);
    });
    other.join();
    threads::AsyncCallFromMainThread([&] { calls.push_back(3); }, 0);
    EXPECT_TRUE(WaitUntil([&] { return calls.size() == 3; }));
    EXPECT_EQ(calls, (std::vector<int>{1, 2, 3}));
}

TEST_F(ApplicationTest, CallsThatPostOthersLeaveTheLoopTimeForEvents)
{
    bool stop = false;
    std::function<void()> again = [&] {
        if (!stop)
            threads::AsyncCallFromMainThread(again, 0);
    };
    threads::AsyncCallFromMainThread(again, 0);
    bool eventHandled = false;
    QTimer::singleShot(0, [&] { eventHandled = true; });
    EXPECT_TRUE(WaitUntil([&] { return eventHandled; }));
    stop = true;
    EXPECT_TRUE(WaitUntil([] { return !threads::HasQueuedCalls(); }));
}

TEST_F(ApplicationTest, TheAdaptorRunsWhatIsQueuedOnTheMainThreadOnly)
{
    const auto adaptor = threads::GetRegisteredMainThread();
    ASSERT_TRUE(adaptor);
    EXPECT_TRUE(adaptor->CanRun());
    std::thread([&] { EXPECT_FALSE(adaptor->CanRun()); }).join();
    int calls = 0;
    threads::AsyncCallFromMainThread([&] { ++calls; }, 0);
    adaptor->Run(std::chrono::steady_clock::now() + zettesting::patience);
    EXPECT_EQ(calls, 1);
}

TEST_F(QtHostTest, KeepsTheHostsApplicationAndMainThread)
{
    QApplication application(count, arguments);
    const auto own = std::make_shared<threads::PlainEventLoop>();
    threads::RegisterMainThread(own);
    EXPECT_TRUE(InitializeWindows());
    EXPECT_TRUE(HaveWindows());
    EXPECT_EQ(QCoreApplication::instance(), &application);
    EXPECT_EQ(threads::GetRegisteredMainThread(), own);
    TerminateWindows();
    EXPECT_EQ(QCoreApplication::instance(), &application);
    EXPECT_EQ(threads::GetRegisteredMainThread(), own);
    threads::RegisterMainThread(nullptr);
}

TEST_F(QtHostTest, AnApplicationWithoutWindowsOpensNone)
{
    QCoreApplication application(count, arguments);
    EXPECT_FALSE(InitializeWindows());
    EXPECT_FALSE(HaveWindows());
}

TEST_F(QtHostTest, InstallsAndRemovesThePresentationWithWindows)
{
    QApplication application(count, arguments);
    const auto before = dialogs::GetPresentation();
    ASSERT_TRUE(InitializeWindows());
    EXPECT_NE(dialogs::GetPresentation(), before);
    TerminateWindows();
    EXPECT_NE(dialogs::GetPresentation(), nullptr);
}

TEST_F(QtHostTest, CallsQueuedBeforehandRun)
{
    bool called = false;
    threads::AsyncCallFromMainThread([&] { called = true; }, 0);
    QApplication application(count, arguments);
    ASSERT_TRUE(InitializeWindows());
    QCoreApplication::processEvents();
    EXPECT_TRUE(called);
    TerminateWindows();
}

TEST_F(QtHostTest, WindowsAreGoneWithTheHostsApplication)
{
    {
        QApplication application(count, arguments);
        ASSERT_TRUE(InitializeWindows());
    }
    EXPECT_FALSE(HaveWindows());
    TerminateWindows();
}

} // namespace
} // namespace zetui::ui
