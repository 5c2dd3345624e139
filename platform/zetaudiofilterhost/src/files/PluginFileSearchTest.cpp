#include "files/PluginFileSearch.h"

#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"
#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zettesting/TestPlugins.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetcore::filesupport::ToNativePath;
using zettesting::ToWide;
using zettesting::WriteAll;

class PluginFileSearchTest : public RegistryFixture
{
  protected:
    PluginFileSearchTest() { std::filesystem::create_directory(plugins); }

    void MakeBundle(const std::filesystem::path& bundle)
    {
        const std::filesystem::path library = zettesting::BundleLibrary(bundle);
        std::filesystem::create_directories(library.parent_path());
        WriteAll(library, "binary");
    }
    /// Relative to `plugins`, with '/'.
    std::vector<std::string> Search(TechnologyType type, const std::vector<std::filesystem::path>& folders)
    {
        PluginFileSearch search(*FindPluginFormat(type));
        for (const std::filesystem::path& searched : folders)
            EXPECT_TRUE(search.SearchFolder(ToWide(searched)));
        std::vector<std::string> paths;
        for (const FoundPlugin& plugin : search.Found())
            paths.push_back(ToNativePath(plugin.path).lexically_relative(plugins).generic_string());
        return paths;
    }

    const std::filesystem::path plugins = folder / "plugins";
};

TEST_F(PluginFileSearchTest, FindsFilesAtAnyDepthEachFoldersFilesFirst)
{
    std::filesystem::create_directories(plugins / "a" / "deep" / "deeper");
    std::filesystem::create_directories(plugins / "b");
    for (const char* name :
         {"z.vst3", "b/1.vst3", "a/deep/deeper/2.vst3", "a/3.vst3", "y.txt", "x.VST3x", "vst3"})
        WriteAll(plugins / name, "file");
    EXPECT_THAT(Search(TechnologyType::VST3, {plugins}),
                ElementsAre("z.vst3", "a/3.vst3", "a/deep/deeper/2.vst3", "b/1.vst3"));
}

TEST_F(PluginFileSearchTest, ABundleIsOnePluginAndNotSearchedInside)
{
    MakeBundle(plugins / "One.vst3");
    MakeBundle(plugins / "One.vst3" / "Contents" / "Inner.vst3");
    MakeBundle(plugins / "sub" / "Two.vst3");
    EXPECT_THAT(Search(TechnologyType::VST3, {plugins}), ElementsAre("One.vst3", "sub/Two.vst3"));
    EXPECT_THAT(Search(TechnologyType::VST, {plugins}), IsEmpty());
}

TEST_F(PluginFileSearchTest, ABundleMayBeTheFolderItself)
{
    MakeBundle(plugins / "One.vst3");
    EXPECT_THAT(Search(TechnologyType::VST3, {plugins / "One.vst3"}), ElementsAre("One.vst3"));
    EXPECT_THAT(Search(TechnologyType::VST, {plugins / "One.vst3"}), IsEmpty());
}

TEST_F(PluginFileSearchTest, FoldersInsideEachOtherAreSearchedOnceInTheGivenOrder)
{
    std::filesystem::create_directories(plugins / "inner");
    WriteAll(plugins / "inner" / "i.vst3", "");
    WriteAll(plugins / "o.vst3", "");
    EXPECT_THAT(Search(TechnologyType::VST3, {plugins / "inner", plugins, plugins}),
                ElementsAre("inner/i.vst3", "o.vst3"));
}

TEST_F(PluginFileSearchTest, AFolderThatIsNotThereCannotBeReached)
{
    PluginFileSearch search(*FindPluginFormat(TechnologyType::VST3));
    EXPECT_FALSE(search.SearchFolder(ToWide(plugins / "missing")));
    EXPECT_FALSE(search.SearchFolder(L""));
    WriteAll(plugins / "file", "");
    EXPECT_FALSE(search.SearchFolder(ToWide(plugins / "file")));
    EXPECT_THAT(search.Found(), IsEmpty());
}

TEST_F(PluginFileSearchTest, ThePresenceOfAFileIsWhatTheSystemSays)
{
    WriteAll(plugins / "a.vst3", "");
    const auto presence = [this](TechnologyType type, const char* name) {
        return FindPresence({type, ToWide(plugins / name)});
    };
    EXPECT_EQ(presence(TechnologyType::VST3, "a.vst3"), FilePresence::Present);
    EXPECT_EQ(presence(TechnologyType::VST3, "b.vst3"), FilePresence::Gone);
    EXPECT_EQ(presence(TechnologyType::VST3, "a.vst3/inside"), FilePresence::Gone);
    std::filesystem::create_directory(plugins / "folder");
    EXPECT_EQ(presence(TechnologyType::VST, "folder"), FilePresence::Gone);
    EXPECT_EQ(presence(TechnologyType::VST3, "folder"), FilePresence::Present);
}

TEST_F(PluginFileSearchTest, TheStampOfAFileIsItsSizeAndTime)
{
    const PluginLocator locator(TechnologyType::VST3, ToWide(plugins / "a.vst3"));
    EXPECT_EQ(GetModuleFileStamp(locator), ModuleFileStamp());
    EXPECT_EQ(GetModuleFileStamp(PluginLocator()), ModuleFileStamp());
    WriteAll(plugins / "a.vst3", "12345");
    // Some systems' libraries set whole seconds only.
    const auto time =
        std::chrono::floor<std::chrono::seconds>(std::filesystem::last_write_time(plugins / "a.vst3"));
    std::filesystem::last_write_time(plugins / "a.vst3", time);
    const ModuleFileStamp first = GetModuleFileStamp(locator);
    EXPECT_EQ(first.size, 5u);
    EXPECT_GT(first.time, 1'500'000'000'000'000'000);
    std::filesystem::last_write_time(plugins / "a.vst3", time + std::chrono::seconds(1));
    EXPECT_EQ(GetModuleFileStamp(locator).time - first.time, 1'000'000'000);
}

TEST_F(PluginFileSearchTest, TheStampOfABundleIsThatOfWhatIsLoadedAndRead)
{
    const std::filesystem::path bundle = plugins / "One.vst3";
    const PluginLocator locator(TechnologyType::VST3, ToWide(bundle));
    std::filesystem::create_directory(bundle);
    EXPECT_EQ(GetModuleFileStamp(locator), ModuleFileStamp());
    MakeBundle(bundle);
    const ModuleFileStamp binary = GetModuleFileStamp(locator);
    EXPECT_EQ(binary.size, 6u);
    WriteAll(bundle / "Contents" / "readme.txt", "not part of it");
    EXPECT_EQ(GetModuleFileStamp(locator), binary);
    std::filesystem::create_directory(bundle / "Contents" / "Resources");
    WriteAll(bundle / "Contents" / "Resources" / "moduleinfo.json", "{}");
    EXPECT_EQ(GetModuleFileStamp(locator).size, 8u);
    EXPECT_GE(GetModuleFileStamp(locator).time, binary.time);
}

} // namespace

} // namespace zetaudiofilterhost
