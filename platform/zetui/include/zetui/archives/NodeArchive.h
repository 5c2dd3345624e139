#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <zetui/Export.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::ui {

/// A layout archive is malformed. The message names the resource, the line and the node.
class ZETUI_API archive_error : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
    ~archive_error() override;
};

/// Makes the node for an archived class name, or gives null for the toolkit to make it from its adapter.
using NodeFactory = std::function<utility::IntrusivePtr<UI_Node>(const std::string& className)>;

/// Builds the node tree of a layout archive (docs/files.md describes the format). A node of an unknown
/// adapter raises `archive_error`. The names of properties that have no effect are traced. Texts are
/// string-table keys in parentheses and are localised here. Main thread.
ZETUI_API utility::IntrusivePtr<UI_SubView>
LoadNodeArchive(std::string_view xml, const std::string& resourceName, const NodeFactory& factory);

} // namespace zetui::ui
