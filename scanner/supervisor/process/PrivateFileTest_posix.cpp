#include <sys/stat.h>

#include <gtest/gtest.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/TemporaryFolder.h>

#include "supervisor/process/PrivateFile.h"

namespace zetaudiofilterscan {
namespace {

using zetcore::filesupport::File;

TEST(PrivateFileTestPosix, WritingReplacesALinkAndWhatItLeadsToStays)
{
    const zettesting::TemporaryFolder folder;
    const File file(zettesting::ToWide(folder / "file"));
    zettesting::WriteAll(folder / "victim", "victim");
    for (const char* target : {"victim", "nothing yet"}) {
        std::filesystem::remove(folder / "file");
        std::filesystem::create_symlink(folder / target, folder / "file");
        EXPECT_THROW(ReadPrivateFile(file, 100), zetcore::filesupport::file_exception);
        WritePrivateFile(file, "own");
        EXPECT_EQ(ReadPrivateFile(file, 100), "own");
        EXPECT_FALSE(std::filesystem::is_symlink(folder / "file"));
    }
    EXPECT_EQ(zettesting::ReadAll(folder / "victim"), "victim");
    EXPECT_FALSE(std::filesystem::exists(folder / "nothing yet"));
}

TEST(PrivateFileTestPosix, WritingMakesAFilePrivateThatOthersCouldWrite)
{
    const zettesting::TemporaryFolder folder;
    const File file(zettesting::ToWide(folder / "file"));
    zettesting::WriteAll(folder / "file", "others'");
    ::chmod((folder / "file").c_str(), 0666);
    EXPECT_FALSE(IsPrivateFile(file));
    WritePrivateFile(file, "own");
    EXPECT_TRUE(IsPrivateFile(file));
    EXPECT_EQ(ReadPrivateFile(file, 100), "own");
}

} // namespace
} // namespace zetaudiofilterscan
