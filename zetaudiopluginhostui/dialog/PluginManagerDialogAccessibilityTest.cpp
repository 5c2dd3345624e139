// These tests go through the manager dialog as a screen reader does.
#include <QAccessible>
#include <QTableView>
#include <gmock/gmock.h>

#include "dialog/PluginManagerIds.h"
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
    EXPECT_EQ(Name(*table->cellAt(0, 1)), "Chorus");
    EXPECT_EQ(Name(*table->cellAt(0, 3)), "Working");
    EXPECT_EQ(Name(*table->cellAt(0, 4)), "2.0");
    EXPECT_EQ(Name(*table->cellAt(1, 0)), "Disabled");
    EXPECT_EQ(Name(*table->cellAt(2, 1)), "bad.so");
    EXPECT_EQ(Name(*table->cellAt(2, 3)), "Not Working");

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
    EXPECT_NE(table.cellAt(2, 3)->text(QAccessible::Description).indexOf("It divided by zero."), -1);
    EXPECT_FALSE(table.cellAt(1, 1)->state().selected);
    PluginList().SelectRow(RowOf(L"Delay").get(), true);
    EXPECT_TRUE(table.cellAt(1, 1)->state().selected);

    QAccessibleTableInterface& folders = *Accessible(WidgetOf(FolderList())).tableInterface();
    ASSERT_EQ(folders.rowCount(), 1);
    EXPECT_EQ(folders.cellAt(0, 0)->role(), QAccessible::Cell);
    EXPECT_EQ(Name(*folders.cellAt(0, 0)), std::filesystem::path("/first").make_preferred().string());
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
