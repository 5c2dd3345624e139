#include <zetui/archives/NodeArchive.h>

#include <map>
#include <string>

#include <zetcore/debug/Trace.h>
#include <zetcore/threads/MainThread.h>

#include "archives/Adapters.h"
#include "archives/ArchiveValue.h"
#include "archives/ArchivedNode.h"
#include "archives/ArchivedProperties.h"

namespace zetui::ui {

namespace {

using NodePtr = utility::IntrusivePtr<UI_Node>;

/// Nodes are built and laid out recursively; dialogs nest them five deep.
constexpr int deepestNode = 64;
/// Each node becomes a widget. A dialog has fewer than a hundred.
constexpr int mostNodes = 10000;

class Loader
{
  public:
    Loader(const std::string& name, const NodeFactory& nodeFactory) : resourceName(name), factory(nodeFactory)
    {}

    NodePtr Load(const ArchiveValue& value, int depth);
    void TraceUnread() const;

  private:
    NodePtr Make(const ArchivedNode& archived) const;

    const std::string& resourceName;
    const NodeFactory& factory;
    int count = 0;
    /// The properties that had no effect, with the line where each stands first.
    std::map<std::string, int> lineOfUnread;
};

NodePtr Loader::Make(const ArchivedNode& archived) const
{
    NodePtr node;
    if (factory && !archived.ClassName().empty())
        node = factory(archived.ClassName());
    if (!node)
        node = MakeNodeOfAdapter(archived.Adapter());
    if (!node)
        archived.Context().Fail(archived.Line(),
                                "there is no adapter \"" + std::string(archived.Adapter()) + "\"");
    return node;
}

NodePtr Loader::Load(const ArchiveValue& value, int depth)
{
    const ArchivedNode archived(value, resourceName);
    if (depth > deepestNode)
        archived.Context().Fail(archived.Line(), "nodes are nested too deep");
    if (++count > mostNodes)
        archived.Context().Fail(archived.Line(),
                                "there are more than " + std::to_string(mostNodes) + " nodes");
    NodePtr node = Make(archived);
    ApplyArchivedProperties(archived, *node);
    const std::vector<const ArchiveValue*> children = archived.Children();
    auto* const view = dynamic_cast<UI_SubView*>(node.get());
    if (!view && !children.empty())
        archived.Context().Fail(archived.Line(), "cannot have children");
    // The lines are those of the first node that has a property, so parents come before their children.
    archived.AddUnread(lineOfUnread);
    for (const ArchiveValue* const child : children)
        view->InsertChild(Load(*child, depth + 1));
    return node;
}

void Loader::TraceUnread() const
{
    std::string names;
    for (const auto& [property, line] : lineOfUnread)
        names += (names.empty() ? "" : ", ") + property + " (line " + std::to_string(line) + ")";
    if (!names.empty())
        zetcore::debug::TraceLine(3, "zetui",
                                  "Layout archive \"" + resourceName +
                                      "\": these properties have no effect in this skin: " + names);
}

} // namespace

archive_error::~archive_error() = default;

utility::IntrusivePtr<UI_SubView> LoadNodeArchive(std::string_view xml, const std::string& resourceName,
                                                  const NodeFactory& factory)
{
    zetcore::threads::AssertMainThread();
    const ArchiveList list = ParseArchive(xml, resourceName);
    const ArchiveValue* const version = list.Find("UINodeArchive");
    const auto* const number = version ? std::get_if<std::int64_t>(&version->value) : nullptr;
    if (!number || *number != 1)
        ThrowArchiveError(resourceName, version ? version->line : 1, "UINodeArchive must be 1");
    const ArchiveValue* const rootValue = list.Find("root");
    if (!rootValue)
        ThrowArchiveError(resourceName, 1, "there is no root");
    Loader loader(resourceName, factory);
    const NodePtr root = loader.Load(*rootValue, 1);
    auto* const view = dynamic_cast<UI_SubView*>(root.get());
    if (!view)
        ThrowArchiveError(resourceName, rootValue->line,
                          "node \"" + root->UI_GetID() + "\": the root must be a UI_SubView");
    loader.TraceUnread();
    return view;
}

} // namespace zetui::ui
