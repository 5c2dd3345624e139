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

    /// Surfaces: of windows, of fields and lists, of every other row, of column headers, of tooltips.
    Color window, base, alternateBase, header, tooltip;
    Color text, disabledText, placeholder, tooltipText, link;
    /// Lines: around buttons, around what is typed into or ticked, around sections, around and inside tables.
    Color outline, fieldOutline, sectionOutline, tableOutline, gridLine;
    Color button, buttonHover, buttonPressed;
    /// Of the classic skin's button that Return presses.
    Color defaultButton;
    Color accent, accentHover, accentPressed, accentText;
    Color selection, selectionText, inactiveSelection, inactiveSelectionText;
    Color focus;
    Color hoverRow;
    /// The empty part of progress bars, and the handle of scroll bars.
    Color groove, handle;
    /// For a refusal or a destruction, for a caution, and for the surface behind a text that says that
    /// something has failed.
    Color negative, caution, negativeSurface;
};

const SkinColors& ColorsOf(Skin skin, bool dark);
/// Of the skin and scheme in use.
const SkinColors& CurrentColors();

/// The contrast ratio of the Web Content Accessibility Guidelines, 1 to 21. Alpha is not looked at.
double ContrastRatio(const pixmill::Color& one, const pixmill::Color& other);

} // namespace zetui::skins
