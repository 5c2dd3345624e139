#pragma once

#include <cstdint>

#include <zetui/pixmill/Types.h>
#include <zetui/skins/Skins.h>

namespace zetui::skins {

constexpr pixmill::Color Rgb(unsigned value)
{
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8 & 0xFF),
            static_cast<std::uint8_t>(value & 0xFF), 255};
}

/// All colours of one skin in one scheme.
struct SkinColors
{
    using Color = pixmill::Color;

    /// Surfaces: windows, fields and lists, every other row, column headers, tooltips.
    Color window, base, alternateBase, header, tooltip;
    Color text, disabledText, placeholder, tooltipText, link;
    /// Lines: around buttons, around fields and boxes, around sections, around and inside tables.
    Color outline, fieldOutline, sectionOutline, tableOutline, gridLine;
    Color button, buttonHover, buttonPressed;
    /// The button that Return presses, in a skin that shows it by its face.
    Color defaultButton;
    Color accent, accentHover, accentPressed, accentText;
    Color selection, selectionText, inactiveSelection, inactiveSelectionText;
    Color focus;
    Color hoverRow;
    /// The empty part of progress bars, and the handle of scroll bars.
    Color groove, handle;
    /// A refusal or a destruction, a caution, and the surface behind a text that says that something has
    /// failed.
    Color negative, caution, negativeSurface;
};

const SkinColors& ColorsOf(Skin skin, bool dark);
/// The colours of the skin and scheme in use.
const SkinColors& CurrentColors();

/// The contrast ratio of the Web Content Accessibility Guidelines, 1 to 21. It does not look at alpha.
double ContrastRatio(const pixmill::Color& one, const pixmill::Color& other);

} // namespace zetui::skins
