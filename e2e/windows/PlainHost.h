#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include <windows.h>

#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>

/// A host as plain as hosts come: one window of the system's, no toolkit, and the module loaded by name. One
/// object at a time; main thread.
class PlainHost
{
  public:
    /// Loads the module and makes the window visible. Throws `std::runtime_error`.
    explicit PlainHost(const std::filesystem::path& module);
    ~PlainHost();
    PlainHost(const PlainHost&) = delete;
    PlainHost& operator=(const PlainHost&) = delete;

    /// Opens the manager over the window; true when it says that the saved list has changed. `whileOpen` is
    /// called now and then by a timer of the host's own, as long as it is open.
    bool OpenManager(zetaudiopluginhostui::AudioPluginManagerSettings& settings,
                     std::function<void()> whileOpen);

    HWND Window() const noexcept { return window; }
    /// The visible window of this thread that belongs to the host's own; null when there is none.
    HWND FindDialog() const;

  private:
    static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM wide, LPARAM large);

    template<typename Function>
    Function* Find(const char* name) const;

    HMODULE module = nullptr;
    HWND window = nullptr;
    std::function<void()> onTimer;
};
