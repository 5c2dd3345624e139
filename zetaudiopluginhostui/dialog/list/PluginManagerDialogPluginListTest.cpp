// These tests check the plug-in list of the manager dialog.
#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <gmock/gmock.h>
#include <zetaudiofilterhost/AudioFilterDescriptorManager.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "testing/PluginListFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using PluginListView = PluginListFixture;

TEST_F(PluginListView, IsEmptyWithColumnsAtTheirMinimumsForAnEmptyRegistryAndNoBannedPlugins)
{
    OpenDialog();
    EXPECT_EQ(PluginList().GetRowCount(), 0);
    EXPECT_EQ(Width(kColumnName), 140);
    EXPECT_EQ(Width(kColumnStatus), 70);
    EXPECT_EQ(Width(kColumnVersion), 70);
    EXPECT_EQ(Width(kColumnPath), 240);
    EXPECT_EQ(Width(kColumnEnabled), 80);
    EXPECT_EQ(Width(kColumnType), 70);
    FitByDoubleClick(kColumnPath);
    EXPECT_LT(Width(kColumnPath), 100) << "the best fit of an empty list is 0, which leaves the title";
}

TEST_F(PluginListView, FitsColumnsToTheirWidestTextsAndTheReloadButton)
{
    const std::wstring name = L"A plug-in whose name is far wider than the column would be otherwise";
    AddPlugin(name, L"/a/1.so");
    AddPlugin(L"B", L"/a/2.so");
    OpenDialog();
    EXPECT_FLOAT_EQ(Width(kColumnName), TextWidth(name) + 6 + 1);
    EXPECT_FLOAT_EQ(Width(kColumnStatus), std::max(70.0F, TextWidth(L"Working") + 6 + 1));
    CloseDialog();
    Ban(L"/a/3.so");
    OpenDialog();
    EXPECT_FLOAT_EQ(Width(kColumnStatus), TextWidth(L"Not Working") + 6 + 1 +
                                              ReloadButtonOf(L"3.so")->UI_GetLocalRectF(true).width + 4);
    FitByDoubleClick(kColumnName);
    EXPECT_FLOAT_EQ(Width(kColumnName), TextWidth(name) + 6 + 1);
}

TEST_F(PluginListView, NoFittedTextIsCutAndACutOneIsWholeInItsTooltip)
{
    const std::wstring name = L"A plug-in whose name is far wider than the column would be otherwise";
    const std::wstring path = L"/a/" + std::wstring(80, L'p') + L".so";
    AddPlugin(name, path, L"1.0.0.0.0.0.1234");
    OpenDialog();
    Resize(2400, 600);
    const auto tooltip = [this](unsigned column) {
        const auto& view = dynamic_cast<QAbstractItemView&>(WidgetOf(PluginList()));
        return view.model()->index(0, static_cast<int>(column) - 1).data(Qt::ToolTipRole).toString();
    };
    for (const unsigned column : {kColumnName, kColumnStatus, kColumnVersion, kColumnPath})
        EXPECT_EQ(tooltip(column), "") << column;
    Resize(1120, 600);
    EXPECT_EQ(tooltip(kColumnName), "") << "the path gives way";
    EXPECT_TRUE(tooltip(kColumnPath).contains(QString::fromStdWString(path)));
}

TEST_F(PluginListView, OneVeryLongNameLeavesTheOtherColumnsInSight)
{
    AddPlugin(std::wstring(1000, L'n'), L"/a/1.so");
    OpenDialog();
    Resize(1120, 680);
    const auto& view = dynamic_cast<QTableView&>(WidgetOf(PluginList()));
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
    const int last = view.columnViewportPosition(kColumnPath - 1) + view.columnWidth(kColumnPath - 1);
    EXPECT_LE(last, view.viewport()->width());
    EXPECT_GE(view.columnWidth(kColumnPath - 1), 240);
}

TEST_F(PluginListView, TheFootSaysWhyTheSelectedPluginIsBanned)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/3.so", "it crashed");
    OpenDialog();
    auto& view = dynamic_cast<QTableView&>(WidgetOf(PluginList()));
    const auto& text = *Window().findChild<QPlainTextEdit*>();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      view.visualRect(view.model()->index(1, 1)).center());
    EXPECT_TRUE(text.isVisible());
    EXPECT_TRUE(text.toPlainText().startsWith(QStringLiteral("It crashed")))
        << text.toPlainText().toStdString();
    EXPECT_TRUE(text.toPlainText().contains(QStringLiteral("/a/3.so")));
    QTest::keyClick(&view, Qt::Key_Up);
    EXPECT_TRUE(text.toPlainText().startsWith(QStringLiteral("/a/1.so"))) << text.toPlainText().toStdString();
    EXPECT_EQ(text.accessibleName(), "Details");
}

