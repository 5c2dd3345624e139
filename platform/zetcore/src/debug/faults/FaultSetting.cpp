#include "debug/faults/FaultSetting.h"

#include <array>
#include <utility>

#include <zetcore/string/ParseNumber.h>

namespace zetcore::debug {

namespace {

constexpr std::string_view latePrefix = "late=";

bool ReadAction(std::string_view text, FaultSetting& setting)
{
    constexpr std::array<std::pair<std::string_view, FaultAction>, 5> names{
        {{"stop", FaultAction::Stop},
         {"kill", FaultAction::Kill},
         {"no-space", FaultAction::NoSpace},
         {"read-only", FaultAction::ReadOnly},
         {"denied", FaultAction::Denied}}};
    for (const auto& [name, action] : names) {
        if (text == name) {
            setting.action = action;
            return true;
        }
    }
    if (!text.starts_with(latePrefix))
        return false;
    const auto seconds = string::ParseNumber<unsigned>(text.substr(latePrefix.size()));
    setting.action = FaultAction::Late;
    setting.seconds = seconds.value_or(0);
    return seconds.has_value();
}

} // namespace

bool FaultSetting::Matches(std::string_view name) const
{
    return isBeginning ? name.starts_with(place) : name == place;
}

std::optional<FaultSetting> ParseFaultSetting(std::string_view text)
{
    const std::size_t last = text.rfind(':');
    const std::size_t first = last == text.npos || last == 0 ? text.npos : text.rfind(':', last - 1);
    if (first == text.npos)
        return std::nullopt;
    FaultSetting setting;
    setting.place = text.substr(0, first);
    if (setting.place.ends_with('*')) {
        setting.place.pop_back();
        setting.isBeginning = true;
    }
    const auto visit = string::ParseNumber<unsigned>(text.substr(first + 1, last - first - 1));
    if (!visit || *visit == 0 || !ReadAction(text.substr(last + 1), setting))
        return std::nullopt;
    setting.visit = *visit;
    return setting;
}

} // namespace zetcore::debug
