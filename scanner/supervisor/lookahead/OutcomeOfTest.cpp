#include "supervisor/lookahead/Trials.h"

#include <stdexcept>

#include <gtest/gtest.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::ScanPhase;

const PluginLocator shell(TechnologyType::VST, L"/shell.so");
const PluginLocator part(TechnologyType::VST, shell.GetPath(), L"part");

EntityAnswer AnswerWith(const std::vector<PluginLocator>& records)
{
    EntityAnswer answer;
    answer.number = 7;
    for (const PluginLocator& locator : records)
        answer.outcome.infos.push_back(std::make_shared<PluginModuleInfo>(locator));
    return answer;
}

TEST(OutcomeOf, GivesEveryRecordOfTheModule)
{
    EXPECT_EQ(OutcomeOf(AnswerWith({part, shell}), 7, shell).infos.size(), 2U);
    const auto ofPart = OutcomeOf(AnswerWith({part}), 7, part);
    ASSERT_EQ(ofPart.infos.size(), 1U);
    EXPECT_EQ(ofPart.infos[0]->GetLocator(), part);
}

TEST(OutcomeOf, RefusesRecordsOfAnotherModule)
{
    for (const PluginLocator& other :
         {PluginLocator(TechnologyType::VST, L"/b.so"), PluginLocator(TechnologyType::VST3, shell.GetPath())})
        EXPECT_THROW(OutcomeOf(AnswerWith({shell, other}), 7, shell), std::runtime_error);
}

TEST(OutcomeOf, RefusesTheAnswerToAnotherRequest)
{
    EXPECT_THROW(OutcomeOf(AnswerWith({shell}), 8, shell), std::runtime_error);
}

TEST(OutcomeOf, KeepsWhatAPluginThatMisbehavedDid)
{
    EntityAnswer answer = AnswerWith({});
    answer.outcome.misbehaved = true;
    answer.outcome.failure = {.kind = zetaudiopluginhost::PluginFailure::Kind::Threw,
                              .phase = ScanPhase::Close};
    const auto outcome = OutcomeOf(answer, 7, shell);
    EXPECT_TRUE(outcome.misbehaved);
    EXPECT_EQ(outcome.failure, answer.outcome.failure);
    EXPECT_TRUE(outcome.infos.empty());
}

} // namespace
} // namespace zetaudiofilterscan
