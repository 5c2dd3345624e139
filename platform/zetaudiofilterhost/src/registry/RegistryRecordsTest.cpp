// Records that are read without a registry that others know.
#include <functional>

#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"
#include "text/ConfigurationText.h"

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using zettesting::ReadAll;
using zettesting::WriteAll;
using InfoPtr = PluginModuleInfoManager::InfoPtr;

PluginLocator Vst3(const std::wstring& path, const std::wstring& subcomponent = {})
{
    return {TechnologyType::VST3, path, subcomponent};
}

std::vector<PluginLocator> LocatorsOf(const std::vector<InfoPtr>& infos)
{
    std::vector<PluginLocator> locators;
    for (const InfoPtr& info : infos)
        locators.push_back(info->GetLocator());
    return locators;
}

std::string ErrorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

class RegistryRecordsTest : public RegistryFixture
{
  protected:
    std::vector<InfoPtr> Vst3Records() const
    {
        return PluginModuleInfoManager::RecordsInFile(file, {TechnologyType::VST3});
    }
    void WriteFile(const std::string& content) const
    {
        WriteAll(path, "<audioplugins version=\"1.1\">\n" + content + "</audioplugins>\n");
    }
};

TEST_F(RegistryRecordsTest, ATextGivesTheRecordsThatItWasMadeOf)
{
    const auto first = MakeInfo(Vst(L"/o\"d'd <&> | % \n\t\xDC81\x00E9.so", L"part"), L"<module \"first\"/>");
    first->SetScannedAlone(true);
    first->SetEnabled(false);
    first->SetFileStamp(5, 6);
    const auto second = MakeInfo(Vst3(L"/b.vst3"));
    second->SetStatus(ModuleStatus::NotAPlugin);
    second->SetReason("no plug-in");
    const auto records =
        ReadConfiguration(PluginModuleInfoManager::ToConfigurationText({second, first}), "text").modules;
    ASSERT_THAT(LocatorsOf(records), ElementsAre(second->GetLocator(), first->GetLocator()));
    EXPECT_EQ(records[0]->GetStatus(), ModuleStatus::NotAPlugin);
    EXPECT_EQ(records[0]->GetReason(), "no plug-in");
    EXPECT_EQ(records[1]->GetName(), first->GetName());
    EXPECT_TRUE(records[1]->IsScannedAlone());
    EXPECT_FALSE(records[1]->IsEnabled());
    EXPECT_EQ(records[1]->GetFileSize(), 5U);
    EXPECT_EQ(records[1]->GetFileTime(), 6);
    EXPECT_THAT(ReadConfiguration(PluginModuleInfoManager::ToConfigurationText({}), "text").modules,
                IsEmpty());
}

TEST_F(RegistryRecordsTest, ATextThatIsNoConfigurationIsRefusedWithItsLine)
{
    for (const char* text : {"", "nonsense", "<wrong/>", "<"})
        EXPECT_THAT(ErrorOf([&] { registry.AddConfiguration(text, false); }),
                    HasSubstr("plug-in configuration, line "))
            << text;
}

TEST_F(RegistryRecordsTest, AFileGivesTheRecordsOfTheWantedTechnologiesWhateverTheirStatus)
{
    registry.AddModule(MakeInfo(Vst(L"/a.so")));
    registry.AddModule(MakeInfo(Vst3(L"/m.vst3", L"two")));
    registry.AddModule(MakeInfo(Vst3(L"/m.vst3", L"one")));
    const auto failed = MakeInfo(Vst3(L"/failed.vst3"));
    failed->SetStatus(ModuleStatus::Failed);
    registry.AddModule(failed);
    registry.AddModule(MakeInfo({TechnologyType::AU, L"/u"}));
    registry.SaveConfiguration(file, true);
    const auto records = Vst3Records();
    EXPECT_THAT(LocatorsOf(records),
                ElementsAre(Vst3(L"/failed.vst3"), Vst3(L"/m.vst3", L"one"), Vst3(L"/m.vst3", L"two")));
    EXPECT_EQ(records.front()->GetStatus(), ModuleStatus::Failed);
    EXPECT_THAT(
        LocatorsOf(PluginModuleInfoManager::RecordsInFile(file, {TechnologyType::AU, TechnologyType::VST})),
        ElementsAre(Vst(L"/a.so"), PluginLocator(TechnologyType::AU, L"/u")));
    EXPECT_THAT(PluginModuleInfoManager::RecordsInFile(file, {}), IsEmpty());
}

