#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <zetcore/filesupport/paths/Dir.h>

namespace zetaudiopluginmanager {

/// The facts of folders for a report. A folder may be the user's whole home or a drive with a hundred
/// thousand files, so each of these looks at so many entries only. What is passed over is said in the text.

struct FolderNames
{
    /// Ordered.
    std::vector<std::wstring> names;
    /// False when there are more.
    bool complete = true;
};

/// The names of up to `most` entries. Throws `std::filesystem::filesystem_error`.
FolderNames NamesIn(const zetcore::filesupport::Dir& folder, std::size_t most);
/// Says that not all names were read. Empty when they were.
std::string MoreNamesLine(const FolderNames& names);

/// The files in a folder with their sizes and times, a line for each, in the order of their names. Sizes and
/// times are those of the first `mostFiles` of at most `mostNames` names.
std::string FileLines(const zetcore::filesupport::Dir& folder, std::size_t mostFiles, std::size_t mostNames);

/// Says in brackets why a scan cannot look into the folder. The text is empty for a folder that is there.
std::string_view FolderStateText(const std::wstring& folder);

/// A folder in which plug-ins are looked for.
struct SearchedFolder
{
    std::wstring format, path;
};

/// A line for each folder; of the first `mostFolders` it also says which are not there, or offline.
std::string SearchedFolderLines(const std::vector<SearchedFolder>& folders, std::size_t mostFolders);

} // namespace zetaudiopluginmanager
