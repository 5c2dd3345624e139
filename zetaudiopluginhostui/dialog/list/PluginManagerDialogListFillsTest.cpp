// These tests check what a fill of the manager dialog's plug-in list changes and keeps, and what else touches
// its rows.
#include <QLineEdit>
#include <QPointer>
#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/config/ThrowError.h>
#include <zetcore/debug/DebugDatabase.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "testing/FillCount.h"
#include "testing/PluginListFixture.h"
#include "testing/SendMessage.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetui::ui::UI_ButtonChangedMessage;
using zetui::utility::MakeIntrusive;

using PluginListFills = PluginListFixture;

void ExpectInvalidConversion(zetui::controls::UI_ControlView& control, zetui::ui::UI_Message& message)
{
    try {
        SendMessage::Changed(control, message);
        ADD_FAILURE() << "no error";
    } catch (const zetcore::config::error& error) {
        EXPECT_STREQ(error.what(), "Invalid type conversion.");
    }
}

TEST_F(PluginListFills, TogglingACheckboxNeitherFillsNorSortsTheList)
{
    AddPlugin(L"One", L"/a/1.so");
    const auto two = AddPlugin(L"Two", L"/a/2.so");
    settings.sortColumn = kColumnEnabled;
    settings.sortAscending = true;
    OpenDialog();
    const auto checkbox = CheckboxOf(L"Two");
    ASSERT_TRUE(checkbox);
    FillCount count(WidgetOf(PluginList()));
    PressAt(*checkbox, 7, 7);
    ASSERT_FALSE(two->IsEnabled());
    EXPECT_EQ(count.Layouts(), 0);
    EXPECT_THAT(Names(), ElementsAre(L"One", L"Two"));
    EXPECT_EQ(CheckboxOf(L"Two"), checkbox);
}

TEST_F(PluginListFills, EnableAllAndDisableAllFillTheListOnceAndLeaveBannedPluginsAlone)
{
    const auto one = AddPlugin(L"One", L"/a/1.so");
    const auto bad = AddPlugin(L"Bad", L"/a/bad.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    FillCount count(WidgetOf(PluginList()));
    Press(ids::kDisableAllButton);
    EXPECT_EQ(count.Fills(), 1);
    EXPECT_FALSE(one->IsEnabled());
    EXPECT_TRUE(bad->IsEnabled()) << "a banned plug-in is not touched";
    Press(ids::kEnableAllButton);
    EXPECT_EQ(count.Fills(), 1);
    EXPECT_TRUE(one->IsEnabled());
}

TEST_F(PluginListFills, AFillLetsTheWidgetsOfAllRowsGo)
{
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    ASSERT_TRUE(CheckboxOf(L"One") && CheckboxOf(L"bad.so") && ReloadButtonOf(L"bad.so"));
    const QPointer<QWidget> stays = &WidgetOf(*CheckboxOf(L"One"));
    const QPointer<QWidget> checkbox = &WidgetOf(*CheckboxOf(L"bad.so"));
    const QPointer<QWidget> button = &WidgetOf(*ReloadButtonOf(L"bad.so"));
    TypeIntoFindBox("one");
    ASSERT_THAT(Names(), ElementsAre(L"One"));
    EXPECT_FALSE(checkbox) << "of a row that is not shown any more";
    EXPECT_FALSE(button);
    EXPECT_FALSE(stays) << "made anew";
    EXPECT_TRUE(CheckboxOf(L"One"));
}

TEST_F(PluginListFills, AWidgetThatAFillLetGoDoesNothingAnyMore)
{
    AddManyPlugins(100);
    const auto last = AddPlugin(L"Zeta", L"/z/zeta.so");
    const auto locator = Ban(L"/z/zeta bad.so");
    OpenDialog();
    TypeIntoFindBox("zeta");
    const auto checkbox = CheckboxOf(L"Zeta");
    const auto button = ReloadButtonOf(L"zeta bad.so");
    ASSERT_TRUE(checkbox && button);
    FindBox().selectAll();
    TypeIntoFindBox("\b");
    ASSERT_FALSE(PluginList().IsRowVisible(RowOf(L"Zeta").get())) << "it is in the list but not in sight";
    checkbox->SetChecked(false);
    UI_ButtonChangedMessage ofCheckbox(checkbox.get());
    SendMessage::Changed(*checkbox, ofCheckbox);
    EXPECT_TRUE(last->IsEnabled());
    UI_ButtonChangedMessage ofButton(button.get());
    SendMessage::Changed(*button, ofButton);
    EXPECT_TRUE(TheBanned().IsBanned(locator));
}

TEST_F(PluginListFills, AMessageThatIsNotOfARowsWidgetChangesNothingOrIsAnError)
{
    const auto info = AddPlugin(L"One", L"/a/1.so");
    const auto locator = Ban(L"/a/bad.so");
    OpenDialog();
    const auto checkbox = CheckboxOf(L"One");
    const auto button = ReloadButtonOf(L"bad.so");
    ASSERT_TRUE(checkbox && button);

    UI_ButtonChangedMessage ofButton(button.get());
    ExpectInvalidConversion(*checkbox, ofButton);
    UI_ButtonChangedMessage ofCheckbox(checkbox.get());
    ExpectInvalidConversion(*button, ofCheckbox);
    zetui::ui::UI_ControlChangedMessage ofAnotherClass(checkbox.get());
    ExpectInvalidConversion(*checkbox, ofAnotherClass);

    const auto unknownCheckbox = MakeIntrusive<zetui::controls::UI_Checkbox>();
    UI_ButtonChangedMessage ofUnknownCheckbox(unknownCheckbox.get());
    SendMessage::Changed(*checkbox, ofUnknownCheckbox);
    EXPECT_TRUE(info->IsEnabled());
    const auto unknownButton = MakeIntrusive<zetui::controls::UI_TextButton>();
    UI_ButtonChangedMessage ofUnknownButton(unknownButton.get());
    SendMessage::Changed(*button, ofUnknownButton);
    EXPECT_TRUE(TheBanned().IsBanned(locator));
    EXPECT_EQ(shown->progressDialogs, 0);

    const auto ofBanned = CheckboxOf(L"bad.so");
    ASSERT_TRUE(ofBanned);
    UI_ButtonChangedMessage ofItself(ofBanned.get());
    SendMessage::Changed(*ofBanned, ofItself);
    EXPECT_TRUE(info->IsEnabled());
}

TEST_F(PluginListFills, StatusHasRoomForReloadWhileAnythingIsBannedWhateverIsShown)
{
    const std::wstring working = L"Working as well as anybody could wish for";
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/Working\"=\"Working as well as anybody could wish for\"\n", "test");
    const float text = TextWidth(working) + 6 + 1;
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    const float button = ReloadButtonOf(L"bad.so")->UI_GetLocalRectF(true).width + 4;
    EXPECT_FLOAT_EQ(Width(kColumnStatus), text + button) << "in every row, those without button included";
    TypeIntoFindBox("one");
    ASSERT_THAT(Names(), ElementsAre(L"One"));
    FitByDoubleClick(kColumnStatus);
    EXPECT_FLOAT_EQ(Width(kColumnStatus), text + button) << "the banned plug-in is only not shown";
    TheBanned().RemoveBannedPlugin(Vst(L"/a/bad.so"));
    FitByDoubleClick(kColumnStatus);
    EXPECT_FLOAT_EQ(Width(kColumnStatus), text);
    zetcore::debug::DebugDatabase::Instance().SetEntry("AlwaysShowPlugInRescanButton", "true");
    CloseDialog();
    OpenDialog();
    ASSERT_TRUE(ReloadButtonOf(L"One"));
    EXPECT_FLOAT_EQ(Width(kColumnStatus), text) << "nothing is banned";
    zetcore::config::Localizer::Get().Reset();
}

