#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <zetui/Export.h>
#include <zetui/archives/NodeFactory.h>
#include <zetui/nodes/UI_SubView.h>

namespace zetui::ui {

/// A layout archive is malformed. The message names the resource, the line and the node.
class ZETUI_API archive_error : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
    ~archive_error() override;
};

/// Builds the node tree of a layout archive (docs/files.md describes the format). Nodes of unknown adapters
/// raise `archive_error`; properties that are not known are passed over. Texts are string-table keys in
/// parentheses, localised here. Main thread.
ZETUI_API utility::IntrusivePtr<UI_SubView>
LoadNodeArchive(std::string_view xml, const std::string& resourceName, const NodeFactory& factory);

} // namespace zetui::ui