using PluginListViewV7 = V7DialogFixture;

TEST_F(PluginListViewV7, FitsColumnsWithTheDistancesOfTheSkin)
{
    const std::wstring name = L"A plug-in whose name is far wider than the column would be otherwise";
    AddPlugin(name, L"/a/1.so");
    Ban(L"/a/3.so");
    const auto textWidth = [](const std::wstring& text) {
        return std::trunc(zetui::pixmill::GetTextWidth(GetCellFont(), text));
    };
    OpenDialog();
    const float padding = zetui::controls::UI_MultiColumnTree::GetDefaultCellPadding().second;
    const auto& header = *PluginList().GetHeaderRow();
    EXPECT_FLOAT_EQ(header.GetColumnWidth(kColumnName), textWidth(name) + padding + 1);
    EXPECT_FLOAT_EQ(header.GetColumnWidth(kColumnStatus),
                    textWidth(L"Not Working") + padding + 1 +
                        ReloadButtonOf(L"3.so")->UI_GetLocalRectF(true).width + 12);
}

TEST_F(PluginListView, ListsAnInstrumentOnlyWhileSynthsAreEnabledAndABannedPluginAlways)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    const auto both = AddPlugin(L"Both", L"/a/both.so");
    both->SetHasAnySynth(true);
    const auto synth = AddPlugin(L"Synth", L"/a/synth.so");
    synth->SetHasAnyNonSynthEffect(false);
    synth->SetHasAnySynth(true);
    Ban(L"/a/bad.so");
    OpenDialog();
    EXPECT_THAT(Names(), ElementsAre(L"Both", L"Synth", L"bad.so"));
    CloseDialog();
    zetaudiofilterhost::AudioFilterDescriptorManager::GetInstance()->SetSynthsEnabled(false);
    OpenDialog();
    EXPECT_THAT(Names(), ElementsAre(L"Both", L"bad.so"));
    TypeIntoFindBox("both");
    EXPECT_THAT(Names(), ElementsAre(L"Both"));
}

TEST_F(PluginListView, ABannedRowSaysSoAndSortsWithTheDisabledOnes)
{
    AddPlugin(L"On", L"/a/1.so");
    AddPlugin(L"Off", L"/a/2.so")->SetEnabled(false);
    Ban(L"/a/0 bad.so");
    settings.sortColumn = kColumnEnabled;
    settings.sortAscending = true;
    OpenDialog();
    EXPECT_THAT(Names(), ElementsAre(L"Off", L"0 bad.so", L"On"));
    EXPECT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working", L"Not Working", L"Working"));
    EXPECT_THAT(ColumnTexts(kColumnVersion), ElementsAre(L"1.0", L"-", L"1.0"));
    EXPECT_THAT(ColumnTexts(kColumnPath), ElementsAre(L"/a/2.so", L"/a/0 bad.so", L"/a/1.so"));
    EXPECT_THAT(ColumnTexts(kColumnEnabled), ElementsAre(L"off", L"off", L"on"));
}

TEST_F(PluginListView, ABannedRowsStatusAndItsBoxHaveATooltipWithTheReasonAndNoOtherCellHas)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    AddPlugin(L"Good", L"/a/1.so");
    Ban(L"/a/bad.so", "It divided by zero.");
    OpenDialog();
    const auto tooltip = [this](int row, unsigned column) {
        const auto& view = dynamic_cast<QTableView&>(WidgetOf(PluginList()));
        return view.model()->index(row, static_cast<int>(column) - 1).data(Qt::ToolTipRole).toString();
    };
    EXPECT_TRUE(tooltip(1, kColumnStatus).contains("It divided by zero."))
        << tooltip(1, kColumnStatus).toStdString();
    EXPECT_TRUE(tooltip(1, kColumnStatus).contains("Banned: 20"));
    EXPECT_EQ(tooltip(1, kColumnEnabled), tooltip(1, kColumnStatus)) << "why the box is disabled";
    EXPECT_EQ(tooltip(0, kColumnEnabled), "");
    EXPECT_EQ(tooltip(1, kColumnPath), "");
    EXPECT_EQ(tooltip(0, kColumnStatus), "");
}

