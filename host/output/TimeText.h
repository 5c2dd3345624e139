#pragma once

#include <chrono>
#include <string>

namespace zetaudiopluginmanager {

/// The time since 1970 (UTC) as "2026-11-22T14:30:00Z". Empty for an unknown time, and for a year that has
/// not four digits. Any thread.
std::string TimeText(std::chrono::seconds sinceEpoch);

} // namespace zetaudiopluginmanager
