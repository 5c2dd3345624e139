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

/// What a cell of this width shows of a text: all of it where it has room between the paddings, else as much
/// as has, with an ellipsis.
std::wstring ShownCellText(const std::wstring& text, zetui::pixmill::TextTruncation truncation, float width);

struct CellText
{
    std::wstring text;
    zetui::pixmill::TextTruncation truncation = zetui::pixmill::TextTruncation::End;
    /// Of the list.
    bool enabled = true;
    /// Where the text must end, from the cell's left edge; the cell's width without it.
    std::optional<float> end = std::nullopt;
    /// Stands on a surface of its own that says so.
    bool failure = false;
};

/// Draws a text into a cell, shortened where it has no room, in the colour of an enabled or disabled list.
void DrawCellText(zetui::pixmill::Pixmill& context, const zetcore::geom::RectT<float>& cell,
                  const CellText& text);

} // namespace zetaudiopluginhostui
