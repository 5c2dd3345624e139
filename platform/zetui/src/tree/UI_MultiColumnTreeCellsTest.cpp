#include <QAccessible>
#include <QImage>

#include <zetui/pixmill/Pixmill.h>

#include "testing/TreeCellsFixture.h"

namespace zetui::controls {
namespace {

class UI_MultiColumnTreeCellsTest : public TreeCellsFixture
{};

TEST_F(UI_MultiColumnTreeCellsTest, MakesWidgetsForVisibleRowsOnly)
{
    Fill(10'000);
    EXPECT_TRUE(checkboxes.empty()) << "nothing is visible yet";
    Show();
    EXPECT_EQ(RowsWithWidgets(), RowsInSight());
    for (const int scroll : {7, 20, 5000, 199'000, 0, 100'000}) {
        view.verticalScrollBar()->setValue(scroll);
        EXPECT_EQ(RowsWithWidgets(), RowsInSight()) << scroll;
    }
    EXPECT_EQ(WidgetCount(), checkboxes.size());
    EXPECT_LT(WidgetCount(), 15U);
}

TEST_F(UI_MultiColumnTreeCellsTest, FollowsSortsFillsAndSizes)
{
    Fill(300);
    Show();
    header->SetSortColumn(nameColumn);
    header->SetSortDirection(false);
    tree->SortTree();
    EXPECT_EQ(RowsWithWidgets(), RowsInSight());
    view.setGeometry(0, 30, 400, 120);
    EXPECT_EQ(RowsWithWidgets(), RowsInSight());
    view.setGeometry(0, 30, 400, 250);
    EXPECT_EQ(RowsWithWidgets(), RowsInSight());
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        tree->RemoveAllRows();
        checkboxes.clear();
        buttons.clear();
        Fill(3);
    }
    EXPECT_EQ(RowsWithWidgets(), RowsInSight());
    EXPECT_EQ(WidgetCount(), 3U);
}

TEST_F(UI_MultiColumnTreeCellsTest, PutsCellViewsWhereTheirCellsAre)
{
    Fill(100);
    Show();
    const auto expectInPlace = [&](int place) {
        const QPoint at = CheckboxAt(place)->mapTo(view.viewport(), QPoint(0, 0));
        const int column = view.horizontalHeader()->logicalIndex(0);
        EXPECT_EQ(at, QPoint(view.columnViewportPosition(column) + 4, view.rowViewportPosition(place) + 3));
        EXPECT_EQ(tree->GetRowAt(place)->GetCellView(0)->UI_GetLocalRectF(false).height, rowHeight);
    };
    expectInPlace(3);
    view.verticalScrollBar()->setValue(30);
    expectInPlace(3);
    header->SetColumnWidth(nameColumn, 600);
    view.horizontalScrollBar()->setValue(17);
    expectInPlace(3);
    header->MoveColumn(nameColumn, 0);
    expectInPlace(3);
    EXPECT_EQ(RowsWithWidgets(), RowsInSight());
}

TEST_F(UI_MultiColumnTreeCellsTest, RenewsTheCellsOfAColumnThatWasResized)
{
    Fill(5);
    Show();
    const auto old = checkboxes[tree->GetRowAt(0).get()];
    header->SetColumnWidth(versionColumn, 80);
    EXPECT_TRUE(WaitUntil([&] { return checkboxes[tree->GetRowAt(0).get()] != old; }));
    EXPECT_EQ(WidgetCount(), 5U);
}

TEST_F(UI_MultiColumnTreeCellsTest, GivesNoCellViewForAPositionThatThereIsNot)
{
    Fill(100);
    Show();
    EXPECT_EQ(tree->GetRowAt(0)->GetCellView(-1), nullptr);
    EXPECT_EQ(tree->GetRowAt(0)->GetCellView(3), nullptr);
    EXPECT_EQ(tree->GetRowAt(0)->GetCellView(1), tree->GetRowAt(0)->GetCellView(1));
    EXPECT_EQ(tree->GetRowAt(99)->GetCellView(0)->ChildCount(), 0U) << "not visible: an empty one of its own";
}

TEST_F(UI_MultiColumnTreeCellsTest, SurvivesAVisibilityCallbackThatEmptiesTheList)
{
    Fill(50);
    int calls = 0;
    tree->SetRowVisibilityChangedCallback([&](RowPtr) {
        if (++calls == 3)
            tree->RemoveAllRows();
    });
    Show();
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(tree->GetRowCount(), 0);
    EXPECT_TRUE(WaitUntil([&] { return view.model()->rowCount() == 0; }));
}

TEST_F(UI_MultiColumnTreeCellsTest, DrawsTheCellsThatAreToBeSeenByPosition)
{
    Fill(1000);
    std::map<std::wstring, UI_MultiColumnTree::RectF> drawn;
    tree->SetDrawCellOfRowCallback(
        [&](pixmill::Pixmill* context, RowPtr row, int position, UI_MultiColumnTree::RectF rect) {
            ASSERT_NE(context, nullptr);
            drawn[entries[row.get()].name + L"/" + std::to_wstring(position)] = rect;
            context->FillRect(rect, {255, 0, 0, 255});
            context->FillRect({rect.left, rect.top, 5000, 5000}, {255, 0, 0, 255});
        });
    Show();
    drawn.clear();
    const QImage picture = view.viewport()->grab().toImage();
    EXPECT_EQ(drawn.size(), 3 * RowsInSight().size());
    const UI_MultiColumnTree::RectF rect = drawn.at(L"Plug-In 1/1");
    EXPECT_EQ(rect, (UI_MultiColumnTree::RectF{50, rowHeight, 150, rowHeight}));
    EXPECT_EQ(picture.pixelColor(60, 25), QColor(255, 0, 0));
    EXPECT_NE(picture.pixelColor(320, 25), QColor(255, 0, 0)) << "no cell draws outside itself";
}

TEST_F(UI_MultiColumnTreeCellsTest, ShowsSelectionAndFocus)
{
    Fill(5);
    Show();
    const auto pixel = [&](int x, int y) { return view.viewport()->grab().toImage().pixelColor(x, y); };
    const QColor plain = pixel(330, 30);
    ClickCell(1, 1);
    const QColor selected = pixel(330, 30);
    EXPECT_NE(selected, plain);
    const auto frame = [&] { return view.grab().toImage().pixelColor(0, 50); };
    const QColor focused = frame();
    after.setFocus();
    EXPECT_NE(frame(), focused);
    EXPECT_NE(pixel(330, 30), selected) << "selected, but not where the keys go";
    EXPECT_NE(pixel(330, 30), plain);
}

TEST_F(UI_MultiColumnTreeCellsTest, TellsScreenReadersOfTitlesNamesAndChecks)
{
    Fill(Names{L"Echo", L"Verb"});
    tree->SetCellTooltipFunction([this](RowPtr row, int position) {
        return position == 2 ? L"Why " + entries[row.get()].name : std::wstring();
    });
    Show();
    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::Table);
    QAccessibleTableInterface* const table = list->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->columnDescription(1), "Name");
    EXPECT_EQ(table->columnDescription(2), "Version");
    EXPECT_EQ(table->rowDescription(1), "Verb");
    EXPECT_EQ(table->cellAt(1, 1)->text(QAccessible::Name), "Name: Verb");
    EXPECT_EQ(table->cellAt(1, 2)->text(QAccessible::Description), "Why Verb");
    EXPECT_FALSE(table->cellAt(1, 0)->state().checked);
    checkboxes[tree->GetRowAt(1).get()]->SetChecked(true);
    EXPECT_TRUE(table->cellAt(1, 0)->state().checked);
    tree->SelectRow(tree->GetRowAt(1).get(), true);
    EXPECT_TRUE(table->isRowSelected(1));
    EXPECT_TRUE(table->cellAt(1, 1)->state().selected);
}

} // namespace
} // namespace zetui::controls
