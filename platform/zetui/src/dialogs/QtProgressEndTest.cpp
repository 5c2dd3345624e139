// How the progress window is closed, and by whom.
#include <functional>
#include <thread>

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <zetcore/threads/ClearQueuedCalls.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>

#include "testing/ProgressWindowFixture.h"

namespace zetui::dialogs {
namespace {

TEST_F(ProgressInAWindow, AClickOnCancelClosesTheModalPhaseWithTheCancelResponse)
{
    const auto dialog = Make();
    Listen(*dialog);
    dialog->BeginModal();
    QTest::mouseClick(CancelButton(), Qt::LeftButton);
    EXPECT_EQ(responses, Responses{}) << "not before control returns to the dialog";
    dialog->ModalDuring();
    EXPECT_EQ(responses, Responses{UI_DialogViewContainer::kCancel});
    EXPECT_EQ(Window(), nullptr);
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, EscapeSpaceReturnAndClosingTheWindowCancelButNotAReturnThatIsKeptDown)
{
    const auto press = [](Qt::Key key) { QTest::keyClick(Window()->focusWidget(), key); };
    const auto hold = [](const char* text) {
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, text, true);
        QApplication::sendEvent(Window()->focusWidget(), &repeated);
    };
    struct Case
    {
        const char* name;
        std::function<void()> act;
        Responses expected;
    };
    for (const Case& one :
         {Case{"Escape", [&] { press(Qt::Key_Escape); }, {0}},
          Case{"Space", [&] { press(Qt::Key_Space); }, {0}}, Case{"close", [] { Window()->close(); }, {0}},
          Case{"Return", [&] { press(Qt::Key_Return); }, {0}},
          Case{"Enter", [&] { press(Qt::Key_Enter); }, {0}}, Case{"held Return", [&] { hold("\r"); }, {}}}) {
        responses.clear();
        const auto dialog = Make();
        Listen(*dialog);
        dialog->BeginModal();
        ASSERT_NE(Window()->focusWidget(), nullptr);
        one.act();
        dialog->ModalDuring();
        EXPECT_EQ(responses, one.expected) << one.name;
        dialog->EndModal();
    }
}

TEST_F(ProgressInAWindow, WithoutCancelButtonItCannotBeClosedByTheUser)
{
    const auto dialog = Make(false, false);
    Listen(*dialog);
    dialog->BeginModal();
    EXPECT_EQ(CancelButton(), nullptr);
    QTest::keyClick(Window(), Qt::Key_Escape);
    Window()->close();
    dialog->ModalDuring();
    EXPECT_EQ(responses, Responses{});
    EXPECT_TRUE(dialog->UI_IsShown());
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, TheModalRunEndsWithAClickOnCancel)
{
    const auto dialog = Make();
    Listen(*dialog);
    zetcore::threads::AsyncCallFromMainThread([] { QTest::mouseClick(CancelButton(), Qt::LeftButton); }, 0);
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kCancel);
    EXPECT_EQ(responses, Responses{UI_DialogViewContainer::kCancel});
}

TEST_F(ProgressInAWindow, TheModalRunEndsWhenAnotherThreadPostsThatItIsDone)
{
    for (const bool ownLoop : {false, true}) {
        if (ownLoop)
            zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
        const auto dialog = Make();
        std::thread scanner(
            [&dialog] { zetcore::threads::AsyncCallFromMainThread([&dialog] { dialog->PostClose(); }, 0); });
        EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kOK);
        scanner.join();
    }
    zetcore::threads::RegisterMainThread(nullptr);
}

TEST_F(ProgressInAWindow, CancelIsNoticedAtTheNextLookWhileOthersPostAllTheTime)
{
    const auto dialog = Make();
    dialog->BeginModal();
    std::function<void()> again = [&again] { zetcore::threads::AsyncCallFromMainThread(again, 0); };
    again();
    QTest::mouseClick(CancelButton(), Qt::LeftButton);
    dialog->ModalDuring();
    EXPECT_FALSE(dialog->UI_IsShown());
    dialog->EndModal();
    zetcore::threads::ClearQueuedCalls();
}

TEST_F(ProgressInAWindow, ProcessingEventsReturnsWhenThereAreNone)
{
    QtProgress progress{ui::WindowVariant()};
    progress.Show("Scanning", "", true);
    for (const bool wait : {false, true})
        EXPECT_FALSE(progress.ProcessEvents(wait)) << "and it returned at all";
}

} // namespace
} // namespace zetui::dialogs
