#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "clap/ClapAbi.h"

namespace zetaudiopluginhost::clap {

/// A plug-in's text as it is. Empty for null. One without an end is read as far as a list would show it.
std::string_view Bytes(const char* text);
/// The same for showing.
std::wstring Text(const char* text);

/// A plug-in's features, for showing. Empty for null; a list without an end is cut.
std::vector<std::wstring> Features(const char* const* features);

/// The features joined by '|', each once. Those that make it too long for a list are left out.
std::wstring CategoryText(const std::vector<std::wstring>& features);

/// Versions of one major version have the same layouts.
bool IsKnown(const Version& version);
/// "1.2.2"; ASCII.
std::string VersionText(const Version& version);

} // namespace zetaudiopluginhost::clap
