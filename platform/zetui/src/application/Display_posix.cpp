#include "application/Display.h"

#include <cstdlib>
#include <memory>

#include <dlfcn.h>

#include <zetui/application/Application.h>

namespace zetui::ui {

namespace {

bool IsSet(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value && *value;
}

struct CloseLibrary
{
    void operator()(void* library) const { ::dlclose(library); }
};
using Library = std::unique_ptr<void, CloseLibrary>;

template<typename Function>
Function* FunctionOf(const Library& library, const char* name)
{
    return library ? reinterpret_cast<Function*>(::dlsym(library.get(), name)) : nullptr;
}

/// Without the library nobody can be asked, and the answer is true: Qt may have a way of its own.
bool X11Answers()
{
    const Library library(::dlopen("libxcb.so.1", RTLD_LAZY | RTLD_LOCAL));
    auto* const connect = FunctionOf<void*(const char*, int*)>(library, "xcb_connect");
    auto* const hasError = FunctionOf<int(void*)>(library, "xcb_connection_has_error");
    auto* const disconnect = FunctionOf<void(void*)>(library, "xcb_disconnect");
    if (!connect || !hasError || !disconnect)
        return true;
    void* const connection = connect(nullptr, nullptr);
    const bool answers = hasError(connection) == 0;
    disconnect(connection);
    return answers;
}

bool WaylandAnswers()
{
    const Library library(::dlopen("libwayland-client.so.0", RTLD_LAZY | RTLD_LOCAL));
    auto* const connect = FunctionOf<void*(const char*)>(library, "wl_display_connect");
    auto* const disconnect = FunctionOf<void(void*)>(library, "wl_display_disconnect");
    if (!connect || !disconnect)
        return true;
    void* const connection = connect(nullptr);
    if (!connection)
        return false;
    disconnect(connection);
    return true;
}

} // namespace

bool IsDisplayAvailable()
{
    const char* const choice = std::getenv("QT_QPA_PLATFORM");
    return (choice && ChoosesPlatformWithoutWindowSystem(choice)) || IsSet("DISPLAY") ||
           IsSet("WAYLAND_DISPLAY");
}

bool WindowSystemAnswers()
{
    const char* const choice = std::getenv("QT_QPA_PLATFORM");
    return (choice && ChoosesPlatformWithoutWindowSystem(choice)) || (IsSet("DISPLAY") && X11Answers()) ||
           (IsSet("WAYLAND_DISPLAY") && WaylandAnswers());
}

} // namespace zetui::ui
