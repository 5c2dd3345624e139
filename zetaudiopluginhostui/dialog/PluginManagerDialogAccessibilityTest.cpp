// These tests go through the manager dialog as a screen reader does.
#include <functional>
#include <string>
#include <vector>

#include <QAccessible>
#include <QTableView>
#include <gmock/gmock.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using DialogAccessibility = DialogFixture;

QAccessibleInterface& Accessible(QWidget& widget)
{
    QAccessibleInterface* const found = QAccessible::queryAccessibleInterface(&widget);
    if (!found)
        throw std::runtime_error("a screen reader does not see it");
    return *found;
}

std::string Name(QAccessibleInterface& interface)
{
    return interface.text(QAccessible::Name).toStdString();
}

TEST_F(DialogAccessibility, TheListTellsItsTitlesItsCellsAndItsCheckboxes)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    AddPlugin(L"Chorus", L"/a/1.so", L"2.0");
    AddPlugin(L"Delay", L"/a/2.so")->SetEnabled(false);
    Ban(L"/a/bad.so");
    OpenDialog();
    QAccessibleInterface& list = Accessible(WidgetOf(PluginList()));
    EXPECT_EQ(list.role(), QAccessible::Table);
    QAccessibleTableInterface* const table = list.tableInterface();
    ASSERT_TRUE(table);
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->columnCount(), 6);
    const char* const titles[] = {"Enabled", "Name", "Type", "Status", "Version", "Path"};
    for (int column = 0; column < 6; ++column)
        EXPECT_EQ(table->columnDescription(column).toStdString(), titles[column]);
    EXPECT_EQ(Name(*table->cellAt(0, 1)), "Name: Chorus");
    EXPECT_EQ(Name(*table->cellAt(0, 3)), "Status: Working");
    EXPECT_EQ(Name(*table->cellAt(0, 4)), "Version: 2.0");
    EXPECT_EQ(Name(*table->cellAt(1, 0)), "Enabled: off, Delay");
    EXPECT_EQ(Name(*table->cellAt(2, 1)), "Name: bad.so");
    EXPECT_EQ(Name(*table->cellAt(2, 3)), "Status: Not Working");

    QAccessibleInterface& checkbox = Accessible(WidgetOf(*CheckboxOf(L"Chorus")));
    EXPECT_EQ(checkbox.role(), QAccessible::CheckBox);
    EXPECT_EQ(Name(checkbox), "Enable Chorus");
    EXPECT_TRUE(checkbox.state().checked);
    EXPECT_FALSE(Accessible(WidgetOf(*CheckboxOf(L"Delay"))).state().checked);
    EXPECT_TRUE(Accessible(WidgetOf(*CheckboxOf(L"bad.so"))).state().disabled);
    EXPECT_EQ(Accessible(WidgetOf(*ReloadButtonOf(L"bad.so"))).role(), QAccessible::Button);
}

TEST_F(DialogAccessibility, TitlesAndCellsHaveTheirRolesAndStates)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    AddPlugin(L"Chorus", L"/a/1.so");
    AddPlugin(L"Delay", L"/a/2.so")->SetEnabled(false);
    Ban(L"/a/bad.so", "It divided by zero.");
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/first"});
    OpenDialog();
    QAccessibleInterface& list = Accessible(WidgetOf(PluginList()));
    std::vector<std::string> titles;
    for (int child = 0; child < list.childCount(); ++child) {
        if (list.child(child)->role() == QAccessible::ColumnHeader)
            titles.push_back(Name(*list.child(child)));
    }
    EXPECT_THAT(titles, ::testing::ElementsAre("Enabled", "Name", "Type", "Status", "Version", "Path"));
    QAccessibleTableInterface& table = *list.tableInterface();
    EXPECT_EQ(table.cellAt(0, 1)->role(), QAccessible::Cell);
    EXPECT_EQ(table.rowDescription(1), "Delay");
    EXPECT_TRUE(table.cellAt(0, 0)->state().checked);
    EXPECT_FALSE(table.cellAt(1, 0)->state().checked);
    EXPECT_FALSE(table.cellAt(2, 0)->state().checked);
    for (const int position : {0, 3})
        EXPECT_THAT(table.cellAt(2, position)->text(QAccessible::Description).toStdString(),
                    ::testing::HasSubstr("It divided by zero."));
    EXPECT_EQ(table.cellAt(0, 0)->text(QAccessible::Description), "");
    EXPECT_FALSE(table.cellAt(1, 1)->state().selected);
    PluginList().SelectRow(RowOf(L"Delay").get(), true);
    EXPECT_TRUE(table.cellAt(1, 1)->state().selected);

    QAccessibleTableInterface& folders = *Accessible(WidgetOf(FolderList())).tableInterface();
    ASSERT_EQ(folders.rowCount(), 1);
    EXPECT_EQ(folders.cellAt(0, 0)->role(), QAccessible::Cell);
    EXPECT_EQ(Name(*folders.cellAt(0, 0)), std::filesystem::path("/first").make_preferred().string());
}

