// These tests open the manager dialog with archives that lack an optional control, or have it of another
// class.
#include <string>

#include <QLineEdit>
#include <gmock/gmock.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zettesting/TemporaryFolder.h>
#include <zetui/dialogs/messagebox.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using zettesting::ToWide;
using zetui::controls::UI_Checkbox;
using zetui::skins::Skin;
using zetui::ui::UI_Node;

enum class Lack
{
    Absent,
    OfAnotherClass,
};

class DialogWithoutAControl : public DialogFixture, public testing::WithParamInterface<std::string>
{
  protected:
    bool Has(const char* id) const { return missing != id; }
    bool IsShown(const char* id) const { return Node<UI_Node>(id).UI_IsShown(); }

    void Open(Skin skin, Lack lack)
    {
        CloseDialog();
        ResetRegistry(TheRegistry());
        ResetBannedPlugins(TheBanned());
        zetui::skins::SetSkin(skin);
        archive = std::make_unique<DialogArchive>();
        if (lack == Lack::OfAnotherClass)
            archive->SetClass(missing, "zetui::ui::UI_SubView", "");
        else if (missing == ids::kPluginTreeSection)
            archive->Rename(missing, "what it holds stays");
        else
            archive->Remove(missing);
        one = AddPlugin(L"One", L"/a/1.so");
        two = AddPlugin(L"Two", L"/a/2.so");
        Ban(L"/a/bad.so");
        TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/first", L"/second"});
        settings = {};
        settings.sortColumn = kColumnName;
        OpenDialog();
        Resize(1600, 600);
    }

    void CheckFolders()
    {
        if (Has(ids::kDirectoryList)) {
            EXPECT_THAT(Folders(), ElementsAre(ToWide("/first"), ToWide("/second")));
            EXPECT_FALSE(FolderList().IsAnyRowSelected());
        }
        if (Has(ids::kRemoveDirectoryButton)) {
            EXPECT_FALSE(Node<UI_Node>(ids::kRemoveDirectoryButton).UI_IsEnabled());
        }
        if (Has(ids::kDirectoryList)) {
            FolderList().SelectRow(FolderList().GetRowAt(0).get(), true);
            HandleEvents();
        }
        if (Has(ids::kDirectoryList) && Has(ids::kRemoveDirectoryButton)) {
            Press(ids::kRemoveDirectoryButton);
            EXPECT_THAT(VstFolders(), ElementsAre(ToWide("/second")));
            EXPECT_THAT(Folders(), ElementsAre(ToWide("/second")));
        }
        if (Has(ids::kAddDirectoryButton)) {
            const std::filesystem::path real = folder / "new";
            std::filesystem::create_directory(real);
            shown->chosenFolder = ToWide(real);
            Press(ids::kAddDirectoryButton);
            EXPECT_THAT(VstFolders(), Contains(ToWide(real)));
        }
        if (Has(ids::kDefaultDirectoriesButton)) {
            shown->questions.clear();
            shown->answer = zetui::dialogs::messagebox::kNo;
            Press(ids::kDefaultDirectoriesButton);
            EXPECT_EQ(shown->questions.size(), 1u);
        }
    }

    void CheckPlugins()
    {
        if (Has(ids::kPluginList)) {
            EXPECT_THAT(Names(), ElementsAre(L"Two", L"One", L"bad.so"));
            EXPECT_TRUE(HasReloadButton(L"bad.so"));
            PressAt(*CheckboxOf(L"One"), 7, 7);
            EXPECT_FALSE(one->IsEnabled());
        }
        if (Has(ids::kDisableAllButton)) {
            Press(ids::kDisableAllButton);
            EXPECT_FALSE(one->IsEnabled() || two->IsEnabled());
        }
        if (Has(ids::kEnableAllButton)) {
            Press(ids::kEnableAllButton);
            EXPECT_TRUE(one->IsEnabled() && two->IsEnabled());
        }
        if (Has(ids::kFindTextEdit)) {
            TypeIntoFindBox("two");
            if (Has(ids::kPluginList)) {
                EXPECT_THAT(Names(), ElementsAre(L"Two"));
            }
        }
        if (!Has(ids::kPluginList)) {
            const zetui::ui::KeyboardEvent tab(9, false, false, false);
            EXPECT_FALSE(dialog->UI_DoPreKeyboardEvent(nullptr, tab));
        }
    }

