#include <zetaudiofilterhost/PluginTechnology.h>

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zetcore/filesupport/paths/NativePath.h>

#include "files/FolderPath.h"

namespace zetaudiofilterhost {

namespace {

/// With the platform's separators, as folders are kept.
std::vector<std::wstring> Kept(const std::vector<std::wstring>& paths)
{
    std::vector<std::wstring> kept;
    for (const std::wstring& path : paths)
        kept.push_back(std::filesystem::path(path).make_preferred().wstring());
    return kept;
}

class PluginTechnologyTest : public ::testing::Test
{
  protected:
    PluginTechnologyTest()
    {
        technology->GetDirectoriesChangedSignal().Connect(
            [this](const std::shared_ptr<PluginTechnology>& changed) {
                EXPECT_EQ(changed, technology);
                ++changes;
            });
    }
    std::vector<std::wstring> Folders() const
    {
        return {technology->DirectoryBegin(), technology->DirectoryEnd()};
    }

    std::shared_ptr<PluginTechnology> technology = std::make_shared<PluginTechnology>(TechnologyType::VST);
    int changes = 0;
};

TEST_F(PluginTechnologyTest, KeepsFoldersInTheirOrderAndRaisesTheSignalOnce)
{
    technology->AddPluginDirectories({L"/z", L"/a", L"/m"});
    EXPECT_EQ(Folders(), Kept({L"/z", L"/a", L"/m"}));
    EXPECT_EQ(changes, 1);
}

TEST_F(PluginTechnologyTest, KeepsAFolderOnceHoweverItIsWritten)
{
    technology->AddPluginDirectories({L"/a/b"});
    technology->AddPluginDirectories({L"/a/b/", L"/a//b", L"/a/./b", L"/./a/b/.", L"/a/b///"});
    EXPECT_EQ(Folders(), Kept({L"/a/b"}));
    EXPECT_EQ(changes, 1);
}

TEST_F(PluginTechnologyTest, AFolderThroughTheParentIsAnother)
{
    technology->AddPluginDirectories({L"/a/b", L"/a/c/../b"});
    EXPECT_EQ(Folders(), Kept({L"/a/b", L"/a/c/../b"}));
}

TEST_F(PluginTechnologyTest, PassesOverEmptyPaths)
{
    technology->AddPluginDirectories({L""});
    EXPECT_TRUE(Folders().empty());
    EXPECT_EQ(changes, 0);
}

TEST_F(PluginTechnologyTest, RemovesFoldersHoweverTheyAreWritten)
{
    technology->SetPluginDirectories({L"/a", L"/b", L"/c"});
    technology->RemovePluginDirectories({L"/c/", L"/./a", L"/unknown"});
    EXPECT_EQ(Folders(), Kept({L"/b"}));
    EXPECT_EQ(changes, 2);
    technology->RemovePluginDirectories({L"/unknown"});
    EXPECT_EQ(changes, 2);
}

TEST_F(PluginTechnologyTest, RelativeFoldersAreAbsoluteAtOnce)
{
    const auto here = std::filesystem::current_path();
    technology->SetPluginDirectories({L"plugins/", L"./more", L"/a"});
    EXPECT_EQ(Folders(), (std::vector<std::wstring>{zetcore::filesupport::FromNativePath(here / "plugins"),
                                                    zetcore::filesupport::FromNativePath(here / "more"),
                                                    Kept({L"/a"})[0]}));
    technology->RemovePluginDirectories({L"more"});
    EXPECT_EQ(Folders().size(), 2u);
}

TEST_F(PluginTechnologyTest, SettingTheSameFoldersChangesNothing)
{
    technology->SetPluginDirectories({L"/a", L"/b"});
    technology->SetPluginDirectories({L"/a/", L"/b", L"/a"});
    EXPECT_EQ(changes, 1);
    technology->SetPluginDirectories({L"/b", L"/a"});
    EXPECT_EQ(Folders(), Kept({L"/b", L"/a"}));
    EXPECT_EQ(changes, 2);
}

TEST(FolderPath, IsNormalisedByItsTextAlone)
{
    EXPECT_EQ(NormalisedFolderPath(L"/usr/lib/vst/"), Kept({L"/usr/lib/vst"})[0]);
    EXPECT_EQ(NormalisedFolderPath(L"/"), Kept({L"/"})[0]);
    EXPECT_EQ(NormalisedFolderPath(L"relative/./folder/"), Kept({L"relative/folder"})[0]);
    EXPECT_EQ(NormalisedFolderPath(L""), L"");
    const std::wstring stray{static_cast<wchar_t>(0xdcff), L'x'};
    EXPECT_EQ(NormalisedFolderPath(stray), stray);
}

TEST(FolderPath, ContainsWhatIsInItByWholeNames)
{
    EXPECT_TRUE(IsInsideFolder(L"/a/b/c.so", L"/a"));
    EXPECT_TRUE(IsInsideFolder(L"/a/b/c.so", L"/a/b/"));
    EXPECT_TRUE(IsInsideFolder(L"/a", L"/a"));
    EXPECT_TRUE(IsInsideFolder(L"/a", L"/"));
    EXPECT_FALSE(IsInsideFolder(L"/abc/d.so", L"/ab"));
    EXPECT_FALSE(IsInsideFolder(L"/a", L"/a/b"));
    EXPECT_FALSE(IsInsideFolder(L"/a", L""));
}

} // namespace

} // namespace zetaudiofilterhost
