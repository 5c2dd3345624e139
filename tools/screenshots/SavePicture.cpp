#include "screenshots/SavePicture.h"

#include <stdexcept>

#include <QApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace screenshots {

namespace {

/// Draws the window in front of its parent, in the middle, where a window manager would put it.
QPixmap WithParent(QWidget& window)
{
    const QPixmap front = window.grab();
    const QWidget* const parentWidget = window.parentWidget();
    if (!parentWidget || !parentWidget->window()->isVisible())
        return front;
    QWidget& parent = *parentWidget->window();
    QPixmap picture = WithParent(parent);
    const QPoint corner((parent.width() - window.width()) / 2, (parent.height() - window.height()) / 2);
    QPainter painter(&picture);
    painter.drawPixmap(corner, front);
    // This line takes the place of the frame that a window system would draw.
    painter.setPen(QColor(128, 128, 128));
    painter.drawRect(QRect(corner, window.size()).adjusted(-1, -1, 0, 0));
    return picture;
}

QPixmap WithPopup(QWidget& window)
{
    QPixmap picture = WithParent(window);
    QWidget* const popup = QApplication::activePopupWidget();
    if (!popup)
        return picture;
    const QPoint corner = popup->mapToGlobal(QPoint()) - window.mapToGlobal(QPoint());
    QPainter(&picture).drawPixmap(corner, popup->grab());
    return picture;
}

/// Takes the part of the screen with the window and its parents.
QPixmap FromScreen(QWidget& window)
{
    QRect part;
    for (QWidget* each = &window; each;
         each = each->parentWidget() ? each->parentWidget()->window() : nullptr) {
        each->repaint();
        part |= each->frameGeometry();
    }
    if (const QWidget* const popup = QApplication::activePopupWidget())
        part |= popup->frameGeometry();
    // `QGuiApplication::sync` would handle events and so begin the next step. The server answers in order
    // anyway.
    QScreen& screen = *window.screen();
    part &= screen.geometry();
    return screen.grabWindow(0, part.x(), part.y(), part.width(), part.height());
}

} // namespace

void SavePicture(QWidget& window, const std::filesystem::path& file)
{
    const bool isShown = QGuiApplication::platformName() == QStringLiteral("xcb");
    if (!(isShown ? FromScreen(window) : WithPopup(window)).save(QString::fromStdU16String(file.u16string())))
        throw std::runtime_error("cannot write " + file.string());
}

} // namespace screenshots
