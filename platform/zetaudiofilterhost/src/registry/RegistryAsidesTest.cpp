// A record that a scan does not reach is kept.
#include <functional>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zettesting/TextOf.h>

#include "testing/RegistryFixture.h"

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using zettesting::ReadAll;
using zettesting::ToWide;
using zettesting::WriteAll;
using Locators = std::vector<PluginLocator>;
using InfoPtr = PluginModuleInfoManager::InfoPtr;

class RegistryAsidesTest : public RegistryFixture
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
    static InfoPtr Alone(InfoPtr info)
    {
        info->SetScannedAlone(true);
        return info;
    }
    void WriteFile(const std::string& content, const std::string& version = "1.1")
    {
        WriteAll(path, "<audioplugins version=\"" + version + "\">\n" + content + "</audioplugins>\n");
    }

    const PluginLocator shell = Vst(L"/shell.so");
    const PluginLocator one = Vst(L"/shell.so", L"1");
    const PluginLocator two = Vst(L"/shell.so", L"2");
    Locators vanished;
};

TEST_F(RegistryAsidesTest, WhatIsRemovedForAScanIsNotFoundUntilItIsPutBack)
{
    Add(L"b");
    Add(L"a");
    Held(registry, Named(L"a")).SetEnabled(false);
    Held(registry, Named(L"a")).SetFileStamp(5, 6);
    registry.RemovePluginLocators({Named(L"b"), Named(L"a")});
    EXPECT_EQ(registry.RecordCount(), 0u);
    EXPECT_EQ(registry.Find(Named(L"a")), nullptr);
    EXPECT_THAT(registry.FindModule(Named(L"a")), IsEmpty());
    EXPECT_THAT(Shown(registry), IsEmpty());
    registry.CollectPotentialPlugins(true, vanished);
    EXPECT_THAT(vanished, IsEmpty());

    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"a"), Named(L"b")));
    EXPECT_THAT(Shown(registry), ElementsAre(L"a", L"b"));
    EXPECT_FALSE(Held(registry, Named(L"a")).IsEnabled());
    EXPECT_TRUE(Held(registry, Named(L"b")).IsEnabled());
    EXPECT_EQ(Held(registry, Named(L"a")).GetFileSize(), 5u);
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
}

TEST_F(RegistryAsidesTest, AResultTakesThePlaceOfWhatIsAside)
{
    for (const wchar_t* name : {L"external", L"inprocess", L"unreached"})
        Add(name);
    registry.RemovePluginLocators({Named(L"external"), Named(L"inprocess"), Named(L"unreached")});
    Result(registry, {MakeInfo(Named(L"external"), L"new")});
    registry.AddModule(MakeInfo(Named(L"inprocess"), L"new too"));
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"unreached")));
    EXPECT_THAT(Shown(registry), ElementsAre(L"new", L"new too", L"unreached"));
}

TEST_F(RegistryAsidesTest, AModuleThatCouldNotBeLookedAtStaysAsideAndOneThatIsNewIsNoted)
{
    Add(L"a");
    registry.RemovePluginLocators({Named(L"a")});
    const auto unscanned = [](const std::wstring& name) {
        InfoPtr info = Info(name);
        info->SetStatus(ModuleStatus::Unscanned);
        return info;
    };
    Result(registry, {unscanned(L"a"), unscanned(L"new")});
    EXPECT_EQ(registry.Find(Named(L"a")), nullptr);
    EXPECT_EQ(Held(registry, Named(L"new")).GetStatus(), ModuleStatus::Unscanned);
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"a")));
    EXPECT_EQ(Held(registry, Named(L"a")).GetStatus(), ModuleStatus::Working);
}

TEST_F(RegistryAsidesTest, AResultOfAModuleSpeaksForAllThatIsAsideOfIt)
{
    registry.AddModule(MakeInfo(one));
    registry.AddModule(MakeInfo(two));
    registry.RemovePluginLocators({shell});
    Result(registry, {MakeInfo(two)});
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
    EXPECT_EQ(registry.Find(one), nullptr);

    registry.RemovePluginLocators({shell});
    registry.AddModule(MakeInfo(one));
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
    EXPECT_EQ(registry.Find(two), nullptr);
}

TEST_F(RegistryAsidesTest, ASubComponentScannedAloneSpeaksForItselfOnly)
{
    registry.AddModule(MakeInfo(one, L"one"));
    registry.AddModule(MakeInfo(two, L"two"));
    registry.RemovePluginLocators({one});
    EXPECT_THAT(Shown(registry), ElementsAre(L"two"));
    Result(registry, {Alone(MakeInfo(one, L"one anew"))});
    EXPECT_THAT(Shown(registry), ElementsAre(L"one anew", L"two"));
    EXPECT_FALSE(Held(registry, one).IsScannedAlone());
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
    // Told of the module as a whole, the same text takes its sibling out.
    Result(registry, {MakeInfo(one, L"one")});
    EXPECT_THAT(Shown(registry), ElementsAre(L"one"));
}

