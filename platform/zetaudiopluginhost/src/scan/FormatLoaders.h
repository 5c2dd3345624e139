#pragma once

#include <span>

#include "formats/FormatLoader.h"

namespace zetaudiopluginhost {

/// One for each format that this system can load.
std::span<const FormatLoader> FormatLoaders();
/// Null when this system cannot load the format.
const FormatLoader* FindFormatLoader(zetaudiofilterhost::TechnologyType type);

} // namespace zetaudiopluginhost
