#pragma once

#include <string>
#include <string_view>

#include <zetui/nodes/UI_Node.h>

#include "archives/ArchivedNode.h"

namespace zetui::ui {

/// Gives the node what the archive says of it: frame, id and visibility, layout flags, texts, and what its
/// class knows beyond that.
void ApplyArchivedProperties(const ArchivedNode& archived, UI_Node& node);

/// Archived texts are string-table keys in parentheses; other texts are shown as they are.
std::wstring LocaliseArchivedText(std::string_view text);

/// The icon of a button that has an icon's size. It is the archived one, otherwise the one that the button's
/// id begins with, in any letter case ("default" stands for "reset"). Empty when there is none.
std::string IconOfButton(std::string_view archivedIcon, std::string_view id);

} // namespace zetui::ui
