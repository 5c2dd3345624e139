#include "dialogs/Patience.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace zetui::dialogs {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

std::string Words(seconds unchanged)
{
    return std::to_string(unchanged.count()) + " s";
}

const Patience::Clock::time_point start{std::chrono::hours(1)};

TEST(ProgressPatience, TellsTheWholeSecondsOnceEachAfterTheLimit)
{
    Patience patience;
    patience.Set(seconds(3), Words);
    patience.Restart(start);
    struct Case
    {
        int at; // milliseconds
        std::optional<std::string> words;
    };
    for (const Case& one : {Case{0, {}}, Case{2999, {}}, Case{3000, {}}, Case{3001, "3 s"}, Case{3999, {}},
                            Case{4000, "4 s"}, Case{4010, {}}, Case{61500, "61 s"}})
        EXPECT_EQ(patience.Ask(start + milliseconds(one.at)), one.words) << one.at;
}

TEST(ProgressPatience, BeginsAnewWithEachText)
{
    Patience patience;
    patience.Set(seconds(3), Words);
    patience.Restart(start);
    EXPECT_EQ(patience.Ask(start + seconds(5)), "5 s");
    patience.Restart(start + seconds(5));
    EXPECT_EQ(patience.Ask(start + seconds(8)), std::nullopt);
    EXPECT_EQ(patience.Ask(start + seconds(10)), "5 s") << "the same words, but for another text";
}

TEST(ProgressPatience, SaysNothingWithoutWords)
{
    Patience patience;
    EXPECT_EQ(patience.Ask(start), std::nullopt);
    patience.Set(seconds(0), Words);
    EXPECT_NE(patience.Ask(start), std::nullopt);
    patience.Set(seconds(0), nullptr);
    EXPECT_EQ(patience.Ask(start + seconds(9)), std::nullopt);
}

} // namespace
} // namespace zetui::dialogs
