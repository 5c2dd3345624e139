#include <zetcore/filesupport/sharing/MemoryMappedFile.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <future>
#include <thread>

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/HostFixture.h>

#include "filesupport/sharing/SharingNames.h"

namespace zetcore::filesupport {
namespace {

constexpr const char* blockName = "ZetCoreTestBlock";

class MemoryMappedFileTest : public zettesting::HostFixture
{
  protected:
    MemoryMappedFileTest() { debug::SetMasterTraceVolume(1); }
};

TEST_F(MemoryMappedFileTest, HasNoAddressBeforeInit)
{
    MemoryMappedFile block;
    EXPECT_EQ(block.GetAddress(), nullptr);
    EXPECT_NO_THROW(block.CloseFileHandleIfPossible());
}

TEST_F(MemoryMappedFileTest, ANewBlockIsZeroAndSharedByName)
{
    MemoryMappedFile made;
    ASSERT_TRUE(made.Init(blockName, 8, MemoryMappedFile::CreateLocked));
    const std::string zeros(8, '\0');
    EXPECT_EQ(std::memcmp(made.GetAddress(), zeros.data(), 8), 0);
    MemoryMappedFile opened;
    ASSERT_TRUE(opened.Init(blockName, 8, MemoryMappedFile::OpenShared));
    std::memcpy(made.GetAddress(), "12345678", 8);
    EXPECT_EQ(std::memcmp(opened.GetAddress(), "12345678", 8), 0);
    std::memcpy(opened.GetAddress(), "abc", 3);
    EXPECT_EQ(std::memcmp(made.GetAddress(), "abc45678", 8), 0);
}

TEST_F(MemoryMappedFileTest, CreateLockedIsTheFlagsValueThatHostsPass)
{
    EXPECT_EQ(static_cast<int>(MemoryMappedFile::CreateLocked), 25);
}

TEST_F(MemoryMappedFileTest, TheMappingStaysWhenTheHandleIsClosed)
{
    MemoryMappedFile made;
    ASSERT_TRUE(made.Init(blockName, 8, MemoryMappedFile::CreateLocked));
    MemoryMappedFile opened;
    ASSERT_TRUE(opened.Init(blockName, 8, MemoryMappedFile::OpenShared));
    made.CloseFileHandleIfPossible();
    made.CloseFileHandleIfPossible();
    opened.CloseFileHandleIfPossible();
    std::memcpy(opened.GetAddress(), "port", 4);
    EXPECT_EQ(std::memcmp(made.GetAddress(), "port", 4), 0);
}

TEST_F(MemoryMappedFileTest, InitCanBeCalledAgain)
{
    MemoryMappedFile block;
    ASSERT_TRUE(block.Init(blockName, 8, MemoryMappedFile::CreateLocked));
    // The second would wait for ever if the first did not give its own lock up.
    ASSERT_TRUE(block.Init(blockName, 8, MemoryMappedFile::CreateLocked));
    EXPECT_NE(block.GetAddress(), nullptr);
    EXPECT_FALSE(block.Init("", 8, MemoryMappedFile::CreateLocked));
    EXPECT_EQ(block.GetAddress(), nullptr);
}

TEST_F(MemoryMappedFileTest, TheSecondCreatorWaitsUntilTheFirstGivesTheLockUp)
{
    MemoryMappedFile first;
    ASSERT_TRUE(first.Init(blockName, 8, MemoryMappedFile::CreateLocked));
    std::atomic<bool> released{false};
    auto second = std::async(std::launch::async, [&] {
        MemoryMappedFile block;
        return block.Init(blockName, 8, MemoryMappedFile::CreateLocked) && released;
    });
    released = true;
    first.CloseFileHandleIfPossible();
    EXPECT_TRUE(second.get());
}

TEST_F(MemoryMappedFileTest, OpeningWhatIsNotThereFailsAndIsTraced)
{
    MemoryMappedFile block;
    EXPECT_FALSE(block.Init("ZetCoreTestMissing", 8, MemoryMappedFile::OpenShared));
    EXPECT_EQ(block.GetAddress(), nullptr);
    EXPECT_THAT(*traceLines, ::testing::ElementsAre(::testing::HasSubstr("ZetCoreTestMissing")));
}

TEST_F(MemoryMappedFileTest, ABlockThatIsSmallerIsRefused)
{
    MemoryMappedFile made;
    ASSERT_TRUE(made.Init(blockName, 8, MemoryMappedFile::CreateLocked));
    MemoryMappedFile opened;
    EXPECT_FALSE(opened.Init(blockName, 100'000, MemoryMappedFile::OpenShared));
}

TEST_F(MemoryMappedFileTest, BadNamesSizesAndFlagsAreRefusedAndTraced)
{
    constexpr int create = MemoryMappedFile::CreateLocked;
    const std::tuple<std::string, std::size_t, int> cases[] = {
        {"", 8, create},
        {"a/b", 8, create},
        {"..", 8, create},
        {"a\\b", 8, create},
        {std::string("a\0b", 3), 8, create},
        {std::string(300, 'a'), 8, create},
        {blockName, 0, create},
        {blockName, std::size_t{1} << 40, create},
        {blockName, 8, 0},
        {blockName, 8, MemoryMappedFile::Write},
        {blockName, 8, MemoryMappedFile::Read | MemoryMappedFile::Create},
        {blockName, 8, create | 64},
    };
    std::size_t refused = 0;
    for (const auto& [name, size, flags] : cases) {
        MemoryMappedFile block;
        EXPECT_FALSE(block.Init(name, size, flags)) << name << " " << size << " " << flags;
        EXPECT_EQ(traceLines->size(), ++refused);
    }
}

TEST_F(MemoryMappedFileTest, BlockNamesAreOnePlainWord)
{
    EXPECT_TRUE(IsBlockName("ZETAudioFilterScan2"));
    EXPECT_TRUE(IsBlockName("a-b_c.d"));
    EXPECT_FALSE(IsBlockName(".hidden"));
    EXPECT_FALSE(IsBlockName("two words"));
}

TEST_F(MemoryMappedFileTest, AnotherProgramSeesTheBytesAndChangesThem)
{
    MemoryMappedFile block;
    ASSERT_TRUE(block.Init(blockName, 8, MemoryMappedFile::CreateLocked));
    std::memcpy(block.GetAddress(), "volume", 6);
    const auto result = zettesting::ChildProcess::Run({ZET_BLOCK_USER, {"change", blockName}, {}, {}});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(std::memcmp(block.GetAddress(), "portme", 6), 0);
}

TEST_F(MemoryMappedFileTest, AProgramThatIsKilledLosesItsBlock)
{
    zettesting::ChildProcess holder({ZET_BLOCK_USER, {"hold", blockName}, {}, {}});
    ASSERT_TRUE(holder.WaitForError("locked"));
    std::promise<bool> made;
    std::thread waiting([&made] {
        MemoryMappedFile block;
        made.set_value(block.Init(blockName, 8, MemoryMappedFile::CreateLocked));
    });
    std::future<bool> done = made.get_future();
    EXPECT_EQ(done.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
    holder.Kill();
    EXPECT_TRUE(done.get());
    waiting.join();
}

} // namespace
} // namespace zetcore::filesupport
