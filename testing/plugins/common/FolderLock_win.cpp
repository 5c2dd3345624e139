#include "FolderLock.h"

#include <functional>
#include <string>

#include <windows.h>

namespace zettestplugin {

namespace {

HANDLE mutex = nullptr;

bool Lock(DWORD milliseconds)
{
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                             GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<const wchar_t*>(&mutex), &module);
    std::wstring path(32768, L'\0');
    path.resize(::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    const std::wstring folder = path.substr(0, path.find_last_of(L"\\/"));
    // A mutex is a thread's, and may be taken again by it: two modules in a process do not keep each other
    // out.
    mutex = ::CreateMutexW(
        nullptr, FALSE,
        (L"Local\\zettestplugin-" + std::to_wstring(std::hash<std::wstring>()(folder))).c_str());
    const DWORD result = ::WaitForSingleObject(mutex, milliseconds);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

} // namespace

bool TakeFolderLock()
{
    return Lock(0);
}

void WaitForFolderLock()
{
    Lock(INFINITE);
}

void GiveUpFolderLock()
{
    ::ReleaseMutex(mutex);
    ::CloseHandle(mutex);
}

} // namespace zettestplugin
