#include "report/SystemFacts.h"

#include <windows.h>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

namespace zetaudiopluginmanager {

namespace {

/// The path in the form "C:\Users\ANNALE~1". Empty where the drive has no such forms.
std::wstring ShortPath(const std::wstring& path)
{
    const DWORD length = ::GetShortPathNameW(path.c_str(), nullptr, 0);
    std::wstring text(length, L'\0');
    text.resize(length > 0 ? ::GetShortPathNameW(path.c_str(), text.data(), length) : 0);
    return text;
}

std::wstring SystemAccountName()
{
    constexpr DWORD longestName = 257;
    std::wstring name(longestName, L'\0');
    DWORD length = longestName;
    if (!::GetUserNameW(name.data(), &length) || length == 0)
        return {};
    name.resize(length - 1);
    return name;
}

} // namespace

std::string DescribeSystem()
{
    // GetVersionEx tells programs without a manifest of an older version.
    using Function = LONG(WINAPI*)(OSVERSIONINFOW*);
    const HMODULE library = ::GetModuleHandleW(L"ntdll.dll");
    const auto getVersion =
        library
            ? reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, "RtlGetVersion")))
            : nullptr;
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof(version);
    if (!getVersion || getVersion(&version) != 0)
        return "Windows, x86-64";
    return "Windows " + std::to_string(version.dwMajorVersion) + "." +
           std::to_string(version.dwMinorVersion) + "." + std::to_string(version.dwBuildNumber) + ", x86-64";
}

std::vector<std::wstring> HomeFolders()
{
    const std::wstring home = zetcore::filesupport::commondirs::HomeDir().FullPath();
    const std::wstring drive = zetcore::utility::EnvironmentVariable("HOMEDRIVE").value_or(L"");
    return {home, home.empty() ? home : ShortPath(home),
            drive + zetcore::utility::EnvironmentVariable("HOMEPATH").value_or(L"")};
}

std::vector<std::wstring> AccountNames()
{
    // The profile's folder may have another name than the account.
    return {SystemAccountName(), zetcore::utility::EnvironmentVariable("USERNAME").value_or(L""),
            zetcore::filesupport::File(zetcore::filesupport::commondirs::HomeDir().FullPath()).GetTitle()};
}

} // namespace zetaudiopluginmanager
