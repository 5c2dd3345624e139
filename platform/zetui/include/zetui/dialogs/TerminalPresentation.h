#pragma once

#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include <zetui/Export.h>
#include <zetui/dialogs/ProgressPresentation.h>

namespace zetui::dialogs {

/// Progress and alerts in a terminal: one line that redraws itself (bar, count, percentage, what is being
/// done), or, where the stream is no terminal, a plain line for each step. Ctrl-C is the cancel button while
/// a progress dialog is open, and so is SIGTERM. Main thread.
class ZETUI_API TerminalPresentation : public Presentation
{
  public:
    /// Counts what it has shown so far, for the program that owns it.
    struct Counts
    {
        int progressDialogs = 0;
        int cancelled = 0;
        int notes = 0;
        int cautions = 0;
        unsigned long long lastTotal = 0;
    };

    /// The clock by which it redraws the line. Tests bring their own.
    using Now = std::function<std::chrono::steady_clock::time_point()>;

    /// The stream is not owned. `quiet` shows alerts only.
    explicit TerminalPresentation(std::FILE* stream, bool quiet = false,
                                  Now now = std::chrono::steady_clock::now);
    ~TerminalPresentation() override;

    std::unique_ptr<ProgressPresentation> CreateProgress(ui::WindowVariant parent) override;
    void ShowAlert(AlertKind kind, const std::string& title, const std::string& message,
                   ui::WindowVariant parent) override;
    const Counts& GetCounts() const noexcept;

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace zetui::dialogs
