#include <zetui/application/Application.h>

#include <memory>

#include <QApplication>
#include <QByteArray>
#include <QEvent>

#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/ClientName.h>
#include <zetui/dialogs/ProgressPresentation.h>

#include "application/AccessibleFactories.h"
#include "application/Display.h"
#include "application/LocaleKeeper.h"
#include "application/QtMainThread.h"
#include "application/QtTexts.h"
#include "dialogs/QtPresentation.h"
#include "pixmill/QtConversions.h"
#include "screen/DialogPlace.h"
#include "skins/SkinStyle.h"

namespace zetui::ui {

namespace {

/// `InitializeWindows` has made these. They are never destroyed: Qt's application object must not die with
/// the static objects.
struct Windows
{
    bool initialized = false;
    /// Empty for the host's name.
    std::wstring programName;
    /// Empty when the program has none.
    std::wstring desktopFile;
    // Qt keeps references to these.
    int argumentCount = 1;
    QByteArray firstArgument;
    char* arguments[2] = {nullptr, nullptr};
    /// Null when the host has its own.
    std::unique_ptr<QApplication> application;
    std::unique_ptr<QtTexts> qtTexts;
    std::shared_ptr<QtMainThread> mainThread;
    std::shared_ptr<dialogs::Presentation> presentation;
};

Windows& State()
{
    static Windows& windows = *new Windows;
    return windows;
}

bool HasApplicationWithWidgets()
{
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

bool MakeApplication(Windows& windows)
{
    // An application object without windows cannot be replaced by one that has them.
    if (QCoreApplication::instance() || !IsDisplayAvailable() || !WindowSystemAnswers())
        return false;
    const QString name = pixmill::ToQString(windows.programName.empty() ? zetcore::utility::GetClientName()
                                                                        : windows.programName);
    QCoreApplication::setApplicationName(name);
    QGuiApplication::setDesktopFileName(pixmill::ToQString(windows.desktopFile));
    windows.firstArgument = name.toLocal8Bit();
    windows.arguments[0] = windows.firstArgument.data();
    const LocaleKeeper locale;
    windows.application = std::make_unique<QApplication>(windows.argumentCount, windows.arguments);
    // A program ends when its host says so, and not with the last of our windows.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    windows.qtTexts = std::make_unique<QtTexts>();
    QCoreApplication::installTranslator(windows.qtTexts.get());
    // Menus and tooltips are there at once.
    for (const Qt::UIEffect effect : {Qt::UI_AnimateMenu, Qt::UI_FadeMenu, Qt::UI_AnimateCombo,
                                      Qt::UI_AnimateTooltip, Qt::UI_FadeTooltip, Qt::UI_AnimateToolBox})
        QApplication::setEffectEnabled(effect, false);
    skins::ApplySkin(*windows.application);
    return true;
}

void RegisterEventLoop(Windows& windows)
{
    if (zetcore::threads::GetRegisteredMainThread())
        return;
    windows.mainThread = std::make_shared<QtMainThread>();
    zetcore::threads::RegisterMainThread(windows.mainThread);
    if (zetcore::threads::HasQueuedCalls())
        windows.mainThread->Wake();
}

} // namespace

void SetProgramName(const std::wstring& name, const std::wstring& desktopFile)
{
    zetcore::threads::AssertMainThread();
    State().programName = name;
    State().desktopFile = desktopFile;
}

bool InitializeWindows()
{
    zetcore::threads::AssertMainThread();
    Windows& windows = State();
    if (HaveWindows())
        return true;
    if (!HasApplicationWithWidgets() && !MakeApplication(windows))
        return false;
    RegisterEventLoop(windows);
    windows.presentation = std::make_shared<dialogs::QtPresentation>();
    dialogs::SetPresentation(windows.presentation);
    windows.initialized = true;
    return true;
}

bool HaveWindows()
{
    zetcore::threads::AssertMainThread();
    return State().initialized && HasApplicationWithWidgets();
}

zetcore::geom::RectT<int> FindPlaceOnScreen(const zetcore::geom::RectT<int>& content)
{
    zetcore::threads::AssertMainThread();
    if (!HaveWindows())
        return content;
    const QRect place = OnScreen(content);
    return {place.left(), place.top(), place.width(), place.height()};
}

zetcore::geom::RectT<int> PlaceInMiddleOfScreen(int width, int height)
{
    zetcore::threads::AssertMainThread();
    if (!HaveWindows())
        return {};
    const QRect place = InMiddleOfScreen({width, height});
    return {place.left(), place.top(), place.width(), place.height()};
}

void TerminateWindows()
{
    zetcore::threads::AssertMainThread();
    Windows& windows = State();
    if (!windows.initialized)
        return;
    windows.initialized = false;
    if (dialogs::GetPresentation() == windows.presentation)
        dialogs::SetPresentation(nullptr);
    windows.presentation.reset();
    if (zetcore::threads::GetRegisteredMainThread() == windows.mainThread)
        zetcore::threads::RegisterMainThread(nullptr);
    windows.mainThread.reset();
    ForgetAccessibleFactories();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (windows.application) {
        skins::RemoveSkin();
        QCoreApplication::removeTranslator(windows.qtTexts.get());
        windows.qtTexts.reset();
        windows.application.reset();
        QCoreApplication::setApplicationName(QString());
        QGuiApplication::setDesktopFileName(QString());
    }
}

} // namespace zetui::ui
