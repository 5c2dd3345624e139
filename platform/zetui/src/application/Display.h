#pragma once

#include <string_view>

namespace zetui::ui {

/// True when the window system answers. It is asked before Qt, because Qt would end the program.
bool WindowSystemAnswers();

/// True when Qt's platform choice includes a platform that needs no window system of ours, or one that we do
/// not know. The choice (`QT_QPA_PLATFORM`) is a list of names separated by ";", in order of preference, with
/// arguments after ":".
bool ChoosesPlatformWithoutWindowSystem(std::string_view choice);

} // namespace zetui::ui
