#include "RegistryLook.h"

#include <gtest/gtest.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zettesting/HostFixture.h>

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;

std::shared_ptr<PluginModuleInfo> Record(const PluginLocator& locator,
                                         ModuleStatus status = ModuleStatus::Working)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(L"<module locator=\"VST3|/no.vst3|\" status=\"working\"");
    info->SetStatus(status);
    return info;
}

class RegistryLook : public zettesting::HostFixture
{};

TEST_F(RegistryLook, finds_the_working_vst3_modules_that_the_registry_wrote)
{
    const PluginLocator plain(TechnologyType::VST3, L"/plain.vst3");
    const PluginLocator odd(TechnologyType::VST3, L"/o\"d'd <&> | % \n\t\xDC81\x00E9.vst3");
    const std::string text = PluginModuleInfoManager::ToConfigurationText(
        {Record(PluginLocator(TechnologyType::VST, L"/a.so")), Record(plain),
         Record(PluginLocator(TechnologyType::VST3, L"/failed.vst3"), ModuleStatus::Failed),
         Record(PluginLocator(odd.GetTechnologyType(), odd.GetPath(), L"one")),
         Record(PluginLocator(odd.GetTechnologyType(), odd.GetPath(), L"two"))});
    EXPECT_EQ(WorkingVST3Modules(text), (std::vector{plain, odd}));
}

TEST_F(RegistryLook, finds_nothing_in_what_is_no_registry)
{
    for (const char* text :
         {"", "<module", "<module locator=\"VST3|", "<module locator=\"VST3|&#xFFFFFFFFF;|\"",
          "<module locator=\"VST3|&;&x;|\"", "nonsense"})
        EXPECT_TRUE(WorkingVST3Modules(text).empty()) << text;
}

TEST_F(RegistryLook, takes_a_missing_file_for_an_empty_one)
{
    EXPECT_TRUE(WorkingVST3ModulesOfFile(zettesting::ToWide(prefs / "none.xml")).empty());
}

} // namespace
} // namespace zetaudiofilterscan
