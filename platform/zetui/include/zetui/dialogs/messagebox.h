#pragma once

#include <string>

#include <zetui/Export.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/ui/WindowVariant.h>

/// Alerts that block until the user has dismissed them. Texts are shown as they are. Main thread.
namespace zetui::dialogs::messagebox {

ZETUI_API void ShowNote(const pixmill::SupplierInterface* supplier, const std::wstring& title,
                        const std::wstring& message, ui::WindowVariant parent);
ZETUI_API void ShowCaution(const pixmill::SupplierInterface* supplier, const std::wstring& title,
                           const std::wstring& message, ui::WindowVariant parent);

} // namespace zetui::dialogs::messagebox
