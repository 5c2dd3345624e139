#include "preferences/Preferences.h"

#include <stdexcept>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/utility/ClientName.h>
#include <zettesting/HostFixture.h>

#include "testing/RecordingPresentation.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

class PreferencesTest : public zettesting::HostFixture
{
  protected:
    PreferencesTest() { Forget(); }
    ~PreferencesTest() override { Forget(); }

    static void Forget()
    {
        ResetRegistry(*PluginModuleInfoManager::GetInstance());
        ResetBannedPlugins(*BannedPluginManager::GetInstance());
        BannedPluginManager::GetInstance()->LoadStaticConfiguration(zetcore::filesupport::File());
    }
    /// No file can be written there from now on.
    void MakeFolderUnwritable() const
    {
        zettesting::WriteAll(folder / "file", "");
        zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "file" / "prefs"));
    }

    RecordingPresentation shown;
    Preferences preferences{nullptr, nullptr};
    const PluginLocator plugin{zetaudiofilterhost::TechnologyType::VST, L"/plugins/one.so"};
};

TEST_F(PreferencesTest, TheCautionNamesTheHostInItsTitleAndInItsText)
{
    const std::wstring before = zetcore::utility::GetClientName();
    zetcore::utility::SetClientName(L"Some @0 Host");
    preferences.NoteFailure();
    preferences.TellUser();
    zetcore::utility::SetClientName(before);
    EXPECT_EQ(
        shown.calls,
        std::vector<std::string>{
            "caution Some @0 Host: Unable to load third-party audio plug-ins. Some @0 Host is unable to "
            "access your Preferences folder. Your user account may not have access rights, or the "
            "folder may have been set to Read Only. Please check your permissions and try again."});
}

TEST_F(PreferencesTest, WhatIsSavedIsLoadedAgain)
{
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    registry.AddModule(std::make_shared<zetaudiofilterhost::PluginModuleInfo>(plugin));
    banned.AddBannedPlugin(plugin, "a reason");
    EXPECT_TRUE(preferences.SaveRegistry());
    EXPECT_TRUE(preferences.SaveBannedList());
    EXPECT_TRUE(preferences.WriteUnsupportedList("<pluginlist><plugin filename=\"bad.so\"/></pluginlist>"));
    Forget();
    EXPECT_TRUE(Preferences::LoadRegistry());
    EXPECT_TRUE(Preferences::LoadBannedList());
    EXPECT_TRUE(Preferences::LoadUnsupportedList());
    EXPECT_TRUE(registry.Find(plugin));
    EXPECT_TRUE(banned.IsBanned(plugin));
    EXPECT_TRUE(banned.IsUnsupportedFile(L"bad.so"));
    EXPECT_FALSE(preferences.HasFailed());
    preferences.TellUser();
    EXPECT_THAT(shown.calls, ElementsAre());
}

TEST_F(PreferencesTest, AllThatHaveFailedAreToldOnceAndOnlyWhenTheOperationSaysSo)
{
    MakeFolderUnwritable();
    EXPECT_FALSE(preferences.SaveRegistry());
    EXPECT_FALSE(preferences.SaveBannedList());
    EXPECT_FALSE(preferences.WriteUnsupportedList("text"));
    EXPECT_TRUE(preferences.HasFailed());
    EXPECT_THAT(shown.calls, ElementsAre());
    preferences.TellUser();
    EXPECT_THAT(shown.calls, SizeIs(1));
    EXPECT_FALSE(preferences.HasFailed());
    preferences.TellUser();
    EXPECT_THAT(shown.calls, SizeIs(1));
}

TEST_F(PreferencesTest, AFailureAfterTheCautionIsToldAgainUnlessOneIsEnough)
{
    MakeFolderUnwritable();
    preferences.SaveRegistry();
    preferences.TellUserOnce();
    preferences.SaveRegistry();
    preferences.TellUserOnce();
    EXPECT_THAT(shown.calls, SizeIs(1));
    preferences.TellUser();
    EXPECT_THAT(shown.calls, SizeIs(2));
}

TEST_F(PreferencesTest, APartOfAnOperationTellsTheOperation)
{
    Preferences part([this] { preferences.NoteFailure(); });
    part.TellUser();
    EXPECT_FALSE(preferences.HasFailed());
    part.NoteFailure();
    part.TellUser();
    EXPECT_THAT(shown.calls, ElementsAre());
    EXPECT_TRUE(preferences.HasFailed());
}

TEST_F(PreferencesTest, OnlyAFileErrorIsTheFoldersFault)
{
    EXPECT_THROW(preferences.Try([] { throw std::runtime_error("a slot of the host's"); }),
                 std::runtime_error);
    EXPECT_FALSE(preferences.HasFailed());
}

} // namespace
} // namespace zetaudiopluginhostui
