#include "dialogs/QtProgress.h"

#include <chrono>
#include <utility>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <QWindow>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>

#include "pixmill/QtConversions.h"
#include "skins/SkinStyle.h"

namespace zetui::dialogs {

namespace {

using Clock = std::chrono::steady_clock;

/// The longest wait for events. It is short, because calls may be posted that wake no loop of Qt.
constexpr std::chrono::milliseconds wakeInterval{10};
/// The longest time that posted calls may keep the window waiting.
constexpr std::chrono::milliseconds queuedCallsLimit{50};
/// The longest time that a window system may take to put the window on the screen. After that, work goes on
/// without it.
constexpr std::chrono::milliseconds exposeLimit{200};

void WaitForEvents()
{
    QTimer wake;
    wake.setSingleShot(true);
    wake.start(wakeInterval);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

QtProgress::~QtProgress()
{
    Hide();
}

void QtProgress::Show(const std::string& title, const std::string& text, bool cancellable)
{
    Hide();
    window = new ProgressWindow(ui::FindParentWidget(parent), pixmill::DisplayLines(title), cancellable);
    skins::DressWindow(*window);
    window->SetText(pixmill::DisplayLines(text));
    ui::PlaceOnForeignParent(*window, parent);
    lock.emplace(*window, parent);
    window->show();
    changed = true;
    // Work that blocks may follow at once, so the window must be there before.
    const auto deadline = Clock::now() + exposeLimit;
    while (window && !window->windowHandle()->isExposed() && Clock::now() < deadline)
        WaitForEvents();
    Repaint();
}

void QtProgress::SetExtraText(const std::string& text)
{
    if (!window)
        return;
    window->SetExtraText(pixmill::DisplayText(zetcore::string::UTF8to16(text)), {});
    changed = true;
}

void QtProgress::SetPatience(const std::string& extraText, const std::string& patience)
{
    if (!window)
        return;
    window->SetExtraText(pixmill::DisplayText(zetcore::string::UTF8to16(extraText)),
                         pixmill::DisplayText(zetcore::string::UTF8to16(" (" + patience + ")")));
    changed = true;
}

void QtProgress::SetProgress(unsigned long long progress, unsigned long long total, const std::string& text)
{
    if (!window)
        return;
    window->SetText(pixmill::DisplayLines(text));
    window->SetProgress(progress, total);
    changed = true;
}

void QtProgress::Finish()
{
    if (!window)
        return;
    window->Fill();
    window->repaint();
}

void QtProgress::Hide()
{
    lock.reset();
    if (ProgressWindow* const old = window.data()) {
        window.clear();
        old->hide();
        // It is deleted later, because this may be a handler of its own.
        old->deleteLater();
    }
}

bool QtProgress::ProcessEvents(bool wait)
{
    if (wait && !zetcore::threads::RunQueuedCalls(Clock::now() + queuedCallsLimit))
        WaitForEvents();
    else
        QCoreApplication::processEvents();
    Repaint();
    return window && window->TakeCancelled();
}

void QtProgress::Repaint()
{
    if (window && std::exchange(changed, false))
        window->repaint();
}

} // namespace zetui::dialogs
