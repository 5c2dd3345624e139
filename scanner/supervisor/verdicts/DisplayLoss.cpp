#include "supervisor/verdicts/DisplayLoss.h"

#include <algorithm>
#include <array>

namespace zetaudiofilterscan {

namespace {

/// Parts of a line that stand in it in this order.
struct Saying
{
    std::string_view first, second;
};

/// The messages of the common libraries for X11 and Wayland.
constexpr std::array sayings{
    Saying{"X connection to ", " broken"},
    Saying{"atal IO error ", " on X server "},
    Saying{"The X11 connection broke", ""},
    Saying{"The Wayland connection broke", ""},
    Saying{"Lost connection to Wayland compositor", ""},
    Saying{"Error reading events from display", ""},
    Saying{"Error flushing display", ""},
    Saying{" dispatching to Wayland display", ""},
};

bool Says(std::string_view line)
{
    return std::ranges::any_of(sayings, [line](const Saying& saying) {
        const auto first = line.find(saying.first);
        return first != line.npos && line.find(saying.second, first + saying.first.size()) != line.npos;
    });
}

} // namespace

bool TellsOfLostDisplay(std::string_view output)
{
    while (!output.empty()) {
        const auto end = std::min(output.find_first_of("\r\n"), output.size());
        if (Says(output.substr(0, end)))
            return true;
        output.remove_prefix(std::min(end + 1, output.size()));
    }
    return false;
}

} // namespace zetaudiofilterscan
