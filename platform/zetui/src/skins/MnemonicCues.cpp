#include "skins/MnemonicCues.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace zetui::skins {

namespace {

QPointer<MnemonicCues>& TheCues()
{
    static QPointer<MnemonicCues> cues;
    return cues;
}

} // namespace

MnemonicCues::MnemonicCues(QObject& application) : QObject(&application)
{
    application.installEventFilter(this);
}

void MnemonicCues::Follow()
{
    if (!TheCues() && QCoreApplication::instance())
        TheCues() = new MnemonicCues(*QCoreApplication::instance());
}

bool MnemonicCues::AreShownFor(const QWidget* widget)
{
    // In a menu the letters work without Alt.
    if (!widget || qobject_cast<const QMenu*>(widget) || SystemAlwaysShowsMnemonics())
        return true;
    return TheCues() && TheCues()->shownIn && TheCues()->shownIn == widget->window();
}

bool MnemonicCues::eventFilter(QObject* watched, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    const bool leaves = event->type() == QEvent::WindowDeactivate && watched == shownIn;
    if (leaves)
        ShowIn(nullptr);
    if (!isKey || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Alt)
        return false;
    if (event->type() == QEvent::KeyRelease)
        ShowIn(nullptr);
    else if (const auto* const widget = qobject_cast<QWidget*>(watched))
        ShowIn(widget->window());
    return false;
}

void MnemonicCues::ShowIn(QWidget* window)
{
    if (window == shownIn)
        return;
    const QPointer<QWidget> before = shownIn;
    shownIn = window;
    for (const QPointer<QWidget>& changed : {before, shownIn}) {
        if (!changed)
            continue;
        for (QWidget* const widget : changed->findChildren<QWidget*>())
            widget->update();
    }
}

} // namespace zetui::skins
