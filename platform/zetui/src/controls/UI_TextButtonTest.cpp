#include <zetui/controls/UI_TextButton.h>

#include <stdexcept>

#include <QAccessible>
#include <QPushButton>

#include "skins/SkinStyle.h"
#include "testing/ControlFixture.h"

namespace zetui::controls {
namespace {

class UI_TextButtonTest : public ControlFixture
{
  protected:
    static QPushButton* Widget(const utility::IntrusivePtr<UI_TextButton>& button)
    {
        return static_cast<QPushButton*>(WidgetOf(button.get()));
    }
};

TEST_F(UI_TextButtonTest, AClickSendsOneButtonMessage)
{
    const auto button = Open<UI_TextButton>();
    int messages = 0;
    button->NotifyWhenChanged(Do([&](ui::UI_Message* message) {
        EXPECT_TRUE(dynamic_cast<ui::UI_ButtonChangedMessage*>(message));
        EXPECT_EQ(message->GetControl(), button.get());
        ++messages;
    }));
    QTest::mouseClick(Widget(button), Qt::LeftButton);
    EXPECT_EQ(messages, 1);
    QTest::keyClick(Widget(button), Qt::Key_Space);
    EXPECT_EQ(messages, 2);
    button->Click();
    EXPECT_EQ(messages, 3);
}

TEST_F(UI_TextButtonTest, ADisabledButtonSendsNothing)
{
    const auto button = Open<UI_TextButton>();
    int messages = 0;
    button->NotifyWhenChanged(Do([&](ui::UI_Message*) { ++messages; }));
    button->UI_SetEnabled(false);
    QTest::mouseClick(Widget(button), Qt::LeftButton);
    button->Click();
    EXPECT_EQ(messages, 0);
}

TEST_F(UI_TextButtonTest, FunctionsAddUpAndEmptyOnesAreIgnored)
{
    const auto button = Open<UI_TextButton>();
    std::vector<int> calls;
    button->NotifyWhenChanged(nullptr);
    button->NotifyWhenChanged(Do({}));
    button->NotifyWhenChanged(Do([&](ui::UI_Message*) { calls.push_back(1); }));
    button->NotifyWhenChanged(Do([&](ui::UI_Message*) { calls.push_back(2); }));
    button->Click();
    EXPECT_EQ(calls, (std::vector<int>{1, 2}));
}

TEST_F(UI_TextButtonTest, AHandlerMayDropItsButton)
{
    auto button = Open<UI_TextButton>();
    int after = 0;
    button->NotifyWhenChanged(Do([&](ui::UI_Message*) { button = nullptr; }));
    button->NotifyWhenChanged(Do([&](ui::UI_Message*) { ++after; }));
    QTest::mouseClick(Widget(button), Qt::LeftButton);
    EXPECT_FALSE(button);
    EXPECT_EQ(after, 1);
}

TEST_F(UI_TextButtonTest, AnExceptionOfAHandlerComesOutOfClick)
{
    const auto button = Open<UI_TextButton>();
    button->NotifyWhenChanged(Do([](ui::UI_Message*) { throw std::runtime_error("handler"); }));
    EXPECT_THROW(button->Click(), std::runtime_error);
    EXPECT_TRUE(button->UI_IsEnabled());
}

TEST_F(UI_TextButtonTest, WithAnIconItsTextIsTooltipAndName)
{
    const auto button = Open<UI_TextButton>();
    button->SetText(L"&Remove && forget");
    EXPECT_TRUE(Widget(button)->icon().isNull());
    for (const char* icon : {"add", "remove", "reset", "ok", "cancel"}) {
        button->SetIcon(icon);
        EXPECT_FALSE(Widget(button)->icon().isNull()) << icon;
        EXPECT_EQ(Widget(button)->text(), QString());
    }
    EXPECT_EQ(Widget(button)->toolTip(), QStringLiteral("Remove & forget"));
    const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(Widget(button));
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Remove & forget"));
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->text(QAccessible::Description), QString()) << "it would be the name again";
    EXPECT_EQ(button->GetText(), L"&Remove && forget");
    button->SetIcon("");
    EXPECT_EQ(Widget(button)->text(), QStringLiteral("&Remove && forget"));
    EXPECT_EQ(Widget(button)->toolTip(), QString());
}

TEST_F(UI_TextButtonTest, ANameOfItsOwnStaysBesideAText)
{
    const auto button = Open<UI_TextButton>();
    button->UI_SetAccessibleName(L"Reload Reverb");
    button->SetText(L"Reload");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(Widget(button))->text(QAccessible::Name),
              QStringLiteral("Reload Reverb"));
}

