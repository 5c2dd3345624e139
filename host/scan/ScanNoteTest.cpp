#include "scan/ScanNote.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>

namespace zetaudiopluginmanager {

namespace {

using testing::HasSubstr;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhostui::ScanEnd;

ChangedPlugin Plugin(const std::wstring& name, const std::string& reason = {})
{
    return {PluginLocator(TechnologyType::VST, L"/" + name), name, reason};
}

TEST(ScanNote, SaysNothingWhenAllWentWell)
{
    ScanWatch::Result result;
    EXPECT_EQ(FormatScanNote(result), "");
    result.changes.added = {Plugin(L"a"), Plugin(L"b")};
    result.changes.restored = {Plugin(L"b")};
    result.changes.updated = {Plugin(L"c")};
    EXPECT_EQ(FormatScanNote(result), "");
    result.end.how = ScanEnd::How::Cancelled;
    EXPECT_EQ(FormatScanNote(result), "") << "everything had been reached";
}

TEST(ScanNote, SaysHowManyOfEachAndWhichDoNotWork)
{
    ScanWatch::Result result;
    result.changes.added = {Plugin(L"a"), Plugin(L"b"), Plugin(L"c")};
    result.changes.restored = {Plugin(L"b")};
    result.changes.updated = {Plugin(L"u")};
    result.changes.removed = {Plugin(L"Gone One")};
    result.changes.banned = {Plugin(L"Bad\nOne", "crashed\nlast words"), Plugin(L"Other")};
    result.changes.unreadable = {Plugin(L"locked.so", "Permission denied")};
    EXPECT_EQ(FormatScanNote(result), "Plug-ins after the scan:\n"
                                      "\n"
                                      "New: 2\n"
                                      "Working again: 1\n"
                                      "Updated: 1\n"
                                      "\n"
                                      "No longer there: 1\n"
                                      "\u2022 Gone One\n"
                                      "\n"
                                      "Not working: 2\n"
                                      "\u2022 Bad One: crashed\n"
                                      "\u2022 Other\n"
                                      "\u201CReload\u201D in the list tries a plug-in again.\n"
                                      "\n"
                                      "Could not be read: 1\n"
                                      "\u2022 locked.so: Permission denied\n"
                                      "The next scan tries again.");
}

TEST(ScanNote, AReasonOfFactsIsInTheUsersLanguage)
{
    using zetaudiopluginhost::PluginFailure;
    ScanWatch::Result result;
    result.changes.banned = {Plugin(L"Bad One", "its entry function refused"),
                             Plugin(L"Old One", "its entry function refused")};
    result.changes.banned[0].failures = {{.kind = PluginFailure::Kind::EntryRefused}};
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/BanReason/EntryRefused\"=\"lehnte ab\"", "de");
    const std::string note = FormatScanNote(result);
    zetcore::config::Localizer::Get().Reset();
    EXPECT_THAT(note, HasSubstr("\u2022 Bad One: lehnte ab\n\u2022 Old One: its entry function refused\n"));
}

TEST(ScanNote, WordsOfTheLauncherAndOfTheSystemAreInTheUsersLanguage)
{
    ScanWatch::Result result;
    result.end = {ScanEnd::How::NotStarted, "There is no scanner program: /opt/scan"};
    result.changes.unreadable = {Plugin(L"locked.so", "Cannot read \"/locked.so\": Permission denied")};
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/Reason/NoScanner\"=\"Kein Programm: @0\"\n"
        "\"$$$/AudioPluginManager/Reason/File/Read\"=\"@0 nicht lesbar: @1\"\n"
        "\"$$$/AudioPluginManager/Reason/System/PermissionDenied\"=\"nicht erlaubt\"",
        "de");
    const std::string note = FormatScanNote(result);
    zetcore::config::Localizer::Get().Reset();
    EXPECT_THAT(note, HasSubstr("\nKein Programm: /opt/scan"));
    EXPECT_THAT(note, HasSubstr("\u2022 locked.so: /locked.so nicht lesbar: nicht erlaubt\n"));
}

