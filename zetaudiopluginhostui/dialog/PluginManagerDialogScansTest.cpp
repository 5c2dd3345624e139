// These tests scan from the manager dialog, with the real scanner and real modules.
#include <stdexcept>

#include <QAccessible>
#include <QLineEdit>
#include <QTableView>
#include <gmock/gmock.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/string/Utf.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/drawing/CellDrawing.h"
#include "dialog/list/PluginListText.h"
#include "testing/DialogScansFixture.h"
#include "testing/FillCount.h"
#include "testing/SendMessage.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::Not;
using zettesting::ToWide;
using zetui::controls::UI_Checkbox;
using zetui::ui::UI_Node;

using DialogScans = DialogScansFixture;

/// What a screen reader reads where the list has no rows.
std::string SaidInstead(QWidget& list)
{
    return QAccessible::queryAccessibleInterface(&list)->text(QAccessible::Description).toStdString();
}

TEST_F(DialogScans, AScanFillsTheListFitsItsColumnsAndScrollsToTheTop)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    BanManyFiles(60);
    const std::wstring path = Copy(
        "good/vst2_effect", "effect with a name that is far wider than a column is when the dialog opens");
    OpenDialog();
    PluginList().GetHeaderRow()->SetColumnWidth(kColumnType, 99);
    PluginList().GetHeaderRow()->SetColumnWidth(kColumnName, 333);
    ScrollToTheEnd();
    ASSERT_FALSE(IsAtItsTop());
    FillCount count(WidgetOf(PluginList()));
    Press(ids::kUpdateButton);
    EXPECT_EQ(count.Fills(), 1);
    EXPECT_EQ(shown->progressDialogs, 1);
    EXPECT_TRUE(WereShownForTheDialog(1));
    EXPECT_EQ(PluginList().GetRowCount(), 61);
    EXPECT_EQ(Names().front(), NameOfOnlyPlugin());
    EXPECT_NE(Width(kColumnName), 333);
    EXPECT_GE(Width(kColumnPath), zetui::pixmill::GetTextWidth(GetCellFont(), path));
    EXPECT_EQ(Width(kColumnType), 99) << "is not fitted";
    EXPECT_TRUE(IsAtItsTop());
    EXPECT_TRUE(RegistryFile().Exists());
    EXPECT_TRUE(Node<UI_Node>(ids::kEnableAllButton).UI_IsEnabled());
    EXPECT_TRUE(Node<UI_Node>(ids::kDisableAllButton).UI_IsEnabled());
}

TEST_F(DialogScans, AnEmptyListSaysThatItIsBeingScannedForAndWithAFilterThatNothingMatches)
{
    const auto saidInstead = [this] { return SaidInstead(WidgetOf(PluginList())); };
    const std::wstring effect = Copy("good/vst2_effect", "effect");
    OpenDialog();
    EXPECT_EQ(saidInstead(), "No plug-ins yet. Scan to find those in your folders.");
    std::string during;
    shown->onProgress = [&] { during = saidInstead(); };
    Press(ids::kUpdateButton);
    EXPECT_EQ(during, "Scanning for plug-ins...");
    EXPECT_EQ(saidInstead(), "");
    TypeIntoFindBox("no such");
    EXPECT_EQ(saidInstead(), "No plug-in matches the filter.");
    Press(ids::kUpdateButton);
    EXPECT_EQ(during, "No plug-in matches the filter.");
    FindBox().clear();
    std::filesystem::remove(effect);
    Press(ids::kUpdateButton);
    EXPECT_EQ(saidInstead(), "No plug-ins yet. Scan to find those in your folders.") << "it is over";
}

TEST_F(DialogScans, AScanSavesWhatWasChosenBeforeItSoThatCancelTakesBackOnlyLaterChanges)
{
    Copy("good/vst2_effect", "effect");
    OpenDialog();
    Press(ids::kUpdateButton);
    Press(ids::kDisableAllButton);
    Press(ids::kUpdateButton);
    Press(ids::kEnableAllButton);
    Registry saved;
    ASSERT_TRUE(saved.LoadConfiguration(RegistryFile()));
    ASSERT_EQ(saved.RecordCount(), 1u);
    EXPECT_FALSE(saved.AllRecords().front()->IsEnabled());
    EXPECT_TRUE(TheRegistry().AllRecords().front()->IsEnabled());
}

