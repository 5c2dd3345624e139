#include "skins/DesktopScheme.h"

#include "testing/WindowsFixture.h"

#include <windows.h>

namespace zetui::skins {
namespace {

/// The user's own setting is put back after the test.
class AppsUseLightTheme
{
  public:
    AppsUseLightTheme()
    {
        RegCreateKeyExW(HKEY_CURRENT_USER,
                        L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize", 0, nullptr, 0,
                        KEY_ALL_ACCESS, nullptr, &key, nullptr);
        DWORD size = sizeof before;
        wasThere = RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&before), &size) ==
                   ERROR_SUCCESS;
    }
    ~AppsUseLightTheme()
    {
        if (wasThere)
            Set(before);
        else
            RegDeleteValueW(key, name);
        RegCloseKey(key);
    }
    AppsUseLightTheme(const AppsUseLightTheme&) = delete;
    AppsUseLightTheme& operator=(const AppsUseLightTheme&) = delete;

    void Set(DWORD light)
    {
        EXPECT_EQ(
            RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&light), sizeof light),
            ERROR_SUCCESS);
    }

  private:
    static constexpr const wchar_t* name = L"AppsUseLightTheme";
    HKEY key = nullptr;
    DWORD before = 1;
    bool wasThere = false;
};

class DesktopSetting : public WindowsFixture
{};

TEST_F(DesktopSetting, IsFollowedWhenTheUserChangesIt)
{
    AppsUseLightTheme setting;
    setting.Set(1);
    int changes = 0;
    const DesktopScheme desktop([&changes] { ++changes; });
    EXPECT_EQ(desktop.AsksForDark(), false);
    setting.Set(0);
    EXPECT_TRUE(WaitUntil([&] { return desktop.AsksForDark() == true; }));
    setting.Set(1);
    EXPECT_TRUE(WaitUntil([&] { return desktop.AsksForDark() == false; }));
    EXPECT_EQ(changes, 2);
}

} // namespace
} // namespace zetui::skins
