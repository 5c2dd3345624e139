#include "application/HandlerErrors.h"

#include <stdexcept>

#include <zettesting/HostFixture.h>

#include <zetcore/debug/Trace.h>

namespace zetui::ui {
namespace {

class HandlerErrorsTest : public zettesting::HostFixture
{
  protected:
    static void Fail(const char* text)
    {
        CallFromToolkit([text] { throw std::runtime_error(text); });
    }
};

TEST_F(HandlerErrorsTest, AnExceptionStopsTheLoopAndIsThrownAgain)
{
    int stopped = 0;
    HandlerErrors errors([&] { ++stopped; });
    Fail("broken");
    EXPECT_EQ(stopped, 1);
    EXPECT_THROW(errors.Rethrow(), std::runtime_error);
    errors.Rethrow();
}

TEST_F(HandlerErrorsTest, OnlyTheFirstExceptionCounts)
{
    int stopped = 0;
    HandlerErrors errors([&] { ++stopped; });
    Fail("first");
    Fail("second");
    EXPECT_EQ(stopped, 1);
    try {
        errors.Rethrow();
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "first");
    }
}

TEST_F(HandlerErrorsTest, TheInnermostOneKeepsIt)
{
    HandlerErrors outer;
    {
        HandlerErrors inner;
        Fail("inside");
        EXPECT_THROW(inner.Rethrow(), std::runtime_error);
    }
    outer.Rethrow();
    Fail("outside");
    EXPECT_THROW(outer.Rethrow(), std::runtime_error);
}

TEST_F(HandlerErrorsTest, WithoutAnyItIsTraced)
{
    zetcore::debug::SetMasterTraceVolume(1);
    Fail("nobody hears");
    CallFromToolkit([] { throw 7; });
    ASSERT_EQ(traceLines->size(), 2U);
    EXPECT_NE(traceLines->at(0).find("nobody hears"), std::string::npos) << traceLines->at(0);
    EXPECT_NE(traceLines->at(1).find("unknown kind"), std::string::npos) << traceLines->at(1);
}

} // namespace
} // namespace zetui::ui