TEST_F(DialogScans, AScanTakesOutWhatIsNotThereAnyMore)
{
    AddManyPlugins(3);
    Copy("good/vst2_effect", "effect");
    OpenDialog();
    Press(ids::kUpdateButton);
    EXPECT_THAT(Names(), ElementsAre(NameOfOnlyPlugin()));
}

TEST_F(DialogScans, ABoxThatIsNeitherOnNorOffCountsAsOff)
{
    Copy("good/vst2_effect", "effect");
    OpenDialog();
    Press(ids::kUpdateButton);
    ASSERT_EQ(PluginList().GetRowCount(), 1);
    const Info first = *TheRegistry().PluginInfoBegin();
    auto& rescanExisting = Node<UI_Checkbox>(ids::kRescanExisting);
    rescanExisting.SetValue(UI_Checkbox::kMixed);
    Press(ids::kUpdateButton);
    EXPECT_EQ(*TheRegistry().PluginInfoBegin(), first) << "it was not scanned again";

    // Without a scanner, a plug-in can be scanned in this process only.
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    Node<UI_Checkbox>(ids::kSeparateProcess).SetValue(UI_Checkbox::kMixed);
    rescanExisting.SetValue(UI_Checkbox::kChecked);
    Press(ids::kUpdateButton);
    ASSERT_EQ(PluginList().GetRowCount(), 1);
    EXPECT_NE(*TheRegistry().PluginInfoBegin(), first);
    CloseDialog();
    Ban(first->GetLocator().GetPath());
    OpenDialog();
    Node<UI_Checkbox>(ids::kSeparateProcess).SetValue(UI_Checkbox::kMixed);
    Press(*ReloadButtonOf(Names().front()));
    EXPECT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working"));
}

TEST_F(DialogScans, AnErrorOfTheHostsOwnComesOutOfTheScan)
{
    Copy("good/vst2_effect", "effect");
    OpenDialog();
    const zetcore::events::ScopedConnection connection =
        TheRegistry().GetPluginInfosChangedSignal().Connect([] { throw std::range_error("of the host"); });
    auto& update = Node<zetui::controls::UI_TextButton>(ids::kUpdateButton);
    zetui::ui::UI_ButtonChangedMessage message(&update);
    EXPECT_THROW(SendMessage::Changed(update, message), std::range_error);
    EXPECT_EQ(SaidInstead(WidgetOf(PluginList())), "No plug-ins yet. Scan to find those in your folders.")
        << "no scan runs any more";
}

TEST_F(DialogScans, KnownPluginsAreScannedAgainOnlyWhenThatIsChosen)
{
    Copy("good/vst2_effect", "effect");
    OpenDialog();
    Press(ids::kUpdateButton);
    ASSERT_EQ(PluginList().GetRowCount(), 1);
    const Info first = *TheRegistry().PluginInfoBegin();
    Press(ids::kUpdateButton);
    EXPECT_EQ(*TheRegistry().PluginInfoBegin(), first);
    first->SetEnabled(false);
    PressAt(Node<UI_Node>(ids::kRescanExisting), 7, 7);
    Press(ids::kUpdateButton);
    ASSERT_EQ(PluginList().GetRowCount(), 1);
    EXPECT_NE(*TheRegistry().PluginInfoBegin(), first);
    EXPECT_FALSE((*TheRegistry().PluginInfoBegin())->IsEnabled()) << "the user's choice stays";
}

TEST_F(DialogScans, PluginsOfOneFileAreRowsThatAreSwitchedOneByOne)
{
    TheRegistry()
        .GetPluginTechnology(zetaudiofilterhost::TechnologyType::CLAP)
        ->AddPluginDirectories({ToWide(plugins)});
    Copy("good/clap_several", "several");
    OpenDialog();
    EXPECT_THAT(Folders(), ElementsAre(ToWide(plugins))) << "the folders of VST plug-ins only";
    Press(ids::kUpdateButton);
    const std::wstring hall = L"Cairn Hall", organ = L"Cairn Org\u00E3o \u2602";
    EXPECT_THAT(Names(), ElementsAre(hall, organ));
    EXPECT_THAT(ColumnTexts(kColumnType), ElementsAre(L"CLAP", L"CLAP"));
    PressAt(*CheckboxOf(hall), 7, 7);
    PressAt(Node<UI_Node>(ids::kRescanExisting), 7, 7);
    Press(ids::kUpdateButton);
    EXPECT_THAT(Names(), ElementsAre(hall, organ));
    EXPECT_FALSE(CheckboxOf(hall)->IsChecked());
    EXPECT_TRUE(CheckboxOf(organ)->IsChecked());
}

