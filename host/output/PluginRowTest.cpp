#include "output/PluginRow.h"

#include <memory>

#include <gtest/gtest.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BannedPluginManager;

PluginRow Row(const std::wstring& name, const std::wstring& path, const std::wstring& version)
{
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST, path);
    row.name = name;
    row.path = path;
    row.version = version;
    row.enabled = true;
    return row;
}

bool IsFound(const PluginRow& row, std::wstring_view text)
{
    return !FilterRows({row}, text, RowChoice::All).empty();
}

TEST(PluginRow, TheFilterLooksAtNamePathAndVersion)
{
    const PluginRow row = Row(L"Big \u00c9cho", L"/plugins/Folder/echo.so", L"1.2-beta");
    const struct
    {
        std::wstring_view text;
        bool matches;
    } cases[] = {
        {L"", true},       {L"big", true},       {L"BIG", true},        {L"folder/ECHO", true},
        {L"BETA", true},   {L"\u00c9cho", true}, {L"\u00e9cho", false}, {L"VST3", false},
        {L"big  ", false}, {L"1.3", false},
    };
    for (const auto& each : cases)
        EXPECT_EQ(IsFound(row, each.text), each.matches) << testing::PrintToString(each.text);
}

TEST(PluginRow, TheFilterFindsABannedOneByTheDashThatStandsForItsVersion)
{
    PluginRow row = Row(L"bad.so", L"/bad.so", L"");
    EXPECT_FALSE(IsFound(row, L"-"));
    row.status = RowStatus::Banned;
    EXPECT_TRUE(IsFound(row, L"-"));
}

TEST(PluginRow, EachChoiceKeepsItsRows)
{
    PluginRow enabled = Row(L"on", L"/on.so", L"1"), disabled = Row(L"off", L"/off.so", L"1"),
              banned = Row(L"bad", L"/bad.so", L"");
    disabled.enabled = false;
    banned.enabled = false;
    banned.status = RowStatus::Banned;
    const std::vector<PluginRow> rows{enabled, disabled, banned};
    EXPECT_EQ(FilterRows(rows, L"", RowChoice::All), rows);
    for (const RowStatus status : {RowStatus::Failed, RowStatus::Unreadable, RowStatus::NotScanned}) {
        PluginRow failed = banned;
        failed.status = status;
        EXPECT_EQ(FilterRows({enabled, disabled, failed}, L"", RowChoice::All),
                  (std::vector{enabled, disabled}));
        EXPECT_EQ(FilterRows({enabled, disabled, failed, banned}, L"", RowChoice::Failed),
                  (std::vector{failed, banned}));
        EXPECT_EQ(FilterRows({failed}, L"", RowChoice::Disabled), std::vector<PluginRow>());
        EXPECT_EQ(FilterRows({failed}, L"", RowChoice::Banned), std::vector<PluginRow>());
    }
    EXPECT_EQ(FilterRows(rows, L"", RowChoice::Enabled), std::vector{enabled});
    EXPECT_EQ(FilterRows(rows, L"", RowChoice::Disabled), std::vector{disabled});
    EXPECT_EQ(FilterRows(rows, L"", RowChoice::Banned), std::vector{banned});
    EXPECT_EQ(FilterRows(rows, L"OFF", RowChoice::All), std::vector{disabled});
    EXPECT_EQ(FilterRows(rows, L"off", RowChoice::Banned), std::vector<PluginRow>());
}

TEST(PluginRow, WorkingPluginsComeBeforeBannedOnesAndThoseBeforeTheOthersThatDoNotWork)
{
    auto& registry = *PluginModuleInfoManager::GetInstance();
    auto& banned = *BannedPluginManager::GetInstance();
    ResetRegistry(registry);
    ResetBannedPlugins(banned);
    const auto working = std::make_shared<PluginModuleInfo>(PluginLocator(TechnologyType::VST3, L"/z.vst3"));
    working->SetName(L"Zed");
    working->SetVersionString(L"2.0");
    working->SetVendor(L"Maker");
    working->SetEnabled(false);
    working->SetUniqueId(L"1234");
    working->SetCategory(L"Fx|Delay");
    working->SetFileStamp(10, 20);
    working->SetHasAnyNonSynthEffect(true);
    working->SetHasAnySynth(true);
    registry.AddModule(working);
    const std::pair<std::wstring, ModuleStatus> others[] = {
        {L"/1.so", ModuleStatus::Failed},     {L"/2.so", ModuleStatus::NotAPlugin},
        {L"/3.so", ModuleStatus::Unscanned},  {L"/4.so", ModuleStatus::Skipped},
        {L"/5.so", ModuleStatus::Unreadable},
    };
    for (const auto& [path, status] : others) {
        const auto record = std::make_shared<PluginModuleInfo>(PluginLocator(TechnologyType::VST, path));
        record->SetStatus(status);
        record->SetReason("why");
        registry.AddModule(record);
    }
    banned.AddBannedPlugin(PluginLocator(TechnologyType::VST, L"/folder/a.so"), "signal 11 while loading");

    const std::int64_t now = banned.GetBanInfo(PluginLocator(TechnologyType::VST, L"/folder/a.so"))->time;
    const std::vector<PluginRow> rows = CollectRows(registry, banned);
    ResetRegistry(registry);
    ResetBannedPlugins(banned);

    PluginRow expectedWorking;
    expectedWorking.locator = working->GetLocator();
    expectedWorking.name = L"Zed";
    expectedWorking.path = L"/z.vst3";
    expectedWorking.version = L"2.0";
    expectedWorking.vendor = L"Maker";
    expectedWorking.id = L"1234";
    expectedWorking.category = L"Fx|Delay";
    expectedWorking.fileTime = 20;
    expectedWorking.enabled = false;
    expectedWorking.effect = true;
    expectedWorking.instrument = true;
    PluginRow expectedBanned;
    expectedBanned.locator = PluginLocator(TechnologyType::VST, L"/folder/a.so");
    expectedBanned.name = L"a.so";
    expectedBanned.path = L"/folder/a.so";
    expectedBanned.status = RowStatus::Banned;
    expectedBanned.bannedAt = now;
    expectedBanned.reason = "signal 11 while loading";
    PluginRow failed;
    failed.locator = PluginLocator(TechnologyType::VST, L"/1.so");
    failed.name = L"1.so";
    failed.path = L"/1.so";
    failed.status = RowStatus::Failed;
    failed.reason = "why";
    PluginRow waiting = failed;
    waiting.locator = PluginLocator(TechnologyType::VST, L"/3.so");
    waiting.name = L"3.so";
    waiting.path = L"/3.so";
    waiting.status = RowStatus::NotScanned;
    PluginRow unreadable = failed;
    unreadable.locator = PluginLocator(TechnologyType::VST, L"/5.so");
    unreadable.name = L"5.so";
    unreadable.path = L"/5.so";
    unreadable.status = RowStatus::Unreadable;
    EXPECT_EQ(rows, (std::vector{expectedWorking, expectedBanned, failed, waiting, unreadable}));
}

} // namespace

} // namespace zetaudiopluginmanager
