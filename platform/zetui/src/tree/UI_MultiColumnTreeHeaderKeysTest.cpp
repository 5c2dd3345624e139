// The titles of a tree with the keyboard.
#include <QImage>

#include "testing/TreeFixture.h"

namespace zetui::controls {
namespace {

class UI_MultiColumnTreeHeaderKeysTest : public TreeFixture
{
  protected:
    void OpenAtTitles()
    {
        MakeColumns();
        Fill(Names{L"b", L"a", L"c"});
        Show();
        Press(Qt::Key_Backtab, Qt::ShiftModifier);
        ASSERT_EQ(QApplication::focusWidget(), &Titles());
    }
    QHeaderView& Titles() const { return *view.horizontalHeader(); }
    /// True when the title is drawn otherwise than without the focus.
    bool IsFramed(int place)
    {
        const QRect rect(Titles().sectionViewportPosition(Titles().logicalIndex(place)), 0,
                         Titles().sectionSize(Titles().logicalIndex(place)), Titles().height());
        const QImage with = Titles().grab(rect).toImage();
        view.setFocus();
        const QImage without = Titles().grab(rect).toImage();
        Titles().setFocus();
        return with != without;
    }
};

TEST_F(UI_MultiColumnTreeHeaderKeysTest, TabReachesTheTitlesBeforeTheRows)
{
    OpenAtTitles();
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &before);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &Titles());
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &view);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &after);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &view);
}

TEST_F(UI_MultiColumnTreeHeaderKeysTest, ATreeWithoutTitlesHasNoStopForThem)
{
    Fill(Names{L"a"});
    Show();
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &before);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &view);
}

TEST_F(UI_MultiColumnTreeHeaderKeysTest, ArrowsHomeAndEndMoveTheFrame)
{
    OpenAtTitles();
    EXPECT_TRUE(IsFramed(0));
    EXPECT_FALSE(IsFramed(1));
    Press(Qt::Key_Left);
    EXPECT_TRUE(IsFramed(0));
    Press(Qt::Key_Right);
    EXPECT_TRUE(IsFramed(1));
    EXPECT_FALSE(IsFramed(0));
    Press(Qt::Key_End);
    EXPECT_TRUE(IsFramed(2));
    Press(Qt::Key_Right);
    EXPECT_TRUE(IsFramed(2));
    Press(Qt::Key_Home);
    EXPECT_TRUE(IsFramed(0));
}

TEST_F(UI_MultiColumnTreeHeaderKeysTest, SpaceAndReturnSortByTheFramedColumn)
{
    OpenAtTitles();
    Press(Qt::Key_Right);
    Press(Qt::Key_Space);
    EXPECT_EQ(header->GetSortColumn(), nameColumn);
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b", L"c"}));
    Press(Qt::Key_Return);
    EXPECT_FALSE(header->IsSortDirectionAscending());
    EXPECT_EQ(ShownNames(), (Names{L"c", L"b", L"a"}));
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
    QApplication::sendEvent(&Titles(), &held);
    EXPECT_FALSE(header->IsSortDirectionAscending()) << "a key that is kept down sorts once";
    Press(Qt::Key_Right);
    Press(Qt::Key_Enter);
    EXPECT_EQ(header->GetSortColumn(), versionColumn);
    EXPECT_TRUE(header->IsSortDirectionAscending());
}

TEST_F(UI_MultiColumnTreeHeaderKeysTest, ShiftWithArrowsResizesAndControlPlusFits)
{
    OpenAtTitles();
    Press(Qt::Key_Right);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(header->GetColumnWidth(nameColumn), 160);
    Press(Qt::Key_Left, Qt::ShiftModifier);
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(header->GetColumnWidth(nameColumn), 140);
    for (int i = 0; i < 30; ++i)
        Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(header->GetColumnWidth(nameColumn), static_cast<float>(Titles().minimumSectionSize()));
    header->SetColumnBestFitWidthCallback([](unsigned id) { return id == nameColumn ? 222.0F : 0.0F; });
    Press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(header->GetColumnWidth(nameColumn), 222);
    EXPECT_EQ(header->GetColumnWidth(onColumn), 50);
}

TEST_F(UI_MultiColumnTreeHeaderKeysTest, ControlWithArrowsMovesAColumnUnlessOneKeepsItsPlace)
{
    OpenAtTitles();
    header->SetColumnKeepsPlace(onColumn, true);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(header->GetColumnAt(2), nameColumn);
    EXPECT_TRUE(IsFramed(2)) << "the frame goes with the column";
    Press(Qt::Key_Left, Qt::ControlModifier);
    Press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(header->GetColumnAt(0), onColumn) << "which keeps its place";
    EXPECT_EQ(header->GetColumnAt(1), nameColumn);
    Press(Qt::Key_Home);
    Press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(header->GetColumnAt(0), onColumn);
}

TEST_F(UI_MultiColumnTreeHeaderKeysTest, DownGoesToTheRows)
{
    OpenAtTitles();
    Press(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &view);
    EXPECT_EQ(SelectedNames(), Names{L"b"});
}

TEST_F(UI_MultiColumnTreeHeaderKeysTest, LeavesTheKeysOfItsWindowToIt)
{
    OpenAtTitles();
    for (const int key : {int(Qt::Key_Escape), int(Qt::Key_F5), int(Qt::Key_A)}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&Titles(), &event);
        EXPECT_FALSE(event.isAccepted()) << key;
    }
}

TEST_F(UI_MultiColumnTreeHeaderKeysTest, AClickSortsAndLeavesTheFocusWhereItIs)
{
    MakeColumns();
    Fill(Names{L"b", L"a"});
    Show();
    QTest::mouseClick(Titles().viewport(), Qt::LeftButton, {}, QPoint(120, Titles().height() / 2));
    EXPECT_EQ(header->GetSortColumn(), nameColumn);
    EXPECT_EQ(QApplication::focusWidget(), &view);
}

} // namespace
} // namespace zetui::controls
