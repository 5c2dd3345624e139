#include "terminal/PluginFile.h"

#include <filesystem>

#include <gtest/gtest.h>

#include <zettesting/TemporaryFolder.h>
#include <zettesting/TestPlugins.h>

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

TEST(PluginFile, TheFileNameTellsTheTechnology)
{
    const std::wstring suffix = zettesting::ToWide(zettesting::ModuleSuffix());
    const struct
    {
        std::wstring path;
        TechnologyType technology;
        std::wstring module;
    } cases[] = {
        {L"/p/a" + suffix, TechnologyType::VST, L"/p/a" + suffix},
        {L"/p/a.vst3", TechnologyType::VST3, L"/p/a.vst3"},
        {L"/p/A.VST3", TechnologyType::VST3, L"/p/A.VST3"},
        {L"/p/vst3", TechnologyType::Unknown, L"/p/vst3"},
        {L"/p/notes.txt", TechnologyType::Unknown, L"/p/notes.txt"},
        {L"/home/u/.vst3/a.vst3", TechnologyType::VST3, L"/home/u/.vst3/a.vst3"},
        {L"/p/a.vst3" + suffix, TechnologyType::VST, L"/p/a.vst3" + suffix},
        {L"/p/a.vst3/Contents/x86_64-linux/a.bin", TechnologyType::VST3, L"/p/a.vst3"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(LocatorOfPath(each.path), PluginLocator(each.technology, each.module));
    EXPECT_TRUE(LocatorOfPath(L"").IsEmpty());
}

TEST(PluginFile, RelativeNamesAreTakenFromTheCurrentFolder)
{
    const auto absolute = [](const char* name) {
        return zettesting::ToWide((std::filesystem::current_path() / name).lexically_normal());
    };
    EXPECT_EQ(AbsolutePath("a.so"), absolute("a.so"));
    EXPECT_EQ(AbsolutePath("./x/../a.so"), absolute("a.so"));
    EXPECT_EQ(AbsolutePath("bundle.vst3/"), absolute("bundle.vst3"));
    EXPECT_EQ(LocatorOfPath(AbsolutePath("bundle.vst3//")),
              PluginLocator(TechnologyType::VST3, absolute("bundle.vst3")));
    EXPECT_EQ(AbsolutePath(""), L"");
}

#ifndef _WIN32
TEST(PluginFile, AbsoluteNamesAndRawBytesStayAsTheyAre)
{
    EXPECT_EQ(AbsolutePath("/p/a b|c%.so"), L"/p/a b|c%.so");
    EXPECT_EQ(AbsolutePath("/"), L"/");
    EXPECT_EQ(AbsolutePath("/p/\xff.so"), std::wstring(L"/p/\xDCFF.so"));
    EXPECT_EQ(AbsolutePath("/p/line\nbreak.so"), L"/p/line\nbreak.so");
}
#endif

TEST(PluginFile, ExistenceIsAskedForTheRealName)
{
    const zettesting::TemporaryFolder folder;
    zettesting::WriteAll(folder / "there.so", "x");
    EXPECT_TRUE(PathExists(zettesting::ToWide(folder / "there.so")));
    EXPECT_TRUE(PathExists(folder.Wide()));
    EXPECT_FALSE(PathExists(zettesting::ToWide(folder / "missing.so")));
    EXPECT_FALSE(PathExists(L""));
}

} // namespace

} // namespace zetaudiopluginmanager
