// When the manager closes, it leaves the registry and the settings in this state, and tells the user this.
#include <stdexcept>

#include <gmock/gmock.h>
#include <zettesting/ScopedFaults.h>

#include "testing/ManagerRunFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using zetcore::events::ScopedConnection;

class DoPluginManagerDialogEnd : public ManagerRunFixture
{
  protected:
    static Bounds FrameOf(const QWidget& window)
    {
        const QRect rect = window.geometry();
        return {rect.left(), rect.top(), rect.width(), rect.height()};
    }
    /// Another program does this with the file while the manager is open.
    void AnotherProgramSavesFolders() const
    {
        PluginModuleInfoManager other;
        other.LoadConfiguration(File());
        other.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/others"});
        other.SaveConfiguration(File(), true);
    }
    std::vector<bool> FlagsInTheFile() const
    {
        PluginModuleInfoManager loaded;
        loaded.LoadConfiguration(File());
        std::vector<bool> flags;
        for (auto info = loaded.PluginInfoBegin(); info != loaded.PluginInfoEnd(); ++info)
            flags.push_back((*info)->IsEnabled());
        return flags;
    }
};

TEST_F(DoPluginManagerDialogEnd, AGoodRunShowsNoAlert)
{
    SaveTwoPlugins();
    Run(PressCancel);
    Run(PressOk);
    Run(DisableAllAnd(PressOk));
    Run(DisableAllAnd(PressCancel));
    EXPECT_THAT(shown->calls, IsEmpty());
}

TEST_F(DoPluginManagerDialogEnd, AFirstRunShowsNoAlert)
{
    Run(PressOk);
    EXPECT_THAT(shown->calls, IsEmpty());
}

TEST_F(DoPluginManagerDialogEnd, BoundsCountAsWidthAndHeightFromOneOn)
{
    SaveTwoPlugins();
    settings.dialogBounds = {350, 340, 1, 1};
    Run([](QWidget& window) {
        EXPECT_EQ(window.geometry().topLeft(), QPoint(350, 340));
        EXPECT_EQ(window.size(), window.minimumSize());
        PressCancel(window);
    });
    settings.dialogBounds = {350, 340, 450, 460};
    Run([](QWidget& window) {
        EXPECT_EQ(window.geometry(), QRect(350, 340, 450, 460));
        PressCancel(window);
    });
}

TEST_F(DoPluginManagerDialogEnd, TheFrameIsInTheSettingsAndTheFileIsSavedWhenTheListenersReread)
{
    SaveTwoPlugins();
    Bounds frame;
    const ScopedConnection connection = registry.GetPluginInfosChangedSignal().Connect([&] {
        EXPECT_EQ(settings.dialogBounds, frame);
        EXPECT_THAT(FlagsInTheFile(), ElementsAre(false, false));
    });
    EXPECT_TRUE(Run([&](QWidget& window) {
        window.setGeometry(50, 60, 760, 530);
        frame = FrameOf(window);
        Click(window, "Disable All");
        PressOk(window);
    }));
}

TEST_F(DoPluginManagerDialogEnd, TheFrameIsInTheSettingsBeforeTheRegistryIsLoadedAgain)
{
    SaveTwoPlugins();
    Bounds frame;
    int loads = 0;
    std::optional<ScopedConnection> connection;
    Run([&](QWidget& window) {
        window.setGeometry(50, 60, 760, 530);
        frame = FrameOf(window);
        Vst().AddPluginDirectories({L"/another"});
        connection.emplace(Vst().GetDirectoriesChangedSignal().Connect([&](const auto&) {
            ++loads;
            EXPECT_EQ(settings.dialogBounds, frame);
        }));
        PressCancel(window);
    });
    EXPECT_EQ(loads, 1);
}

TEST_F(DoPluginManagerDialogEnd, TheDialogIsKeptUntilTheUserHasBeenTold)
{
    MakePrefsUnwritable();
    settings.sortColumn = 2;
    shown->onAlert = [this] {
        EXPECT_FALSE(settings.rescanExisting) << "the dialog writes its choices when it goes";
    };
    Run([](QWidget& window) {
        Click(window, "Rescan existing plug-ins");
        PressOk(window);
    });
    EXPECT_EQ(shown->calls.size(), 1u);
    EXPECT_TRUE(settings.rescanExisting);
}

