#pragma once

#include <functional>
#include <memory>
#include <string>

#include <zetui/Export.h>

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
    /// A total of 0 is a busy bar.
    virtual void SetProgress(unsigned long long progress, unsigned long long total,
                             const std::string& text) = 0;
    virtual void Hide() = 0;
    /// Deals with pending input and repaints; with `wait`, sleeps for a moment when there is nothing to do.
    /// True when the user asked to cancel since the last call.
    virtual bool ProcessEvents(bool wait) = 0;
};

/// The buttons of a message box, and what it returns.
enum class AlertKind
{
    Note,
    Caution,
};

class ZETUI_API Presentation
{
  public:
    virtual ~Presentation();
    virtual std::unique_ptr<ProgressPresentation> CreateProgress() = 0;
    /// Returns when the user has dismissed it.
    virtual void ShowAlert(AlertKind kind, const std::string& title, const std::string& message) = 0;
};

/// The presentation in use; never null: the terminal's on standard error unless a program installed another.
/// Main thread.
ZETUI_API std::shared_ptr<Presentation> GetPresentation();
/// Null goes back to the default.
ZETUI_API void SetPresentation(std::shared_ptr<Presentation> presentation);

} // namespace zetui::dialogs
