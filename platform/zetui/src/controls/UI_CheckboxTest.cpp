#include <zetui/controls/UI_Checkbox.h>

#include <QAccessible>
#include <QCheckBox>

#include "testing/ControlFixture.h"

namespace zetui::controls {
namespace {

class UI_CheckboxTest : public ControlFixture
{
  protected:
    static QCheckBox* Widget(const utility::IntrusivePtr<UI_Checkbox>& checkbox)
    {
        return static_cast<QCheckBox*>(WidgetOf(checkbox.get()));
    }
    static void ClickOn(const utility::IntrusivePtr<UI_Checkbox>& checkbox)
    {
        QTest::mouseClick(Widget(checkbox), Qt::LeftButton, {}, QPoint(6, 12));
    }
};

TEST_F(UI_CheckboxTest, TheUserTogglesItByMouseAndKeyboard)
{
    const auto checkbox = Open<UI_Checkbox>();
    std::vector<int> values;
    checkbox->NotifyWhenChanged(Do([&](ui::UI_Message* message) {
        EXPECT_TRUE(dynamic_cast<ui::UI_ButtonChangedMessage*>(message));
        values.push_back(checkbox->GetValue());
    }));
    ClickOn(checkbox);
    QTest::keyClick(Widget(checkbox), Qt::Key_Space);
    EXPECT_EQ(values, (std::vector<int>{UI_Checkbox::kChecked, UI_Checkbox::kUnchecked}));
}

TEST_F(UI_CheckboxTest, ASetterSendsNothing)
{
    const auto checkbox = Open<UI_Checkbox>();
    int messages = 0;
    checkbox->NotifyWhenChanged(Do([&](ui::UI_Message*) { ++messages; }));
    checkbox->SetChecked(true);
    EXPECT_TRUE(checkbox->IsChecked());
    checkbox->SetValue(UI_Checkbox::kMixed);
    EXPECT_EQ(checkbox->GetValue(), UI_Checkbox::kMixed);
    EXPECT_FALSE(checkbox->IsChecked());
    checkbox->SetValue(17);
    EXPECT_EQ(checkbox->GetValue(), UI_Checkbox::kChecked);
    EXPECT_EQ(messages, 0);
}

TEST_F(UI_CheckboxTest, TheUserLeavesTheMixedStateForGood)
{
    const auto checkbox = Open<UI_Checkbox>();
    checkbox->SetValue(UI_Checkbox::kMixed);
    ClickOn(checkbox);
    EXPECT_EQ(checkbox->GetValue(), UI_Checkbox::kChecked);
    ClickOn(checkbox);
    EXPECT_EQ(checkbox->GetValue(), UI_Checkbox::kUnchecked);
    ClickOn(checkbox);
    EXPECT_EQ(checkbox->GetValue(), UI_Checkbox::kChecked);
}

TEST_F(UI_CheckboxTest, ADisabledOneStaysAsItIs)
{
    const auto checkbox = Open<UI_Checkbox>();
    checkbox->UI_SetEnabled(false);
    ClickOn(checkbox);
    EXPECT_EQ(checkbox->GetValue(), UI_Checkbox::kUnchecked);
}

TEST_F(UI_CheckboxTest, ScreenReadersGetNameRoleAndState)
{
    const auto checkbox = Open<UI_Checkbox>();
    checkbox->SetText(L"Separate process");
    checkbox->SetChecked(true);
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(Widget(checkbox));
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Separate process"));
    EXPECT_EQ(accessible->role(), QAccessible::CheckBox);
    EXPECT_TRUE(accessible->state().checked);
    EXPECT_EQ(checkbox->GetText(), L"Separate process");
    checkbox->SetValue(UI_Checkbox::kMixed);
    EXPECT_TRUE(accessible->state().checkStateMixed);
}

TEST_F(UI_CheckboxTest, AScreenReaderTogglesItAsAClickDoes)
{
    const auto checkbox = Open<UI_Checkbox>();
    int changes = 0;
    checkbox->NotifyWhenChanged(Do([&](ui::UI_Message*) { ++changes; }));
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(Widget(checkbox));
    accessible->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(checkbox->GetValue(), UI_Checkbox::kChecked);
    EXPECT_TRUE(accessible->state().checked);
    EXPECT_EQ(changes, 1);
    checkbox->UI_SetEnabled(false);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(checkbox->GetValue(), UI_Checkbox::kChecked);
}

} // namespace
} // namespace zetui::controls
