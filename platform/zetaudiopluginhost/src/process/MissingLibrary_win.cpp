#include "process/MissingLibrary_win.h"

#include <windows.h>

#include "header/ModuleFileHeader.h"
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

namespace zetaudiopluginhost {

namespace {

using FolderFunction = UINT(WINAPI*)(LPWSTR, UINT);

std::wstring SystemFolder(FolderFunction ask)
{
    std::wstring folder(MAX_PATH, L'\0');
    const UINT length = ask(folder.data(), MAX_PATH);
    folder.resize(length < MAX_PATH ? length : 0);
    return folder;
}

/// The folders in which the system looks for what a module needs, when it is loaded by its whole path.
std::wstring Places(const std::wstring& module)
{
    using namespace zetcore::filesupport;
    return FromNativePath(ToNativePath(module).parent_path()) + L";" + SystemFolder(&GetSystemDirectoryW) +
           L";" + SystemFolder(&GetWindowsDirectoryW) + L";" +
           zetcore::utility::EnvironmentVariable("PATH").value_or(L"");
}

/// Such names stand for parts of the system, which has no files of these names.
bool IsNameForSystem(const std::wstring& name)
{
    return name.starts_with(L"api-ms-") || name.starts_with(L"ext-ms-");
}

} // namespace

std::string FindMissingLibrary(const std::wstring& module)
{
    try {
        FileByteReader file(module);
        const std::wstring places = Places(module);
        for (const std::string& name : PeImports(file)) {
            const std::wstring wide = zetcore::string::UTF8to16(name);
            if (!IsNameForSystem(wide) && !GetModuleHandleW(wide.c_str()) &&
                SearchPathW(places.c_str(), wide.c_str(), nullptr, 0, nullptr, nullptr) == 0)
                return name;
        }
    } catch (const zetcore::filesupport::file_exception&) {
        // The system has just read it, so it has gone in between. Its own words are enough then.
    }
    return {};
}

} // namespace zetaudiopluginhost
