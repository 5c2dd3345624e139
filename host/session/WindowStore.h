#pragma once

#include <string>
#include <utility>

#include <zetui/archiveddialog/ControlStore.h>

#include "session/WindowSettings.h"

namespace zetaudiopluginmanager {

/// The store that the program gives the toolkit for the manager's window. It has the values of the settings
/// file, and keeps those that are written for the next file. Main thread.
class WindowStore final : public zetui::ui::ControlStore
{
  public:
    explicit WindowStore(ControlValues valuesOfFile) : values(std::move(valuesOfFile)) {}

    std::string Read(const std::string& key) const override;
    void Write(const std::string& key, const std::string& value) override;
    /// Says so on standard error.
    void OnUnusable(const std::string& key, const std::string& value) override;

    const ControlValues& Written() const noexcept { return written; }

  private:
    const ControlValues values;
    ControlValues written;
};

} // namespace zetaudiopluginmanager
