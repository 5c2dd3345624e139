#include <zetui/nodes/UI_Node.h>

#include <limits>

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTest>

#include <zettesting/Patience.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/pixmill/Pixmill.h>

#include "nodes/NodeAccess.h"
#include "testing/PrintRect.h"
#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

using RectF = UI_Node::RectF;
using utility::IntrusivePtr;
using utility::MakeIntrusive;

class Recorder : public UI_Node
{
  public:
    void UI_SizeChanged(const RectF& bounds) override { sizes.push_back(bounds); }
    void UI_Draw(pixmill::Pixmill* context) override
    {
        context->FillRect(UI_GetLocalRectF(false), {255, 0, 0, 255});
        ++drawn;
    }
    bool UI_DoKeyboardEvent(UI_Node* target, const KeyboardEvent& event) override
    {
        lastTarget = target;
        codes.push_back(event.GetOSCode());
        return takesKeys;
    }

    std::vector<RectF> sizes;
    std::vector<int> codes;
    UI_Node* lastTarget = nullptr;
    bool takesKeys = true;
    int drawn = 0;
};

/// A root view in a window of its own, as hosts and tests have it.
class UI_NodeTest : public WindowsFixture
{
  protected:
    UI_NodeTest()
    {
        root = MakeIntrusive<UI_SubView>();
        root->UI_SetLocalRectF({0, 0, 300, 200});
        NodeAccess::Embed(root.get(), &window, nullptr);
        window.setGeometry(50, 60, 300, 200);
    }
    ~UI_NodeTest() override { root = nullptr; }

    void Show()
    {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window, zettesting::patienceInMilliseconds));
    }

    template<typename Node>
    IntrusivePtr<Node> Add(const RectF& frame)
    {
        const auto node = MakeIntrusive<Node>();
        node->UI_SetLocalRectF(frame);
        root->InsertChild(node);
        return node;
    }

    QWidget window;
    IntrusivePtr<UI_SubView> root;
};

TEST_F(UI_NodeTest, AFrameIsReadAsItWasSet)
{
    const auto node = Add<UI_Node>({10.25F, 20.5F, 30.75F, 40.125F});
    EXPECT_EQ(node->UI_GetLocalRectF(true), (RectF{10.25F, 20.5F, 30.75F, 40.125F}));
    EXPECT_EQ(node->UI_GetLocalRectF(false), (RectF{0, 0, 30.75F, 40.125F}));
}

TEST_F(UI_NodeTest, AFrameThatTheWidgetGotOtherwiseIsTheWidgets)
{
    const auto node = Add<UI_Node>({10.25F, 20, 30, 40});
    WidgetOf(node.get())->setGeometry(1, 2, 3, 4);
    EXPECT_EQ(node->UI_GetLocalRectF(true), (RectF{1, 2, 3, 4}));
}

TEST_F(UI_NodeTest, NeighboursStayNeighboursOnWholePixels)
{
    const auto left = Add<UI_Node>({0, 0, 10.5F, 10});
    const auto right = Add<UI_Node>({10.5F, 0, 10.5F, 10});
    EXPECT_EQ(WidgetOf(left.get())->geometry().right() + 1, WidgetOf(right.get())->geometry().left());
}

TEST_F(UI_NodeTest, SenselessFramesAreTaken)
{
    const float infinite = std::numeric_limits<float>::infinity();
    const auto node = Add<UI_Node>({0, 0, 10, 10});
    for (const RectF& frame : {RectF{0, 0, -5, -5}, RectF{1e30F, -1e30F, 1e30F, 1e30F},
                               RectF{infinite, -infinite, infinite, infinite},
                               RectF{std::numeric_limits<float>::quiet_NaN(), 0, 1, 1}}) {
        node->UI_SetLocalRectF(frame);
        EXPECT_GE(WidgetOf(node.get())->width(), 0);
    }
}

TEST_F(UI_NodeTest, GlobalFramesGoBackAndForth)
{
    Show();
    const auto strip = Add<UI_SubView>({20, 30, 200, 100});
    const auto node = MakeIntrusive<UI_Node>();
    node->UI_SetLocalRectF({5, 6, 10, 10});
    strip->InsertChild(node);
    const RectF global = node->UI_LocalToGlobalF({1, 2, 3, 4});
    EXPECT_EQ(global, (RectF{50 + 20 + 5 + 1, 60 + 30 + 6 + 2, 3, 4}));
    EXPECT_EQ(node->UI_GlobalToLocalF(global), (RectF{1, 2, 3, 4}));
    EXPECT_EQ(strip->UI_GlobalToLocalF(global), (RectF{6, 8, 3, 4}));
}

