#include <zetaudiopluginhostui/Module.h>

#include <gtest/gtest.h>

#include "module/ModuleHandle.h"
#include "module/ModuleResources.h"
#include "testing/ThisProgram.h"

namespace zetaudiopluginhostui {
namespace {

class Module : public ::testing::Test
{
  protected:
    ~Module() override { Terminate(); }
};

TEST_F(Module, InitializeTwiceReturnsTrueTwiceAndBuildsOneResourceManager)
{
    EXPECT_TRUE(Initialize());
    const auto* const resources = GetModuleResources();
    ASSERT_NE(resources, nullptr);
    EXPECT_TRUE(Initialize());
    EXPECT_EQ(GetModuleResources(), resources);
}

TEST_F(Module, TerminateWithoutInitializeDoesNothing)
{
    Terminate();
    Terminate();
    EXPECT_EQ(GetModuleResources(), nullptr);
}

TEST_F(Module, ThereAreNoResourcesBeforeInitializeAndAfterTerminate)
{
    EXPECT_EQ(GetModuleResources(), nullptr);
    Initialize();
    Terminate();
    EXPECT_EQ(GetModuleResources(), nullptr);
}

TEST_F(Module, CanBeInitializedAgainAfterTerminate)
{
    Initialize();
    Terminate();
    EXPECT_TRUE(Initialize());
    EXPECT_NE(GetModuleResources(), nullptr);
}

TEST_F(Module, ItsResourcesAreThoseOfTheModuleThatItsCodeIsIn)
{
    Initialize();
    // In this program the module's code is the program's own.
    ASSERT_NE(OwnModuleHandle(), nullptr);
    EXPECT_EQ(OwnModuleHandle(), HandleOfThisProgram());
    EXPECT_EQ(GetModuleResources()->Module(), OwnModuleHandle());
    EXPECT_FALSE(GetModuleResources()->LoadResource("UnsupportedAudioPlugIns", "xml").empty());
}

} // namespace
} // namespace zetaudiopluginhostui