TEST_F(DialogAccessibility, ACellWorksItsControlEvenOutOfSight)
{
    AddManyPlugins(300);
    Ban(L"/z/zzz_banned.so");
    OpenDialog();
    QAccessibleTableInterface& table = *Accessible(WidgetOf(PluginList())).tableInterface();
    QAccessibleInterface& far = *table.cellAt(250, 0);
    ASSERT_TRUE(far.state().offscreen);
    EXPECT_TRUE(far.state().checked);
    EXPECT_EQ(Name(far), "Enabled: on, plugin250");
    far.actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(Name(far), "Enabled: off, plugin250");
    EXPECT_FALSE(far.state().offscreen) << "the user sees what was done";
    EXPECT_EQ(far.childCount(), 1);
    const auto switchedOff = [] {
        std::vector<std::wstring> names;
        for (auto info = TheRegistry().PluginInfoBegin(); info != TheRegistry().PluginInfoEnd(); ++info) {
            if (!(*info)->IsEnabled())
                names.push_back((*info)->GetName());
        }
        return names;
    };
    EXPECT_THAT(switchedOff(), ::testing::ElementsAre(L"plugin250"));
    PluginList().ScrollToTop(true);
    HandleEvents();
    EXPECT_TRUE(far.state().offscreen);
    EXPECT_FALSE(far.state().checked);
    far.actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_THAT(switchedOff(), ::testing::IsEmpty());

    QAccessibleInterface& bannedBox = *table.cellAt(300, 0);
    EXPECT_EQ(Name(bannedBox), "Enabled: off, zzz_banned.so");
    EXPECT_FALSE(
        bannedBox.actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    EXPECT_EQ(table.cellAt(300, 3)->actionInterface()->actionNames().value(0),
              QAccessibleActionInterface::pressAction());
    EXPECT_NE(table.cellAt(0, 3)->actionInterface()->actionNames().value(0),
              QAccessibleActionInterface::pressAction())
        << "a plug-in that works has no Reload button";
}

TEST_F(DialogAccessibility, TheWindowIsReadInTheOrderInWhichItIsSeen)
{
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        OpenDialog();
        std::vector<std::string> names;
        const std::function<void(QAccessibleInterface&)> read = [&](QAccessibleInterface& each) {
            if (const std::string name = Name(each); !name.empty() && each.childCount() == 0)
                names.push_back(name);
            else if (each.role() == QAccessible::Table || each.role() == QAccessible::EditableText)
                names.push_back(name);
            else
                for (int child = 0; child < each.childCount(); ++child)
                    read(*each.child(child));
        };
        read(Accessible(Window()));
        // This label is hidden where it has no room.
        std::erase(names, "Filter:");
        EXPECT_THAT(names, ::testing::ElementsAre(
                               "VST Plug-In Folders:", "Add...", "Remove", "Default",
                               "VST Plug-In Folders:", "Available Plug-Ins:", "Scan for Plug-Ins",
                               "Rescan existing plug-ins", "Enable All", "Disable All", "Filter plug-ins",
                               "Available Plug-Ins:", "Details", "OK", "Cancel"));
        CloseDialog();
    }
}

TEST_F(DialogAccessibility, NoDescriptionSaysTheNameAgain)
{
    AddPlugin(L"Chorus", L"/a/1.so");
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        OpenDialog();
        TypeIntoFindBox("o");
        int read = 0;
        const std::function<void(QAccessibleInterface&)> check = [&](QAccessibleInterface& each) {
            const std::string name = Name(each);
            ++read;
            EXPECT_TRUE(name.empty() || each.text(QAccessible::Description).toStdString() != name) << name;
            for (int child = 0; child < each.childCount(); ++child)
                check(*each.child(child));
        };
        check(Accessible(Window()));
        EXPECT_GT(read, 20);
        CloseDialog();
    }
}

TEST_F(DialogAccessibility, ControlsHaveTheirRolesAndStates)
{
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        settings = {};
        OpenDialog();
        const auto control = [this](const char* id) -> QAccessibleInterface& {
            return Accessible(WidgetOf(Node<zetui::ui::UI_Node>(id)));
        };
        for (const char* const id : {ids::kUpdateButton, ids::kEnableAllButton, ids::kDisableAllButton,
                                     ids::kAddDirectoryButton, ids::kRemoveDirectoryButton,
                                     ids::kDefaultDirectoriesButton, ids::kOKButton, ids::kCancelButton})
            EXPECT_EQ(control(id).role(), QAccessible::Button) << id;
        EXPECT_TRUE(control(ids::kRemoveDirectoryButton).state().disabled);
        EXPECT_TRUE(control(ids::kEnableAllButton).state().disabled) << "there is no plug-in";
        EXPECT_FALSE(control(ids::kUpdateButton).state().disabled);
        EXPECT_TRUE(control(ids::kUpdateButton).state().focusable);
        EXPECT_EQ(control(ids::kRescanExisting).role(), QAccessible::CheckBox);
        EXPECT_FALSE(control(ids::kRescanExisting).state().checked);
        PressAt(Node<zetui::ui::UI_Node>(ids::kRescanExisting), 7, 7);
        EXPECT_TRUE(control(ids::kRescanExisting).state().checked);
        EXPECT_TRUE(control(ids::kSeparateProcess).state().invisible);
        EXPECT_EQ(control(ids::kFindTextEdit).role(), QAccessible::EditableText);
        EXPECT_EQ(control(ids::kPluginList).role(), QAccessible::Table);
        EXPECT_EQ(Name(control(ids::kPluginList)), "Available Plug-Ins:");
        EXPECT_EQ(Name(control(ids::kDirectoryList)), "VST Plug-In Folders:");
        CloseDialog();
    }
}

TEST_F(DialogAccessibility, EveryControlHasAName)
{
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        OpenDialog();
        for (const char* const id :
             {ids::kUpdateButton, ids::kEnableAllButton, ids::kDisableAllButton, ids::kAddDirectoryButton,
              ids::kRemoveDirectoryButton, ids::kDefaultDirectoriesButton, ids::kOKButton, ids::kCancelButton,
              ids::kRescanExisting, ids::kSeparateProcess, ids::kFindTextEdit, ids::kPluginList,
              ids::kDirectoryList})
            EXPECT_NE(Name(Accessible(WidgetOf(Node<zetui::ui::UI_Node>(id)))), "") << id;
        CloseDialog();
    }
}

} // namespace
} // namespace zetaudiopluginhostui