TEST_F(DoPluginManagerDialogEnd, WithoutASavedSortTheDirectionCountsForNothing)
{
    SaveTwoPlugins();
    AudioPluginManagerSettings ends[2];
    for (const bool ascending : {false, true}) {
        settings = {};
        settings.sortAscending = ascending;
        Run(PressCancel);
        ends[ascending] = settings;
    }
    EXPECT_EQ(ends[0].sortColumn, ends[1].sortColumn);
    EXPECT_EQ(ends[0].sortAscending, ends[1].sortAscending);
}

TEST_F(DoPluginManagerDialogEnd, AFileWhoseContentCannotBeReadIsSavedAllTheSame)
{
    SaveTwoPlugins();
    const zettesting::ScopedFaults faults("host.digest:1:denied");
    EXPECT_TRUE(Run(DisableAllAnd(PressOk))) << "the host misses nothing";
    EXPECT_THAT(FlagsInTheFile(), ElementsAre(false, false));
    EXPECT_THAT(shown->calls, IsEmpty()) << "only the save decides";
}

TEST_F(DoPluginManagerDialogEnd, AFileThatCannotBeReadAfterTheSaveCountsAsChanged)
{
    SaveTwoPlugins();
    const zettesting::ScopedFaults faults("host.digest:2:denied");
    EXPECT_TRUE(Run(PressOk));
    EXPECT_THAT(shown->calls, IsEmpty());
}

TEST_F(DoPluginManagerDialogEnd, CancelTakesTheChangesBackAlsoWhenTheFileCannotBeRead)
{
    SaveTwoPlugins();
    EXPECT_FALSE(Run([&](QWidget& window) {
        Click(window, "Disable All");
        Vst().AddPluginDirectories({L"/another"});
        registry.RemovePluginLocators({{TechnologyType::VST, L"/plugins/two.so"}});
        std::filesystem::remove(configuration);
        std::filesystem::create_directory(configuration);
        PressCancel(window);
    }));
    EXPECT_THAT(EnabledFlags(), ElementsAre(true, true));
    EXPECT_THAT(Folders(), ElementsAre(zettesting::ToWide("/plugins")));
    EXPECT_THAT(shown->calls, ElementsAre(StartsWith("caution ")));
}

TEST_F(DoPluginManagerDialogEnd, CancelTakesTheChangesBackAlsoWhenTheFileIsDamaged)
{
    SaveTwoPlugins();
    EXPECT_FALSE(Run([&](QWidget& window) {
        Click(window, "Disable All");
        zettesting::WriteAll(configuration, "<pluginconfiguration><mod");
        PressCancel(window);
    }));
    EXPECT_THAT(EnabledFlags(), ElementsAre(true, true));
    EXPECT_THAT(Folders(), ElementsAre(zettesting::ToWide("/plugins")));
}

TEST_F(DoPluginManagerDialogEnd, WhatAHostsSlotThrowsDuringTheSavePassesToTheHost)
{
    SaveTwoPlugins();
    std::optional<ScopedConnection> connection;
    Bounds frame;
    EXPECT_THROW(Run([&](QWidget& window) {
                     AnotherProgramSavesFolders();
                     connection.emplace(Vst().GetDirectoriesChangedSignal().Connect(
                         [](const auto&) { throw std::logic_error("a host's"); }));
                     window.setGeometry(50, 60, 760, 530);
                     frame = FrameOf(window);
                     PressOk(window);
                 }),
                 std::logic_error);
    EXPECT_EQ(settings.dialogBounds, frame) << "it was there before the save";
    EXPECT_THAT(shown->calls, IsEmpty());
}

TEST_F(DoPluginManagerDialogEnd, WhatAHostsSlotThrowsDuringTheLoadPassesToTheHost)
{
    SaveTwoPlugins();
    std::optional<ScopedConnection> connection;
    EXPECT_THROW(Run([&](QWidget& window) {
                     Vst().AddPluginDirectories({L"/another"});
                     connection.emplace(Vst().GetDirectoriesChangedSignal().Connect(
                         [](const auto&) { throw std::logic_error("a host's"); }));
                     PressCancel(window);
                 }),
                 std::logic_error);
    EXPECT_THAT(shown->calls, IsEmpty());
}

} // namespace
} // namespace zetaudiopluginhostui
