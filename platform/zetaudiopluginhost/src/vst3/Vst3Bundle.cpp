#include "vst3/Vst3Bundle.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "process/NativePath.h"
#include "vst3/Vst3Abi.h"
#include "vst3/Vst3Platform.h"

namespace zetaudiopluginhost::vst3 {

namespace fs = std::filesystem;

namespace {

constexpr const char* moduleInfoName = "moduleinfo.json";

bool IsFile(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

bool IsFolder(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

std::vector<fs::path> FilesIn(const fs::path& folder, const fs::path& extension)
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() == extension && IsFile(entry->path()))
            files.push_back(entry->path());
    }
    return files;
}

/// Bundles that were renamed keep their library's name: the only one there is it.
fs::path FindLibrary(const fs::path& bundle)
{
    const fs::path folder = bundle / "Contents" / bundleArchitecture;
    const fs::path extension = libraryExtension;
    fs::path library = folder / bundle.stem();
    library += extension;
    if (IsFile(library))
        return library;
    const std::vector<fs::path> others = FilesIn(folder, extension);
    return others.size() == 1 ? others.front() : fs::path();
}

} // namespace

Vst3Files FindVst3Files(const std::wstring& modulePath)
{
    const fs::path path = NativePath(modulePath);
    Vst3Files files;
    if (!IsFolder(path)) {
        files.library = modulePath;
        return files;
    }
    if (!IsFolder(path / "Contents")) {
        files.problem = "a folder that is no bundle";
        return files;
    }
    const fs::path library = FindLibrary(path);
    if (library.empty()) {
        files.problem =
            std::string("a bundle without a library for this machine (") + bundleArchitecture + ")";
        return files;
    }
    files.library = WidePath(library);
    for (const fs::path& place :
         {path / "Contents" / "Resources" / moduleInfoName, path / "Contents" / moduleInfoName}) {
        if (IsFile(place)) {
            files.moduleInfo = zetcore::filesupport::File(WidePath(place));
            break;
        }
    }
    return files;
}

} // namespace zetaudiopluginhost::vst3
