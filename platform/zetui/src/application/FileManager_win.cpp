#include "application/FileManager.h"

#include <QDesktopServices>
#include <QDir>
#include <QProcess>
#include <QUrl>

namespace zetui::ui {

namespace {

bool Explore(const QString& folder, const QString& entry)
{
    if (entry.isEmpty())
        return QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
    QProcess explorer;
    explorer.setProgram(QStringLiteral("explorer.exe"));
    // Explorer reads its command line in a way of its own. A path has no quotation marks here.
    explorer.setNativeArguments(QStringLiteral("/select,\"") + QDir::toNativeSeparators(entry) + u'"');
    return explorer.startDetached();
}

} // namespace

void OpenFileManager(const QString& folder, const QString& entry, const std::function<void()>& failed)
{
    if (!Explore(folder, entry))
        failed();
}

} // namespace zetui::ui
