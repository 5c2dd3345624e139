#include <zetaudiofilterhost/ModuleFileStamp.h>

#include <algorithm>
#include <filesystem>

#include "NativePath.h"
#include "PluginPlatform.h"
#include <zetcore/filesupport/File.h>
#include <zetcore/filesupport/FileException.h>

namespace zetaudiofilterhost {

namespace {

ModuleFileStamp StampOf(const std::filesystem::path& path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    try {
        const zetcore::filesupport::File file(FromNativePath(path));
        return {file.Size(), file.ModificationTime()};
    } catch (const zetcore::filesupport::file_exception&) {
        return {};
    }
}

void Add(ModuleFileStamp& stamp, const ModuleFileStamp& other)
{
    stamp.size += other.size;
    stamp.time = std::max(stamp.time, other.time);
}

} // namespace

ModuleFileStamp GetModuleFileStamp(const PluginLocator& locator)
{
    if (locator.IsEmpty())
        return {};
    const std::filesystem::path path = ToNativePath(locator.GetPath());
    std::error_code error;
    if (!std::filesystem::is_directory(path, error))
        return StampOf(path);
    ModuleFileStamp stamp = StampOf(BundleBinary(path));
    Add(stamp, StampOf(path / "Contents" / "Resources" / "moduleinfo.json"));
    Add(stamp, StampOf(path / "Contents" / "moduleinfo.json"));
    return stamp;
}

} // namespace zetaudiofilterhost
