// The checkboxes and buttons in the rows of the plug-in list.
#include <cmath>

#include <QCheckBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>
#include <zetcore/debug/DebugDatabase.h>

#include "dialog/PluginListText.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using RowWidgets = DialogFixture;
using RowWidgetsV7 = V7DialogFixture;

TEST_F(RowWidgets, ABannedRowHasADisabledUncheckedCheckboxAndAReloadButtonAtTheRightOfItsStatus)
{
    AddPlugin(L"Good", L"/a/good.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    const auto checkbox = CheckboxOf(L"bad.so");
    ASSERT_TRUE(checkbox);
    EXPECT_FALSE(checkbox->UI_IsEnabled());
    EXPECT_FALSE(checkbox->IsChecked());
    const auto button = ReloadButtonOf(L"bad.so");
    ASSERT_TRUE(button);
    EXPECT_EQ(button->GetText(), L"Reload");
    const auto frame = button->UI_GetLocalRectF(true);
    EXPECT_FLOAT_EQ(frame.left + frame.width, PluginList().GetHeaderRow()->GetColumnWidth(kColumnStatus));
    const auto recommended = zetui::controls::UI_TextButton::UI_GetRecommendedSize(
        nullptr, L"Reload", zetui::controls::UI_ControlView::DefaultTextSize(),
        zetui::controls::ButtonComponents(1, false));
    EXPECT_FLOAT_EQ(frame.width, recommended.first);
    EXPECT_FLOAT_EQ(frame.height, 17);
    EXPECT_FLOAT_EQ(frame.top, std::ceil((PluginList().GetRowHeight() - 17) / 2));
    EXPECT_TRUE(WidgetOf(*button).isVisible());
    EXPECT_FALSE(ReloadButtonOf(L"Good"));
}

TEST_F(RowWidgets, AWorkingRowHasACheckboxThatShowsWhetherItIsEnabled)
{
    AddPlugin(L"On", L"/a/on.so");
    AddPlugin(L"Off", L"/a/off.so")->SetEnabled(false);
    OpenDialog();
    EXPECT_TRUE(CheckboxOf(L"On")->IsChecked());
    EXPECT_FALSE(CheckboxOf(L"Off")->IsChecked());
    EXPECT_TRUE(CheckboxOf(L"Off")->UI_IsEnabled());
    const auto frame = CheckboxOf(L"On")->UI_GetLocalRectF(true);
    EXPECT_EQ(frame,
              (zetui::ui::UI_Node::RectF{4, std::ceil((PluginList().GetRowHeight() - 14) / 2), 200, 14}));
}

TEST_F(RowWidgetsV7, WidgetsKeepTheDistancesOfTheSkin)
{
    Ban(L"/a/bad.so");
    OpenDialog();
    EXPECT_FLOAT_EQ(CheckboxOf(L"bad.so")->UI_GetLocalRectF(true).left,
                    zetui::controls::UI_MultiColumnTree::GetDefaultCellPadding().second);
    const auto frame = ReloadButtonOf(L"bad.so")->UI_GetLocalRectF(true);
    EXPECT_FLOAT_EQ(frame.left + frame.width, PluginList().GetHeaderRow()->GetColumnWidth(kColumnStatus) - 4);
    EXPECT_FLOAT_EQ(frame.height, PluginList().GetRowHeight() - 8);
    EXPECT_EQ(ReloadButtonOf(L"bad.so")->GetButtonComponents().variant, zetui::controls::Variant::Primary);
}

TEST_F(RowWidgets, WithTheSwitchEveryVisibleRowHasAReloadButton)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("AlwaysShowPlugInRescanButton", "true");
    AddPlugin(L"Good", L"/a/good.so");
    AddPlugin(L"Other", L"/a/other.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    for (const wchar_t* const name : {L"Good", L"Other", L"bad.so"})
        EXPECT_TRUE(ReloadButtonOf(name)) << name;
}

TEST_F(RowWidgets, ScrollingARowAwayAndBackMakesFreshWidgetsThatShowTheRecordAsItIsThen)
{
    AddManyPlugins(200);
    OpenDialog();
    const auto before = CheckboxOf(L"plugin000");
    ASSERT_TRUE(before->IsChecked());
    QWidget& list = WidgetOf(PluginList());
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_End);
    HandleEvents();
    ASSERT_FALSE(PluginList().IsRowVisible(PluginList().GetRowAt(0).get()));
    EXPECT_TRUE(CheckboxOf(L"plugin199"));
    (*TheRegistry().PluginInfoBegin())->SetEnabled(false);
    QTest::keyClick(&list, Qt::Key_Home);
    HandleEvents();
    const auto after = CheckboxOf(L"plugin000");
    ASSERT_TRUE(after);
    EXPECT_NE(after.get(), before.get());
    EXPECT_FALSE(after->IsChecked());
}

TEST_F(RowWidgets, TheWidgetsOfARowThatIsScrolledAwayAreDeleted)
{
    Ban(L"/a/0 bad.so");
    AddManyPlugins(200);
    settings.sortColumn = kColumnName;
    settings.sortAscending = true;
    OpenDialog();
    const QPointer<QWidget> checkbox = &WidgetOf(*CheckboxOf(L"0 bad.so"));
    const QPointer<QWidget> button = &WidgetOf(*ReloadButtonOf(L"0 bad.so"));
    PluginList().ScrollToRow(PluginList().GetRowAt(200).get());
    HandleEvents();
    EXPECT_FALSE(checkbox);
    EXPECT_FALSE(button);
}

TEST_F(RowWidgets, WidgetsExistForVisibleRowsOnly)
{
    AddManyPlugins(1000);
    OpenDialog();
    for (int step = 0; step < 20; ++step)
        PluginList().ScrollToRow(PluginList().GetRowAt(step * 50).get());
    HandleEvents();
    const auto checkboxes = WidgetOf(PluginList()).findChildren<QCheckBox*>().size();
    EXPECT_GT(checkboxes, 3);
    EXPECT_LT(checkboxes, 40);
}

TEST_F(RowWidgets, AreNamedForScreenReadersByTheirPlugin)
{
    AddPlugin(L"Good", L"/a/good.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    EXPECT_EQ(WidgetOf(*CheckboxOf(L"Good")).accessibleName(), "Enable Good");
    EXPECT_EQ(WidgetOf(*CheckboxOf(L"bad.so")).accessibleName(), "Enable bad.so");
    EXPECT_EQ(WidgetOf(*ReloadButtonOf(L"bad.so")).accessibleName(), "Reload bad.so");
}

} // namespace
} // namespace zetaudiopluginhostui