TEST_F(UI_NodeTest, ANewSizeIsReportedOnce)
{
    const auto node = Add<Recorder>({0, 0, 10, 10});
    node->sizes.clear();
    node->UI_SetLocalRectF({5, 5, 10, 10});
    EXPECT_TRUE(node->sizes.empty());
    node->UI_SetLocalRectF({5, 5, 20, 30});
    EXPECT_EQ(node->sizes, (std::vector<RectF>{{0, 0, 20, 30}}));
    Show();
    EXPECT_EQ(node->sizes.size(), 1U);
    WidgetOf(node.get())->resize(7, 8);
    EXPECT_EQ(node->sizes.back(), (RectF{0, 0, 7, 8}));
}

TEST_F(UI_NodeTest, ShowingIsItsOwnFlag)
{
    const auto strip = Add<UI_SubView>({0, 0, 100, 100});
    const auto node = MakeIntrusive<UI_Node>();
    EXPECT_TRUE(node->UI_IsShown());
    strip->InsertChild(node);
    Show();
    EXPECT_TRUE(WidgetOf(node.get())->isVisible());
    strip->UI_Hide(true);
    EXPECT_TRUE(node->UI_IsShown());
    EXPECT_FALSE(WidgetOf(node.get())->isVisible());
    node->UI_Hide(true);
    strip->UI_Show(true);
    EXPECT_FALSE(node->UI_IsShown());
    EXPECT_FALSE(WidgetOf(node.get())->isVisible());
}

TEST_F(UI_NodeTest, ANodeInNoWindowDoesNotBecomeOne)
{
    const auto node = MakeIntrusive<UI_Node>();
    node->UI_Show(true);
    EXPECT_TRUE(node->UI_IsShown());
    EXPECT_FALSE(WidgetOf(node.get())->isVisible());
    root->InsertChild(node);
    root->RemoveChild(node.get());
    EXPECT_FALSE(WidgetOf(node.get())->isVisible());
    EXPECT_TRUE(node->UI_IsShown());
}

TEST_F(UI_NodeTest, ANodeThatWasHiddenBeforehandStaysHidden)
{
    const auto node = MakeIntrusive<UI_Node>();
    node->UI_Show(false);
    root->InsertChild(node);
    Show();
    EXPECT_FALSE(WidgetOf(node.get())->isVisible());
}

TEST_F(UI_NodeTest, DisablingAViewDisablesWhatIsInIt)
{
    const auto strip = Add<UI_SubView>({0, 0, 100, 100});
    const auto node = MakeIntrusive<UI_Node>();
    strip->InsertChild(node);
    strip->UI_SetDisabled(true);
    EXPECT_FALSE(node->UI_IsEnabled());
    strip->UI_SetEnabled(true);
    EXPECT_TRUE(node->UI_IsEnabled());
    node->UI_SetEnabled(false);
    EXPECT_TRUE(strip->UI_IsEnabled());
    EXPECT_FALSE(node->UI_IsEnabled());
}

TEST_F(UI_NodeTest, TooltipAndAccessibleNameReachTheWidget)
{
    const auto node = Add<UI_Node>({0, 0, 10, 10});
    node->UI_SetTooltip(L"<i>not</i> rich");
    node->UI_SetAccessibleName(L"Gr\u00f6\u00dfe");
    EXPECT_EQ(node->UI_GetTooltip(), L"<i>not</i> rich");
    EXPECT_FALSE(WidgetOf(node.get())->toolTip().contains(QStringLiteral("<i>")));
    EXPECT_EQ(WidgetOf(node.get())->accessibleName().toStdWString(), L"Gr\u00f6\u00dfe");
}

TEST_F(UI_NodeTest, FocusIsTheNodesOwnOrAChilds)
{
    const auto button = Add<controls::UI_TextButton>({0, 0, 80, 20});
    const auto other = Add<controls::UI_TextButton>({0, 30, 80, 20});
    Show();
    button->UI_GainKeyboardFocus(kFocusChangeProgram);
    EXPECT_TRUE(button->UI_HasKeyboardFocus(false));
    EXPECT_FALSE(root->UI_HasKeyboardFocus(false));
    EXPECT_TRUE(root->UI_HasKeyboardFocus(true));
    EXPECT_FALSE(other->UI_HasKeyboardFocus(true));
}

