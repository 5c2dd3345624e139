#include "skins/SkinRecord.h"

namespace zetui::skins {

namespace {

constexpr SkinColors v7Light{
    .window = Rgb(0xF8F8F9),
    .base = Rgb(0xFFFFFF),
    .alternateBase = Rgb(0xFFFFFF),
    .header = Rgb(0xFFFFFF),
    .tooltip = Rgb(0x27272A),
    .text = Rgb(0x222226),
    .disabledText = Rgb(0x696970),
    .placeholder = Rgb(0x6B6B73),
    .tooltipText = Rgb(0xF5F5F6),
    .link = Rgb(0x0F5FC7),
    .outline = Rgb(0xD0D0D5),
    .fieldOutline = Rgb(0x8B8B93),
    .sectionOutline = Rgb(0xE1E1E5),
    .tableOutline = Rgb(0xDCDCE0),
    .gridLine = Rgb(0xEBEBEE),
    .button = Rgb(0xE9E9EC),
    .buttonHover = Rgb(0xDEDEE3),
    .buttonPressed = Rgb(0xD0D0D6),
    .defaultButton = Rgb(0xE9E9EC),
    .accent = Rgb(0x1265D6),
    .accentHover = Rgb(0x0E59C0),
    .accentPressed = Rgb(0x0A4BA6),
    .accentText = Rgb(0xFFFFFF),
    .selection = Rgb(0xC2DAF8),
    .selectionText = Rgb(0x16324F),
    .inactiveSelection = Rgb(0xD4D4DA),
    .inactiveSelectionText = Rgb(0x222226),
    .focus = Rgb(0x1265D6),
    .hoverRow = Rgb(0xF3F4F6),
    .groove = Rgb(0xE3E3E7),
    .handle = Rgb(0xB9B9C0),
    .negative = Rgb(0xAD2016),
    .caution = Rgb(0xE8A200),
    .negativeSurface = Rgb(0xFAD9D5),
};

constexpr SkinColors v7Dark{
    .window = Rgb(0x232326),
    .base = Rgb(0x1B1B1D),
    .alternateBase = Rgb(0x1B1B1D),
    .header = Rgb(0x1F1F22),
    .tooltip = Rgb(0x3C3C41),
    .text = Rgb(0xEAEAED),
    .disabledText = Rgb(0x929299),
    .placeholder = Rgb(0x9797A0),
    .tooltipText = Rgb(0xF5F5F6),
    .link = Rgb(0x78B0FF),
    .outline = Rgb(0x48484E),
    .fieldOutline = Rgb(0x7C7C85),
    .sectionOutline = Rgb(0x39393E),
    .tableOutline = Rgb(0x3A3A3F),
    .gridLine = Rgb(0x2B2B2F),
    .button = Rgb(0x38383D),
    .buttonHover = Rgb(0x44444A),
    .buttonPressed = Rgb(0x505057),
    .defaultButton = Rgb(0x38383D),
    .accent = Rgb(0x1F6FE0),
    .accentHover = Rgb(0x1A66D0),
    .accentPressed = Rgb(0x1558B8),
    .accentText = Rgb(0xFFFFFF),
    .selection = Rgb(0x234A7C),
    .selectionText = Rgb(0xF2F7FF),
    .inactiveSelection = Rgb(0x2C2C31),
    .inactiveSelectionText = Rgb(0xEAEAED),
    .focus = Rgb(0x5CA4FF),
    .hoverRow = Rgb(0x252529),
    .groove = Rgb(0x3A3A3F),
    .handle = Rgb(0x5D5D65),
    .negative = Rgb(0xFFAEA1),
    .caution = Rgb(0xF5B93A),
    .negativeSurface = Rgb(0x5C2925),
};

constexpr pixmill::Color none{0, 0, 0, 0};

ButtonColors V7ButtonColors(const SkinColors& colors, const ButtonLook& look)
{
    const ControlState& state = look.state;
    const bool framed = look.variant == ButtonVariant::Secondary || look.variant == ButtonVariant::Negative;
    if (!state.enabled) {
        if (look.quiet)
            return {none, none, colors.disabledText};
        return framed ? ButtonColors{none, colors.outline, colors.disabledText}
                      : ButtonColors{colors.gridLine, none, colors.disabledText};
    }
    if (StandsOut(look))
        return {Pick(state, colors.accent, colors.accentHover, colors.accentPressed), none, colors.accentText,
                true};
    if (look.quiet || framed) {
        const bool refusing = look.variant == ButtonVariant::Negative && (state.hovered || state.pressed);
        const pixmill::Color& line = refusing ? colors.negative : colors.outline;
        return {Pick(state, none, colors.button, colors.buttonPressed), look.quiet ? none : line,
                refusing ? colors.negative : colors.text};
    }
    return {Pick(state, colors.button, colors.buttonHover, colors.buttonPressed), none, colors.text};
}

} // namespace

const SkinRecord& V7Skin()
{
    static constexpr SkinRecord skin{
        .skin = Skin::V7,
        .name = "v7",
        .archiveSuffix = ".V7",
        .light = v7Light,
        .dark = v7Dark,
        .scrollGroove = &SkinColors::base,
        .boxOutline =
            [] {
                return design::GetTableColor(ui::GetDefaultThemeProvider(), {}, design::kTableOutline, false,
                                             design::SkinSet{});
            },
        .fontSize = 12,
        .radii = {.corner = 3, .checkBox = 2.5, .bar = roundEnds},
        .controls = {.buttonHeight = 24,
                     .buttonPadding = 12,
                     .fieldHeight = 24,
                     .fieldPadding = 4,
                     .checkBox = 16,
                     .scrollBar = 12,
                     .scrollHandleMargin = 3,
                     .headerHeight = 24,
                     .headerMargin = 8,
                     // Short lines, because there are to be few of them.
                     .headerLineInset = 6,
                     .focusFrameWidth = 1.5,
                     .buttonFocusRoom = 3},
        .list = {.rowHeight = 28,
                 .cellPadding = {6.0F, 8.0F},
                 .checkboxInset = 8,
                 .buttonHeight = {},
                 .roomAroundButton = 8,
                 .buttonInset = 4,
                 .buttonGap = 12,
                 .surfaceBesideText = 4,
                 .roomAroundSurface = 4},
        .hasRowLines = true,
        .hasButtonVariants = true,
        .iconButtonSide = 24,
        .buttonColors = &V7ButtonColors,
    };
    return skin;
}

} // namespace zetui::skins
