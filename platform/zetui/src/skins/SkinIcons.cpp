#include "skins/SkinIcons.h"

#include <algorithm>
#include <array>

#include <QIcon>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include "pixmill/QtConversions.h"
#include "skins/SkinColors.h"

namespace zetui::skins {

namespace {

/// Icons are drawn in a square of this side.
constexpr qreal side = 16;

void DrawAdd(QPainter& painter)
{
    painter.drawLine(QPointF(8, 3), QPointF(8, 13));
    painter.drawLine(QPointF(3, 8), QPointF(13, 8));
}

void DrawRemove(QPainter& painter)
{
    painter.drawLine(QPointF(3, 8), QPointF(13, 8));
}

void DrawReset(QPainter& painter)
{
    painter.drawArc(QRectF(3, 3.2, 10, 10), 150 * 16, -300 * 16);
    painter.drawPolyline(QPolygonF({QPointF(3.2, 2.2), QPointF(3.4, 5.9), QPointF(7.1, 5.6)}));
}

void DrawTick(QPainter& painter)
{
    painter.drawPolyline(QPolygonF({QPointF(3, 8.6), QPointF(6.5, 12), QPointF(13, 4.6)}));
}

void DrawCross(QPainter& painter)
{
    painter.drawLine(QPointF(4, 4), QPointF(12, 12));
    painter.drawLine(QPointF(12, 4), QPointF(4, 12));
}

void DrawSearch(QPainter& painter)
{
    painter.drawEllipse(QRectF(2.5, 2.5, 8, 8));
    painter.drawLine(QPointF(9.6, 9.6), QPointF(13.5, 13.5));
}

void DrawClear(QPainter& painter)
{
    painter.drawLine(QPointF(5, 5), QPointF(11, 11));
    painter.drawLine(QPointF(11, 5), QPointF(5, 11));
}

struct LineIcon
{
    std::string_view name;
    void (*draw)(QPainter&);
};

constexpr std::array lineIcons{
    LineIcon{"add", &DrawAdd},     LineIcon{"remove", &DrawRemove}, LineIcon{"reset", &DrawReset},
    LineIcon{"ok", &DrawTick},     LineIcon{"cancel", &DrawCross},  LineIcon{"search", &DrawSearch},
    LineIcon{"clear", &DrawClear},
};

/// Draws the stem and the dot of notes and cautions between top and bottom. A note has its dot on top.
void DrawMark(QPainter& painter, const QColor& color, qreal top, qreal bottom, bool dotOnTop)
{
    constexpr qreal dot = 0.95, gap = 2.1;
    painter.setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap));
    if (dotOnTop)
        painter.drawLine(QPointF(8, top + gap + 1), QPointF(8, bottom));
    else
        painter.drawLine(QPointF(8, top), QPointF(8, bottom - gap - 1));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(8, dotOnTop ? top : bottom), dot, dot);
}

void DrawNote(QPainter& painter, const SkinColors& colors)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(pixmill::ToQt(colors.accent));
    painter.drawEllipse(QRectF(0.75, 0.75, 14.5, 14.5));
    DrawMark(painter, pixmill::ToQt(colors.accentText), 4.4, 11.6, true);
}

void DrawCaution(QPainter& painter, const SkinColors& colors)
{
    const QPolygonF triangle({QPointF(8, 2.1), QPointF(14.4, 13.5), QPointF(1.6, 13.5)});
    painter.setBrush(pixmill::ToQt(colors.caution));
    painter.setPen(QPen(pixmill::ToQt(colors.caution), 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolygon(triangle);
    DrawMark(painter, QColor(0x2A, 0x1E, 0x00), 5.4, 12.2, false);
}

void DrawStop(QPainter& painter, const SkinColors& colors)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(pixmill::ToQt(colors.negative));
    painter.drawEllipse(QRectF(0.75, 0.75, 14.5, 14.5));
    painter.setPen(QPen(pixmill::ToQt(colors.window), 1.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(5.4, 5.4), QPointF(10.6, 10.6));
    painter.drawLine(QPointF(10.6, 5.4), QPointF(5.4, 10.6));
}

struct AlertIcon
{
    std::string_view name;
    void (*draw)(QPainter&, const SkinColors&);
};

constexpr std::array alertIcons{
    AlertIcon{"note", &DrawNote},
    AlertIcon{"caution", &DrawCaution},
    AlertIcon{"stop", &DrawStop},
};

class Engine : public QIconEngine
{
  public:
    explicit Engine(std::string_view iconName) : name(iconName) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const SkinColors& colors = CurrentColors();
        const pixmill::Color onSurface = mode == QIcon::Disabled ? colors.disabledText : colors.text;
        PaintIcon(*painter, name, QRectF(rect),
                  pixmill::ToQt(mode == QIcon::Selected ? colors.accentText : onSurface));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return result;
    }

    QIconEngine* clone() const override { return new Engine(*this); }

  private:
    std::string_view name;
};

} // namespace

bool PaintIcon(QPainter& painter, std::string_view name, const QRectF& rect, const QColor& color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal scale = std::min(rect.width(), rect.height()) / side;
    painter.translate(rect.center());
    painter.scale(scale, scale);
    painter.translate(-side / 2, -side / 2);
    bool known = false;
    for (const LineIcon& icon : lineIcons) {
        if (icon.name != name)
            continue;
        known = true;
        painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        icon.draw(painter);
    }
    for (const AlertIcon& icon : alertIcons) {
        if (icon.name != name)
            continue;
        known = true;
        icon.draw(painter, CurrentColors());
    }
    painter.restore();
    return known;
}

QIcon MakeIcon(std::string_view name)
{
    const auto named = [name](const auto& icon) { return icon.name == name; };
    // The name is taken from the tables, because the engine keeps a view of it.
    if (const auto* const line = std::ranges::find_if(lineIcons, named); line != lineIcons.end())
        return QIcon(new Engine(line->name));
    if (const auto* const alert = std::ranges::find_if(alertIcons, named); alert != alertIcons.end())
        return QIcon(new Engine(alert->name));
    return {};
}

} // namespace zetui::skins
