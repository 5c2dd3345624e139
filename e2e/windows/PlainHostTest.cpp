#include <array>
#include <chrono>
#include <cstdio>
#include <future>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PlainHost.h"
#include "ProgramFolder.h"
#include "ScreenReader.h"

namespace {

namespace fs = std::filesystem;
using zetaudiopluginhostui::AudioPluginManagerSettings;

/// `UiaRootObjectId` of the system's UI Automation headers, which not every compiler has.
constexpr LPARAM uiAutomationRoot = -25;
/// `UIA_WindowControlTypeId`.
constexpr long windowControlType = 50032;

/// The frame of a window as the module saves it: the place of its content.
RECT ContentOnScreen(HWND window)
{
    RECT content{};
    ::GetClientRect(window, &content);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&content), 2);
    return content;
}

void PressKey(HWND window, WPARAM key)
{
    const UINT scanCode = ::MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC);
    ::PostMessageW(window, WM_KEYDOWN, key, static_cast<LPARAM>(scanCode << 16 | 1u));
    ::PostMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(scanCode << 16 | 0xC0000001u));
}

/// A host with a user's folder of its own. A key closes its dialog.
class PlainHostTest : public testing::Test
{
  protected:
    PlainHostTest()
    {
        std::array<wchar_t, MAX_PATH> path{};
        ::GetTempPathW(static_cast<DWORD>(path.size()), path.data());
        folder = fs::path(path.data()) / ("plainhost" + std::to_string(::GetCurrentProcessId()));
        fs::create_directories(folder);
        ::SetEnvironmentVariableW(L"APPDATA", folder.c_str());
        ::SetEnvironmentVariableW(L"QT_QPA_PLATFORM", nullptr);
    }
    ~PlainHostTest() override
    {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }

    /// Opens the manager, moves it, lets a screen reader look when the test wants it, and presses the keys.
    bool OpenAndPress(PlainHost& host, const std::vector<WPARAM>& keys)
    {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        bool moved = false, pressed = false;
        return host.OpenManager(settings, [this, &host, &moved, &pressed, &keys, limit] {
            const HWND dialog = host.FindDialog();
            if (dialog && !moved) {
                moved = true;
                LookAndMove(host.Window(), dialog);
            }
            if (dialog && !pressed && !IsReading()) {
                pressed = true;
                for (const WPARAM key : keys)
                    PressKey(dialog, key);
            }
            // Only the dialog itself can end its event loop.
            if (std::chrono::steady_clock::now() > limit) {
                std::puts(pressed ? "the dialog does not close"
                                  : "there is no dialog over the host's window");
                std::fflush(stdout);
                ::TerminateProcess(::GetCurrentProcess(), 1);
            }
        });
    }

    void LookAndMove(HWND host, HWND dialog)
    {
        ++dialogsSeen;
        hostWasEnabled = ::IsWindowEnabled(host) != FALSE;
        openedAt = ContentOnScreen(dialog);
        ::SetWindowPos(dialog, nullptr, 131, 97, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        closedAt = ContentOnScreen(dialog);
        wchar_t text[64] = {};
        ::GetWindowTextW(dialog, text, 64);
        title = text;
        if (asksForTree) {
            answerToScreenReader = ::SendMessageW(dialog, WM_GETOBJECT, 0, uiAutomationRoot);
            reader = std::async(std::launch::async, AskAsScreenReader, dialog);
        }
    }

    /// The screen reader's questions are answered by this thread, so it must not wait for them.
    bool IsReading() const
    {
        return reader.valid() && reader.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
    }

    void ExpectBoundsAre(const RECT& content) const
    {
        EXPECT_EQ(settings.dialogBounds.left, content.left);
        EXPECT_EQ(settings.dialogBounds.top, content.top);
        EXPECT_EQ(settings.dialogBounds.width, content.right - content.left);
        EXPECT_EQ(settings.dialogBounds.height, content.bottom - content.top);
    }

    std::size_t SavedFiles() const
    {
        std::size_t count = 0;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
            count += entry.is_regular_file() ? 1 : 0;
        return count;
    }

    fs::path folder;
    AudioPluginManagerSettings settings;
    int dialogsSeen = 0;
    std::wstring title;
    /// Says that the dialog is asked as a screen reader would ask it.
    bool asksForTree = false;
    LRESULT answerToScreenReader = 0;
    std::future<SeenWindow> reader;
    bool hostWasEnabled = true;
    RECT openedAt{}, closedAt{};
};

TEST_F(PlainHostTest, ReturnClosesTheDialogAndTheHostGetsItsSettingsAndItsWindowBack)
{
    PlainHost host(ProgramFolder() / "zetaudiopluginhostui.dll");
    settings.rescanExisting = true;
    settings.hostFlag = false;

    // The list has the first focus. Return means OK there.
    OpenAndPress(host, {VK_RETURN});

    ASSERT_EQ(dialogsSeen, 1);
    EXPECT_FALSE(hostWasEnabled) << "the host's window took input while the dialog was open";
    EXPECT_TRUE(::IsWindowEnabled(host.Window()));
    EXPECT_EQ(::GetActiveWindow(), host.Window());
    EXPECT_EQ(host.FindDialog(), nullptr);
    EXPECT_GE(settings.dialogBounds.width, 1);
    ExpectBoundsAre(closedAt);
    EXPECT_TRUE(settings.rescanExisting);
    EXPECT_FALSE(settings.hostFlag);
    EXPECT_GE(SavedFiles(), 1u);
}

TEST_F(PlainHostTest, EscapeClosesTheDialogToo)
{
    PlainHost host(ProgramFolder() / "zetaudiopluginhostui.dll");

    EXPECT_FALSE(OpenAndPress(host, {VK_ESCAPE}));

    ASSERT_EQ(dialogsSeen, 1);
    EXPECT_FALSE(hostWasEnabled);
    EXPECT_TRUE(::IsWindowEnabled(host.Window()));
    ExpectBoundsAre(closedAt);
}

TEST_F(PlainHostTest, TheDialogGivesScreenReadersItsNameAndItsTree)
{
    PlainHost host(ProgramFolder() / "zetaudiopluginhostui.dll");
    asksForTree = true;

    OpenAndPress(host, {VK_ESCAPE});

    ASSERT_EQ(dialogsSeen, 1);
    EXPECT_EQ(title, L"Audio Plug-In Manager");
    // This is the message with which UI Automation asks a window for the root of its tree.
    EXPECT_NE(answerToScreenReader, 0);
    const SeenWindow seen = reader.get();
    EXPECT_EQ(seen.name, L"Audio Plug-In Manager");
    EXPECT_EQ(seen.controlType, windowControlType);
    // The answer is the dialog's own, and not what the system says of any window.
    EXPECT_EQ(seen.framework, L"Qt");
}

TEST_F(PlainHostTest, TheDialogOpensWhereTheSettingsSay)
{
    PlainHost host(ProgramFolder() / "zetaudiopluginhostui.dll");
    OpenAndPress(host, {VK_ESCAPE});
    const auto bounds = settings.dialogBounds;

    OpenAndPress(host, {VK_ESCAPE});

    ASSERT_EQ(dialogsSeen, 2);
    EXPECT_EQ(openedAt.left, bounds.left);
    EXPECT_EQ(openedAt.top, bounds.top);
    EXPECT_EQ(openedAt.right - openedAt.left, bounds.width);
    EXPECT_EQ(openedAt.bottom - openedAt.top, bounds.height);
}

} // namespace
