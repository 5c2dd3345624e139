#include <QElapsedTimer>

#include "testing/TreeFixture.h"

namespace zetui::controls {
namespace {

class UI_MultiColumnTreeSelectionTest : public TreeFixture
{
  protected:
    UI_MultiColumnTreeSelectionTest() { MakeColumns(); }

    void ClickBelowRows()
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(20, view.viewport()->height() - 5));
    }
};

TEST_F(UI_MultiColumnTreeSelectionTest, SelectsTheRowThatIsClicked)
{
    Fill(Names{L"a", L"b", L"c"});
    Show();
    EXPECT_FALSE(tree->IsAnyRowSelected());
    ClickCell(1, 1);
    EXPECT_EQ(SelectedNames(), Names{L"b"});
    EXPECT_EQ(selectionCalls, 1);
    ClickCell(1, 2);
    EXPECT_EQ(selectionCalls, 1);
    ClickCell(2, 1, Qt::ControlModifier);
    EXPECT_EQ(SelectedNames(), Names{L"c"}) << "only one can be selected";
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), -1) << "cells cannot be selected";
    EXPECT_EQ(cellCalls, 0);
}

TEST_F(UI_MultiColumnTreeSelectionTest, SelectsARowByAClickRightOfItsCells)
{
    Fill(Names{L"a", L"b"});
    Show();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      QPoint(view.viewport()->width() - 5, rowHeight + 5));
    EXPECT_EQ(SelectedNames(), Names{L"b"});
}

TEST_F(UI_MultiColumnTreeSelectionTest, DeselectsByAClickOnTheEmptyPartWhereThatIsSupported)
{
    Fill(Names{L"a", L"b"});
    Show();
    ClickCell(0, 1);
    ClickBelowRows();
    EXPECT_EQ(SelectedNames(), Names{L"a"});
    tree->SetSupportDeselectAllOnEmptyTreeClick(true);
    tree->SetSupportNoneSelected(false);
    ClickBelowRows();
    EXPECT_EQ(SelectedNames(), Names{L"a"});
    tree->SetSupportNoneSelected(true);
    ClickBelowRows();
    EXPECT_FALSE(tree->IsAnyRowSelected());
    EXPECT_EQ(selectionCalls, 2);
}

TEST_F(UI_MultiColumnTreeSelectionTest, SelectsSeveralRowsWithControlAndShift)
{
    tree->SetSupportMultipleSelections(true);
    Fill(Names{L"a", L"b", L"c", L"d", L"e"});
    Show();
    ClickCell(3, 1);
    ClickCell(1, 1, Qt::ControlModifier);
    EXPECT_EQ(SelectedNames(), (Names{L"d", L"b"})) << "in selection order";
    ClickCell(3, 1, Qt::ControlModifier);
    EXPECT_EQ(SelectedNames(), Names{L"b"});
    ClickCell(1, 1);
    ClickCell(3, 1, Qt::ShiftModifier);
    EXPECT_EQ(SelectedNames(), (Names{L"b", L"c", L"d"}));
    ClickCell(0, 1, Qt::ShiftModifier);
    EXPECT_EQ(SelectedNames(), (Names{L"a", L"b"}));
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(SelectedNames().size(), 5U);
}

TEST_F(UI_MultiColumnTreeSelectionTest, KeepsTheLastSelectedRowWhereNoneIsNotSupported)
{
    tree->SetSupportMultipleSelections(true);
    tree->SetSupportNoneSelected(false);
    Fill(Names{L"a", L"b"});
    Show();
    ClickCell(0, 1);
    ClickCell(1, 1, Qt::ControlModifier);
    ClickCell(0, 1, Qt::ControlModifier);
    ClickCell(1, 1, Qt::ControlModifier);
    EXPECT_EQ(SelectedNames(), Names{L"b"});
}

TEST_F(UI_MultiColumnTreeSelectionTest, SelectsTheRowsThatTheMouseIsDraggedOver)
{
    tree->SetSupportMultipleSelections(true);
    Fill(Names{L"a", L"b", L"c", L"d"});
    Show();
    Drag(view.viewport(), CellCenter(1, 1), CellCenter(3, 1));
    EXPECT_EQ(SelectedNames(), (Names{L"b", L"c", L"d"}));
}

