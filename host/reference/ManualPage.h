#pragma once

#include <string>

#include "reference/CommandTexts.h"

namespace zetaudiopluginmanager {

/// The program's manual page, for `man`.
std::string WriteManualPage(const CommandText& program, const std::string& version);

} // namespace zetaudiopluginmanager
