#include <algorithm>
#include <ostream>
#include <set>

#include <gmock/gmock.h>
#include <zettesting/TemporaryFolder.h>

#include "LoadedPlugin.h"

namespace zettesting {

bool operator==(const TestPluginFacts& a, const TestPluginFacts& b)
{
    return a.plugin == b.plugin && a.name == b.name && a.vendor == b.vendor && a.version == b.version &&
           a.uniqueId == b.uniqueId && a.synth == b.synth && a.inShell == b.inShell;
}

void PrintTo(const TestPluginFacts& facts, std::ostream* stream)
{
    *stream << facts.plugin << ": " << facts.name << ", " << facts.vendor << ", " << facts.version << ", "
            << facts.uniqueId << (facts.synth ? ", synth" : "") << (facts.inShell ? ", in a shell" : "");
}

namespace {

std::set<std::string> GoodPlugins()
{
    std::set<std::string> names;
    for (const TestPluginFacts& facts : GoodTestPluginFacts())
        names.insert(facts.plugin);
    return names;
}

std::string TestName(const ::testing::TestParamInfo<std::string>& plugin)
{
    return plugin.param.substr(plugin.param.find('/') + 1);
}

class GoodPlugin : public ::testing::TestWithParam<std::string>
{};

TEST_P(GoodPlugin, TellsWhatTheTableOfFactsSays)
{
    std::vector<TestPluginFacts> expected;
    std::ranges::copy_if(GoodTestPluginFacts(), std::back_inserter(expected),
                         [](const TestPluginFacts& facts) { return facts.plugin == GetParam(); });
    EXPECT_EQ(AskForFacts(GetParam()), expected);
    EXPECT_EQ(AskForFacts(GetParam()), expected) << "when loaded once more";
}

INSTANTIATE_TEST_SUITE_P(Each, GoodPlugin, ::testing::ValuesIn(GoodPlugins()), TestName);

TEST(GoodPlugins, AreAllInTheTableOfFacts)
{
    std::set<std::string> built;
    for (const auto& entry : std::filesystem::directory_iterator(TestPluginsFolder() / "good"))
        built.insert("good/" + entry.path().stem().string());
    EXPECT_EQ(built, GoodPlugins());
}

TEST(GoodPlugins, Vst2EffectIsNotMadeInAHostWithoutAVersion)
{
    const auto library = LoadLibraryOf("good/vst2_effect");
    const vst2::HostCallback mute = [](vst2::Effect*, std::int32_t, std::int32_t, std::intptr_t, void*,
                                       float) -> std::intptr_t { return 0; };
    EXPECT_EQ(EntryOf(library)(mute), nullptr);
}

TEST(GoodPlugins, Vst2ShellMakesNothingForAnIdThatItDoesNotHave)
{
    EXPECT_EQ(CreateEffect(LoadLibraryOf("good/vst2_shell"), 1), nullptr);
}

TEST(GoodPlugins, Vst2MainEntryHasOnlyTheOldEntry)
{
    const auto library = LoadLibraryOf("good/vst2_main_entry");
    EXPECT_FALSE(library.has(vst2::entryName));
    EXPECT_TRUE(library.has(vst2::oldEntryName));
}

TEST(GoodPlugins, Vst3Factory1OnlyOffersNoLaterFactory)
{
    const EnteredModule module("good/vst3_factory1_only");
    const auto factory = module.Factory();
    EXPECT_TRUE(Query<vst3::IPluginFactory>(*factory));
    EXPECT_FALSE(Query<vst3::IPluginFactory2>(*factory));
    EXPECT_FALSE(Query<vst3::IPluginFactory3>(*factory));
}

TEST(GoodPlugins, Vst3SeveralClassesHasAControllerAmongItsClasses)
{
    const EnteredModule module("good/vst3_several_classes");
    const auto factory = module.Factory();
    vst3::PClassInfo info{};
    ASSERT_EQ(factory->CountClasses(), 5);
    ASSERT_EQ(factory->GetClassInfo(1, &info), vst3::resultOk);
    EXPECT_EQ(Text(info.category), vst3::componentControllerClass);
}

TEST(GoodPlugins, Vst3ComponentIsInitialisedByAHostThatSaysItsName)
{
    NamedHost host;
    {
        const EnteredModule module("good/vst3_without_moduleinfo");
        const auto factory = module.Factory();
        vst3::PClassInfo info{};
        ASSERT_EQ(factory->GetClassInfo(0, &info), vst3::resultOk);
        void* made = nullptr;
        ASSERT_EQ(factory->CreateInstance(info.cid, vst3::IComponent::iid.Data(), &made), vst3::resultOk);
        const InterfacePointer<vst3::IComponent> component(static_cast<vst3::IComponent*>(made));
        EXPECT_NE(component->Initialize(nullptr), vst3::resultOk);
        EXPECT_EQ(component->Initialize(&host), vst3::resultOk);
        EXPECT_EQ(component->Terminate(), vst3::resultOk);
    }
    EXPECT_EQ(host.References(), 0u);
}

TEST(GoodPlugins, ModuleinfoLiesInBothDocumentedPlacesAndHasWhatPlainJsonHasNot)
{
    const std::string inResources =
        ReadAll(TestPlugin("good/vst3_with_moduleinfo") / "Contents/Resources/moduleinfo.json");
    EXPECT_THAT(inResources, ::testing::HasSubstr("//"));
    EXPECT_THAT(inResources, ::testing::HasSubstr("/*"));
    EXPECT_THAT(inResources, ::testing::HasSubstr(",\n}"));
    const std::string beside =
        ReadAll(TestPlugin("good/vst3_with_moduleinfo_beside") / "Contents/moduleinfo.json");
    EXPECT_THAT(beside, ::testing::HasSubstr("\"Ebb Organ\""));
    EXPECT_FALSE(
        std::filesystem::exists(TestPlugin("good/vst3_without_moduleinfo") / "Contents/moduleinfo.json"));
}

TEST(GoodPlugins, Vst3SingleFileIsAFile)
{
    EXPECT_TRUE(std::filesystem::is_regular_file(TestPlugin("good/vst3_single_file")));
    EXPECT_TRUE(std::filesystem::is_directory(TestPlugin("good/vst3_without_moduleinfo")));
}

} // namespace
} // namespace zettesting
