#pragma once

#include <optional>
#include <string>

#include <QPointer>
#include <zetui/dialogs/ProgressPresentation.h>

#include "dialogs/ProgressWindow.h"
#include "screen/ParentWindow.h"

namespace zetui::dialogs {

/// A progress dialog in a window. Main thread.
class QtProgress : public ProgressPresentation
{
  public:
    explicit QtProgress(ui::WindowVariant parentWindow) : parent(parentWindow) {}
    ~QtProgress() override;

    void Show(const std::string& title, const std::string& text, bool cancellable) override;
    void SetExtraText(const std::string& text) override;
    void SetPatience(const std::string& extraText, const std::string& patience) override;
    void SetProgress(unsigned long long progress, unsigned long long total, const std::string& text) override;
    void Finish() override;
    void Hide() override;
    bool ProcessEvents(bool wait) override;
    bool RunsTheQueue() const override { return true; }

  private:
    void Repaint();

    const ui::WindowVariant parent;
    /// Null while it is not shown, and when its parent has deleted it.
    QPointer<ProgressWindow> window;
    std::optional<ui::ParentWindowLock> lock;
    bool changed = false;
};

} // namespace zetui::dialogs
