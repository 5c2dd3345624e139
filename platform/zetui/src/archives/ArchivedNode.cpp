#include "archives/ArchivedNode.h"

#include <cmath>

namespace zetui::ui {

namespace {

/// No window system can show more.
constexpr double largestCoordinate = 65536;

constexpr std::string_view sectionName = "sectionName";

constexpr std::int64_t kTypeBounds = 1;
constexpr std::int64_t kTypeChoice = 2;
constexpr std::int64_t kTypeConstraints = 4;

} // namespace

void ArchiveContext::Fail(int line, const std::string& problem) const
{
    ThrowArchiveError(resourceName, line, "node \"" + node + "\": " + problem);
}

ArchivedNode::ArchivedNode(const ArchiveValue& node, const std::string& resourceName)
    : context{resourceName, ""}, line(node.line)
{
    const ArchiveList& list = ListOf(node, "the node");
    const ArchiveValue* const adapterValue = list.Find("adapter");
    const auto* const adapterName = adapterValue ? std::get_if<std::string>(&adapterValue->value) : nullptr;
    if (!adapterName || adapterName->empty())
        context.Fail(line, "has no adapter");
    context.node = *adapterName;
    adapter = *adapterName;
    if (const std::size_t colon = adapter.rfind(':'); colon != std::string_view::npos)
        adapter.remove_prefix(colon + 1);

    const ArchiveValue* const sectionList = list.Find("sections");
    if (!sectionList)
        context.Fail(line, "has no sections");
    for (const ArchiveValue* const section :
         Counted(ListOf(*sectionList, "sections"), "section", sectionList->line)) {
        const ArchiveList& properties = ListOf(*section, "a section");
        const ArchiveValue* const name = properties.Find(sectionName);
        if (!name || !std::holds_alternative<std::string>(name->value))
            context.Fail(section->line, "a section has no " + std::string(sectionName));
        sections.push_back(&properties);
    }

    std::string id;
    if (!ReadText("id", id) || id.empty())
        context.Fail(line, "has no id");
    context.node = id;
    ReadText("className", className);
}

bool ArchivedNode::ReadBool(std::string_view key, bool& result) const
{
    const ArchiveValue* const value = Find(key);
    if (!value)
        return false;
    const auto* const flag = std::get_if<bool>(&value->value);
    if (!flag)
        context.Fail(value->line, std::string(key) + " must be true or false");
    result = *flag;
    return true;
}

bool ArchivedNode::ReadText(std::string_view key, std::string& result) const
{
    const ArchiveValue* const value = Find(key);
    if (!value)
        return false;
    const auto* const text = std::get_if<std::string>(&value->value);
    if (!text)
        context.Fail(value->line, std::string(key) + " must be a string");
    result = *text;
    return true;
}

bool ArchivedNode::ReadChoice(std::string_view key, int& result) const
{
    const ArchiveValue* const value = Find(key);
    if (!value)
        return false;
    if (const auto* const number = std::get_if<std::int64_t>(&value->value)) {
        result = static_cast<int>(*number);
        return true;
    }
    const ArchiveList& list = ListOf(*value, key);
    ExpectType(list, kTypeChoice, key, value->line);
    result = static_cast<int>(IntIn(list, "selected", value->line));
    return true;
}

bool ArchivedNode::ReadConstraints(unsigned& result) const
{
    const ArchiveValue* const value = Find("Constraints");
    if (!value)
        return false;
    const ArchiveList& list = ListOf(*value, "Constraints");
    ExpectType(list, kTypeConstraints, "Constraints", value->line);
    const std::int64_t bits = IntIn(list, "constraints", value->line);
    if (bits < 0)
        context.Fail(value->line, "constraints must not be negative");
    result = static_cast<unsigned>(bits);
    return true;
}

ArchivedNode::Bounds ArchivedNode::ReadBounds() const
{
    const ArchiveValue* const value = Find("bounds");
    if (!value)
        context.Fail(line, "has no bounds");
    const ArchiveList& list = ListOf(*value, "bounds");
    ExpectType(list, kTypeBounds, "bounds", value->line);
    const auto side = [&](std::string_view key, bool isLength) {
        const ArchiveValue* const part = list.Find(key);
        const auto* const number = part ? std::get_if<double>(&part->value) : nullptr;
        if (!number)
            context.Fail(value->line, "bounds have no float \"" + std::string(key) + "\"");
        if (std::abs(*number) > largestCoordinate || (isLength && *number < 0))
            context.Fail(part->line, std::string(key) + " is out of range");
        return static_cast<float>(*number);
    };
    return {side("left", false), side("top", false), side("width", true), side("height", true)};
}

void ArchivedNode::AddUnread(std::map<std::string, int>& lineOfProperty) const
{
    for (const ArchiveList* const section : sections) {
        for (const auto& [key, value] : section->pairs) {
            if (key != sectionName && !read.contains(key))
                lineOfProperty.emplace(key, value.line);
        }
    }
}

std::vector<const ArchiveValue*> ArchivedNode::Children() const
{
    const ArchiveValue* const value = Find("children");
    return value ? Counted(ListOf(*value, "children"), "child", value->line)
                 : std::vector<const ArchiveValue*>();
}

const ArchiveValue* ArchivedNode::Find(std::string_view key) const
{
    read.emplace(key);
    for (const ArchiveList* const section : sections) {
        if (const ArchiveValue* const value = section->Find(key))
            return value;
    }
    return nullptr;
}

const ArchiveList& ArchivedNode::ListOf(const ArchiveValue& value, std::string_view name) const
{
    const auto* const list = std::get_if<ArchiveList>(&value.value);
    if (!list)
        context.Fail(value.line, std::string(name) + " must be a prop.list");
    return *list;
}

std::int64_t ArchivedNode::IntIn(const ArchiveList& list, std::string_view key, int lineOfList) const
{
    const ArchiveValue* const value = list.Find(key);
    const auto* const number = value ? std::get_if<std::int64_t>(&value->value) : nullptr;
    if (!number)
        context.Fail(value ? value->line : lineOfList, "there is no int \"" + std::string(key) + "\"");
    return *number;
}

std::vector<const ArchiveValue*> ArchivedNode::Counted(const ArchiveList& list, std::string_view prefix,
                                                       int lineOfList) const
{
    const std::int64_t count = IntIn(list, "count", lineOfList);
    if (count != static_cast<std::int64_t>(list.pairs.size()) - 1)
        context.Fail(lineOfList, "\"count\" is " + std::to_string(count) + ", but there are " +
                                     std::to_string(list.pairs.size() - 1) + " members");
    std::vector<const ArchiveValue*> members;
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string key = std::string(prefix) + "-" + std::to_string(i);
        const ArchiveValue* const member = list.Find(key);
        if (!member)
            context.Fail(lineOfList, "there is no \"" + key + "\"");
        members.push_back(member);
    }
    return members;
}

void ArchivedNode::ExpectType(const ArchiveList& list, std::int64_t type, std::string_view name,
                              int lineOfList) const
{
    if (IntIn(list, ".aptype", lineOfList) != type)
        context.Fail(lineOfList, ".aptype of " + std::string(name) + " must be " + std::to_string(type));
}

} // namespace zetui::ui