TEST_F(RegistryRecordsTest, ItsJournalCounts)
{
    registry.AddModule(MakeInfo(Vst3(L"/kept.vst3")));
    registry.AddModule(MakeInfo(Vst3(L"/removed.vst3")));
    registry.AddModule(MakeInfo(Vst3(L"/broken.vst3")));
    registry.BeginIncrementalSaves();
    registry.SaveConfiguration(file, true);
    registry.RemovePluginLocators({Vst3(L"/removed.vst3")});
    const auto broken = MakeInfo(Vst3(L"/broken.vst3"));
    broken->SetStatus(ModuleStatus::Failed);
    registry.AddModule(broken);
    registry.AddModule(MakeInfo(Vst3(L"/new.vst3")));
    registry.AddModule(MakeInfo(Vst(L"/new.so")));
    registry.SaveConfiguration(file, true);
    ASSERT_TRUE(std::filesystem::exists(journal));
    const auto records = Vst3Records();
    ASSERT_THAT(LocatorsOf(records),
                ElementsAre(Vst3(L"/broken.vst3"), Vst3(L"/kept.vst3"), Vst3(L"/new.vst3")));
    EXPECT_EQ(records.front()->GetStatus(), ModuleStatus::Failed);

    // A journal of another content is none of this file's.
    registry.EndIncrementalSaves();
    const std::string old = ReadAll(journal);
    registry.AddModule(MakeInfo(Vst3(L"/later.vst3")));
    registry.RemovePluginLocators({Vst3(L"/new.vst3")});
    registry.SaveConfiguration(file, true);
    WriteAll(journal, old);
    EXPECT_THAT(LocatorsOf(Vst3Records()),
                ElementsAre(Vst3(L"/broken.vst3"), Vst3(L"/kept.vst3"), Vst3(L"/later.vst3")));
}

TEST_F(RegistryRecordsTest, WhatIsAsideIsNoRecord)
{
    WriteFile("<aside locator=\"VST3|/aside.vst3|\"/>\n<module locator=\"VST3|/both.vst3|\"/>\n"
              "<aside locator=\"VST3|/both.vst3|\"/>\n<choice locator=\"VST3|/gone.vst3|\"/>\n");
    EXPECT_THAT(LocatorsOf(Vst3Records()), ElementsAre(Vst3(L"/both.vst3")));
}

TEST_F(RegistryRecordsTest, ADamagedFileIsNamedAndStaysWhereItIs)
{
    const std::string damaged =
        "<audioplugins version=\"1.1\">\n<module locator=\"VST3|/a.vst3|\" size=\"x\"/>";
    for (const std::string& content : {damaged, damaged + "</audioplugins>", std::string("nonsense")}) {
        WriteAll(path, content);
        WriteAll(journal, "nonsense");
        EXPECT_THAT(ErrorOf([&] { Vst3Records(); }), HasSubstr(file.FullPathUTF8() + ", line "));
        EXPECT_EQ(ReadAll(path), content);
        EXPECT_EQ(ReadAll(journal), "nonsense");
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(prefs), {}), 2);
}

TEST_F(RegistryRecordsTest, DamageInRecordsOfOtherTechnologiesIsPassedOver)
{
    WriteFile("<module locator=\"VST|/a.so|\" size=\"x\"/>\n<module locator=\"VST3|/b.vst3|\"/>\n"
              "<choice locator=\"AU|\" enabled=\"?\"/>\n");
    EXPECT_THAT(LocatorsOf(Vst3Records()), ElementsAre(Vst3(L"/b.vst3")));
    EXPECT_THROW(PluginModuleInfoManager::RecordsInFile(file, {TechnologyType::VST}), std::runtime_error);
}

TEST_F(RegistryRecordsTest, AMissingFileHasNoRecordsAndIsNotMade)
{
    EXPECT_THAT(Vst3Records(), IsEmpty());
    EXPECT_THAT(std::distance(std::filesystem::directory_iterator(prefs), {}), 0);
}

} // namespace
} // namespace zetaudiofilterhost
