#pragma once

#include <filesystem>

class QWidget;

namespace screenshots {

/// Writes a picture of the window. The picture of a dialog has the visible parent window behind it. On an X
/// server it is a picture of the screen, otherwise of what the widgets draw. Throws `std::runtime_error`,
/// which names the file, when it cannot be written.
void SavePicture(QWidget& window, const std::filesystem::path& file);

} // namespace screenshots
