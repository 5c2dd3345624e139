#pragma once

#include <zetui/utility/OS_ResourceManager.h>

namespace zetui {

/// The running test program, for the resources that it carries.
utility::ModuleHandle ThisModule();

} // namespace zetui
