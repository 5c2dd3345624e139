// The manager dialog's scans, with the real scanner and real modules.
#include <QTableView>
#include <gmock/gmock.h>
#include <zetcore/config/ClientName.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/filesupport/CommonDirs.h>
#include <zetcore/filesupport/Dir.h>
#include <zetcore/filesupport/File.h>
#include <zetcore/string/Utf.h>
#include <zettesting/TestPlugins.h>

#include "dialog/PluginListText.h"
#include "dialog/PluginManagerIds.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using zettesting::ToWide;
using zetui::controls::UI_Checkbox;
using zetui::ui::UI_Node;

class DialogScans : public DialogFixture
{
  protected:
    DialogScans()
    {
        std::filesystem::create_directory(plugins);
        TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({ToWide(plugins)});
    }
    std::wstring Copy(const char* plugin, const char* title) const
    {
        return ToWide(zettesting::CopyTestPlugin(plugin, plugins, title));
    }
    zetcore::filesupport::File RegistryFile() const
    {
        return {zetcore::filesupport::Dir::PrefDir(), Registry::GetSettingsFileName()};
    }
    static bool AnythingIsBanned() { return TheBanned().BannedBegin() != TheBanned().BannedEnd(); }
    std::wstring NameOfOnlyPlugin() const
    {
        return TheRegistry().PluginInfoBegin() == TheRegistry().PluginInfoEnd()
                   ? std::wstring()
                   : (*TheRegistry().PluginInfoBegin())->GetName();
    }
    /// Under a file, where nothing can be written.
    void MakePreferencesInaccessible() const
    {
        zettesting::WriteAll(folder / "file", "");
        zetcore::filesupport::Dir::SetPrefDir(ToWide(folder / "file" / "prefs"));
    }
    float Width(unsigned column) const { return PluginList().GetHeaderRow()->GetColumnWidth(column); }

    const std::filesystem::path plugins = folder / "plug-ins";
};

TEST_F(DialogScans, AScanFillsTheListFitsItsColumnsAndScrollsToTheTop)
{
    AddManyPlugins(60);
    Copy("good/vst2_effect", "effect with a name that is far wider than a column is when the dialog opens");
    OpenDialog();
    PluginList().GetHeaderRow()->SetColumnWidth(kColumnName, 333);
    PluginList().ScrollToRow(PluginList().GetRowAt(59).get());
    Press(ids::kUpdateButton);
    EXPECT_EQ(shown->progressDialogs, 1);
    EXPECT_TRUE(WereShownForTheDialog(1));
    ASSERT_EQ(PluginList().GetRowCount(), 1) << "those that were not there have gone";
    EXPECT_EQ(Names().front(), NameOfOnlyPlugin());
    EXPECT_NE(Width(kColumnName), 333);
    EXPECT_GT(Width(kColumnPath), 240);
    EXPECT_TRUE(PluginList().IsRowVisible(PluginList().GetRowAt(0).get()));
    EXPECT_TRUE(RegistryFile().Exists());
    EXPECT_TRUE(Node<UI_Node>(ids::kEnableAllButton).UI_IsEnabled());
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

TEST_F(DialogScans, APluginThatCrashesTheScannerIsListedAsBannedAndTheOthersWork)
{
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
    // Where there is no scanner.
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
        // Whether shells are not to be skipped, and whether effects are scanned quickly.
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
    EXPECT_THAT(only, ::testing::Not(::testing::HasSubstr(","))) << "one plug-in";
}

TEST_F(DialogScans, WithTheSwitchAWorkingPluginCanBeReloadedToo)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("AlwaysShowPlugInRescanButton", "true");
    Copy("good/vst2_effect", "effect");
    OpenDialog();
    Press(ids::kUpdateButton);
    const Info first = *TheRegistry().PluginInfoBegin();
    first->SetEnabled(false);
    Press(*ReloadButtonOf(NameOfOnlyPlugin()));
    ASSERT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working"));
    EXPECT_NE(*TheRegistry().PluginInfoBegin(), first) << "it was scanned again";
    EXPECT_FALSE((*TheRegistry().PluginInfoBegin())->IsEnabled()) << "the user's choice stays";
    EXPECT_FALSE(AnythingIsBanned());
}

TEST_F(DialogScans, AfterAReloadTheListStandsAtItsTop)
{
    const std::wstring path = Copy("good/vst2_effect", "effect");
    for (int i = 0; i < 60; ++i)
        Ban(L"/elsewhere/" + std::to_wstring(i) + L".so");
    Ban(path);
    OpenDialog();
    const auto row =
        RowOf(L"effect" + std::wstring(zettesting::ModuleSuffix().begin(), zettesting::ModuleSuffix().end()));
    PluginList().ScrollToRow(PluginList().GetRowAt(60).get());
    HandleEvents();
    ASSERT_FALSE(PluginList().IsRowVisible(PluginList().GetRowAt(0).get()));
    ASSERT_TRUE(PluginList().IsRowVisible(row.get()));
    Press(*dynamic_cast<zetui::controls::UI_TextButton*>(row->GetCellView(kStatusCell)->GetChild(0).get()));
    EXPECT_EQ(PluginList().GetRowCount(), 61);
    EXPECT_TRUE(PluginList().IsRowVisible(PluginList().GetRowAt(0).get()));
}

