#include <gmock/gmock.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/utility/NullPtrException.h>
#include <zettesting/TestPlugins.h>

#include "testing/ManagerRunFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using DoPluginManagerDialog = ManagerRunFixture;

TEST_F(DoPluginManagerDialog, OkWithoutAnyChangeReturnsFalse)
{
    SaveTwoPlugins();
    const std::string before = zettesting::ReadAll(configuration);
    EXPECT_FALSE(Run(PressOk));
    EXPECT_EQ(zettesting::ReadAll(configuration), before);
}

TEST_F(DoPluginManagerDialog, OkAfterAChangeSavesItAndReturnsTrue)
{
    SaveTwoPlugins();
    const std::string before = zettesting::ReadAll(configuration);
    EXPECT_TRUE(Run(DisableAllAnd(PressOk)));
    EXPECT_NE(zettesting::ReadAll(configuration), before);
    ResetRegistry(registry);
    registry.LoadConfiguration(File());
    EXPECT_THAT(EnabledFlags(), ElementsAre(false, false));
}

TEST_F(DoPluginManagerDialog, OkAfterAChangeBackReturnsFalse)
{
    SaveTwoPlugins();
    EXPECT_FALSE(Run([](QWidget& window) {
        Click(window, "Disable All");
        Click(window, "Enable All");
        PressOk(window);
    }));
}

TEST_F(DoPluginManagerDialog, CancelAfterChangesReturnsFalseAndTheRegistryEqualsTheFile)
{
    SaveTwoPlugins();
    const std::string before = zettesting::ReadAll(configuration);
    EXPECT_FALSE(Run([&](QWidget& window) {
        Click(window, "Disable All");
        EXPECT_THAT(EnabledFlags(), ElementsAre(false, false));
        Vst().AddPluginDirectories({L"/another"});
        registry.RemovePluginLocators({{TechnologyType::VST, L"/plugins/two.so"}});
        PressCancel(window);
    }));
    EXPECT_THAT(EnabledFlags(), ElementsAre(true, true));
    EXPECT_THAT(Folders(), ElementsAre(zettesting::ToWide("/plugins")));
    EXPECT_EQ(zettesting::ReadAll(configuration), before);
}

TEST_F(DoPluginManagerDialog, ClosingTheWindowIsCancel)
{
    SaveTwoPlugins();
    EXPECT_FALSE(Run(DisableAllAnd([](QWidget& window) { window.close(); })));
    EXPECT_THAT(EnabledFlags(), ElementsAre(true, true));
}

TEST_F(DoPluginManagerDialog, AfterOkEveryListenerRereadsTheList)
{
    SaveTwoPlugins();
    int changes = 0;
    const zetcore::events::ScopedConnection connection =
        registry.GetPluginInfosChangedSignal().Connect([&] { ++changes; });
    Run([&](QWidget& window) {
        changes = 0;
        PressOk(window);
    });
    EXPECT_EQ(changes, 1);
    Run([&](QWidget& window) {
        changes = 0;
        PressCancel(window);
    });
    EXPECT_EQ(changes, 0);
}

TEST_F(DoPluginManagerDialog, WithoutAConfigurationFileTheDefaultFoldersAreWrittenBeforeTheDialogOpens)
{
    registry.ResetToDefaultFolders();
    const std::vector<std::wstring> defaults = Folders();
    Vst().SetPluginDirectories({L"/mine"});
    Run([&](QWidget& window) {
        EXPECT_EQ(Folders(), defaults);
        PluginModuleInfoManager loaded;
        EXPECT_TRUE(File().Exists());
        loaded.LoadConfiguration(File());
        const auto vst = loaded.GetPluginTechnology(TechnologyType::VST);
        EXPECT_EQ(std::vector<std::wstring>(vst->DirectoryBegin(), vst->DirectoryEnd()), defaults);
        PressCancel(window);
    });
}

TEST_F(DoPluginManagerDialog, AnExistingConfigurationKeepsItsFolders)
{
    SaveTwoPlugins();
    Run(PressOk);
    EXPECT_THAT(Folders(), ElementsAre(zettesting::ToWide("/plugins")));
}

TEST_F(DoPluginManagerDialog, EmptyBoundsLeaveTheDialogAtItsOwnSizeAndHoldTheRealFrameAfterwards)
{
    SaveTwoPlugins();
    QRect own;
    Run([&](QWidget& window) {
        own = window.geometry();
        PressCancel(window);
    });
    EXPECT_GE(own.width(), 400);
    EXPECT_EQ(settings.dialogBounds, (Bounds{own.left(), own.top(), own.width(), own.height()}));

    for (const Bounds& ignored : {Bounds{10, 20, 0, 500}, Bounds{10, 20, 500, 0}, Bounds{10, 20, -1, -1}}) {
        settings.dialogBounds = ignored;
        Run([&](QWidget& window) {
            EXPECT_EQ(window.geometry(), own);
            PressCancel(window);
        });
        EXPECT_EQ(settings.dialogBounds, (Bounds{own.left(), own.top(), own.width(), own.height()}));
    }
}

