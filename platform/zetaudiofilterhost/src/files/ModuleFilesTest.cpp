#include <zetaudiofilterhost/ModuleFiles.h>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zettesting/TemporaryFolder.h>
#include <zettesting/TestPlugins.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::HasSubstr;
using zettesting::ToWide;

class ModuleFilesTest : public ::testing::Test
{
  protected:
    void Make(const std::filesystem::path& file, const std::string& content = "x") const
    {
        std::filesystem::create_directories((bundle / file).parent_path());
        zettesting::WriteAll(bundle / file, content);
    }
    PluginLocator Locator() const { return {TechnologyType::VST3, ToWide(bundle)}; }
    ModuleFiles Find() const { return FindModuleFiles(Locator()); }
    std::wstring FoundLibrary() const
    {
        const ModuleFiles files = Find();
        const auto* library = std::get_if<std::wstring>(&files.library);
        return library ? *library : std::wstring();
    }
    NoLibrary Lack() const
    {
        const ModuleFiles files = Find();
        const auto* lack = std::get_if<NoLibrary>(&files.library);
        return lack ? *lack : NoLibrary();
    }
    ModuleFileStamp Stamp() const { return GetModuleFileStamp(Locator()); }
    static std::filesystem::path Library(const std::string& stem)
    {
        return zettesting::BundleLibrary(stem + ".vst3").lexically_relative(stem + ".vst3");
    }

    zettesting::TemporaryFolder folder;
    const std::filesystem::path bundle = folder / "My Pack.vst3";
};

TEST_F(ModuleFilesTest, TheLibraryHasTheBundlesNameOrIsTheOnlyOne)
{
    Make(Library("Other"));
    EXPECT_EQ(FoundLibrary(), ToWide(bundle / Library("Other")));
    Make(Library("My Pack"));
    EXPECT_EQ(FoundLibrary(), ToWide(bundle / Library("My Pack")));
    EXPECT_EQ(Lack().reason, "");
}

TEST_F(ModuleFilesTest, ABundleForOtherMachinesIsNamed)
{
    Make("Contents/some-machine/My Pack.so");
    EXPECT_EQ(FoundLibrary(), L"");
    EXPECT_THAT(Lack().reason, HasSubstr(Library("x").parent_path().filename().string()));
    EXPECT_FALSE(Lack().isUnreadable);
    Make(Library("One"));
    Make(Library("Two"));
    EXPECT_NE(Lack().reason, "");
}

TEST_F(ModuleFilesTest, AFolderWithoutContentsIsNoBundle)
{
    std::filesystem::create_directories(bundle);
    EXPECT_EQ(Lack().reason, "a folder that is no bundle");
    EXPECT_FALSE(Lack().isUnreadable);
}

TEST_F(ModuleFilesTest, ASingleFileIsItsOwnLibrary)
{
    zettesting::WriteAll(bundle, "x");
    EXPECT_EQ(FoundLibrary(), ToWide(bundle));
    EXPECT_EQ(Lack().reason, "");
    EXPECT_FALSE(Find().description.has_value());
}

TEST_F(ModuleFilesTest, TheDescriptionIsFoundInBothPlacesWithOrWithoutALibrary)
{
    Make("Contents/readme.txt");
    EXPECT_FALSE(Find().description.has_value());
    Make("Contents/moduleinfo.json");
    EXPECT_EQ(Find().description->FullPath(), ToWide(bundle / "Contents" / "moduleinfo.json"));
    Make(Library("My Pack"));
    Make("Contents/Resources/moduleinfo.json");
    EXPECT_EQ(Find().description->FullPath(), ToWide(bundle / "Contents" / "Resources" / "moduleinfo.json"));
}

TEST_F(ModuleFilesTest, ARenamedBundleHasTheStampOfItsOnlyLibrary)
{
    Make(Library("Old Name"), "12345");
    const ModuleFileStamp before = Stamp();
    EXPECT_EQ(before.size, 5u);
    EXPECT_GT(before.time, 0);
    Make(Library("Old Name"), "an update");
    EXPECT_NE(Stamp(), before);
}

TEST_F(ModuleFilesTest, ALibraryThatABundleGetsLaterIsNoticed)
{
    Make("Contents/moduleinfo.json");
    const ModuleFileStamp before = Stamp();
    Make(Library("My Pack"));
    EXPECT_NE(Stamp(), before);
}

} // namespace

} // namespace zetaudiofilterhost
