#pragma once

#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>

namespace zetaudiopluginhostui {

/// Tells the user that the preferences folder cannot be written; returns when that has been dismissed. Main
/// thread.
void ShowPreferenceAccessCaution(const zetui::pixmill::SupplierInterface* supplier, HWND parent);

} // namespace zetaudiopluginhostui
