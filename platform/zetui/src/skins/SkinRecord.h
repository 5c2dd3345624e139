#pragma once

#include <limits>
#include <span>
#include <string_view>

#include <zetui/skins/ListSizes.h>
#include <zetui/skins/Skins.h>

#include "skins/ButtonLook.h"
#include "skins/SkinColors.h"

namespace zetui::skins {

/// A radius that makes the short ends of a shape half circles.
inline constexpr double roundEnds = std::numeric_limits<double>::infinity();

/// In pixels.
struct Radii
{
    double corner, checkBox;
    /// The radius of progress bars and of the handles of scroll bars.
    double bar;
};

/// In pixels.
struct ControlSizes
{
    int buttonHeight, buttonPadding, fieldHeight, fieldPadding, checkBox;
    int scrollBar;
    /// The gap between the handle of a scroll bar and the bar's long sides.
    int scrollHandleMargin;
    int headerHeight, headerMargin;
    /// The gap between the ends of a line between two column titles and the header's edges.
    int headerLineInset;
    double focusFrameWidth;
    /// On a button with the focus, the face keeps this much room to the outer edge of the focus ring. It is 0
    /// for a ring on the face itself.
    int buttonFocusRoom;
};

/// Everything in which a skin differs from the others.
struct SkinRecord
{
    Skin skin;
    /// The word for command lines, in small letters.
    std::string_view name;
    /// The resource of a layout archive is named after the archive, with this behind the name.
    std::string_view archiveSuffix;
    SkinColors light, dark;
    pixmill::Color SkinColors::*scrollGroove;
    /// Gives the colour of the line around a section of a window.
    pixmill::Color (*boxOutline)();
    float fontSize;
    Radii radii;
    ControlSizes controls;
    ListSizes list;
    /// There is a line below each row of a list.
    bool hasRowLines;
    /// Layout archives say how each button looks. The button that Return presses does not stand out by itself
    /// then.
    bool hasButtonVariants;
    /// Buttons with this width and height show an icon. It is 0 in a skin without icons on buttons.
    float iconButtonSide;
    ButtonColors (*buttonColors)(const SkinColors&, const ButtonLook&);
};

/// The rows of the table, each in a file of its own.
const SkinRecord& ClassicSkin();
const SkinRecord& V7Skin();

/// The table of all skins. A new skin is a row here.
std::span<const SkinRecord* const> SkinTable();
const SkinRecord& RecordOf(Skin skin);
/// The skin that the host has chosen.
const SkinRecord& CurrentSkin();

} // namespace zetui::skins
