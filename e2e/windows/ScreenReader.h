#pragma once

#include <string>

#include <windows.h>

/// The answers of UI Automation about a window itself, before its tree.
struct SeenWindow
{
    std::wstring name;
    /// The number of UI Automation for the kind of control; 0 when there is none.
    long controlType = 0;
    /// The toolkit that has drawn the window.
    std::wstring framework;
};

/// Asks about the window as a screen reader does, through the system's own library for such programs. Call it
/// from a thread that has no window; the window's thread must handle its messages meanwhile. Throws
/// `std::runtime_error`.
SeenWindow AskAsScreenReader(HWND window);
