#pragma once

#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiopluginhost {

/// Takes entries out of the file of reasons that stands beside the banned list; the file goes when none is
/// left. A file that is missing or malformed is left alone. Throws `file_exception`.
void ForgetBanReasons(const std::wstring& bannedSettingsPath,
                      const std::vector<zetaudiofilterhost::PluginLocator>& locators);

} // namespace zetaudiopluginhost
