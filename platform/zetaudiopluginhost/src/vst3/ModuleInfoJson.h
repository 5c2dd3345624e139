#pragma once

#include <string_view>

#include "vst3/Vst3Description.h"

namespace zetaudiopluginhost::vst3 {

/// Reads a moduleinfo.json: JSON with comments and trailing commas. Throws `std::runtime_error` saying what
/// is wrong for a text that is none, or that describes no plug-in.
Vst3Description ParseModuleInfo(std::string_view text);

} // namespace zetaudiopluginhost::vst3