TEST_F(DialogScans, ReloadingABannedPluginBringsItBackWithTheUsersEarlierChoice)
{
    const std::wstring path = Copy("good/vst2_effect", "effect");
    OpenDialog();
    Press(ids::kUpdateButton);
    ASSERT_EQ(PluginList().GetRowCount(), 1);
    (*TheRegistry().PluginInfoBegin())->SetEnabled(false);
    const std::wstring name = NameOfOnlyPlugin();
    CloseDialog();
    const PluginLocator banned = Ban(path);
    OpenDialog();
    ASSERT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Not Working"));
    const std::wstring title = Names().front();
    PluginList().GetHeaderRow()->SetColumnWidth(kColumnName, 333);
    Press(*ReloadButtonOf(title));
    EXPECT_FALSE(TheBanned().IsBanned(banned));
    EXPECT_THAT(Names(), ElementsAre(name));
    EXPECT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working"));
    EXPECT_FALSE(CheckboxOf(name)->IsChecked());
    EXPECT_TRUE(CheckboxOf(name)->UI_IsEnabled());
    EXPECT_FALSE(ReloadButtonOf(name));
    EXPECT_NE(Width(kColumnName), 333);
    EXPECT_TRUE(std::filesystem::exists(prefs / Banned::GetSettingsFileName()));
    EXPECT_TRUE(shown->alerts.empty());
}

TEST_F(DialogScans, ReloadingOneBannedPluginScansNoOther)
{
    Copy("good/vst2_synth", "another that is new");
    const std::wstring path = Copy("good/vst2_effect", "effect");
    Ban(path);
    OpenDialog();
    Press(*ReloadButtonOf(Names().front()));
    EXPECT_EQ(PluginList().GetRowCount(), 1);
}

TEST_F(DialogScans, ReloadingABannedPluginWhoseFileIsGoneRemovesItEverywhere)
{
    const std::wstring path = Copy("good/vst2_effect", "effect");
    Ban(path);
    OpenDialog();
    std::filesystem::remove_all(plugins);
    std::filesystem::create_directory(plugins);
    Press(*ReloadButtonOf(Names().front()));
    EXPECT_EQ(PluginList().GetRowCount(), 0);
    EXPECT_FALSE(AnythingIsBanned());
    EXPECT_EQ(TheRegistry().RecordCount(), 0u);
    EXPECT_EQ(shown->progressDialogs, 0) << "there is nothing to scan";
    EXPECT_TRUE(RegistryFile().Exists());
    Press(ids::kUpdateButton);
    EXPECT_EQ(PluginList().GetRowCount(), 0);
}

TEST_F(DialogScans, AReloadThatCannotSaveFillsTheListAndThenSaysSoOnce)
{
    zetcore::config::SetClientName(L"Studio");
    const std::wstring gone = Copy("good/vst2_effect", "gone");
    Ban(gone);
    OpenDialog();
    std::filesystem::remove(gone);
    MakePreferencesInaccessible();
    int rowsWhenTold = -1;
    shown->onAlert = [&] { rowsWhenTold = PluginList().GetRowCount(); };
    Press(*ReloadButtonOf(Names().front()));
    ASSERT_EQ(shown->alerts.size(), 1u);
    EXPECT_EQ(rowsWhenTold, 0);
    EXPECT_EQ(shown->alerts.front().title, "Studio");
    EXPECT_TRUE(WereShownForTheDialog(1));
    EXPECT_EQ(
        shown->alerts.front().message,
        "Unable to load third-party audio plug-ins. Studio is unable to access your Preferences folder. "
        "Your user account may not have access rights, or the folder may have been set to Read Only. "
        "Please check your permissions and try again.");
    zetcore::config::SetClientName(L"zetaudiopluginmanager");
}

TEST_F(DialogScans, AReloadThatScansAndCannotSaveAlsoSaysSoOnce)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    Ban(Copy("good/vst2_effect", "effect"));
    OpenDialog();
    Node<UI_Checkbox>(ids::kSeparateProcess).SetChecked(false);
    MakePreferencesInaccessible();
    std::vector<std::wstring> statusWhenTold;
    shown->onAlert = [&] { statusWhenTold = ColumnTexts(kColumnStatus); };
    Press(*ReloadButtonOf(Names().front()));
    EXPECT_EQ(shown->alerts.size(), 1u);
    EXPECT_THAT(statusWhenTold, ElementsAre(L"Working"));
    EXPECT_EQ(shown->progressDialogs, 1);
    EXPECT_TRUE(WereShownForTheDialog(2));
}

} // namespace
} // namespace zetaudiopluginhostui
