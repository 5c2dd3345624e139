#include "filesupport/paths/PlatformFolders.h"

#include <windows.h>

#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/utility/EnvironmentVariable.h>

#include "filesupport/paths/CheckedPath.h"

namespace zetcore::filesupport {

std::wstring FindExecutableFolder()
{
    std::wstring program(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            ::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
        if (length == 0)
            return {};
        if (length < program.size()) {
            program.resize(length);
            return FromNativePath(ToNativePath(program).parent_path());
        }
        program.resize(program.size() * 2);
    }
}

std::wstring FindHomeFolder()
{
    return WithoutTrailingSeparators(utility::EnvironmentVariable("USERPROFILE").value_or(L""));
}

std::wstring FindConfigFolder()
{
    if (const auto roaming = utility::EnvironmentVariable("APPDATA"))
        return WithoutTrailingSeparators(*roaming);
    return FindHomeFolder() + L"\\AppData\\Roaming";
}

std::wstring FindRuntimeFolder()
{
    std::wstring folder(MAX_PATH + 2, L'\0');
    const DWORD length = ::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    if (length == 0 || length >= folder.size())
        throw file_exception("find", L"the temporary folder", LastSystemError());
    folder.resize(length);
    return WithoutTrailingSeparators(folder);
}

} // namespace zetcore::filesupport
