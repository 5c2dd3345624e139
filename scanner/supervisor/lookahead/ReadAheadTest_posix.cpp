#include <sys/stat.h>

#include <gtest/gtest.h>
#include <zettesting/HostFixture.h>

#include "supervisor/lookahead/ReadAhead.h"
#include "testing/ColdFile_posix.h"

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

constexpr std::size_t fileSize = 4 << 20;

using ReadAheadTestPosix = zettesting::HostFixture;

TEST_F(ReadAheadTestPosix, AModulesFileIsInMemorySoon)
{
    const std::filesystem::path module = folder / "a.so", other = folder / "b.so";
    if (!MakeColdFile(module, fileSize) || !MakeColdFile(other, fileSize))
        GTEST_SKIP() << "the temporary folder is in memory";
    ReadAhead({TechnologyType::VST, zettesting::ToWide(module)});
    EXPECT_TRUE(WaitUntilInMemory(module));
    EXPECT_LT(PartInMemory(other), 0.1);
}

TEST_F(ReadAheadTestPosix, ABundlesLibraryIsInMemorySoon)
{
    const std::filesystem::path bundle = folder / "a.vst3";
    const std::filesystem::path library = bundle / "Contents" / "x86_64-linux" / "a.so";
    std::filesystem::create_directories(library.parent_path());
    if (!MakeColdFile(library, fileSize))
        GTEST_SKIP() << "the temporary folder is in memory";
    ReadAhead({TechnologyType::VST3, zettesting::ToWide(bundle)});
    EXPECT_TRUE(WaitUntilInMemory(library));
}

TEST_F(ReadAheadTestPosix, APipeIsNotWaitedFor)
{
    const std::filesystem::path pipe = folder / "a.so";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ReadAhead({TechnologyType::VST, zettesting::ToWide(pipe)});
}

} // namespace
} // namespace zetaudiofilterscan
