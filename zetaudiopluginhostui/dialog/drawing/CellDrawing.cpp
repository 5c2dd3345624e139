#include "dialog/drawing/CellDrawing.h"

#include <algorithm>
#include <cmath>

#include <zetui/skins/ListSizes.h>
#include <zetui/skins/Skins.h>
#include <zetui/tree/UI_MultiColumnTree.h>

namespace zetaudiopluginhostui {

namespace pixmill = zetui::pixmill;

namespace {

/// Seen between the surface and what stands behind it.
constexpr float leastGap = 3;

/// Fills the surface behind a text of this width. It ends before `room`, counted from the cell's left edge.
void DrawFailureSurface(pixmill::Pixmill& context, const zetcore::geom::RectT<float>& cell, float textWidth,
                        float room)
{
    const zetui::skins::ListSizes& sizes = zetui::skins::GetListSizes();
    const float left = GetCellTextPadding() - sizes.surfaceBesideText;
    const float right =
        std::min(GetCellTextPadding() + std::ceil(textWidth) + sizes.surfaceBesideText, room - leastGap);
    context.FillRoundedRect({cell.left + left, cell.top + sizes.roomAroundSurface, right - left,
                             cell.height - 2 * sizes.roomAroundSurface},
                            zetui::skins::utilities::GetCornerRadius(),
                            zetui::skins::utilities::GetFailureSurfaceColor());
}

} // namespace

float GetCellTextPadding()
{
    return zetui::controls::UI_MultiColumnTree::GetDefaultCellPadding().second;
}

pixmill::Font GetCellFont()
{
    return {pixmill::ValidateFontName(zetui::ui::GetFontName(0)), zetui::ui::GetFontSize(0)};
}

float GetCellTextRoom(float cellWidth, std::optional<float> end)
{
    const float padding = GetCellTextPadding();
    const float room = cellWidth - 2 * padding;
    return end ? std::min(room, *end - padding) : room;
}

std::wstring ShownCellText(const CellText& text, float cellWidth)
{
    return pixmill::TruncateString(GetCellFont(), text.text, text.truncation,
                                   GetCellTextRoom(cellWidth, text.end));
}

void DrawCellText(pixmill::Pixmill& context, const zetcore::geom::RectT<float>& cell, const CellText& text)
{
    namespace colors = zetui::skins::utilities;
    const std::wstring shown = ShownCellText(text, cell.width);
    if (shown.empty())
        return;
    const pixmill::Pixmill::Clip clip(context, cell);
    const float padding = GetCellTextPadding();
    const pixmill::Font font = GetCellFont();
    if (text.failure && text.enabled)
        DrawFailureSurface(context, cell, pixmill::GetTextWidth(font, shown),
                           std::min(cell.width, text.end.value_or(cell.width)));
    context.DrawString(shown, font,
                       text.enabled ? colors::GetDefaultTextColor() : colors::GetDefaultTextDisabledColor(),
                       cell.left + padding, cell.top + pixmill::GetFontBaseline(font, cell.height));
}

} // namespace zetaudiopluginhostui
