#include "testing/TreeFixture.h"

#include <stdexcept>

#include <zetcore/utility/NullPtrException.h>

namespace zetui::controls {
namespace {

class UI_MultiColumnTreeTest : public TreeFixture
{
  protected:
    UI_MultiColumnTreeTest() { MakeColumns(); }

    QPoint TitleCenter(unsigned id) const
    {
        const auto& titles = *view.horizontalHeader();
        const int column = static_cast<int>(id) - 1;
        return {titles.sectionViewportPosition(column) + titles.sectionSize(column) / 2, titles.height() / 2};
    }

    void ClickTitle(unsigned id)
    {
        QTest::mouseClick(view.horizontalHeader()->viewport(), Qt::LeftButton, {}, TitleCenter(id));
    }
};

TEST_F(UI_MultiColumnTreeTest, ShowsRowsInFillOrderUntilItIsSorted)
{
    Fill(Names{L"b", L"c", L"a"});
    EXPECT_EQ(ShownNames(), (Names{L"b", L"c", L"a"}));
    EXPECT_EQ(sortDataCalls, 0);
}

TEST_F(UI_MultiColumnTreeTest, SortsByTheNamesWhileNobodyHasChosenAColumn)
{
    header->SetSortDirection(false);
    tree->SortTree();
    Fill(Names{L"b", L"c", L"a"});
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b", L"c"}));
    EXPECT_EQ(header->GetSortColumn(), nameColumn);
    EXPECT_TRUE(header->IsSortDirectionAscending());
    EXPECT_EQ(view.horizontalHeader()->sortIndicatorSection(), 1) << "an arrow explains the order";
    EXPECT_EQ(view.horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(UI_MultiColumnTreeTest, AListWithoutTitlesStaysInFillOrder)
{
    const auto folders = utility::MakeIntrusive<UI_MultiColumnTree>(1U, 20.0F);
    folders->SetCellTextFunction([this](RowPtr row, int) { return entries[row.get()].name; });
    std::vector<RowPtr> rows;
    for (const wchar_t* const name : {L"b", L"a"}) {
        rows.push_back(folders->CreateAndAppendRow());
        entries[rows.back().get()] = {name, L""};
    }
    folders->SortTree();
    EXPECT_EQ(folders->GetRowAt(0), rows[0]);
    EXPECT_EQ(folders->GetRowAt(1), rows[1]);
}

TEST_F(UI_MultiColumnTreeTest, SortsNewRowsWhenTheDeferredLayoutEnds)
{
    header->SetSortColumn(nameColumn);
    Fill(Names{L"Verb 10", L"comp", L"Verb 9", L"\u00c9cho", L"Echo B"});
    EXPECT_EQ(ShownNames(), (Names{L"comp", L"\u00c9cho", L"Echo B", L"Verb 9", L"Verb 10"}));
    EXPECT_EQ(sortDataCalls, 5) << "once for each row";
}

TEST_F(UI_MultiColumnTreeTest, LeavesRowsThatAreSortedLaterAtTheEndUntilTheTreeIsSorted)
{
    header->SetSortColumn(nameColumn);
    Fill(Names{L"b", L"c"});
    Append(L"a");
    EXPECT_EQ(ShownNames(), (Names{L"b", L"c", L"a"}));
    tree->SortTree();
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b", L"c"}));
}

TEST_F(UI_MultiColumnTreeTest, SortsARowAtOnceThatIsNotToBeSortedLater)
{
    header->SetSortColumn(nameColumn);
    Fill(Names{L"b", L"c"});
    const auto row = utility::MakeIntrusive<UI_MultiColumnTreeRow>(true);
    entries[row.get()] = {L"a", L""};
    tree->AppendRow(row, nullptr, false);
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b", L"c"}));
}

TEST_F(UI_MultiColumnTreeTest, SortsByAClickOnATitleAndTheOtherWayByTheNext)
{
    Append(L"b", L"2.10");
    Append(L"a", L"2.9");
    Append(L"c", L"10.0");
    Show();
    ClickTitle(versionColumn);
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b", L"c"}));
    EXPECT_EQ(header->GetSortColumn(), versionColumn);
    EXPECT_TRUE(header->IsSortDirectionAscending());
    EXPECT_EQ(view.horizontalHeader()->sortIndicatorSection(), 2);
    ClickTitle(versionColumn);
    EXPECT_EQ(ShownNames(), (Names{L"c", L"b", L"a"}));
    EXPECT_FALSE(header->IsSortDirectionAscending());
    EXPECT_EQ(view.horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    ClickTitle(nameColumn);
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b", L"c"}));
    EXPECT_TRUE(header->IsSortDirectionAscending());
}

TEST_F(UI_MultiColumnTreeTest, ShowsTheSortThatAProgramSetsAndSortsWhenItIsAsked)
{
    Fill(Names{L"a", L"b"});
    header->SetSortColumn(nameColumn);
    header->SetSortDirection(false);
    EXPECT_EQ(view.horizontalHeader()->sortIndicatorSection(), 1);
    EXPECT_EQ(view.horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b"}));
    tree->SortTree();
    EXPECT_EQ(ShownNames(), (Names{L"b", L"a"}));
    header->SetSortColumn(77);
    EXPECT_EQ(header->GetSortColumn(), 0U);
    tree->SortTree();
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b"})) << "as if none had been chosen";
    EXPECT_EQ(header->GetSortColumn(), nameColumn);
}

TEST_F(UI_MultiColumnTreeTest, ShowsTheRowsWhoseSortDataFailsInFillOrder)
{
    tree->SetCellSortDataFunction([](RowPtr, int) -> std::wstring { throw std::runtime_error("no data"); });
    header->SetSortColumn(nameColumn);
    Fill(Names{L"b", L"a"});
    EXPECT_EQ(ShownNames(), (Names{L"b", L"a"}));
}

TEST_F(UI_MultiColumnTreeTest, KeepsSelectionAndScrollPlaceWhenItSorts)
{
    Fill(200);
    Show();
    tree->SelectRow(tree->GetRowAt(60).get(), true);
    tree->ScrollToRow(tree->GetRowAt(100).get());
    const int scroll = view.verticalScrollBar()->value();
    ASSERT_GT(scroll, 0);
    selectionCalls = 0;
    ClickTitle(nameColumn);
    ClickTitle(nameColumn);
    EXPECT_EQ(SelectedNames(), Names{L"Plug-In 60"});
    EXPECT_EQ(ShownNames()[200 - 61], L"Plug-In 60");
    EXPECT_EQ(view.verticalScrollBar()->value(), scroll);
    EXPECT_EQ(selectionCalls, 0);
}

TEST_F(UI_MultiColumnTreeTest, KeepsTheScrollPlaceWhenItIsFilledAgain)
{
    Fill(200);
    Show();
    tree->ScrollToRow(tree->GetRowAt(100).get());
    const int scroll = view.verticalScrollBar()->value();
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        tree->RemoveAllRows();
        Fill(200);
    }
    EXPECT_EQ(view.verticalScrollBar()->value(), scroll);
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        tree->RemoveAllRows();
        Fill(200);
        tree->ScrollToTop(true);
    }
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
}

TEST_F(UI_MultiColumnTreeTest, LaysOutOnceForAllGuardsTogether)
{
    Show();
    int resets = 0, sorts = 0, visible = 0;
    const QObject listener;
    QObject::connect(view.model(), &QAbstractItemModel::modelReset, &listener, [&] { ++resets; });
    tree->SetCellSortDataFunction([&](RowPtr, int) {
        ++sorts;
        return std::wstring(L"x");
    });
    tree->SetRowVisibilityChangedCallback([&](RowPtr) { ++visible; });
    header->SetSortColumn(nameColumn);
    {
        const ScDeferLayoutForOpenAndCloseRow outer(tree.get());
        Fill(300);
        tree->SortTree();
        Fill(200);
        EXPECT_EQ(resets, 0);
        EXPECT_EQ(visible, 0);
        EXPECT_EQ(tree->GetRowCount(), 500);
    }
    EXPECT_EQ(resets, 1);
    EXPECT_EQ(sorts, 500);
    EXPECT_GT(visible, 0);
    EXPECT_LE(visible, view.viewport()->height() / rowHeight + 2);
}

TEST_F(UI_MultiColumnTreeTest, ShowsAppendedRowsOnItsOwnAccord)
{
    Show();
    const RowPtr row = tree->CreateAndAppendRow();
    EXPECT_TRUE(WaitUntil([&] { return tree->IsRowVisible(row.get()); }));
    EXPECT_EQ(view.model()->rowCount(), 1);
}

TEST_F(UI_MultiColumnTreeTest, RefusesRowsThatItCannotHold)
{
    const RowPtr row = Append(L"a");
    EXPECT_THROW(tree->AppendRow(nullptr, nullptr, true), zetcore::utility::null_ptr_exception);
    EXPECT_THROW(tree->AppendRow(row, nullptr, true), std::invalid_argument);
    EXPECT_THROW(tree->AppendRow(utility::MakeIntrusive<UI_MultiColumnTreeRow>(true), row.get(), true),
                 std::invalid_argument);
    EXPECT_THROW(ScDeferLayoutForOpenAndCloseRow(nullptr), zetcore::utility::null_ptr_exception);
    EXPECT_THROW(utility::MakeIntrusive<UI_MultiColumnTreeHeaderRow>(nullptr),
                 zetcore::utility::null_ptr_exception);
    EXPECT_EQ(tree->GetRowCount(), 1);
}

TEST_F(UI_MultiColumnTreeTest, LetsRowsGoThatOthersStillHold)
{
    const RowPtr row = Append(L"a");
    EXPECT_EQ(row->GetTree(), tree.get());
    tree->RemoveAllRows();
    EXPECT_EQ(row->GetTree(), nullptr);
    EXPECT_EQ(row->GetCellView(0), nullptr);
    EXPECT_FALSE(tree->IsRowVisible(row.get()));
    tree->AppendRow(row, nullptr, true);
    EXPECT_EQ(tree->GetRowAt(0), row);
}

TEST_F(UI_MultiColumnTreeTest, FitsAColumnByADoubleClickOnTheEdgeOfItsTitle)
{
    Show();
    unsigned asked = 0;
    header->SetColumnBestFitWidthCallback([&](unsigned id) {
        asked = id;
        return 123.4F;
    });
    const auto& titles = *view.horizontalHeader();
    const QPoint edge(titles.sectionViewportPosition(1) + titles.sectionSize(1) - 1, titles.height() / 2);
    QTest::mouseDClick(titles.viewport(), Qt::LeftButton, {}, edge);
    EXPECT_EQ(asked, nameColumn);
    EXPECT_EQ(header->GetColumnWidth(nameColumn), 124);
    EXPECT_EQ(header->GetSortColumn(), 0U) << "an edge is not a title";
}

TEST_F(UI_MultiColumnTreeTest, MovesAColumnByDraggingItsTitle)
{
    Show();
    auto* const titles = view.horizontalHeader()->viewport();
    Drag(titles, TitleCenter(versionColumn), TitleCenter(onColumn) - QPoint(10, 0));
    EXPECT_EQ(header->GetColumnAt(0), versionColumn);
    EXPECT_EQ(header->GetColumnAt(1), onColumn);
    EXPECT_EQ(header->GetColumnAt(2), nameColumn);
    EXPECT_EQ(header->GetSortColumn(), 0U) << "a drag is not a click";
    header->MoveColumn(versionColumn, 2);
    EXPECT_EQ(header->GetColumnAt(0), onColumn);
    EXPECT_EQ(header->GetColumnAt(2), versionColumn);
}

TEST_F(UI_MultiColumnTreeTest, SortsByAColumnWhereverItHasBeenMoved)
{
    Append(L"b", L"1");
    Append(L"a", L"2");
    header->MoveColumn(versionColumn, 0);
    header->SetSortColumn(nameColumn);
    tree->SortTree();
    EXPECT_EQ(ShownNames(), (Names{L"a", L"b"}));
    header->SetSortColumn(versionColumn);
    tree->SortTree();
    EXPECT_EQ(ShownNames(), (Names{L"b", L"a"}));
}

TEST_F(UI_MultiColumnTreeTest, ResizesAColumnByDraggingTheEdgeOfItsTitle)
{
    Show();
    const auto& titles = *view.horizontalHeader();
    const QPoint edge(titles.sectionViewportPosition(1) + titles.sectionSize(1) - 1, titles.height() / 2);
    Drag(titles.viewport(), edge, edge + QPoint(40, 0));
    EXPECT_EQ(header->GetColumnWidth(nameColumn), 190);
}

TEST_F(UI_MultiColumnTreeTest, AnswersForColumnsThatThereAreNot)
{
    EXPECT_EQ(header->GetColumnCount(), 3);
    EXPECT_EQ(header->GetColumnAt(-1), 0U);
    EXPECT_EQ(header->GetColumnAt(3), 0U);
    EXPECT_EQ(header->GetColumnWidth(9), 0);
    EXPECT_EQ(header->GetColumnTitle(9), L"");
    EXPECT_EQ(header->GetColumnTitle(nameColumn), L"Name");
    header->SetColumnWidth(9, 10);
    header->MoveColumn(9, 0);
    header->MoveColumn(nameColumn, 7);
    EXPECT_EQ(header->GetColumnAt(1), nameColumn);
}

TEST_F(UI_MultiColumnTreeTest, AHeaderThatOutlivesItsTreeAnswersNothing)
{
    const auto other = utility::MakeIntrusive<UI_MultiColumnTree>(1U, 20.0F);
    const auto titles = utility::MakeIntrusive<UI_MultiColumnTreeHeaderRow>(other.get());
    auto gone = utility::MakeIntrusive<UI_MultiColumnTree>(0U, 20.0F);
    const auto kept = utility::MakeIntrusive<UI_MultiColumnTreeHeaderRow>(gone.get());
    kept->AppendColumn(L"A", 1);
    EXPECT_EQ(kept->GetColumnCount(), 1);
    gone = nullptr;
    EXPECT_EQ(kept->GetColumnCount(), 0);
    EXPECT_EQ(kept->GetColumnAt(0), 0U);
    kept->SetSortColumn(1);
    EXPECT_EQ(kept->GetSortColumn(), 0U);
    EXPECT_EQ(titles->GetColumnCount(), 1);
}

TEST_F(UI_MultiColumnTreeTest, GivesTheWidthOfItsContentBeforeItIsShown)
{
    const float room = tree->GetContentViewWidth();
    EXPECT_GT(room, 380);
    Show();
    EXPECT_EQ(tree->GetContentViewWidth(), room);
}

TEST_F(UI_MultiColumnTreeTest, KeepsTheLastColumnOfAListWithoutHeaderAtTheRightEdge)
{
    const auto list = utility::MakeIntrusive<UI_MultiColumnTree>(1U, 20.0F);
    auto& listView = static_cast<QTableView&>(*ui::WidgetOf(list.get()));
    ui::NodeAccess::Embed(list.get(), &window, nullptr);
    listView.setGeometry(0, 30, 300, 100);
    list->SetColumnWidth(0, list->GetContentViewWidth() - 12);
    EXPECT_EQ(list->GetHeaderRow(), nullptr);
    Show();
    EXPECT_EQ(listView.columnWidth(0), listView.viewport()->width() - 12);
    listView.setGeometry(0, 30, 350, 100);
    EXPECT_EQ(listView.columnWidth(0), listView.viewport()->width() - 12);
}

} // namespace
} // namespace zetui::controls