TEST(ScanNote, PluginsOfOneNameAreToldApartByTheirFiles)
{
    ScanWatch::Result result;
    const auto named = [](const std::wstring& path, const std::wstring& name) {
        return ChangedPlugin{PluginLocator(TechnologyType::VST, path), name, {}};
    };
    result.changes.removed = {named(L"/p/delay.so", L"Delay"), named(L"/p/delay.vst3", L"Delay"),
                              named(L"/p/gate.so", L"Gate")};
    EXPECT_THAT(FormatScanNote(result), HasSubstr("\n\u2022 delay.so\n\u2022 delay.vst3\n\u2022 Gate"));
}

TEST(ScanNote, EachThingThatDidNotGoWellIsTold)
{
    const std::pair<const char*, std::vector<ChangedPlugin> ScanChanges::*> things[] = {
        {"No longer there: 1", &ScanChanges::removed},
        {"Not working: 1", &ScanChanges::banned},
        {"Could not be read: 1", &ScanChanges::unreadable},
        {"Plug-ins not scanned: 1", &ScanChanges::unreached}};
    for (const auto& [text, thing] : things) {
        ScanWatch::Result result;
        (result.changes.*thing).push_back(Plugin(L"one"));
        EXPECT_THAT(FormatScanNote(result), HasSubstr(text));
    }
    for (const ScanEnd::How how : {ScanEnd::How::NotStarted, ScanEnd::How::GaveUp}) {
        ScanWatch::Result result;
        result.end = {how, "line one\nline two"};
        EXPECT_THAT(FormatScanNote(result), HasSubstr(".\nline one\nline two"));
    }
}

TEST(ScanNote, SaysWhatToDoWhenTheScannerCannotBeStarted)
{
    const std::string advice = "\nIf the scanner program is missing, install this program again.";
    ScanWatch::Result result;
    result.end = {ScanEnd::How::NotStarted, "why"};
    EXPECT_THAT(FormatScanNote(result), testing::EndsWith("\nwhy" + advice));
    result.end.how = ScanEnd::How::GaveUp;
    EXPECT_THAT(FormatScanNote(result), testing::Not(HasSubstr(advice)));
}

TEST(ScanNote, AReasonDoesNotRepeatThePathOfItsPlugin)
{
    ScanWatch::Result result;
    result.changes.banned = {Plugin(L"a.so", "could not be loaded: /a.so: undefined symbol: wanted"),
                             Plugin(L"b.so", "could not be loaded: /other/b.so: undefined symbol: wanted")};
    const std::string note = FormatScanNote(result);
    EXPECT_THAT(note, HasSubstr("\u2022 a.so: could not be loaded: undefined symbol: wanted\n"));
    EXPECT_THAT(note, HasSubstr("\u2022 b.so: could not be loaded: /other/b.so: undefined symbol: wanted\n"));
}

TEST(ScanNote, ALongFolderIsCutBeforeAName)
{
    const auto folder = [](const std::wstring& path) {
        return ChangedPlugin{PluginLocator(TechnologyType::Unknown, path), path, {}};
    };
    const std::wstring name = L"Shared Drive of the Second Studio";
    ScanWatch::Result result;
    result.changes.unreadable = {folder(L"/home/somebody/with/a/long/path/to/the/news/" + name),
                                 folder(L"/short/" + name), folder(L"/" + std::wstring(80, L'n'))};
    const std::string note = FormatScanNote(result);
    EXPECT_THAT(note, HasSubstr("\u2022 \u2026/a/long/path/to/the/news/Shared Drive of the Second Studio\n"));
    EXPECT_THAT(note, HasSubstr("\u2022 /short/Shared Drive of the Second Studio\n"));
    EXPECT_THAT(note, HasSubstr("\u2022 \u2026" + std::string(59, 'n') + "\n"));
}

