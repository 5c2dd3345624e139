#include "application/Display.h"

namespace zetui::ui {

bool ChoosesPlatformWithoutWindowSystem(std::string_view choice)
{
    while (!choice.empty()) {
        const std::size_t end = choice.find(';');
        std::string_view name = choice.substr(0, end);
        name = name.substr(0, name.find(':'));
        if (!name.empty() && name != "xcb" && !name.starts_with("wayland"))
            return true;
        choice = end == std::string_view::npos ? std::string_view() : choice.substr(end + 1);
    }
    return false;
}

} // namespace zetui::ui
