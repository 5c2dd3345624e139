#include "dialog/find/FindStrip.h"

#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetui::controls::UI_Checkbox;
using zetui::controls::UI_StaticText;
using zetui::ui::BindMessageFunction;
using RectF = zetui::ui::UI_Node::RectF;
using zetui::ui::UI_SubView;
using zetui::utility::MakeIntrusive;

/// The strip in a view of its own. It has 60 pixels of buttons, then the label, a gap and the box.
class FindStripAlone : public DialogFixture
{
  protected:
    FindStripAlone()
    {
        buttons->UI_SetLocalRectF({0, 0, 60, 20});
        hidden->UI_SetLocalRectF({40, 0, 20, 20});
        label->UI_SetLocalRectF({70, 0, 30, 20});
        box->UI_SetLocalRectF({120, 0, 80, 20});
        buttons->InsertChild(hidden);
        for (const Ptr<zetui::ui::UI_Node>& child :
             std::initializer_list<Ptr<zetui::ui::UI_Node>>{buttons, label, box})
            root->InsertChild(child);
        box->NotifyWhenChanged(BindMessageFunction(&strip, &FindStrip::OnTextChanged));
        box->NotifyWhenChangedInteractively(
            BindMessageFunction(&strip, &FindStrip::OnTextChangedInteractively));
    }
    void Type(const char* text) const { QTest::keyClicks(&WidgetOf(*box), QString::fromLatin1(text)); }

    const Ptr<UI_SubView> root = MakeIntrusive<UI_SubView>(), buttons = MakeIntrusive<UI_SubView>();
    const Ptr<UI_Checkbox> hidden = MakeIntrusive<UI_Checkbox>();
    const Ptr<UI_StaticText> label = MakeIntrusive<UI_StaticText>();
    const Ptr<FindStrip::SearchBox> box = MakeIntrusive<FindStrip::SearchBox>(false, false);
    int told = 0;
    FindStrip strip{label, box, root.get(), [this] { ++told; }};
};

TEST_F(FindStripAlone, TellsOfEachNewTextOnce)
{
    Type("ab");
    EXPECT_EQ(told, 2);
    EXPECT_EQ(strip.Text(), L"ab");
    QTest::keyClick(&WidgetOf(*box), Qt::Key_Return);
    EXPECT_EQ(told, 2) << "the text that is committed has been told";
}

TEST_F(FindStripAlone, TellsOfATextThatIsOnlyCommitted)
{
    box->SetValue(L"ab");
    EXPECT_EQ(told, 0);
    QTest::keyClick(&WidgetOf(*box), Qt::Key_Return);
    EXPECT_EQ(told, 1);
}

TEST_F(FindStripAlone, TheTextThatWasThereFirstIsNotTold)
{
    const auto filled = MakeIntrusive<FindStrip::SearchBox>(false, false);
    filled->SetValue(L"ab");
    FindStrip later{nullptr, filled, root.get(), [this] { ++told; }};
    filled->NotifyWhenChanged(BindMessageFunction(&later, &FindStrip::OnTextChanged));
    QTest::keyClick(&WidgetOf(*filled), Qt::Key_Return);
    EXPECT_EQ(told, 0);
    QTest::keyClick(&WidgetOf(*filled), Qt::Key_X);
    QTest::keyClick(&WidgetOf(*filled), Qt::Key_Return);
    EXPECT_EQ(told, 1);
}

TEST_F(FindStripAlone, TakesTheRoomOfAHiddenCheckboxToTheLeft)
{
    strip.TakeRoomOf(*hidden);
    EXPECT_EQ(buttons->UI_GetLocalRectF(true), (RectF{0, 0, 40, 20}));
    EXPECT_EQ(label->UI_GetLocalRectF(true), (RectF{40, 0, 30, 20}));
    EXPECT_EQ(box->UI_GetLocalRectF(true), (RectF{100, 0, 100, 20}));
}

TEST_F(FindStripAlone, HidesEachControlThatTheButtonsReach)
{
    strip.Fit(*buttons);
    EXPECT_TRUE(label->UI_IsShown() && box->UI_IsShown());
    buttons->UI_SetLocalRectF({0, 0, 70, 20});
    strip.Fit(*buttons);
    EXPECT_FALSE(label->UI_IsShown());
    EXPECT_TRUE(box->UI_IsShown());
    buttons->UI_SetLocalRectF({0, 0, 120, 20});
    strip.Fit(*buttons);
    EXPECT_FALSE(box->UI_IsShown());
    buttons->UI_SetLocalRectF({0, 0, 69, 20});
    strip.Fit(*buttons);
    EXPECT_TRUE(label->UI_IsShown() && box->UI_IsShown());
}

TEST_F(FindStripAlone, StretchesTheLabelUpToTheBoxAndNeverShortensIt)
{
    strip.LeadLabelToBox();
    EXPECT_EQ(label->UI_GetLocalRectF(true), (RectF{70, 0, 46, 20}));
    box->UI_SetLocalRectF({130, 0, 80, 20});
    strip.LeadLabelToBox();
    EXPECT_EQ(label->UI_GetLocalRectF(true), (RectF{70, 0, 46, 20})) << "once; then the layout moves both";
    box->UI_SetLocalRectF({90, 0, 80, 20});
    FindStrip another{label, box, root.get(), [] {}};
    another.LeadLabelToBox();
    EXPECT_EQ(label->UI_GetLocalRectF(true), (RectF{70, 0, 46, 20}));
}

TEST_F(FindStripAlone, NarrowsUnseenWhileItHasATextAndNoRoomUntilItIsCleared)
{
    buttons->UI_SetLocalRectF({0, 0, 120, 20});
    strip.Fit(*buttons);
    EXPECT_FALSE(strip.NarrowsUnseen()) << "it has no text";
    Type("ab");
    EXPECT_TRUE(strip.NarrowsUnseen());
    buttons->UI_SetLocalRectF({0, 0, 60, 20});
    strip.Fit(*buttons);
    EXPECT_FALSE(strip.NarrowsUnseen()) << "everybody can see it";
    told = 0;
    strip.Clear();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(strip.Text(), L"");
    strip.Clear();
    EXPECT_EQ(told, 1);
}

TEST_F(FindStripAlone, DoesWithoutLabelAndBox)
{
    FindStrip empty{nullptr, nullptr, root.get(), [this] { ++told; }};
    EXPECT_EQ(empty.Text(), L"");
    EXPECT_FALSE(empty.Box());
    empty.TakeRoomOf(*hidden);
    empty.LeadLabelToBox();
    empty.Fit(*buttons);
    empty.Clear();
    EXPECT_FALSE(empty.NarrowsUnseen());
    EXPECT_EQ(buttons->UI_GetLocalRectF(true), (RectF{0, 0, 60, 20})) << "nobody takes the room";
}

} // namespace
} // namespace zetaudiopluginhostui