TEST_F(PluginListView, TogglingACheckboxChangesTheRegistryAtOnce)
{
    const auto one = AddPlugin(L"One", L"/a/1.so");
    const auto two = AddPlugin(L"Two", L"/a/2.so");
    OpenDialog();
    PressAt(*CheckboxOf(L"Two"), 7, 7);
    EXPECT_TRUE(one->IsEnabled());
    EXPECT_FALSE(two->IsEnabled());
    EXPECT_FALSE(CheckboxOf(L"Two")->IsChecked());
    PressAt(*CheckboxOf(L"Two"), 7, 7);
    EXPECT_TRUE(two->IsEnabled());
}

TEST_F(PluginListView, WithoutAnyModuleRecordEnableAllAndDisableAllAreDisabled)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    const auto expectBoth = [this](bool enabled, const std::string& when) {
        EXPECT_EQ(IsEnabled(ids::kEnableAllButton), enabled) << when;
        EXPECT_EQ(IsEnabled(ids::kDisableAllButton), enabled) << when;
    };
    OpenDialog();
    expectBoth(false, "with nothing at all");
    Ban(L"/a/bad.so");
    TypeIntoFindBox("b");
    ASSERT_THAT(Names(), ElementsAre(L"bad.so"));
    expectBoth(false, "with a banned plug-in");
    AddPlugin(L"Bad", L"/a/bad.so");
    TypeIntoFindBox("a");
    ASSERT_THAT(Names(), ElementsAre(L"bad.so"));
    expectBoth(false, "with the record of a banned plug-in, which is not listed");
    AddPlugin(L"One", L"/a/1.so");
    TypeIntoFindBox("d");
    ASSERT_THAT(Names(), ElementsAre(L"bad.so"));
    expectBoth(true, "with a record whose row the find text hides");
    FindBox().clear();
    TypeIntoFindBox("o");
    ASSERT_THAT(Names(), ElementsAre(L"One", L"bad.so"));
    expectBoth(true, "with a record that is shown");
    TheRegistry().RemovePluginLocators({Vst(L"/a/1.so")});
    TypeIntoFindBox("\b");
    ASSERT_THAT(Names(), ElementsAre(L"bad.so"));
    expectBoth(false, "without it again");
    AddPlugin(L"Synth", L"/a/2.so")->SetHasAnyNonSynthEffect(false);
    zetaudiofilterhost::AudioFilterDescriptorManager::GetInstance()->SetSynthsEnabled(false);
    TypeIntoFindBox("b");
    ASSERT_THAT(Names(), ElementsAre(L"bad.so"));
    expectBoth(true, "with an instrument that is not listed");
}

TEST_F(PluginListView, DisableAllAndEnableAllReachThePluginsThatTheListDoesNotShow)
{
    const auto one = AddPlugin(L"One", L"/a/1.so");
    const auto two = AddPlugin(L"Two", L"/a/2.so");
    const auto synth = AddPlugin(L"Synth", L"/a/3.so");
    synth->SetHasAnyNonSynthEffect(false);
    zetaudiofilterhost::AudioFilterDescriptorManager::GetInstance()->SetSynthsEnabled(false);
    Ban(L"/a/bad.so");
    OpenDialog();
    TypeIntoFindBox("one");
    ASSERT_THAT(Names(), ElementsAre(L"One"));
    Press(ids::kDisableAllButton);
    for (const auto& info : {one, two, synth})
        EXPECT_FALSE(info->IsEnabled());
    EXPECT_THAT(Names(), ElementsAre(L"One"));
    EXPECT_FALSE(CheckboxOf(L"One")->IsChecked());
    Press(ids::kEnableAllButton);
    for (const auto& info : {one, two, synth})
        EXPECT_TRUE(info->IsEnabled());
    EXPECT_TRUE(CheckboxOf(L"One")->IsChecked());
}

TEST_F(PluginListView, WhatWidthTheUserGaveAColumnOnlyAScanChanges)
{
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    PluginList().GetHeaderRow()->SetColumnWidth(kColumnName, 333);
    TypeIntoFindBox("o");
    Press(ids::kDisableAllButton);
    EXPECT_EQ(Width(kColumnName), 333);
}

