#include "process/LoadedModule.h"

#include <system_error>
#include <utility>

#include <windows.h>

#include "process/MissingLibrary_win.h"
#include <zetcore/filesupport/handles/SystemError.h>

namespace zetaudiopluginhost {

namespace {

/// The system says that a module is not found where it means another one that this one needs.
std::string Words(const std::wstring& path, DWORD error)
{
    const std::string missing = error == ERROR_MOD_NOT_FOUND ? FindMissingLibrary(path) : std::string();
    return (missing.empty() ? missing : missing + ": ") +
           zetcore::filesupport::DescribeError({static_cast<int>(error), std::system_category()});
}

} // namespace

LoadedModule::LoadedModule(const std::wstring& path)
{
    // A missing library must come back as an error, not as a dialog.
    DWORD modeBefore = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &modeBefore);
    handle = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    const DWORD error = GetLastError();
    SetThreadErrorMode(modeBefore, nullptr);
    if (handle == nullptr)
        throw ModuleLoadError(Words(path, error), error == ERROR_DLL_INIT_FAILED || error == ERROR_NOACCESS);
}

LoadedModule::AnyFunction LoadedModule::FindAddress(const char* name) const
{
    return reinterpret_cast<AnyFunction>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

void LoadedModule::Unload()
{
    if (void* loaded = std::exchange(handle, nullptr))
        FreeLibrary(static_cast<HMODULE>(loaded));
}

} // namespace zetaudiopluginhost
