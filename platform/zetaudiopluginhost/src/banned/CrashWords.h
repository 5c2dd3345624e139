#pragma once

#include <cstdint>
#include <string>

#include <zetcore/config/Localizer.h>

namespace zetaudiopluginhost {

/// The words for a signal, or for an exception on Windows: "segmentation fault", or its number.
std::string CrashWords(std::int64_t code, const zetcore::config::Localizer& language);

} // namespace zetaudiopluginhost
