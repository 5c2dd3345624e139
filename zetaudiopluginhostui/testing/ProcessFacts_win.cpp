// Writes facts about its own process to the file that the environment's ZET_PROCESS_FACTS names, and ends.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <windows.h>

namespace {

/// The variable holds a handle as a number. True when that is a handle of this process too.
bool HasHandle(const wchar_t* variable)
{
    const wchar_t* const number = ::_wgetenv(variable);
    DWORD flags = 0;
    return number && ::GetHandleInformation(reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(
                                                std::wcstoull(number, nullptr, 10))),
                                            &flags) != 0;
}

} // namespace

int main(int argc, char**)
{
    const wchar_t* const path = ::_wgetenv(L"ZET_PROCESS_FACTS");
    if (!path)
        return 1;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    ::GetStartupInfoW(&startup);
    const std::wstring temporary = std::wstring(path) + L".new";
    std::ofstream file{std::filesystem::path(temporary)};
    file << "arguments " << (argc > 0 ? argc - 1 : 0) << "\n";
    file << "folder " << std::filesystem::current_path().string() << "\n";
    file << "start-up flags " << startup.dwFlags << "\n";
    file << "inherited " << HasHandle(L"ZET_INHERITABLE_HANDLE") << "\n";
    file << "visible console " << (::GetConsoleWindow() && ::IsWindowVisible(::GetConsoleWindow())) << "\n";
    file.close();
    std::filesystem::rename(temporary, path);
    return 0;
}