TEST_F(UI_MultiColumnTreeSelectionTest, SelectsNothingWhereRowsCannotBeSelected)
{
    Append(L"a");
    const auto fixed = utility::MakeIntrusive<UI_MultiColumnTreeRow>(false);
    entries[fixed.get()] = {L"fixed", L""};
    tree->AppendRow(fixed, nullptr, true);
    Append(L"b");
    Show();
    ClickCell(1, 1);
    EXPECT_FALSE(tree->IsAnyRowSelected());
    ClickCell(0, 1);
    Press(Qt::Key_Down);
    EXPECT_EQ(SelectedNames(), Names{L"b"}) << "the row between cannot be selected";
    tree->SetSupportUserSelectableRows(false);
    EXPECT_FALSE(tree->IsAnyRowSelected());
    ClickCell(0, 1);
    Press(Qt::Key_Down);
    EXPECT_FALSE(tree->IsAnyRowSelected());
}

TEST_F(UI_MultiColumnTreeSelectionTest, MovesTheSelectionWithTheKeyboard)
{
    Fill(100);
    Show();
    const int page = view.viewport()->height() / rowHeight - 1;
    const auto selected = [this] { return tree->GetSelectedRows().front().get(); };
    Press(Qt::Key_Down);
    EXPECT_EQ(selected(), tree->GetRowAt(0).get());
    Press(Qt::Key_Down);
    EXPECT_EQ(selected(), tree->GetRowAt(1).get());
    Press(Qt::Key_PageDown);
    EXPECT_EQ(selected(), tree->GetRowAt(1 + page).get());
    Press(Qt::Key_End);
    EXPECT_EQ(selected(), tree->GetRowAt(99).get());
    EXPECT_TRUE(tree->IsRowVisible(selected()));
    Press(Qt::Key_Down);
    EXPECT_EQ(selected(), tree->GetRowAt(99).get());
    Press(Qt::Key_PageUp);
    EXPECT_EQ(selected(), tree->GetRowAt(99 - page).get());
    Press(Qt::Key_Home);
    EXPECT_EQ(selected(), tree->GetRowAt(0).get());
    Press(Qt::Key_Up);
    EXPECT_EQ(selected(), tree->GetRowAt(0).get());
    EXPECT_EQ(tree->GetSelectedRows().size(), 1U);
}

TEST_F(UI_MultiColumnTreeSelectionTest, ExtendsTheSelectionWithShift)
{
    tree->SetSupportMultipleSelections(true);
    Fill(Names{L"a", L"b", L"c", L"d"});
    Show();
    ClickCell(1, 1);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(SelectedNames(), (Names{L"b", L"c", L"d"}));
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(SelectedNames(), (Names{L"b", L"c"}));
    Press(Qt::Key_Down);
    EXPECT_EQ(SelectedNames(), Names{L"d"});
}

TEST_F(UI_MultiColumnTreeSelectionTest, JumpsToTheRowsThatBeginWithWhatIsTyped)
{
    QApplication::setKeyboardInputInterval(60'000);
    tree->SetCellTextFunction([this](RowPtr row, int position) {
        return header->GetColumnAt(position) == nameColumn ? entries[row.get()].name : std::wstring();
    });
    Fill(Names{L"Alpha", L"Delay", L"Distortion", L"Drive", L"Zoom", L"\u00c4ther"});
    Show();
    Press(Qt::Key_D);
    EXPECT_EQ(SelectedNames(), Names{L"Delay"});
    Press(Qt::Key_R);
    EXPECT_EQ(SelectedNames(), Names{L"Drive"});
    Press(Qt::Key_X);
    EXPECT_EQ(SelectedNames(), Names{L"Drive"}) << "nothing begins so";
    QApplication::setKeyboardInputInterval(1);
    const auto pause = [] {
        QElapsedTimer timer;
        timer.start();
        EXPECT_TRUE(WaitUntil([&] { return timer.hasExpired(5); }));
    };
    pause();
    Press(Qt::Key_D);
    EXPECT_EQ(SelectedNames(), Names{L"Delay"}) << "from the top again";
    pause();
    Press(Qt::Key_D);
    EXPECT_EQ(SelectedNames(), Names{L"Distortion"});
    pause();
    QTest::sendKeyEvent(QTest::Click, &view, Qt::Key_unknown, QString::fromStdWString(L"\u00e4"), {});
    EXPECT_EQ(SelectedNames(), Names{L"\u00c4ther"});
    QApplication::setKeyboardInputInterval(400);
}

TEST_F(UI_MultiColumnTreeSelectionTest, JumpsToNamesWhereverTheirColumnHasBeenMoved)
{
    Fill(Names{L"Alpha", L"Delay"});
    header->MoveColumn(nameColumn, 2);
    Show();
    Press(Qt::Key_D);
    EXPECT_EQ(SelectedNames(), Names{L"Delay"});
    EXPECT_EQ(view.model()->headerData(0, Qt::Vertical).toString().toStdWString(), L"Alpha");
}

TEST_F(UI_MultiColumnTreeSelectionTest, SelectsCellsWithTheMouseAndTheKeyboard)
{
    tree->SetSupportUserSelectableCells(true);
    Fill(Names{L"a", L"b"});
    Show();
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), -1);
    ClickCell(1, 2);
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), 2);
    EXPECT_EQ(cellCalls, 1);
    Press(Qt::Key_Left);
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), 1);
    Press(Qt::Key_Up);
    EXPECT_EQ(SelectedNames(), Names{L"a"});
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), 1);
    EXPECT_EQ(cellCalls, 3);
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), -1) << "left of the first cell is the row alone";
    Press(Qt::Key_Right);
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), 0);
    tree->DeselectAll();
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), -1);
    tree->SelectCell(tree->GetRowAt(1).get(), 1);
    EXPECT_EQ(SelectedNames(), Names{L"b"});
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), 1);
    tree->SelectCell(tree->GetRowAt(1).get(), 99);
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), -1);
}

