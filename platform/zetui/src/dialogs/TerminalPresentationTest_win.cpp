// These tests need a real console.
#include <zetui/dialogs/TerminalPresentation.h>

#include <cstdint>
#include <cstdio>
#include <memory>

#include <windows.h>

#include <gtest/gtest.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/Emulation.h>
#include <zettesting/HostFixture.h>
#include <zetui/dialogs/UI_ProgressDialog.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::dialogs {
namespace {

/// A console of this process alone, so that its Ctrl-C reaches nobody else.
class OwnConsole : public zettesting::HostFixture
{
  protected:
    OwnConsole()
    {
        ::FreeConsole();
        hasConsole = ::AllocConsole() != FALSE;
        // Off in processes that were started as a group of their own.
        ::SetConsoleCtrlHandler(nullptr, FALSE);
        zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
        SetPresentation(presentation);
    }
    ~OwnConsole() override
    {
        SetPresentation(nullptr);
        ::FreeConsole();
        ::AttachConsole(ATTACH_PARENT_PROCESS);
    }

    static void PressCtrlC() { ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0); }
    /// Wine hands on no Ctrl-Break. There this calls what the system calls in a process that gets one.
    static void PressCtrlBreak()
    {
        if (!zettesting::IsWine()) {
            ::GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, 0);
            return;
        }
        const HMODULE library = ::GetModuleHandleW(L"kernelbase.dll");
        ASSERT_NE(library, nullptr);
        const auto routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(
            reinterpret_cast<void*>(::GetProcAddress(library, "CtrlRoutine")));
        ASSERT_NE(routine, nullptr);
        routine(reinterpret_cast<void*>(static_cast<std::uintptr_t>(CTRL_BREAK_EVENT)));
    }

    bool hasConsole = false;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream{
        std::fopen((folder / "output").string().c_str(), "wb"), &std::fclose};
    std::shared_ptr<TerminalPresentation> presentation = std::make_shared<TerminalPresentation>(stream.get());
};

TEST_F(OwnConsole, CtrlCIsTheCancelButtonOfAnOpenProgressDialog)
{
    ASSERT_TRUE(hasConsole);
    const auto dialog = utility::MakeIntrusive<UI_ProgressDialog>(nullptr, "Scanning", "",
                                                                  ui::WindowVariant(), false, true, false);
    zetcore::threads::AsyncCallFromMainThread(&PressCtrlC, 0);
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kCancel);
    EXPECT_EQ(presentation->GetCounts().cancelled, 1);
}

TEST_F(OwnConsole, CtrlCIsReportedOnce)
{
    ASSERT_TRUE(hasConsole);
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    PressCtrlC();
    while (!progress->ProcessEvents(true)) {
    }
    EXPECT_FALSE(progress->ProcessEvents(false));
    EXPECT_EQ(presentation->GetCounts().cancelled, 1);
}

TEST_F(OwnConsole, CtrlBreakIsTheCancelButtonToo)
{
    ASSERT_TRUE(hasConsole);
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    PressCtrlBreak();
    while (!progress->ProcessEvents(true)) {
    }
    EXPECT_EQ(presentation->GetCounts().cancelled, 1);
}

} // namespace
} // namespace zetui::dialogs
