#pragma once

#include <string_view>

namespace zetui::ui {

/// True when the window system can be reached. It is asked before Qt is, which would end the program.
bool WindowSystemAnswers();

/// True when Qt's platform choice (`QT_QPA_PLATFORM`: names with arguments after ":", in order of preference,
/// separated by ";") includes one that needs no window system of ours. True too for names that we do not
/// know.
bool ChoosesPlatformWithoutWindowSystem(std::string_view choice);

} // namespace zetui::ui
