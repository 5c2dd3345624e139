#include "scan/ScanNote.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>
#include <zetui/dialogs/messagebox.h>

#include "scan/ScannerProgram.h"
#include "terminal/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiopluginhostui::AudioPluginManager;
using zetaudiopluginhostui::AudioPluginScan;
using zetaudiopluginhostui::ScanEnd;
using zetcore::config::Localizer;
namespace messagebox = zetui::dialogs::messagebox;

constexpr std::string_view addedKey = "$$$/AudioPluginManager/ScanNote/Added=New: @0";
constexpr std::string_view restoredKey = "$$$/AudioPluginManager/ScanNote/Restored=Working again: @0";
constexpr std::string_view updatedKey = "$$$/AudioPluginManager/ScanNote/Updated=Updated: @0";
constexpr std::string_view removedKey = "$$$/AudioPluginManager/ScanNote/Removed=No longer there: @0";
constexpr std::string_view bannedKey = "$$$/AudioPluginManager/ScanNote/Banned=Not working: @0";
constexpr std::string_view unreadableKey = "$$$/AudioPluginManager/ScanNote/Unreadable=Could not be read: @0";
constexpr std::string_view unreachedKey =
    "$$$/AudioPluginManager/ScanNote/PluginsNotScanned=Plug-ins not scanned: @0";
constexpr std::string_view moreKey = "$$$/AudioPluginManager/ScanNote/More=and @0 more";
constexpr std::string_view reasonKey = "$$$/AudioPluginManager/ScanNote/NameAndReason=@0: @1";
constexpr std::string_view headingKey = "$$$/AudioPluginManager/ScanNote/Heading=Plug-ins after the scan:";
constexpr std::string_view reloadKey =
    "$$$/AudioPluginManager/ScanNote/TryAgain=“Reload” in the list tries a plug-in again.";
constexpr std::string_view readAgainKey =
    "$$$/AudioPluginManager/ScanNote/ReadAgain=The next scan tries again.";
constexpr std::string_view cancelledKey = "$$$/AudioPluginManager/ScanNote/Cancelled=The scan was cancelled.";
constexpr std::string_view notStartedKey =
    "$$$/AudioPluginManager/ScanNote/NotStarted=The scanner program could not be started.";
constexpr std::string_view gaveUpKey =
    "$$$/AudioPluginManager/ScanNote/GaveUp=The scanner program failed again and again.";
constexpr std::string_view keptKey =
    "$$$/AudioPluginManager/ScanNote/Kept=What was not scanned stays in the list as it was.";
constexpr std::string_view scanNowKey = "$$$/AudioPluginManager/ScanNote/ScanNow=Scan them now?";
constexpr std::string_view tryNowKey = "$$$/AudioPluginManager/ScanNote/TryNow=Try again?";
constexpr std::string_view installAgainKey =
    "$$$/AudioPluginManager/ScanNote/InstallAgain=If the scanner program is missing, install this program "
    "again.";
constexpr std::string_view interruptedKey = "$$$/AudioPluginManager/ScanNote/Interrupted=An earlier scan was "
                                            "interrupted. The plug-ins that it did not "
                                            "reach are in the list as before: @0";
constexpr std::string_view damagedKey =
    "$$$/AudioPluginManager/ScanNote/Damaged=This file is damaged and was put aside: its name ends in "
    "“.damaged” now. The program starts without what it held.";

/// The most names in a list, for one list, two lists and so on. The note must fit on the screen of a small
/// notebook (1024 by 768): a name takes at most two lines, and several lists share the room.
constexpr std::array<std::size_t, 4> mostNames{8, 5, 3, 2};
constexpr std::size_t longestName = 60, longestReason = 60;

std::string Text(std::string_view key, const std::vector<std::string>& arguments = {})
{
    return Localizer::Get().Localize(key, arguments);
}

/// Of a long path, the last names that have room behind an ellipsis. Where they would fill less than half of
/// it, the path is cut inside a name.
std::string CutPath(const std::string& path, std::size_t width)
{
    if (DisplayWidth(path) <= width)
        return path;
    constexpr std::string_view separators = "/\\", ellipsis = "\xE2\x80\xA6";
    for (std::size_t at = path.find_first_of(separators, 1); at != std::string::npos;
         at = path.find_first_of(separators, at + 1)) {
        const std::size_t rest = DisplayWidth(path.substr(at));
        if (rest < width / 2)
            break;
        if (rest < width)
            return std::string(ellipsis) + path.substr(at);
    }
    return CutBeginning(path, width);
}

