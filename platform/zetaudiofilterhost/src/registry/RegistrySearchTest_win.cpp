#include <gmock/gmock.h>

#include <windows.h>

#include "testing/RegistryFixture.h"
#include <zetcore/filesupport/paths/CommonDirs.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zettesting::ToWide;
using zettesting::WriteAll;
using Locators = std::vector<PluginLocator>;

/// Stands in for the machine's part of the registry.
class MachineKeys
{
  public:
    MachineKeys()
    {
        ::RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                          &key, nullptr);
        ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, key);
    }
    ~MachineKeys()
    {
        ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        ::RegCloseKey(key);
        ::RegDeleteTreeW(HKEY_CURRENT_USER, path);
    }
    MachineKeys(const MachineKeys&) = delete;
    MachineKeys& operator=(const MachineKeys&) = delete;

    void SetVstFolder(const std::wstring& folder) const
    {
        HKEY vst = nullptr;
        ASSERT_EQ(::RegCreateKeyExW(key, L"SOFTWARE\\VST", 0, nullptr, REG_OPTION_VOLATILE,
                                    KEY_ALL_ACCESS | KEY_WOW64_64KEY, nullptr, &vst, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(::RegSetValueExW(vst, L"VSTPluginsPath", 0, REG_SZ,
                                   reinterpret_cast<const BYTE*>(folder.c_str()),
                                   static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
        ::RegCloseKey(vst);
    }

  private:
    static constexpr const wchar_t* path = L"Software\\ZetRegistrySearchTest";
    HKEY key = nullptr;
};

/// Libraries and folders as this platform has them.
class WindowsSearchTest : public RegistryFixture
{
  protected:
    WindowsSearchTest()
    {
        std::filesystem::create_directory(plugins);
        Folders().SetPluginDirectories({ToWide(plugins)});
    }

    PluginTechnology& Folders() { return *registry.GetPluginTechnology(TechnologyType::VST); }
    PluginLocator MakeFile(const std::filesystem::path& name)
    {
        std::filesystem::create_directories((plugins / name).parent_path());
        WriteAll(plugins / name, "plug-in");
        return Vst(ToWide(plugins / name));
    }
    Locators Collect() { return registry.CollectPotentialPlugins(true, vanished); }

    const std::filesystem::path plugins = folder / "plugins";
    Locators vanished;
};

TEST_F(WindowsSearchTest, FindsLibrariesByTheirExtensionWhateverItsCase)
{
    MakeFile("readme.txt");
    MakeFile("a.dll.bak");
    MakeFile("a.so");
    MakeFile("Bundle.vst3/Contents/x86_64-win/Bundle.dll");
    const auto plain = MakeFile("a.dll");
    const auto capitals = MakeFile("B.DLL");
    const auto inFolder = MakeFile("folder.dll/sub/c.Dll");
    EXPECT_THAT(Collect(), ::testing::UnorderedElementsAre(plain, capitals, inFolder));
}

TEST_F(WindowsSearchTest, AKnownPluginIsKnownWhateverTheCaseOfItsPath)
{
    registry.AddModule(MakeInfo(MakeFile("Reverb.dll")));
    std::filesystem::rename(plugins / "Reverb.dll", plugins / "aside");
    std::filesystem::rename(plugins / "aside", plugins / "REVERB.dll");
    EXPECT_THAT(Collect(), IsEmpty());
    EXPECT_THAT(vanished, IsEmpty());
}

TEST_F(WindowsSearchTest, TheDefaultFoldersAreThoseOfThePathTheRegistryTheUserAndTheSystem)
{
    const MachineKeys keys;
    keys.SetVstFolder(L"D:\\My VST");
    const zettesting::ScopedEnvironment list("VST_PATH", "E:\\first;;E:\\second\\");
    const zettesting::ScopedEnvironment claps("CLAP_PATH", "E:\\clap");
    const zettesting::ScopedEnvironment programs("ProgramFiles", "P:\\Programs");
    const zettesting::ScopedEnvironment common("CommonProgramFiles", "P:\\Common");
    const zettesting::ScopedEnvironment local("LOCALAPPDATA", "U:\\Local");
    zetcore::filesupport::commondirs::SetExecutableDir(L"H:\\Host");
    registry.ResetToDefaultFolders();
    EXPECT_THAT(FoldersOf(registry, TechnologyType::VST),
                ElementsAre(L"E:\\first", L"E:\\second", L"D:\\My VST", L"P:\\Programs\\VSTPlugins",
                            L"P:\\Programs\\Steinberg\\VSTPlugins", L"P:\\Common\\VST2",
                            L"P:\\Common\\Steinberg\\VST2"));
    EXPECT_THAT(FoldersOf(registry, TechnologyType::VST3),
                ElementsAre(L"U:\\Local\\Programs\\Common\\VST3", L"P:\\Common\\VST3", L"H:\\Host\\VST3"));
    EXPECT_THAT(FoldersOf(registry, TechnologyType::AU), IsEmpty());
    EXPECT_THAT(FoldersOf(registry, TechnologyType::CLAP),
                ElementsAre(L"E:\\clap", L"P:\\Common\\CLAP", L"U:\\Local\\Programs\\Common\\CLAP"));
}

TEST_F(WindowsSearchTest, WithoutARegisteredFolderTheDefaultsStartWithTheSystems)
{
    const MachineKeys none;
    const zettesting::ScopedEnvironment list("VST_PATH", std::nullopt);
    const zettesting::ScopedEnvironment programs("ProgramFiles", "P:\\Programs");
    registry.ResetToDefaultFolders();
    ASSERT_FALSE(FoldersOf(registry, TechnologyType::VST).empty());
    EXPECT_EQ(FoldersOf(registry, TechnologyType::VST).front(), L"P:\\Programs\\VSTPlugins");
}

TEST_F(WindowsSearchTest, WhatIsBehindATooLongPathIsToldAndTheRestIsFound)
{
    const auto shallow = MakeFile("near/a.dll");
    const std::wstring longName(150, L'n');
    const std::wstring deep = ToWide(plugins / "far") + L"\\" + longName;
    for (const std::wstring& made : {ToWide(plugins / "far"), deep, deep + L"\\" + longName})
        ASSERT_TRUE(::CreateDirectoryW((L"\\\\?\\" + made).c_str(), nullptr)) << ::GetLastError();
    EXPECT_THAT(Collect(), ElementsAre(shallow));
    const std::vector<UnreadableFolder>& unreadable = registry.GetUnreadableFolders();
    ASSERT_EQ(unreadable.size(), 1u);
    EXPECT_EQ(unreadable[0].path, deep + L"\\" + longName);
    EXPECT_EQ(unreadable[0].reason, std::make_error_code(std::errc::filename_too_long).message());
}

} // namespace

} // namespace zetaudiofilterhost
