#include <zetcore/filesupport/sharing/TemporaryFiles.h>

#include <filesystem>
#include <string_view>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/string/Utf.h>

#include "filesupport/paths/CheckedPath.h"

namespace zetcore::filesupport {

namespace {

bool IsHexadecimal(std::wstring_view text)
{
    return !text.empty() && text.find_first_not_of(L"0123456789abcdef") == text.npos;
}

/// True for the names that `MakeTemporaryName` makes.
bool IsTemporaryName(std::wstring_view name)
{
    constexpr std::wstring_view begin = L".zet-", end = L".tmp";
    if (name.size() < begin.size() + end.size() || !name.starts_with(begin) || !name.ends_with(end))
        return false;
    name = name.substr(begin.size(), name.size() - begin.size() - end.size());
    const std::size_t middle = name.find(L'-');
    return middle != name.npos && IsHexadecimal(name.substr(0, middle)) &&
           IsHexadecimal(name.substr(middle + 1));
}

bool IsAbandoned(const std::filesystem::directory_entry& entry, std::chrono::seconds age)
{
    std::error_code error;
    if (!IsTemporaryName(FromNativePath(entry.path().filename())) || !entry.is_regular_file(error) ||
        entry.is_symlink(error))
        return false;
    const auto written = entry.last_write_time(error);
    return !error && std::filesystem::file_time_type::clock::now() - written >= age;
}

} // namespace

std::size_t DeleteAbandonedTemporaries(const Dir& folder, std::chrono::seconds age)
{
    std::size_t deleted = 0;
    std::error_code error;
    std::filesystem::directory_iterator entries(ToNativePath(folder.FullPath()), error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        if (!IsAbandoned(*entries, age))
            continue;
        std::error_code cause;
        if (std::filesystem::remove(entries->path(), cause))
            ++deleted;
        if (cause)
            debug::TraceLine(1, "FileUtils",
                             string::UTF16to8(string::ForDisplay(FromNativePath(entries->path()))) + ": " +
                                 DescribeError(cause));
    }
    return deleted;
}

} // namespace zetcore::filesupport