TEST_F(RegistryAsidesTest, SubComponentsOfOneShellThatAreScannedOneByOneWaitForTheirOwnResults)
{
    for (const auto& give : {std::function<void(InfoPtr)>([this](InfoPtr info) { Result(registry, {info}); }),
                             std::function<void(InfoPtr)>([this](InfoPtr info) { registry.AddModule(info); }),
                             std::function<void(InfoPtr)>([this](InfoPtr info) {
                                 info->SetScannedAlone(false);
                                 registry.AddModule(info);
                             })}) {
        ResetRegistry(registry);
        registry.AddModule(MakeInfo(one, L"one"));
        registry.AddModule(MakeInfo(two, L"two"));
        registry.RemovePluginLocators({one, two});
        give(Alone(MakeInfo(one, L"one anew")));
        EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(two));
        EXPECT_THAT(Shown(registry), ElementsAre(L"one anew", L"two"));
    }
}

TEST_F(RegistryAsidesTest, AResultWithOneRecordThatWasNotScannedAloneSpeaksForTheModule)
{
    const PluginLocator three = Vst(L"/shell.so", L"3");
    for (const PluginLocator& locator : {one, two, three})
        registry.AddModule(MakeInfo(locator));
    Result(registry, {Alone(MakeInfo(one)), MakeInfo(two)});
    EXPECT_NE(registry.Find(one), nullptr);
    EXPECT_EQ(registry.Find(three), nullptr);
}

TEST_F(RegistryAsidesTest, WhatHasVanishedGoesForGoodWithItsChoiceRemembered)
{
    Add(L"gone");
    Held(registry, Named(L"gone")).SetEnabled(false);
    registry.CollectPotentialPlugins(true, vanished);
    ASSERT_THAT(vanished, ElementsAre(Named(L"gone")));
    registry.RemovePluginLocators(vanished);
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
    Save();
    EXPECT_THAT(ReadAll(path), Not(HasSubstr("<aside")));
    Add(L"gone");
    EXPECT_FALSE(Held(registry, Named(L"gone")).IsEnabled());
    // The search's findings count for the removal that follows it, and for no later one.
    registry.RemovePluginLocators({Named(L"gone")});
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"gone")));
}

TEST_F(RegistryAsidesTest, OnlyWhatTheSearchItselfFoundToHaveVanishedGoesForGood)
{
    const PluginLocator known = Vst(L"/gone/shell.so", L"1"), later = Vst(L"/gone/shell.so", L"2");
    registry.AddModule(MakeInfo(known));
    registry.CollectPotentialPlugins(true, vanished);
    ASSERT_THAT(vanished, ElementsAre(known.ModuleLocator(), known));
    registry.AddModule(MakeInfo(later));
    registry.RemovePluginLocators({known, later});
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(later)) << "it came after the search";
}

TEST_F(RegistryAsidesTest, OfABannedPluginOnlyTheChoiceIsRemembered)
{
    Add(L"bad");
    Add(L"good");
    Held(registry, Named(L"bad")).SetEnabled(false);
    registry.RemovePluginLocators({Named(L"bad"), Named(L"good")});
    registry.SetBannedLocators({BannedModule{Named(L"bad")}});
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"good")));
    registry.SetBannedLocators({});
    EXPECT_EQ(registry.Find(Named(L"bad")), nullptr);
    Add(L"bad");
    EXPECT_FALSE(Held(registry, Named(L"bad")).IsEnabled());
}

TEST_F(RegistryAsidesTest, TheFileKeepsWhatIsAsideAndLoadingDoesNotPutItBack)
{
    Add(L"a");
    Held(registry, Named(L"a")).SetVendor(L"Maker");
    Held(registry, Named(L"a")).SetEnabled(false);
    registry.AddModule(MakeInfo(one));
    registry.RemovePluginLocators({Named(L"a"), one});
    Save();
    EXPECT_THAT(ReadAll(path), HasSubstr("<aside locator=\"VST|/a.so|\" name=\"a\" vendor=\"Maker\""));
    PluginModuleInfoManager next;
    Load(next);
    EXPECT_EQ(next.RecordCount(), 0u);
    EXPECT_THAT(Shown(next), IsEmpty());
    EXPECT_THAT(next.PutBackUnreached(), ElementsAre(Named(L"a"), one));
    EXPECT_EQ(Held(next, Named(L"a")).GetVendor(), L"Maker");
    EXPECT_FALSE(Held(next, Named(L"a")).IsEnabled());
    next.SaveConfiguration(file, true);
    EXPECT_THAT(ReadAll(path), Not(HasSubstr("<aside")));
    EXPECT_THAT(ReadAll(path), Not(HasSubstr("alone=")));
}

