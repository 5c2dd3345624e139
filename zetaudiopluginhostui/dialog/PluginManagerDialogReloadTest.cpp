// These tests press the "Reload" button of the manager dialog's rows, with the real scanner and real modules.
#include <stdexcept>

#include <gmock/gmock.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/utility/ClientName.h>
#include <zettesting/UnwritableFile.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "testing/DialogScansFixture.h"
#include "testing/FillCount.h"
#include "testing/SendMessage.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using zettesting::ToWide;
using zetui::controls::UI_Checkbox;

class DialogReload : public DialogScansFixture
{
  protected:
    /// The name that the list shows for a banned plug-in.
    static std::wstring TitleOf(const std::wstring& path)
    {
        return zetcore::filesupport::File(path).GetTitle();
    }
};

TEST_F(DialogReload, WithTheSwitchAWorkingPluginCanBeReloadedToo)
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

TEST_F(DialogReload, AfterAReloadTheListStandsAtItsTopAndWasFilledOnce)
{
    const std::wstring path = Copy("good/vst2_effect", "effect");
    for (int i = 0; i < 60; ++i)
        Ban(L"/elsewhere/" + std::to_wstring(i) + L".so");
    Ban(path);
    OpenDialog();
    const std::wstring name = TitleOf(path);
    ScrollToTheEnd();
    ASSERT_FALSE(IsAtItsTop());
    ASSERT_TRUE(ReloadButtonOf(name));
    FillCount count(WidgetOf(PluginList()));
    Press(*ReloadButtonOf(name));
    EXPECT_EQ(count.Fills(), 1);
    EXPECT_EQ(PluginList().GetRowCount(), 61);
    EXPECT_TRUE(IsAtItsTop());
}

TEST_F(DialogReload, AfterAReloadOfAFileThatIsGoneTheListStandsAtItsTopToo)
{
    const std::wstring gone = Copy("good/vst2_effect", "gone");
    BanManyFiles(60);
    Ban(gone);
    std::filesystem::remove(plugins / ("gone" + std::string(zettesting::ModuleSuffix())));
    OpenDialog();
    PluginList().GetHeaderRow()->SetColumnWidth(kColumnName, 333);
    ScrollToTheEnd();
    ASSERT_FALSE(IsAtItsTop());
    ASSERT_TRUE(ReloadButtonOf(TitleOf(gone)));
    FillCount count(WidgetOf(PluginList()));
    Press(*ReloadButtonOf(TitleOf(gone)));
    EXPECT_EQ(count.Fills(), 1);
    EXPECT_EQ(PluginList().GetRowCount(), 60);
    EXPECT_TRUE(IsAtItsTop());
    EXPECT_NE(Width(kColumnName), 333);
}

TEST_F(DialogReload, ReloadingABannedPluginBringsItBackWithTheUsersEarlierChoice)
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
    EXPECT_FALSE(HasReloadButton(name));
    EXPECT_NE(Width(kColumnName), 333);
    EXPECT_TRUE(std::filesystem::exists(prefs / Banned::GetSettingsFileName()));
    EXPECT_TRUE(shown->alerts.empty());
}

TEST_F(DialogReload, ReloadingOneBannedPluginScansNoOther)
{
    Copy("good/vst2_synth", "another that is new");
    const std::wstring path = Copy("good/vst2_effect", "effect");
    Ban(path);
    OpenDialog();
    Press(*ReloadButtonOf(Names().front()));
    EXPECT_EQ(PluginList().GetRowCount(), 1);
}

TEST_F(DialogReload, ReloadingABannedPluginWhoseFileIsGoneRemovesItEverywhere)
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

TEST_F(DialogReload, AReloadThatCannotSaveFillsTheListAndThenSaysSoOnce)
{
    zetcore::utility::SetClientName(L"Studio");
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
    zetcore::utility::SetClientName(L"zetaudiopluginmanager");
}

TEST_F(DialogReload, AReloadThatScansAndCannotSaveAlsoSaysSoOnce)
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

TEST_F(DialogReload, TheBannedListIsSavedWithoutThePluginBeforeItIsScanned)
{
    const std::wstring path = Copy("good/vst2_effect", "effect");
    Ban(path);
    TheBanned().SaveConfiguration(BannedFile());
    const auto listOnDisk = [this] { return zettesting::ReadAll(prefs / Banned::GetSettingsFileName()); };
    OpenDialog();
    ASSERT_THAT(listOnDisk(), HasSubstr("effect"));
    std::string listAtTheEndOfTheScan = "never";
    const zetcore::events::ScopedConnection connection =
        TheRegistry().GetPluginInfosChangedSignal().Connect([&] { listAtTheEndOfTheScan = listOnDisk(); });
    Press(*ReloadButtonOf(TitleOf(path)));
    EXPECT_THAT(listAtTheEndOfTheScan, HasSubstr("bannedplugins"));
    EXPECT_THAT(listAtTheEndOfTheScan, Not(HasSubstr("effect")));
}

TEST_F(DialogReload, ABannedListThatCannotBeSavedIsToldOnceThoughTheRegistryCanBe)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    const std::wstring path = Copy("good/vst2_effect", "effect");
    const std::wstring gone = Copy("good/vst2_synth", "gone");
    Ban(path);
    Ban(gone);
    std::filesystem::remove(plugins / ("gone" + std::string(zettesting::ModuleSuffix())));
    OpenDialog();
    const zettesting::UnwritableFile list(prefs / Banned::GetSettingsFileName());
    Press(*ReloadButtonOf(TitleOf(path)));
    EXPECT_EQ(shown->alerts.size(), 1u);
    EXPECT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working", L"Not Working"));
    Press(*ReloadButtonOf(TitleOf(gone)));
    EXPECT_EQ(shown->alerts.size(), 2u);
    EXPECT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working"));
}