/// Two formats of one plug-in have the same name. Such names are followed by their files.
std::string NameOf(const ChangedPlugin& plugin, const std::vector<ChangedPlugin>& all)
{
    const bool isFolder = plugin.locator.GetTechnologyType() == zetaudiofilterhost::TechnologyType::Unknown;
    if (isFolder)
        return CutPath(ForTerminal(plugin.name), longestName);
    const auto named = std::count_if(all.begin(), all.end(),
                                     [&plugin](const auto& other) { return other.name == plugin.name; });
    const std::wstring path = zetcore::string::ForDisplay(plugin.locator.GetPath());
    return CutEnd(ForTerminal(named > 1 ? zetcore::filesupport::File(path).GetTitle() : plugin.name),
                  longestName);
}

/// In the language of the window. The loader of Linux begins its words with the file's path. It is left out,
/// because it takes the room of what the words say.
std::string ReasonOf(const ChangedPlugin& plugin)
{
    std::string reason = plugin.failures.empty()
                             ? zetaudiopluginhost::reasons::InLanguage(plugin.reason, Localizer::Get())
                             : zetaudiopluginhost::WordFailures(plugin.failures, Localizer::Get());
    const std::string path = " " + zetcore::string::UTF16to8(plugin.locator.GetPath()) + ":";
    if (const std::size_t at = reason.find(path); at != std::string::npos)
        reason.erase(at, path.size());
    return reason;
}

std::string Item(const std::string& name, const std::string& reason)
{
    const std::vector<std::string> lines = LinesForTerminal(reason);
    // A short name leaves more of the two lines to the reason.
    const std::size_t room = longestName + longestReason - std::min(DisplayWidth(name), longestName);
    const std::string shown = lines.empty() ? name : Text(reasonKey, {name, CutEnd(lines.front(), room)});
    return "\xE2\x80\xA2 " + shown + "\n";
}

std::string Count(std::string_view key, const std::vector<ChangedPlugin>& plugins)
{
    return plugins.empty() ? std::string() : Text(key, {std::to_string(plugins.size())}) + "\n";
}

/// A heading with the count, the first `most` names, and a last line that says what the user can do.
std::string Section(std::string_view key, const std::vector<ChangedPlugin>& plugins, std::size_t most,
                    std::string_view adviceKey = {})
{
    if (plugins.empty())
        return {};
    std::string text = Count(key, plugins);
    // A last plug-in takes no more room than a line that counts it.
    const std::size_t shown = plugins.size() == most + 1 ? plugins.size() : std::min(plugins.size(), most);
    for (std::size_t index = 0; index < shown; ++index)
        text += Item(NameOf(plugins[index], plugins), ReasonOf(plugins[index]));
    if (shown < plugins.size())
        text += "\xE2\x80\xA2 " + Text(moreKey, {std::to_string(plugins.size() - shown)}) + "\n";
    return adviceKey.empty() ? text : text + Text(adviceKey) + "\n";
}

/// Joins the texts with empty lines between them.
std::string Join(const std::vector<std::string>& paragraphs)
{
    std::string text;
    for (const std::string& paragraph : paragraphs)
        if (!paragraph.empty())
            text += (text.empty() ? "" : "\n") + paragraph;
    return text;
}

/// Says why the scan ended early. Empty for a scan that was done.
std::string EndText(const ScanEnd& end)
{
    std::string text;
    switch (end.how) {
    case ScanEnd::How::Done:
        return {};
    case ScanEnd::How::Cancelled:
        text = Text(cancelledKey);
        break;
    case ScanEnd::How::NotStarted:
        text = Text(notStartedKey);
        break;
    case ScanEnd::How::GaveUp:
        text = Text(gaveUpKey);
        break;
    }
    for (const std::string& line :
         LinesForTerminal(zetaudiopluginhost::reasons::InLanguage(end.reason, Localizer::Get())))
        text += "\n" + line;
    if (end.how == ScanEnd::How::NotStarted)
        text += "\n" + Text(installAgainKey);
    return text + "\n";
}

bool HasSomethingToTell(const ScanWatch::Result& result)
{
    const ScanChanges& changes = result.changes;
    const bool failed = result.end.how == ScanEnd::How::NotStarted || result.end.how == ScanEnd::How::GaveUp;
    return failed || !changes.removed.empty() || !changes.banned.empty() || !changes.unreadable.empty() ||
           !changes.unreached.empty();
}

} // namespace

