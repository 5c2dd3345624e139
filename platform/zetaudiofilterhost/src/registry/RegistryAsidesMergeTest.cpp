// Two programs with one registry file, one of which scans.
#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using zettesting::ReadAll;
using InfoPtr = PluginModuleInfoManager::InfoPtr;

class RegistryAsidesMergeTest : public RegistryFixture
{
  protected:
    static PluginLocator Named(const std::wstring& name) { return Vst(L"/" + name + L".so"); }
    static InfoPtr Info(const std::wstring& name) { return MakeInfo(Named(name), name); }
    void Add(const std::wstring& name) { registry.AddModule(Info(name)); }
    void Save() { registry.SaveConfiguration(file, true); }
    void Load(PluginModuleInfoManager& manager) { ASSERT_TRUE(manager.LoadConfiguration(file)); }
    static void Result(PluginModuleInfoManager& manager, const std::vector<InfoPtr>& infos)
    {
        manager.AddConfiguration(PluginModuleInfoManager::ToConfigurationText(infos), false);
    }
};

TEST_F(RegistryAsidesMergeTest, ASecondHostThatStartsDuringAScanDoesNotUndoItsResults)
{
    for (const wchar_t* name : {L"a", L"b", L"c"})
        Add(name);
    Save();
    registry.RemovePluginLocators({Named(L"a"), Named(L"b"), Named(L"c")});
    Save();
    PluginModuleInfoManager second;
    Load(second);
    EXPECT_EQ(second.PutBackUnreached().size(), 3u);
    // Between its loading and its saving the first one finds something.
    Result(registry, {MakeInfo(Named(L"a"), L"a anew")});
    second.SaveConfiguration(file, true);
    EXPECT_THAT(Shown(second), ElementsAre(L"a anew", L"b", L"c"));

    Result(registry, {MakeInfo(Named(L"b"), L"b anew")});
    Save();
    EXPECT_THAT(Shown(registry), ElementsAre(L"a anew", L"b anew"));
    // The second one put records back, which are no results of the first one's scan.
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"c")));
    Save();
    second.SaveConfiguration(file, true);
    EXPECT_THAT(Shown(second), ElementsAre(L"a anew", L"b anew", L"c"));
    PluginModuleInfoManager third;
    Load(third);
    EXPECT_THAT(Shown(third), ElementsAre(L"a anew", L"b anew", L"c"));
    EXPECT_THAT(third.PutBackUnreached(), IsEmpty());
}

TEST_F(RegistryAsidesMergeTest, ASecondHostKeepsInTheFileWhatTheFirstHasAside)
{
    Save();
    PluginModuleInfoManager second;
    Load(second);
    Add(L"a");
    Add(L"b");
    registry.RemovePluginLocators({Named(L"a"), Named(L"b")});
    Save();
    second.AddModule(Info(L"c"));
    second.SaveConfiguration(file, true);
    EXPECT_THAT(second.PutBackUnreached(), IsEmpty());
    PluginModuleInfoManager afterAKill;
    Load(afterAKill);
    EXPECT_THAT(afterAKill.PutBackUnreached(), ElementsAre(Named(L"a"), Named(L"b")));

    // The first one has no such record aside any more, so it goes from the second one's file, too.
    Result(registry, {Info(L"a"), Info(L"b")});
    Save();
    second.SaveConfiguration(file, true);
    EXPECT_THAT(ReadAll(path), Not(HasSubstr("<aside")));
    EXPECT_THAT(Shown(second), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(RegistryAsidesMergeTest, ARescanByAnotherHostIsNewerThanWhatIsAside)
{
    Add(L"a");
    Save();
    PluginModuleInfoManager second;
    Load(second);
    registry.RemovePluginLocators({Named(L"a")});
    Save();
    Result(second, {MakeInfo(Named(L"a"), L"newer")});
    second.SaveConfiguration(file, true);
    Save();
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
    EXPECT_THAT(Shown(registry), ElementsAre(L"newer"));
}

} // namespace

} // namespace zetaudiofilterhost
