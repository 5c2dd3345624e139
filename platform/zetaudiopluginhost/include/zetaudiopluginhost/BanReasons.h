#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/Export.h>

/// The scanner tells the host why a plug-in brought it down: it writes a small XML file beside the banned
/// list, with the same name and ".reasons" appended. The scanner writes it before it ends. The host reads it
/// when it bans the plug-in, and removes the entries that it has saved.
namespace zetaudiopluginhost {

/// A plug-in and why it failed.
struct BanReason
{
    zetaudiofilterhost::PluginLocator locator;
    BanInfo info;

    friend bool operator==(const BanReason&, const BanReason&) = default;
};

ZETAUDIOPLUGINHOST_API std::wstring BanReasonsPath(const std::wstring& bannedSettingsPath);
/// Adds or replaces one entry, by atomic replacement. Throws `file_exception`.
ZETAUDIOPLUGINHOST_API void RecordBanReason(const std::wstring& bannedSettingsPath,
                                            const zetaudiofilterhost::PluginLocator& locator,
                                            const BanInfo& info);
/// The result is empty when the file or the entry is missing or malformed. Bad content never throws.
ZETAUDIOPLUGINHOST_API std::optional<BanInfo> FindBanReason(const std::wstring& bannedSettingsPath,
                                                            const zetaudiofilterhost::PluginLocator& locator);

/// The content of such a file, for those who keep one elsewhere.
ZETAUDIOPLUGINHOST_API std::string ToBanReasonsText(const std::vector<BanReason>& reasons);
/// Throws `std::runtime_error` ("line 3: why") for a text that is no such file.
ZETAUDIOPLUGINHOST_API std::vector<BanReason> FromBanReasonsText(std::string_view text);

} // namespace zetaudiopluginhost
