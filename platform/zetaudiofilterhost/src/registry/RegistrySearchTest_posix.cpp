#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetcore/filesupport/paths/CommonDirs.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zettesting::ToWide;
using zettesting::WriteAll;
using Locators = std::vector<PluginLocator>;

/// The administrator may read everywhere: tests of what is refused go on as another user then.
class OrdinaryUser
{
  public:
    OrdinaryUser()
    {
        if (before == 0 && ::seteuid(65534) != 0)
            ADD_FAILURE() << "cannot become an ordinary user";
    }
    ~OrdinaryUser()
    {
        if (before == 0 && ::seteuid(before) != 0)
            ADD_FAILURE() << "cannot become the administrator again";
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    const uid_t before = ::geteuid();
};

/// Libraries, links and permissions as this platform has them.
class PosixSearchTest : public RegistryFixture
{
  protected:
    PosixSearchTest()
    {
        std::filesystem::create_directory(plugins);
        Folders().SetPluginDirectories({ToWide(plugins)});
    }

    PluginTechnology& Folders() { return *registry.GetPluginTechnology(TechnologyType::VST); }
    PluginLocator At(const std::filesystem::path& name) const { return Vst(ToWide(plugins / name)); }
    PluginLocator MakeFile(const std::filesystem::path& name)
    {
        std::filesystem::create_directories((plugins / name).parent_path());
        WriteAll(plugins / name, "plug-in");
        return At(name);
    }
    Locators Collect(bool newOnly = true) { return registry.CollectPotentialPlugins(newOnly, vanished); }

