#include "scan/ScanOutcome.h"

#include <memory>

#include <gmock/gmock.h>
#include <zettesting/HostFixture.h>

namespace zetaudiopluginmanager {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;
using Status = ScanOutcome::Status;

class ScanOutcomesTest : public zettesting::HostFixture
{
  protected:
    void Found(const PluginLocator& plugin, ModuleStatus status, const std::string& reason = {})
    {
        const auto info = std::make_shared<PluginModuleInfo>(plugin);
        info->SetName(L"Name");
        info->SetStatus(status);
        info->SetReason(reason);
        registry.AddModule(info);
    }
    std::vector<std::pair<std::wstring, Status>> Told() const
    {
        std::vector<std::pair<std::wstring, Status>> all;
        for (const ScanOutcome& outcome : told)
            all.emplace_back(outcome.module.GetPath(), outcome.status);
        return all;
    }

    zetaudiofilterhost::PluginModuleInfoManager registry;
    zetaudiopluginhost::BannedPluginManager banned;
    const PluginLocator a{TechnologyType::VST, L"/p/a.so"};
    const PluginLocator b{TechnologyType::VST, L"/p/b.so"};
    const PluginLocator c{TechnologyType::VST, L"/p/c.so"};
    std::vector<ScanOutcome> told;
    ScanOutcomes outcomes{
        registry, banned, {a, b, c, a}, [this](const ScanOutcome& outcome) { told.push_back(outcome); }};
};

TEST_F(ScanOutcomesTest, EachFileIsToldWhenTheNextIsReached)
{
    outcomes.Reach(a);
    outcomes.Reach(a);
    EXPECT_THAT(told, IsEmpty());
    Found(a, ModuleStatus::Working);
    outcomes.Reach(b);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].module, a);
    EXPECT_EQ(told[0].status, Status::Working);
    EXPECT_THAT(told[0].names, ElementsAre(L"Name"));
    EXPECT_EQ(told[0].done, 1u);
    EXPECT_EQ(told[0].total, 3u);
    Found(b, ModuleStatus::Failed, "why");
    outcomes.Reach(c);
    EXPECT_EQ(told.back().reason, "why");
    banned.AddBannedPlugin(c, "crashed");
    outcomes.End({});
    EXPECT_THAT(Told(),
                ElementsAre(std::pair(a.GetPath(), Status::Working), std::pair(b.GetPath(), Status::Failed),
                            std::pair(c.GetPath(), Status::Banned)));
    EXPECT_EQ(told.back().reason, "crashed");
    EXPECT_EQ(told.back().done, 3u);
}

TEST_F(ScanOutcomesTest, AFileThatTheScanDidNotReachIsNoWorkingOne)
{
    Found(a, ModuleStatus::Working);
    outcomes.Reach(a);
    ScanReport report;
    report.changes.unreached = {{a, L"a.so", "cancelled"}, {b, L"b.so", ""}, {c, L"c.so", ""}};
    outcomes.End(report);
    EXPECT_THAT(Told(), ElementsAre(std::pair(a.GetPath(), Status::NotScanned),
                                    std::pair(b.GetPath(), Status::NotScanned),
                                    std::pair(c.GetPath(), Status::NotScanned)));
    EXPECT_EQ(told[0].reason, "cancelled");
}

TEST_F(ScanOutcomesTest, ABanWithoutAReasonWaitsForTheSecondScan)
{
    outcomes.Reach(a);
    banned.AddBannedPlugin(a);
    outcomes.Reach(b);
    EXPECT_THAT(told, IsEmpty());
    banned.RemoveBannedPlugin(a);
    Found(a, ModuleStatus::Working);
    outcomes.Reach(a);
    outcomes.End({});
    EXPECT_THAT(Told(), ElementsAre(std::pair(a.GetPath(), Status::Working),
                                    std::pair(b.GetPath(), Status::NotScanned),
                                    std::pair(c.GetPath(), Status::NotScanned)));
}

} // namespace
} // namespace zetaudiopluginmanager
