#include "screenshots/SceneWindows.h"

#include <QApplication>
#include <QProgressBar>
#include <QTest>
#include <QWidget>

namespace screenshots {

QWidget* Modal()
{
    QWidget* const window = QApplication::activeModalWidget();
    return window && window->isVisible() ? window : nullptr;
}

QWidget* Control(const char* id)
{
    QWidget* const window = Modal();
    return window ? window->findChild<QWidget*>(QString::fromLatin1(id)) : nullptr;
}

bool IsManager()
{
    return Control("OKButton") != nullptr;
}

bool IsProgress()
{
    return Modal() && Modal()->findChild<QProgressBar*>();
}

bool IsAlert()
{
    return Modal() && !IsManager() && !IsProgress();
}

bool Click(const char* id)
{
    QWidget* const control = Control(id);
    if (!control || !control->isEnabled())
        return false;
    QTest::mouseClick(control, Qt::LeftButton, {}, control->rect().center());
    return true;
}

bool PressEscape()
{
    QTest::keyClick(Modal(), Qt::Key_Escape);
    return true;
}

} // namespace screenshots
