#include <zetcore/filesupport/sharing/MemoryMappedFile.h>

#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/Descriptor.h>
#include <zettesting/HostFixture.h>

#include "filesupport/sharing/HandleLock_posix.h"
#include "testing/ForkedChild_posix.h"

namespace zetcore::filesupport {
namespace {

constexpr const char* blockOnDisk = "ZetCoreTestBlock";
using std::chrono::milliseconds;

class MemoryMappedFileTestPosix : public zettesting::HostFixture
{
  protected:
    std::filesystem::path BlockFile() const { return folder / "runtime" / blockOnDisk; }

    Descriptor OpenBlockFile() const { return Descriptor(::open(BlockFile().c_str(), O_RDWR | O_CLOEXEC)); }

    bool IsLocked() const
    {
        return LockWithin(OpenBlockFile().Get(), milliseconds(0)) == std::errc::timed_out;
    }
};

TEST_F(MemoryMappedFileTestPosix, TheBlockIsAPrivateFileInTheRuntimeFolder)
{
    MemoryMappedFile block;
    ASSERT_TRUE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    struct stat status
    {};
    ASSERT_EQ(::stat(BlockFile().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    EXPECT_EQ(status.st_size, 8);
}

TEST_F(MemoryMappedFileTestPosix, ABlockThatOthersCouldReadIsMadePrivate)
{
    zettesting::WriteAll(BlockFile(), "12345678");
    ::chmod(BlockFile().c_str(), 0666);
    MemoryMappedFile block;
    ASSERT_TRUE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    struct stat status
    {};
    ASSERT_EQ(::stat(BlockFile().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(MemoryMappedFileTestPosix, TheLockIsHeldFromInitUntilTheHandleIsClosed)
{
    MemoryMappedFile block;
    ASSERT_TRUE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    EXPECT_TRUE(IsLocked());
    MemoryMappedFile server;
    ASSERT_TRUE(server.Init(blockOnDisk, 8, MemoryMappedFile::OpenShared));
    block.CloseFileHandleIfPossible();
    EXPECT_FALSE(IsLocked());
}

TEST_F(MemoryMappedFileTestPosix, DestroyingTheBlockGivesTheLockUp)
{
    {
        MemoryMappedFile block;
        ASSERT_TRUE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    }
    EXPECT_FALSE(IsLocked());
}

TEST_F(MemoryMappedFileTestPosix, WaitingForALockEndsAtItsLimit)
{
    MemoryMappedFile block;
    ASSERT_TRUE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    const Descriptor other = OpenBlockFile();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(LockWithin(other.Get(), milliseconds(20)), std::errc::timed_out);
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(20));
    EXPECT_EQ(LockWithin(-1, milliseconds(20)), std::errc::bad_file_descriptor);
}

TEST_F(MemoryMappedFileTestPosix, ProcessesShareTheBytes)
{
    MemoryMappedFile block;
    ASSERT_TRUE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    std::memcpy(block.GetAddress(), "volume", 6);
    ForkedChild server([] {
        MemoryMappedFile opened;
        if (!opened.Init(blockOnDisk, 8, MemoryMappedFile::OpenShared))
            return 1;
        if (std::memcmp(opened.GetAddress(), "volume", 6) != 0)
            return 2;
        std::memcpy(opened.GetAddress(), "port", 4);
        return 0;
    });
    EXPECT_EQ(server.Wait(), 0);
    EXPECT_EQ(std::memcmp(block.GetAddress(), "portme", 6), 0);
}

TEST_F(MemoryMappedFileTestPosix, TwoProgramsThatStartAtTheSameMomentTakeTurns)
{
    const auto takeTurn = [](ForkedChild::Channel& channel) {
        channel.Send('s');
        MemoryMappedFile block;
        if (!block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked))
            return 1;
        channel.Send('L');
        // We hold the lock, so nobody else writes the port.
        std::memcpy(block.GetAddress(), "mine", 4);
        if (channel.Receive() != 'g')
            return 2;
        const bool undisturbed = std::memcmp(block.GetAddress(), "mine", 4) == 0;
        std::memset(block.GetAddress(), 0, 8);
        block.CloseFileHandleIfPossible();
        return undisturbed ? 0 : 3;
    };
    ForkedChild first(takeTurn);
    ASSERT_EQ(first.Receive(), 's');
    ASSERT_EQ(first.Receive(), 'L');
    ForkedChild second(takeTurn);
    ASSERT_EQ(second.Receive(), 's');
    EXPECT_TRUE(IsLocked());
    first.Send('g');
    EXPECT_EQ(first.Wait(), 0);
    ASSERT_EQ(second.Receive(), 'L');
    second.Send('g');
    EXPECT_EQ(second.Wait(), 0);
    EXPECT_FALSE(IsLocked());
}

TEST_F(MemoryMappedFileTestPosix, AProgramThatDiesLosesItsLock)
{
    ForkedChild holder([](ForkedChild::Channel& channel) {
        MemoryMappedFile block;
        if (!block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked))
            return 1;
        channel.Send('L');
        channel.Receive();
        return 0;
    });
    ASSERT_EQ(holder.Receive(), 'L');
    EXPECT_TRUE(IsLocked());
    holder.Kill();
    MemoryMappedFile block;
    EXPECT_TRUE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
}

TEST_F(MemoryMappedFileTestPosix, AStartedProgramDoesNotInheritTheHandle)
{
    MemoryMappedFile block;
    ASSERT_TRUE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    bool found = false;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closedMeanwhile;
        if (std::filesystem::read_symlink(entry.path(), closedMeanwhile) != BlockFile())
            continue;
        found = true;
        const int flags = ::fcntl(std::stoi(entry.path().filename().string()), F_GETFD);
        EXPECT_NE(flags & FD_CLOEXEC, 0);
    }
    EXPECT_TRUE(found);
    block.CloseFileHandleIfPossible();
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closedMeanwhile;
        EXPECT_NE(std::filesystem::read_symlink(entry.path(), closedMeanwhile), BlockFile());
    }
}

TEST_F(MemoryMappedFileTestPosix, LinksAndOtherThingsUnderTheNameAreRefused)
{
    zettesting::WriteAll(folder / "victim", "12345678");
    std::filesystem::create_symlink(folder / "victim", BlockFile());
    MemoryMappedFile block;
    EXPECT_FALSE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    EXPECT_FALSE(block.Init(blockOnDisk, 8, MemoryMappedFile::OpenShared));
    EXPECT_EQ(zettesting::ReadAll(folder / "victim"), "12345678");

    std::filesystem::remove(BlockFile());
    ASSERT_EQ(::mkfifo(BlockFile().c_str(), 0600), 0);
    EXPECT_FALSE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
    std::filesystem::remove(BlockFile());
    std::filesystem::create_directory(BlockFile());
    EXPECT_FALSE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
}

TEST_F(MemoryMappedFileTestPosix, AnotherUsersFileIsRefused)
{
    zettesting::WriteAll(BlockFile(), "12345678");
    constexpr uid_t other = 65534;
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(BlockFile().c_str(), other, other), 0);
        MemoryMappedFile block;
        EXPECT_FALSE(block.Init(blockOnDisk, 8, MemoryMappedFile::CreateLocked));
        EXPECT_FALSE(block.Init(blockOnDisk, 8, MemoryMappedFile::OpenShared));
    } else {
        // This needs a file that is not ours, and we cannot give a file away. The system's own files in /proc
        // are such files.
        const zettesting::ScopedEnvironment runtime("XDG_RUNTIME_DIR", "/proc");
        MemoryMappedFile block;
        EXPECT_FALSE(block.Init("version", 8, MemoryMappedFile::OpenShared));
    }
}

} // namespace
} // namespace zetcore::filesupport
