#include <gmock/gmock.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zettesting/RecordedFileCalls_posix.h>
#include <zettesting/TemporaryFolder.h>

namespace zetcore::filesupport {
namespace {

using ::testing::ElementsAre;
using zettesting::ReadAll;
using zettesting::RecordedFileCalls;

class FileReplacementTest : public ::testing::Test
{
  protected:
    std::vector<std::string> CallsOf(Durability durability, const std::string& content) const
    {
        const RecordedFileCalls recorded;
        FileUtils::ReplaceContent(zettesting::ToWide(path), content, durability);
        EXPECT_EQ(ReadAll(path), content);
        return recorded.Calls();
    }

    zettesting::TemporaryFolder folder;
    const std::filesystem::path path = folder / "file.xml";
    const std::string synchroniseFolder = "synchronise folder " + folder.Path().filename().string();
};

TEST_F(FileReplacementTest, ForAPowerCutTheContentIsOnTheMediumBeforeTheNameAndThenTheNameIs)
{
    for (const std::string content : {"new one", "and replaced"})
        EXPECT_THAT(CallsOf(Durability::PowerCut, content),
                    ElementsAre("synchronise temporary, " + std::to_string(content.size()) + " bytes",
                                "rename to file.xml", synchroniseFolder));
}

TEST_F(FileReplacementTest, WithoutAPowerCutNothingWaitsForTheMedium)
{
    EXPECT_THAT(CallsOf(Durability::ProcessCrash, "new"), ElementsAre("rename to file.xml"));
    EXPECT_THAT(CallsOf(Durability::ProcessCrash, "replaced"), ElementsAre("rename to file.xml"));
    EXPECT_THAT(CallsOf(Durability::Handover, "swapped"), ElementsAre("swap with file.xml"));
}

} // namespace
} // namespace zetcore::filesupport
