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

/// One synthetic plug-in, with what each column shows of it.
struct ListEntry
{
    std::array<std::wstring, listColumns> texts;
    bool enabled = true;
};

/// Always the same ones, in no order; every hundredth name has letters beyond ASCII.
std::vector<ListEntry> MakeListEntries(std::size_t count);

/// Whether the name, the path or the version holds the text; ASCII letters apart from their case.
bool Holds(const ListEntry& entry, const std::wstring& lowerCaseText);

} // namespace bench
