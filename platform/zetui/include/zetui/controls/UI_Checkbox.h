#pragma once

#include <memory>
#include <string>

#include <zetui/Export.h>
#include <zetui/controls/UI_ControlView.h>

namespace zetui::controls {

/// A checkbox with an optional text. Sends `UI_ButtonChangedMessage`.
class ZETUI_API UI_Checkbox : public UI_ControlView
{
  public:
    static constexpr int kUnchecked = 0;
    static constexpr int kChecked = 1;
    static constexpr int kMixed = 2;

    UI_Checkbox();

    void SetValue(int value);
    int GetValue() const;
    void SetChecked(bool checked) { SetValue(checked ? kChecked : kUnchecked); }
    bool IsChecked() const { return GetValue() == kChecked; }
    void SetText(const std::wstring& text);
    std::wstring GetText() const;

  protected:
    ~UI_Checkbox() override;

  private:
    struct CheckboxState;
    std::unique_ptr<CheckboxState> checkbox;
};

} // namespace zetui::controls