TEST_F(UI_TextButtonTest, AScreenReaderDoesNotReadTheMarkOfALetter)
{
    const auto button = Open<UI_TextButton>();
    button->SetText(L"Fish && &Chips");
    QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(Widget(button));
    EXPECT_EQ(read->text(QAccessible::Name), QStringLiteral("Fish & Chips"));
    EXPECT_NE(read->text(QAccessible::Accelerator), QString());
}

TEST_F(UI_TextButtonTest, AScreenReadersPressIsAClickThatIsAnsweredFirst)
{
    const auto button = Open<UI_TextButton>();
    button->SetText(L"&Scan");
    button->UI_SetTooltip(L"Looks for plug-ins");
    bool pressed = false;
    button->NotifyWhenChanged(Do([&](ui::UI_Message*) { pressed = true; }));
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(Widget(button));
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Scan"));
    EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("Looks for plug-ins"));
    button->UI_SetTooltip(L"Scan");
    EXPECT_EQ(accessible->text(QAccessible::Description), QString()) << "the name says it";
    EXPECT_EQ(accessible->text(QAccessible::Accelerator),
              QKeySequence(Qt::ALT | Qt::Key_S).toString(QKeySequence::NativeText));
    QAccessibleActionInterface* const action = accessible->actionInterface();
    const QString press = QAccessibleActionInterface::pressAction();
    ASSERT_EQ(action->actionNames().value(0), press);
    action->doAction(press);
    EXPECT_FALSE(pressed);
    QCoreApplication::processEvents();
    EXPECT_TRUE(pressed);
    button->UI_SetEnabled(false);
    EXPECT_FALSE(action->actionNames().contains(press));
}

TEST_F(UI_TextButtonTest, AnUnknownIconLeavesTheText)
{
    const auto button = Open<UI_TextButton>();
    button->SetText(L"Text");
    button->SetIcon("unheard");
    EXPECT_EQ(Widget(button)->text(), QStringLiteral("Text"));
}

TEST_F(UI_TextButtonTest, ATooltipOfItsOwnStays)
{
    const auto button = Open<UI_TextButton>();
    button->UI_SetTooltip(L"Own");
    button->SetText(L"Text");
    button->SetIcon("add");
    EXPECT_EQ(Widget(button)->toolTip(), QStringLiteral("Own"));
}

TEST_F(UI_TextButtonTest, ComponentsReachTheSkin)
{
    const auto button = Open<UI_TextButton>();
    button->SetButtonComponents(ButtonComponents(Variant::Accent, true));
    EXPECT_EQ(Widget(button)->property(skins::kVariantProperty).toInt(), static_cast<int>(Variant::Accent));
    EXPECT_TRUE(Widget(button)->property(skins::kQuietProperty).toBool());
    EXPECT_EQ(button->GetButtonComponents().variant, Variant::Accent);
}

TEST_F(UI_TextButtonTest, TheRecommendedSizeGrowsWithTextAndTextSize)
{
    const auto size = [](const wchar_t* text, float textSize) {
        return UI_TextButton::UI_GetRecommendedSize(nullptr, text, textSize, ButtonComponents(1, false));
    };
    const auto small = size(L"OK", 12);
    EXPECT_GT(small.first, 20);
    EXPECT_GT(small.second, 12);
    EXPECT_GT(size(L"Reload everything", 12).first, small.first);
    EXPECT_GT(size(L"OK", 24).second, small.second);
    EXPECT_EQ(size(L"&OK", 12).first, small.first);
    EXPECT_GT(size(L"OK", UI_ControlView::DefaultTextSize()).first, 20);
    EXPECT_GT(size(L"", 0).second, 0);
}

} // namespace
} // namespace zetui::controls
