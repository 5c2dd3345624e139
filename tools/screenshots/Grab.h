#pragma once

#include <filesystem>

class QWidget;

namespace screenshots {

/// Writes a picture of the window; of a dialog with its parent window behind it, as far as that is visible.
/// On an X server it is what the server shows; else what the widgets draw.
/// Throws `std::runtime_error` naming the file that cannot be written.
void Grab(QWidget& window, const std::filesystem::path& file);

} // namespace screenshots
