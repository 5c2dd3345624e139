#include "module/FileDigest.h"

#include <gtest/gtest.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/utility/Fnv1a.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginhostui {
namespace {

using zetcore::filesupport::File;

class FileDigestTest : public ::testing::Test
{
  protected:
    File Write(std::string_view bytes) const
    {
        zettesting::WriteAll(folder / "file", bytes);
        return File(zettesting::ToWide(folder / "file"));
    }
    zettesting::TemporaryFolder folder;
};

TEST_F(FileDigestTest, OfAFileThatDoesNotExistIsZero)
{
    EXPECT_EQ(FileDigest(File(zettesting::ToWide(folder / "missing"))), 0u);
}

TEST_F(FileDigestTest, OfAnEmptyFileIsTheStartValue)
{
    EXPECT_EQ(FileDigest(Write("")), 0xcbf29ce484222325u);
}

TEST_F(FileDigestTest, IsThatOfTheBytesWithoutAnyTextTranslation)
{
    const std::string bytes("a\r\n\x1A\0\xFF\nb", 8);
    EXPECT_EQ(FileDigest(Write(bytes)), zetcore::utility::Fnv1a(bytes));
    const std::string large(std::size_t{3} << 20, 'x');
    EXPECT_EQ(FileDigest(Write(large)), zetcore::utility::Fnv1a(large));
}

TEST_F(FileDigestTest, OfAFolderIsAFileError)
{
    EXPECT_THROW(FileDigest(File(folder.Wide())), zetcore::filesupport::file_exception);
}

} // namespace
} // namespace zetaudiopluginhostui
