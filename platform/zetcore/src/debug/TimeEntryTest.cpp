#include <zetcore/debug/TimeEntry.h>

#include <gtest/gtest.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zettesting/HostFixture.h>

namespace zetcore::debug {
namespace {

using namespace std::chrono_literals;

class TimeEntry : public zettesting::HostFixture
{};

TEST_F(TimeEntry, ReadsSecondsWithAFraction)
{
    EXPECT_EQ(ParseSeconds("60"), 60s);
    EXPECT_EQ(ParseSeconds("0.25"), 250ms);
    EXPECT_EQ(ParseSeconds("1.5"), 1500ms);
    EXPECT_EQ(ParseSeconds("0.0001"), 1ms);
    EXPECT_EQ(ParseSeconds("1000000"), 1000000s);
}

TEST_F(TimeEntry, TakesNothingElse)
{
    for (const char* text :
         {"", "0", "-1", "1,5", "1e3", "60s", " 60", "nan", "inf", "1000001", "0x10", "1.5.2"})
        EXPECT_FALSE(ParseSeconds(text)) << text;
}

TEST_F(TimeEntry, UsesTheDefaultAndTracesWhenTheEntryIsNonsense)
{
    SetMasterTraceVolume(1);
    auto& database = DebugDatabase::Instance();
    EXPECT_EQ(TimeFromDebugDatabase("Some.Seconds", 60s), 60s);
    EXPECT_TRUE(traceLines->empty());
    database.SetEntry("Some.Seconds", "2.5");
    EXPECT_EQ(TimeFromDebugDatabase("Some.Seconds", 60s), 2500ms);
    EXPECT_TRUE(traceLines->empty());
    database.SetEntry("Some.Seconds", "soon");
    EXPECT_EQ(TimeFromDebugDatabase("Some.Seconds", 60s), 60s);
    ASSERT_EQ(traceLines->size(), 1U);
    EXPECT_NE(traceLines->front().find("Some.Seconds is no time in seconds: soon"), std::string::npos);
}

} // namespace
} // namespace zetcore::debug
