#include "terminal/Console.h"

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

} // namespace
} // namespace zetaudiopluginmanager
