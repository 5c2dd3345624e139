#include "ui/Display.h"

#include <utility>

#include <gtest/gtest.h>

namespace zetui::ui {
namespace {

class PlatformChoice : public testing::TestWithParam<std::pair<const char*, bool>>
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

} // namespace
} // namespace zetui::ui
