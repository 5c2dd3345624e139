#pragma once

#include <string>
#include <vector>

#include <zetui/skins/Skins.h>

namespace zetaudiopluginmanager {

/// The words that `--skin` takes.
std::vector<std::string> SkinNames();
/// The skin of this name, in any letter case. Throws `usage_error`.
zetui::skins::Skin SkinOfName(const std::string& name);

/// The words that `--theme` takes.
std::vector<std::string> ThemeNames();
/// The scheme of this name, in any letter case. Throws `usage_error`.
zetui::skins::Scheme SchemeOfName(const std::string& name);

} // namespace zetaudiopluginmanager
