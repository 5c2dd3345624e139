#include "testing/SourceTexts.h"

#include <gmock/gmock.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginhostui {
namespace {

using testing::ElementsAre;
using testing::Pair;
using Strings = std::vector<std::string>;

TEST(StringLiterals, AreReadAsTheCompilerReadsThem)
{
    struct Case
    {
        const char* source;
        Strings literals;
    };
    for (const Case& each : {Case{"", {}},
                             {"Say(\"one\", \"two\");", {"one", "two"}},
                             {"\"one \"\n    \"text\"", {"one text"}},
                             {"\"one \" // why\n \"text\"", {"one text"}},
                             {"L\"wide \" L\"text\"", {"wide text"}},
                             {"\"a\" + \"b\"", {"a", "b"}},
                             {"\"a\" ? 'b' : \"c\"", {"a", "c"}},
                             {"\"\\\"quoted\\\" \\\\ \\n\"", {"\"quoted\" \\ \n"}},
                             {"// \"no\"\n\"yes\"", {"yes"}},
                             {"/* \"no\" \" */ \"yes\"", {"yes"}},
                             {"'\"', \"a\", '\\\"', \"b\", '\\'', \"c\"", {"a", "b", "c"}},
                             {"1'000 + f(\"a\")", {"a"}},
                             {"\"\"", {""}},
                             {"\"open", {"open"}}})
        EXPECT_EQ(StringLiterals(each.source), each.literals) << each.source;
}

class CollectingSourceTexts : public testing::Test
{
  protected:
    void Write(const std::string& path, const std::string& content) const
    {
        const std::filesystem::path whole = folder / path;
        std::filesystem::create_directories(whole.parent_path());
        zettesting::WriteAll(whole, content);
    }
    SourceTexts Collected() const { return CollectSourceTexts(folder / "."); }

    zettesting::TemporaryFolder folder;
};

TEST_F(CollectingSourceTexts, FindsTextsOfSourcesAndArchives)
{
    Write("a/Reload.cpp", "Localize(\"$$$/A/Reload=Reload \" // two lines\n \"it\");\n// \"$$$/A/No=No\"\n");
    Write("a/Keys.h",
          "constexpr char key[] = \"$$$/A/Equal=a=b\";\nbool key = text.starts_with(\"$$$/\");\n");
    Write("Dialog.xml", "<a><b>($$$/A/Add=Add (one)...)</b><b>plain</b></a>");
    Write("notes.txt", "\"$$$/A/Notes=Notes\"");
    EXPECT_THAT(Collected(), ElementsAre(Pair("$$$/A/Add", ElementsAre("Add (one)...")),
                                         Pair("$$$/A/Equal", ElementsAre("a=b")),
                                         Pair("$$$/A/Reload", ElementsAre("Reload it"))));
}

TEST_F(CollectingSourceTexts, LeavesTestsOut)
{
    Write("a/ReloadTest.cpp", "\"$$$/A/Reload=Reload\"");
    Write("a/ReloadTest_posix.cpp", "\"$$$/A/Reload=Reload\"");
    Write("testing/Reload.h", "\"$$$/A/Reload=Reload\"");
    Write("src/testarchives/Reload.xml", "<a>($$$/A/Reload=Reload)</a>");
    EXPECT_THAT(Collected(), ElementsAre());
}

TEST_F(CollectingSourceTexts, ShowsTextsThatDisagree)
{
    Write("One.cpp", "\"$$$/A/Add=Add\"");
    Write("Two.xml", "<a>($$$/A/Add=Add...)</a>");
    EXPECT_THAT(Collected(), ElementsAre(Pair("$$$/A/Add", ElementsAre("Add", "Add..."))));
}

TEST_F(CollectingSourceTexts, RefusesAKeyWithoutText)
{
    Write("One.cpp", "\"$$$/A/Add\"");
    EXPECT_THROW(Collected(), std::runtime_error);
}

} // namespace
} // namespace zetaudiopluginhostui
