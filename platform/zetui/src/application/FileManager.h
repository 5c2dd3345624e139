#pragma once

#include <functional>

#include <QString>

namespace zetui::ui {

/// Opens the folder, and selects the entry in it unless that is empty. Both are absolute paths of what is
/// there. `failed` is called, at once or later from the event loop, when nothing could be started.
void OpenFileManager(const QString& folder, const QString& entry, const std::function<void()>& failed);

} // namespace zetui::ui
