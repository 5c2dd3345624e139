#pragma once

#include <string>

namespace zetaudiopluginhost::vst2 {

/// A module's file name as the comparison of a VST2 shell with VST3 modules takes it: without folder and
/// extension, the markers "VST3", "VST2" and "VST" made alike, ASCII letters in lower case.
std::wstring ShellComparisonName(const std::wstring& path);

} // namespace zetaudiopluginhost::vst2
