#include "archives/ArchiveValue.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include <pugixml.hpp>

#include <zetcore/string/LineCounter.h>
#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>
#include <zetui/archives/NodeArchive.h>

namespace zetui::ui {

namespace {

class Parser
{
  public:
    Parser(std::string_view text, const std::string& name) : xml(text), lines(text), resourceName(name) {}

    ArchiveList Parse();

  private:
    [[noreturn]] void Fail(const pugi::xml_node& node, const std::string& problem) const
    {
        Fail(node.offset_debug(), problem);
    }
    [[noreturn]] void Fail(std::ptrdiff_t offset, const std::string& problem) const
    {
        ThrowArchiveError(resourceName, LineAt(offset), problem);
    }
    int LineAt(std::ptrdiff_t offset) const
    {
        return static_cast<int>(lines.LineOf(static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0))));
    }

    ArchiveList ParseList(const pugi::xml_node& list, int depth) const;
    ArchiveValue ParseValue(const pugi::xml_node& element, int depth) const;
    std::int64_t ParseInt(const pugi::xml_node& element) const;
    double ParseFloat(const pugi::xml_node& element) const;
    std::string ParseText(const pugi::xml_node& element) const;
    std::vector<pugi::xml_node> ElementsOf(const pugi::xml_node& parent) const;
    void CheckAttributes(const pugi::xml_node& element,
                         const std::vector<std::pair<std::string_view, std::string_view>>& known) const;

    std::string_view xml;
    /// Mutable, because it remembers where it counted to.
    mutable zetcore::string::LineCounter lines;
    const std::string& resourceName;
};

ArchiveList Parser::Parse()
{
    if (xml.size() > largestArchive)
        Fail(0, "is larger than " + std::to_string(largestArchive) + " bytes");
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(
        xml.data(), xml.size(), pugi::parse_default | pugi::parse_ws_pcdata_single, pugi::encoding_utf8);
    if (!result)
        Fail(result.offset, std::string("is not XML: ") + result.description());
    const std::vector<pugi::xml_node> roots = ElementsOf(document);
    if (roots.size() != 1 || std::string_view(roots[0].name()) != "prop.map")
        Fail(0, "the root element must be prop.map");
    CheckAttributes(roots[0], {{"version", "4"}});
    const std::vector<pugi::xml_node> lists = ElementsOf(roots[0]);
    if (lists.size() != 1 || std::string_view(lists[0].name()) != "prop.list")
        Fail(roots[0], "prop.map must hold one prop.list");
    return ParseList(lists[0], 1);
}

std::vector<pugi::xml_node> Parser::ElementsOf(const pugi::xml_node& parent) const
{
    std::vector<pugi::xml_node> elements;
    for (const pugi::xml_node& child : parent.children()) {
        if (child.type() != pugi::node_element)
            Fail(parent, "text stands between the elements");
        elements.push_back(child);
    }
    return elements;
}

/// Each known attribute must be there, once. An empty value stands for any.
void Parser::CheckAttributes(const pugi::xml_node& element,
                             const std::vector<std::pair<std::string_view, std::string_view>>& known) const
{
    std::size_t count = 0;
    for (const pugi::xml_attribute& attribute : element.attributes()) {
        const std::string_view name = attribute.name();
        const auto found =
            std::find_if(known.begin(), known.end(), [name](const auto& pair) { return pair.first == name; });
        if (found == known.end())
            Fail(element,
                 std::string(element.name()) + " has an unknown attribute \"" + std::string(name) + "\"");
        if (!found->second.empty() && found->second != attribute.value())
            Fail(element, std::string(name) + " of " + element.name() + " must be \"" +
                              std::string(found->second) + "\"");
        ++count;
    }
    if (count != known.size())
        Fail(element, std::string(element.name()) + " lacks an attribute or has one twice");
}

ArchiveList Parser::ParseList(const pugi::xml_node& list, int depth) const
{
    if (depth > deepestArchiveList)
        Fail(list, "lists are nested too deep");
    CheckAttributes(list, {});
    ArchiveList result;
    std::set<std::string, std::less<>> keys;
    for (const pugi::xml_node& pair : ElementsOf(list)) {
        if (std::string_view(pair.name()) != "prop.pair")
            Fail(pair, std::string("a prop.list holds prop.pair, not ") + pair.name());
        CheckAttributes(pair, {});
        const std::vector<pugi::xml_node> parts = ElementsOf(pair);
        if (parts.size() != 2 || std::string_view(parts[0].name()) != "key")
            Fail(pair, "a prop.pair holds a key and a value");
        CheckAttributes(parts[0], {});
        std::string key = ParseText(parts[0]);
        if (key.empty())
            Fail(pair, "a key is empty");
        if (!keys.insert(key).second)
            Fail(pair, "the key \"" + key + "\" stands twice in a list");
        result.pairs.emplace_back(std::move(key), ParseValue(parts[1], depth));
    }
    return result;
}

