// A copy of the whole registry, and back to it.
#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using zettesting::ReadAll;
using zettesting::WriteAll;

class RegistryUndoTest : public RegistryFixture
{
  protected:
    RegistryUndoTest()
    {
        WriteAll(path, "<audioplugins version=\"1.1\" theme=\"dark\">\n"
                       "<technology name=\"VST\"><folder path=\"/one\" colour=\"red\"/></technology>\n"
                       "<technology name=\"VST3\"/><technology name=\"AU\"/>\n"
                       "<module locator=\"VST|/a.so|\" name=\"a\" stars=\"5\"/>\n"
                       "<module locator=\"VST|/b.so|\" name=\"b\" enabled=\"false\"/>\n"
                       "<aside locator=\"VST|/c.so|\" name=\"c\"/>\n"
                       "<choice locator=\"VST|/d.so|\" enabled=\"false\"/>\n<extra/></audioplugins>\n");
        EXPECT_TRUE(registry.LoadConfiguration(file));
    }
    static PluginLocator Named(const std::wstring& name) { return Vst(L"/" + name + L".so"); }
    static std::vector<std::wstring> Loaded(const zetcore::filesupport::File& from)
    {
        PluginModuleInfoManager loaded;
        EXPECT_TRUE(loaded.LoadConfiguration(from));
        return Shown(loaded);
    }
};

TEST_F(RegistryUndoTest, TheTextIsWhatASaveWouldWrite)
{
    const std::string text = registry.ToText();
    registry.SaveConfiguration(file, true);
    EXPECT_EQ(text, ReadAll(path));
    for (const char* part :
         {"theme=\"dark\"", "colour=\"red\"", "stars=\"5\"", "<aside", "<choice", "<extra"})
        EXPECT_THAT(text, HasSubstr(part));
}

TEST_F(RegistryUndoTest, GoingBackToTheCopyUndoesEveryChange)
{
    const std::string before = registry.ToText();
    const auto copy = registry.MakeCopy();
    Held(registry, Named(L"a")).SetEnabled(false);
    registry.RemovePluginLocators({Named(L"b")});
    registry.PutBackUnreached();
    registry.AddModule(MakeInfo(Named(L"e")));
    registry.AddModule(MakeInfo(Named(L"d")));
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/other"});
    registry.ResetToDefaultFolders();
    ASSERT_NE(registry.ToText(), before);
    int raised = 0;
    registry.GetPluginTechnology(TechnologyType::VST)
        ->GetDirectoriesChangedSignal()
        .Connect([&raised](const auto&) { ++raised; });
    registry.UndoTo(*copy);
    EXPECT_EQ(registry.ToText(), before);
    EXPECT_EQ(raised, 1);
    EXPECT_THAT(Shown(registry), ElementsAre(L"a", L"b"));
    EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"c")));
}

TEST_F(RegistryUndoTest, ACopyCanBeGoneBackToAgain)
{
    const std::string before = registry.ToText();
    const auto copy = registry.MakeCopy();
    for (int time = 1; time <= 2; ++time) {
        Held(registry, Named(L"a")).SetEnabled(false);
        registry.RemovePluginLocators({Named(L"a"), Named(L"b")});
        EXPECT_THAT(registry.PutBackUnreached(), ElementsAre(Named(L"a"), Named(L"b"), Named(L"c")));
        Held(registry, Named(L"c")).SetEnabled(false);
        registry.RemovePluginLocators({Named(L"b")});
        registry.UndoTo(*copy);
        EXPECT_EQ(registry.ToText(), before) << time;
    }
}

TEST_F(RegistryUndoTest, WhatIsAsideIsUndoneAsItWas)
{
    const PluginLocator shell = Vst(L"/shell.so", L"1");
    registry.AddModule(MakeInfo(shell, L"s"));
    registry.RemovePluginLocators({shell});
    const std::string before = registry.ToText();
    ASSERT_THAT(before, HasSubstr("alone=\"true\""));
    const auto copy = registry.MakeCopy();
    registry.PutBackUnreached();
    registry.UndoTo(*copy);
    EXPECT_EQ(registry.ToText(), before);
}

TEST_F(RegistryUndoTest, WhoeverHasReadTheRecordsSeesThatTheirChoicesWereUndone)
{
    const auto copy = registry.MakeCopy();
    Held(registry, Named(L"a")).SetEnabled(false);
    const auto changes = registry.GetRecordChanges();
    registry.UndoTo(*copy);
    EXPECT_NE(registry.GetRecordChanges(), changes);
    EXPECT_TRUE(Held(registry, Named(L"a")).IsEnabled());
}

TEST_F(RegistryUndoTest, WhatWasUndoneIsSavedEvenWhereAnotherProgramHasSavedMeanwhile)
{
    const auto copy = registry.MakeCopy();
    Held(registry, Named(L"a")).SetEnabled(false);
    registry.AddModule(MakeInfo(Named(L"e"), L"e"));
    registry.SaveConfiguration(file, true);
    registry.UndoTo(*copy);
    PluginModuleInfoManager other;
    ASSERT_TRUE(other.LoadConfiguration(file));
    other.AddModule(MakeInfo(Named(L"f"), L"f"));
    other.SaveConfiguration(file, true);
    registry.SaveConfiguration(file, true);
    PluginModuleInfoManager loaded;
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    EXPECT_THAT(Shown(loaded), ElementsAre(L"a", L"b", L"f"));
    EXPECT_TRUE(Held(loaded, Named(L"a")).IsEnabled());
}

TEST_F(RegistryUndoTest, AnIncrementalSaveAfterwardsIsAWholeOne)
{
    registry.BeginIncrementalSaves();
    registry.SaveConfiguration(file, true);
    const std::string before = registry.ToText();
    const auto copy = registry.MakeCopy();
    registry.AddModule(MakeInfo(Named(L"e"), L"e"));
    ASSERT_TRUE(std::filesystem::exists(journal));
    registry.UndoTo(*copy);
    registry.SaveConfiguration(file, true);
    EXPECT_EQ(ReadAll(path), before);
    EXPECT_FALSE(std::filesystem::exists(journal));
    Held(registry, Named(L"a")).SetEnabled(false);
    registry.SaveConfiguration(file, true);
    EXPECT_TRUE(std::filesystem::exists(journal));
    EXPECT_THAT(Loaded(file), ElementsAre(L"a", L"b"));
}

} // namespace

} // namespace zetaudiofilterhost
