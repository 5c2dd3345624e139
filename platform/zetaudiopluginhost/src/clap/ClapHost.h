#pragma once

#include "clap/ClapAbi.h"

namespace zetaudiopluginhost::clap {

/// The host that CLAP plug-ins see. One for the process, never gone: modules that stay loaded may keep it. It
/// has no extensions, and requests of plug-ins are not granted, because a scan never runs them.
const Host& ScanHost();

} // namespace zetaudiopluginhost::clap