TEST_F(DialogReload, ARegistryThatCannotBeSavedIsToldOnceThoughTheBannedListCanBe)
{
    const std::wstring gone = Copy("good/vst2_effect", "gone");
    Ban(gone);
    std::filesystem::remove(plugins / ("gone" + std::string(zettesting::ModuleSuffix())));
    OpenDialog();
    const zettesting::UnwritableFile registry(prefs / Registry::GetSettingsFileName());
    Press(*ReloadButtonOf(TitleOf(gone)));
    EXPECT_EQ(shown->alerts.size(), 1u);
    EXPECT_EQ(PluginList().GetRowCount(), 0);
    EXPECT_TRUE(BannedFile().Exists());
}

TEST_F(DialogReload, OnlyTheFileThatIsGoneLeavesTheRegistryWhichIsSavedWithTheOthers)
{
    const std::wstring gone = Copy("good/vst2_effect", "gone");
    std::filesystem::remove(plugins / ("gone" + std::string(zettesting::ModuleSuffix())));
    AddPlugin(L"Its record", gone);
    AddPlugin(L"Gone as well", ToWide(plugins / "gone as well.so"));
    Ban(gone);
    OpenDialog();
    Press(*ReloadButtonOf(TitleOf(gone)));
    EXPECT_THAT(Names(), ElementsAre(L"Gone as well")) << "nobody asked for it";
    EXPECT_EQ(shown->progressDialogs, 0);
    EXPECT_TRUE(shown->alerts.empty());
    Registry saved;
    ASSERT_TRUE(saved.LoadConfiguration(RegistryFile()));
    EXPECT_FALSE(saved.Find(Vst(gone)));
    EXPECT_TRUE(saved.Find(Vst(ToWide(plugins / "gone as well.so"))));
}

TEST_F(DialogReload, AnotherTechnologysPluginOfTheSamePathHasNoPartInIt)
{
    // The folder cannot be reached, so nobody knows if the plug-in is gone.
    const std::filesystem::path offline = folder / "offline";
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({ToWide(offline)});
    const std::wstring path = ToWide(offline / "one.vst3");
    TheRegistry().AddModule(std::make_shared<zetaudiofilterhost::PluginModuleInfo>(
        PluginLocator(zetaudiofilterhost::TechnologyType::VST3, path)));
    Ban(path);
    OpenDialog();
    std::vector<PluginLocator> vanished;
    TheRegistry().CollectPotentialPlugins(true, vanished);
    ASSERT_EQ(vanished.size(), 1u);
    ASSERT_EQ(vanished.front().GetPath(), path);
    Press(*ReloadButtonOf(TitleOf(path)));
    EXPECT_EQ(shown->progressDialogs, 1) << "it is scanned";
    EXPECT_TRUE(TheRegistry().Find(vanished.front()));
}

TEST_F(DialogReload, APluginOutsideOfTheRegisteredFoldersIsScannedWhenItIsThere)
{
    settings.sortColumn = kColumnType; // All are equal there, so that they stay in fill order.
    const std::filesystem::path elsewhere = folder / "elsewhere";
    std::filesystem::create_directory(elsewhere);
    const auto file = zettesting::CopyTestPlugin("good/vst2_effect", elsewhere, "effect");
    const auto gone = elsewhere / "gone.so";
    Ban(ToWide(file));
    Ban(ToWide(gone));
    OpenDialog();
    Press(*ReloadButtonOf(TitleOf(ToWide(file))));
    EXPECT_EQ(shown->progressDialogs, 1);
    EXPECT_THAT(ColumnTexts(kColumnStatus), ElementsAre(L"Working", L"Not Working"));
    EXPECT_THAT(ColumnTexts(kColumnPath), ElementsAre(ToWide(file), ToWide(gone)));
    Press(*ReloadButtonOf(TitleOf(ToWide(gone))));
    EXPECT_EQ(shown->progressDialogs, 1) << "there is nothing to scan";
    EXPECT_THAT(ColumnTexts(kColumnPath), ElementsAre(ToWide(file)));
}

TEST_F(DialogReload, AnErrorThatIsNoFileErrorComesOutOfTheReload)
{
    const std::wstring gone = Copy("good/vst2_effect", "gone");
    std::filesystem::remove(plugins / ("gone" + std::string(zettesting::ModuleSuffix())));
    Ban(gone);
    TheRegistry().SaveConfiguration(RegistryFile(), true);
    // Another program adds a folder. Our next save reads it and raises the signal.
    Registry other;
    ASSERT_TRUE(other.LoadConfiguration(RegistryFile()));
    other.GetPluginTechnology(3)->AddPluginDirectories({L"/another"});
    other.SaveConfiguration(RegistryFile(), true);
    OpenDialog();
    const zetcore::events::ScopedConnection connection =
        TheRegistry().GetPluginTechnology(3)->GetDirectoriesChangedSignal().Connect(
            [](const auto&) { throw std::range_error("of the host"); });
    const auto button = ReloadButtonOf(TitleOf(gone));
    ASSERT_TRUE(button);
    zetui::ui::UI_ButtonChangedMessage message(button.get());
    EXPECT_THROW(SendMessage::Changed(*button, message), std::range_error);
    EXPECT_TRUE(shown->alerts.empty());
}

} // namespace
} // namespace zetaudiopluginhostui
