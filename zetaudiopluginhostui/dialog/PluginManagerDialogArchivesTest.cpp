// These tests open the manager dialog with layout archives that a host's designer has changed.
#include <string>

#include <QLineEdit>
#include <gmock/gmock.h>
#include <zetcore/config/ThrowError.h>
#include <zetcore/debug/DebugDatabase.h>

#include "dialog/PluginManagerIds.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetui::skins::Skin;
using zetui::ui::UI_Node;

constexpr char viewAdapter[] = "zetui::ui::UI_SubView";
constexpr char showExternalKey[] = "AudioPluginManager.ShowExternalCheckBox";

class DialogOfAnotherArchive : public DialogFixture, public testing::WithParamInterface<Skin>
{
  protected:
    DialogOfAnotherArchive() : DialogFixture(GetParam()) { TakeANewArchive(); }

    void TakeANewArchive()
    {
        CloseDialog();
        archive = std::make_unique<DialogArchive>();
    }
    /// Shortens texts, so that no control of the plug-ins' tool strips needs more room than its archive
    /// gives.
    void TakeAnArchiveWithoutTexts()
    {
        TakeANewArchive();
        for (const char* const id : {ids::kUpdateButton, ids::kRescanExisting, ids::kEnableAllButton,
                                     ids::kDisableAllButton, ids::kSeparateProcess, ids::kFindStaticText})
            archive->SetText(id, "");
    }
    UI_Node::RectF Frame(const char* id) const { return Node<UI_Node>(id).UI_GetLocalRectF(true); }
    UI_Node::RectF StripFrame() const
    {
        return Node<UI_Node>(ids::kSeparateProcess).UI_GetParentNode()->UI_GetLocalRectF(true);
    }

    const bool v7 = GetParam() == Skin::V7;
    const float archivedBoxLeft = v7 ? 514 : 525;
    const float archivedBoxWidth = v7 ? 192 : 173;
};

TEST_P(DialogOfAnotherArchive, NeedsBothOptionCheckboxes)
{
    for (const char* const id : {ids::kRescanExisting, ids::kSeparateProcess}) {
        for (const bool absent : {true, false}) {
            SCOPED_TRACE(id);
            TakeANewArchive();
            if (absent)
                archive->Remove(id);
            else
                archive->SetClass(id, "zetui::controls::UI_TextButton", "");
            settings.rescanExisting = true;
            try {
                MakeDialog();
                ADD_FAILURE() << "no error";
            } catch (const zetcore::config::error& error) {
                EXPECT_EQ(std::string(error.what()), "Invalid type conversion.");
                EXPECT_EQ(error.Level(), 1);
            }
            HandleEvents();
            EXPECT_TRUE(settings.rescanExisting) << "there was no dialog that could have changed it";
        }
    }
}

TEST_P(DialogOfAnotherArchive, TheFindControlsTakeTheArchivedRoomOfTheHiddenCheckbox)
{
    TakeAnArchiveWithoutTexts();
    MakeDialog();
    EXPECT_EQ(Frame(ids::kSeparateProcess).width, 49);
    EXPECT_EQ(StripFrame().left, v7 ? 0 : 4);
    EXPECT_EQ(StripFrame().width, 450 - 49);
    EXPECT_EQ(Frame(ids::kFindStaticText).left, 397) << "the checkbox's own number, in the strip around";
    EXPECT_EQ(Frame(ids::kFindStaticText).width, 53);
    EXPECT_EQ(Frame(ids::kFindTextEdit).left, archivedBoxLeft - 49);
    EXPECT_EQ(Frame(ids::kFindTextEdit).width, archivedBoxWidth + 49);

    TakeAnArchiveWithoutTexts();
    archive->Remove(ids::kFindStaticText);
    MakeDialog();
    EXPECT_EQ(StripFrame().width, 450 - 49);
    EXPECT_EQ(Frame(ids::kFindTextEdit).left, archivedBoxLeft - 49);
    EXPECT_EQ(Frame(ids::kFindTextEdit).width, archivedBoxWidth + 49);

    TakeAnArchiveWithoutTexts();
    archive->Remove(ids::kFindTextEdit);
    MakeDialog();
    EXPECT_EQ(StripFrame().width, 450) << "without a box there is nothing that could take the room";
    EXPECT_EQ(Frame(ids::kFindStaticText).left, v7 ? 456 : 463);
}

