#include "ProgramFolder.h"

#include <stdexcept>
#include <string>

#include <windows.h>

std::filesystem::path ProgramFolder()
{
    std::wstring program(32768, L'\0');
    const DWORD length = ::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    if (length == 0 || length == program.size())
        throw std::runtime_error("the running program's file is not known");
    program.resize(length);
    return std::filesystem::path(program).parent_path();
}
