#include "process/SharedLibraries.h"

#include <filesystem>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetaudiopluginhost/PluginModuleScanner.h>
#include <zettesting/HostFixture.h>
#include <zettesting/TestPlugins.h>

namespace zetaudiopluginhost {
namespace {

class SharedLibrariesTest : public zettesting::HostFixture
{
  protected:
    std::filesystem::path Copy(const char* title) const
    {
        return zettesting::CopyTestPlugin("good/vst2_effect", folder.Path(), title);
    }
    static bool IsLoaded(const std::filesystem::path& library)
    {
        void* const handle = ::dlopen(library.c_str(), RTLD_LAZY | RTLD_NOLOAD);
        if (handle)
            ::dlclose(handle);
        return handle != nullptr;
    }
};

TEST_F(SharedLibrariesTest, StayWhenTheModuleThatBroughtThemGoes)
{
    const std::filesystem::path module = Copy("module"), brought = Copy("brought");
    SharedLibraries libraries(SharedLibraries::Keeps::All);
    for (int visit = 0; visit < 2; ++visit) {
        void* const first = ::dlopen(module.c_str(), RTLD_NOW);
        void* const second = ::dlopen(brought.c_str(), RTLD_NOW);
        ASSERT_TRUE(first && second) << ::dlerror();
        libraries.KeepAllBut(zettesting::ToWide(module));
        ::dlclose(second);
        ::dlclose(first);
        EXPECT_FALSE(IsLoaded(module));
        EXPECT_TRUE(IsLoaded(brought));
    }
}

TEST_F(SharedLibrariesTest, OfASystemStayAndAPluginsOwnAreLetGo)
{
    const std::filesystem::path module = Copy("module"), own = Copy("own");
    // Every program can load it, and this one does not need it.
    const std::filesystem::path systems = "libz.so.1";
    if (IsLoaded(systems))
        GTEST_SKIP() << "it is there already, and so it would stay anyway";
    SharedLibraries libraries(SharedLibraries::Keeps::Systems);
    for (int visit = 0; visit < 2; ++visit) {
        void* const first = ::dlopen(module.c_str(), RTLD_NOW);
        void* const second = ::dlopen(own.c_str(), RTLD_NOW);
        void* const third = ::dlopen(systems.c_str(), RTLD_NOW);
        ASSERT_TRUE(first && second && third) << ::dlerror();
        libraries.KeepAllBut(zettesting::ToWide(module));
        ::dlclose(third);
        ::dlclose(second);
        ::dlclose(first);
        EXPECT_FALSE(IsLoaded(module));
        EXPECT_TRUE(IsLoaded(own));
        libraries.LetGo();
        EXPECT_FALSE(IsLoaded(own)) << "a newer one would not be taken";
        EXPECT_TRUE(IsLoaded(systems));
    }
}

TEST_F(SharedLibrariesTest, OfAPluginGoAtTheLatestWithTheirKeeper)
{
    const std::filesystem::path module = Copy("module"), own = Copy("own");
    void* const second = ::dlopen(own.c_str(), RTLD_NOW);
    {
        SharedLibraries libraries(SharedLibraries::Keeps::Systems);
        libraries.KeepAllBut(zettesting::ToWide(module));
        ::dlclose(second);
        EXPECT_TRUE(IsLoaded(own));
    }
    EXPECT_FALSE(IsLoaded(own));
}

TEST_F(SharedLibrariesTest, OfAnotherModuleAreNotKeptWhenItIsVisitedItself)
{
    const std::filesystem::path module = Copy("module"), own = Copy("own");
    void* const brought = ::dlopen(own.c_str(), RTLD_NOW);
    SharedLibraries libraries(SharedLibraries::Keeps::Systems);
    libraries.KeepAllBut(zettesting::ToWide(module));
    ::dlclose(brought);
    void* const visited = ::dlopen(own.c_str(), RTLD_NOW);
    libraries.KeepAllBut(zettesting::ToWide(own));
    ::dlclose(visited);
    EXPECT_FALSE(IsLoaded(own));
}

TEST_F(SharedLibrariesTest, OfPluginsStayInAScanWhileThoseThatFollowAreInTheirFolder)
{
    std::filesystem::create_directory(folder / "elsewhere");
    const auto locator = [](const std::filesystem::path& module) {
        return zetaudiofilterhost::LocatorOfModuleFile(zettesting::ToWide(module));
    };
    const std::vector<zetaudiofilterhost::PluginLocator> locators{
        locator(Copy("a")), locator(Copy("b")),
        locator(zettesting::CopyTestPlugin("good/vst2_effect", folder / "elsewhere", "c"))};
    const std::filesystem::path own = Copy("own");
    void* const brought = ::dlopen(own.c_str(), RTLD_NOW);
    PluginModuleScanner scanner(locators, true, true, true);
    scanner.BeginScan();
    EXPECT_TRUE(scanner.ContinueScan());
    ::dlclose(brought);
    EXPECT_TRUE(IsLoaded(own));
    EXPECT_TRUE(scanner.ContinueScan());
    EXPECT_FALSE(IsLoaded(own)) << "what follows is elsewhere";
    void* const again = ::dlopen(own.c_str(), RTLD_NOW);
    EXPECT_FALSE(scanner.ContinueScan());
    ::dlclose(again);
    EXPECT_FALSE(IsLoaded(own)) << "nothing follows";
}

} // namespace
} // namespace zetaudiopluginhost
