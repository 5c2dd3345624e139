#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zettesting/TemporaryFolder.h>

#include "FileGuard.h"
#include "worker/WorkerPrivileges.h"

namespace zetaudiofilterscan {
namespace {

namespace fs = std::filesystem;

/// Runs it in a child of this process, whose exit status is its result.
int InChild(const std::function<int()>& run)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(run());
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// The system's error, or 0.
int Opened(const fs::path& path, int flags)
{
    const int file = ::open(path.c_str(), flags, 0600);
    if (file < 0)
        return errno;
    ::close(file);
    return 0;
}

int Did(int result)
{
    return result == 0 ? 0 : errno;
}

/// Every version that kernels have had up to the one that runs here.
class WriteRefusal : public ::testing::TestWithParam<int>
{
  protected:
    WriteRefusal()
    {
        zettesting::WriteAll(ours / "file", "text");
        zettesting::WriteAll(theirs / "file", "text");
    }
    void SetUp() override
    {
        ASSERT_GT(FileGuardVersion(), 0) << "this test needs a kernel with Landlock";
        if (GetParam() > FileGuardVersion())
            GTEST_SKIP() << "this kernel has version " << FileGuardVersion();
    }
    /// The result of the operation behind the guard, which leaves `ours`.
    int Guarded(const std::function<int()>& run) const
    {
        return InChild([&] {
            const auto problem = RefuseWriting({ours.string()}, GetParam());
            return problem ? 255 : run();
        });
    }

    zettesting::TemporaryFolder folder;
    const fs::path ours = Made(folder / "ours"), theirs = Made(folder / "theirs");

  private:
    static fs::path Made(const fs::path& path)
    {
        fs::create_directory(path);
        return path;
    }
};

INSTANTIATE_TEST_SUITE_P(Version, WriteRefusal, ::testing::Range(1, 8));

TEST_P(WriteRefusal, KeepsFilesElsewhere)
{
    const fs::path file = theirs / "file";
    EXPECT_EQ(Guarded([&] { return Opened(file, O_WRONLY); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Opened(file, O_RDWR | O_APPEND); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Opened(file, O_RDONLY | O_TRUNC); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Opened(theirs / "new", O_WRONLY | O_CREAT); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Opened(theirs, O_WRONLY | O_TMPFILE); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Did(::truncate(file.c_str(), 0)); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Did(::unlink(file.c_str())); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Did(::rename(file.c_str(), (theirs / "new").c_str())); }), EACCES);
    EXPECT_NE(Guarded([&] { return Did(::rename(file.c_str(), (ours / "new").c_str())); }), 0);
    EXPECT_NE(Guarded([&] { return Did(::rename((ours / "file").c_str(), file.c_str())); }), 0);
    EXPECT_NE(Guarded([&] { return Did(::link(file.c_str(), (ours / "new").c_str())); }), 0);
    EXPECT_EQ(Guarded([&] { return Did(::mkdir((theirs / "new").c_str(), 0700)); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Did(::mkfifo((theirs / "new").c_str(), 0600)); }), EACCES);
    EXPECT_EQ(Guarded([&] { return Did(::symlink("file", (theirs / "new").c_str())); }), EACCES);
    EXPECT_EQ(zettesting::ReadAll(file), "text");
    EXPECT_FALSE(fs::exists(theirs / "new"));
}

TEST_P(WriteRefusal, LeavesReadingAndTheOneFolder)
{
    EXPECT_EQ(Guarded([&] { return Opened(theirs / "file", O_RDONLY); }), 0);
    EXPECT_EQ(Guarded([&] { return Opened("/dev/null", O_RDWR); }), 0);
    EXPECT_EQ(Guarded([&] { return Opened(ours / "file", O_RDWR | O_TRUNC); }), 0);
    EXPECT_EQ(Guarded([&] { return Opened(ours / "new", O_WRONLY | O_CREAT); }), 0);
    EXPECT_EQ(Guarded([&] { return Did(::unlink((ours / "new").c_str())); }), 0);
    EXPECT_EQ(Guarded([&] { return Did(::mkdir((ours / "folder").c_str(), 0700)); }), 0);
    EXPECT_EQ(Guarded([&] { return Did(::rename((ours / "file").c_str(), (ours / "moved").c_str())); }), 0);
}

TEST_P(WriteRefusal, HoldsInChildren)
{
    const fs::path file = theirs / "file";
    EXPECT_EQ(Guarded([&] { return InChild([&] { return Did(::unlink(file.c_str())); }); }), EACCES);
    EXPECT_TRUE(fs::exists(file));
}

TEST(WriteRefusalLimits, SaysWhatCannotBeHad)
{
    EXPECT_TRUE(RefuseWriting({}, 0)) << "without a guard";
    EXPECT_EQ(InChild([] {
                  const auto problem = RefuseWriting({"/not/there"}, FileGuardVersion());
                  return problem && problem->text.find("\"/not/there\": ") != problem->text.npos ? 0 : 1;
              }),
              0);
}

TEST(WriteRefusalLimits, WithItNoSignalLeaves)
{
    if (FileGuardVersion() < 6)
        GTEST_SKIP() << "this kernel lets signals leave";
    EXPECT_EQ(InChild([] {
                  RefuseWriting({}, FileGuardVersion());
                  return Did(::kill(::getppid(), 0));
              }),
              EPERM);
}

} // namespace
} // namespace zetaudiofilterscan
