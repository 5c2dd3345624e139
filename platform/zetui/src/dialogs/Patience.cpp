#include "dialogs/Patience.h"

#include <utility>

namespace zetui::dialogs {

void Patience::Set(std::chrono::seconds after, Text text)
{
    limit = after;
    words = std::move(text);
    told.reset();
}

void Patience::Restart(Clock::time_point now)
{
    since = now;
    told.reset();
}

std::optional<std::string> Patience::Ask(Clock::time_point now)
{
    const auto unchanged = now - since;
    if (!words || unchanged <= limit)
        return std::nullopt;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(unchanged);
    if (told == seconds)
        return std::nullopt;
    told = seconds;
    return words(seconds);
}

} // namespace zetui::dialogs
