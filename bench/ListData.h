#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace bench {

constexpr int listColumns = 6;
/// Columns of the lists under measurement: enabled, name, technology, status, version, path.
inline constexpr std::array<const wchar_t*, listColumns> listTitles{L"Enabled", L"Name",    L"Technology",
                                                                    L"Status",  L"Version", L"Path"};

/// One synthetic plug-in, with the texts of its columns.
struct ListEntry
{
    std::array<std::wstring, listColumns> texts;
    bool enabled = true;
};

/// Makes the same entries every time, in no order. Every hundredth name has letters beyond ASCII.
std::vector<ListEntry> MakeListEntries(std::size_t count);

/// True when the name, the path or the version contains the text. The case of ASCII letters is ignored.
bool Holds(const ListEntry& entry, const std::wstring& lowerCaseText);

} // namespace bench
