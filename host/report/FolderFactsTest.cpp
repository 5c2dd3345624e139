#include "report/FolderFacts.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <zetcore/string/Utf.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginmanager {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class FolderFacts : public testing::Test
{
  protected:
    FolderFacts()
    {
        for (const char* name : {"b", "a", "d", "c"})
            zettesting::WriteAll(folder / name, "text");
    }

    zettesting::TemporaryFolder folder;
    const zetcore::filesupport::Dir dir{folder.Wide()};
};

TEST_F(FolderFacts, NamesAreOrderedAndNoMoreThanAskedFor)
{
    EXPECT_THAT(NamesIn(dir, 4).names, ElementsAre(L"a", L"b", L"c", L"d"));
    EXPECT_TRUE(NamesIn(dir, 4).complete);
    EXPECT_EQ(MoreNamesLine(NamesIn(dir, 4)), "");
    EXPECT_EQ(NamesIn(dir, 3).names.size(), 3u);
    EXPECT_FALSE(NamesIn(dir, 3).complete);
    EXPECT_EQ(MoreNamesLine(NamesIn(dir, 3)),
              "[there are more than 3 files here; the others were not looked at]\n");
}

TEST_F(FolderFacts, SizesAreThoseOfTheFirstFiles)
{
    EXPECT_THAT(FileLines(dir, 4, 10), StartsWith("a, 4 bytes, 20"));
    const std::string text = FileLines(dir, 2, 10);
    EXPECT_THAT(text, StartsWith("[4 files; sizes and times of the first 2 only]\na, 4 bytes, 20"));
    EXPECT_THAT(text, HasSubstr("\nb, 4 bytes, 20"));
    EXPECT_THAT(text, HasSubstr("\nc\nd\n"));
    EXPECT_THAT(FileLines(dir, 4, 2),
                StartsWith("[there are more than 2 files here; the others were not looked at]\n"));
}

TEST_F(FolderFacts, SaysOfTheFirstFoldersWhetherTheyAreThere)
{
    const std::wstring gone = zettesting::ToWide(folder / "gone");
    const std::vector<SearchedFolder> folders = {{L"VST", folder.Wide()}, {L"CLAP", gone}, {L"VST3", gone}};
    const std::string there = zetcore::string::UTF16to8(folder.Wide());
    const std::string goneText = zetcore::string::UTF16to8(gone);
    EXPECT_EQ(SearchedFolderLines(folders, 3),
              "VST  " + there + "\nCLAP  " + goneText + " (not there)\nVST3  " + goneText + " (not there)\n");
    EXPECT_EQ(SearchedFolderLines(folders, 2), "[3 folders; only the first 2 were looked at]\nVST  " + there +
                                                   "\nCLAP  " + goneText + " (not there)\nVST3  " + goneText +
                                                   "\n");
}

} // namespace
} // namespace zetaudiopluginmanager
