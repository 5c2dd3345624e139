#pragma once

#include <string>
#include <vector>

namespace bench {

/// The floor that a scan is held against: loads one VST2 module after another into this process, opens each
/// plug-in, asks its name, maker and category, and closes it. It unloads nothing, and has no protocol, no
/// files and no checks. Returns how many answered.
int LoadAndAsk(const std::vector<std::string>& paths);

} // namespace bench
