#include <zetcore/filesupport/paths/Dir.h>

#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/utility/ClientName.h>
#include <zettesting/HostFixture.h>

namespace zetcore::filesupport {
namespace {

using zettesting::ScopedEnvironment;
using zettesting::ToWide;

class DirTestPosix : public zettesting::HostFixture
{
  protected:
    static mode_t ModeOf(const std::filesystem::path& path)
    {
        struct stat status
        {};
        return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }
};

TEST_F(DirTestPosix, CreatedFoldersArePrivate)
{
    Dir(ToWide(folder / "a" / "b")).Create();
    EXPECT_EQ(ModeOf(folder / "a"), 0700u);
    EXPECT_EQ(ModeOf(folder / "a" / "b"), 0700u);
}

TEST_F(DirTestPosix, ThePreferencesFolderIsTheClientsInTheConfigFolder)
{
    const ScopedEnvironment config("XDG_CONFIG_HOME", (folder / "config").string());
    Dir::SetPrefDir({});
    EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(folder / "config" / "zetaudiopluginmanager"));
    EXPECT_EQ(ModeOf(folder / "config" / "zetaudiopluginmanager"), 0700u);
    utility::SetClientName(L"Other/Host");
    EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(folder / "config" / "Other_Host"));
    utility::SetClientName(L"zetaudiopluginmanager");
}

TEST_F(DirTestPosix, WithoutAConfigFolderTheHomeFolderHasThePreferences)
{
    const ScopedEnvironment home("HOME", (folder / "home").string());
    Dir::SetPrefDir({});
    {
        const ScopedEnvironment config("XDG_CONFIG_HOME", std::nullopt);
        EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(folder / "home" / ".config" / "zetaudiopluginmanager"));
    }
    const ScopedEnvironment relative("XDG_CONFIG_HOME", "not/absolute");
    EXPECT_EQ(Dir::PrefDir().FullPath(), ToWide(folder / "home" / ".config" / "zetaudiopluginmanager"));
    EXPECT_EQ(commondirs::HomeDir().FullPath(), ToWide(folder / "home"));
}

TEST_F(DirTestPosix, ADetourThroughALinkEndsWhereTheSystemSaysItDoes)
{
    std::filesystem::create_directories(folder / "real" / "inner");
    std::filesystem::create_directory_symlink(folder / "real" / "inner", folder / "link");
    EXPECT_EQ(Dir(ToWide(folder / "link" / ".." / "x")).FullPath(), ToWide(folder / "real" / "x"));
    EXPECT_EQ(Dir(ToWide(folder / "link" / "x")).FullPath(), ToWide(folder / "link" / "x"));
}

TEST_F(DirTestPosix, NamesThatAreNotUnicodeNameTheRealFile)
{
    const std::filesystem::path odd = folder / "odd\xFF\xC3(\xED\xB2\x80.so";
    zettesting::WriteAll(odd, "content");
    const File file(ToWide(odd));
    EXPECT_TRUE(file.Exists());
    EXPECT_EQ(file.FullPathUTF8(), odd.string());
    EXPECT_EQ(FileUtils::ReadFile(file), "content");
    EXPECT_EQ(File(file.GetParent(), file.GetTitle()).FullPathUTF8(), odd.string());
    file.Delete();
    EXPECT_FALSE(std::filesystem::exists(odd));
}

TEST_F(DirTestPosix, TheRuntimeFolderIsTheSessionsWhenThatIsOurs)
{
    EXPECT_EQ(commondirs::RuntimeDir().FullPath(), ToWide(folder / "runtime"));
}

TEST_F(DirTestPosix, ARuntimeFolderThatOthersCanWriteToIsNotUsed)
{
    const std::wstring own = ToWide("/tmp/zet-" + std::to_string(::geteuid()));
    std::filesystem::permissions(folder / "runtime", std::filesystem::perms::all);
    EXPECT_EQ(commondirs::RuntimeDir().FullPath(), own);
    EXPECT_EQ(ModeOf(std::filesystem::path("/tmp/zet-" + std::to_string(::geteuid()))), 0700u);
    const ScopedEnvironment missing("XDG_RUNTIME_DIR", (folder / "missing").string());
    EXPECT_EQ(commondirs::RuntimeDir().FullPath(), own);
    const ScopedEnvironment unset("XDG_RUNTIME_DIR", std::nullopt);
    EXPECT_EQ(commondirs::RuntimeDir().FullPath(), own);
}

} // namespace
} // namespace zetcore::filesupport