TEST_F(DoPluginManagerDialog, SavedBoundsAreAppliedAndTheLastFrameComesBackWhateverTheResult)
{
    SaveTwoPlugins();
    settings.dialogBounds = {30, 40, 750, 520};
    Run([&](QWidget& window) {
        EXPECT_EQ(window.geometry(), QRect(30, 40, 750, 520));
        window.setGeometry(50, 60, 760, 530);
        PressCancel(window);
    });
    EXPECT_EQ(settings.dialogBounds, (Bounds{50, 60, 760, 530}));
    Run([&](QWidget& window) {
        window.setGeometry(70, 80, 770, 540);
        PressOk(window);
    });
    EXPECT_EQ(settings.dialogBounds, (Bounds{70, 80, 770, 540}));
}

TEST_F(DoPluginManagerDialog, RescanChoiceAndSortComeBackAndTheHostsFlagStays)
{
    SaveTwoPlugins();
    settings.hostFlag = false;
    settings.sortColumn = 2;
    settings.sortAscending = false;
    Run([&](QWidget& window) {
        Click(window, "Rescan existing plug-ins");
        PressCancel(window);
    });
    EXPECT_TRUE(settings.rescanExisting);
    EXPECT_EQ(settings.sortColumn, 2u);
    EXPECT_FALSE(settings.sortAscending);
    EXPECT_FALSE(settings.hostFlag);
}

TEST_F(DoPluginManagerDialog, ASortColumnThatTheListDoesNotHaveDoesNoHarm)
{
    SaveTwoPlugins();
    settings.sortColumn = 4000000000u;
    settings.sortAscending = true;
    EXPECT_FALSE(Run(PressOk));
}

TEST_F(DoPluginManagerDialog, APreferencesFolderThatCannotBeWrittenIsToldOnceAndAfterTheDialog)
{
    MakePrefsUnwritable();
    registry.AddModule(
        std::make_shared<PluginModuleInfo>(PluginLocator{TechnologyType::VST, L"/plugins/one.so"}));
    EXPECT_FALSE(Run([&](QWidget& window) {
        EXPECT_THAT(shown->calls, IsEmpty());
        EXPECT_THAT(EnabledFlags(), ElementsAre(true)) << "the dialog works on the registry in memory";
        shown->onAlert = [] { EXPECT_EQ(QApplication::activeModalWidget(), nullptr); };
        Click(window, "Disable All");
        PressOk(window);
    }));
    EXPECT_THAT(shown->calls, ElementsAre(StartsWith("caution ")));
    EXPECT_THAT(EnabledFlags(), ElementsAre(false));
}

TEST_F(DoPluginManagerDialog, AfterOkEveryListenerRereadsTheListAlsoWhenItCouldNotBeSaved)
{
    MakePrefsUnwritable();
    int changes = 0;
    const zetcore::events::ScopedConnection connection =
        registry.GetPluginInfosChangedSignal().Connect([&] { ++changes; });
    EXPECT_FALSE(Run([&](QWidget& window) {
        changes = 0;
        shown->onAlert = [&] { EXPECT_EQ(changes, 1) << "before the user is told"; };
        PressOk(window);
    }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(shown->calls.size(), 1u);
}

TEST_F(DoPluginManagerDialog, CancelAfterAScanGoesBackToWhatTheScanSaved)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    const std::filesystem::path plugins = folder / "plug-ins";
    std::filesystem::create_directory(plugins);
    zettesting::CopyTestPlugin("good/vst2_effect", plugins, "effect");
    SaveTwoPlugins();
    EXPECT_FALSE(Run([&](QWidget& window) {
        Vst().SetPluginDirectories({zettesting::ToWide(plugins)});
        Click(window, "Separate process");
        Click(window, "Scan for Plug-Ins");
        EXPECT_THAT(EnabledFlags(), ElementsAre(true)) << "the two whose files there are not have gone";
        Click(window, "Disable All");
        PressCancel(window);
    }));
    EXPECT_THAT(EnabledFlags(), ElementsAre(true));
    EXPECT_THAT(Folders(), ElementsAre(zettesting::ToWide(plugins)));
}

TEST_F(DoPluginManagerDialog, WhatCannotBeWrittenAtFirstIsToldAlsoWhenTheUserCancels)
{
    MakePrefsUnwritable();
    EXPECT_FALSE(Run(PressCancel));
    EXPECT_THAT(shown->calls, ElementsAre(StartsWith("caution ")));
}

TEST_F(DoPluginManagerDialog, BeforeInitializeThereIsANullPointerError)
{
    SaveTwoPlugins();
    Terminate();
    // If a dialog opens all the same, it is closed again.
    try {
        Run(PressCancel);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const zetcore::utility::null_ptr_exception& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("DoPluginManagerDialog: call "
                                                       "zetaudiopluginhostui::Initialize() first"));
    }
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace
} // namespace zetaudiopluginhostui
