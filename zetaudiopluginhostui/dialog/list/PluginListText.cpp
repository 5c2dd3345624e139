#include "dialog/list/PluginListText.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <sstream>
#include <utility>
#include <vector>

#include <zetaudiofilterhost/PluginFind.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>

#include "dialog/list/ColumnWidths.h"

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

/// The reasons are worded to follow a plug-in's name. Alone, they begin as a sentence does.
std::wstring AsSentence(std::wstring text)
{
    // The small letters of the languages that have any, without the accents that no text begins with.
    constexpr wchar_t distance = L'a' - L'A';
    const wchar_t first = text.empty() ? L'\0' : text.front();
    if ((first >= L'a' && first <= L'z') || (first >= L'\u00e0' && first <= L'\u00fe' && first != L'\u00f7'))
        text.front() = static_cast<wchar_t>(first - distance);
    return text;
}

/// All that is known of a plug-in beside its name and status, worded.
struct PluginFacts
{
    /// The lines of the ban's description.
    std::vector<std::wstring> ban;
    std::wstring path;
    /// Maker, format, version and date of the file, as far as they are known.
    std::vector<std::wstring> file;
};

PluginFacts FactsOf(const PluginListEntry& entry)
{
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    const auto ban = entry.info
                         ? std::nullopt
                         : zetaudiopluginhost::BannedPluginManager::GetInstance()->GetBanInfo(entry.locator);
    PluginFacts facts{.ban = {}, .path = PathText(entry), .file = {}};
    if (ban) {
        std::wistringstream description(GetBanDescription(*ban));
        for (std::wstring line; std::getline(description, line);)
            facts.ban.push_back(line);
    }
    const std::int64_t fileTime = entry.info ? entry.info->GetFileTime() : ban ? ban->stamp.time : 0;
    const std::pair<const char*, std::wstring> known[] = {
        {"$$$/AudioPluginManager/DetailMaker=Maker: @0",
         entry.info ? entry.info->GetVendor() : std::wstring()},
        {"$$$/AudioPluginManager/DetailFormat=Format: @0", GetCellText(kColumnType, entry)},
        {"$$$/AudioPluginManager/DetailVersion=Version: @0",
         entry.info ? entry.info->GetVersionString() : std::wstring()},
        {"$$$/AudioPluginManager/DetailFileDate=File date: @0", TimeText(fileTime / nanoseconds)}};
    for (const auto& [key, value] : known) {
        if (!value.empty())
            facts.file.push_back(zetcore::config::Localizer::Get().LocalizeWide(key, {value}));
    }
    return facts;
}

std::wstring Joined(const std::vector<std::wstring>& texts, const std::wstring& separator)
{
    std::wstring all;
    for (const std::wstring& text : texts)
        all += (all.empty() ? L"" : separator) + text;
    return all;
}

/// What the user can do about a ban.
std::wstring ReloadAdvice()
{
    return zetcore::config::Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/DetailReload=“@0” tries it again.",
        {Localized("$$$/AudioPluginManager/Reload=Reload")});
}

/// A column's title and its text, as in "Status: Working".
std::wstring TitledCell(PluginColumn column, const PluginListEntry& entry)
{
    const auto& columns = PluginColumns();
    const auto spec = std::find_if(columns.begin(), columns.end(),
                                   [column](const PluginColumnSpec& each) { return each.id == column; });
    return zetcore::config::Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/DetailLine=@0: @1", {Localized(spec->titleKey), GetCellText(column, entry)});
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
    return Localized(IsEnabled(entry) ? "$$$/AudioPluginManager/EnabledOn=on"
                                      : "$$$/AudioPluginManager/EnabledOff=off");
}

std::wstring GetBanDescription(const zetaudiopluginhost::BanInfo& info)
{
    const std::wstring time = TimeText(info.time);
    std::wstring reason = AsSentence(
        zetcore::string::UTF8to16(zetaudiopluginhost::WordReason(info, zetcore::config::Localizer::Get())));
    if (reason.empty())
        reason = Localized("$$$/AudioPluginManager/NoBanReason=The reason is not known.");
    if (time.empty())
        return reason;
    return reason + L"\n" +
           zetcore::config::Localizer::Get().LocalizeWide("$$$/AudioPluginManager/BannedAt=Banned: @0",
                                                          {time});
}

std::wstring GetDetails(const PluginListEntry& entry)
{
    const std::wstring separator = L" \u00b7 ";
    const PluginFacts facts = FactsOf(entry);
    const std::wstring reason = facts.ban.empty()
                                    ? std::wstring()
                                    : Joined(facts.ban, separator) + separator + ReloadAdvice() + L"\n";
    return reason + facts.path + L"\n" + Joined(facts.file, separator);
}

std::wstring GetDetailsToCopy(const PluginListEntry& entry)
{
    const PluginFacts facts = FactsOf(entry);
    std::vector<std::wstring> lines{TitledCell(kColumnName, entry), TitledCell(kColumnStatus, entry)};
    lines.insert(lines.end(), facts.ban.begin(), facts.ban.end());
    lines.push_back(TitledCell(kColumnPath, entry));
    lines.insert(lines.end(), facts.file.begin(), facts.file.end());
    return Joined(lines, L"\n") + L"\n";
}

} // namespace zetaudiopluginhostui
