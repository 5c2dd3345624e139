#include <zetui/dialogs/TerminalPresentation.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "dialogs/PostedCalls.h"
#include "dialogs/Terminal.h"
#include "dialogs/TerminalText.h"

namespace zetui::dialogs {

namespace {

using Clock = std::chrono::steady_clock;

/// Redrawing more often would tell nobody more. Ctrl-C is noticed within this time, too.
constexpr std::chrono::milliseconds redrawInterval{50};

} // namespace

struct TerminalPresentation::State
{
    std::FILE* stream = nullptr;
    bool quiet = false;
    bool terminal = false;
    Now now;
    /// True while a progress line is on the screen.
    bool lineDrawn = false;
    Counts counts;

    void Write(const std::string& text) const
    {
        std::fwrite(text.data(), 1, text.size(), stream);
        std::fflush(stream);
    }

    void ClearLine()
    {
        if (!std::exchange(lineDrawn, false))
            return;
        Write("\r\x1b[K");
    }

    class Progress;
};

class TerminalPresentation::State::Progress : public ProgressPresentation
{
  public:
    explicit Progress(std::shared_ptr<State> owner) : state(std::move(owner)) {}
    ~Progress() override { state->ClearLine(); }

    void Show(const std::string& title, const std::string& text, bool cancellable) override
    {
        ++state->counts.progressDialogs;
        state->counts.lastTotal = 0;
        line = {};
        line.title = title;
        line.text = text;
        lastPlainLine.clear();
        if (cancellable)
            interrupts.emplace();
        if (state->quiet)
            return;
        if (!state->terminal)
            state->Write(PrintableText(title, false) + "\n");
        Changed();
        DrawIfDue();
    }

    void SetExtraText(const std::string& text) override
    {
        if (line.extraText == text)
            return;
        line.extraText = text;
        Changed();
    }

    void SetProgress(unsigned long long progress, unsigned long long total, const std::string& text) override
    {
        if (total > 0)
            state->counts.lastTotal = total;
        line.progress = progress;
        line.total = total;
        line.text = text;
        line.position.Move(progress, total);
        Changed();
        if (!state->quiet && !state->terminal)
            WritePlainLine();
    }

    void Finish() override
    {
        line.position.Fill();
        line.progress = line.total;
        if (state->quiet || line.total == 0)
            return;
        if (state->terminal) {
            Draw();
            return;
        }
        // The last step has a line of its own, which said what came before it.
        line.text.clear();
        line.extraText.clear();
        WriteOnce(FormatPlainLine(line) + "\n");
    }

    void Hide() override
    {
        interrupts.reset();
        dirty = false;
        state->ClearLine();
    }

    bool RunsTheQueue() const override { return true; }

    bool ProcessEvents(bool wait) override
    {
        if (wait)
            WaitForPostedCalls(dirty ? std::clamp<Clock::duration>(lastDrawn + redrawInterval - state->now(),
                                                                   Clock::duration::zero(), redrawInterval)
                                     : redrawInterval);
        DrawIfDue();
        if (!interrupts || !InterruptWatch::Take())
            return false;
        ++state->counts.cancelled;
        return true;
    }

  private:
    /// The line is drawn when events are processed, so that changes made together appear together.
    void Changed() { dirty = !state->quiet && state->terminal; }

    void DrawIfDue()
    {
        if (!dirty)
            return;
        if (state->now() >= lastDrawn + redrawInterval)
            Draw();
    }

    void Draw()
    {
        dirty = false;
        lastDrawn = state->now();
        state->lineDrawn = true;
        state->Write("\r" + FormatProgressLine(line, TerminalColumns(state->stream)) + "\x1b[K");
    }

    void WritePlainLine()
    {
        if (line.text.empty() && line.extraText.empty())
            return;
        WriteOnce(FormatPlainLine(line) + "\n");
    }

    void WriteOnce(std::string plain)
    {
        if (plain == lastPlainLine)
            return;
        state->Write(plain);
        lastPlainLine = std::move(plain);
    }

    std::shared_ptr<State> state;
    ProgressLine line;
    bool dirty = false;
    Clock::time_point lastDrawn{};
    std::string lastPlainLine;
    std::optional<InterruptWatch> interrupts;
};

TerminalPresentation::TerminalPresentation(std::FILE* stream, bool quiet, Now now)
    : state(std::make_shared<State>())
{
    state->now = std::move(now);
    state->stream = stream;
    state->quiet = quiet;
    state->terminal = !quiet && IsTerminal(stream);
}

TerminalPresentation::~TerminalPresentation() = default;

std::unique_ptr<ProgressPresentation> TerminalPresentation::CreateProgress(ui::WindowVariant)
{
    return std::make_unique<State::Progress>(state);
}

void TerminalPresentation::ShowAlert(AlertKind kind, const std::string& title, const std::string& message,
                                     ui::WindowVariant)
{
    ++(kind == AlertKind::Note ? state->counts.notes : state->counts.cautions);
    state->ClearLine();
    state->Write(PrintableText(title, false) + ": " + PrintableText(message, true) + "\n");
}

const TerminalPresentation::Counts& TerminalPresentation::GetCounts() const noexcept
{
    return state->counts;
}

} // namespace zetui::dialogs
