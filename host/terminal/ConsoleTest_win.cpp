#include "terminal/Console.h"

#include <array>

#include <windows.h>

#include <gtest/gtest.h>

namespace zetaudiopluginmanager {
namespace {

/// A console of this process alone.
class OwnConsole : public testing::Test
{
  protected:
    OwnConsole()
    {
        ::FreeConsole();
        hasConsole = ::AllocConsole() != FALSE;
    }
    ~OwnConsole() override
    {
        ::FreeConsole();
        ::AttachConsole(ATTACH_PARENT_PROCESS);
    }

    bool hasConsole = false;
};

TEST_F(OwnConsole, ShowsUtf8WhileTheProgramRunsAndThenWhatItShowedBefore)
{
    constexpr UINT before = 850;
    ASSERT_TRUE(hasConsole);
    ASSERT_TRUE(::SetConsoleOutputCP(before));
    {
        const PreparedConsole prepared;
        EXPECT_EQ(::GetConsoleOutputCP(), UINT{CP_UTF8});
    }
    EXPECT_EQ(::GetConsoleOutputCP(), before);
}

/// The number of processes that have this process's console.
DWORD UsersOfConsole()
{
    std::array<DWORD, 8> processes{};
    return ::GetConsoleProcessList(processes.data(), static_cast<DWORD>(processes.size()));
}

/// A process without a console has no code page either.
bool HasConsole()
{
    return ::GetConsoleOutputCP() != 0;
}

TEST_F(OwnConsole, IsLeftWhenNobodyElseHasIt)
{
    ASSERT_TRUE(hasConsole);
    ASSERT_EQ(UsersOfConsole(), 1u);
    LeaveOwnConsole();
    EXPECT_FALSE(HasConsole());
}

TEST_F(OwnConsole, IsKeptWhileAnotherProgramHasIt)
{
    ASSERT_TRUE(hasConsole);
    wchar_t line[] = L"cmd.exe /k";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION shell{};
    ASSERT_TRUE(
        ::CreateProcessW(nullptr, line, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &shell));
    while (UsersOfConsole() < 2 && ::WaitForSingleObject(shell.hProcess, 1) == WAIT_TIMEOUT) {
    }
    EXPECT_EQ(UsersOfConsole(), 2u);
    LeaveOwnConsole();
    EXPECT_TRUE(HasConsole());
    ::TerminateProcess(shell.hProcess, 0);
    ::WaitForSingleObject(shell.hProcess, INFINITE);
    ::CloseHandle(shell.hThread);
    ::CloseHandle(shell.hProcess);
}

} // namespace
} // namespace zetaudiopluginmanager
