#include <zetcore/debug/faults/FaultPoint.h>

#include <gtest/gtest.h>
#include <zettesting/Environment.h>

#include "debug/faults/FaultSetting.h"

namespace zetcore::debug {
namespace {

TEST(FaultSetting, ReadsPlaceVisitAndAction)
{
    EXPECT_EQ(ParseFaultSetting("a.b:3:stop"), (FaultSetting{"a.b", false, 3, FaultAction::Stop, 0}));
    EXPECT_EQ(ParseFaultSetting("write.*:1:no-space"),
              (FaultSetting{"write.", true, 1, FaultAction::NoSpace, 0}));
    EXPECT_EQ(ParseFaultSetting("*:2:read-only"), (FaultSetting{"", true, 2, FaultAction::ReadOnly, 0}));
    EXPECT_EQ(ParseFaultSetting("r:1:denied"), (FaultSetting{"r", false, 1, FaultAction::Denied, 0}));
    EXPECT_EQ(ParseFaultSetting("a:b:1:kill"), (FaultSetting{"a:b", false, 1, FaultAction::Kill, 0}));
    EXPECT_EQ(ParseFaultSetting("a:1:late=61"), (FaultSetting{"a", false, 1, FaultAction::Late, 61}));
}

TEST(FaultSetting, RefusesWhatIsMalformed)
{
    for (const char* text : {"", "a", ":", "a:1", ":1", "a:0:stop", "a:x:stop", "a:1:", "a:1:explode",
                             "a:1:late=", "a:1:late=x"})
        EXPECT_FALSE(ParseFaultSetting(text)) << text;
}

/// Sets faults for one test, and clears them afterwards.
class FaultPointTest : public ::testing::Test
{
  protected:
    ~FaultPointTest() override
    {
        variable.reset();
        ResetFaults();
    }
    void Set(std::optional<std::string> settings)
    {
        variable.reset();
        variable.emplace("ZET_FAULT", std::move(settings));
        ResetFaults();
    }

    std::optional<zettesting::ScopedEnvironment> variable;
};

TEST_F(FaultPointTest, NothingHappensWithoutASetting)
{
    Set(std::nullopt);
    EXPECT_FALSE(FaultsAreOn());
    FaultPoint("anywhere");
    EXPECT_FALSE(FaultError("anywhere"));
    EXPECT_EQ(FaultDelay("anywhere").count(), 0);
}

TEST_F(FaultPointTest, AnErrorComesFromItsVisitOnAndAtItsPlaceOnly)
{
    Set("write.a*:2:no-space;b:1:read-only;read.c:1:denied");
    EXPECT_FALSE(FaultError("write.a"));
    EXPECT_FALSE(FaultError("write.c"));
    EXPECT_EQ(FaultError("write.ab"), std::errc::no_space_on_device);
    EXPECT_EQ(FaultError("write.a"), std::errc::no_space_on_device);
    EXPECT_EQ(FaultError("b"), std::errc::read_only_file_system);
    EXPECT_EQ(FaultError("read.c"), std::errc::permission_denied);
}

TEST_F(FaultPointTest, AClockIsLateFromItsVisitOn)
{
    Set("clock:2:late=61");
    EXPECT_EQ(FaultDelay("clock").count(), 0);
    EXPECT_EQ(FaultDelay("clock").count(), 61);
    EXPECT_EQ(FaultDelay("clock").count(), 61);
}

TEST_F(FaultPointTest, TheProcessIsKilledAtItsVisit)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            Set("here:2:kill");
            FaultPoint("here");
            FaultPoint("there");
            FaultPoint("here");
        },
        "");
}

TEST_F(FaultPointTest, WithoutAPipeToTakeNobodyStops)
{
    const zettesting::ScopedEnvironment pipe("ZET_FAULT_PIPE", "/not there/pipe");
    Set("here:1:stop");
    FaultPoint("here");
    SUCCEED() << "it would still be stopped";
}

} // namespace
} // namespace zetcore::debug
