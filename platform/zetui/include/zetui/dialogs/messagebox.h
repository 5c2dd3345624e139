#pragma once

#include <string>

#include <zetui/Export.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>

/// Alerts that block until the user has dismissed them. Texts are shown as they are. Main thread.
namespace zetui::dialogs::messagebox {

/// The buttons. They are flags of a set, and one of them is the answer.
inline constexpr int kOK = 1;
inline constexpr int kCancel = 2;
inline constexpr int kYes = 16;
inline constexpr int kNo = 64;
inline constexpr int kYesNo = kYes | kNo;

enum Icon : int
{
    kIconNone = 0,
    kIconNote = 1,
    kIconCaution = 2,
    kIconStop = 3,
};

/// Asks, and returns the button that was pressed. Closing the window answers with cancel, with no, or, where
/// the set has neither, with the default button. Without a display nobody can be asked, and the default
/// button is the answer.
ZETUI_API int Messagebox(const pixmill::SupplierInterface* supplier, const std::wstring& title,
                         const std::wstring& message, ui::WindowVariant parent, int buttonSet,
                         int defaultButton, int icon);

ZETUI_API void ShowNote(const pixmill::SupplierInterface* supplier, const std::wstring& title,
                        const std::wstring& message, ui::WindowVariant parent);
ZETUI_API void ShowCaution(const pixmill::SupplierInterface* supplier, const std::wstring& title,
                           const std::wstring& message, ui::WindowVariant parent);

/// A text of any length in a window of its own, in which the user can select and copy it.
ZETUI_API void ShowText(const std::wstring& title, const std::wstring& text, ui::WindowVariant parent);

} // namespace zetui::dialogs::messagebox
