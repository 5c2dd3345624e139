#include "screen/ForeignWindow.h"

#include <cstdint>
#include <cstdlib>
#include <memory>

#include <QGuiApplication>
#include <xcb/xcb.h>

namespace zetui::ui {

namespace {

struct Free
{
    void operator()(void* reply) const { std::free(reply); }
};
template<typename T>
using Reply = std::unique_ptr<T, Free>;

/// Null where windows are not those of an X server.
xcb_connection_t* Connection()
{
    auto* const application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return application ? application->connection() : nullptr;
}

} // namespace

// X11 and Wayland leave that to the dialog's modality hint and the window manager.
bool EnableForeignWindow(HWND, bool)
{
    return false;
}

// The window system is asked, because Qt's object for a foreign window has no place, whether the window
// exists or not.
std::optional<zetcore::geom::RectT<int>> ForeignWindowPlace(HWND window)
{
    xcb_connection_t* const connection = Connection();
    if (!connection)
        return std::nullopt;
    const auto id = static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(window));
    xcb_generic_error_t* problem = nullptr;
    const Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, id), &problem));
    const Reply<xcb_generic_error_t> sizeProblem(problem);
    if (!size)
        return std::nullopt;
    problem = nullptr;
    // The window's own coordinates are those inside its frame.
    const Reply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
        connection, xcb_translate_coordinates(connection, id, size->root, 0, 0), &problem));
    const Reply<xcb_generic_error_t> cornerProblem(problem);
    if (!corner)
        return std::nullopt;
    return zetcore::geom::RectT<int>{corner->dst_x, corner->dst_y, size->width, size->height};
}

// A transient parent is enough there.
void SetForeignOwner(HWND, HWND) {}

} // namespace zetui::ui
