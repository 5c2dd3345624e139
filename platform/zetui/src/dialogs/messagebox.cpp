#include <zetui/dialogs/messagebox.h>

#include <zetcore/string/Utf.h>
#include <zetui/dialogs/ProgressPresentation.h>

namespace zetui::dialogs::messagebox {

namespace {

void Show(AlertKind kind, const std::wstring& title, const std::wstring& message)
{
    GetPresentation()->ShowAlert(kind, zetcore::string::UTF16to8(title), zetcore::string::UTF16to8(message));
}

} // namespace

void ShowNote(const pixmill::SupplierInterface*, const std::wstring& title, const std::wstring& message,
              ui::WindowVariant)
{
    Show(AlertKind::Note, title, message);
}

void ShowCaution(const pixmill::SupplierInterface*, const std::wstring& title, const std::wstring& message,
                 ui::WindowVariant)
{
    Show(AlertKind::Caution, title, message);
}

} // namespace zetui::dialogs::messagebox
