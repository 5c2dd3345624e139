#include "ConfigurationText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <compare>
#include <utility>

#include <pugixml.hpp>

#include "LocatorText.h"
#include "XmlText.h"
#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace {

using zetcore::string::UTF8to16;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

class StringWriter : public pugi::xml_writer
{
  public:
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text;
};

std::optional<std::pair<unsigned, unsigned>> ParseVersion(std::string_view text)
{
    std::pair<unsigned, unsigned> version{0, 0};
    const char* const end = text.data() + text.size();
    const auto major = std::from_chars(text.data(), end, version.first);
    if (major.ec != std::errc() || major.ptr == end || *major.ptr != '.')
        return std::nullopt;
    const auto minor = std::from_chars(major.ptr + 1, end, version.second);
    if (minor.ec != std::errc() || minor.ptr != end)
        return std::nullopt;
    return version;
}

/// A value cannot be read: damage, or (in a newer version's text) an element that is kept but passed over.
struct UnreadableElement
{
    std::string what;
};

class Reader
{
  public:
    Reader(std::string_view utf8, const std::string& nameForErrors)
        : text(utf8.starts_with(byteOrderMark) ? utf8.substr(byteOrderMark.size()) : utf8),
          name(nameForErrors)
    {}

    Configuration ReadWhole();
    std::vector<RegistryChange> ReadChangeList();

  private:
    pugi::xml_node Parse(const char* rootName);
    void ReadVersion(const pugi::xml_node& root);
    /// Runs `read`; true when the element was understood.
    template<typename Read>
    bool Try(const pugi::xml_node& element, Read&& read);

    TechnologyFolders ReadTechnology(const pugi::xml_node& element);
    PluginFolder ReadFolder(const pugi::xml_node& element);
    InfoPtr ReadModule(const pugi::xml_node& element);
    RegistryChange ReadChoice(const pugi::xml_node& element);
    PluginLocator ReadLocator(const pugi::xml_node& element);

    [[noreturn]] void Fail(std::size_t offset, const std::string& what) const
    {
        throw ConfigurationError(At(offset, what));
    }
    std::string At(std::size_t offset, const std::string& what) const
    {
        const std::string_view before = text.substr(0, std::min(offset, text.size()));
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        return name + ", line " + std::to_string(line) + ": " + what;
    }
    static std::size_t Offset(const pugi::xml_node& element)
    {
        return static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, element.offset_debug()));
    }

    std::string_view text;
    std::string name;
    pugi::xml_document document;
    std::string version{configurationVersion};
    bool isNewer = false;
};

std::string Quoted(std::string_view value)
{
    return "\"" + std::string(value.substr(0, 200)) + "\"";
}

