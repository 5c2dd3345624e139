#include "text/ConfigurationText.h"

#include <algorithm>
#include <compare>
#include <utility>

#include <pugixml.hpp>

#include "text/ConfigurationElements.h"
#include "text/XmlText.h"
#include <zetaudiofilterhost/PluginFormat.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/LineCounter.h>
#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace {

using zetcore::string::ParseNumber;
using zetcore::string::UTF8to16;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::optional<std::pair<unsigned, unsigned>> ParseVersion(std::string_view text)
{
    const std::size_t point = text.find('.');
    if (point == text.npos)
        return std::nullopt;
    const auto major = ParseNumber<unsigned>(text.substr(0, point));
    const auto minor = ParseNumber<unsigned>(text.substr(point + 1));
    if (!major || !minor)
        return std::nullopt;
    return std::pair(*major, *minor);
}

class Reader
{
  public:
    Reader(std::string_view utf8, const std::string& nameForErrors, const WantedTechnologies& wanted)
        : text(utf8.starts_with(byteOrderMark) ? utf8.substr(byteOrderMark.size()) : utf8), lines(text),
          name(nameForErrors)
    {
        for (const TechnologyType type : wanted)
            locatorStarts.push_back(zetcore::string::UTF16to8(TechnologyName(type)) + "|");
    }

    Configuration ReadWhole();
    std::vector<RegistryChange> ReadChangeList();

  private:
    pugi::xml_node Parse(const char* rootName);
    void ReadVersion(const pugi::xml_node& root);
    /// Runs `read`; true when the element was understood.
    template<typename Read>
    bool Try(const pugi::xml_node& element, Read&& read);

    /// The element names a plug-in of a technology that is not wanted.
    bool IsPassedOver(const pugi::xml_node& element) const;
    TechnologyFolders ReadTechnology(const pugi::xml_node& element);
    void KeepUnknown(Unknown& unknown, const pugi::xml_node& child);

    [[noreturn]] void Fail(std::size_t offset, const std::string& what)
    {
        throw ConfigurationError(At(offset, what));
    }
    std::string At(std::size_t offset, const std::string& what)
    {
        return name + ", line " + std::to_string(lines.LineOf(offset)) + ": " + what;
    }
    static std::size_t Offset(const pugi::xml_node& element)
    {
        return static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, element.offset_debug()));
    }

    std::string_view text;
    zetcore::string::LineCounter lines;
    std::string name;
    /// The names of the technologies that are wanted.
    std::vector<std::string> locatorStarts;
    pugi::xml_document document;
    std::string version{configurationVersion};
    bool isNewer = false;
};

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

void Reader::KeepUnknown(Unknown& unknown, const pugi::xml_node& child)
{
    if (child.type() == pugi::node_element)
        AppendRaw(unknown.children, child);
    else if (!isNewer)
        Fail(Offset(child), "text between the elements");
    else
        zetcore::debug::TraceLine(3, "PluginRegistry",
                                  At(Offset(child), "text between the elements; passed over"));
}

bool Reader::IsPassedOver(const pugi::xml_node& element) const
{
    const pugi::xml_attribute attribute =
        locatorStarts.empty() ? pugi::xml_attribute() : element.attribute("locator");
    return attribute && std::ranges::none_of(locatorStarts, [&attribute](const std::string& start) {
               return std::string_view(attribute.value()).starts_with(start);
           });
}

TechnologyFolders Reader::ReadTechnology(const pugi::xml_node& element)
{
    TechnologyFolders technology;
    if (const PluginFormat* format = FindPluginFormat(UTF8to16(element.attribute("name").value())))
        technology.type = format->type;
    for (const pugi::xml_attribute& attribute : element.attributes())
        if (std::string_view(attribute.name()) != "name")
            AppendUnknown(technology.unknown, attribute);
    for (const pugi::xml_node& child : element.children()) {
        const bool isFolder = std::string_view(child.name()) == "folder";
        const auto read = [&] { technology.folders.push_back(ReadFolder(child)); };
        if (!isFolder || !Try(child, read))
            KeepUnknown(technology.unknown, child);
    }
    return technology;
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
        if (IsPassedOver(child))
            continue;
        const std::string_view kind = child.name();
        bool understood = false;
        if (kind == "module") {
            understood = Try(child, [&] { configuration.modules.push_back(ReadModule(child)); });
        } else if (kind == "aside") {
            understood = Try(child, [&] { configuration.asides.push_back(ReadModule(child)); });
        } else if (kind == "choice") {
            understood = Try(child, [&] { configuration.choices.push_back(ReadChoice(child)); });
        } else if (kind == "technology") {
            TechnologyFolders technology = ReadTechnology(child);
            understood = technology.type != TechnologyType::Unknown;
            if (understood)
                configuration.technologies.push_back(std::move(technology));
        }
        if (!understood)
            KeepUnknown(configuration.unknown, child);
    }
    return configuration;
}

std::vector<RegistryChange> Reader::ReadChangeList()
{
    const pugi::xml_node root = Parse("changes");
    std::vector<RegistryChange> changes;
    for (const pugi::xml_node& child : root.children()) {
        if (IsPassedOver(child))
            continue;
        const std::string_view kind = child.name();
        Try(child, [&] {
            if (kind == "module" || kind == "aside") {
                InfoPtr info = ReadModule(child);
                const PluginLocator locator = info->GetLocator();
                changes.push_back({locator, std::move(info), std::nullopt, kind == "aside"});
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

Configuration ReadConfiguration(std::string_view utf8, const std::string& nameForErrors,
                                const WantedTechnologies& wanted)
{
    return Reader(utf8, nameForErrors, wanted).ReadWhole();
}

std::vector<RegistryChange> ReadChanges(std::string_view utf8, const std::string& nameForErrors,
                                        const WantedTechnologies& wanted)
{
    return Reader(utf8, nameForErrors, wanted).ReadChangeList();
}

} // namespace zetaudiofilterhost
