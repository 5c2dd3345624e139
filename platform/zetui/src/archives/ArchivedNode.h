#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "archives/ArchiveValue.h"

namespace zetui::ui {

/// Tells where a problem of a node is.
struct ArchiveContext
{
    const std::string& resourceName;
    /// The id of the node that is being read. It is the adapter until the id is known.
    std::string node;

    [[noreturn]] void Fail(int line, const std::string& problem) const;
};

/// The sections of one archived node, most derived first, with checked access to their properties. The first
/// section that has a property counts. A property of another type than the one asked for raises
/// `archive_error`. Without the property, the answer stays as it is.
class ArchivedNode
{
  public:
    /// Checks what every node has: adapter, sections, id and bounds.
    ArchivedNode(const ArchiveValue& node, const std::string& resourceName);

    const ArchiveContext& Context() const noexcept { return context; }
    int Line() const noexcept { return line; }
    /// The last component of the adapter's name.
    std::string_view Adapter() const noexcept { return adapter; }
    /// Empty when the node has none.
    const std::string& ClassName() const noexcept { return className; }
    const std::string& Id() const noexcept { return context.node; }

    bool ReadBool(std::string_view key, bool& result) const;
    bool ReadText(std::string_view key, std::string& result) const;
    /// A plain number, or the choice of an enumeration (type 2).
    bool ReadChoice(std::string_view key, int& result) const;
    bool ReadConstraints(unsigned& result) const;
    struct Bounds
    {
        float left, top, width, height;
    };
    Bounds ReadBounds() const;
    std::vector<const ArchiveValue*> Children() const;

    /// Adds the properties that nobody has read so far, each with the line of its value. A property that is
    /// in the map keeps its line.
    void AddUnread(std::map<std::string, int>& lineOfProperty) const;

  private:
    const ArchiveValue* Find(std::string_view key) const;
    const ArchiveList& ListOf(const ArchiveValue& value, std::string_view name) const;
    std::int64_t IntIn(const ArchiveList& list, std::string_view key, int lineOfList) const;
    /// The members "prefix-0" up to "prefix-N", as many as "count" says.
    std::vector<const ArchiveValue*> Counted(const ArchiveList& list, std::string_view prefix,
                                             int lineOfList) const;
    void ExpectType(const ArchiveList& list, std::int64_t type, std::string_view name, int lineOfList) const;

    ArchiveContext context;
    int line;
    std::string_view adapter;
    std::string className;
    std::vector<const ArchiveList*> sections;
    mutable std::set<std::string, std::less<>> read;
};

} // namespace zetui::ui
