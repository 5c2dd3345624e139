#pragma once

#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/pixmill/Pixmill.h>

/// How the dialog's lists draw the texts in their cells. Main thread.
namespace zetaudiopluginhostui {

/// Left and right of a cell's text.
float GetCellTextPadding();
/// The font of the cells.
zetui::pixmill::Font GetCellFont();

/// Draws a text into a cell, shortened where it has no room, in the colour of an enabled or disabled list.
void DrawCellText(zetui::pixmill::Pixmill& context, const zetcore::geom::RectT<float>& cell,
                  const std::wstring& text, zetui::pixmill::TextTruncation truncation, bool enabled);

} // namespace zetaudiopluginhostui
