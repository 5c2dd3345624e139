#include "dialog/CellDrawing.h"

#include <zetui/controls/UI_MultiColumnTree.h>
#include <zetui/skins/Skins.h>

namespace zetaudiopluginhostui {

namespace pixmill = zetui::pixmill;

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

void DrawCellText(pixmill::Pixmill& context, const zetcore::geom::RectT<float>& cell,
                  const std::wstring& text, pixmill::TextTruncation truncation, bool enabled)
{
    namespace colors = zetui::skins::utilities;
    if (text.empty())
        return;
    const pixmill::Pixmill::Clip clip(context, cell);
    const float padding = GetCellTextPadding();
    const pixmill::Font font = GetCellFont();
    // A fitted column has room for its widest text and the padding on one side: such a text stays whole.
    const bool fits = pixmill::GetTextWidth(font, text) <= cell.width - padding;
    const std::wstring shown =
        fits ? text : pixmill::TruncateString(font, text, truncation, cell.width - 2 * padding);
    context.DrawString(shown, font,
                       enabled ? colors::GetDefaultTextColor() : colors::GetDefaultTextDisabledColor(),
                       cell.left + padding, cell.top + pixmill::GetFontBaseline(font, cell.height));
}

} // namespace zetaudiopluginhostui
