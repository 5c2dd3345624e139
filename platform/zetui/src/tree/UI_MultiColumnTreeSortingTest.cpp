#include <gmock/gmock.h>

#include "testing/TreeFixture.h"

namespace zetui::controls {
namespace {

using testing::ElementsAre;

/// Four rows, sorted by name.
class UI_MultiColumnTreeSortingTest : public TreeFixture
{
  protected:
    UI_MultiColumnTreeSortingTest()
    {
        MakeColumns();
        header->SetSortColumn(nameColumn);
        for (const wchar_t* const name : {L"c", L"a", L"d", L"b"})
            rows.push_back(Append(name, std::wstring(L"1.") + std::to_wstring(rows.size())));
        tree->SortTree();
        sortDataCalls = 0;
    }

    /// By their places in `rows`.
    void ShowOnly(const std::vector<std::size_t>& places)
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        tree->RemoveAllRows();
        for (const std::size_t place : places)
            tree->AppendRow(rows[place], nullptr, true);
    }

    std::vector<RowPtr> rows;
};

TEST_F(UI_MultiColumnTreeSortingTest, RowsThatComeAgainAreInOrderWithoutBeingAskedForTheirData)
{
    ShowOnly({0, 3});
    EXPECT_THAT(ShownNames(), ElementsAre(L"b", L"c"));
    ShowOnly({});
    EXPECT_TRUE(ShownNames().empty());
    ShowOnly({2, 0, 1, 3});
    EXPECT_THAT(ShownNames(), ElementsAre(L"a", L"b", L"c", L"d"));
    EXPECT_EQ(sortDataCalls, 0);
}

TEST_F(UI_MultiColumnTreeSortingTest, ARowThatWasNotThereBeforeTakesItsPlaceAmongThem)
{
    rows.push_back(utility::MakeIntrusive<UI_MultiColumnTreeRow>(true));
    entries[rows.back().get()] = {L"aa", L"1.0"};
    ShowOnly({0, 1, 4});
    EXPECT_THAT(ShownNames(), ElementsAre(L"a", L"aa", L"c"));
    ShowOnly({0, 1, 2, 3});
    EXPECT_THAT(ShownNames(), ElementsAre(L"a", L"b", L"c", L"d")) << "some were not in the last sort";
}

TEST_F(UI_MultiColumnTreeSortingTest, DataThatHasChangedCountsOnceTheTreeIsToldOrSorted)
{
    entries[rows[1].get()].name = L"z";
    tree->ForgetSortedPlaces();
    ShowOnly({0, 1, 3});
    EXPECT_THAT(ShownNames(), ElementsAre(L"b", L"c", L"z"));
    entries[rows[1].get()].name = L"a";
    tree->SortTree();
    EXPECT_THAT(ShownNames(), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(UI_MultiColumnTreeSortingTest, AnotherColumnDirectionOrFunctionSortsAnew)
{
    header->SetSortColumn(versionColumn);
    ShowOnly({0, 1, 3});
    EXPECT_THAT(ShownNames(), ElementsAre(L"c", L"a", L"b"));
    header->SetSortDirection(false);
    ShowOnly({0, 1, 3});
    EXPECT_THAT(ShownNames(), ElementsAre(L"b", L"a", L"c"));
    tree->SetCellSortDataFunction([this](RowPtr row, int) { return entries[row.get()].name; });
    ShowOnly({0, 1, 3});
    EXPECT_THAT(ShownNames(), ElementsAre(L"c", L"b", L"a"));
}

TEST_F(UI_MultiColumnTreeSortingTest, ARowOfAnotherTreeBringsNoPlaceAlong)
{
    const auto other = utility::MakeIntrusive<UI_MultiColumnTree>(1U, 20.0F);
    tree->RemoveAllRows();
    for (const RowPtr& row : rows)
        other->AppendRow(row, nullptr, true);
    EXPECT_EQ(other->GetRowAt(0), rows[0]);
    other->RemoveAllRows();
    ShowOnly({3, 2, 1, 0});
    EXPECT_THAT(ShownNames(), ElementsAre(L"a", L"b", L"c", L"d"));
}

} // namespace
} // namespace zetui::controls
