#include "skins/SkinColors.h"

#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "skins/SkinRecord.h"
#include "testing/PrintSkin.h"

namespace zetui::skins {
namespace {

using pixmill::Color;

TEST(ContrastRatio, IsTheOneOfTheAccessibilityGuidelines)
{
    const Color black{0, 0, 0, 255}, white{255, 255, 255, 255}, grey{0x76, 0x76, 0x76, 255};
    EXPECT_DOUBLE_EQ(ContrastRatio(black, white), 21.0);
    EXPECT_DOUBLE_EQ(ContrastRatio(white, black), 21.0);
    EXPECT_DOUBLE_EQ(ContrastRatio(white, white), 1.0);
    EXPECT_NEAR(ContrastRatio(grey, white), 4.54, 0.01);
}

class Contrast : public ::testing::TestWithParam<std::tuple<Skin, bool>>
{
  protected:
    struct Pair
    {
        std::string name;
        Color foreground, background;
    };

    void ExpectAtLeast(double ratio, const std::vector<Pair>& pairs) const
    {
        for (const Pair& pair : pairs)
            EXPECT_GE(ContrastRatio(pair.foreground, pair.background), ratio) << pair.name;
    }

    const SkinColors& colors = ColorsOf(std::get<0>(GetParam()), std::get<1>(GetParam()));
};

TEST_P(Contrast, OfTextIsEnoughOnEverySurfaceThatItStandsOn)
{
    ExpectAtLeast(4.5, {{"text on window", colors.text, colors.window},
                        {"text on base", colors.text, colors.base},
                        {"text on alternate base", colors.text, colors.alternateBase},
                        {"text on header", colors.text, colors.header},
                        {"text on a row pointed at", colors.text, colors.hoverRow},
                        {"text on a selected row", colors.text, colors.selection},
                        {"text on an inactive selected row", colors.text, colors.inactiveSelection},
                        {"selected text", colors.selectionText, colors.selection},
                        {"inactive selected text", colors.inactiveSelectionText, colors.inactiveSelection},
                        {"text on button", colors.text, colors.button},
                        {"text on button pointed at", colors.text, colors.buttonHover},
                        {"text on pressed button", colors.text, colors.buttonPressed},
                        {"text on the default button", colors.text, colors.defaultButton},
                        {"text of what has failed", colors.text, colors.negativeSurface},
                        {"accent", colors.accentText, colors.accent},
                        {"accent pointed at", colors.accentText, colors.accentHover},
                        {"accent pressed", colors.accentText, colors.accentPressed},
                        {"placeholder on base", colors.placeholder, colors.base},
                        {"placeholder on window", colors.placeholder, colors.window},
                        {"tooltip", colors.tooltipText, colors.tooltip},
                        {"link on window", colors.link, colors.window},
                        {"link on base", colors.link, colors.base},
                        {"disabled text on window", colors.disabledText, colors.window},
                        {"disabled text on base", colors.disabledText, colors.base},
                        {"disabled text on alternate base", colors.disabledText, colors.alternateBase},
                        {"disabled text on header", colors.disabledText, colors.header},
                        {"disabled text on a row pointed at", colors.disabledText, colors.hoverRow},
                        {"negative on window", colors.negative, colors.window},
                        {"negative on base", colors.negative, colors.base}});
}

TEST_P(Contrast, OfAButtonsTextAndFocusRingIsEnoughInEachOfItsStates)
{
    const SkinRecord& skin = RecordOf(std::get<0>(GetParam()));
    for (int bits = 0; bits < 512; ++bits) {
        const auto has = [bits](int bit) { return (bits >> bit & 1) != 0; };
        ButtonLook look;
        look.state = {.enabled = !has(0), .hovered = has(1), .pressed = has(2), .focused = has(3)};
        look.variant = static_cast<ButtonVariant>(bits >> 4 & 3);
        look.quiet = has(6);
        look.isDefault = has(7);
        const Color surface = has(8) ? colors.base : colors.window;
        const ButtonColors used = skin.buttonColors(colors, look);
        const Color face = used.fill.alpha > 0 ? used.fill : surface;
        ExpectAtLeast(4.5, {{"text of the button with the state " + std::to_string(bits), used.text, face}});
        // A ring without room around the face lies on it.
        if (look.state.enabled)
            ExpectAtLeast(3.0, {{"focus on the button with the state " + std::to_string(bits), colors.focus,
                                 skin.controls.buttonFocusRoom > 0 ? surface : face}});
    }
}

TEST_P(Contrast, OfAButtonsFaceOrOutlineShowsItsShapeInEachRow)
{
    const SkinRecord& skin = RecordOf(std::get<0>(GetParam()));
    const ButtonColors button = skin.buttonColors(colors, ButtonLook{});
    const auto stands = [](const pixmill::Color& line, const pixmill::Color& row) {
        return line.alpha > 0 && ContrastRatio(line, row) >= 1.15;
    };
    for (const auto& [name, row] : {std::pair{"base", colors.base},
                                    {"alternate base", colors.alternateBase},
                                    {"selected row", colors.selection},
                                    {"inactive selected row", colors.inactiveSelection}})
        EXPECT_TRUE(stands(button.fill, row) || stands(button.outline, row)) << name;
}

TEST_P(Contrast, OfWhatIsDrawnIsEnoughToSeeIt)
{
    ExpectAtLeast(3.0, {{"focus on window", colors.focus, colors.window},
                        {"focus on base", colors.focus, colors.base},
                        {"focus on header", colors.focus, colors.header},
                        {"focus on alternate base", colors.focus, colors.alternateBase},
                        {"focus on a row pointed at", colors.focus, colors.hoverRow},
                        {"focus on a selected row", colors.focus, colors.selection},
                        {"focus on an inactive selected row", colors.focus, colors.inactiveSelection},
                        {"focus on what has failed", colors.focus, colors.negativeSurface},
                        {"field on base", colors.fieldOutline, colors.base},
                        {"field on window", colors.fieldOutline, colors.window}});
    // Outlines that are quiet on purpose must still be there.
    ExpectAtLeast(1.15, {{"section outline on window", colors.sectionOutline, colors.window},
                         {"table outline on window", colors.tableOutline, colors.window},
                         {"groove on window", colors.groove, colors.window},
                         {"what has failed on base", colors.negativeSurface, colors.base},
                         {"what has failed on a row pointed at", colors.negativeSurface, colors.hoverRow},
                         {"selection on base", colors.selection, colors.base},
                         {"inactive selection on base", colors.inactiveSelection, colors.base}});
    ExpectAtLeast(2.0, {{"disabled text beside text", colors.disabledText, colors.text}});
    EXPECT_NE(colors.hoverRow, colors.base);
}

INSTANTIATE_TEST_SUITE_P(Skins, Contrast,
                         ::testing::Combine(::testing::ValuesIn(AllSkins()), ::testing::Bool()),
                         [](const auto& parameters) {
                             return NameOf(std::get<0>(parameters.param)) +
                                    (std::get<1>(parameters.param) ? "Dark" : "Light");
                         });

} // namespace
} // namespace zetui::skins
