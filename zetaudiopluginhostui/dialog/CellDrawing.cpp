#include "dialog/CellDrawing.h"

#include <algorithm>
#include <cmath>

#include <zetui/skins/Skins.h>
#include <zetui/tree/UI_MultiColumnTree.h>

namespace zetaudiopluginhostui {

namespace pixmill = zetui::pixmill;

namespace {

/// Around a text of this width in a cell, whose part up to `room` is free for it.
void DrawFailureSurface(pixmill::Pixmill& context, const zetcore::geom::RectT<float>& cell, float textWidth,
                        float room)
{
    const bool isV7 = zetui::skins::IsRunningV7OrBeyond();
    const float beside = isV7 ? 4 : 2, aboveAndBelow = isV7 ? 4 : 3;
    const float left = GetCellTextPadding() - beside;
    const float right = std::min(GetCellTextPadding() + std::ceil(textWidth) + beside, room - 1);
    context.FillRoundedRect(
        {cell.left + left, cell.top + aboveAndBelow, right - left, cell.height - 2 * aboveAndBelow},
        zetui::skins::utilities::GetCornerRadius(), zetui::skins::utilities::GetFailureSurfaceColor());
}

} // namespace

float GetCellTextPadding()
{
    constexpr float classicPadding = 6;
    return zetui::skins::IsRunningV7OrBeyond()
               ? zetui::controls::UI_MultiColumnTree::GetDefaultCellPadding().second
               : classicPadding;
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
