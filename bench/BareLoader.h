#pragma once

#include <string>
#include <vector>

namespace bench {

/// Does the least work that a scan could do, as the figure to compare a scan with. It loads one VST2 module
/// after another into this process, opens each plug-in, asks its name, maker and category, and closes it. It
/// unloads nothing, and has no protocol, no files and no checks. Returns how many plug-ins answered.
int LoadAndAsk(const std::vector<std::string>& paths);

} // namespace bench