TEST_F(RegistryAsidesTest, AHostThatIsKilledInTheMiddleOfAScanLosesNothing)
{
    for (const wchar_t* name : {L"crashes", L"found", L"unreached"})
        Add(name);
    Save();
    registry.BeginIncrementalSaves();
    registry.RemovePluginLocators({Named(L"found"), Named(L"crashes"), Named(L"unreached")});
    Save();
    const std::string base = ReadAll(path);
    registry.AddModule(MakeInfo(Named(L"found"), L"found anew"));
    registry.SetBannedLocators({BannedModule{Named(L"crashes")}});
    Save();
    EXPECT_EQ(ReadAll(path), base);

    PluginModuleInfoManager next;
    Load(next);
    EXPECT_THAT(next.PutBackUnreached(), ElementsAre(Named(L"unreached")));
    EXPECT_THAT(Shown(next), ElementsAre(L"found anew", L"unreached"));
}

TEST_F(RegistryAsidesTest, WhatIsRemovedInTheMiddleOfAScanIsAsideInTheJournal)
{
    Add(L"a");
    Held(registry, Named(L"a")).SetEnabled(false);
    Add(L"b");
    registry.BeginIncrementalSaves();
    Save();
    registry.RemovePluginLocators({Named(L"a"), Named(L"b")});
    Save();
    EXPECT_THAT(ReadAll(journal), HasSubstr("<aside locator=\"VST|/a.so|\""));
    Result(registry, {MakeInfo(Named(L"b"), L"b anew")});

    PluginModuleInfoManager next;
    Load(next);
    EXPECT_THAT(Shown(next), ElementsAre(L"b anew"));
    EXPECT_THAT(next.PutBackUnreached(), ElementsAre(Named(L"a")));
    EXPECT_FALSE(Held(next, Named(L"a")).IsEnabled());
    // Putting back goes to the journal, too.
    registry.PutBackUnreached();
    Save();
    PluginModuleInfoManager last;
    Load(last);
    EXPECT_THAT(Shown(last), ElementsAre(L"a", L"b anew"));
    EXPECT_THAT(last.PutBackUnreached(), IsEmpty());
}

TEST_F(RegistryAsidesTest, ARecordGoesBeforeAnAsideOfTheSameFile)
{
    WriteFile(
        "<aside locator=\"VST|/a.so|\" name=\"old\"/>\n<module locator=\"VST|/a.so|\" name=\"new\"/>\n"
        "<aside locator=\"VST|/b.so|\" name=\"first\"/>\n<aside locator=\"VST|/b.so|\" name=\"last\"/>\n");
    Load(registry);
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"b")));
    EXPECT_THAT(Shown(registry), ElementsAre(L"new", L"last"));
}

TEST_F(RegistryAsidesTest, AChoiceIsTheSameWithAndWithoutItsElement)
{
    WriteFile("<aside locator=\"VST|/a.so|\" enabled=\"false\"/>\n<aside locator=\"VST|/b.so|\"/>\n"
              "<choice locator=\"VST|/b.so|\" enabled=\"false\"/>\n");
    Load(registry);
    Add(L"a");
    Add(L"b");
    EXPECT_FALSE(Held(registry, Named(L"a")).IsEnabled());
    EXPECT_FALSE(Held(registry, Named(L"b")).IsEnabled());
}

TEST_F(RegistryAsidesTest, ADamagedAsideIsDamageThatNamesItsLine)
{
    WriteFile("<module locator=\"VST|/a.so|\"/>\n<aside locator=\"VST|/b.so|\" size=\"big\"/>\n");
    EXPECT_FALSE(registry.LoadConfiguration(file));
    EXPECT_THAT(zettesting::TextOf(registry.GetLoadError()),
                HasSubstr("line 3: element aside, attribute size: \"big\""));
    EXPECT_TRUE(std::filesystem::exists(path.string() + ".damaged"));
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
}

TEST_F(RegistryAsidesTest, AnAsideOfANewerVersionThatCannotBeReadIsKept)
{
    WriteFile(
        "<aside locator=\"VST|/a.so|\" status=\"excellent\"/>\n<aside locator=\"VST|/b.so|\" stars=\"5\"/>\n",
        "1.9");
    Load(registry);
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"b")));
    Save();
    EXPECT_THAT(ReadAll(path), HasSubstr("<aside locator=\"VST|/a.so|\" status=\"excellent\"/>"));
    EXPECT_THAT(ReadAll(path), HasSubstr("stars=\"5\""));
    EXPECT_THAT(ReadAll(path), HasSubstr("<audioplugins version=\"1.9\""));
}

TEST_F(RegistryAsidesTest, AResultMayOnlyBringModules)
{
    registry.AddConfiguration("<audioplugins version=\"1.1\"><aside locator=\"VST|/a.so|\"/></audioplugins>",
                              false);
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
    registry.AddConfiguration("<audioplugins version=\"1.1\"><aside locator=\"VST|/a.so|\"/></audioplugins>",
                              true);
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"a")));
}

} // namespace

} // namespace zetaudiofilterhost