    void CheckWhatHasRoom()
    {
        for (const int width : {1600, 1200, 400, 1600}) {
            SCOPED_TRACE(width);
            Resize(width, 600);
            // Without the section there is no edge that the buttons could cross.
            const bool wide = width > 400 || !Has(ids::kPluginTreeSection);
            for (const char* const id : {ids::kEnableAllButton, ids::kDisableAllButton}) {
                if (Has(id)) {
                    EXPECT_EQ(IsShown(id), wide) << id;
                }
            }
            const auto strip = Node<UI_Node>(ids::kSeparateProcess).UI_GetParentNode();
            const auto stripFrame = strip->UI_GetLocalRectF(true);
            for (const char* const id : {ids::kFindStaticText, ids::kFindTextEdit}) {
                if (!Has(id))
                    continue;
                const float left = Node<UI_Node>(id).UI_GetLocalRectF(true).left;
                EXPECT_EQ(IsShown(id), left > stripFrame.left + stripFrame.width) << id;
            }
        }
        for (const char* const id : {ids::kFindStaticText, ids::kFindTextEdit}) {
            if (Has(id)) {
                EXPECT_TRUE(IsShown(id)) << id;
            }
        }
    }

    void CheckScan()
    {
        int signals = 0;
        const zetcore::events::ScopedConnection connection =
            TheRegistry().GetPluginInfosChangedSignal().Connect([&signals] { ++signals; });
        Node<UI_Checkbox>(ids::kSeparateProcess).SetValue(UI_Checkbox::kUnchecked);
        if (!Has(ids::kUpdateButton))
            return;
        if (Has(ids::kFindTextEdit))
            FindBox().clear();
        Press(ids::kUpdateButton);
        EXPECT_EQ(signals, 1);
        if (Has(ids::kPluginList)) {
            EXPECT_THAT(Names(), ElementsAre(L"bad.so")) << "the files of the others are gone";
        }
    }

    void CheckEnd()
    {
        using zetui::dialogs::UI_DialogViewContainer;
        PressAt(Node<UI_Node>(ids::kRescanExisting), 7, 7);
        if (Has(ids::kPluginList))
            PluginList().GetHeaderRow()->SetSortColumn(kColumnPath);
        if (Has(ids::kOKButton)) {
            Press(ids::kOKButton);
            EXPECT_FALSE(dialog->UI_IsShown());
            EXPECT_EQ(dialog->GetResult(), UI_DialogViewContainer::kOK);
        }
        dialog->UI_Show(true);
        if (Has(ids::kCancelButton)) {
            Press(ids::kCancelButton);
            EXPECT_FALSE(dialog->UI_IsShown());
            EXPECT_EQ(dialog->GetResult(), UI_DialogViewContainer::kCancel);
        }
        CloseDialog();
        EXPECT_TRUE(settings.rescanExisting);
        EXPECT_EQ(settings.sortColumn, Has(ids::kPluginList) ? kColumnPath : kColumnName)
            << "without a list the saved sort stays";
        EXPECT_FALSE(settings.sortAscending);
    }

    const std::string missing = GetParam();
    Info one, two;
};

TEST_P(DialogWithoutAControl, DoesAllThatTheOthersAreFor)
{
    for (const Skin skin : zetui::skins::AllSkins()) {
        for (const Lack lack : {Lack::Absent, Lack::OfAnotherClass}) {
            SCOPED_TRACE(std::string(skin == Skin::V7 ? "V7" : "classic") +
                         (lack == Lack::Absent ? ", absent" : ", of another class"));
            Open(skin, lack);
            CheckWhatHasRoom();
            CheckFolders();
            CheckPlugins();
            CheckScan();
            CheckEnd();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Controls, DialogWithoutAControl,
                         testing::Values(ids::kPluginTreeSection, ids::kAddDirectoryButton,
                                         ids::kRemoveDirectoryButton, ids::kDirectoryList,
                                         ids::kDefaultDirectoriesButton, ids::kPluginList, ids::kOKButton,
                                         ids::kCancelButton, ids::kFindStaticText, ids::kFindTextEdit,
                                         ids::kUpdateButton, ids::kEnableAllButton, ids::kDisableAllButton),
                         [](const auto& control) { return control.param; });

} // namespace
} // namespace zetaudiopluginhostui