TEST(ScanNote, SaysWhyPluginsWereNotReachedAndThatTheyStay)
{
    ScanWatch::Result result;
    result.changes.added = {Plugin(L"a")};
    result.changes.unreached = {Plugin(L"x", "no scanner"), Plugin(L"y", "no scanner")};
    result.end = {ScanEnd::How::NotStarted, "no scanner"};
    EXPECT_EQ(FormatScanNote(result), "Plug-ins after the scan:\n"
                                      "\n"
                                      "New: 1\n"
                                      "\n"
                                      "The scanner program could not be started.\n"
                                      "no scanner\n"
                                      "If the scanner program is missing, install this program again.\n"
                                      "Plug-ins not scanned: 2\n"
                                      "What was not scanned stays in the list as it was.");
    result.end = {ScanEnd::How::Done, {}};
    EXPECT_THAT(FormatScanNote(result), HasSubstr("Plug-ins not scanned: 2\n\u2022 x: no scanner\n"))
        << "each has its own reason";
    result.end = {ScanEnd::How::Cancelled, {}};
    EXPECT_THAT(FormatScanNote(result), HasSubstr("The scan was cancelled.\nPlug-ins not scanned: 2\n"));
}

std::vector<ChangedPlugin> Several(int count)
{
    std::vector<ChangedPlugin> plugins;
    for (int number = 1; number <= count; ++number)
        plugins.push_back(
            Plugin(L"p" + std::to_wstring(number) + std::wstring(200, L'n'), std::string(500, 'x')));
    return plugins;
}

TEST(ScanNote, LongListsNamesAndReasonsAreCutAndSaySo)
{
    ScanWatch::Result result;
    result.changes.removed = Several(9);
    const std::string item = std::string(57, 'n') + "\u2026: " + std::string(59, 'x') + "\u2026";
    EXPECT_THAT(FormatScanNote(result), testing::EndsWith("\n\u2022 p9" + item));
    result.changes.removed = Several(10);
    EXPECT_THAT(FormatScanNote(result), testing::EndsWith("\u2022 p8" + item + "\n\u2022 and 2 more"));
    EXPECT_THAT(FormatScanNote(result),
                testing::StartsWith("Plug-ins after the scan:\n\nNo longer there: 10\n"));
    ScanWatch::Result folder;
    folder.changes.unreadable = {{{TechnologyType::Unknown, L"/x"}, std::wstring(99, L'x') + L"/end", "why"}};
    EXPECT_THAT(FormatScanNote(folder), HasSubstr("x/end: why\n")) << "a path tells most at its end";
}

TEST(ScanNote, AShortNameLeavesItsRoomToTheReason)
{
    ScanWatch::Result result;
    result.changes.banned = {Plugin(L"Short", std::string(115, 'x'))};
    EXPECT_THAT(FormatScanNote(result), HasSubstr("Short: " + std::string(115, 'x') + "\n"));
    result.changes.banned = {Plugin(L"Short", std::string(116, 'x'))};
    EXPECT_THAT(FormatScanNote(result), HasSubstr("Short: " + std::string(114, 'x') + "\u2026\n"));
}

TEST(ScanNote, SeveralListsShareTheRoomOfASmallScreen)
{
    std::vector<ChangedPlugin> ScanChanges::*const lists[] = {
        &ScanChanges::removed, &ScanChanges::banned, &ScanChanges::unreadable, &ScanChanges::unreached};
    constexpr std::ptrdiff_t mostItems[] = {9, 12, 12, 12};
    ScanWatch::Result result;
    result.changes.added = result.changes.restored = result.changes.updated = Several(3);
    for (std::size_t index = 0; index < std::size(lists); ++index) {
        result.changes.*lists[index] = Several(100);
        const std::string text = FormatScanNote(result);
        std::ptrdiff_t items = 0;
        for (std::size_t at = text.find("\u2022"); at != std::string::npos; at = text.find("\u2022", at + 1))
            ++items;
        EXPECT_LE(items, mostItems[index]) << text;
        EXPECT_LE(std::count(text.begin(), text.end(), '\n') + items, 40) << "lines, two for each item";
    }
}

} // namespace

} // namespace zetaudiopluginmanager
