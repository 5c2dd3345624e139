#include "banned/BanListFile.h"

#include <stdexcept>

#include <gmock/gmock.h>

#include "banned/UnsupportedList.h"

namespace zetaudiopluginhost {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr char root[] = "bannedplugins";

std::string Nested(int depth)
{
    std::string text = "<bannedplugins version=\"1.0\">\n<plugin locator=\"VST|/v/a.so|\">\n";
    for (int i = 0; i < depth; ++i)
        text += "<a>";
    for (int i = 0; i < depth; ++i)
        text += "</a>";
    return text + "</plugin></bannedplugins>";
}

std::string ErrorFor(const std::string& text)
{
    try {
        ParseBanList(text, root);
        return "";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

TEST(BanListFile, KeepsWhatANewerVersionNestedAndRefusesWhatNoneWould)
{
    const BanListFile list = ParseBanList(Nested(60), root);
    ASSERT_EQ(list.entries.size(), 1u);
    EXPECT_EQ(ParseBanList(WriteBanList(list, root), root).entries.size(), 1u);
    EXPECT_THAT(ErrorFor(Nested(65)), StartsWith("line 3: elements are nested deeper than"));
}

TEST(BanListFile, NestingThatNoStackCouldHoldIsRefused)
{
    EXPECT_THAT(ErrorFor(Nested(500'000)), HasSubstr("nested deeper"));
    EXPECT_THAT(ErrorFor("<bannedplugins>" + Nested(500'000) + "</bannedplugins>"),
                HasSubstr("nested deeper"));
}

TEST(UnsupportedListText, ManyBadEntriesAreCountedInOnePass)
{
    std::string text = "<pluginlist>\n";
    for (int i = 0; i < 500'000; ++i)
        text += "<plugin/>\n";
    const UnsupportedList list = UnsupportedList::Parse(text + "<plugin filename=\"a.dll\"/></pluginlist>");
    EXPECT_TRUE(list.MatchesFile(L"A.DLL"));
}

} // namespace
} // namespace zetaudiopluginhost
