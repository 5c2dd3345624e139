#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include <windows.h>

#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>

/// The plainest host possible: it has one window of the system, uses no toolkit, and loads the module by
/// name. One object at a time; main thread.
class PlainHost
{
  public:
    /// Loads the module and makes the window visible. Throws `std::runtime_error`.
    explicit PlainHost(const std::filesystem::path& module);
    ~PlainHost();
    PlainHost(const PlainHost&) = delete;
    PlainHost& operator=(const PlainHost&) = delete;

    /// Opens the manager over the window. True when the manager says that the saved list has changed. As long
    /// as it is open, a timer of the host calls `whileOpen` now and then.
    bool OpenManager(zetaudiopluginhostui::AudioPluginManagerSettings& settings,
                     std::function<void()> whileOpen);

    HWND Window() const noexcept { return window; }
    /// The visible window of this thread whose owner is the host's window; null when there is none.
    HWND FindDialog() const;

  private:
    static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM wide, LPARAM large);

    template<typename Function>
    Function* Find(const char* name) const;

    HMODULE module = nullptr;
    HWND window = nullptr;
    std::function<void()> onTimer;
};