std::string FormatScanNote(const ScanWatch::Result& result)
{
    if (!HasSomethingToTell(result))
        return {};
    const ScanChanges& changes = result.changes;
    std::vector<ChangedPlugin> added = changes.added;
    std::erase_if(added, [&changes](const ChangedPlugin& plugin) {
        return std::find(changes.restored.begin(), changes.restored.end(), plugin) != changes.restored.end();
    });
    const bool wasDone = result.end.how == ScanEnd::How::Done;
    const bool namesUnreached = wasDone && !changes.unreached.empty();
    const int lists = !changes.removed.empty() + !changes.banned.empty() + !changes.unreadable.empty() +
                      static_cast<int>(namesUnreached);
    const std::size_t most = mostNames[static_cast<std::size_t>(std::max(lists, 1)) - 1];
    const std::string counts =
        Count(addedKey, added) + Count(restoredKey, changes.restored) + Count(updatedKey, changes.updated);
    std::string ending = EndText(result.end);
    if (namesUnreached)
        ending += Section(unreachedKey, changes.unreached, most);
    else if (!changes.unreached.empty())
        ending += Count(unreachedKey, changes.unreached) + Text(keptKey) + "\n";
    std::string text = Join({counts, Section(removedKey, changes.removed, most),
                             Section(bannedKey, changes.banned, most, reloadKey),
                             Section(unreadableKey, changes.unreadable, most, readAgainKey)});
    if (!text.empty())
        text.insert(0, Text(headingKey) + "\n\n");
    text = Join({text, ending});
    text.pop_back();
    return text;
}

void TellOfInterruptedScan(std::size_t count)
{
    messagebox::ShowNote(nullptr, zetcore::utility::GetClientName(),
                         zetcore::string::UTF8to16(Text(interruptedKey, {std::to_string(count)})), {});
}

void TellOfDamagedFile(const zetcore::filesupport::File& file)
{
    const std::string text =
        Text(damagedKey) + "\n\n" + ForTerminal(zetcore::string::ForDisplay(file.FullPath()));
    messagebox::ShowNote(nullptr, zetcore::utility::GetClientName(), zetcore::string::UTF8to16(text), {});
}

void ScanNoteTeller::Tell(const ScanWatch::Result& result)
{
    if (scansAgain) {
        latest = result;
        return;
    }
    ScanWatch::Result shown = result;
    bool offersScan = true;
    while (Show(shown, offersScan)) {
        struct Again
        {
            explicit Again(bool& switchedOn) : flag(switchedOn) { flag = true; }
            ~Again() { flag = false; }
            bool& flag;
        };
        std::vector<zetaudiofilterhost::PluginLocator> plugins;
        for (const ChangedPlugin& plugin : shown.changes.unreached)
            plugins.push_back(plugin.locator);
        latest.reset();
        {
            const Again again(scansAgain);
            const auto scan = std::make_shared<AudioPluginScan>(nullptr);
            scan->ScanForPlugins(nullptr, plugins, !AudioPluginManager::IsVST2ShellSkippingFeatureEnabled(),
                                 AudioPluginManager::IsQuickEffectScanFeatureEnabled(), true);
        }
        if (!latest)
            return;
        shown = *latest;
        offersScan = shown.changes.unreached.size() < plugins.size();
    }
}

bool ScanNoteTeller::Show(const ScanWatch::Result& result, bool offersScan)
{
    std::string text = FormatScanNote(result);
    if (text.empty())
        return false;
    // Until the file is there, a further try ends like this one.
    const bool isHopeless =
        result.end.how == ScanEnd::How::NotStarted && LookAtScannerProgram() == ScannerProgramState::Missing;
    const bool asks = offersScan && !result.changes.unreached.empty() && !isHopeless;
    if (asks)
        text += "\n\n" + Text(result.end.how == ScanEnd::How::NotStarted ? tryNowKey : scanNowKey);
    const int icon =
        result.end.how == ScanEnd::How::Cancelled ? messagebox::kIconNote : messagebox::kIconCaution;
    // A user who has just cancelled a scan hardly wants another.
    const int usual = result.end.how == ScanEnd::How::Cancelled ? messagebox::kNo : messagebox::kYes;
    const int answer = messagebox::Messagebox(
        nullptr, zetcore::utility::GetClientName(), zetcore::string::UTF8to16(text), {},
        asks ? messagebox::kYesNo : messagebox::kOK, asks ? usual : messagebox::kOK, icon);
    return asks && answer == messagebox::kYes;
}

} // namespace zetaudiopluginmanager
