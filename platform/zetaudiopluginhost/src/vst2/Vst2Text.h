#pragma once

#include <cstdint>
#include <string>

namespace zetaudiopluginhost::vst2 {

/// The version number as people know it. The format has no rule for it; makers use two: decimal digits (1100
/// is 1.1.0.0) up to 9999, and one byte for each part above (0x010203 is 1.2.3). What is neither, a part
/// above 99, is shown as the plain number. Empty for 0.
std::wstring VersionText(std::int64_t version);

/// "Effect", "Synth" and so on; empty for a category that says nothing.
std::wstring CategoryText(std::intptr_t category);

/// The id as the number that the unsupported list uses.
std::wstring IdText(std::int32_t id);

} // namespace zetaudiopluginhost::vst2
