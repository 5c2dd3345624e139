#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace zetui::ui {

struct ArchiveValue;

/// The pairs of a `prop.list`, in file order; keys are unique.
struct ArchiveList
{
    // Defined where `ArchiveValue` is complete.
    ArchiveList();
    ~ArchiveList();
    ArchiveList(const ArchiveList&);
    ArchiveList(ArchiveList&&) noexcept;
    ArchiveList& operator=(const ArchiveList&);
    ArchiveList& operator=(ArchiveList&&) noexcept;

    std::vector<std::pair<std::string, ArchiveValue>> pairs;

    const ArchiveValue* Find(std::string_view key) const noexcept;
};

/// One typed value of a layout archive.
struct ArchiveValue
{
    std::variant<bool, std::int64_t, double, std::string, ArchiveList> value;
    /// Its line in the file, from 1.
    int line = 0;
};

/// An archive beyond these limits is refused. A dialog's archive has some 50 kilobytes.
inline constexpr std::size_t largestArchive = std::size_t{4} << 20;
/// Lists are read recursively. One level of nodes takes six levels of lists.
inline constexpr int deepestArchiveList = 512;
/// Each text is shown by one widget.
inline constexpr std::size_t longestArchiveText = 16384;

/// The message names the resource and the line, which counts from 1.
[[noreturn]] void ThrowArchiveError(const std::string& resourceName, int line, const std::string& problem);

/// The list in the root of a property map, version 4. Throws `archive_error`.
ArchiveList ParseArchive(std::string_view xml, const std::string& resourceName);

} // namespace zetui::ui