TEST_F(PluginListView, TheColumnsKeepTheirTextsAndTheirOrderWhenMoved)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    AddPlugin(L"B", L"/a/1.so", L"2.10");
    AddPlugin(L"a", L"/b/2.so", L"2.9");
    OpenDialog();
    const auto upperB = PluginList().GetRowAt(0);
    const auto lowerA = PluginList().GetRowAt(1);
    PluginList().GetHeaderRow()->MoveColumn(kColumnName, 2);
    PluginList().GetHeaderRow()->MoveColumn(kColumnPath, 4);
    PluginList().GetHeaderRow()->SetSortDirection(true);
    const auto firstBy = [this](unsigned column) {
        PluginList().GetHeaderRow()->SetSortColumn(column);
        PluginList().SortTree();
        return PluginList().GetRowAt(0);
    };
    EXPECT_EQ(firstBy(kColumnName), lowerA) << "case apart";
    EXPECT_EQ(firstBy(kColumnPath), upperB);
    EXPECT_EQ(firstBy(kColumnVersion), lowerA) << "numbers by their value";
    EXPECT_EQ(firstBy(kColumnType), upperB) << "equal ones stay as they were filled in";
    EXPECT_THAT(ColumnTexts(kColumnName), ElementsAre(L"B", L"a"));
    EXPECT_THAT(ColumnTexts(kColumnPath), ElementsAre(L"/a/1.so", L"/b/2.so"));
    EXPECT_THAT(ColumnTexts(kColumnVersion), ElementsAre(L"2.10", L"2.9"));
}

TEST_F(PluginListView, OnlyOneRowIsSelectedAndAClickBelowTheRowsOrWithControlDeselectsIt)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    OpenDialog();
    QTest::mouseClick(&Viewport(), Qt::LeftButton, {}, CellOf(L"One", kColumnName));
    QTest::mouseClick(&Viewport(), Qt::LeftButton, Qt::ControlModifier, CellOf(L"Two", kColumnName));
    HandleEvents();
    EXPECT_THAT(PluginList().GetSelectedRows(), ElementsAre(RowOf(L"Two")));
    QTest::mouseClick(&Viewport(), Qt::LeftButton, {}, QPoint(200, Viewport().height() - 2));
    EXPECT_FALSE(PluginList().IsAnyRowSelected());
    QTest::mouseClick(&Viewport(), Qt::LeftButton, {}, CellOf(L"Two", kColumnName));
    ASSERT_TRUE(PluginList().IsAnyRowSelected());
    QTest::mouseClick(&Viewport(), Qt::LeftButton, Qt::ControlModifier, CellOf(L"Two", kColumnName));
    EXPECT_FALSE(PluginList().IsAnyRowSelected());
}

TEST_F(PluginListView, OnlyArrowKeysSelectARow)
{
    const auto info = AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    QWidget& list = WidgetOf(PluginList());
    list.setFocus();
    QTest::mouseClick(&Viewport(), Qt::LeftButton, {}, CellOf(L"One", kColumnName));
    QTest::mouseClick(&Viewport(), Qt::LeftButton, Qt::ControlModifier, CellOf(L"One", kColumnName));
    ASSERT_FALSE(PluginList().IsAnyRowSelected());
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_FALSE(PluginList().IsAnyRowSelected());
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_TRUE(PluginList().IsAnyRowSelected());
    EXPECT_FALSE(info->IsEnabled()) << "Space acted on the framed row";
}

TEST_F(PluginListView, MovingToACellWithAControlGivesThatControlTheFocus)
{
    const auto info = AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    QTest::mouseClick(&Viewport(), Qt::LeftButton, {}, CellOf(L"One", kColumnName));
    HandleEvents();
    EXPECT_EQ(PluginList().GetSelectedCellOfSelectedRow(), 1);
    EXPECT_EQ(QApplication::focusWidget(), &WidgetOf(PluginList())) << "a cell without control";
    QTest::keyClick(&WidgetOf(PluginList()), Qt::Key_Left);
    HandleEvents();
    ASSERT_EQ(QApplication::focusWidget(), &WidgetOf(*CheckboxOf(L"One")));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(info->IsEnabled());
    PluginList().SelectCell(RowOf(L"bad.so").get(), kStatusCell);
    HandleEvents();
    EXPECT_EQ(QApplication::focusWidget(), &WidgetOf(*ReloadButtonOf(L"bad.so")));
}

TEST_F(PluginListView, SelectingARowAloneLeavesTheFocusWhereItIs)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    OpenDialog();
    WidgetOf(PluginList()).setFocus();
    PluginList().SelectCell(RowOf(L"Two").get(), 1);
    PluginList().SelectCell(RowOf(L"One").get(), -1);
    HandleEvents();
    ASSERT_EQ(PluginList().GetSelectedCellOfSelectedRow(), -1);
    EXPECT_EQ(QApplication::focusWidget(), &WidgetOf(PluginList()));
}

} // namespace
} // namespace zetaudiopluginhostui