TEST_F(UI_NodeTest, TabStopsOnlyAtNodesThatWantTheFocus)
{
    const auto first = Add<controls::UI_TextButton>({0, 0, 80, 20});
    const auto second = Add<controls::UI_TextButton>({0, 30, 80, 20});
    const auto third = Add<controls::UI_TextButton>({0, 60, 80, 20});
    second->SetWantsKeyboardFocus(false);
    Show();
    first->UI_GainKeyboardFocus(kFocusChangeTab);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_Tab);
    EXPECT_TRUE(third->UI_HasKeyboardFocus(false));
}

TEST_F(UI_NodeTest, KeysThatAControlLeavesGoToTheNodesAroundIt)
{
    const auto outer = Add<Recorder>({0, 0, 200, 100});
    const auto button = MakeIntrusive<controls::UI_TextButton>();
    NodeAccess::Embed(button.get(), WidgetOf(outer.get()), nullptr);
    Show();
    button->UI_GainKeyboardFocus(kFocusChangeProgram);
    QTest::keyClick(WidgetOf(button.get()), Qt::Key_F5);
    QTest::keyClick(WidgetOf(button.get()), Qt::Key_G);
    EXPECT_EQ(outer->codes, (std::vector<int>{Qt::Key_F5, 'G'}));
    EXPECT_EQ(outer->lastTarget, button.get());
}

TEST_F(UI_NodeTest, ANodeIsDrawnInItsOwnCoordinates)
{
    const auto node = Add<Recorder>({20, 10, 30, 40});
    Show();
    const QImage picture = window.grab().toImage();
    const qreal scale = picture.devicePixelRatio();
    const auto at = [&](int x, int y) { return picture.pixelColor(qRound(x * scale), qRound(y * scale)); };
    EXPECT_GT(node->drawn, 0);
    EXPECT_EQ(at(20, 10), QColor(255, 0, 0));
    EXPECT_EQ(at(49, 49), QColor(255, 0, 0));
    EXPECT_NE(at(50, 50), QColor(255, 0, 0));
}

TEST_F(UI_NodeTest, TheWidgetGoesWithTheNode)
{
    auto node = Add<UI_Node>({0, 0, 10, 10});
    const QPointer<QWidget> widget = WidgetOf(node.get());
    root->RemoveChild(node.get());
    node = nullptr;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(widget);
}

TEST_F(UI_NodeTest, ANodeWhoseWidgetQtDeletedIsInert)
{
    const auto node = Add<UI_Node>({0, 0, 10, 10});
    delete WidgetOf(node.get());
    EXPECT_EQ(node->NativeWidget(), nullptr);
    node->UI_SetLocalRectF({1, 2, 3, 4});
    node->UI_Show(false);
    node->UI_SetEnabled(true);
    node->UI_SetTooltip(L"gone");
    node->UI_SetAccessibleName(L"gone");
    node->UI_GainKeyboardFocus(kFocusChangeNone);
    node->SetWantsKeyboardFocus(true);
    node->UI_Redraw();
    EXPECT_FALSE(node->UI_HasKeyboardFocus(true));
    EXPECT_FALSE(node->UI_IsEnabled());
    EXPECT_EQ(node->UI_LocalToGlobalF({1, 2, 3, 4}), (RectF{1, 2, 3, 4}));
    EXPECT_EQ(node->UI_GlobalToLocalF({1, 2, 3, 4}), (RectF{1, 2, 3, 4}));
    root->RemoveChild(node.get());
}

TEST_F(UI_NodeTest, WidgetsKnowTheirNodes)
{
    const auto node = Add<UI_Node>({0, 0, 10, 10});
    QWidget* const inner = new QWidget(WidgetOf(node.get()));
    EXPECT_EQ(NodeAccess::NodeOf(WidgetOf(node.get())), node.get());
    EXPECT_EQ(NodeAccess::NodeOf(inner), nullptr);
    EXPECT_EQ(NodeAccess::NearestNode(inner), node.get());
    EXPECT_EQ(NodeAccess::NearestNode(&window), nullptr);
    EXPECT_EQ(NodeAccess::NearestNode(nullptr), nullptr);
}

} // namespace
} // namespace zetui::ui
