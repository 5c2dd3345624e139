#pragma once

#include "formats/FormatLoader.h"

namespace zetaudiopluginhost::vst3 {

FormatLoader Loader();

} // namespace zetaudiopluginhost::vst3
