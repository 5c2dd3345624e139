#include <zettesting/Emulation.h>

#include <windows.h>

namespace zettesting {

bool IsWine()
{
    const HMODULE system = ::GetModuleHandleW(L"ntdll.dll");
    return system && ::GetProcAddress(system, "wine_get_version") != nullptr;
}

} // namespace zettesting
