#pragma once

#include "formats/FormatLoader.h"

namespace zetaudiopluginhost::vst2 {

FormatLoader Loader();

} // namespace zetaudiopluginhost::vst2
