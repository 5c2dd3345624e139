#include "application/FileManager.h"

#include <memory>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QStringList>
#include <QUrl>

#include "application/HandlerErrors.h"
#include "utility/SessionBus_posix.h"

namespace zetui::ui {

namespace {

/// A file manager that has to be started first needs some time to answer. Nobody waits for it meanwhile.
constexpr int longestWait = 10'000;

/// The desktop opens folders, but this way selects nothing in them.
void OpenFolder(const QString& folder, const std::function<void()>& failed)
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        failed();
}

QDBusMessage RequestToShow(const QString& entry)
{
    const QString name = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage message = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/FileManager1"), name, QStringLiteral("ShowItems"));
    const QStringList addresses{QString::fromLatin1(QUrl::fromLocalFile(entry).toEncoded())};
    message << addresses << QString();
    return message;
}

} // namespace

void OpenFileManager(const QString& folder, const QString& entry, const std::function<void()>& failed)
{
    const auto session = std::make_shared<utility::SessionBus>();
    if (entry.isEmpty() || !session->Connection().isConnected()) {
        OpenFolder(folder, failed);
        return;
    }
    auto* const watcher = new QDBusPendingCallWatcher(
        session->Connection().asyncCall(RequestToShow(entry), longestWait), QCoreApplication::instance());
    // The connection lives until the answer is there.
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [folder, failed, session](QDBusPendingCallWatcher* finished) {
                         finished->deleteLater();
                         if (finished->isError())
                             CallFromToolkit([&] { OpenFolder(folder, failed); });
                     });
}

} // namespace zetui::ui