template<typename Number>
Number ParseNumber(const pugi::xml_attribute& attribute)
{
    const std::string_view value = attribute.value();
    Number number = 0;
    const auto result = std::from_chars(value.data(), value.data() + value.size(), number);
    if (result.ec != std::errc() || result.ptr != value.data() + value.size())
        throw UnreadableElement{std::string("attribute ") + attribute.name() + ": " + Quoted(value) +
                                " is no number that fits"};
    return number;
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
constexpr std::array<NamedField, 14> fields{{
    {"name", [](auto& info, auto&, auto&, auto& value) { info.SetName(UTF8to16(value.value())); }},
    {"product", [](auto& info, auto&, auto&, auto& value) { info.SetProduct(UTF8to16(value.value())); }},
    {"vendor", [](auto& info, auto&, auto&, auto& value) { info.SetVendor(UTF8to16(value.value())); }},
    {"version",
     [](auto& info, auto&, auto&, auto& value) { info.SetVersionString(UTF8to16(value.value())); }},
    {"category", [](auto& info, auto&, auto&, auto& value) { info.SetCategory(UTF8to16(value.value())); }},
    {"uniqueid", [](auto& info, auto&, auto&, auto& value) { info.SetUniqueId(UTF8to16(value.value())); }},
    {"numericversion",
     [](auto& info, auto&, auto&, auto& value) { info.SetNumericVersion(ParseNumber<std::int64_t>(value)); }},
    {"size", [](auto&, auto& size, auto&, auto& value) { size = ParseNumber<std::uint64_t>(value); }},
    {"time", [](auto&, auto&, auto& time, auto& value) { time = ParseNumber<std::int64_t>(value); }},
    {"enabled", [](auto& info, auto&, auto&, auto& value) { info.SetEnabled(ParseBoolean(value)); }},
    {"effect",
     [](auto& info, auto&, auto&, auto& value) { info.SetHasAnyNonSynthEffect(ParseBoolean(value)); }},
    {"synth", [](auto& info, auto&, auto&, auto& value) { info.SetHasAnySynth(ParseBoolean(value)); }},
    {"status", [](auto& info, auto&, auto&, auto& value) { info.SetStatus(ParseStatus(value)); }},
    {"reason", [](auto& info, auto&, auto&, auto& value) { info.SetReason(value.value()); }},
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

void AppendRaw(std::string& children, const pugi::xml_node& node)
{
    StringWriter writer;
    node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
    children += writer.text;
}

void AppendUnknown(Unknown& unknown, const pugi::xml_attribute& attribute)
{
    unknown.attributes.emplace_back(attribute.name(), attribute.value());
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

pugi::xml_node Reader::Parse(const char* rootName)
{
    if (const std::size_t bad = FindUnreadableByte(text); bad != text.npos)
        Fail(bad, "a byte that is not UTF-8 text");
    const pugi::xml_parse_result result =
        document.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result)
        Fail(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, result.offset)), result.description());
    const pugi::xml_node root = document.document_element();
    if (std::string_view(root.name()) != rootName)
        Fail(Offset(root), "the element is " + Quoted(root.name()) + ", not " + Quoted(rootName));
    if (const pugi::xml_node second = root.next_sibling())
        Fail(Offset(second), "a second element behind the first");
    // The parser passes text outside the element over; it is what is left of a torn or joined file.
    if (const std::size_t last = text.find_last_not_of(" \t\r\n"); text[last] != '>')
        Fail(last, "text behind the last element");
    if (const std::size_t first = text.find_first_not_of(" \t\r\n"); text[first] != '<')
        Fail(first, "text before the first element");
    ReadVersion(root);
    return root;
}

void Reader::ReadVersion(const pugi::xml_node& root)
{
    const pugi::xml_attribute attribute = root.attribute("version");
    const auto fileVersion = ParseVersion(attribute.value());
    if (!fileVersion)
        Fail(Offset(root), attribute ? "attribute version: " + Quoted(attribute.value()) + " is no version"
                                     : "attribute version is missing");
    isNewer = *fileVersion > *ParseVersion(configurationVersion);
    if (isNewer)
        version = attribute.value();
}

template<typename Read>
bool Reader::Try(const pugi::xml_node& element, Read&& read)
{
    try {
        read();
        return true;
    } catch (const UnreadableElement& error) {
        const std::string what = std::string("element ") + element.name() + ", " + error.what;
        if (!isNewer)
            Fail(Offset(element), what);
        zetcore::debug::TraceLine(3, "PluginRegistry", At(Offset(element), what) + "; kept, passed over");
        return false;
    }
}

PluginLocator Reader::ReadLocator(const pugi::xml_node& element)
{
    const pugi::xml_attribute attribute = element.attribute("locator");
    if (!attribute)
        throw UnreadableElement{"attribute locator is missing"};
    PluginLocator locator = PluginLocator::FromString(UTF8to16(attribute.value()));
    if (locator.IsEmpty())
        throw UnreadableElement{"attribute locator: " + Quoted(attribute.value()) + " names no plug-in"};
    return locator;
}

PluginFolder Reader::ReadFolder(const pugi::xml_node& element)
{
    const pugi::xml_attribute attribute = element.attribute("path");
    std::optional<std::wstring> path = UnescapeLocatorPart(UTF8to16(attribute.value()));
    if (!path || path->empty())
        throw UnreadableElement{"attribute path: " + Quoted(attribute.value()) + " names no folder"};
    return {std::move(*path), ReadUnknown(element, {"path"})};
}

TechnologyFolders Reader::ReadTechnology(const pugi::xml_node& element)
{
    TechnologyFolders technology;
    const std::wstring technologyName = UTF8to16(element.attribute("name").value());
    for (const TechnologyType type : {TechnologyType::VST, TechnologyType::VST3, TechnologyType::AU})
        if (TechnologyName(type) == technologyName)
            technology.type = type;
    for (const pugi::xml_attribute& attribute : element.attributes())
        if (std::string_view(attribute.name()) != "name")
            AppendUnknown(technology.unknown, attribute);
    for (const pugi::xml_node& child : element.children()) {
        const bool isFolder = std::string_view(child.name()) == "folder";
        const auto read = [&] { technology.folders.push_back(ReadFolder(child)); };
        if (!isFolder || !Try(child, read))
            AppendRaw(technology.unknown.children, child);
    }
    return technology;
}

InfoPtr Reader::ReadModule(const pugi::xml_node& element)
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

RegistryChange Reader::ReadChoice(const pugi::xml_node& element)
{
    RememberedChoice choice;
    if (const pugi::xml_attribute attribute = element.attribute("enabled"))
        choice.enabled = ParseBoolean(attribute);
    choice.unknown = ReadUnknown(element, {"locator", "enabled"});
    return {ReadLocator(element), nullptr, std::move(choice)};
}

Configuration Reader::ReadWhole()
{
    const pugi::xml_node root = Parse("audioplugins");
    Configuration configuration;
    configuration.version = version;
    for (const pugi::xml_attribute& attribute : root.attributes())
        if (std::string_view(attribute.name()) != "version")
            AppendUnknown(configuration.unknown, attribute);
    for (const pugi::xml_node& child : root.children()) {
        const std::string_view kind = child.name();
        bool understood = false;
        if (kind == "module") {
            understood = Try(child, [&] { configuration.modules.push_back(ReadModule(child)); });
        } else if (kind == "choice") {
            understood = Try(child, [&] { configuration.choices.push_back(ReadChoice(child)); });
        } else if (kind == "technology") {
            TechnologyFolders technology = ReadTechnology(child);
            understood = technology.type != TechnologyType::None;
            if (understood)
                configuration.technologies.push_back(std::move(technology));
        }
        if (!understood)
            AppendRaw(configuration.unknown.children, child);
    }
    return configuration;
}

std::vector<RegistryChange> Reader::ReadChangeList()
{
    const pugi::xml_node root = Parse("changes");
    std::vector<RegistryChange> changes;
    for (const pugi::xml_node& child : root.children()) {
        const std::string_view kind = child.name();
        Try(child, [&] {
            if (kind == "module") {
                InfoPtr info = ReadModule(child);
                const PluginLocator locator = info->GetLocator();
                changes.push_back({locator, std::move(info), std::nullopt});
            } else if (kind == "choice") {
                changes.push_back(ReadChoice(child));
            } else if (kind == "removed") {
                changes.push_back({ReadLocator(child), nullptr, std::nullopt});
            }
        });
    }
    return changes;
}

} // namespace

Configuration ReadConfiguration(std::string_view utf8, const std::string& nameForErrors)
{
    return Reader(utf8, nameForErrors).ReadWhole();
}

std::vector<RegistryChange> ReadChanges(std::string_view utf8, const std::string& nameForErrors)
{
    return Reader(utf8, nameForErrors).ReadChangeList();
}

} // namespace zetaudiofilterhost
