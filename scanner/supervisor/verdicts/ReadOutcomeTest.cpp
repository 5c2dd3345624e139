#include "supervisor/verdicts/ReadOutcome.h"

#include <stdexcept>

#include <gtest/gtest.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::ScanPhase;

const PluginLocator shell(TechnologyType::VST, L"/shell.so");

std::shared_ptr<PluginModuleInfo> Record(const PluginLocator& locator,
                                         ModuleStatus status = ModuleStatus::Working)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(L"Name");
    info->SetStatus(status);
    return info;
}

EntityAnswer AnswerWith(const std::vector<std::shared_ptr<PluginModuleInfo>>& infos)
{
    EntityAnswer answer;
    answer.number = 1;
    answer.configuration = PluginModuleInfoManager::ToConfigurationText(infos);
    return answer;
}

TEST(ReadOutcome, gives_every_record_of_the_module_whatever_its_status)
{
    const PluginLocator part(TechnologyType::VST, shell.GetPath(), L"part");
    const auto outcome =
        ReadOutcome(AnswerWith({Record(part), Record(shell, ModuleStatus::NotAPlugin)}), shell);
    ASSERT_EQ(outcome.infos.size(), 2U);
    EXPECT_FALSE(outcome.misbehaved);
    const auto ofPart = ReadOutcome(AnswerWith({Record(part)}), part);
    ASSERT_EQ(ofPart.infos.size(), 1U);
    EXPECT_EQ(ofPart.infos[0]->GetLocator(), part);
    EXPECT_EQ(ofPart.infos[0]->GetName(), L"Name");
}

TEST(ReadOutcome, refuses_records_of_another_module)
{
    EXPECT_THROW(
        ReadOutcome(AnswerWith({Record(shell), Record(PluginLocator(TechnologyType::VST, L"/b.so"))}), shell),
        std::runtime_error);
    EXPECT_THROW(ReadOutcome(AnswerWith({Record(PluginLocator(TechnologyType::VST3, L"/shell.so"))}), shell),
                 std::runtime_error);
}

TEST(ReadOutcome, refuses_what_is_no_configuration)
{
    for (const char* text : {"", "nonsense", "<wrong/>", "<"}) {
        EntityAnswer answer = AnswerWith({});
        answer.configuration = text;
        EXPECT_THROW(ReadOutcome(answer, shell), std::runtime_error) << text;
    }
}

TEST(ReadOutcome, keeps_what_a_plugin_that_misbehaved_did)
{
    EntityAnswer answer = AnswerWith({});
    answer.misbehaved = true;
    answer.phase = ScanPhase::Close;
    answer.reason = "threw";
    const auto outcome = ReadOutcome(answer, shell);
    EXPECT_TRUE(outcome.misbehaved);
    EXPECT_EQ(outcome.phase, ScanPhase::Close);
    EXPECT_EQ(outcome.reason, "threw");
    EXPECT_FALSE(outcome.couldNotLoad);
    EXPECT_TRUE(outcome.infos.empty());
}

TEST(ReadOutcome, believes_that_one_could_not_be_loaded_only_of_one_that_misbehaved)
{
    EntityAnswer answer = AnswerWith({});
    answer.couldNotLoad = true;
    EXPECT_FALSE(ReadOutcome(answer, shell).couldNotLoad);
    answer.misbehaved = true;
    EXPECT_TRUE(ReadOutcome(answer, shell).couldNotLoad);
}

} // namespace
} // namespace zetaudiofilterscan
