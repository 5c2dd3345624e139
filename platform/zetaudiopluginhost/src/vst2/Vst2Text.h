#pragma once

#include <cstdint>
#include <string>

namespace zetaudiopluginhost::vst2 {

/// The version number as people know it. The format has no rule for it; makers use two: four decimal digits
/// (1100 is 1.1.0.0, 930 is 0.9.3.0), and one byte for each part (0x010203 is 1.2.3). Numbers above 9999 and
/// multiples of 256 are read as bytes; what then has a part above 99, and numbers below 100, are shown as
/// they are. Empty for 0.
std::wstring VersionText(std::int64_t version);

/// "Effect", "Synth" and so on; empty for a category that says nothing.
std::wstring CategoryText(std::intptr_t category);

/// The id as the number that the unsupported list uses.
std::wstring IdText(std::int32_t id);

/// A module's file name as the comparison of a VST2 shell with VST3 modules takes it: without folder and
/// extension, the markers "VST3", "VST2" and "VST" made alike, ASCII letters in lower case.
std::wstring ShellComparisonName(const std::wstring& path);

} // namespace zetaudiopluginhost::vst2
