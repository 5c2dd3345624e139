// These tests check the checkboxes and buttons in the rows of the plug-in list.
#include <cmath>

#include <QImage>
#include <QWidget>
#include <gtest/gtest.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/DebugDatabase.h>

#include "dialog/list/PluginListText.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

constexpr char alwaysShowReloadKey[] = "AlwaysShowPlugInRescanButton";

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
    EXPECT_FALSE(HasReloadButton(L"Good"));
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
}

TEST_F(RowWidgetsV7, TheReloadButtonLooksLikeAPrimaryOneThatIsNotQuiet)
{
    using zetui::controls::ButtonComponents;
    Ban(L"/a/bad.so");
    OpenDialog();
    const auto button = ReloadButtonOf(L"bad.so");
    EXPECT_EQ(button->GetButtonComponents().variant, zetui::controls::Variant::Primary);
    EXPECT_FALSE(button->GetButtonComponents().quiet);
    const auto pictureWith = [&](const ButtonComponents& components) {
        button->SetButtonComponents(components);
        return WidgetOf(*button).grab().toImage();
    };
    const QImage own = WidgetOf(*button).grab().toImage();
    EXPECT_NE(own, pictureWith(ButtonComponents(1, false)));
    EXPECT_NE(own, pictureWith(ButtonComponents(2, false)));
    EXPECT_NE(own, pictureWith(ButtonComponents(3, false)));
    EXPECT_NE(own, pictureWith(ButtonComponents(0, true)));
    EXPECT_EQ(own, pictureWith(ButtonComponents(0, false)));
}

TEST_F(RowWidgets, TheReloadButtonStaysAtTheRightOfItsStatusWhenTheColumnIsWidened)
{
    Ban(L"/a/bad.so");
    OpenDialog();
    PluginList().GetHeaderRow()->SetColumnWidth(kColumnStatus, 300);
    HandleEvents();
    const auto frame = ReloadButtonOf(L"bad.so")->UI_GetLocalRectF(true);
    EXPECT_FLOAT_EQ(frame.left + frame.width, 300);
}

TEST_F(RowWidgets, WithTheSwitchExactlyTrueEveryVisibleRowHasAReloadButton)
{
    AddPlugin(L"Good", L"/a/good.so");
    AddPlugin(L"Other", L"/a/other.so");
    Ban(L"/a/bad.so");
    for (const char* const entry : {"True", "1", "yes", "false", "true"}) {
        SCOPED_TRACE(entry);
        zetcore::debug::DebugDatabase::Instance().SetEntry(alwaysShowReloadKey, entry);
        OpenDialog();
        const bool all = std::string(entry) == "true";
        EXPECT_EQ(HasReloadButton(L"Good"), all);
        EXPECT_EQ(HasReloadButton(L"Other"), all);
        EXPECT_TRUE(HasReloadButton(L"bad.so"));
        CloseDialog();
    }
}

TEST_F(RowWidgets, TheirTextsComeFromTheStringTable)
{
    auto& localizer = zetcore::config::Localizer::Get();
    localizer.LoadTableFromText("\"$$$/AudioPluginManager/Reload\"=\"Noch einmal laden\"\n"
                                "\"$$$/AudioPluginManager/EnablePlugin\"=\"@0 einschalten\"\n"
                                "\"$$$/AudioPluginManager/ReloadPlugin\"=\"@0 neu laden\"\n",
                                "test");
    Ban(L"/a/bad.so");
    OpenDialog();
    const auto button = ReloadButtonOf(L"bad.so");
    EXPECT_EQ(button->GetText(), L"Noch einmal laden");
    EXPECT_FLOAT_EQ(button->UI_GetLocalRectF(true).width,
                    zetui::controls::UI_TextButton::UI_GetRecommendedSize(
                        nullptr, L"Noch einmal laden", zetui::controls::UI_ControlView::DefaultTextSize(),
                        zetui::controls::ButtonComponents(1, false))
                        .first);
    EXPECT_EQ(WidgetOf(*button).accessibleName(), "bad.so neu laden");
    EXPECT_EQ(WidgetOf(*CheckboxOf(L"bad.so")).accessibleName(), "bad.so einschalten");
    localizer.Reset();
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
