#include <zetcore/filesupport/sharing/FolderLook.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include <gtest/gtest.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/threads/MainThread.h>
#include <zettesting/Patience.h>
#include <zettesting/TemporaryFolder.h>

namespace zetcore::filesupport {
namespace {

TEST(FolderState, TellsAFolderFromAFileAndFromNothing)
{
    const zettesting::TemporaryFolder folder;
    const std::filesystem::path root = folder / ".";
    std::ofstream(root / "file") << "x";
    EXPECT_EQ(LookAtFolder(FromNativePath(root)), FolderState::There);
    EXPECT_EQ(LookAtFolder(FromNativePath(root / "file")), FolderState::NotFound);
    EXPECT_EQ(LookAtFolder(FromNativePath(root / "file" / "below")), FolderState::NotFound);
    EXPECT_EQ(LookAtFolder(FromNativePath(root / "gone" / "deep")), FolderState::NotFound);
    EXPECT_EQ(LookAtFolder(L""), FolderState::NotFound);
}

TEST(FolderLook, KnowsTheFoldersWhenItIsDone)
{
    const zettesting::TemporaryFolder folder;
    const std::wstring there = FromNativePath(folder / "."), gone = FromNativePath(folder / "gone");
    bool done = false;
    const FolderLook look({there, gone}, [&done] { done = true; });
    EXPECT_EQ(look.StateOf(L"/another"), std::nullopt);
    const auto limit = std::chrono::steady_clock::now() + zettesting::patience;
    while (!done && std::chrono::steady_clock::now() < limit) {
        threads::RunQueuedCalls(limit);
        std::this_thread::yield();
    }
    ASSERT_TRUE(done);
    EXPECT_EQ(look.StateOf(there), FolderState::There);
    EXPECT_EQ(look.StateOf(gone), FolderState::NotFound);
}

TEST(FolderLook, CallsNobodyWhenItHasEnded)
{
    bool called = false;
    {
        const FolderLook look({L"/gone"}, [&called] { called = true; });
    }
    const FolderLook none({}, [&called] { called = true; });
    threads::RunQueuedCalls(std::chrono::steady_clock::now() + std::chrono::seconds(1));
    EXPECT_FALSE(called);
}

} // namespace
} // namespace zetcore::filesupport
