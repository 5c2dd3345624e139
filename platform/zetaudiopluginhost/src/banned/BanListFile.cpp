#include "banned/BanListFile.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>

#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>

#include "banned/FailureElement.h"

namespace zetaudiopluginhost {

using zetaudiofilterhost::PluginLocator;
using namespace zetcore::string;

namespace {

constexpr const char* entryName = "plugin";
constexpr const char* fileVersion = "1.0";
/// The number of characters in a screenful, which is more than people read.
constexpr std::size_t maxReason = 8192;
/// We write two levels. Elements that are nested deeply cost much: the indentation that is written back grows
/// with the square of the depth, and the stack grows with the depth when they are deleted.
constexpr int deepestElement = 64;

constexpr bool IsPrintableAscii(char character)
{
    return character >= 0x20 && character < 0x7F;
}

bool IsKnownAttribute(std::string_view name)
{
    constexpr std::array<std::string_view, 6> names{"locator",  "reason",   "time",
                                                    "filesize", "filetime", "couldnotload"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The first element that is nested too deep, or a null node. The walk uses no recursion, because a deep
/// document would exhaust the stack.
pugi::xml_node FirstTooDeep(const pugi::xml_node& top)
{
    int depth = 0;
    for (pugi::xml_node node = top; node;) {
        if (depth > deepestElement)
            return node;
        if (node.first_child()) {
            node = node.first_child();
            ++depth;
            continue;
        }
        for (; node != top && !node.next_sibling(); --depth)
            node = node.parent();
        node = node == top ? pugi::xml_node() : node.next_sibling();
    }
    return {};
}

bool HasUnknownParts(const pugi::xml_node& node)
{
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        if (!IsKnownAttribute(attribute.name()))
            return true;
    }
    const auto children = node.children();
    if (!std::all_of(children.begin(), children.end(), IsPlainFailure))
        return true;
    // These are of a kind that only a newer version knows.
    return node.first_child() && ReadFailures(node).empty();
}

/// The facts, unless the words beside them say something else: an older version that bans the plug-in anew
/// changes the words only.
void TakeFailures(const pugi::xml_node& node, BanInfo& info)
{
    PluginFailures failures = ReadFailures(node);
    const std::string words = CleanReason(WordFailures(failures));
    if (info.reason.empty())
        info.reason = words;
    if (info.reason == words)
        info.failures = std::move(failures);
}

template<typename Number>
bool ReadNumber(const pugi::xml_attribute& attribute, Number& number)
{
    if (!attribute)
        return true;
    const auto read = zetcore::string::ParseNumber<Number>(attribute.value());
    number = read.value_or(Number{});
    return read.has_value();
}

/// A build that cannot be read is every build: the ban must not end by mistake.
zetaudiofilterhost::ModuleFileStamp ReadStamp(const pugi::xml_node& node)
{
    zetaudiofilterhost::ModuleFileStamp stamp;
    const bool isRead = ReadNumber(node.attribute("filesize"), stamp.size) &&
                        ReadNumber(node.attribute("filetime"), stamp.time);
    return isRead ? stamp : zetaudiofilterhost::ModuleFileStamp();
}

std::shared_ptr<const pugi::xml_document> CopyOf(const pugi::xml_node& node)
{
    auto document = std::make_shared<pugi::xml_document>();
    document->append_copy(node);
    return document;
}

/// An attribute is written when it says something, or when the element that was read has it.
void SetAttribute(pugi::xml_node& node, const char* name, const std::string& value, bool isNeeded)
{
    pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute && isNeeded)
        attribute = node.append_attribute(name);
    attribute.set_value(value.c_str());
}

void WriteEntry(pugi::xml_node& root, const BanEntry& entry)
{
    pugi::xml_node node =
        entry.original ? root.append_copy(entry.original->first_child()) : root.append_child(entryName);
    const BanInfo& info = entry.info;
    SetAttribute(node, "locator", UTF16to8(entry.locator.ToString()), true);
    SetAttribute(node, "reason", info.reason, !info.reason.empty());
    SetAttribute(node, "time", std::to_string(info.time), info.time != 0);
    SetAttribute(node, "filesize", std::to_string(info.stamp.size), info.stamp.size != 0);
    SetAttribute(node, "filetime", std::to_string(info.stamp.time), info.stamp.time != 0);
    SetAttribute(node, "couldnotload", info.couldNotLoad ? "true" : "false", info.couldNotLoad);
    // An element that was read keeps failures that only a newer version understands.
    if (info.failures != ReadFailures(node))
        WriteFailures(node, info.failures);
}

} // namespace

std::size_t LineOfOffset(std::string_view text, std::size_t offset)
{
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    return static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
}

BanListFile ParseBanList(std::string_view text, const char* rootName)
{
    pugi::xml_document document;
    const pugi::xml_parse_result result =
        document.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_comments);
    if (!result) {
        const std::size_t offset = result.offset > 0 ? static_cast<std::size_t>(result.offset) : 0;
        throw std::runtime_error("line " + std::to_string(LineOfOffset(text, offset)) + ": " +
                                 result.description());
    }
    if (const pugi::xml_node deep = FirstTooDeep(document))
        throw std::runtime_error(
            "line " + std::to_string(LineOfOffset(text, static_cast<std::size_t>(deep.offset_debug()))) +
            ": elements are nested deeper than " + std::to_string(deepestElement));
    pugi::xml_node root = document.document_element();
    if (std::string_view(root.name()) != rootName)
        throw std::runtime_error("line 1: the root element is <" + std::string(root.name()) + ">, not <" +
                                 rootName + ">");