ArchiveValue Parser::ParseValue(const pugi::xml_node& element, int depth) const
{
    ArchiveValue result;
    result.line = LineAt(element.offset_debug());
    const std::string_view type = element.name();
    if (type == "int") {
        result.value = ParseInt(element);
    } else if (type == "float") {
        result.value = ParseFloat(element);
    } else if (type == "true" || type == "false") {
        CheckAttributes(element, {});
        if (element.first_child())
            Fail(element, std::string(type) + " must be empty");
        result.value = type == "true";
    } else if (type == "string" || type == "ustring") {
        CheckAttributes(element, {});
        result.value = ParseText(element);
    } else if (type == "prop.list") {
        result.value = ParseList(element, depth + 1);
    } else {
        Fail(element, "there is no type of value \"" + std::string(type) + "\"");
    }
    return result;
}

std::int64_t Parser::ParseInt(const pugi::xml_node& element) const
{
    CheckAttributes(element, {{"type", ""}, {"size", "32"}});
    const std::string_view type = element.attribute("type").value();
    if (type != "signed" && type != "unsigned")
        Fail(element, "an int is signed or unsigned");
    const std::string text = ParseText(element);
    const auto number = zetcore::string::ParseNumber<std::int64_t>(text);
    const std::int64_t least = type == "signed" ? std::numeric_limits<std::int32_t>::min() : 0;
    const std::int64_t most = type == "signed" ? std::int64_t{std::numeric_limits<std::int32_t>::max()}
                                               : std::int64_t{std::numeric_limits<std::uint32_t>::max()};
    if (!number || *number < least || *number > most)
        Fail(element, "\"" + text + "\" is no " + std::string(type) + " whole number of 32 bits");
    return *number;
}

double Parser::ParseFloat(const pugi::xml_node& element) const
{
    CheckAttributes(element, {});
    const std::string text = ParseText(element);
    const auto number = zetcore::string::ParseNumber<double>(text);
    if (!number || !std::isfinite(*number))
        Fail(element, "\"" + text + "\" is no number");
    return *number;
}

std::string Parser::ParseText(const pugi::xml_node& element) const
{
    std::string text;
    for (const pugi::xml_node& part : element.children()) {
        if (part.type() != pugi::node_pcdata && part.type() != pugi::node_cdata)
            Fail(element, std::string(element.name()) + " holds an element");
        text += part.value();
    }
    if (text.size() > longestArchiveText)
        Fail(element, "a text is longer than " + std::to_string(longestArchiveText) + " bytes");
    const std::wstring wide = zetcore::string::UTF8to16(text);
    // If wide strings have no room for stray bytes here, these have become something else.
    if (zetcore::string::UTF16to8(wide) != text)
        Fail(element, "a text is not valid UTF-8");
    for (std::size_t i = 0; i < wide.size(); ++i) {
        if (zetcore::string::IsStrayUnit(wide, i))
            Fail(element, "a text is not valid UTF-8");
    }
    return text;
}

} // namespace

ArchiveList::ArchiveList() = default;
ArchiveList::~ArchiveList() = default;
ArchiveList::ArchiveList(const ArchiveList&) = default;
ArchiveList::ArchiveList(ArchiveList&&) noexcept = default;
ArchiveList& ArchiveList::operator=(const ArchiveList&) = default;
ArchiveList& ArchiveList::operator=(ArchiveList&&) noexcept = default;

const ArchiveValue* ArchiveList::Find(std::string_view key) const noexcept
{
    const auto found =
        std::find_if(pairs.begin(), pairs.end(), [key](const auto& pair) { return pair.first == key; });
    return found == pairs.end() ? nullptr : &found->second;
}

void ThrowArchiveError(const std::string& resourceName, int line, const std::string& problem)
{
    throw archive_error("Layout archive \"" + resourceName + "\", line " + std::to_string(line) + ": " +
                        problem);
}

ArchiveList ParseArchive(std::string_view xml, const std::string& resourceName)
{
    return Parser(xml, resourceName).Parse();
}

} // namespace zetui::ui
