#pragma once

#include <string_view>

#include <zetui/nodes/UI_Node.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::ui {

/// A new node of the toolkit's class of this name (without namespace); null for other names.
utility::IntrusivePtr<UI_Node> MakeNodeOfAdapter(std::string_view className);

} // namespace zetui::ui
