#include "dialogs/QtProgress.h"

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
    static double BarPart() { return static_cast<double>(Bar()->value()) / Bar()->maximum(); }
    static PathLabel* Extra()
    {
        for (QLabel* const label : Window()->findChildren<QLabel*>())
            if (auto* const path = dynamic_cast<PathLabel*>(label))
                return path;
        return nullptr;
    }
    static QLabel* Count()
    {
        for (QLabel* const label : Window()->findChildren<QLabel*>())
            if (label->foregroundRole() == QPalette::PlaceholderText)
                return label;
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

/// Counts what is painted.
class Paints : public QObject
{
  public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
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
    EXPECT_DOUBLE_EQ(BarPart(), 3 / 160.0);
    EXPECT_EQ(Count()->text(), QStringLiteral("3 of 160"));
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
    Paints paints;
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

TEST_F(ProgressInAWindow, ProcessingEventsReturnsWhenThereAreNone)
{
    QtProgress progress{ui::WindowVariant()};
    progress.Show("Scanning", "", true);
    for (const bool wait : {false, true})
        EXPECT_FALSE(progress.ProcessEvents(wait)) << "and it returned at all";
}

TEST_F(ProgressInAWindow, ABusyBarMoves)
{
    const auto dialog = Make(true);
    dialog->BeginModal();
    EXPECT_EQ(Bar()->maximum(), 0);
    const QImage before = Bar()->grab().toImage();
    EXPECT_TRUE(WaitUntil([&] { return Bar()->grab().toImage() != before; }));
    dialog->SetProgress(1, 2, "");
    EXPECT_DOUBLE_EQ(BarPart(), 0.5);
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, CountsBeyondTheRangeOfTheBarAreScaled)
{
    const auto dialog = Make();
    dialog->BeginModal();
    const unsigned long long huge = 1ull << 60;
    dialog->SetProgress(huge / 4, huge, "");
    EXPECT_DOUBLE_EQ(BarPart(), 0.25);
    dialog->SetProgress(9, 3, "");
    EXPECT_DOUBLE_EQ(BarPart(), 1.0);
    dialog->EndModal();
}

TEST_F(ProgressInAWindow, TheBarNeverGoesBackWhateverTheCountsDo)
{
    const auto dialog = Make();
    dialog->BeginModal();
    struct Case
    {
        unsigned long long progress, total;
        double part;
    };
    for (const Case& one : {Case{5, 10, 0.5}, Case{4, 10, 0.5}, Case{5, 20, 0.5}, Case{0, 3, 0.5},
                            Case{12, 20, 0.6}, Case{19, 20, 0.95}}) {
        dialog->SetProgress(one.progress, one.total, "");
        EXPECT_DOUBLE_EQ(BarPart(), one.part) << one.progress << " of " << one.total;
        EXPECT_EQ(Count()->text(), QStringLiteral("%1 of %2").arg(one.progress).arg(one.total));
    }
    dialog->EndModal();
}

/// The bar and the count when the window is hidden.
class LastLook : public QObject
{
  public:
    LastLook(QWidget* window, QProgressBar* progressBar, QLabel* label) : bar(progressBar), count(label)
    {
        window->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Hide) {
            full = bar->value() == bar->maximum();
            text = count->text();
        }
        return false;
    }
    bool full = false;
    QString text;

  private:
    QProgressBar* bar;
    QLabel* count;
};

TEST_F(ProgressInAWindow, ItEndsWithAFullBarUnlessItIsCancelled)
{
    struct Case
    {
        const char* name;
        std::function<void(UI_ProgressDialog&)> end;
        bool full;
    };
    for (const Case& one : {Case{"closed",
                                 [](UI_ProgressDialog& dialog) {
                                     dialog.PostClose();
                                     dialog.ModalDuring();
                                 },
                                 true},
                            Case{"the modal phase ended",
                                 [](UI_ProgressDialog& dialog) {
                                     dialog.ModalDuring();
                                     dialog.EndModal();
                                 },
                                 true},
                            Case{"cancelled",
                                 [](UI_ProgressDialog& dialog) {
                                     QTest::mouseClick(CancelButton(), Qt::LeftButton);
                                     dialog.ModalDuring();
                                     dialog.EndModal();
                                 },
                                 false}}) {
        const auto dialog = Make();
        dialog->BeginModal();
        dialog->SetProgress(3, 5, "");
        LastLook look(Window(), Bar(), Count());
        one.end(*dialog);
        EXPECT_EQ(Window(), nullptr);
        EXPECT_EQ(look.full, one.full) << one.name;
        EXPECT_EQ(look.text, one.full ? QStringLiteral("5 of 5") : QStringLiteral("3 of 5")) << one.name;
    }
}

TEST_F(ProgressInAWindow, TheFullBarIsOnTheScreenBeforeTheWindowIsGone)
{
    QtProgress progress{ui::WindowVariant()};
    progress.Show("Scanning", "", true);
    progress.SetProgress(1, 2, "");
    progress.ProcessEvents(false);
    Paints paints;
    Count()->installEventFilter(&paints);
    progress.Finish();
    EXPECT_DOUBLE_EQ(BarPart(), 1.0);
    EXPECT_GE(paints.count, 1) << "the count, which does not paint by itself";
}

TEST_F(ProgressInAWindow, PatienceStandsBehindThePath)
{
    const auto dialog = Make();
    dialog->SetPatience(std::chrono::seconds(0),
                        [](std::chrono::seconds) { return "12 s, is ended after 60 s"; });
    dialog->BeginModal();
    dialog->SetExtraText("/vst/" + std::string(300, 'x') + "/end.so");
    dialog->ModalDuring();
    // The file's name stays, too.
    EXPECT_TRUE(Extra()->ShownText().endsWith(QStringLiteral("x/end.so (12 s, is ended after 60 s)")))
        << Extra()->ShownText().toStdString();
    EXPECT_LE(Extra()->fontMetrics().horizontalAdvance(Extra()->ShownText()), Extra()->width());
    EXPECT_TRUE(Extra()->text().endsWith(QStringLiteral("x/end.so (12 s, is ended after 60 s)")));
    dialog->SetExtraText("/vst/short.so");
    EXPECT_EQ(Extra()->ShownText(), QStringLiteral("/vst/short.so"));
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
