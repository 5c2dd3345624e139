#pragma once

#include <string>

#include <zetui/Export.h>
#include <zetui/controls/UI_ControlView.h>

namespace zetui::controls {

/// A text that the user only reads.
class ZETUI_API UI_StaticText : public UI_ControlView
{
  public:
    enum Alignment : int
    {
        kAlignLeft = 0,
        kAlignCenter = 1,
        kAlignRight = 2,
    };

    UI_StaticText();
    void SetText(const std::wstring& text);
    std::wstring GetText() const;
    void SetAlignment(int alignment);
    /// The control that the text names. The text's mnemonic ("&" before a letter) leads to it, and screen
    /// readers read the text as its name.
    void SetBuddy(UI_Node* control);

  protected:
    ~UI_StaticText() override;
};

} // namespace zetui::controls