    const std::filesystem::path plugins = folder / "plugins";
    Locators vanished;
};

TEST_F(PosixSearchTest, FindsLibrariesByTheirExtension)
{
    MakeFile("readme.txt");
    MakeFile("a.so.1");
    MakeFile("a.dll");
    MakeFile("B.SO");
    MakeFile(".so");
    MakeFile("Bundle.vst3/Contents/x86_64-linux/Bundle.so");
    std::filesystem::create_directories(plugins / "folder.so" / "sub");
    ASSERT_EQ(::mkfifo((plugins / "pipe.so").c_str(), 0600), 0);
    const auto inFolder = MakeFile("folder.so/sub/c.so");
    const auto plain = MakeFile("a.so");
    const auto inVst = MakeFile("Pro.vst/Pro.so");
    EXPECT_THAT(Collect(), ElementsAre(inVst, plain, inFolder));
}

TEST_F(PosixSearchTest, OddFileNamesAreFoundAndComeBackFromTheFile)
{
    Locators all;
    for (const std::string name :
         {"with space.so", "quote'\".so", "new\nline.so", "100%|x.so", "\xFF\xC3.so",
          "\xC3\xA9\xE6\x97\xA5.so", "tab\t.so", "-dash.so", " lead.so", "&lt;<>.so"})
        all.push_back(MakeFile(name));
    std::sort(all.begin(), all.end());
    EXPECT_EQ(Collect(), all);
    std::vector<std::shared_ptr<PluginModuleInfo>> infos;
    for (const PluginLocator& locator : all)
        infos.push_back(MakeInfo(locator));
    registry.AddConfiguration(PluginModuleInfoManager::ToConfigurationText(infos), false);
    registry.SaveConfiguration(file, true);
    ASSERT_TRUE(registry.LoadConfiguration(file));
    EXPECT_EQ(registry.RecordCount(), all.size());
    EXPECT_THAT(Collect(), IsEmpty());
    EXPECT_THAT(vanished, IsEmpty());
    EXPECT_EQ(Collect(false), all);
}

TEST_F(PosixSearchTest, AFolderWithAnOddNameComesBackFromTheFile)
{
    const auto odd = MakeFile("odd\n\xFF%|/a.so");
    Folders().SetPluginDirectories({ToWide(plugins / "odd\n\xFF%|")});
    registry.SaveConfiguration(file, true);
    ResetRegistry(registry);
    ASSERT_TRUE(registry.LoadConfiguration(file));
    EXPECT_THAT(Collect(), ElementsAre(odd));
}

TEST_F(PosixSearchTest, LinksAreFollowed)
{
    std::filesystem::create_directories(folder / "elsewhere");
    WriteAll(folder / "elsewhere" / "a.so", "plug-in");
    WriteAll(folder / "elsewhere" / "lib.1", "plug-in");
    std::filesystem::create_directory_symlink(folder / "elsewhere", plugins / "linked");
    std::filesystem::create_symlink("../elsewhere/lib.1", plugins / "b.so");
    EXPECT_THAT(Collect(), ElementsAre(At("b.so"), At("linked/a.so")));
}

TEST_F(PosixSearchTest, CyclesEnd)
{
    MakeFile("sub/a.so");
    std::filesystem::create_directory_symlink(plugins, plugins / "sub" / "up");
    std::filesystem::create_directory_symlink(".", plugins / "sub" / "self");
    std::filesystem::create_symlink("loop.so", plugins / "loop.so");
    EXPECT_THAT(Collect(), ElementsAre(At("sub/a.so")));
    EXPECT_TRUE(HasTraced("loop.so: passed over"));
}

TEST_F(PosixSearchTest, AFileReachedTwiceThroughLinksCountsOnceByItsFirstPath)
{
    MakeFile("real/m.so");
    std::filesystem::create_directory_symlink("real", plugins / "another");
    std::filesystem::create_symlink("real/m.so", plugins / "z.so");
    EXPECT_THAT(Collect(), ElementsAre(At("z.so")));
}

TEST_F(PosixSearchTest, AKnownPluginKeepsItsPathWhenALinkIsFoundFirst)
{
    const auto known = MakeFile("real/m.so");
    registry.AddModule(MakeInfo(known));
    std::filesystem::create_symlink("real/m.so", plugins / "a.so");
    EXPECT_THAT(Collect(), IsEmpty());
    EXPECT_THAT(vanished, IsEmpty());
    EXPECT_THAT(Collect(false), ElementsAre(known));
    registry.SetBannedLocators({BannedModule{known}});
    EXPECT_THAT(Collect(false), IsEmpty());
}

TEST_F(PosixSearchTest, AFolderRegisteredThroughALinkHoldsThePluginsBehindIt)
{
    const auto known = MakeFile("m.so");
    registry.AddModule(MakeInfo(known));
    std::filesystem::create_directory_symlink(plugins, folder / "link");
    Folders().SetPluginDirectories({ToWide(folder / "link")});
    EXPECT_THAT(Collect(), IsEmpty());
    EXPECT_THAT(vanished, IsEmpty());
    EXPECT_THAT(Collect(false), ElementsAre(known));
    std::filesystem::remove(plugins / "m.so");
    Collect();
    EXPECT_THAT(vanished, ElementsAre(known));
}

TEST_F(PosixSearchTest, ALinkWhoseTargetIsGoneHasVanished)
{
    std::filesystem::create_symlink(folder / "target", plugins / "a.so");
    registry.AddModule(MakeInfo(At("a.so")));
    EXPECT_THAT(Collect(), IsEmpty());
    EXPECT_THAT(vanished, ElementsAre(At("a.so")));
}

TEST_F(PosixSearchTest, AnUnreadableFolderIsToldAndItsPluginsAreNotLost)
{
    const auto locked = MakeFile("locked/a.so");
    const auto searchable = MakeFile("searchable/gone.so");
    const auto open = MakeFile("open/b.so");
    registry.AddModule(MakeInfo(locked));
    registry.AddModule(MakeInfo(searchable));
    std::filesystem::remove(plugins / "searchable" / "gone.so");
    using std::filesystem::perms;
    std::filesystem::permissions(plugins / "locked", perms::none);
    // Its files can be looked at by their names, but the folder does not tell the names.
    std::filesystem::permissions(plugins / "searchable",
                                 perms::owner_exec | perms::group_exec | perms::others_exec);
    {
        const OrdinaryUser user;
        EXPECT_THAT(Collect(), ElementsAre(open));
    }
    EXPECT_THAT(vanished, IsEmpty());
    EXPECT_TRUE(HasTraced("/locked: passed over"));
    const std::vector<UnreadableFolder>& unreadable = registry.GetUnreadableFolders();
    ASSERT_EQ(unreadable.size(), 2u);
    EXPECT_EQ(unreadable[0].path, ToWide(plugins / "locked"));
    EXPECT_EQ(unreadable[0].reason, std::make_error_code(std::errc::permission_denied).message());
    EXPECT_EQ(unreadable[1].path, ToWide(plugins / "searchable"));

    for (const char* name : {"locked", "searchable"})
        std::filesystem::permissions(plugins / name, perms::all);
    Collect();
    EXPECT_THAT(vanished, ElementsAre(searchable));
    EXPECT_THAT(registry.GetUnreadableFolders(), IsEmpty());
}

TEST_F(PosixSearchTest, FoldersThatDoNotExistAreNotUnreadable)
{
    Folders().AddPluginDirectories({ToWide(plugins / "missing"), ToWide(plugins / "missing" / "deeper")});
    std::filesystem::create_directory_symlink("nowhere", plugins / "link");
    Collect();
    EXPECT_THAT(registry.GetUnreadableFolders(), IsEmpty());
}

TEST_F(PosixSearchTest, AnUnreadableFolderOfTwoTechnologiesIsToldOnce)
{
    registry.GetPluginTechnology(TechnologyType::VST3)->SetPluginDirectories({ToWide(plugins)});
    std::filesystem::permissions(plugins, std::filesystem::perms::none);
    {
        const OrdinaryUser user;
        Collect();
    }
    ASSERT_EQ(registry.GetUnreadableFolders().size(), 1u);
    EXPECT_EQ(registry.GetUnreadableFolders()[0].path, ToWide(plugins));
    std::filesystem::permissions(plugins, std::filesystem::perms::owner_all);
}

TEST_F(PosixSearchTest, AFolderBehindAnUnsearchableOneIsToldByItsOwnPath)
{
    std::filesystem::create_directories(folder / "private" / "vst");
    std::filesystem::create_directory_symlink(folder / "private" / "vst", plugins / "link");
    Folders().AddPluginDirectories({ToWide(folder / "private" / "vst")});
    std::filesystem::permissions(folder / "private", std::filesystem::perms::none);
    {
        const OrdinaryUser user;
        Collect();
    }
    std::filesystem::permissions(folder / "private", std::filesystem::perms::owner_all);
    ASSERT_EQ(registry.GetUnreadableFolders().size(), 2u);
    EXPECT_EQ(registry.GetUnreadableFolders()[0].path, ToWide(plugins / "link"));
    EXPECT_EQ(registry.GetUnreadableFolders()[1].path, ToWide(folder / "private" / "vst"));
}

TEST_F(PosixSearchTest, ARegisteredFolderThatWasFoundUnreadableInAnotherOneIsOffline)
{
    MakeFile("locked/a.so");
    registry.AddModule(MakeInfo(At("locked/gone.so")));
    Folders().AddPluginDirectories({ToWide(plugins / "locked")});
    std::filesystem::permissions(plugins / "locked", std::filesystem::perms::none);
    {
        const OrdinaryUser user;
        Collect();
    }
    std::filesystem::permissions(plugins / "locked", std::filesystem::perms::owner_all);
    EXPECT_THAT(vanished, IsEmpty());
    EXPECT_EQ(registry.GetUnreadableFolders().size(), 1u);
}

TEST_F(PosixSearchTest, APluginInAnUnreadableFolderOfALinkedFolderIsNotLost)
{
    const auto locked = MakeFile("locked/a.so");
    registry.AddModule(MakeInfo(locked));
    std::filesystem::create_directory_symlink(plugins, folder / "link");
    Folders().SetPluginDirectories({ToWide(folder / "link")});
    std::filesystem::permissions(plugins / "locked", std::filesystem::perms::none);
    {
        const OrdinaryUser user;
        Collect();
    }
    std::filesystem::permissions(plugins / "locked", std::filesystem::perms::owner_all);
    EXPECT_THAT(vanished, IsEmpty());
}

TEST_F(PosixSearchTest, ABanOfALinkWhoseTargetIsAwayStays)
{
    std::filesystem::create_symlink(folder / "target", plugins / "a.so");
    registry.SetBannedLocators({BannedModule{At("a.so")}});
    Locators ended;
    registry.GetBansEndedSignal().Connect([&ended](const Locators& locators) { ended = locators; });
    Collect();
    ASSERT_THAT(vanished, ElementsAre(At("a.so")));
    registry.RemovePluginLocators(vanished);
    EXPECT_THAT(ended, IsEmpty());
}

TEST_F(PosixSearchTest, PluginsOfARegisteredFolderThatMayNotBeReadAreOffline)
{
    const auto locked = MakeFile("a.so");
    registry.AddModule(MakeInfo(locked));
    registry.AddModule(MakeInfo(At("gone.so")));
    std::filesystem::permissions(plugins, std::filesystem::perms::none);
    {
        const OrdinaryUser user;
        EXPECT_THAT(Collect(), IsEmpty());
        EXPECT_THAT(vanished, IsEmpty());
    }
    std::filesystem::permissions(plugins, std::filesystem::perms::owner_all);
    Collect();
    EXPECT_THAT(vanished, ElementsAre(At("gone.so")));
}

TEST_F(PosixSearchTest, ADamagedFileThatCannotBeKeptAsideIsNotOverwritten)
{
    WriteAll(path, "damaged");
    using std::filesystem::perms;
    const perms everyoneReads = perms::owner_read | perms::owner_exec | perms::group_read |
                                perms::group_exec | perms::others_read | perms::others_exec;
    std::filesystem::permissions(prefs, everyoneReads);
    std::filesystem::permissions(path, everyoneReads);
    {
        const OrdinaryUser user;
        EXPECT_FALSE(registry.LoadConfiguration(file));
        EXPECT_THROW(registry.SaveConfiguration(file, true), std::runtime_error);
    }
    EXPECT_EQ(zettesting::ReadAll(path), "damaged");
    std::filesystem::permissions(prefs, std::filesystem::perms::owner_all);
    registry.SaveConfiguration(file, true);
    EXPECT_EQ(zettesting::ReadAll(prefs / "AudioPlugins.xml.damaged"), "damaged");
    EXPECT_TRUE(registry.LoadConfiguration(file));
}

TEST_F(PosixSearchTest, TheDefaultFoldersAreTheOnesOfThePathTheUserAndTheSystem)
{
    const zettesting::ScopedEnvironment home("HOME", "/home/someone");
    const zettesting::ScopedEnvironment list("VST_PATH", "/first::/usr/lib/vst/:/last");
    const zettesting::ScopedEnvironment claps("CLAP_PATH", "/my/clap");
    zetcore::filesupport::commondirs::SetExecutableDir(L"/opt/host");
    int changes = 0;
    Folders().GetDirectoriesChangedSignal().Connect([&changes](const auto&) { ++changes; });
    registry.ResetToDefaultFolders();
    EXPECT_THAT(FoldersOf(registry, TechnologyType::VST),
                ElementsAre(L"/first", L"/usr/lib/vst", L"/last", L"/home/someone/.vst",
                            L"/home/someone/.lxvst", L"/usr/local/lib/vst", L"/usr/lib/x86_64-linux-gnu/vst",
                            L"/usr/local/lib/lxvst", L"/usr/lib/lxvst"));
    EXPECT_THAT(
        FoldersOf(registry, TechnologyType::VST3),
        ElementsAre(L"/home/someone/.vst3", L"/usr/local/lib/vst3", L"/usr/lib/vst3", L"/opt/host/vst3"));
    EXPECT_THAT(FoldersOf(registry, TechnologyType::AU), IsEmpty());
    EXPECT_THAT(FoldersOf(registry, TechnologyType::CLAP),
                ElementsAre(L"/my/clap", L"/home/someone/.clap", L"/usr/lib/clap"));
    EXPECT_EQ(changes, 1);
}

} // namespace

} // namespace zetaudiofilterhost
