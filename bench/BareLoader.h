#pragma once

#include <string>
#include <vector>

namespace bench {

/// The floor that a scan is held against: loads one VST2 module after another into this process, asks each
/// its name, closes and unloads it. No protocol, no files, no checks. Returns how many answered.
int LoadAndAskNames(const std::vector<std::string>& paths);

} // namespace bench
