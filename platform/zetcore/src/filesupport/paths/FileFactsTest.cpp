#include <zetcore/filesupport/paths/FileFacts.h>

#include <gtest/gtest.h>
#include <zettesting/TemporaryFolder.h>

namespace zetcore::filesupport {
namespace {

TEST(FileFacts, AreThoseOfTheFileAndThereAreNoneOfAnythingElse)
{
    const zettesting::TemporaryFolder folder;
    const auto path = folder.Path() / "file";
    zettesting::WriteAll(path, "five!");
    const File file(zettesting::ToWide(path));
    const auto facts = FindFileFacts(file);
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->size, 5u);
    EXPECT_EQ(facts->modificationTime, file.ModificationTime());
    EXPECT_GT(facts->modificationTime, 0);
    EXPECT_FALSE(FindFileFacts(File(folder.Wide()))) << "a folder";
    EXPECT_FALSE(FindFileFacts(File(zettesting::ToWide(folder.Path() / "missing"))));
    EXPECT_FALSE(FindFileFacts(File()));
}

} // namespace
} // namespace zetcore::filesupport
