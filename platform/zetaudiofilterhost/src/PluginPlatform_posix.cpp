#include "PluginPlatform.h"

#include <cstdlib>
#include <string_view>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetcore/filesupport/CommonDirs.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace commondirs = zetcore::filesupport::commondirs;

namespace {

void AppendPathList(std::vector<std::wstring>& folders, const char* list)
{
    std::string_view rest = list ? list : "";
    while (!rest.empty()) {
        const std::size_t end = rest.find(':');
        if (const std::string_view entry = rest.substr(0, end); !entry.empty())
            folders.push_back(zetcore::string::UTF8to16(entry));
        rest = end == rest.npos ? std::string_view() : rest.substr(end + 1);
    }
}

void AppendInside(std::vector<std::wstring>& folders, const zetcore::filesupport::Dir& parent,
                  std::initializer_list<const wchar_t*> names)
{
    if (parent.IsEmpty())
        return;
    for (const wchar_t* name : names)
        folders.push_back(parent.FullPath() + L'/' + name);
}

} // namespace

bool HasPluginExtension(TechnologyType type, const std::filesystem::path& path)
{
    switch (type) {
    case TechnologyType::VST:
        return path.extension() == ".so";
    case TechnologyType::VST3:
        return path.extension() == ".vst3";
    default:
        return false;
    }
}

std::string_view BundleArchitecture()
{
    return "x86_64-linux";
}

std::string_view BundleLibraryExtension()
{
    return ".so";
}

std::vector<std::wstring> DefaultPluginFolders(TechnologyType type)
{
    std::vector<std::wstring> folders;
    if (type == TechnologyType::VST) {
        AppendPathList(folders, std::getenv("VST_PATH"));
        AppendInside(folders, commondirs::HomeDir(), {L".vst", L".lxvst"});
        folders.insert(folders.end(),
                       {L"/usr/local/lib/vst", L"/usr/lib/vst", L"/usr/lib/x86_64-linux-gnu/vst",
                        L"/usr/local/lib/lxvst", L"/usr/lib/lxvst"});
    } else if (type == TechnologyType::VST3) {
        AppendInside(folders, commondirs::HomeDir(), {L".vst3"});
        folders.insert(folders.end(), {L"/usr/local/lib/vst3", L"/usr/lib/vst3"});
        AppendInside(folders, commondirs::ExecutableDir(), {L"vst3"});
    }
    return folders;
}

bool IsSameFileName(const std::wstring& left, const std::wstring& right)
{
    return left == right;
}

} // namespace zetaudiofilterhost
