#include "screen/DialogPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "screen/ForeignWindow.h"
#include "screen/ParentWindow.h"
#include "screen/ScreenPlacement.h"

namespace zetui::ui {

namespace {

/// Converts a place in the window system's pixels to Qt's units. A screen's corner is the same in both. From
/// the corner on, the screen's scale counts.
QRect InQtsUnits(const QRect& native)
{
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QPoint corner = screen->geometry().topLeft();
        const qreal scale = screen->devicePixelRatio();
        const QRect place((native.topLeft() - corner) / scale + corner, native.size() / scale);
        if (screen->geometry().contains(place.center()))
            return place;
    }
    return native;
}

QRect RectOfParent(WindowVariant parent)
{
    if (const QWidget* const widget = FindParentWidget(parent))
        return widget->window()->frameGeometry();
    if (!parent.IsEmpty()) {
        if (const auto place = ForeignWindowPlace(parent.Native()))
            return InQtsUnits({place->left, place->top, place->width, place->height});
    }
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

} // namespace

QRect CentredOnParent(QSize content, WindowVariant parent)
{
    QRect rect(QPoint(0, 0), content);
    rect.moveCenter(RectOfParent(parent).center());
    return OnScreen({rect.left(), rect.top(), rect.width(), rect.height()});
}

QRect InMiddleOfScreen(QSize content)
{
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (!screen)
        return {};
    const QRect area = screen->availableGeometry();
    const zetcore::geom::RectT<int> rect =
        InMiddleOf({area.left(), area.top(), area.width(), area.height()}, content.width(), content.height());
    return {rect.left, rect.top, rect.width, rect.height};
}

QRect OnScreen(const zetcore::geom::RectT<int>& content)
{
    std::vector<zetcore::geom::RectT<int>> screens;
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QRect area = screen->availableGeometry();
        screens.push_back({area.left(), area.top(), area.width(), area.height()});
    }
    const zetcore::geom::RectT<int> rect = KeepOnScreen(content, screens);
    return {rect.left, rect.top, rect.width, rect.height};
}

} // namespace zetui::ui
