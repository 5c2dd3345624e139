#include "process/ProcessState.h"

#include <array>
#include <cfenv>
#include <clocale>
#include <csignal>
#include <exception>
#include <locale>
#include <string>

#include <windows.h>

namespace zetaudiopluginhost {

namespace {

constexpr std::array watchedSignals = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGINT, SIGTERM};
using SignalHandler = void (*)(int);

std::wstring CurrentFolder()
{
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

std::wstring DllFolder()
{
    std::wstring folder(GetDllDirectoryW(0, nullptr), L'\0');
    folder.resize(GetDllDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

std::string CLocale()
{
    const char* name = std::setlocale(LC_ALL, nullptr);
    return name != nullptr ? name : std::string();
}

SignalHandler HandlerOf(int signal)
{
    // The handler can only be read by setting it.
    const SignalHandler handler = std::signal(signal, SIG_DFL);
    if (handler != SIG_ERR)
        std::signal(signal, handler);
    return handler;
}

LPTOP_LEVEL_EXCEPTION_FILTER ExceptionFilter()
{
    const LPTOP_LEVEL_EXCEPTION_FILTER filter = SetUnhandledExceptionFilter(nullptr);
    SetUnhandledExceptionFilter(filter);
    return filter;
}

} // namespace

struct ProcessState::Saved
{
    std::wstring folder = CurrentFolder();
    std::wstring dllFolder = DllFolder();
    std::string cLocale = CLocale();
    std::locale cppLocale;
    std::terminate_handler terminate = std::get_terminate();
    std::fenv_t floatingPoint{};
    std::array<SignalHandler, watchedSignals.size()> handlers{};
    LPTOP_LEVEL_EXCEPTION_FILTER filter = ExceptionFilter();
    UINT errorMode = GetErrorMode();
};

ProcessState::ProcessState() : saved(std::make_unique<Saved>())
{
    std::fegetenv(&saved->floatingPoint);
    for (std::size_t i = 0; i < watchedSignals.size(); ++i)
        saved->handlers[i] = HandlerOf(watchedSignals[i]);
}

ProcessState::~ProcessState() = default;

void ProcessState::Restore() const
{
    if (!saved->folder.empty() && CurrentFolder() != saved->folder)
        SetCurrentDirectoryW(saved->folder.c_str());
    if (DllFolder() != saved->dllFolder)
        SetDllDirectoryW(saved->dllFolder.empty() ? nullptr : saved->dllFolder.c_str());
    if (std::locale() != saved->cppLocale)
        std::locale::global(saved->cppLocale);
    if (CLocale() != saved->cLocale)
        std::setlocale(LC_ALL, saved->cLocale.c_str());
    if (std::get_terminate() != saved->terminate)
        std::set_terminate(saved->terminate);
    std::fesetenv(&saved->floatingPoint);
    for (std::size_t i = 0; i < watchedSignals.size(); ++i) {
        if (saved->handlers[i] != SIG_ERR)
            std::signal(watchedSignals[i], saved->handlers[i]);
    }
    SetUnhandledExceptionFilter(saved->filter);
    if (GetErrorMode() != saved->errorMode)
        SetErrorMode(saved->errorMode);
}

} // namespace zetaudiopluginhost
