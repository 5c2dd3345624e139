#pragma once

#include <optional>
#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/pixmill/Pixmill.h>

/// How the dialog's lists draw the texts in their cells. Main thread.
namespace zetaudiopluginhostui {

/// Left and right of a cell's text.
float GetCellTextPadding();
/// The font of the cells.
zetui::pixmill::Font GetCellFont();

struct CellText
{
    std::wstring text;
    zetui::pixmill::TextTruncation truncation = zetui::pixmill::TextTruncation::End;
    /// Of the list.
    bool enabled = true;
    /// The text must end here, counted from the cell's left edge; without it, at the cell's width.
    std::optional<float> end = std::nullopt;
    /// Stands on a surface of its own that says so.
    bool failure = false;
};

/// How wide a text may be: what is between the paddings, or less where it must end earlier.
float GetCellTextRoom(float cellWidth, std::optional<float> end = std::nullopt);
/// All of the text where it has room in a cell of this width, else as much as has, with an ellipsis.
std::wstring ShownCellText(const CellText& text, float cellWidth);

/// Draws a text into a cell, shortened where it has no room, in the colour of an enabled or disabled list.
void DrawCellText(zetui::pixmill::Pixmill& context, const zetcore::geom::RectT<float>& cell,
                  const CellText& text);

} // namespace zetaudiopluginhostui
