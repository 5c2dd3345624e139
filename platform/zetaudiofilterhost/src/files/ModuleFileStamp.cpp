#include <zetaudiofilterhost/ModuleFileStamp.h>

#include <algorithm>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/paths/NativePath.h>

namespace zetaudiofilterhost {

using zetcore::filesupport::ToNativePath;

namespace {

ModuleFileStamp StampOf(const zetcore::filesupport::File& file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(ToNativePath(file.FullPath()), error))
        return {};
    try {
        return {file.Size(), file.ModificationTime()};
    } catch (const zetcore::filesupport::file_exception&) {
        return {};
    }
}

} // namespace

ModuleFileStamp GetModuleFileStamp(const PluginLocator& locator)
{
    if (locator.IsEmpty())
        return {};
    const ModuleFiles files = FindModuleFiles(locator);
    ModuleFileStamp stamp;
    if (const auto* library = std::get_if<std::wstring>(&files.library))
        stamp = StampOf(zetcore::filesupport::File(*library));
    if (files.description) {
        const ModuleFileStamp description = StampOf(*files.description);
        stamp.size += description.size;
        stamp.time = std::max(stamp.time, description.time);
    }
    return stamp;
}

} // namespace zetaudiofilterhost
