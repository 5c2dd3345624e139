#include <zetaudiofilterhost/ModuleFiles.h>

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace fs = std::filesystem;
using zetcore::filesupport::FromNativePath;
using zetcore::filesupport::IsSameFileName;
using zetcore::filesupport::ToNativePath;

namespace {

/// Looks at paths, and keeps the first error that leaves open what is there.
class Look
{
  public:
    bool IsFile(const fs::path& path) { return TypeOf(path) == fs::file_type::regular; }
    bool IsFolder(const fs::path& path) { return TypeOf(path) == fs::file_type::directory; }

    std::vector<fs::path> FilesIn(const fs::path& folder, std::wstring_view extension)
    {
        std::vector<fs::path> files;
        if (!IsFolder(folder))
            return files;
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

std::optional<fs::path> FindLibrary(const fs::path& bundle, const BundleLayout& layout, Look& look)
{
    const fs::path folder = bundle / layout.content / layout.architecture;
    fs::path library = folder / bundle.stem();
    library += ToNativePath(std::wstring(layout.libraryExtension));
    if (look.IsFile(library))
        return library;
    const std::vector<fs::path> others = look.FilesIn(folder, layout.libraryExtension);
    return others.size() == 1 ? std::optional(others.front()) : std::nullopt;
}

NoLibrary WhyWithoutLibrary(const BundleLayout& layout, const Look& look)
{
    if (look.Problem())
        return {"the bundle cannot be read: " + zetcore::filesupport::DescribeError(look.Problem()), true};
    return {"a bundle without a library for this machine (" + std::string(layout.architecture) + ")"};
}

/// Null when it tells none.
const PluginFormat* FormatOfExtension(const fs::path& path)
{
    const std::wstring extension = FromNativePath(path.extension());
    for (const PluginFormat& format : PluginFormats())
        if (format.IsOnThisPlatform() &&
            zetcore::string::EqualIgnoringCase(extension, format.files.extension))
            return &format;
    return nullptr;
}

} // namespace

ModuleFiles FindModuleFiles(const PluginLocator& module)
{
    const PluginFormat* format = FindPluginFormat(module.GetTechnologyType());
    const BundleLayout* layout = format ? format->files.bundle : nullptr;
    const fs::path path = ToNativePath(module.GetPath());
    ModuleFiles files;
    Look look;
    if (!layout || !look.IsFolder(path)) {
        files.library = module.GetPath();
        return files;
    }
    if (!look.IsFolder(path / layout->content) && !look.Problem()) {
        files.library = NoLibrary{"a folder that is no bundle"};
        return files;
    }
    if (const std::optional<fs::path> library = FindLibrary(path, *layout, look))
        files.library = FromNativePath(*library);
    else
        files.library = WhyWithoutLibrary(*layout, look);
    for (const std::string_view place : layout->descriptions) {
        if (const fs::path description = (path / place).make_preferred(); look.IsFile(description)) {
            files.description = zetcore::filesupport::File(FromNativePath(description));
            break;
        }
    }
    return files;
}

PluginLocator LocatorOfModuleFile(const std::wstring& path)
{
    const auto isSeparator = [](wchar_t unit) {
        return unit == L'/' || unit == static_cast<wchar_t>(fs::path::preferred_separator);
    };
    for (auto end = path.begin(); end != path.end();) {
        end = std::find_if(end + 1, path.end(), isSeparator);
        std::wstring start(path.begin(), end);
        const PluginFormat* format = FormatOfExtension(ToNativePath(start));
        if (format && (format->files.bundle || end == path.end()))
            return {format->type, std::move(start)};
    }
    return {};
}

} // namespace zetaudiofilterhost
