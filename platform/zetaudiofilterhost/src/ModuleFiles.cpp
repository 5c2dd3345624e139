#include <zetaudiofilterhost/ModuleFiles.h>

#include <filesystem>
#include <vector>

#include "NativePath.h"
#include "PluginPlatform.h"

namespace zetaudiofilterhost {

namespace fs = std::filesystem;

namespace {

constexpr const char* moduleInfoName = "moduleinfo.json";

/// Looks at paths, and keeps the first error that leaves open what is there.
class Look
{
  public:
    bool IsFile(const fs::path& path) { return TypeOf(path) == fs::file_type::regular; }
    bool IsFolder(const fs::path& path) { return TypeOf(path) == fs::file_type::directory; }

    std::vector<fs::path> LibrariesIn(const fs::path& folder)
    {
        std::vector<fs::path> files;
        if (!IsFolder(folder))
            return files;
        const std::wstring extension = FromNativePath(fs::path(BundleLibraryExtension()));
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            if (IsSameFileName(FromNativePath(entry->path().extension()), extension) && IsFile(entry->path()))
                files.push_back(entry->path());
        }
        Note(error);
        return files;
    }

    const std::error_code& Problem() const noexcept { return problem; }

  private:
    fs::file_type TypeOf(const fs::path& path)
    {
        std::error_code error;
        const fs::file_type type = fs::status(path, error).type();
        if (type == fs::file_type::none)
            Note(error);
        return type;
    }
    void Note(const std::error_code& error)
    {
        if (error && !problem)
            problem = error;
    }

    std::error_code problem;
};

fs::path FindLibrary(const fs::path& bundle, Look& look)
{
    const fs::path folder = bundle / "Contents" / BundleArchitecture();
    fs::path library = folder / bundle.stem();
    library += BundleLibraryExtension();
    if (look.IsFile(library))
        return library;
    const std::vector<fs::path> others = look.LibrariesIn(folder);
    return others.size() == 1 ? others.front() : fs::path();
}

std::string WhyWithoutLibrary(const Look& look)
{
    if (look.Problem())
        return "the bundle cannot be read: " + look.Problem().message();
    return "a bundle without a library for this machine (" + std::string(BundleArchitecture()) + ")";
}

} // namespace

ModuleFiles FindModuleFiles(const std::wstring& modulePath)
{
    const fs::path path = ToNativePath(modulePath);
    ModuleFiles files;
    Look look;
    if (!look.IsFolder(path)) {
        files.library = modulePath;
        return files;
    }
    if (!look.IsFolder(path / "Contents") && !look.Problem()) {
        files.problem = "a folder that is no bundle";
        return files;
    }
    if (const fs::path library = FindLibrary(path, look); !library.empty()) {
        files.library = FromNativePath(library);
    } else {
        files.problem = WhyWithoutLibrary(look);
        files.isUnreadable = static_cast<bool>(look.Problem());
    }
    for (const fs::path& place :
         {path / "Contents" / "Resources" / moduleInfoName, path / "Contents" / moduleInfoName}) {
        if (look.IsFile(place)) {
            files.moduleInfo = zetcore::filesupport::File(FromNativePath(place));
            break;
        }
    }
    return files;
}

} // namespace zetaudiofilterhost