    BanListFile file;
    std::vector<pugi::xml_node> taken;
    for (const pugi::xml_node& node : root.children(entryName)) {
        BanEntry entry;
        entry.locator = PluginLocator::FromString(UTF8to16(node.attribute("locator").value()));
        // An entry in a form that this version does not understand stays in the file.
        if (entry.locator.IsEmpty())
            continue;
        entry.info.reason = CleanReason(node.attribute("reason").value());
        entry.info.time = node.attribute("time").as_llong();
        entry.info.stamp = ReadStamp(node);
        entry.info.couldNotLoad = std::string_view(node.attribute("couldnotload").value()) == "true";
        TakeFailures(node, entry.info);
        if (HasUnknownParts(node))
            entry.original = CopyOf(node);
        file.entries.push_back(std::move(entry));
        taken.push_back(node);
    }
    for (const pugi::xml_node& node : taken)
        root.remove_child(node);
    file.rest = CopyOf(root);
    return file;
}

std::string WriteBanList(const BanListFile& file, const char* rootName)
{
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    pugi::xml_node root =
        file.rest ? document.append_copy(file.rest->first_child()) : document.append_child(rootName);
    if (!root.attribute("version"))
        root.prepend_attribute("version") = fileVersion;
    for (const BanEntry& entry : file.entries)
        WriteEntry(root, entry);

    std::ostringstream text;
    document.save(text, "\t", pugi::format_default, pugi::encoding_utf8);
    return text.str();
}

BanInfo CleanBan(const BanInfo& info)
{
    BanInfo cleaned = info;
    cleaned.failures = CleanFailures(info.failures);
    cleaned.reason = CleanReason(info.failures.empty() ? info.reason : WordFailures(cleaned.failures));
    return cleaned;
}

std::string CleanReason(std::string_view reason)
{
    // Nearly all reasons are plain already, and a list of thousands is read often.
    if (reason.size() <= maxReason && std::ranges::all_of(reason, IsPrintableAscii))
        return std::string(reason);
    std::wstring cleaned;
    for (const wchar_t unit : UTF8to16(reason.substr(0, maxReason * 4))) {
        if (cleaned.size() >= maxReason)
            break;
        cleaned += unit == L'\t' ? L' ' : unit;
    }
    std::wstring text;
    for (std::size_t start = 0; start <= cleaned.size();) {
        const std::size_t end = std::min(cleaned.find(L'\n', start), cleaned.size());
        text += ForDisplay(std::wstring_view(cleaned).substr(start, end - start));
        if (end < cleaned.size())
            text += L'\n';
        start = end + 1;
    }
    return UTF16to8(text);
}

} // namespace zetaudiopluginhost
