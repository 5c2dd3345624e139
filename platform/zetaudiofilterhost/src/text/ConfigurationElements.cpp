#include "text/ConfigurationElements.h"

#include <algorithm>
#include <array>
#include <utility>

#include "model/LocatorText.h"
#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace {

using zetcore::string::UTF8to16;

class StringWriter : public pugi::xml_writer
{
  public:
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text;
};

template<typename Number>
Number ReadNumber(const pugi::xml_attribute& attribute)
{
    const std::string_view value = attribute.value();
    const auto number = zetcore::string::ParseNumber<Number>(value);
    if (!number)
        throw UnreadableElement{std::string("attribute ") + attribute.name() + ": " + Quoted(value) +
                                " is no number that fits"};
    return *number;
}

bool ParseBoolean(const pugi::xml_attribute& attribute)
{
    const std::string_view value = attribute.value();
    if (value != "true" && value != "false")
        throw UnreadableElement{std::string("attribute ") + attribute.name() + ": " + Quoted(value) +
                                " is neither true nor false"};
    return value == "true";
}

ModuleStatus ParseStatus(const pugi::xml_attribute& attribute)
{
    const std::optional<ModuleStatus> status = StatusFromWord(attribute.value());
    if (!status)
        throw UnreadableElement{"attribute status: " + Quoted(attribute.value()) + " is no known status"};
    return *status;
}

using InfoField = void (*)(PluginModuleInfo&, std::uint64_t& size, std::int64_t& time,
                           const pugi::xml_attribute&);
struct NamedField
{
    std::string_view name;
    InfoField set;
};
/// In the order in which they are written, so that the search for each one begins where it is.
constexpr std::array<NamedField, 15> fields{{
    {"name", [](auto& info, auto&, auto&, auto& value) { info.SetName(UTF8to16(value.value())); }},
    {"product", [](auto& info, auto&, auto&, auto& value) { info.SetProduct(UTF8to16(value.value())); }},
    {"vendor", [](auto& info, auto&, auto&, auto& value) { info.SetVendor(UTF8to16(value.value())); }},
    {"version",
     [](auto& info, auto&, auto&, auto& value) { info.SetVersionString(UTF8to16(value.value())); }},
    {"category", [](auto& info, auto&, auto&, auto& value) { info.SetCategory(UTF8to16(value.value())); }},
    {"uniqueid", [](auto& info, auto&, auto&, auto& value) { info.SetUniqueId(UTF8to16(value.value())); }},
    {"numericversion",
     [](auto& info, auto&, auto&, auto& value) { info.SetNumericVersion(ReadNumber<std::int64_t>(value)); }},
    {"size", [](auto&, auto& size, auto&, auto& value) { size = ReadNumber<std::uint64_t>(value); }},
    {"time", [](auto&, auto&, auto& time, auto& value) { time = ReadNumber<std::int64_t>(value); }},
    {"enabled", [](auto& info, auto&, auto&, auto& value) { info.SetEnabled(ParseBoolean(value)); }},
    {"effect",
     [](auto& info, auto&, auto&, auto& value) { info.SetHasAnyNonSynthEffect(ParseBoolean(value)); }},
    {"synth", [](auto& info, auto&, auto&, auto& value) { info.SetHasAnySynth(ParseBoolean(value)); }},
    {"status", [](auto& info, auto&, auto&, auto& value) { info.SetStatus(ParseStatus(value)); }},
    {"reason", [](auto& info, auto&, auto&, auto& value) { info.SetReason(value.value()); }},
    {"alone", [](auto& info, auto&, auto&, auto& value) { info.SetScannedAlone(ParseBoolean(value)); }},
}};

/// The field's index, searched from `from` on and around; `fields.size()` when it is unknown.
std::size_t FindField(std::string_view name, std::size_t from)
{
    for (std::size_t step = 0; step < fields.size(); ++step) {
        const std::size_t index = (from + step) % fields.size();
        if (fields[index].name == name)
            return index;
    }
    return fields.size();
}

/// All but the attributes named, and all children.
Unknown ReadUnknown(const pugi::xml_node& element, std::initializer_list<std::string_view> known)
{
    Unknown unknown;
    for (const pugi::xml_attribute& attribute : element.attributes())
        if (std::find(known.begin(), known.end(), attribute.name()) == known.end())
            AppendUnknown(unknown, attribute);
    for (const pugi::xml_node& child : element.children())
        AppendRaw(unknown.children, child);
    return unknown;
}

} // namespace

std::string Quoted(std::string_view value)
{
    return "\"" + std::string(value.substr(0, 200)) + "\"";
}

void AppendUnknown(Unknown& unknown, const pugi::xml_attribute& attribute)
{
    unknown.attributes.emplace_back(attribute.name(), attribute.value());
}

void AppendRaw(std::string& children, const pugi::xml_node& node)
{
    StringWriter writer;
    node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
    children += writer.text;
}

PluginLocator ReadLocator(const pugi::xml_node& element)
{
    const pugi::xml_attribute attribute = element.attribute("locator");
    if (!attribute)
        throw UnreadableElement{"attribute locator is missing"};
    PluginLocator locator = PluginLocator::FromString(UTF8to16(attribute.value()));
    if (locator.IsEmpty())
        throw UnreadableElement{"attribute locator: " + Quoted(attribute.value()) + " names no plug-in"};
    return locator;
}

PluginFolder ReadFolder(const pugi::xml_node& element)
{
    const pugi::xml_attribute attribute = element.attribute("path");
    std::optional<std::wstring> path = UnescapeLocatorPart(UTF8to16(attribute.value()));
    if (!path || path->empty())
        throw UnreadableElement{"attribute path: " + Quoted(attribute.value()) + " names no folder"};
    return {std::move(*path), ReadUnknown(element, {"path"})};
}

InfoPtr ReadModule(const pugi::xml_node& element)
{
    auto info = std::make_shared<PluginModuleInfo>(ReadLocator(element));
    Unknown unknown;
    std::uint64_t size = 0;
    std::int64_t time = 0;
    std::size_t next = 0;
    for (const pugi::xml_attribute& attribute : element.attributes()) {
        const std::string_view attributeName = attribute.name();
        if (attributeName == "locator")
            continue;
        const std::size_t field = FindField(attributeName, next);
        if (field == fields.size()) {
            AppendUnknown(unknown, attribute);
            continue;
        }
        fields[field].set(*info, size, time, attribute);
        next = field + 1;
    }
    info->SetFileStamp(size, time);
    for (const pugi::xml_node& child : element.children())
        AppendRaw(unknown.children, child);
    if (!unknown.IsEmpty())
        info->SetUnknown(std::move(unknown));
    return info;
}

RegistryChange ReadChoice(const pugi::xml_node& element)
{
    RememberedChoice choice;
    if (const pugi::xml_attribute attribute = element.attribute("enabled"))
        choice.enabled = ParseBoolean(attribute);
    choice.unknown = ReadUnknown(element, {"locator", "enabled"});
    return {ReadLocator(element), nullptr, std::move(choice)};
}

} // namespace zetaudiofilterhost
