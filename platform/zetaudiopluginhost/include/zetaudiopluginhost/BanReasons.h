#pragma once

#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/Export.h>

/// The scanner tells the host why a plug-in brought it down: it writes a small XML file beside the banned
/// list, with the same name and ".reasons" appended. The scanner writes it before it ends. The host reads it
/// when it bans the plug-in, and removes the entries that it has saved.
namespace zetaudiopluginhost {

ZETAUDIOPLUGINHOST_API std::wstring BanReasonsPath(const std::wstring& bannedSettingsPath);
/// Adds or replaces one entry, by atomic replacement. Throws `file_exception`.
ZETAUDIOPLUGINHOST_API void RecordBanReason(const std::wstring& bannedSettingsPath,
                                            const zetaudiofilterhost::PluginLocator& locator,
                                            const BanInfo& info);
/// The result is empty when the file or the entry is missing or malformed. Bad content never throws.
ZETAUDIOPLUGINHOST_API std::optional<BanInfo> FindBanReason(const std::wstring& bannedSettingsPath,
                                                            const zetaudiofilterhost::PluginLocator& locator);

} // namespace zetaudiopluginhost
