#include <algorithm>
#include <numeric>
#include <random>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zettesting/HostFixture.h>

namespace zetaudiofilterhost {
namespace {

using zetcore::filesupport::File;

/// A scan by several workers takes in its results in the order in which they finished.
class RegistryOrderTest : public zettesting::HostFixture
{
  protected:
    using Results = std::vector<std::string>;

    static PluginModuleInfoManager::InfoPtr Record(const PluginLocator& locator, const std::wstring& name,
                                                   ModuleStatus status = ModuleStatus::Working)
    {
        auto info = std::make_shared<PluginModuleInfo>(locator);
        info->SetName(name);
        info->SetVendor(L"Maker of " + name);
        info->SetUniqueId(L"id of " + name);
        info->SetStatus(status);
        info->SetFileStamp(1000 + name.size(), 1'700'000'000'000'000'000);
        if (status == ModuleStatus::Failed)
            info->SetReason("failed for a test");
        return info;
    }

    std::wstring Path(const std::wstring& name) const
    {
        return zettesting::ToWide(folder / "plugins") + L"/" + name;
    }

    /// One text for each module, as the scanner hands them over.
    Results ResultsOfModules() const
    {
        Results results;
        for (const wchar_t* name : {L"b.so", L"a.so", L"Z.so", L"\xE9.so", L"a b.so", L"c.so"})
            results.push_back(PluginModuleInfoManager::ToConfigurationText(
                {Record({TechnologyType::VST, Path(name)}, name)}));
        results.push_back(PluginModuleInfoManager::ToConfigurationText(
            {Record({TechnologyType::VST, Path(L"shell.so"), L"2"}, L"two"),
             Record({TechnologyType::VST, Path(L"shell.so"), L"1"}, L"one"),
             Record({TechnologyType::VST, Path(L"shell.so"), L"3"}, L"three")}));
        results.push_back(PluginModuleInfoManager::ToConfigurationText(
            {Record({TechnologyType::VST3, Path(L"a.vst3")}, L"a")}));
        results.push_back(PluginModuleInfoManager::ToConfigurationText(
            {Record({TechnologyType::VST, Path(L"failed.so")}, L"failed", ModuleStatus::Failed)}));
        results.push_back(PluginModuleInfoManager::ToConfigurationText(
            {Record({TechnologyType::VST, Path(L"odd.so")}, L"odd", ModuleStatus::Unscanned)}));
        return results;
    }

    struct Texts
    {
        /// The file after the scan.
        std::string file;
        /// The content of file and journal after a scan that was killed before its end.
        std::string afterKill;
        std::vector<PluginLocator> listed;

        friend bool operator==(const Texts&, const Texts&) = default;
    };

    /// A rescan of some known plug-ins, one of them disabled, with new ones.
    Texts Scan(const Results& results, const std::filesystem::path& path) const
    {
        const File file(zettesting::ToWide(path));
        PluginModuleInfoManager registry;
        const PluginLocator known(TechnologyType::VST, Path(L"c.so"));
        const PluginLocator part(TechnologyType::VST, Path(L"shell.so"), L"2");
        const PluginLocator unreached(TechnologyType::VST, Path(L"unreached.so"));
        registry.AddModules({Record(known, L"known"), Record(part, L"two"), Record(unreached, L"kept")});
        registry.Find(known)->SetEnabled(false);
        registry.Find(part)->SetEnabled(false);
        registry.RemovePluginLocators({known, part.ModuleLocator(), unreached});
        registry.SaveConfiguration(file, true);
        for (const std::string& result : results)
            registry.AddConfiguration(result, false);

        Texts texts;
        PluginModuleInfoManager next;
        EXPECT_TRUE(next.LoadConfiguration(file));
        next.PutBackUnreached();
        texts.afterKill = next.ToText();
        registry.PutBackUnreached();
        registry.SaveConfiguration(file, true);
        texts.file = zettesting::ReadAll(path);
        for (auto record = registry.PluginInfoBegin(); record != registry.PluginInfoEnd(); ++record)
            texts.listed.push_back((*record)->GetLocator());
        return texts;
    }
};

TEST_F(RegistryOrderTest, TheFileTellsNothingOfTheOrderInWhichResultsCame)
{
    Results results = ResultsOfModules();
    const Texts inOrder = Scan(results, folder / "in order.xml");
    EXPECT_EQ(inOrder.listed.size(), 11u);
    EXPECT_TRUE(std::is_sorted(inOrder.listed.begin(), inOrder.listed.end()));
    EXPECT_THAT(inOrder.file, testing::HasSubstr("a.vst3"));
    EXPECT_THAT(inOrder.afterKill, testing::HasSubstr("a.vst3"));
    std::mt19937 random(1);
    for (int round = 0; round < 50; ++round) {
        std::shuffle(results.begin(), results.end(), random);
        const Texts shuffled = Scan(results, folder / (std::to_string(round) + ".xml"));
        EXPECT_EQ(shuffled, inOrder) << round;
    }
}

} // namespace
} // namespace zetaudiofilterhost
