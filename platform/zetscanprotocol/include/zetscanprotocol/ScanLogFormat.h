#pragma once

#include <string_view>

/// How the scanner's logs look to those who read them. docs/files.md describes the folder.
namespace zetscanprotocol {

/// In the preferences folder.
inline constexpr wchar_t logFolder[] = L"scan-logs";
/// A log's name is made of this, the time of its first line, and the scanner's own end. So names sort by
/// time.
inline constexpr std::wstring_view logNamePrefix = L"scan-";
inline constexpr std::wstring_view logNameSuffix = L".log";
constexpr bool IsLogName(std::wstring_view name)
{
    return name.starts_with(logNamePrefix) && name.ends_with(logNameSuffix);
}

/// Before a plug-in's locator, on a line of its own. The plug-in's output follows.
inline constexpr char logHeadingMark[] = "== ";
/// Before a line of the scanner's own.
inline constexpr char logNoteMark[] = "-- ";

} // namespace zetscanprotocol