TEST_F(UI_MultiColumnTreeSelectionTest, SelectsByProgram)
{
    Fill(Names{L"a", L"b"});
    tree->SelectRow(tree->GetRowAt(0).get(), true);
    tree->SelectRow(tree->GetRowAt(1).get(), true);
    EXPECT_EQ(SelectedNames(), Names{L"b"});
    tree->SelectRow(tree->GetRowAt(1).get(), false);
    EXPECT_FALSE(tree->IsAnyRowSelected());
    tree->SelectRow(nullptr, true);
    EXPECT_FALSE(tree->IsAnyRowSelected());
    EXPECT_EQ(selectionCalls, 3);
}

TEST_F(UI_MultiColumnTreeSelectionTest, TellsThatTheSelectionWentWithItsRows)
{
    Fill(Names{L"a", L"b"});
    Show();
    ClickCell(0, 1);
    selectionCalls = 0;
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        tree->RemoveAllRows();
        Fill(Names{L"a", L"b"});
        EXPECT_EQ(selectionCalls, 0);
    }
    EXPECT_EQ(selectionCalls, 1);
    EXPECT_FALSE(tree->IsAnyRowSelected());
}

TEST_F(UI_MultiColumnTreeSelectionTest, SelectsWithSpaceOnlyWhereKeysBesidesArrowsMay)
{
    Fill(Names{L"a", L"b"});
    Show();
    Press(Qt::Key_Down);
    tree->DeselectAll();
    Press(Qt::Key_Space);
    EXPECT_FALSE(tree->IsAnyRowSelected());
    tree->SetSupportNonArrowKeysToSelectRow(true);
    Press(Qt::Key_Space);
    EXPECT_EQ(SelectedNames(), Names{L"a"});
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_FALSE(tree->IsAnyRowSelected());
}

TEST_F(UI_MultiColumnTreeSelectionTest, LeavesTheKeysOfItsWindowToIt)
{
    Fill(Names{L"a"});
    Show();
    for (const int key : {int(Qt::Key_Return), int(Qt::Key_Escape), int(Qt::Key_F5)}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, key == Qt::Key_Return ? "\r" : "");
        QApplication::sendEvent(&view, &event);
        EXPECT_FALSE(event.isAccepted()) << key;
    }
    QKeyEvent find(QEvent::KeyPress, Qt::Key_F, Qt::ControlModifier, "\x06");
    QApplication::sendEvent(&view, &find);
    EXPECT_FALSE(find.isAccepted());
}

TEST_F(UI_MultiColumnTreeSelectionTest, ASelectedRowInSightStaysInSightWhenTheListGetsLower)
{
    Fill(50);
    Show();
    const auto inSight = [this](int place) {
        const int top = view.rowViewportPosition(place);
        return top >= 0 && top + rowHeight <= view.viewport()->height();
    };
    const int last = view.rowAt(view.viewport()->height() - rowHeight);
    ClickCell(last, 1);
    ASSERT_TRUE(inSight(last));
    view.resize(400, 120);
    EXPECT_TRUE(inSight(last));
    view.verticalScrollBar()->setValue(0);
    ASSERT_FALSE(inSight(last));
    view.resize(400, 110);
    EXPECT_EQ(view.verticalScrollBar()->value(), 0) << "a row that the user has scrolled away stays away";
}

} // namespace
} // namespace zetui::controls
