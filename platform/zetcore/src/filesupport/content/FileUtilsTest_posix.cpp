#include <zetcore/filesupport/content/FileUtils.h>

#include <csignal>
#include <functional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/TemporaryFolder.h>

#include "testing/ForkedChild_posix.h"

namespace zetcore::filesupport {
namespace {

using zettesting::ReadAll;
using zettesting::ToWide;
using zettesting::WriteAll;

/// The administrator may write everywhere, so the tests of what is refused go on as another user.
class OrdinaryUser
{
  public:
    OrdinaryUser()
    {
        if (before == 0) {
            EXPECT_EQ(::seteuid(ordinary), 0);
        }
    }
    ~OrdinaryUser()
    {
        if (before == 0) {
            EXPECT_EQ(::seteuid(before), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    static constexpr uid_t ordinary = 65534;

  private:
    const uid_t before = ::geteuid();
};

/// Keeps every file from growing beyond a size, as a full disk would.
class FileSizeLimit
{
  public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &before);
        signalBefore = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, signalBefore);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit before{};
    void (*signalBefore)(int) = nullptr;
};

class FileUtilsTestPosix : public ::testing::Test
{
  protected:
    zettesting::TemporaryFolder folder;

    std::wstring Path(const std::filesystem::path& name) const { return ToWide(folder / name); }

    void GiveToOrdinaryUser(const std::filesystem::path& path, mode_t mode) const
    {
        if (::geteuid() == 0) {
            ASSERT_EQ(::chown(path.c_str(), OrdinaryUser::ordinary, OrdinaryUser::ordinary), 0);
        }
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    }

    struct stat StatusOf(const std::filesystem::path& name) const
    {
        struct stat status
        {};
        EXPECT_EQ(::stat((folder / name).c_str(), &status), 0);
        return status;
    }

    mode_t ModeOf(const std::filesystem::path& name) const { return StatusOf(name).st_mode & 07777; }

    std::size_t CountEntries() const
    {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            static_cast<void>(entry);
            ++count;
        }
        return count;
    }

