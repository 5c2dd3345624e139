#include "ui/DialogPlace.h"

#include <memory>

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include "dialogs/ParentWindow.h"
#include "ui/ScreenPlacement.h"

namespace zetui::ui {

namespace {

QRect RectOfParent(WindowVariant parent)
{
    if (const QWidget* const widget = dialogs::FindParentWidget(parent))
        return widget->window()->frameGeometry();
    if (!parent.IsEmpty()) {
        const std::unique_ptr<QWindow> foreign(QWindow::fromWinId(reinterpret_cast<WId>(parent.Native())));
        if (foreign && !foreign->geometry().isEmpty())
            return foreign->geometry();
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
