#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetui/dialogs/ProgressPresentation.h>

namespace zetaudiopluginhostui {

/// Writes down what is shown, and answers as the test says. It is installed while it lives.
class RecordingPresentation
{
  public:
    RecordingPresentation() { zetui::dialogs::SetPresentation(std::make_shared<Recorder>(*this)); }
    ~RecordingPresentation() { zetui::dialogs::SetPresentation(nullptr); }
    RecordingPresentation(const RecordingPresentation&) = delete;
    RecordingPresentation& operator=(const RecordingPresentation&) = delete;

    /// Holds "show TITLE", "step EXTRA (PROGRESS/TOTAL)", "hide", "note TITLE: MESSAGE" and
    /// "caution TITLE: MESSAGE".
    std::vector<std::string> calls;
    /// Every extra text, in order.
    std::vector<std::string> extraTexts;
    /// How often a bar was filled, because all was done.
    int fullBars = 0;
    /// The window that each progress dialog and alert belongs to.
    std::vector<HWND> parents;
    /// Called after each step. True presses the cancel button.
    std::function<bool()> onStep;
    /// Called whenever a progress dialog would deal with input. True presses the cancel button.
    std::function<bool()> onInput;
    /// Called for each alert.
    std::function<void()> onAlert;
    /// Called when a progress dialog is hidden.
    std::function<void()> onHide;

    std::vector<std::string> Starting(const std::string& with) const
    {
        std::vector<std::string> found;
        for (const std::string& call : calls)
            if (call.starts_with(with))
                found.push_back(call);
        return found;
    }

  private:
    class Progress : public zetui::dialogs::ProgressPresentation
    {
      public:
        explicit Progress(RecordingPresentation& record) : owner(record) {}
        void Show(const std::string& title, const std::string& text, bool cancellable) override
        {
            owner.calls.push_back("show " + title + text + (cancellable ? "" : " (not cancellable)"));
        }
        void SetExtraText(const std::string& text) override
        {
            extraText = text;
            owner.extraTexts.push_back(text);
        }
        void SetProgress(unsigned long long progress, unsigned long long total,
                         const std::string& text) override
        {
            owner.calls.push_back("step " + extraText + " (" + std::to_string(progress) + "/" +
                                  std::to_string(total) + ")" + text);
            stepped = true;
        }
        void Finish() override { ++owner.fullBars; }
        void Hide() override
        {
            owner.calls.push_back("hide");
            if (owner.onHide)
                owner.onHide();
        }
        bool ProcessEvents(bool wait) override
        {
            if (wait)
                if (const auto loop = std::dynamic_pointer_cast<zetcore::threads::PlainEventLoop>(
                        zetcore::threads::GetRegisteredMainThread()))
                    loop->WaitAndRun(std::chrono::steady_clock::now() + std::chrono::milliseconds(50));
            const bool cancelled = std::exchange(stepped, false) && owner.onStep && owner.onStep();
            return (owner.onInput && owner.onInput()) || cancelled;
        }

      private:
        RecordingPresentation& owner;
        std::string extraText;
        bool stepped = false;
    };

    class Recorder : public zetui::dialogs::Presentation
    {
      public:
        explicit Recorder(RecordingPresentation& record) : owner(record) {}
        std::unique_ptr<zetui::dialogs::ProgressPresentation>
        CreateProgress(zetui::ui::WindowVariant parent) override
        {
            owner.parents.push_back(parent.Native());
            return std::make_unique<Progress>(owner);
        }
        void ShowAlert(zetui::dialogs::AlertKind kind, const std::string& title, const std::string& message,
                       zetui::ui::WindowVariant parent) override
        {
            owner.parents.push_back(parent.Native());
            const bool note = kind == zetui::dialogs::AlertKind::Note;
            owner.calls.push_back((note ? "note " : "caution ") + title + ": " + message);
            if (owner.onAlert)
                owner.onAlert();
        }

      private:
        RecordingPresentation& owner;
    };
};

} // namespace zetaudiopluginhostui
