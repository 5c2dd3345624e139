#pragma once

#include <memory>
#include <string>
#include <utility>

#include <zetui/Export.h>
#include <zetui/controls/ButtonComponents.h>
#include <zetui/controls/UI_ControlView.h>
#include <zetui/pixmill/SupplierInterface.h>

namespace zetui::controls {

/// A push button with a text. In a skin with icons, a button whose archived size is an icon's shows its
/// archived icon or the one of its id; its text is then the tooltip and the accessible name. "&" before a
/// letter makes that letter the mnemonic. Sends `UI_ButtonChangedMessage`.
class ZETUI_API UI_TextButton : public UI_ControlView
{
  public:
    UI_TextButton();

    void SetText(const std::wstring& text);
    std::wstring GetText() const;
    void SetButtonComponents(const ButtonComponents& components);
    ButtonComponents GetButtonComponents() const noexcept;
    /// Shows the icon instead of the text: "add", "remove", "reset", "ok" or "cancel"; an empty name goes
    /// back to the text.
    void SetIcon(const std::string& name);
    /// Presses and releases the button.
    void Click();

    /// The width and height that a button with this text needs.
    static std::pair<float, float> UI_GetRecommendedSize(const pixmill::SupplierInterface* supplier,
                                                         const std::wstring& text, float textSize,
                                                         const ButtonComponents& components);

  protected:
    ~UI_TextButton() override;

  private:
    struct ButtonState;
    std::unique_ptr<ButtonState> button;
};

} // namespace zetui::controls
