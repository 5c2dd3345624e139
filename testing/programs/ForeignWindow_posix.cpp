// A program with a window that no toolkit of ours has made: zetforeignwindow FILE. Writes the window's number
// into the file, says "window is there" on standard error, and keeps the window until it is ended.

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <xcb/xcb.h>

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2)
        return 2;
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0)
        return 1;
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen.root, 300, 200, 600, 500, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, XCB_CW_BACK_PIXEL,
                      &screen.white_pixel);
    xcb_map_window(connection, window);
    // The answer comes after the server has carried out everything before.
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    std::ofstream(arguments[1]) << window;
    std::fputs("window is there\n", stderr);
    while (xcb_generic_event_t* const event = xcb_wait_for_event(connection))
        std::free(event);
    return 0;
}
