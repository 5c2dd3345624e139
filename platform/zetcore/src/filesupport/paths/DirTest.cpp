#include <zetcore/filesupport/paths/Dir.h>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/utility/ClientName.h>
#include <zettesting/HostFixture.h>

#include "filesupport/paths/PlatformFolders.h"

namespace zetcore::filesupport {
namespace {

using zettesting::ToWide;

class DirTest : public zettesting::HostFixture
{};

TEST_F(DirTest, ExistsOnlyAsAFolder)
{
    zettesting::WriteAll(folder / "file", "x");
    EXPECT_TRUE(Dir(folder.Wide()).Exists());
    EXPECT_FALSE(Dir(ToWide(folder / "file")).Exists());
    EXPECT_FALSE(Dir(ToWide(folder / "missing")).Exists());
    EXPECT_FALSE(Dir().Exists());
}

TEST_F(DirTest, IsCreatedWithItsParents)
{
    const Dir deep(ToWide(folder / "a" / "b" / "c"));
    deep.Create();
    EXPECT_TRUE(deep.Exists());
    EXPECT_NO_THROW(deep.Create());
}

TEST_F(DirTest, CannotBeCreatedUnderAFile)
{
    zettesting::WriteAll(folder / "file", "x");
    try {
        Dir(ToWide(folder / "file" / "sub")).Create();
        FAIL() << "the folder was made";
    } catch (const file_exception& error) {
        EXPECT_EQ(error.Path(), ToWide(folder / "file" / "sub"));
    }
    EXPECT_THROW(Dir(ToWide(folder / "file")).Create(), file_exception);
    EXPECT_THROW(Dir().Create(), file_exception);
}

TEST_F(DirTest, FullPathIsAbsoluteAndWithoutDetours)
{
    EXPECT_EQ(Dir(ToWide(folder / "missing" / "." / "sub" / "")).FullPath(),
              ToWide(folder / "missing" / "sub"));
    EXPECT_EQ(Dir(ToWide(folder / "missing" / ".." / "sub")).FullPath(), ToWide(folder / "sub"));
    EXPECT_EQ(Dir(L"relative").FullPath(), ToWide(std::filesystem::current_path() / "relative"));
    EXPECT_EQ(Dir().FullPath(), L"");
    EXPECT_TRUE(Dir().IsEmpty());
    EXPECT_FALSE(Dir(L"relative").IsEmpty());
}

TEST_F(DirTest, TheHostChoosesThePreferencesFolder)
{
    EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(prefs));
    Dir::SetPrefDir(ToWide(folder / "new" / "prefs"));
    EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(folder / "new" / "prefs"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "new" / "prefs"));
}

TEST_F(DirTest, ARelativePreferencesFolderStaysWhereItWasWhenItWasSet)
{
    struct CurrentFolder
    {
        ~CurrentFolder() { std::filesystem::current_path(before); }
        const std::filesystem::path before = std::filesystem::current_path();
    } const restored;
    std::filesystem::create_directory(folder / "elsewhere");
    std::filesystem::current_path(folder.Path());
    const std::filesystem::path here = std::filesystem::current_path();
    Dir::SetPrefDir(L"relative");
    std::filesystem::current_path(folder / "elsewhere");
    EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(here / "relative"));
    EXPECT_TRUE(std::filesystem::is_directory(here / "relative"));
}

TEST_F(DirTest, APreferencesFolderThatCannotBeMadeFailsWhenItIsWrittenTo)
{
    zettesting::WriteAll(folder / "file", "x");
    Dir::SetPrefDir(ToWide(folder / "file" / "prefs"));
    const Dir dir = Dir::PrefDir();
    EXPECT_EQ(dir.FullPath(), ToWide(folder / "file" / "prefs"));
    EXPECT_FALSE(dir.Exists());
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(File(dir, L"a").FullPath(), "x"), file_exception);
}

TEST_F(DirTest, AClientsNameMakesOneFolderName)
{
    EXPECT_EQ(FolderNameOfClient(L"My Host"), L"My Host");
    EXPECT_EQ(FolderNameOfClient(L"Größe 🎹"), L"Größe 🎹");
    EXPECT_EQ(FolderNameOfClient(L"a/b\\c:d"), L"a_b_c_d");
    EXPECT_EQ(FolderNameOfClient(L"a\nb"), L"a_b");
    EXPECT_EQ(FolderNameOfClient(std::wstring(L"a\0b", 3)), L"a_b");
    EXPECT_EQ(FolderNameOfClient(L".."), L"__");
    EXPECT_EQ(FolderNameOfClient(L"Host. "), L"Host__");
    EXPECT_EQ(FolderNameOfClient(L".hidden"), L".hidden");
    EXPECT_EQ(FolderNameOfClient(L""), L"_");
}

TEST_F(DirTest, TheExecutableFolderCanBeChosen)
{
    const Dir own = commondirs::ExecutableDir();
    EXPECT_TRUE(own.Exists());
    commondirs::SetExecutableDir(folder.Wide());
    EXPECT_EQ(commondirs::ExecutableDir().FullPath(), folder.Wide());
    commondirs::SetExecutableDir({});
    EXPECT_EQ(commondirs::ExecutableDir().FullPath(), own.FullPath());
}

TEST_F(DirTest, TheHostsNameIsKept)
{
    const std::wstring before = utility::GetClientName();
    EXPECT_EQ(before, L"zetaudiopluginmanager");
    utility::SetClientName(L"Höst");
    EXPECT_EQ(utility::GetClientName(), L"Höst");
    utility::SetClientName(before);
}

} // namespace
} // namespace zetcore::filesupport
