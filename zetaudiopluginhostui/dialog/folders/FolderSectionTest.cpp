#include "dialog/folders/FolderSection.h"

#include <QTableView>
#include <gmock/gmock.h>
#include <zetcore/utility/NullPtrException.h>

#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zettesting::ToWide;
using zetui::controls::UI_TextButton;
using zetui::utility::MakeIntrusive;

/// The section with its list and its button, and without a dialog.
class FolderSectionAlone : public DialogFixture
{
  protected:
    FolderSectionAlone() { AddFolders({L"/one", L"/two", L"/three"}); }
    static void AddFolders(const std::vector<std::wstring>& paths)
    {
        TheRegistry().GetPluginTechnology(2)->AddPluginDirectories(paths);
    }
    std::vector<std::wstring> ShownFolders() const
    {
        std::vector<std::wstring> folders;
        for (int place = 0; place < list->GetRowCount(); ++place)
            folders.push_back(section.FolderOf(list->GetRowAt(place).get()));
        return folders;
    }

    const Ptr<FolderSection::Tree> list = MakeIntrusive<FolderSection::Tree>(1U, 20.0F);
    const Ptr<UI_TextButton> remove = MakeIntrusive<UI_TextButton>();
    FolderSection section{list, remove};
};

TEST_F(FolderSectionAlone, ShowsTheFoldersThatThereAreWhenItIsFilled)
{
    EXPECT_THAT(ShownFolders(), IsEmpty());
    section.Fill();
    EXPECT_THAT(ShownFolders(), ElementsAre(ToWide("/one"), ToWide("/two"), ToWide("/three")));
    const Ptr<Row> before = list->GetRowAt(0);
    TheRegistry().GetPluginTechnology(2)->RemovePluginDirectories({L"/one"});
    section.Fill();
    EXPECT_THAT(ShownFolders(), ElementsAre(ToWide("/two"), ToWide("/three")));
    EXPECT_EQ(section.FolderOf(before.get()), L"") << "a row of an earlier fill is no folder's";
    EXPECT_EQ(section.FolderOf(nullptr), L"");
}

TEST_F(FolderSectionAlone, FoldersCanBeRemovedWhileAnyIsSelected)
{
    EXPECT_FALSE(remove->UI_IsEnabled());
    section.Fill();
    list->SelectRow(list->GetRowAt(2).get(), true);
    list->SelectRow(list->GetRowAt(0).get(), true);
    section.UpdateRemoveButton();
    EXPECT_TRUE(remove->UI_IsEnabled());
    section.RemoveSelectedFolders();
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide("/two")));
    list->DeselectAll();
    section.UpdateRemoveButton();
    EXPECT_FALSE(remove->UI_IsEnabled());
    section.RemoveSelectedFolders();
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide("/two")));
}

TEST_F(FolderSectionAlone, OnlyFoldersAreDrawnAndOnSomething)
{
    section.Fill();
    const auto foreign = list->CreateAndAppendRow();
    EXPECT_NO_THROW(section.DrawCell(nullptr, foreign.get(), {}));
    EXPECT_THROW(section.DrawCell(nullptr, list->GetRowAt(0).get(), {}),
                 zetcore::utility::null_ptr_exception);
}

TEST_F(FolderSectionAlone, DoesWithoutListAndButton)
{
    FolderSection withoutList{nullptr, remove}, withoutButton{list, nullptr};
    withoutList.Fill();
    withoutList.UpdateRemoveButton();
    withoutList.RemoveSelectedFolders();
    withoutButton.Fill();
    list->SelectRow(list->GetRowAt(0).get(), true);
    withoutButton.UpdateRemoveButton();
    EXPECT_FALSE(remove->UI_IsEnabled());
    EXPECT_EQ(VstFolders().size(), 3u);
    withoutButton.RemoveSelectedFolders();
    EXPECT_EQ(VstFolders().size(), 2u);
}

} // namespace
} // namespace zetaudiopluginhostui
