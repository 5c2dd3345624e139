#pragma once

#include <memory>
#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/Export.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/pixmill/Types.h>

namespace zetui::pixmill {

/// A drawing context on a surface (a window or an image), in the coordinates of the view that is drawn. It is
/// valid during the draw call only. Main thread.
class ZETUI_API Pixmill
{
  public:
    /// `nativePainter` is the toolkit's painter (a `QPainter*`), open on the surface. A null supplier stands
    /// for the toolkit's own.
    Pixmill(void* nativePainter, const SupplierInterface* supplier);
    ~Pixmill();
    Pixmill(const Pixmill&) = delete;
    Pixmill& operator=(const Pixmill&) = delete;

    const SupplierInterface& Supplier() const noexcept;
    void StrokePath(const PathP& path, const PenP& pen);
    void FillRect(const zetcore::geom::RectT<float>& rect, const Color& color);
    void FillRoundedRect(const zetcore::geom::RectT<float>& rect, float radius, const Color& color);
    /// Draws the text with its baseline's left end at (x, y).
    void DrawString(const std::wstring& text, const Font& font, const Color& color, float x, float y);

    /// Keeps drawing inside the rectangle until it is destroyed.
    class ZETUI_API Clip
    {
      public:
        Clip(Pixmill& context, const zetcore::geom::RectT<float>& rect);
        ~Clip();
        Clip(const Clip&) = delete;
        Clip& operator=(const Clip&) = delete;

      private:
        Pixmill& context;
    };

  private:
    void* painter;
    const SupplierInterface* supplier;
};

/// The name if the system has such a font, else the name of the toolkit's own.
ZETUI_API std::string ValidateFontName(const std::string& name);
/// The width in pixels.
ZETUI_API float GetTextWidth(const Font& font, const std::wstring& text);
/// The text as it fits into the width, with an ellipsis where it was cut.
ZETUI_API std::wstring TruncateString(const Font& font, const std::wstring& text, TextTruncation truncation,
                                      float width);
/// The distance from the top of a cell of this height to the baseline of a text that is centred in it.
ZETUI_API float GetFontBaseline(const Font& font, float cellHeight);

} // namespace zetui::pixmill