TEST_F(PluginListFills, AColumnFitsTheRowsThatAreInTheList)
{
    const std::wstring name = L"A plug-in whose name is far wider than the column would be otherwise";
    AddPlugin(name, L"/a/1.so");
    const std::wstring shorter = L"A shorter one that is still wide enough";
    AddPlugin(shorter, L"/a/2.so");
    OpenDialog();
    EXPECT_FLOAT_EQ(Width(kColumnName), TextWidth(name) + 6 + 1);
    TypeIntoFindBox("shorter");
    EXPECT_FLOAT_EQ(Width(kColumnName), TextWidth(name) + 6 + 1) << "typing leaves the widths alone";
    FitByDoubleClick(kColumnName);
    EXPECT_FLOAT_EQ(Width(kColumnName), TextWidth(shorter) + 6 + 1);
}

TEST_F(PluginListFills, TheFirstCellSortsByTheCheckboxWhateverColumnStandsThere)
{
    AddPlugin(L"B", L"/a/1.so");
    AddPlugin(L"A", L"/a/2.so");
    AddPlugin(L"C", L"/a/3.so")->SetEnabled(false);
    OpenDialog();
    auto& header = *PluginList().GetHeaderRow();
    header.MoveColumn(kColumnName, 0);
    ASSERT_EQ(header.GetColumnAt(0), kColumnName);
    ASSERT_EQ(header.GetColumnAt(1), kColumnEnabled);
    header.SetSortDirection(true);
    const auto pathsSortedBy = [&](unsigned column) {
        header.SetSortColumn(column);
        PluginList().SortTree();
        return ColumnTexts(kColumnPath);
    };
    EXPECT_THAT(pathsSortedBy(kColumnName), ElementsAre(L"/a/3.so", L"/a/1.so", L"/a/2.so"))
        << "the disabled one comes first, whatever the names are";
    EXPECT_THAT(pathsSortedBy(kColumnEnabled), ElementsAre(L"/a/1.so", L"/a/2.so", L"/a/3.so"))
        << "elsewhere the column has no text, so the rows stay as they were filled in";
}

TEST_F(PluginListFills, BannedPluginsFollowTheModulesInTheOrderOfTheirLocators)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    Ban(L"/b/2.so");
    Ban(L"/a/1.so");
    AddPlugin(L"Z", L"/z/1.so");
    AddPlugin(L"Y", L"/c/1.so");
    OpenDialog();
    EXPECT_THAT(Names(), ElementsAre(L"Y", L"Z", L"1.so", L"2.so"));
}

} // namespace
} // namespace zetaudiopluginhostui
