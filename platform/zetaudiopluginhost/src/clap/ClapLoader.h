#pragma once

#include "formats/FormatLoader.h"

namespace zetaudiopluginhost::clap {

/// A library with several plug-ins gives a record for each, with the plug-in's id as sub-component.
FormatLoader Loader();

} // namespace zetaudiopluginhost::clap
