#include "dialog/list/PluginListView.h"

#include <cmath>

#include <gmock/gmock.h>
#include <zetcore/config/ThrowError.h>
#include <zetcore/utility/NullPtrException.h>

#include "dialog/list/PluginListText.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetaudiofilterhost::PluginFind;
using zetui::utility::MakeIntrusive;

/// The list without a dialog around it. It is on no screen, so that none of its rows is visible.
class PluginListAlone : public DialogFixture
{
  protected:
    PluginListAlone() { tree->Init({}); }
    const Row* RowAt(int place) const { return tree->GetRowAt(place).get(); }
    std::vector<std::wstring> TextsOfCell(int cell) const
    {
        std::vector<std::wstring> texts;
        for (int place = 0; place < tree->GetRowCount(); ++place)
            texts.push_back(list.GetCellSortData(RowAt(place), cell));
        return texts;
    }
    void Fill(const std::wstring& find = {}, bool resizeColumns = false)
    {
        list.Fill(PluginFind(find), resizeColumns, false);
    }

    const Ptr<PluginMultiColumnTree> tree = MakeIntrusive<PluginMultiColumnTree>();
    PluginListView list{tree, nullptr, {}};
};

TEST_F(PluginListAlone, HasItsSixColumnsBeforeItIsFilled)
{
    EXPECT_EQ(list.HeaderRow().GetColumnCount(), 6);
    EXPECT_EQ(list.HeaderRow().GetColumnTitle(kColumnStatus), L"Status");
    EXPECT_EQ(tree->GetRowCount(), 0);
    EXPECT_EQ(list.GetColumnBestFitWidth(kColumnName), 0);
}

TEST_F(PluginListAlone, EachFillShowsWhatTheFindTestLetsThrough)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    Ban(L"/a/bad.so");
    Fill();
    EXPECT_THAT(TextsOfCell(kColumnName - 1), ElementsAre(L"One", L"Two", L"bad.so"));
    Fill(L"two");
    EXPECT_THAT(TextsOfCell(kColumnName - 1), ElementsAre(L"Two"));
    Fill(L"three");
    EXPECT_THAT(TextsOfCell(kColumnName - 1), IsEmpty());
}

TEST_F(PluginListAlone, BannedAndDisabledPluginsSortAlike)
{
    AddPlugin(L"On", L"/a/1.so");
    AddPlugin(L"Off", L"/a/2.so")->SetEnabled(false);
    Ban(L"/a/bad.so");
    Fill();
    EXPECT_THAT(TextsOfCell(kEnabledCell), ElementsAre(L"2", L"1", L"1"));
}

TEST_F(PluginListAlone, RowsThatItHasNotMadeHaveEmptyTexts)
{
    AddPlugin(L"One", L"/a/1.so");
    Fill();
    const Ptr<Row> ours = tree->GetRowAt(0), foreign = tree->CreateAndAppendRow();
    for (const Row* const row : {static_cast<const Row*>(foreign.get()), static_cast<const Row*>(nullptr)}) {
        EXPECT_EQ(list.GetCellSortData(row, kEnabledCell), L"");
        EXPECT_EQ(list.GetCellDescription(row, kEnabledCell), L"");
        EXPECT_EQ(list.GetCellTooltip(row, kStatusCell), L"");
        EXPECT_NO_THROW(list.DrawCell(nullptr, row, kStatusCell, {}));
    }
    Fill(L"nothing");
    EXPECT_EQ(list.GetCellDescription(ours.get(), kEnabledCell), L"") << "it is not in the list any more";
}

TEST_F(PluginListAlone, OnlyTheStatusOfABannedPluginHasATooltip)
{
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so", "It crashed.");
    Fill();
    EXPECT_EQ(list.GetCellTooltip(RowAt(0), kStatusCell), L"");
    EXPECT_EQ(list.GetCellTooltip(RowAt(1), kStatusCell - 1), L"");
    EXPECT_NE(list.GetCellTooltip(RowAt(1), kStatusCell).find(L"It crashed."), std::wstring::npos);
}

TEST_F(PluginListAlone, FitsItsColumnsOnlyWhenItIsAskedTo)
{
    AddPlugin(std::wstring(100, L'w'), L"/a/1.so");
    Fill();
    EXPECT_EQ(list.HeaderRow().GetColumnWidth(kColumnName), 140);
    Fill({}, true);
    EXPECT_EQ(list.HeaderRow().GetColumnWidth(kColumnName),
              std::round(list.GetColumnBestFitWidth(kColumnName)));
    EXPECT_GT(list.HeaderRow().GetColumnWidth(kColumnName), 140);
}

TEST_F(PluginListAlone, ControlsOfAnotherClassAndOfNoRowAreToldApart)
{
    const auto checkbox = MakeIntrusive<zetui::controls::UI_Checkbox>();
    const auto button = MakeIntrusive<zetui::controls::UI_TextButton>();
    EXPECT_NO_THROW(list.SwitchPluginOf(checkbox.get()));
    EXPECT_EQ(list.EntryOfReloadButton(button.get()), nullptr);
    EXPECT_THROW(list.SwitchPluginOf(button.get()), zetcore::config::error);
    EXPECT_THROW(list.EntryOfReloadButton(checkbox.get()), zetcore::config::error);
    EXPECT_THROW(list.OnRowVisibilityChanged(nullptr), zetcore::utility::null_ptr_exception);
}

} // namespace
} // namespace zetaudiopluginhostui
