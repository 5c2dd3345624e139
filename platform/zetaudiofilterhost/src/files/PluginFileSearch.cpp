#include "files/PluginFileSearch.h"

#include <algorithm>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace fs = std::filesystem;
using zetcore::filesupport::FromNativePath;
using zetcore::filesupport::IsLink;
using zetcore::filesupport::IsRefusal;
using zetcore::filesupport::IsSameFileName;
using zetcore::filesupport::KindBehindLongPath;
using zetcore::filesupport::ResolvedPath;
using zetcore::filesupport::ToNativePath;

namespace {

void TracePassedOver(const fs::path& path, const std::error_code& error)
{
    zetcore::debug::TraceLine(3, "PluginRegistry",
                              zetcore::string::UTF16to8(FromNativePath(path)) + ": passed over, " +
                                  zetcore::filesupport::DescribeError(error));
}

bool HasExtension(const std::wstring& extension, const PluginFormat& format)
{
    return format.IsOnThisPlatform() && IsSameFileName(extension, format.files.extension);
}

/// True for a folder that stands for a module of any format.
bool IsBundleExtension(const std::wstring& extension)
{
    return std::ranges::any_of(PluginFormats(), [&extension](const PluginFormat& format) {
        return format.files.bundle && HasExtension(extension, format);
    });
}

/// The error, but for something whose path is too long, which is no missing thing.
std::error_code Explained(const fs::path& path, const std::error_code& error)
{
    return error && KindBehindLongPath(path) ? std::make_error_code(std::errc::filename_too_long) : error;
}

fs::directory_iterator OpenFolder(const fs::path& folder, std::error_code& error)
{
    if (zetcore::debug::FaultsAreOn()) {
        const std::string title = zetcore::string::UTF16to8(FromNativePath(folder.filename()));
        error = zetcore::debug::FaultError("read." + title);
        if (error)
            return {};
    }
    return fs::directory_iterator(folder, error);
}

} // namespace

PluginFileSearch::PluginFileSearch(const PluginFormat& searched) : format(searched) {}

void PluginFileSearch::AddPlugin(Place plugin)
{
    if (reached.insert(plugin.resolved.native()).second)
        found.push_back({FromNativePath(plugin.path), std::move(plugin.resolved)});
}

void PluginFileSearch::NoteUnreadable(const fs::path& path, const std::error_code& error)
{
    TracePassedOver(path, error);
    unreadable.push_back({FromNativePath(path), zetcore::filesupport::DescribeError(error)});
}

bool PluginFileSearch::SearchFolder(const std::wstring& folder)
{
    std::error_code error;
    Place root{ToNativePath(folder), {}};
    root.resolved = ResolvedPath(root.path, error);
    if (IsRefusal(error)) {
        NoteUnreadable(root.path, error);
        return false;
    }
    if (error) {
        zetcore::debug::TraceLine(5, "PluginRegistry",
                                  zetcore::string::UTF16to8(folder) + ": cannot be reached, " +
                                      zetcore::filesupport::DescribeError(error));
        return false;
    }
    const std::wstring extension = FromNativePath(root.path.extension());
    if (format.files.bundle && HasExtension(extension, format)) {
        AddPlugin(std::move(root));
        return true;
    }
    if (IsBundleExtension(extension) && fs::is_directory(root.resolved, error))
        return true;
    std::vector<Place> toSearch;
    if (unreadableResolved.contains(root.resolved.native()))
        return false;
    if (!reached.contains(root.resolved.native()) && !ReadFolder(root, toSearch))
        return false;
    while (!toSearch.empty()) {
        const Place next = std::move(toSearch.back());
        toSearch.pop_back();
        ReadFolder(next, toSearch);
    }
    return true;
}

bool PluginFileSearch::ReadFolder(const Place& folder, std::vector<Place>& toSearch)
{
    if (!reached.insert(folder.resolved.native()).second)
        return true;
    std::vector<Place> plugins;
    std::vector<Place> folders;
    std::error_code error;
    for (fs::directory_iterator entry = OpenFolder(folder.path, error), end; !error && entry != end;
         entry.increment(error))
        Classify(*entry, folder, plugins, folders);
    error = Explained(folder.path, error);
    if (IsRefusal(error))
        NoteUnreadable(folder.path, error);
    else if (error)
        TracePassedOver(folder.path, error);
    if (error)
        unreadableResolved.insert(folder.resolved.native());
    const auto byPath = [](const Place& left, const Place& right) {
        return left.path.native() < right.path.native();
    };
    std::sort(plugins.begin(), plugins.end(), byPath);
    for (Place& plugin : plugins)
        AddPlugin(std::move(plugin));
    std::sort(folders.begin(), folders.end(), byPath);
    std::move(folders.rbegin(), folders.rend(), std::back_inserter(toSearch));
    return !error;
}

void PluginFileSearch::Classify(const fs::directory_entry& entry, const Place& folder,
                                std::vector<Place>& plugins, std::vector<Place>& folders)
{
    std::error_code error;
    const bool isFolder = entry.is_directory(error);
    const std::wstring extension = FromNativePath(entry.path().extension());
    const bool isPluginName = HasExtension(extension, format);
    const bool isPlugin =
        isPluginName && (isFolder ? format.files.bundle != nullptr : entry.is_regular_file(error));
    const bool isSearched = isFolder && !IsBundleExtension(extension);
    if (!isPlugin && !isSearched) {
        const auto kind = error ? KindBehindLongPath(entry.path()) : std::nullopt;
        if (kind && (isPluginName || kind == fs::file_type::directory))
            NoteUnreadable(entry.path(), Explained(entry.path(), error));
        else if (IsRefusal(error) && IsLink(entry))
            NoteUnreadable(entry.path(), error);
        else if (error && isPluginName)
            TracePassedOver(entry.path(), error);
        return;
    }
    // A link has to be followed; the rest is known from the folder.
    fs::path resolved =
        IsLink(entry) ? ResolvedPath(entry.path(), error) : folder.resolved / entry.path().filename();
    if (error)
        TracePassedOver(entry.path(), error);
    else
        (isPlugin ? plugins : folders).push_back({entry.path(), std::move(resolved)});
}

FilePresence FindPresence(const PluginLocator& module)
{
    const fs::path path = ToNativePath(module.GetPath());
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return FilePresence::Gone;
    if (error || status.type() == fs::file_type::none || status.type() == fs::file_type::unknown)
        return FilePresence::Unknown;
    // A single file that a folder has taken the place of is gone.
    const PluginFormat* format = FindPluginFormat(module.GetTechnologyType());
    const bool mustBeFile = format && format->IsOnThisPlatform() && !format->files.bundle;
    return mustBeFile && fs::is_directory(status) ? FilePresence::Gone : FilePresence::Present;
}

} // namespace zetaudiofilterhost
