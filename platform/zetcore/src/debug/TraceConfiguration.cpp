#include "debug/TraceConfiguration.h"

#include <zetcore/string/ParseNumber.h>

#include "string/TextEntries.h"

namespace zetcore::debug {

namespace {

std::optional<int> ParseVolume(std::string_view text)
{
    const auto volume = string::ParseNumber<int>(text);
    return volume && *volume >= 0 && *volume <= 9 ? volume : std::nullopt;
}

} // namespace

TraceConfiguration ParseTraceConfiguration(std::string_view text)
{
    TraceConfiguration configuration;
    for (const std::string_view part : string::SplitText(text, ';')) {
        if (string::Trim(part).empty())
            continue;
        const auto entry = string::ParseEntry(part);
        if (!entry) {
            configuration.problems.push_back("\"" + std::string(part) + "\" is no name=value");
        } else if (entry->key == "volume") {
            configuration.volume = ParseVolume(entry->value);
            if (!configuration.volume)
                configuration.problems.push_back("volume must be 0 to 9, not \"" + entry->value + "\"");
        } else if (entry->key == "file") {
            configuration.file = entry->value;
        } else if (entry->key == "off") {
            for (const std::string_view category : string::SplitText(entry->value, ','))
                configuration.off.emplace_back(string::Trim(category));
        } else {
            configuration.problems.push_back("\"" + entry->key + "\" is not known; volume, file and off are");
        }
    }
    return configuration;
}

} // namespace zetcore::debug