TEST_P(DialogOfAnotherArchive, TheRoomGoesByTheCheckboxAndNotByTheSwitch)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry(showExternalKey, "true");
    TakeAnArchiveWithoutTexts();
    MakeDialog();
    ASSERT_TRUE(Node<UI_Node>(ids::kSeparateProcess).UI_IsShown());
    EXPECT_EQ(Frame(ids::kFindTextEdit).left, archivedBoxLeft);
    EXPECT_EQ(StripFrame().width, 450);

    TakeAnArchiveWithoutTexts();
    archive->SetVisible(ids::kSeparateProcess, false);
    MakeDialog();
    ASSERT_FALSE(Node<UI_Node>(ids::kSeparateProcess).UI_IsShown()) << "the switch only hides";
    EXPECT_EQ(Frame(ids::kFindTextEdit).left, archivedBoxLeft - 49);
    EXPECT_EQ(StripFrame().width, 450 - 49);
}

TEST_P(DialogOfAnotherArchive, AnArchivedFindTextFiltersFromTheStartAndIsNoChangeWhenItIsCommitted)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    archive->SetText(ids::kFindTextEdit, "two");
    OpenDialog();
    EXPECT_THAT(Names(), ::testing::ElementsAre(L"Two"));
    const auto checkbox = CheckboxOf(L"Two");
    FindBox().setFocus();
    WidgetOf(PluginList()).setFocus();
    HandleEvents();
    EXPECT_EQ(CheckboxOf(L"Two"), checkbox) << "a fill makes the widgets anew";
}

TEST_P(DialogOfAnotherArchive, OnlyTheExactClassNamesStandForTheDialogsOwnClasses)
{
    using zetui::controls::UI_MultiColumnTree;
    OpenDialog();
    EXPECT_TRUE(dynamic_cast<BoxView*>(TheDialog().GetNodeForID("VST2DirectoryTreeSection").get()));
    EXPECT_EQ(PluginList().GetRowHeight(), UI_MultiColumnTree::GetDefaultRowHeight());
    for (const char* const name : {"boxView", "BoxVie", "BoxView2", " BoxView"}) {
        SCOPED_TRACE(name);
        TakeANewArchive();
        archive->SetClass(ids::kPluginTreeSection, viewAdapter, name);
        OpenDialog();
        EXPECT_FALSE(dynamic_cast<BoxView*>(&Node<UI_Node>(ids::kPluginTreeSection)));
    }
    for (const char* const name :
         {"pluginMultiColumnTree", "PluginMultiColumnTre", "PluginMultiColumnTrees", "UI_MultiColumnTree"}) {
        SCOPED_TRACE(name);
        TakeANewArchive();
        archive->SetClass(ids::kPluginList, "zetui::controls::UI_MultiColumnTree", name);
        OpenDialog();
        EXPECT_FALSE(dynamic_cast<PluginMultiColumnTree*>(&Node<UI_MultiColumnTree>(ids::kPluginList)));
    }
    for (const char* const name : {"UI_searchBox", "UI_SearchBo", "UI_SearchBox2", "SearchBox"}) {
        SCOPED_TRACE(name);
        TakeANewArchive();
        archive->SetClass(ids::kFindTextEdit, "zetui::controls::UI_ClearButtonTextEdit", name);
        OpenDialog();
        EXPECT_FALSE(dynamic_cast<zetui::controls::UI_SearchBox*>(
            &Node<zetui::controls::UI_ClearButtonTextEdit>(ids::kFindTextEdit)));
    }
}

INSTANTIATE_TEST_SUITE_P(Skins, DialogOfAnotherArchive, testing::Values(Skin::Classic, Skin::V7),
                         [](const auto& skin) {
                             return std::string(skin.param == Skin::Classic ? "Classic" : "V7");
                         });

} // namespace
} // namespace zetaudiopluginhostui
