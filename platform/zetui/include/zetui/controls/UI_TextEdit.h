#pragma once

#include <string>

#include <zetui/Export.h>
#include <zetui/controls/UI_ControlView.h>

namespace zetui::controls {

/// One line of text to edit. Sends `UI_InteractiveControlChangedMessage` for every change by the user and
/// `UI_ControlChangedMessage` when it is committed (Return, leaving the field, the clear button).
class ZETUI_API UI_TextEdit : public UI_ControlView
{
  public:
    UI_TextEdit();
    void SetValue(const std::wstring& text);
    std::wstring GetValue() const;

  protected:
    explicit UI_TextEdit(void* nativeWidget);
    ~UI_TextEdit() override;
};

/// A field with a button that empties it. Escape empties it, too.
class ZETUI_API UI_ClearButtonTextEdit : public UI_TextEdit
{
  public:
    UI_ClearButtonTextEdit();
    /// The control itself answers a change: it shows or hides the clear button.
    void EditTextChanged(ui::UI_ControlChangedMessage* message);
    void EditTextChangedInteractively(ui::UI_InteractiveControlChangedMessage* message);

  protected:
    explicit UI_ClearButtonTextEdit(void* nativeWidget);
    ~UI_ClearButtonTextEdit() override;
};

/// A field with a magnifier and a prompt in front, so that it explains itself without a label.
class ZETUI_API UI_SearchBox : public UI_ClearButtonTextEdit
{
  public:
    /// `withMenu` gives the magnifier a menu. With `searchOnReturnOnly` there are no interactive messages.
    UI_SearchBox(bool withMenu, bool searchOnReturnOnly);
    void SetPrompt(const std::wstring& prompt);

  protected:
    ~UI_SearchBox() override;

  private:
    bool onReturnOnly;
};

} // namespace zetui::controls
