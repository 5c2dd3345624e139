#include "skins/SkinRecord.h"

namespace zetui::skins {

namespace {

constexpr SkinColors classicLight{
    .window = Rgb(0xF0F0F0),
    .base = Rgb(0xFFFFFF),
    .alternateBase = Rgb(0xF6F7F8),
    .header = Rgb(0xF4F4F4),
    .tooltip = Rgb(0xFFFFFF),
    .text = Rgb(0x1C1C1E),
    .disabledText = Rgb(0x6C6C71),
    .placeholder = Rgb(0x66666B),
    .tooltipText = Rgb(0x1C1C1E),
    .link = Rgb(0x1F5FA8),
    .outline = Rgb(0xADADB0),
    .fieldOutline = Rgb(0x84848A),
    .sectionOutline = Rgb(0xC9C9CC),
    .tableOutline = Rgb(0xBDBDC0),
    .gridLine = Rgb(0xE2E2E4),
    .button = Rgb(0xFBFBFB),
    .buttonHover = Rgb(0xEAF2FB),
    .buttonPressed = Rgb(0xD3E3F5),
    .defaultButton = Rgb(0xDCE9F8),
    .accent = Rgb(0x2868B0),
    .accentHover = Rgb(0x2261A8),
    .accentPressed = Rgb(0x1B5394),
    .accentText = Rgb(0xFFFFFF),
    .selection = Rgb(0xBFDAF6),
    .selectionText = Rgb(0x1C1C1E),
    .inactiveSelection = Rgb(0xD5D9DF),
    .inactiveSelectionText = Rgb(0x1C1C1E),
    .focus = Rgb(0x1A66C4),
    .hoverRow = Rgb(0xEAF1F9),
    .groove = Rgb(0xDCDCDE),
    .handle = Rgb(0xA9A9AD),
    .negative = Rgb(0xB3261E),
    .caution = Rgb(0xE8A200),
    .negativeSurface = Rgb(0xF9DAD6),
};

constexpr SkinColors classicDark{
    .window = Rgb(0x353537),
    .base = Rgb(0x262628),
    .alternateBase = Rgb(0x2B2B2D),
    .header = Rgb(0x303032),
    .tooltip = Rgb(0x1E1E20),
    .text = Rgb(0xE6E6E8),
    .disabledText = Rgb(0x9E9EA3),
    .placeholder = Rgb(0xA2A2A8),
    .tooltipText = Rgb(0xE6E6E8),
    .link = Rgb(0x7DB4F5),
    .outline = Rgb(0x5C5C60),
    .fieldOutline = Rgb(0x85858B),
    .sectionOutline = Rgb(0x515155),
    .tableOutline = Rgb(0x4D4D51),
    .gridLine = Rgb(0x3B3B3E),
    .button = Rgb(0x48484B),
    .buttonHover = Rgb(0x515862),
    .buttonPressed = Rgb(0x33465C),
    .defaultButton = Rgb(0x3B5472),
    .accent = Rgb(0x3270B5),
    .accentHover = Rgb(0x3876BC),
    .accentPressed = Rgb(0x28609F),
    .accentText = Rgb(0xFFFFFF),
    .selection = Rgb(0x2C4C72),
    .selectionText = Rgb(0xF2F5F9),
    .inactiveSelection = Rgb(0x47494D),
    .inactiveSelectionText = Rgb(0xE6E6E8),
    .focus = Rgb(0x6DB0FA),
    .hoverRow = Rgb(0x30353C),
    .groove = Rgb(0x222224),
    .handle = Rgb(0x6C6C71),
    .negative = Rgb(0xFFA39B),
    .caution = Rgb(0xF5B93A),
    .negativeSurface = Rgb(0x6B2F2B),
};

ButtonColors ClassicButtonColors(const SkinColors& colors, const ButtonLook& look)
{
    const ControlState& state = look.state;
    if (!state.enabled)
        return {colors.window, colors.sectionOutline, colors.disabledText};
    const bool lit = state.hovered || state.pressed || StandsOut(look);
    const pixmill::Color& rest = StandsOut(look) ? colors.defaultButton : colors.button;
    return {Pick(state, rest, colors.buttonHover, colors.buttonPressed), lit ? colors.accent : colors.outline,
            colors.text};
}

} // namespace

const SkinRecord& ClassicSkin()
{
    static constexpr SkinRecord skin{
        .skin = Skin::Classic,
        .name = "classic",
        .archiveSuffix = "",
        .light = classicLight,
        .dark = classicDark,
        .scrollGroove = &SkinColors::window,
        .boxOutline = [] { return ui::GetColor(ui::kSectionOutlineColor); },
        .fontSize = 11,
        .radii = {.corner = 2, .checkBox = 1.5, .bar = 2},
        .controls = {.buttonHeight = 19,
                     .buttonPadding = 9,
                     .fieldHeight = 20,
                     .fieldPadding = 2,
                     .checkBox = 14,
                     .scrollBar = 13,
                     .scrollHandleMargin = 2,
                     .headerHeight = 19,
                     .headerMargin = 6,
                     .headerLineInset = 0,
                     .focusFrameWidth = 1,
                     .buttonFocusRoom = 0},
        .list = {.rowHeight = 22,
                 .cellPadding = {3.0F, 6.0F},
                 .checkboxInset = 4,
                 .buttonHeight = 17.0F,
                 .roomAroundButton = 0,
                 .buttonInset = 0,
                 .buttonGap = 4,
                 .surfaceBesideText = 2,
                 .roomAroundSurface = 3},
        .hasRowLines = false,
        .hasButtonVariants = false,
        .iconButtonSide = 0,
        .buttonColors = &ClassicButtonColors,
    };
    return skin;
}

} // namespace zetui::skins
