#pragma once

#include <functional>
#include <string>

#include <zetui/nodes/UI_Node.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::ui {

/// Makes the node for an archived class name, or gives null for the toolkit to make it from its adapter.
using NodeFactory = std::function<utility::IntrusivePtr<UI_Node>(const std::string& className)>;

} // namespace zetui::ui
