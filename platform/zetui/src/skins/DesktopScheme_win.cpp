#include "skins/DesktopScheme.h"

#include <utility>

#include <QObject>
#include <QWinEventNotifier>
#include <zetcore/filesupport/handles/Handle.h>

#include <windows.h>

namespace zetui::skins {

using zetcore::filesupport::Handle;

namespace {

constexpr const wchar_t* keyName = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";

std::optional<bool> Preference()
{
    DWORD lightTheme = 1;
    DWORD size = sizeof lightTheme;
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, keyName, L"AppsUseLightTheme", RRF_RT_REG_DWORD,
                                        nullptr, &lightTheme, &size);
    if (status != ERROR_SUCCESS)
        return std::nullopt;
    return lightTheme == 0;
}

} // namespace

/// The key tells of a change once, so it is asked to tell again after each.
struct DesktopScheme::State
{
    explicit State(std::function<void()> callback)
        : changed(std::move(callback)), dark(Preference()),
          event(CreateEventW(nullptr, FALSE, FALSE, nullptr))
    {
        if (!event.IsOpen() ||
            RegOpenKeyExW(HKEY_CURRENT_USER, keyName, 0, KEY_NOTIFY, &key) != ERROR_SUCCESS || !Listen())
            return;
        notifier = std::make_unique<QWinEventNotifier>(event.Get());
        QObject::connect(notifier.get(), &QWinEventNotifier::activated, notifier.get(), [this] { Look(); });
    }
    ~State()
    {
        notifier.reset();
        if (key)
            RegCloseKey(key);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    bool Listen() const
    {
        return RegNotifyChangeKeyValue(key, FALSE, REG_NOTIFY_CHANGE_LAST_SET, event.Get(), TRUE) ==
               ERROR_SUCCESS;
    }
    void Look()
    {
        // First listen and then look: a change in between is told again.
        Listen();
        const auto before = std::exchange(dark, Preference());
        if (dark != before)
            changed();
    }

    const std::function<void()> changed;
    std::optional<bool> dark;
    const Handle event;
    HKEY key = nullptr;
    std::unique_ptr<QWinEventNotifier> notifier;
};

DesktopScheme::DesktopScheme(std::function<void()> changed)
    : state(std::make_unique<State>(std::move(changed)))
{}

DesktopScheme::~DesktopScheme() = default;

std::optional<bool> DesktopScheme::AsksForDark() const
{
    return state->dark;
}

} // namespace zetui::skins
