#include "dialog/list/PluginListText.h"

#include <gtest/gtest.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/string/Utf.h>

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
    EXPECT_EQ(typeOf(TechnologyType::Unknown), L"");
    EXPECT_EQ(typeOf(static_cast<TechnologyType>(1)), L"");
}

TEST(PluginListText, OnlyEnabledPluginsSortBehindTheOthers)
{
    EXPECT_EQ(GetEnabledSortText(Working(true)), L"2");
    EXPECT_EQ(GetEnabledSortText(Working(false)), L"1");
    EXPECT_EQ(GetEnabledSortText(BannedEntry()), L"1");
    EXPECT_EQ(GetEnabledDescription(Working(true)), L"on");
    EXPECT_EQ(GetEnabledDescription(Working(false)), L"off");
    EXPECT_EQ(GetEnabledDescription(BannedEntry()), L"off");
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

TEST(PluginListText, TheDetailsAreThePathAndWhatIsKnownOfTheFile)
{
    const auto info =
        std::make_shared<PluginModuleInfo>(PluginLocator(TechnologyType::VST3, L"/plugins/mill.vst3"));
    EXPECT_EQ(GetDetails({info->GetLocator(), info}), L"/plugins/mill.vst3\nFormat: VST3");
    info->SetVendor(L"Old Mill");
    info->SetVersionString(L"1.2");
    // At noon (UTC), nearly all time zones have the same date.
    info->SetFileStamp(1, 1'700'049'600'000'000'000);
    const std::wstring details = GetDetails({info->GetLocator(), info});
    EXPECT_EQ(
        details.find(L"/plugins/mill.vst3\nMaker: Old Mill \u00b7 Format: VST3 \u00b7 Version: 1.2 \u00b7 "
                     L"File date: 2023-11-1"),
        0u)
        << zetcore::string::UTF16to8(details);
}

TEST(PluginListText, TheDetailsOfABannedOneBeginWithTheReason)
{
    auto& banned = *zetaudiopluginhost::BannedPluginManager::GetInstance();
    const PluginListEntry entry = BannedEntry();
    EXPECT_EQ(GetDetails(entry),
              GetCellText(kColumnPath, entry) + L"\nFormat: " + GetCellText(kColumnType, entry))
        << "it is not banned any more";
    banned.AddBannedPlugin(entry.locator, zetaudiopluginhost::BanInfo{
                                              "It crashed.", 1700049600, {5, 1'700'049'600'000'000'000}});
    const std::wstring details = GetDetails(entry);
    const std::wstring copied = GetDetailsToCopy(entry);
    ResetBannedPlugins(banned);
    EXPECT_EQ(details.find(L"It crashed. \u00b7 Banned: 2023-11-1"), 0u)
        << zetcore::string::UTF16to8(details);
    EXPECT_NE(details.find(GetCellText(kColumnPath, entry) + L"\nFormat: "), std::wstring::npos);
    EXPECT_NE(details.find(L"File date: 2023-11-1"), std::wstring::npos);
    const std::wstring advice = L" \u00b7 \u201cReload\u201d tries it again.\n";
    std::wstring lines = details;
    ASSERT_NE(lines.find(advice), std::wstring::npos) << "it says what to do next";
    lines.replace(lines.find(advice), advice.size(), L"\n");
    for (std::size_t at = 0; (at = lines.find(L" \u00b7 ")) != std::wstring::npos;)
        lines.replace(at, 3, L"\n");
    lines.insert(lines.find(GetCellText(kColumnPath, entry)), L"Path: ");
    EXPECT_EQ(copied, L"Name: bad one.so\nStatus: Not Working\n" + lines + L"\n")
        << "the clipboard gets the same facts";
}

TEST(PluginListText, AReasonOfFactsIsInTheUsersLanguageAndWordsStandAsTheyAre)
{
    using zetaudiopluginhost::PluginFailure;
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/BanReason/TookTooLong\"=\"brauchte @1 mehr als @0\"\n"
        "\"$$$/AudioPluginManager/BanPhase/Load\"=\"beim Laden\"\n",
        "test");
    const auto shown =
        GetBanDescription(zetaudiopluginhost::BanFor({{.kind = PluginFailure::Kind::TookTooLong,
                                                       .phase = zetaudiopluginhost::ScanPhase::Load,
                                                       .limit = std::chrono::seconds(60),
                                                       .lastOutput = "warte"}}));
    const auto old = GetBanDescription({"crashed (aborted) while being loaded", 0});
    zetcore::config::Localizer::Get().Reset();
    EXPECT_EQ(shown, L"Brauchte beim Laden mehr als 60 seconds; its last output: warte");
    EXPECT_EQ(old, L"Crashed (aborted) while being loaded");
}

TEST(PluginListText, TheSystemsWordsInAReasonAreInTheUsersLanguage)
{
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/BanReason/CouldNotLoad\"=\"nicht ladbar: @0\"\n"
        "\"$$$/AudioPluginManager/Reason/Load/Open\"=\"@0 geht nicht auf (@1)\"\n"
        "\"$$$/AudioPluginManager/Reason/System/NoSuchFile\"=\"fehlt\"\n",
        "test");
    const auto shown = GetBanDescription(zetaudiopluginhost::BanFor(
        {{.kind = zetaudiopluginhost::PluginFailure::Kind::CouldNotLoad,
          .details = {"libx.so.1: cannot open shared object file: No such file or directory"}}}));
    zetcore::config::Localizer::Get().Reset();
    EXPECT_EQ(shown, L"Nicht ladbar: libx.so.1 geht nicht auf (fehlt)");
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
