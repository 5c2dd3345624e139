#include "output/TimeText.h"

#include <iomanip>
#include <locale>
#include <sstream>

namespace zetaudiopluginmanager {

std::string TimeText(std::chrono::seconds sinceEpoch)
{
    constexpr std::chrono::sys_days end = std::chrono::year(10000) / 1 / 1;
    const std::chrono::sys_seconds time(sinceEpoch);
    if (sinceEpoch.count() <= 0 || time >= end)
        return {};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::setfill('0') << std::setw(4) << static_cast<int>(date.year()) << '-' << std::setw(2)
         << static_cast<unsigned>(date.month()) << '-' << std::setw(2) << static_cast<unsigned>(date.day())
         << 'T' << std::setw(2) << clock.hours().count() << ':' << std::setw(2) << clock.minutes().count()
         << ':' << std::setw(2) << clock.seconds().count() << 'Z';
    return text.str();
}

} // namespace zetaudiopluginmanager
