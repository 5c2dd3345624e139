// These tests change the size of the manager dialog. Controls move, and those without room are hidden.
#include <QWidget>
#include <gtest/gtest.h>

#include "dialog/PluginManagerIds.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetui::ui::UI_Node;

class DialogWindow : public DialogFixture
{
  protected:
    bool IsShown(const char* id) const { return Node<UI_Node>(id).UI_IsShown(); }
    bool FitsIntoItsSection(const char* id) const
    {
        const QWidget& button = WidgetOf(Node<UI_Node>(id));
        const QWidget& section = WidgetOf(Node<UI_Node>(ids::kPluginTreeSection));
        return button.mapTo(&section, QPoint(button.width(), 0)).x() < section.width();
    }
    bool IsBehindTheStrip(const char* id) const
    {
        const auto strip = Node<UI_Node>(ids::kSeparateProcess).UI_GetParentNode()->UI_GetLocalRectF(true);
        return strip.left + strip.width < Node<UI_Node>(id).UI_GetLocalRectF(true).left;
    }
};

TEST_F(DialogWindow, NarrowingHidesDisableAllWhenItCrossesTheSectionsEdgeAndEnableAllLater)
{
    OpenDialog();
    ASSERT_TRUE(IsShown(ids::kEnableAllButton));
    ASSERT_TRUE(IsShown(ids::kDisableAllButton));
    int withoutDisableAll = 0;
    int withoutEnableAll = 0;
    for (int width = Window().width(); width >= 400; --width) {
        Resize(width, 450);
        ASSERT_EQ(IsShown(ids::kEnableAllButton), FitsIntoItsSection(ids::kEnableAllButton)) << width;
        ASSERT_EQ(IsShown(ids::kDisableAllButton), FitsIntoItsSection(ids::kDisableAllButton)) << width;
        if (!IsShown(ids::kDisableAllButton) && withoutDisableAll == 0)
            withoutDisableAll = width;
        if (!IsShown(ids::kEnableAllButton) && withoutEnableAll == 0)
            withoutEnableAll = width;
    }
    EXPECT_GT(withoutEnableAll, 0);
    EXPECT_GT(withoutDisableAll, withoutEnableAll);
    Resize(900, 450);
    EXPECT_TRUE(IsShown(ids::kEnableAllButton));
    EXPECT_TRUE(IsShown(ids::kDisableAllButton));
}

TEST_F(DialogWindow, WithSeparateProcessHiddenTheFilterShowsWhileItBeginsBehindThatCheckboxsStrip)
{
    OpenDialog();
    ASSERT_FALSE(IsShown(ids::kSeparateProcess));
    bool wasHidden = false;
    bool labelWasShown = false;
    for (const int width : {1400, 1200, 1000, 900, 800, 750, 700, 650, 600, 500, 400, 1400}) {
        Resize(width, 450);
        ASSERT_EQ(IsShown(ids::kFindTextEdit), IsBehindTheStrip(ids::kFindTextEdit)) << width;
        ASSERT_EQ(IsShown(ids::kFindStaticText), IsBehindTheStrip(ids::kFindStaticText)) << width;
        wasHidden = wasHidden || !IsShown(ids::kFindTextEdit);
        labelWasShown = labelWasShown || IsShown(ids::kFindStaticText);
    }
    EXPECT_TRUE(wasHidden);
    EXPECT_TRUE(labelWasShown);
    EXPECT_TRUE(IsShown(ids::kFindTextEdit));
}

TEST_F(DialogWindow, AFindControlThatFindsNoRoomBesideTheStripHidesWhereverTheStripStands)
{
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        OpenDialog();
        Resize(1200, 500);
        auto* const strip = Node<UI_Node>(ids::kSeparateProcess).UI_GetParentNode();
        for (const char* const id : {ids::kFindStaticText, ids::kFindTextEdit}) {
            SCOPED_TRACE(id);
            const float left = Node<UI_Node>(id).UI_GetLocalRectF(true).left;
            const float whole = strip->UI_GetParentNode()->UI_GetLocalRectF(false).width;
            for (const float end : {whole - 60, left - 90}) {
                auto frame = strip->UI_GetLocalRectF(true);
                frame.left = 200;
                frame.width = end - frame.left;
                strip->UI_SetLocalRectF(frame);
                Resize(Window().width(), Window().height() + 1);
                EXPECT_EQ(Node<UI_Node>(id).UI_GetLocalRectF(true).left, left);
                EXPECT_EQ(strip->UI_GetLocalRectF(true), frame);
                EXPECT_EQ(IsShown(id), left > end);
            }
        }
        CloseDialog();
    }
}

TEST_F(DialogWindow, NothingButItsSizeDecidesWhichControlsOfTheToolStripShow)
{
    const std::vector<const char*> controls = {ids::kEnableAllButton, ids::kDisableAllButton,
                                               ids::kFindStaticText, ids::kFindTextEdit};
    AddManyPlugins(50);
    OpenDialog();
    Resize(1400, 500);
    for (const char* const id : controls) {
        ASSERT_TRUE(IsShown(id)) << id;
        Node<UI_Node>(id).UI_Show(false);
    }
    const auto expectAllHidden = [&](const char* after) {
        HandleEvents();
        for (const char* const id : controls)
            EXPECT_FALSE(IsShown(id)) << id << " after " << after;
    };
    TheRegistry().GetPluginInfosChangedSignal()();
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/first"});
    expectAllHidden("signals");
    PressAt(*CheckboxOf(L"plugin000"), 7, 7);
    PluginList().ScrollToRow(PluginList().GetRowAt(49).get());
    PluginList().GetHeaderRow()->SetColumnWidth(2, 300);
    expectAllHidden("changes of the list");
    Node<zetui::controls::UI_Checkbox>(ids::kSeparateProcess).SetValue(0);
    Press(ids::kUpdateButton);
    expectAllHidden("a scan");
    dialog->UI_Show(false);
    dialog->UI_Show(true);
    Window().move(Window().pos() + QPoint(10, 10));
    expectAllHidden("showing it again elsewhere");
    Resize(1401, 500);
    for (const char* const id : controls)
        EXPECT_TRUE(IsShown(id)) << id;
}

TEST_F(DialogWindow, TheListsGrowWithTheWindow)
{
    OpenDialog();
    const QSize plugins = WidgetOf(PluginList()).size();
    const QSize folders = WidgetOf(FolderList()).size();
    const QSize window = Window().size();
    Resize(window.width() + 200, window.height() + 100);
    EXPECT_EQ(WidgetOf(PluginList()).size(), plugins + QSize(200, 100));
    EXPECT_EQ(WidgetOf(FolderList()).size(), folders + QSize(200, 0));
}

} // namespace
} // namespace zetaudiopluginhostui
