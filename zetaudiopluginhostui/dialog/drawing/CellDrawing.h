#pragma once

#include <optional>
#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/pixmill/Pixmill.h>

/// How the dialog's lists draw the texts in their cells. Main thread.
namespace zetaudiopluginhostui {

/// The room that stays free at the left and at the right of a cell's text.
float GetCellTextPadding();
/// The font of the cells.
zetui::pixmill::Font GetCellFont();

struct CellText
{
    std::wstring text;
    zetui::pixmill::TextTruncation truncation = zetui::pixmill::TextTruncation::End;
    /// False: the list is disabled.
    bool enabled = true;
    /// The text must end here, counted from the cell's left edge. Empty: it may fill the cell.
    std::optional<float> end = std::nullopt;
    /// The text tells of a failure, and stands on a coloured surface.
    bool failure = false;
};

/// The room for a text: it lies between the paddings, and is smaller where the text must end earlier.
float GetCellTextRoom(float cellWidth, std::optional<float> end = std::nullopt);
/// The text as a cell of this width shows it: whole where it has room, or shortened with an ellipsis.
std::wstring ShownCellText(const CellText& text, float cellWidth);

/// Draws a text into a cell, shortened where it has no room, in the colour of an enabled or disabled list.
void DrawCellText(zetui::pixmill::Pixmill& context, const zetcore::geom::RectT<float>& cell,
                  const CellText& text);

} // namespace zetaudiopluginhostui
