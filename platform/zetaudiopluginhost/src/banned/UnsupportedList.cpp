#include "banned/UnsupportedList.h"

#include <algorithm>
#include <stdexcept>

#include <pugixml.hpp>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/LineCounter.h>
#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>

#include "banned/BanListFile.h"

namespace zetaudiopluginhost {

namespace {

/// False when the attribute is there and is no number that fits.
template<class Number>
bool ReadNumber(const pugi::xml_attribute& attribute, std::optional<Number>& number)
{
    if (!attribute)
        return true;
    number = zetcore::string::ParseNumber<Number>(attribute.value());
    return number.has_value();
}

} // namespace

UnsupportedList UnsupportedList::Parse(std::string_view text)
{
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(text.data(), text.size());
    if (!result) {
        const std::size_t offset = result.offset > 0 ? static_cast<std::size_t>(result.offset) : 0;
        throw std::runtime_error("line " + std::to_string(LineOfOffset(text, offset)) + ": " +
                                 result.description());
    }
    const pugi::xml_node root = document.child("pluginlist");
    if (!root)
        throw std::runtime_error("line 1: there is no <pluginlist>");

    UnsupportedList list;
    zetcore::string::LineCounter lines(text);
    for (const pugi::xml_node& node : root.children("plugin")) {
        Entry entry;
        entry.fileName = zetcore::string::UTF8to16(node.attribute("filename").value());
        const bool isComplete = !entry.fileName.empty() &&
                                ReadNumber(node.attribute("uniqueid"), entry.uniqueId) &&
                                ReadNumber(node.attribute("version"), entry.version);
        if (isComplete)
            list.entries.push_back(std::move(entry));
        else
            zetcore::debug::TraceLine(
                1, "BannedPluginManager",
                "unsupported plug-ins, line " +
                    std::to_string(lines.LineOf(static_cast<std::size_t>(node.offset_debug()))) +
                    ": an entry needs a file name, and decimal numbers for uniqueid and version");
    }
    return list;
}

bool UnsupportedList::MatchesFile(const std::wstring& fileName) const
{
    return std::any_of(entries.begin(), entries.end(), [&fileName](const Entry& entry) {
        return !entry.uniqueId && !entry.version &&
               zetcore::string::EqualIgnoringCase(entry.fileName, fileName);
    });
}

bool UnsupportedList::Matches(const std::wstring& fileName, std::uint32_t uniqueId,
                              std::int64_t version) const
{
    return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.uniqueId.value_or(uniqueId) == uniqueId && entry.version.value_or(version) == version &&
               zetcore::string::EqualIgnoringCase(entry.fileName, fileName);
    });
}

} // namespace zetaudiopluginhost
