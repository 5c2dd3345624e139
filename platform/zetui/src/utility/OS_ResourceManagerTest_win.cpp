#include <zetui/utility/OS_ResourceManager.h>

#include <memory>
#include <type_traits>

#include <windows.h>

#include <gtest/gtest.h>

namespace zetui::utility {
namespace {

using Bytes = std::vector<unsigned char>;

struct FreeIt
{
    void operator()(HMODULE module) const { ::FreeLibrary(module); }
};

/// One with a list and a layout, and one without resources that imports from it.
class OS_ResourceManagerTest : public testing::Test
{
  protected:
    using Module = std::unique_ptr<std::remove_pointer_t<HMODULE>, FreeIt>;
    const Module with{::LoadLibraryW(L"zetuiTestResources.dll")};
    const Module without{::LoadLibraryW(L"zetuiTestWithoutResources.dll")};
    const Bytes list{'<', 'l', 'i', 's', 't', '/', '>', '\r', '\n'};
};

TEST_F(OS_ResourceManagerTest, FindsAResourceByNameAndTypeWhateverTheirCase)
{
    ASSERT_TRUE(with);
    const OS_ResourceManager manager(with.get());
    EXPECT_EQ(manager.LoadResource("PlugInList", "xml"), list);
    EXPECT_EQ(manager.LoadResource("pluginlist", "XML"), list);
    EXPECT_EQ(manager.LoadResource("PlugInList", "layout"), (Bytes{0, 1, 2, 255}));
}

TEST_F(OS_ResourceManagerTest, GivesNothingForAnUnknownNameOrType)
{
    const OS_ResourceManager manager(with.get());
    EXPECT_EQ(manager.LoadResource("PlugInLists", "xml"), Bytes{});
    EXPECT_EQ(manager.LoadResource("PlugInList", "png"), Bytes{});
    EXPECT_EQ(manager.LoadResource("", ""), Bytes{});
}

TEST_F(OS_ResourceManagerTest, GivesNothingForAModuleWithoutResourcesEvenIfALibraryThatItUsesHasThem)
{
    ASSERT_TRUE(without);
    EXPECT_EQ(OS_ResourceManager(without.get()).LoadResource("PlugInList", "xml"), Bytes{});
}

TEST_F(OS_ResourceManagerTest, GivesNothingForTheProgramItselfAndForNoModule)
{
    EXPECT_EQ(OS_ResourceManager(::GetModuleHandleW(nullptr)).LoadResource("PlugInList", "xml"), Bytes{});
    EXPECT_EQ(OS_ResourceManager(nullptr).LoadResource("PlugInList", "xml"), Bytes{});
}

TEST_F(OS_ResourceManagerTest, RemembersItsModule)
{
    EXPECT_EQ(OS_ResourceManager(with.get()).Module(), with.get());
}

} // namespace
} // namespace zetui::utility
