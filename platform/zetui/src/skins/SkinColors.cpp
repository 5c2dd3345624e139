#include "skins/SkinColors.h"

#include <algorithm>
#include <cmath>

namespace zetui::skins {

namespace {

constexpr pixmill::Color Rgb(unsigned value)
{
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8 & 0xFF),
            static_cast<std::uint8_t>(value & 0xFF), 255};
}

constexpr SkinColors classicLight{
    .window = Rgb(0xF0F0F0),
    .base = Rgb(0xFFFFFF),
    .alternateBase = Rgb(0xF6F7F8),
    .header = Rgb(0xF4F4F4),
    .tooltip = Rgb(0xFFFFFF),
    .text = Rgb(0x1C1C1E),
    .disabledText = Rgb(0x85858A),
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
    .disabledText = Rgb(0x8F8F94),
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

constexpr SkinColors v7Light{
    .window = Rgb(0xF8F8F9),
    .base = Rgb(0xFFFFFF),
    .alternateBase = Rgb(0xFFFFFF),
    .header = Rgb(0xFFFFFF),
    .tooltip = Rgb(0x27272A),
    .text = Rgb(0x222226),
    .disabledText = Rgb(0x8C8C93),
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
    .selection = Rgb(0xD6E6FB),
    .selectionText = Rgb(0x16324F),
    .inactiveSelection = Rgb(0xE8E8EB),
    .inactiveSelectionText = Rgb(0x222226),
    .focus = Rgb(0x1265D6),
    .hoverRow = Rgb(0xF3F4F6),
    .groove = Rgb(0xE3E3E7),
    .handle = Rgb(0xB9B9C0),
    .negative = Rgb(0xC7251A),
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
    .disabledText = Rgb(0x808087),
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
    .selection = Rgb(0x1D3D66),
    .selectionText = Rgb(0xF2F7FF),
    .inactiveSelection = Rgb(0x323237),
    .inactiveSelectionText = Rgb(0xEAEAED),
    .focus = Rgb(0x5CA4FF),
    .hoverRow = Rgb(0x252529),
    .groove = Rgb(0x3A3A3F),
    .handle = Rgb(0x5D5D65),
    .negative = Rgb(0xFF7D70),
    .caution = Rgb(0xF5B93A),
    .negativeSurface = Rgb(0x5C2925),
};

double RelativeLuminance(const pixmill::Color& color)
{
    const auto linear = [](std::uint8_t component) {
        const double value = component / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

} // namespace

const SkinColors& ColorsOf(Skin skin, bool dark)
{
    if (skin == Skin::Classic)
        return dark ? classicDark : classicLight;
    return dark ? v7Dark : v7Light;
}

const SkinColors& CurrentColors()
{
    return ColorsOf(GetSkin(), IsDark());
}

double ContrastRatio(const pixmill::Color& one, const pixmill::Color& other)
{
    const auto [darker, lighter] = std::minmax({RelativeLuminance(one), RelativeLuminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace zetui::skins
