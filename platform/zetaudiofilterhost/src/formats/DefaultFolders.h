#pragma once

#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginFormat.h>

namespace zetaudiofilterhost {

/// The format's documented locations for this user and this program, whether or not they exist, in the order
/// of searching.
std::vector<std::wstring> DefaultFoldersOf(const PluginFormat& format);

} // namespace zetaudiofilterhost
