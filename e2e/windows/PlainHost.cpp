#include "PlainHost.h"

#include <stdexcept>
#include <utility>

namespace {

using zetaudiopluginhostui::AudioPluginManagerSettings;

constexpr wchar_t windowClass[] = L"ZetPlainHost";
constexpr UINT_PTR timer = 1;
constexpr UINT timerMilliseconds = 50;

// The names as GCC spells them. In its calls, the first parameter of a member function is the object.
constexpr char initializeName[] = "_ZN20zetaudiopluginhostui10InitializeEv";
constexpr char terminateName[] = "_ZN20zetaudiopluginhostui9TerminateEv";
constexpr char getInstanceName[] = "_ZN20zetaudiopluginhostui18AudioPluginManager11GetInstanceEv";
constexpr char dialogName[] =
    "_ZN20zetaudiopluginhostui18AudioPluginManager21DoPluginManagerDialogEPKN5zetui7pixmill"
    "17SupplierInterfaceERNS_26AudioPluginManagerSettingsEP6HWND__";
using SimpleFunction = void();
using InitializeFunction = bool();
using GetInstanceFunction = void*();
using DialogFunction = bool(void* manager, const void* supplier, AudioPluginManagerSettings& settings,
                            HWND parent);

struct DialogSearch
{
    HWND owner;
    HWND found;
};

BOOL CALLBACK LookAtWindow(HWND window, LPARAM search)
{
    auto& wanted = *reinterpret_cast<DialogSearch*>(search);
    if (::IsWindowVisible(window) && ::GetWindow(window, GW_OWNER) == wanted.owner)
        wanted.found = window;
    return wanted.found == nullptr;
}

} // namespace

PlainHost::PlainHost(const std::filesystem::path& moduleFile) : module(::LoadLibraryW(moduleFile.c_str()))
{
    if (!module)
        throw std::runtime_error("the module cannot be loaded: error " + std::to_string(::GetLastError()));
    WNDCLASSEXW description{};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = HandleMessage;
    description.hInstance = ::GetModuleHandleW(nullptr);
    description.lpszClassName = windowClass;
    ::RegisterClassExW(&description);
    window = ::CreateWindowExW(0, windowClass, L"A plain host", WS_OVERLAPPEDWINDOW, 40, 40, 900, 650,
                               nullptr, nullptr, description.hInstance, this);
    if (!window)
        throw std::runtime_error("there is no window: error " + std::to_string(::GetLastError()));
    ::ShowWindow(window, SW_SHOWNORMAL);
    ::SetForegroundWindow(window);
    Find<InitializeFunction>(initializeName)();
}

PlainHost::~PlainHost()
{
    Find<SimpleFunction>(terminateName)();
    ::DestroyWindow(window);
    ::UnregisterClassW(windowClass, ::GetModuleHandleW(nullptr));
}

bool PlainHost::OpenManager(AudioPluginManagerSettings& settings, std::function<void()> whileOpen)
{
    onTimer = std::move(whileOpen);
    ::SetTimer(window, timer, timerMilliseconds, nullptr);
    void* const manager = Find<GetInstanceFunction>(getInstanceName)();
    const bool changed = Find<DialogFunction>(dialogName)(manager, nullptr, settings, window);
    ::KillTimer(window, timer);
    onTimer = nullptr;
    return changed;
}

HWND PlainHost::FindDialog() const
{
    DialogSearch search{window, nullptr};
    ::EnumThreadWindows(::GetCurrentThreadId(), LookAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

LRESULT CALLBACK PlainHost::HandleMessage(HWND window, UINT message, WPARAM wide, LPARAM large)
{
    if (message == WM_NCCREATE) {
        const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(large);
        ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* const host = reinterpret_cast<PlainHost*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_TIMER && wide == timer && host && host->onTimer) {
        host->onTimer();
        return 0;
    }
    return ::DefWindowProcW(window, message, wide, large);
}

template<typename Function>
Function* PlainHost::Find(const char* name) const
{
    const FARPROC address = ::GetProcAddress(module, name);
    if (!address)
        throw std::runtime_error(std::string("the module does not export ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}