    static std::error_code CauseOf(const std::function<void()>& action)
    {
        try {
            action();
        } catch (const file_exception& error) {
            return error.Cause();
        }
        return {};
    }
};

TEST_F(FileUtilsTestPosix, NewFilesArePrivateAndOthersKeepTheirPermissions)
{
    FileUtils::SimpleWriteStringToFile(Path("new"), "x");
    EXPECT_EQ(ModeOf("new"), 0600u);
    ::chmod((folder / "new").c_str(), 0640);
    FileUtils::SimpleWriteStringToFile(Path("new"), "y");
    EXPECT_EQ(ModeOf("new"), 0640u);
    FileUtils::AppendToFile(Path("log"), "x");
    EXPECT_EQ(ModeOf("log"), 0600u);
}

TEST_F(FileUtilsTestPosix, TheFileStaysItsOwners)
{
    WriteAll(folder / "a", "old");
    GiveToOrdinaryUser(folder / "a", 0644);
    const uid_t owner = StatusOf("a").st_uid;
    FileUtils::SimpleWriteStringToFile(Path("a"), "new");
    EXPECT_EQ(StatusOf("a").st_uid, owner);
    EXPECT_EQ(ReadAll(folder / "a"), "new");
}

TEST_F(FileUtilsTestPosix, ALinkIsFollowedAndStays)
{
    std::filesystem::create_directory(folder / "elsewhere");
    WriteAll(folder / "elsewhere" / "real", "old");
    std::filesystem::create_symlink("elsewhere/real", folder / "inner");
    std::filesystem::create_symlink(folder / "inner", folder / "link");
    FileUtils::SimpleWriteStringToFile(Path("link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "inner"));
    EXPECT_EQ(ReadAll(folder / "elsewhere" / "real"), "new");
}

TEST_F(FileUtilsTestPosix, ALinkToNothingYetGetsItsFile)
{
    std::filesystem::create_symlink("later", folder / "link");
    FileUtils::SimpleWriteStringToFile(Path("link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(ReadAll(folder / "later"), "new");
}

TEST_F(FileUtilsTestPosix, ALinkToItselfIsAnError)
{
    std::filesystem::create_symlink("loop", folder / "loop");
    EXPECT_EQ(CauseOf([&] { FileUtils::SimpleWriteStringToFile(Path("loop"), "x"); }),
              std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(CountEntries(), 1u);
}

TEST_F(FileUtilsTestPosix, WhatIsNoPlainFileIsNeitherReplacedNorRead)
{
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(CauseOf([&] { FileUtils::SimpleWriteStringToFile(Path("pipe"), "x"); }),
              std::errc::not_supported);
    EXPECT_EQ(CauseOf([&] { FileUtils::ReadFile(File(Path("pipe"))); }), std::errc::not_supported);
    EXPECT_EQ(CauseOf([&] { FileUtils::ReadFile(File(L"/dev/zero")); }), std::errc::not_supported);
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe"));
}

TEST_F(FileUtilsTestPosix, FilesWhoseSizeTheSystemDoesNotTellAreReadWhole)
{
    EXPECT_FALSE(FileUtils::ReadFile(File(L"/proc/self/status")).empty());
    EXPECT_EQ(CauseOf([&] { FileUtils::ReadFile(File(L"/proc/self/status"), 10); }),
              std::errc::file_too_large);
}

TEST_F(FileUtilsTestPosix, InAReadOnlyFolderTheOldFileStaysWhole)
{
    std::filesystem::create_directory(folder / "prefs");
    WriteAll(folder / "prefs" / "a", "old");
    GiveToOrdinaryUser(folder / "prefs" / "a", 0600);
    GiveToOrdinaryUser(folder / "prefs", 0500);
    {
        const OrdinaryUser user;
        EXPECT_EQ(CauseOf([&] { FileUtils::SimpleWriteStringToFile(Path("prefs/a"), "new"); }),
                  std::errc::permission_denied);
        EXPECT_EQ(CauseOf([&] { FileUtils::SimpleWriteStringToFile(Path("prefs/b"), "new"); }),
                  std::errc::permission_denied);
        EXPECT_EQ(CauseOf([&] { FileUtils::KeepAside(File(Path("prefs/a"))); }),
                  std::errc::permission_denied);
        EXPECT_EQ(CauseOf([&] { File(Path("prefs/a")).Delete(); }), std::errc::permission_denied);
    }
    EXPECT_EQ(ReadAll(folder / "prefs" / "a"), "old");
}

TEST_F(FileUtilsTestPosix, AFileThatIsReadOnlyIsNotReplaced)
{
    std::filesystem::create_directory(folder / "prefs");
    WriteAll(folder / "prefs" / "a", "old");
    GiveToOrdinaryUser(folder / "prefs" / "a", 0400);
    GiveToOrdinaryUser(folder / "prefs", 0700);
    ::chmod(folder.Path().c_str(), 0755);
    if (::geteuid() != 0) {
        EXPECT_EQ(CauseOf([&] { FileUtils::SimpleWriteStringToFile(Path("prefs/a"), "new"); }),
                  std::errc::permission_denied);
    } else {
        // access() asks about the real user, and to change that one cannot be undone. So another process does
        // it.
        EXPECT_EQ(ForkedChild([&] {
                      return ::setuid(OrdinaryUser::ordinary) == 0 &&
                             CauseOf([&] { FileUtils::SimpleWriteStringToFile(Path("prefs/a"), "new"); }) ==
                                 std::errc::permission_denied;
                  }).Wait(),
                  1);
    }
    EXPECT_EQ(ReadAll(folder / "prefs" / "a"), "old");
}

TEST_F(FileUtilsTestPosix, WhenTheDiskIsFullTheOldFileStaysWholeAndNothingIsLeftBehind)
{
    WriteAll(folder / "a", "old");
    {
        const FileSizeLimit limit(1000);
        EXPECT_EQ(CauseOf([&] { FileUtils::SimpleWriteStringToFile(Path("a"), std::string(5000, 'x')); }),
                  std::errc::file_too_large);
        EXPECT_EQ(CauseOf([&] {
                      FileUtils::ReplaceContent(Path("b"), std::string(5000, 'x'), Durability::PowerCut);
                  }),
                  std::errc::file_too_large);
    }
    EXPECT_EQ(ReadAll(folder / "a"), "old");
    EXPECT_EQ(CountEntries(), 1u);
}

TEST_F(FileUtilsTestPosix, AProcessThatIsKilledWhileItReplacesLeavesAWholeFile)
{
    const std::string first(300'000, 'a');
    const std::string second(400'000, 'b');
    FileUtils::SimpleWriteStringToFile(Path("a"), first);
    for (int kill = 0; kill < 20; ++kill) {
        ForkedChild writer([&](ForkedChild::Channel& channel) {
            for (bool odd = false;; odd = !odd) {
                FileUtils::SimpleWriteStringToFile(Path("a"), odd ? first : second);
                channel.Send('w');
            }
            return 0;
        });
        for (int writes = 0; writes < 1 + kill % 5; ++writes)
            ASSERT_EQ(writer.Receive(), 'w');
        writer.Kill();
        const std::string left = ReadAll(folder / "a");
        EXPECT_TRUE(left == first || left == second) << left.size();
    }
}

} // namespace
} // namespace zetcore::filesupport
