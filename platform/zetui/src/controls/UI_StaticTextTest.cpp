#include <zetui/controls/UI_StaticText.h>

#include <zetui/controls/UI_TextEdit.h>

#include <QAccessible>
#include <QLabel>

#include "testing/ControlFixture.h"

namespace zetui::controls {
namespace {

class UI_StaticTextTest : public ControlFixture
{};

TEST_F(UI_StaticTextTest, ShowsItsTextAsItIs)
{
    const auto text = Open<UI_StaticText>();
    text->SetText(L"<b>Plug-Ins</b>");
    const auto* const label = static_cast<QLabel*>(WidgetOf(text.get()));
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(text->GetText(), L"<b>Plug-Ins</b>");
}

TEST_F(UI_StaticTextTest, IsAlignedAsTold)
{
    const auto text = Open<UI_StaticText>();
    const auto* const label = static_cast<QLabel*>(WidgetOf(text.get()));
    text->SetAlignment(UI_StaticText::kAlignCenter);
    EXPECT_EQ(label->alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    text->SetAlignment(UI_StaticText::kAlignRight);
    EXPECT_EQ(label->alignment(), Qt::AlignRight | Qt::AlignVCenter);
    text->SetAlignment(99);
    EXPECT_EQ(label->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
}

TEST_F(UI_StaticTextTest, NamesItsBuddy)
{
    const auto text = Open<UI_StaticText>();
    const auto edit = Open<UI_TextEdit>();
    text->SetText(L"&Filter:");
    text->SetBuddy(edit.get());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(WidgetOf(edit.get()))->text(QAccessible::Name),
              QStringLiteral("Filter:"));
    EXPECT_FALSE(edit->UI_HasKeyboardFocus(false));
    QTest::keyClick(&window, Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(edit->UI_HasKeyboardFocus(false));
}

TEST_F(UI_StaticTextTest, NeedsRoomForItsText)
{
    const auto text = Open<UI_StaticText>();
    EXPECT_EQ(ui::NodeAccess::NeededSize(text.get()), QSizeF(0, 0));
    text->SetText(L"A & B");
    const QSizeF needed = ui::NodeAccess::NeededSize(text.get());
    EXPECT_GE(needed.width(), WidgetOf(text.get())->fontMetrics().horizontalAdvance(QStringLiteral("A & B")));
    EXPECT_GT(needed.height(), 0);
}

} // namespace
} // namespace zetui::controls
