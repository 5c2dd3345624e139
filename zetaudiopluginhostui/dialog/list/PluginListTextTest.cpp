#include "dialog/list/PluginListText.h"

#include <gtest/gtest.h>
#include <zetcore/config/Localizer.h>

namespace zetaudiopluginhostui {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;

PluginListEntry Working(bool enabled = true)
{
    const PluginLocator locator(TechnologyType::VST3, L"/folder/reverb.vst3");
    const auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(L"Reverb");
    info->SetVersionString(L"2.10");
    info->SetEnabled(enabled);
    return {locator, info};
}

PluginListEntry BannedEntry()
{
    return {PluginLocator(TechnologyType::VST, L"/folder/bad one.so"), nullptr};
}

TEST(PluginListText, EachColumnShowsWhatTheEntryIs)
{
    struct Case
    {
        unsigned column;
        const wchar_t* working;
        const wchar_t* banned;
    };
    for (const Case& each : {Case{kColumnEnabled, L"", L""},
                             {kColumnName, L"Reverb", L"bad one.so"},
                             {kColumnType, L"VST3", L"VST"},
                             {kColumnStatus, L"Working", L"Not Working"},
                             {kColumnVersion, L"2.10", L"-"},
                             {kColumnPath, L"/folder/reverb.vst3", L"/folder/bad one.so"},
                             {0, L"", L""},
                             {7, L"", L""}}) {
        EXPECT_EQ(GetCellText(each.column, Working()), each.working) << each.column;
        EXPECT_EQ(GetCellText(each.column, BannedEntry()), each.banned) << each.column;
    }
}

TEST(PluginListText, APathAndTheNameThatStandsInItAreAsTheRegistryShowsThem)
{
    const std::wstring path{L'/', L'a', L'/', static_cast<wchar_t>(0xDC80), L'.', L's', L'o'};
    const PluginLocator locator(TechnologyType::VST, path);
    EXPECT_EQ(GetCellText(kColumnPath, {locator, nullptr}), L"/a/\ufffd.so");
    EXPECT_EQ(GetCellText(kColumnName, {locator, nullptr}), L"\ufffd.so");
    EXPECT_EQ(GetCellText(kColumnPath, {locator, std::make_shared<PluginModuleInfo>(locator)}),
              L"/a/\ufffd.so");
}

TEST(PluginListText, TheTypeIsTheTechnologysNameAndEmptyForAnUnknownOne)
{
    const auto typeOf = [](TechnologyType type) {
        return GetCellText(kColumnType, {PluginLocator(type, L"/a"), nullptr});
    };
    EXPECT_EQ(typeOf(TechnologyType::VST), L"VST");
    EXPECT_EQ(typeOf(TechnologyType::VST3), L"VST3");
    EXPECT_EQ(typeOf(TechnologyType::AU), L"AU");
    EXPECT_EQ(typeOf(TechnologyType::None), L"");
    EXPECT_EQ(typeOf(static_cast<TechnologyType>(1)), L"");
}

TEST(PluginListText, OnlyEnabledPluginsSortBehindTheOthers)
{
    EXPECT_EQ(GetEnabledSortText(Working(true)), L"2");
    EXPECT_EQ(GetEnabledSortText(Working(false)), L"1");
    EXPECT_EQ(GetEnabledSortText(BannedEntry()), L"1");
    EXPECT_EQ(GetEnabledDescription(Working(true)), L"Enabled");
    EXPECT_EQ(GetEnabledDescription(Working(false)), L"Disabled");
    EXPECT_EQ(GetEnabledDescription(BannedEntry()), L"Disabled");
}

TEST(PluginListText, ABanIsDescribedByItsReasonAndTimeAsFarAsTheyAreKnown)
{
    EXPECT_EQ(GetBanDescription({"It crashed.", 0}), L"It crashed.");
    EXPECT_EQ(GetBanDescription({"", 0}), L"The reason is not known.");
    // At noon (UTC), nearly all time zones have the same date.
    const std::wstring text = GetBanDescription({"It crashed.", 1700049600});
    EXPECT_EQ(text.find(L"It crashed.\nBanned: 2023-11-1"), 0u);
    EXPECT_EQ(text.size(), std::wstring(L"It crashed.\nBanned: 2023-11-15 12:00").size());
}

TEST(PluginListText, TheStatusIsInTheUsersLanguage)
{
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/Failed\"=\"Defekt\"\n\"$$$/AudioPluginManager/Working\"=\"Bereit\"\n",
        "test");
    EXPECT_EQ(GetCellText(kColumnStatus, Working()), L"Bereit");
    EXPECT_EQ(GetCellText(kColumnStatus, BannedEntry()), L"Defekt");
    zetcore::config::Localizer::Get().Reset();
}

} // namespace
} // namespace zetaudiopluginhostui
