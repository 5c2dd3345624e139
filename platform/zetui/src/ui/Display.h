#pragma once

#include <string_view>

namespace zetui::ui {

/// Whether the window system can be reached; asked before Qt is, which would end the program.
bool WindowSystemAnswers();

/// Whether Qt's platform choice (`QT_QPA_PLATFORM`: names with arguments after ":", in order of preference,
/// separated by ";") includes one that needs no window system of ours. True too for names that we do not
/// know.
bool ChoosesPlatformWithoutWindowSystem(std::string_view choice);

} // namespace zetui::ui
