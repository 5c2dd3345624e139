#pragma once

#include <functional>

#include <zetui/Export.h>
#include <zetui/utility/RefCountedObjectWithWeakPtr.h>

namespace zetui::dialogs {

/// How a dialog was closed.
class UI_DialogViewContainer
{
  public:
    using Response = int;
    static constexpr Response kCancel = 0;
    static constexpr Response kOK = 1;
};

/// A window as the toolkit's other classes see it. Main thread, like everything below.
class ZETUI_API OS_Window : public utility::RefCountedObjectWithWeakPtr
{
  public:
    virtual void UI_Show(bool show) = 0;
    virtual bool UI_IsShown() const = 0;

  protected:
    ~OS_Window() override;
};

class ZETUI_API OS_Dialog : public OS_Window
{
  public:
    /// Inside a modal phase, this carries out what was posted, handles pending input, repaints, and returns
    /// at once.
    virtual void ModalDuring() = 0;
    /// Asks the dialog to close with the OK response. Its modal run ends when control returns to it. Does
    /// nothing when the dialog is closed.
    virtual void PostClose() = 0;

  protected:
    ~OS_Dialog() override;
};

/// closed --BeginModal--> modal phase --EndModal--> closed
/// closed --RunModal--> modal run --PostClose, cancel--> closed
class ZETUI_API UI_Dialog : public OS_Dialog
{
  public:
    using Response = UI_DialogViewContainer::Response;
    using PostCloseCallback = std::function<bool(Response)>;

    /// Called once when the user or `PostClose` closes the dialog, but not by `EndModal` of a dialog that is
    /// still open. The callback returns true when it has taken care of everything that follows.
    void SetPostCloseCallback(PostCloseCallback callback);
    /// Enters the modal phase without blocking.
    virtual void BeginModal() = 0;
    virtual void EndModal() = 0;
    /// Shows the dialog and blocks until it is closed.
    virtual Response RunModal() = 0;

  protected:
    ~UI_Dialog() override;
    bool CallPostClose(Response response);

  private:
    PostCloseCallback postClose;
};

} // namespace zetui::dialogs
