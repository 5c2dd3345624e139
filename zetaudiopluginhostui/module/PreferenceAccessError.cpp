#include "module/PreferenceAccessError.h"

#include <zetcore/config/Localizer.h>
#include <zetcore/utility/ClientName.h>
#include <zetui/dialogs/messagebox.h>

namespace zetaudiopluginhostui {

namespace {

constexpr char messageKey[] =
    "$$$/AudioPluginManager/PreferenceAccessError=Unable to load third-party audio plug-ins. @0 is unable to "
    "access your Preferences folder. Your user account may not have access rights, or the folder may have "
    "been set to Read Only. Please check your permissions and try again.";

} // namespace

void ShowPreferenceAccessCaution(const zetui::pixmill::SupplierInterface* supplier, HWND parent)
{
    const std::wstring clientName = zetcore::utility::GetClientName();
    zetui::dialogs::messagebox::ShowCaution(
        supplier, clientName, zetcore::config::Localizer::Get().LocalizeWide(messageKey, {clientName}),
        zetui::ui::WindowVariant(parent));
}

} // namespace zetaudiopluginhostui
