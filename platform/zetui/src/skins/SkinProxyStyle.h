#pragma once

#include <QProxyStyle>
#include <QStyleOption>

#include "skins/SkinRecord.h"

namespace zetui::skins {

/// A skin as a style. It is Fusion, but `ControlPainting` draws the controls that our windows are made of, in
/// the colours of the scheme at the time of drawing.
class SkinProxyStyle : public QProxyStyle
{
  public:
    explicit SkinProxyStyle(const SkinRecord& skin);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                      const QString& text, QPalette::ColorRole role) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    using QProxyStyle::unpolish;
    void unpolish(QWidget* widget) override;

  private:
    void DrawPushButton(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) const;
    void DrawCheckBox(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget) const;
    void DrawProgressBar(const QStyleOptionProgressBar& option, QPainter& painter) const;
    void DrawHeader(const QStyleOptionHeader& option, QPainter& painter, const QWidget* widget) const;
    void DrawHeaderSection(const QStyleOption& option, QPainter& painter, const QWidget* widget) const;
    void DrawScrollBar(const QStyleOptionSlider& option, QPainter& painter, const QWidget* bar) const;

    const SkinRecord& skin;
};

} // namespace zetui::skins
