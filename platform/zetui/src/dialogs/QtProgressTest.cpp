#include "dialogs/QtProgress.h"

#include <chrono>
#include <thread>
#include <vector>

#include <QApplication>
#include <QHelpEvent>
#include <QPushButton>
#include <QTest>
#include <QToolTip>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetui/dialogs/UI_ProgressDialog.h>
#include <zetui/utility/IntrusivePtr.h>

#include "testing/WindowsFixture.h"

namespace zetui::dialogs {
namespace {

class ProgressInAWindow : public WindowsFixture
{
  protected:
    static utility::IntrusivePtr<UI_ProgressDialog> Make(bool indeterminate = false, bool cancellable = true,
                                                         ui::WindowVariant parent = {})
    {
        return utility::MakeIntrusive<UI_ProgressDialog>(nullptr, "Scanning", "", parent, indeterminate,
                                                         cancellable, false);
    }
    static ProgressWindow* Window()
    {
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const window = dynamic_cast<ProgressWindow*>(widget))
                if (window->isVisible())
                    return window;
        return nullptr;
    }
    static QPushButton* CancelButton() { return Window()->findChild<QPushButton*>(); }
    static QProgressBar* Bar() { return Window()->findChild<QProgressBar*>(); }
    static PathLabel* Extra()
    {
        for (QLabel* const label : Window()->findChildren<QLabel*>())
            if (auto* const path = dynamic_cast<PathLabel*>(label))
                return path;
        return nullptr;
    }
    /// The responses with which the dialog closes.
    std::vector<UI_Dialog::Response> responses;
    void Listen(UI_ProgressDialog& dialog)
    {
        dialog.SetPostCloseCallback([this](UI_Dialog::Response response) {
            responses.push_back(response);
            return false;
        });
    }
};

using Responses = std::vector<UI_Dialog::Response>;

TEST_F(ProgressInAWindow, ShowsTitleTextExtraTextAndBar)
{
    const auto dialog = Make();
    dialog->SetExtraText("/vst/<b>Gr\xC3\xBC\xC3\x9F"
                         "e</b>.so");
    dialog->SetProgress(3, 160, "Text");
    dialog->BeginModal();
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(Window()->windowTitle(), QStringLiteral("Scanning"));
    EXPECT_EQ(Extra()->text(), QStringLiteral("/vst/<b>Gr\u00FC\u00DFe</b>.so"));
    EXPECT_EQ(Bar()->value(), 3);
    EXPECT_EQ(Bar()->maximum(), 160);
    EXPECT_TRUE(Window()->isModal());
    dialog->EndModal();
    EXPECT_EQ(Window(), nullptr);
}

TEST_F(ProgressInAWindow, ShortensALongPathInItsMiddleWithoutGrowing)
{
    const auto dialog = Make();
    dialog->BeginModal();
    const QSize size = Window()->size();
    const std::string path = "/start/" + std::string(500, 'x') + "/end.so";
    dialog->SetExtraText(path);
    dialog->ModalDuring();
    EXPECT_EQ(Window()->size(), size);
    EXPECT_EQ(Extra()->text(), QString::fromStdString(path));
    const QString shown = Extra()->ShownText();
    EXPECT_TRUE(shown.startsWith(QStringLiteral("/start/")));
    EXPECT_TRUE(shown.endsWith(QStringLiteral("/end.so")));
    EXPECT_LE(Extra()->fontMetrics().horizontalAdvance(shown), Extra()->width());
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, TellsAllOfAShortenedPathInATooltip)
{
    const auto dialog = Make();
    dialog->BeginModal();
    const auto tooltip = [] {
        QHelpEvent point(QEvent::ToolTip, QPoint(5, 5), Extra()->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(Extra(), &point);
        return QToolTip::text();
    };
    dialog->SetExtraText("/vst/short.so");
    EXPECT_EQ(tooltip(), QString());
    const std::string path = "/vst & more/" + std::string(500, 'x') + ".so";
    dialog->SetExtraText(path);
    EXPECT_EQ(tooltip(), QString::fromStdString(path));
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, ChangesAreOnTheScreenAtOnce)
{
    const auto dialog = Make();
    dialog->BeginModal();
    dialog->ModalDuring();

    class Paints : public QObject
    {
      public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::Paint;
            return false;
        }
        int count = 0;
    } paints;
    Extra()->installEventFilter(&paints);
    Bar()->installEventFilter(&paints);
    dialog->SetExtraText("/vst/reverb.so");
    dialog->SetProgress(1, 2, "");
    dialog->ModalDuring();
    EXPECT_GE(paints.count, 2);
    dialog->EndModal();
}

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

TEST_F(ProgressInAWindow, EscapeSpaceAndClosingTheWindowCancelAndReturnDoesNot)
{
    const auto press = [](Qt::Key key) { QTest::keyClick(Window()->focusWidget(), key); };
    struct Case
    {
        const char* name;
        std::function<void()> act;
        Responses expected;
    };
    for (const Case& one :
         {Case{"Escape", [&] { press(Qt::Key_Escape); }, {0}},
          Case{"Space", [&] { press(Qt::Key_Space); }, {0}}, Case{"close", [] { Window()->close(); }, {0}},
          Case{"Return", [&] { press(Qt::Key_Return); }, {}}}) {
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

TEST_F(ProgressInAWindow, ProcessingEventsReturnsSoonWhenThereAreNone)
{
    QtProgress progress{ui::WindowVariant()};
    progress.Show("Scanning", "", true);
    for (const bool wait : {false, true}) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(progress.ProcessEvents(wait));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    }
}

TEST_F(ProgressInAWindow, ABusyBarMoves)
{
    const auto dialog = Make(true);
    dialog->BeginModal();
    EXPECT_EQ(Bar()->maximum(), 0);
    const QImage before = Bar()->grab().toImage();
    EXPECT_TRUE(WaitUntil([&] { return Bar()->grab().toImage() != before; }));
    dialog->SetProgress(1, 2, "");
    EXPECT_EQ(Bar()->maximum(), 2);
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, CountsBeyondTheRangeOfTheBarAreScaled)
{
    const auto dialog = Make();
    dialog->BeginModal();
    const unsigned long long huge = 1ull << 60;
    dialog->SetProgress(huge / 4, huge, "");
    EXPECT_NEAR(static_cast<double>(Bar()->value()) / Bar()->maximum(), 0.25, 0.001);
    dialog->SetProgress(9, 3, "");
    EXPECT_EQ(Bar()->value(), 3);
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, BlocksItsParentAndSurvivesItsEnd)
{
    auto host = std::make_unique<QWidget>();
    host->show();
    const auto dialog = Make(false, true, ui::WindowVariant(reinterpret_cast<HWND>(host->winId())));
    dialog->BeginModal();
    EXPECT_EQ(Window()->parentWidget(), host.get());
    EXPECT_EQ(Window()->windowModality(), Qt::WindowModal);
    host.reset();
    dialog->SetExtraText("text");
    dialog->SetProgress(1, 2, "");
    dialog->ModalDuring();
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, GrowsForATextThatComesLater)
{
    const auto dialog = Make();
    dialog->BeginModal();
    const int height = Window()->height();
    dialog->SetProgress(1, 2, "A text of its own");
    EXPECT_GT(Window()->height(), height);
    dialog->SetProgress(1, 2, "");
    EXPECT_EQ(Window()->height(), height);
    dialog->EndModal();
}

} // namespace
} // namespace zetui::dialogs
