#pragma once

#include <functional>
#include <memory>
#include <string>

#include <zetui/Export.h>
#include <zetui/screen/WindowVariant.h>

/// How dialogs reach the user. zetui has a presentation for the terminal; one with windows replaces it where
/// there is a display.
namespace zetui::dialogs {

/// One progress dialog on the screen. Main thread.
class ZETUI_API ProgressPresentation
{
  public:
    virtual ~ProgressPresentation();
    virtual void Show(const std::string& title, const std::string& text, bool cancellable) = 0;
    virtual void SetExtraText(const std::string& text) = 0;
    /// Shows the extra text and, behind it in brackets, how long it has been the same. The base makes one
    /// extra text of both.
    virtual void SetPatience(const std::string& extraText, const std::string& patience);
    /// A total of 0 is a busy bar. The counts are shown as they are, and the bar stays where it was when they
    /// go back.
    virtual void SetProgress(unsigned long long progress, unsigned long long total,
                             const std::string& text) = 0;
    /// Called when all is done: the bar is full when `Hide` takes it away. It is not called when the user
    /// cancels, or when an exception ends the work. The base does nothing.
    virtual void Finish();
    virtual void Hide() = 0;
    /// Deals with pending input and repaints. With `wait`, it may sleep for a moment when there is nothing to
    /// do. True when the user asked to cancel since the last call. The dialog runs the main thread's queue
    /// and waits for it: a presentation has to do neither.
    virtual bool ProcessEvents(bool wait) = 0;
    /// True for a presentation whose `ProcessEvents` runs the main thread's queue and waits, because it has
    /// an event loop of its own to wait in. The dialog then leaves both to it. The base says no.
    virtual bool RunsTheQueue() const;
};

enum class AlertKind
{
    Note,
    Caution,
};

/// The question of a message box. Its buttons and icons are those of `messagebox`. `buttonSet` has at least
/// one known button, and `defaultButton` is one of the set.
struct Question
{
    std::string title, message;
    int buttonSet = 0;
    int defaultButton = 0;
    int icon = 0;
};

/// Texts are UTF-8 and shown as they are. A dialog belongs to its parent window and blocks it; without a
/// parent it blocks the whole application.
class ZETUI_API Presentation
{
  public:
    virtual ~Presentation();
    virtual std::unique_ptr<ProgressPresentation> CreateProgress(ui::WindowVariant parent) = 0;
    /// Returns when the user has dismissed it.
    virtual void ShowAlert(AlertKind kind, const std::string& title, const std::string& message,
                           ui::WindowVariant parent) = 0;
    /// The button that was pressed. The base shows the message as an alert and takes the default button,
    /// because nobody can be asked.
    virtual int Ask(const Question& question, ui::WindowVariant parent);
    /// Shows a text of any length, which the user can select and copy. The base shows it as a note.
    virtual void ShowText(const std::string& title, const std::string& text, ui::WindowVariant parent);
    /// The folder that the user chose; empty when the user chose none, as in the base.
    virtual std::wstring ChooseFolder(const std::wstring& title, ui::WindowVariant parent);
};

/// The presentation in use. It is never null: unless a program installed another, it is the terminal's on
/// standard error. Main thread.
ZETUI_API std::shared_ptr<Presentation> GetPresentation();
/// Null goes back to the default.
ZETUI_API void SetPresentation(std::shared_ptr<Presentation> presentation);

} // namespace zetui::dialogs
