#include "banned/SentencePattern.h"

#include <gmock/gmock.h>

namespace zetaudiopluginhost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

TEST(SentencePattern, FindsWhatStandsForThePlaceholders)
{
    EXPECT_THAT(MatchSentence("a folder", "a folder"), Optional(IsEmpty()));
    EXPECT_THAT(MatchSentence("for @0", "for x86"), Optional(ElementsAre("x86")));
    EXPECT_THAT(MatchSentence("@0: no @1", "a: b: no c: no d"), Optional(ElementsAre("a: b", "c: no d")));
    EXPECT_THAT(MatchSentence("@0 is (@1)", "x is (y) is (z)"), Optional(ElementsAre("x", "y) is (z")));
    EXPECT_THAT(MatchSentence("@1, then @0", "a, then b"), Optional(ElementsAre("b", "a")));
    EXPECT_THAT(MatchSentence("mail @ 5 @0", "mail @ 5 x"), Optional(ElementsAre("x")));
}

TEST(SentencePattern, RefusesAnotherSentence)
{
    for (const auto& [pattern, sentence] : {std::pair{"a folder", "a folder of"},
                                            {"a folder", "folder"},
                                            {"a folder", ""},
                                            {"for @0", "for "},
                                            {"for @0", "to x"},
                                            {"@0: no @1", ": no x"},
                                            {"@0: no @1", "x: no "},
                                            {"@0: no", "x: no y"},
                                            {"@0 is (@1)", "x is (y"},
                                            {"@0 is (@1)", "x is ()"},
                                            {"@0", ""}})
        EXPECT_EQ(MatchSentence(pattern, sentence), std::nullopt) << pattern << " / " << sentence;
}

} // namespace
} // namespace zetaudiopluginhost
