#pragma once

#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/Export.h>

/// How the scanner tells the host why a plug-in brought it down: a small XML file beside the banned list,
/// named as that with
/// ".reasons" appended. The scanner writes it before it ends; the host reads it when it bans the plug-in, and
/// takes out what it has saved.
namespace zetaudiopluginhost {

ZETAUDIOPLUGINHOST_API std::wstring BanReasonsPath(const std::wstring& bannedSettingsPath);
/// Adds or replaces one entry, by atomic replacement. Throws `file_exception`.
ZETAUDIOPLUGINHOST_API void RecordBanReason(const std::wstring& bannedSettingsPath,
                                            const zetaudiofilterhost::PluginLocator& locator,
                                            const BanInfo& info);
/// Nothing when the file or the entry is missing or malformed. Never throws for bad content.
ZETAUDIOPLUGINHOST_API std::optional<BanInfo> FindBanReason(const std::wstring& bannedSettingsPath,
                                                            const zetaudiofilterhost::PluginLocator& locator);

} // namespace zetaudiopluginhost
