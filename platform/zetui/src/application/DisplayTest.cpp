#include "application/Display.h"

#include <stdexcept>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <zettesting/Environment.h>
#include <zettesting/NoDisplay.h>
#include <zetui/application/Application.h>
#include <zetui/controls/UI_TextButton.h>

namespace zetui::ui {
namespace {

class PlatformChoice : public testing::TestWithParam<std::pair<std::string, bool>>
{};

TEST_P(PlatformChoice, TellsWhetherAWindowSystemIsNeeded)
{
    EXPECT_EQ(ChoosesPlatformWithoutWindowSystem(GetParam().first), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Display, PlatformChoice,
                         testing::Values(std::pair{"", false}, std::pair{";;", false},
                                         std::pair{"xcb", false}, std::pair{"wayland", false},
                                         std::pair{"wayland-egl;xcb", false}, std::pair{"offscreen", true},
                                         std::pair{"minimal:enable_fonts", true},
                                         std::pair{"xcb:option;offscreen", true}, std::pair{":option", false},
                                         std::pair{"vnc", true}));

TEST(NoDisplay, OpensNoWindows)
{
    const zettesting::NoDisplay none;
    EXPECT_FALSE(IsDisplayAvailable());
    EXPECT_FALSE(WindowSystemAnswers());
    EXPECT_FALSE(InitializeWindows());
    EXPECT_FALSE(HaveWindows());
}

TEST(NoDisplay, MakesANodeAnErrorAndNotTheEnd)
{
    const zettesting::NoDisplay none;
    EXPECT_THROW(utility::MakeIntrusive<UI_Node>(), std::runtime_error);
    EXPECT_THROW(utility::MakeIntrusive<controls::UI_TextButton>(), std::runtime_error);
    EXPECT_THROW(controls::UI_TextButton::UI_GetRecommendedSize(nullptr, L"text", 12, {}),
                 std::runtime_error);
}

TEST(NoDisplay, IsNoneWhereWindowsAreDrawnIntoMemory)
{
    const zettesting::NoDisplay none;
    const zettesting::ScopedEnvironment memory("QT_QPA_PLATFORM", "offscreen");
    EXPECT_TRUE(IsDisplayAvailable());
}

} // namespace
} // namespace zetui::ui
