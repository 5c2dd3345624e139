#include "config/StringTable.h"

#include <gmock/gmock.h>

namespace zetcore::config {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

TEST(StringTable, EntriesCommentsAndEmptyLinesAreRead)
{
    const StringTable table = ParseStringTable("\xEF\xBB\xBF# German\n"
                                               "\n"
                                               "  \t\r\n"
                                               "\"$$$/A/Reload\"=\"Neu laden\"\r\n"
                                               "\"$$$/A/Empty\"=\"\"\n"
                                               "\"$$$/A/Two\"=\"\\\"1\\\"\\n\\t\\\\ \xC3\xA9\"",
                                               "de.txt");
    EXPECT_THAT(table, ElementsAre(Pair("$$$/A/Empty", ""), Pair("$$$/A/Reload", "Neu laden"),
                                   Pair("$$$/A/Two", "\"1\"\n\t\\ \xC3\xA9")));
    EXPECT_TRUE(ParseStringTable("", "de.txt").empty());
}

TEST(StringTable, AMalformedLineIsNamedWithFileNumberAndReason)
{
    struct Case
    {
        std::string line;
        const char* reason;
    };
    const Case cases[] = {
        {"$$$/A/B=text", "quotation mark is expected"},
        {" \"$$$/A/B\"=\"x\"", "quotation mark is expected"},
        {"\"$$$/A/B\"", "equals sign"},
        {"\"$$$/A/B\" = \"x\"", "equals sign"},
        {"\"$$$/A/B\"=", "quotation mark is expected"},
        {"\"$$$/A/B\"=\"x", "closing"},
        {"\"$$$/A/B\"=\"x\\", "closing"},
        {"\"$$$/A/B\"=\"x\\q\"", "escape"},
        {"\"$$$/A/B\"=\"x\" y", "more after"},
        {"\"A/B\"=\"x\"", "not a key"},
        {"\"$$$/A/B=Default\"=\"x\"", "not a key"},
        {"\"\"=\"x\"", "not a key"},
        {"\"$$$/A/B\"=\"\xFF\"", "UTF-8"},
        {"\"$$$/A/B\"=\"\xED\xA0\x80\"", "UTF-8"},
        {"\"$$$/First\"=\"again\"", "already"},
    };
    for (const Case& test : cases) {
        try {
            ParseStringTable("# comment\n\"$$$/First\"=\"1\"\n" + test.line + "\n", "de.txt");
            ADD_FAILURE() << "accepted: " << test.line;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), ::testing::StartsWith("de.txt, line 3: ")) << test.line;
            EXPECT_THAT(error.what(), ::testing::HasSubstr(test.reason)) << test.line;
        }
    }
}

TEST(StringTable, ArgumentsReplaceTheirNumbers)
{
    struct Case
    {
        const char* text;
        std::vector<std::string> arguments;
        const char* expected;
    };
    const Case cases[] = {
        {"@0 is unable", {"Host"}, "Host is unable"},
        {"@1 before @0", {"a", "b"}, "b before a"},
        {"@0@0", {"a"}, "aa"},
        {"@0 and @1", {"@1", "@0"}, "@1 and @0"},
        {"@1 @2", {"a"}, "@1 @2"},
        {"@PLUGINNAME @ me@example @", {"a"}, "@PLUGINNAME @ me@example @"},
        {"@10", {"a", "b"}, "b0"},
        {"@10", {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "ten"}, "ten"},
        {"@00", {"a", "b"}, "a0"},
        {"@99999999999999999999999", {"a"}, "@99999999999999999999999"},
        {"@0", {}, "@0"},
        {"", {"a"}, ""},
        {"@0", {""}, ""},
    };
    for (const Case& test : cases)
        EXPECT_EQ(InsertArguments(test.text, test.arguments), test.expected) << test.text;
}

} // namespace
} // namespace zetcore::config
