#include <gmock/gmock.h>
#include <zettesting/Emulation.h>
#include <zettesting/Environment.h>
#include <zettesting/TemporaryFolder.h>

#include "LoadedPlugin.h"

namespace zettesting {
namespace {

class OddModules : public ::testing::Test
{
  protected:
    static bool Loads(const std::filesystem::path& module)
    {
        std::error_code error;
        const boost::dll::shared_library library(module, error);
        return !error;
    }
    static std::string Name(const std::filesystem::path& module)
    {
        const boost::dll::shared_library library(module);
        return AskText(*CreateEffect(library), vst2::EffectGetEffectName);
    }

    TemporaryFolder folder;
};

TEST_F(OddModules, ThatAreNoLibrariesOfThisMachineHaveItsSuffixAndDoNotLoad)
{
    for (const auto make : {&MakeTextModule, &MakeEmptyModule, &Make32BitModule, &MakeOtherMachineModule,
                            &MakeOtherSystemModule}) {
        const std::filesystem::path module = make(folder.Path());
        EXPECT_EQ(module.extension(), ModuleSuffix());
        EXPECT_FALSE(Loads(module)) << module;
    }
}

TEST_F(OddModules, DifferFromAGoodOneInWhatTheyAreNamedFor)
{
    const std::string good = ReadAll(TestPlugin("good/vst2_effect"));
    EXPECT_EQ(ReadAll(MakeEmptyModule(folder.Path())), "");
    EXPECT_EQ(ReadAll(MakeTruncatedModule(folder.Path())), good.substr(0, 4096));
    EXPECT_EQ(ReadAll(MakeTruncatedModule(folder.Path(), 10)), good.substr(0, 10));
    EXPECT_NE(ReadAll(MakeOtherSystemModule(folder.Path())).substr(0, 2), good.substr(0, 2));
    EXPECT_EQ(ReadAll(Make32BitModule(folder.Path())).substr(0, 2), good.substr(0, 2));

    const std::string otherMachine = ReadAll(MakeOtherMachineModule(folder.Path()));
    ASSERT_EQ(otherMachine.size(), good.size());
    std::size_t differences = 0;
    for (std::size_t i = 0; i < good.size(); ++i)
        differences += good[i] != otherMachine[i];
    EXPECT_GE(differences, 1u);
    EXPECT_LE(differences, 2u);
}

TEST_F(OddModules, WithOddNamesAreWorkingPlugins)
{
    const auto copies = CopyTestPluginWithOddNames("good/vst2_effect", folder.Path());
    EXPECT_EQ(copies.size(), OddFileNames().size());
    for (const auto& copy : copies)
        EXPECT_EQ(Name(copy), "Pebble Delay") << copy;
}

TEST_F(OddModules, ThatAreManyCopiesAreSeparateWorkingPlugins)
{
    const auto copies = CopyTestPlugin("good/vst2_effect", folder.Path(), 12);
    ASSERT_EQ(copies.size(), 12u);
    EXPECT_EQ(copies.front().stem(), "copy00000");
    EXPECT_EQ(copies.back().stem(), "copy00011");
    for (const auto& copy : copies) {
        EXPECT_EQ(std::filesystem::hard_link_count(copy), 1u);
        EXPECT_EQ(Name(copy), "Pebble Delay");
    }
}

TEST_F(OddModules, CopiedFromBundlesHaveTheirLibraryRenamedWithThem)
{
    const auto copy = CopyTestPlugin("good/vst3_with_moduleinfo", folder.Path(), "other");
    EXPECT_EQ(copy, folder / "other.vst3");
    EXPECT_TRUE(std::filesystem::exists(copy / "Contents/Resources/moduleinfo.json"));
    EXPECT_EQ(BundleLibrary(copy).stem(), "other");
    EXPECT_TRUE(Loads(BundleLibrary(copy)));
}

TEST_F(OddModules, LinkCycleLeadsToItself)
{
    const auto cycle = MakeLinkCycle(folder.Path());
    if (IsWine()) {
        // Wine 8 makes no links.
        EXPECT_TRUE(std::filesystem::is_empty(cycle));
        return;
    }
    EXPECT_TRUE(std::filesystem::equivalent(cycle, cycle / "again/again/up/cycle"));
    std::error_code error;
    const auto first = (cycle / "first").concat(ModuleSuffix());
    EXPECT_TRUE(std::filesystem::is_symlink(first));
    EXPECT_FALSE(std::filesystem::exists(first, error));
}

TEST(TestPluginsFolder, FollowsTheEnvironment)
{
    const TemporaryFolder folder;
    const ScopedEnvironment elsewhere("ZET_TEST_PLUGINS", folder.Path().string());
    EXPECT_EQ(TestPluginsFolder(), folder.Path());
    EXPECT_THROW(TestPlugin("good/vst2_effect"), std::runtime_error);
}

} // namespace
} // namespace zettesting
