#include <zetui/utility/OS_ResourceManager.h>

#include <dlfcn.h>

#include <gtest/gtest.h>

extern "C" {
void AddressInResources();
void AddressWithoutResources();
}

namespace zetui::utility {
namespace {

using Bytes = std::vector<unsigned char>;

ModuleHandle ModuleAt(void (*function)())
{
    Dl_info info{};
    EXPECT_NE(::dladdr(reinterpret_cast<void*>(function), &info), 0);
    return info.dli_fbase;
}

TEST(OS_ResourceManager, FindsAResourceByNameAndType)
{
    const OS_ResourceManager manager(ModuleAt(AddressInResources));
    EXPECT_EQ(manager.LoadResource("PlugInList", "xml"),
              (Bytes{'<', 'l', 'i', 's', 't', '/', '>', '\r', '\n'}));
    EXPECT_EQ(manager.LoadResource("PlugInList", "layout"), (Bytes{0, 1, 2, 255}));
}

TEST(OS_ResourceManager, GivesNothingForAnUnknownNameOrType)
{
    const OS_ResourceManager manager(ModuleAt(AddressInResources));
    EXPECT_EQ(manager.LoadResource("pluginlist", "xml"), Bytes{});
    EXPECT_EQ(manager.LoadResource("PlugInList", "png"), Bytes{});
}

TEST(OS_ResourceManager, GivesNothingForAModuleWithoutResourcesEvenIfALibraryThatItUsesHasThem)
{
    const OS_ResourceManager manager(ModuleAt(AddressWithoutResources));
    EXPECT_EQ(manager.LoadResource("PlugInList", "xml"), Bytes{});
}

TEST(OS_ResourceManager, GivesNothingForTheProgramItselfAndForNoModule)
{
    static int inThisProgram = 0;
    Dl_info info{};
    ASSERT_NE(::dladdr(&inThisProgram, &info), 0);
    EXPECT_EQ(OS_ResourceManager(info.dli_fbase).LoadResource("PlugInList", "xml"), Bytes{});
    EXPECT_EQ(OS_ResourceManager(nullptr).LoadResource("PlugInList", "xml"), Bytes{});
}

TEST(OS_ResourceManager, RemembersItsModule)
{
    const ModuleHandle module = ModuleAt(AddressInResources);
    EXPECT_EQ(OS_ResourceManager(module).Module(), module);
}

} // namespace
} // namespace zetui::utility
