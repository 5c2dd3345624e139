// The bar of the progress window, and the count beside it.
#include <functional>

#include <QTest>

#include "testing/Paints.h"
#include "testing/ProgressWindowFixture.h"

namespace zetui::dialogs {
namespace {

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

} // namespace
} // namespace zetui::dialogs