TEST_F(DialogScans, APluginThatCrashesTheScannerIsListedAsBannedAndTheOthersWork)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    Copy("good/vst2_effect", "effect");
    Copy("bad/crash_in_entry", "crashing");
    OpenDialog();
    Press(ids::kUpdateButton);
    EXPECT_EQ(PluginList().GetRowCount(), 2);
    EXPECT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working", L"Not Working"));
    ASSERT_TRUE(AnythingIsBanned());
    const auto& view = dynamic_cast<QTableView&>(WidgetOf(PluginList()));
    const QString tooltip = view.model()->index(1, kStatusCell).data(Qt::ToolTipRole).toString();
    EXPECT_NE(tooltip, "");
}

TEST_F(DialogScans, ScansAndReloadsInThisProcessWhenASeparateOneIsNotChosen)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    const std::wstring path = Copy("good/vst2_effect", "effect");
    // There is no scanner in this folder.
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    OpenDialog();
    Press(ids::kUpdateButton);
    ASSERT_EQ(PluginList().GetRowCount(), 0);
    PressAt(Node<UI_Node>(ids::kSeparateProcess), 7, 7);
    ASSERT_FALSE(Node<UI_Checkbox>(ids::kSeparateProcess).IsChecked());
    Press(ids::kUpdateButton);
    EXPECT_EQ(PluginList().GetRowCount(), 1);
    CloseDialog();
    Ban(path);
    OpenDialog();
    PressAt(Node<UI_Node>(ids::kSeparateProcess), 7, 7);
    Press(*ReloadButtonOf(Names().front()));
    EXPECT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working"));
}

TEST_F(DialogScans, TheScannerIsToldBothFeatureSwitches)
{
    const std::filesystem::path scripts = folder / "scripts";
    std::filesystem::create_directory(scripts);
    const zettesting::ScopedEnvironment scriptFolder("ZET_FAKE_SCANNER", scripts.string());
    zetcore::filesupport::commondirs::SetExecutableDir(zetcore::string::UTF8to16(ZET_FAKE_SCANNER_FOLDER));
    const std::wstring path = Copy("good/vst2_effect", "effect");
    Ban(path);
    OpenDialog();
    const std::wstring row = Names().front();
    for (int launch = 1; launch <= 3; ++launch) {
        zettesting::WriteAll(scripts / ("script." + std::to_string(launch)),
                             "listen\nok\nok\nreply {\"value\":{\"locator\":\"\",\"subcomponent\":\"\","
                             "\"progress\":0,\"total\":0,\"continue\":false}}\n");
        if (launch == 2)
            zetcore::debug::DebugDatabase::Instance().SetEntry(
                "zetaudiofilterhost.EnableWavesVST2ShellSkipping", "false");
        if (launch == 3)
            Press(*ReloadButtonOf(row));
        else
            Press(ids::kUpdateButton);
        // The two flags say that shells are not to be skipped, and that effects are scanned quickly.
        EXPECT_THAT(zettesting::ReadAll(scripts / ("log." + std::to_string(launch))),
                    ::testing::HasSubstr(launch == 1 ? ",false,true]" : ",true,true]"));
    }
    const std::string reload = zettesting::ReadAll(scripts / "log.3");
    const std::string begin = "BeginScanForPlugins [[\"VST|";
    const std::size_t start = reload.find(begin);
    ASSERT_NE(start, std::string::npos) << reload;
    const std::string only =
        reload.substr(start + begin.size(), reload.find("]]", start) - start - begin.size());
    EXPECT_THAT(only, ::testing::HasSubstr("effect"));
    EXPECT_THAT(only, ::testing::EndsWith("\""));
    EXPECT_THAT(only, Not(::testing::HasSubstr(","))) << "one plug-in";
}

} // namespace
} // namespace zetaudiopluginhostui
