#include "module/FileDigest.h"

#include <gtest/gtest.h>
#include <zetcore/filesupport/FileException.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginhostui {
namespace {

using zetcore::filesupport::File;

TEST(DigestOf, IsTheKnownValueOfKnownBytes)
{
    struct Case
    {
        std::string_view bytes;
        std::uint64_t digest;
    };
    // The published values of 64-bit FNV-1a.
    for (const Case& each :
         {Case{"", 0xcbf29ce484222325}, Case{"a", 0xaf63dc4c8601ec8c}, Case{"b", 0xaf63df4c8601f1a5},
          Case{"foobar", 0x85944171f73967e8}, Case{std::string_view("\0", 1), 0xaf63bd4c8601b7df},
          Case{"\x80", 0xaf643d4c8602915f}, Case{"\xFF", 0xaf64724c8602eb6e},
          Case{"\xC3\xA9", 0x0ac21707b7181e01}, Case{std::string_view("\xFF\0\0\1", 4), 0x6961196491cc682d}})
        EXPECT_EQ(DigestOf(each.bytes), each.digest) << each.bytes;
    EXPECT_NE(DigestOf("ab"), DigestOf("ba"));
    EXPECT_NE(DigestOf("\xFF"), DigestOf("\x7F"));
}

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
    EXPECT_EQ(FileDigest(Write(bytes)), DigestOf(bytes));
    const std::string large(std::size_t{3} << 20, 'x');
    EXPECT_EQ(FileDigest(Write(large)), DigestOf(large));
}

TEST_F(FileDigestTest, OfAFolderIsAFileError)
{
    EXPECT_THROW(FileDigest(File(folder.Wide())), zetcore::filesupport::file_exception);
}

} // namespace
} // namespace zetaudiopluginhostui
