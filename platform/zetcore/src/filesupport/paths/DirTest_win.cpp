#include <zetcore/filesupport/paths/Dir.h>

#include <algorithm>

#include <gtest/gtest.h>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/utility/ClientName.h>
#include <zettesting/HostFixture.h>

namespace zetcore::filesupport {
namespace {

using zettesting::ScopedEnvironment;
using zettesting::ToWide;

class DirTestWin : public zettesting::HostFixture
{};

TEST_F(DirTestWin, ThePreferencesFolderIsTheClientsInTheRoamingFolder)
{
    const ScopedEnvironment roaming("APPDATA", (folder / "roaming").string());
    Dir::SetPrefDir({});
    EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(folder / "roaming" / "zetaudiopluginmanager"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "roaming" / "zetaudiopluginmanager"));
    utility::SetClientName(L"Other/Host: \"x\"?");
    EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(folder / "roaming" / "Other_Host_ _x__"));
    utility::SetClientName(L"zetaudiopluginmanager");
}

TEST_F(DirTestWin, WithoutARoamingFolderTheUsersFolderHasThePreferences)
{
    const ScopedEnvironment home("USERPROFILE", (folder / "home").string());
    const ScopedEnvironment roaming("APPDATA", std::nullopt);
    Dir::SetPrefDir({});
    EXPECT_EQ(Dir::PrefDir().FullPath(),
              ToWide(folder / "home" / "AppData" / "Roaming" / "zetaudiopluginmanager"));
    EXPECT_EQ(commondirs::HomeDir().FullPath(), ToWide(folder / "home"));
}

TEST_F(DirTestWin, FoldersAreTheSameWithEitherSeparator)
{
    const std::wstring path = ToWide(folder / "a" / "b");
    std::wstring slashes = path;
    std::replace(slashes.begin(), slashes.end(), L'\\', L'/');
    Dir(slashes + L"/").Create();
    EXPECT_TRUE(Dir(path).Exists());
    EXPECT_EQ(Dir(slashes + L"/./../b/").FullPath(), path);
}

TEST_F(DirTestWin, NamesOfManyAlphabetsNameTheRealFile)
{
    const File file(Dir(ToWide(folder.Path())), L"\u00DCml\u00E4ut \u65E5\u672C \xD834\xDD1E.xml");
    FileUtils::SimpleWriteStringToFile(file.FullPath(), "content");
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(file.FullPath())));
    EXPECT_EQ(File(file.GetParent(), file.GetTitle()).FullPath(), file.FullPath());
    EXPECT_EQ(FileUtils::ReadFile(file), "content");
    file.Delete();
    EXPECT_FALSE(file.Exists());
}

TEST_F(DirTestWin, TheExecutablesFolderHoldsThisProgram)
{
    EXPECT_TRUE(File(commondirs::ExecutableDir(), L"zetcoreTest.exe").Exists());
}

} // namespace
} // namespace zetcore::filesupport
