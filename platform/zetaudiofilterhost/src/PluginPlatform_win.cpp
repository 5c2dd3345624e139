#include "PluginPlatform.h"

#include <cstdlib>
#include <cwchar>
#include <string_view>

#include <windows.h>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetcore/filesupport/CommonDirs.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace commondirs = zetcore::filesupport::commondirs;

namespace {

void AppendPathList(std::vector<std::wstring>& folders, const wchar_t* list)
{
    std::wstring_view rest = list ? list : L"";
    while (!rest.empty()) {
        const std::size_t end = rest.find(L';');
        if (const std::wstring_view entry = rest.substr(0, end); !entry.empty())
            folders.emplace_back(entry);
        rest = end == rest.npos ? std::wstring_view() : rest.substr(end + 1);
    }
}

void AppendInside(std::vector<std::wstring>& folders, const wchar_t* variable, const wchar_t* name)
{
    if (const wchar_t* parent = ::_wgetenv(variable); parent && *parent)
        folders.push_back(std::wstring(parent) + L'\\' + name);
}

void AppendRegisteredFolder(std::vector<std::wstring>& folders)
{
    std::wstring value(32768, L'\0');
    DWORD bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    const LSTATUS status =
        ::RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\VST", L"VSTPluginsPath",
                       RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr, value.data(), &bytes);
    if (status == ERROR_SUCCESS && value.front() != L'\0')
        folders.emplace_back(value.c_str());
}

} // namespace

bool HasPluginExtension(TechnologyType type, const std::filesystem::path& path)
{
    const std::wstring extension = path.extension().wstring();
    switch (type) {
    case TechnologyType::VST:
        return zetcore::string::EqualIgnoringCase(extension, L".dll");
    case TechnologyType::VST3:
        return zetcore::string::EqualIgnoringCase(extension, L".vst3");
    default:
        return false;
    }
}

std::string_view BundleArchitecture()
{
    return "x86_64-win";
}

std::string_view BundleLibraryExtension()
{
    return ".vst3";
}

std::vector<std::wstring> DefaultPluginFolders(TechnologyType type)
{
    std::vector<std::wstring> folders;
    if (type == TechnologyType::VST) {
        AppendPathList(folders, ::_wgetenv(L"VST_PATH"));
        AppendRegisteredFolder(folders);
        AppendInside(folders, L"ProgramFiles", L"VSTPlugins");
        AppendInside(folders, L"ProgramFiles", L"Steinberg\\VSTPlugins");
        AppendInside(folders, L"CommonProgramFiles", L"VST2");
        AppendInside(folders, L"CommonProgramFiles", L"Steinberg\\VST2");
    } else if (type == TechnologyType::VST3) {
        AppendInside(folders, L"LOCALAPPDATA", L"Programs\\Common\\VST3");
        AppendInside(folders, L"CommonProgramFiles", L"VST3");
        if (const auto program = commondirs::ExecutableDir(); !program.IsEmpty())
            folders.push_back(program.FullPath() + L"\\VST3");
    }
    return folders;
}

bool IsSameFileName(const std::wstring& left, const std::wstring& right)
{
    return zetcore::string::EqualIgnoringCase(left, right);
}

} // namespace zetaudiofilterhost
