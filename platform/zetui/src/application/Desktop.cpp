#include <zetui/application/Desktop.h>

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

#include <zetcore/threads/MainThread.h>

#include "application/FileManager.h"
#include "pixmill/QtConversions.h"

namespace zetui::ui {

void CopyText(const std::wstring& text)
{
    zetcore::threads::AssertMainThread();
    QGuiApplication::clipboard()->setText(pixmill::ToQString(text));
}

void ShowInFileManager(const std::wstring& path, const std::function<void()>& failed)
{
    zetcore::threads::AssertMainThread();
    if (path.empty()) {
        failed();
        return;
    }
    const QFileInfo entry(QDir::fromNativeSeparators(pixmill::ToQString(path)));
    if (entry.exists()) {
        OpenFileManager(entry.absolutePath(), entry.absoluteFilePath(), failed);
        return;
    }
    QFileInfo folder(entry.absolutePath());
    while (!folder.exists() && folder.absolutePath() != folder.absoluteFilePath())
        folder.setFile(folder.absolutePath());
    if (folder.exists())
        OpenFileManager(folder.absoluteFilePath(), QString(), failed);
    else
        failed();
}

} // namespace zetui::ui
