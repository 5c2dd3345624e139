#include "dialog/list/PluginListText.h"

#include <array>
#include <ctime>

#include <zetaudiofilterhost/PluginFind.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginhostui {

namespace {

std::wstring Localized(std::string_view key)
{
    return zetcore::config::Localizer::Get().LocalizeWide(key);
}

std::wstring PathText(const PluginListEntry& entry)
{
    return zetaudiofilterhost::PluginModuleInfoManager::GetInstance()->GetDisplayStringForLocator(
        entry.locator);
}

bool IsEnabled(const PluginListEntry& entry)
{
    return entry.info && entry.info->IsEnabled();
}

/// The time in the user's time zone. Empty for an unknown time.
std::wstring TimeText(std::int64_t secondsSince1970)
{
    if (secondsSince1970 <= 0)
        return {};
    const auto time = static_cast<std::time_t>(secondsSince1970);
    const std::tm* const local = std::localtime(&time);
    std::array<char, 32> text{};
    if (!local || std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", local) == 0)
        return {};
    return zetcore::string::AsciiToUTF16(text.data());
}

} // namespace

std::wstring GetCellText(unsigned column, const PluginListEntry& entry)
{
    switch (column) {
    case kColumnName:
        return entry.info ? entry.info->GetName() : zetcore::filesupport::File(PathText(entry)).GetTitle();
    case kColumnType:
        return zetaudiofilterhost::TechnologyName(entry.locator.GetTechnologyType());
    case kColumnStatus:
        return Localized(entry.info ? "$$$/AudioPluginManager/Working=Working"
                                    : "$$$/AudioPluginManager/Failed=Not Working");
    case kColumnVersion:
        return entry.info ? entry.info->GetVersionString() : zetaudiofilterhost::noVersion;
    case kColumnPath:
        return PathText(entry);
    default:
        return {};
    }
}

std::wstring GetEnabledSortText(const PluginListEntry& entry)
{
    return IsEnabled(entry) ? L"2" : L"1";
}

std::wstring GetEnabledDescription(const PluginListEntry& entry)
{
    return Localized(IsEnabled(entry) ? "$$$/AudioPluginManager/EnabledDescription=Enabled"
                                      : "$$$/AudioPluginManager/DisabledDescription=Disabled");
}

std::wstring GetBanDescription(const zetaudiopluginhost::BanInfo& info)
{
    const std::wstring time = TimeText(info.time);
    const std::wstring reason = info.reason.empty()
                                    ? Localized("$$$/AudioPluginManager/NoBanReason=The reason is not known.")
                                    : zetcore::string::UTF8to16(info.reason);
    if (time.empty())
        return reason;
    return reason + L"\n" +
           zetcore::config::Localizer::Get().LocalizeWide("$$$/AudioPluginManager/BannedAt=Banned: @0",
                                                          {time});
}

} // namespace zetaudiopluginhostui
