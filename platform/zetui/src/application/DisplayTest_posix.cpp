#include <gtest/gtest.h>
#include <zettesting/Environment.h>
#include <zetui/application/Application.h>

#include "application/Display.h"

namespace zetui::ui {
namespace {

using zettesting::ScopedEnvironment;

class DisplayVariables : public testing::Test
{
  protected:
    ScopedEnvironment platform{"QT_QPA_PLATFORM", std::nullopt};
    ScopedEnvironment x11{"DISPLAY", std::nullopt};
    ScopedEnvironment wayland{"WAYLAND_DISPLAY", std::nullopt};
};

TEST_F(DisplayVariables, EmptyVariablesAreNoDisplay)
{
    const ScopedEnvironment emptyX11("DISPLAY", "");
    const ScopedEnvironment emptyWayland("WAYLAND_DISPLAY", "");
    EXPECT_FALSE(IsDisplayAvailable());
}

TEST_F(DisplayVariables, EachVariableNamesADisplay)
{
    {
        const ScopedEnvironment set("DISPLAY", ":0");
        EXPECT_TRUE(IsDisplayAvailable());
    }
    {
        const ScopedEnvironment set("WAYLAND_DISPLAY", "wayland-0");
        EXPECT_TRUE(IsDisplayAvailable());
    }
    const ScopedEnvironment set("QT_QPA_PLATFORM", "offscreen");
    EXPECT_TRUE(IsDisplayAvailable());
}

TEST_F(DisplayVariables, AnXServerThatDoesNotAnswerOpensNoWindows)
{
    const ScopedEnvironment stale("DISPLAY", ":54321");
    EXPECT_TRUE(IsDisplayAvailable());
    EXPECT_FALSE(WindowSystemAnswers());
    EXPECT_FALSE(InitializeWindows());
}

TEST_F(DisplayVariables, AChosenPlatformThatNeedsTheWindowSystemDoesNotReplaceIt)
{
    const ScopedEnvironment set("QT_QPA_PLATFORM", "xcb");
    EXPECT_FALSE(IsDisplayAvailable());
    EXPECT_FALSE(InitializeWindows());
}

} // namespace
} // namespace zetui::ui
