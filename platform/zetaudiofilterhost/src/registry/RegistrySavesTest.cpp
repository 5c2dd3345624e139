#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using zettesting::ReadAll;
using zettesting::WriteAll;

/// Saves between `BeginIncrementalSaves` and `EndIncrementalSaves`.
class RegistrySavesTest : public RegistryFixture
{
  protected:
    void Add(const std::wstring& name) { registry.AddModule(MakeInfo(Vst(L"/" + name + L".so"), name)); }
    void Save() { registry.SaveConfiguration(file, true); }
    /// A program that starts now finds all that has been saved.
    std::vector<std::wstring> Loaded()
    {
        EXPECT_TRUE(loaded.LoadConfiguration(file));
        return Shown(loaded);
    }

    PluginModuleInfoManager loaded;
};

TEST_F(RegistrySavesTest, TheFirstSaveIsWholeAndTheOthersGoToTheJournal)
{
    Add(L"a");
    registry.BeginIncrementalSaves();
    Save();
    const std::string base = ReadAll(path);
    EXPECT_FALSE(std::filesystem::exists(journal));
    Add(L"b");
    Save();
    Add(L"c");
    Save();
    EXPECT_EQ(ReadAll(path), base);
    EXPECT_THAT(ReadAll(journal), HasSubstr("/b.so"));
    EXPECT_THAT(ReadAll(journal), Not(HasSubstr("/a.so")));
    EXPECT_THAT(Loaded(), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(RegistrySavesTest, AWholeSaveAfterwardsTakesTheJournalIn)
{
    registry.BeginIncrementalSaves();
    Save();
    Add(L"a");
    Save();
    ASSERT_TRUE(std::filesystem::exists(journal));
    registry.EndIncrementalSaves();
    Save();
    EXPECT_FALSE(std::filesystem::exists(journal));
    EXPECT_THAT(ReadAll(path), HasSubstr("/a.so"));
    EXPECT_THAT(Loaded(), ElementsAre(L"a"));
}

TEST_F(RegistrySavesTest, RemovalsAndChoicesGoToTheJournalToo)
{
    Add(L"gone");
    Add(L"disabled");
    Add(L"flipped");
    Add(L"back");
    registry.BeginIncrementalSaves();
    Save();
    const std::string base = ReadAll(path);
    registry.Find(Vst(L"/disabled.so"))->SetEnabled(false);
    registry.Find(Vst(L"/back.so"))->SetEnabled(false);
    registry.RemovePluginLocators({Vst(L"/gone.so"), Vst(L"/disabled.so"), Vst(L"/back.so")});
    Save();
    registry.Find(Vst(L"/flipped.so"))->SetEnabled(false);
    Add(L"back");
    Save();
    EXPECT_EQ(ReadAll(path), base);

    EXPECT_THAT(Loaded(), ElementsAre(L"back", L"flipped"));
    EXPECT_FALSE(loaded.Find(Vst(L"/flipped.so"))->IsEnabled());
    EXPECT_FALSE(loaded.Find(Vst(L"/back.so"))->IsEnabled());
    loaded.AddModule(MakeInfo(Vst(L"/disabled.so")));
    loaded.AddModule(MakeInfo(Vst(L"/gone.so")));
    EXPECT_FALSE(loaded.Find(Vst(L"/disabled.so"))->IsEnabled());
    EXPECT_TRUE(loaded.Find(Vst(L"/gone.so"))->IsEnabled());
}

TEST_F(RegistrySavesTest, TheJournalGivesJustWhatAWholeSaveWouldHaveGiven)
{
    for (int index = 0; index < 30; ++index)
        Add(L"p" + std::to_wstring(index));
    registry.BeginIncrementalSaves();
    Save();
    for (int step = 0; step < 40; ++step) {
        const std::wstring name = L"p" + std::to_wstring((step * 7) % 35);
        if (step % 3 == 0)
            registry.RemovePluginLocators({Vst(L"/" + name + L".so")});
        else
            Add(name);
        if (const auto info = registry.Find(Vst(L"/" + name + L".so")); info && step % 4 == 0)
            info->SetEnabled(step % 8 == 0);
        Save();
    }
    Loaded();
    const std::filesystem::path wholeFromMemory = prefs / "memory.xml";
    const std::filesystem::path wholeFromDisk = prefs / "disk.xml";
    registry.EndIncrementalSaves();
    registry.SaveConfiguration(zetcore::filesupport::File(zettesting::ToWide(wholeFromMemory)), true);
    loaded.SaveConfiguration(zetcore::filesupport::File(zettesting::ToWide(wholeFromDisk)), true);
    // The folders come from the file either way.
    EXPECT_EQ(ReadAll(wholeFromDisk), ReadAll(wholeFromMemory));
}

TEST_F(RegistrySavesTest, ASaveWithoutAChangeTouchesNothing)
{
    Add(L"a");
    registry.BeginIncrementalSaves();
    Save();
    Save();
    EXPECT_FALSE(std::filesystem::exists(journal));
    Add(L"b");
    Save();
    const auto time = std::filesystem::last_write_time(journal);
    const std::string before = ReadAll(journal);
    Save();
    EXPECT_EQ(ReadAll(journal), before);
    EXPECT_EQ(std::filesystem::last_write_time(journal), time);
}

TEST_F(RegistrySavesTest, OneSaveIsOneShortEntryHoweverLargeTheRegistry)
{
    for (int index = 0; index < 500; ++index)
        Add(L"p" + std::to_wstring(index));
    registry.BeginIncrementalSaves();
    Save();
    Add(L"a");
    Save();
    const auto first = std::filesystem::file_size(journal);
    Add(L"b");
    Save();
    EXPECT_LT(std::filesystem::file_size(journal), 2 * first);
    EXPECT_LT(first, 1000u);
}

TEST_F(RegistrySavesTest, FoldersThatChangeAreSavedInWhole)
{
    registry.BeginIncrementalSaves();
    Save();
    Add(L"a");
    Save();
    registry.GetPluginTechnology(TechnologyType::VST)->AddPluginDirectories({L"/new"});
    Save();
    EXPECT_FALSE(std::filesystem::exists(journal));
    EXPECT_THAT(Loaded(), ElementsAre(L"a"));
    EXPECT_EQ(FoldersOf(loaded, TechnologyType::VST), FoldersOf(registry, TechnologyType::VST));
}

TEST_F(RegistrySavesTest, ChangesMadeBetweenTwoRunsAreNotMissed)
{
    registry.BeginIncrementalSaves();
    Save();
    registry.EndIncrementalSaves();
    Add(L"between");
    registry.BeginIncrementalSaves();
    Add(L"a");
    Save();
    EXPECT_THAT(Loaded(), ElementsAre(L"a", L"between"));
}

TEST_F(RegistrySavesTest, AFileThatAnotherProgramReplacedIsWrittenInWhole)
{
    Add(L"a");
    registry.BeginIncrementalSaves();
    Save();
    WriteAll(path, "<audioplugins version=\"1.0\"/>");
    Add(L"b");
    Save();
    EXPECT_THAT(Loaded(), ElementsAre(L"a", L"b"));
    std::filesystem::remove(path);
    Add(L"c");
    Save();
    EXPECT_THAT(Loaded(), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(RegistrySavesTest, AJournalThatOutlivedItsFileIsPassedOver)
{
    registry.BeginIncrementalSaves();
    Save();
    Add(L"a");
    Save();
    const std::string old = ReadAll(journal);
    registry.RemovePluginLocators({Vst(L"/a.so")});
    Add(L"b");
    registry.EndIncrementalSaves();
    Save();
    WriteAll(journal, old);
    EXPECT_THAT(Loaded(), ElementsAre(L"b"));
    Save();
    EXPECT_FALSE(std::filesystem::exists(journal));
}

TEST_F(RegistrySavesTest, WhatASaveTookOutDoesNotComeBackFromAJournalOfTheSameContent)
{
    registry.BeginIncrementalSaves();
    Save();
    Add(L"a");
    Save();
    registry.EndIncrementalSaves();
    registry.RemovePluginLocators({Vst(L"/a.so")});
    Save();
    EXPECT_FALSE(std::filesystem::exists(journal));
    EXPECT_THAT(Loaded(), IsEmpty());
}

TEST_F(RegistrySavesTest, ACrashInTheMiddleOfAnEntryLosesThatEntryOnly)
{
    registry.BeginIncrementalSaves();
    Save();
    Add(L"a");
    Save();
    Add(L"b");
    Save();
    const std::string whole = ReadAll(journal);
    WriteAll(journal, whole.substr(0, whole.size() - 10));
    EXPECT_THAT(Loaded(), ElementsAre(L"a"));
    // The next run goes on from there and leaves nothing torn behind.
    loaded.BeginIncrementalSaves();
    loaded.AddModule(MakeInfo(Vst(L"/c.so"), L"c"));
    loaded.SaveConfiguration(file, true);
    PluginModuleInfoManager third;
    EXPECT_TRUE(third.LoadConfiguration(file));
    EXPECT_THAT(Shown(third), ElementsAre(L"a", L"c"));
}

TEST_F(RegistrySavesTest, RecordsThatAreAddedTogetherAreOneEntryOfTheJournal)
{
    registry.BeginIncrementalSaves();
    Save();
    registry.AddModules({MakeInfo(Vst(L"/a.so"), L"a"), nullptr, MakeInfo(Vst(L"/b.so"), L"b")});
    EXPECT_THAT(Loaded(), ElementsAre(L"a", L"b"));
    // A broken entry is left out whole.
    const std::string whole = ReadAll(journal);
    WriteAll(journal, whole.substr(0, whole.size() - 10));
    EXPECT_THAT(Loaded(), IsEmpty());
}

TEST_F(RegistrySavesTest, WhereTheJournalCannotBeTheSaveIsAWholeOne)
{
    registry.BeginIncrementalSaves();
    Save();
    std::filesystem::create_directory(journal);
    WriteAll(journal / "in the way", "");
    Add(L"a");
    Save();
    EXPECT_THAT(ReadAll(path), HasSubstr("/a.so"));
    std::filesystem::remove_all(journal);
    EXPECT_THAT(Loaded(), ElementsAre(L"a"));
}

TEST_F(RegistrySavesTest, LoadingInBetweenStartsOver)
{
    Add(L"a");
    registry.BeginIncrementalSaves();
    Save();
    // Found in a scan, so kept without a save.
    Add(L"b");
    ASSERT_TRUE(registry.LoadConfiguration(file));
    Add(L"c");
    Save();
    EXPECT_FALSE(std::filesystem::exists(journal));
    EXPECT_THAT(Loaded(), ElementsAre(L"a", L"b", L"c"));
}

} // namespace

} // namespace zetaudiofilterhost
