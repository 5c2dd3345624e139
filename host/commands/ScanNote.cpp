#include "commands/ScanNote.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/config/ClientName.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/string/Utf.h>
#include <zetui/dialogs/messagebox.h>

#include "commands/DisplayText.h"

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
constexpr std::string_view unreachedKey = "$$$/AudioPluginManager/ScanNote/Unreached=Not scanned: @0";
constexpr std::string_view moreKey = "$$$/AudioPluginManager/ScanNote/More=and @0 more";
constexpr std::string_view reasonKey = "$$$/AudioPluginManager/ScanNote/WithReason=@0 (@1)";
constexpr std::string_view cancelledKey = "$$$/AudioPluginManager/ScanNote/Cancelled=The scan was cancelled.";
constexpr std::string_view notStartedKey =
    "$$$/AudioPluginManager/ScanNote/NotStarted=The scanner program could not be started.";
constexpr std::string_view gaveUpKey =
    "$$$/AudioPluginManager/ScanNote/GaveUp=The scanner program failed again and again.";
constexpr std::string_view keptKey =
    "$$$/AudioPluginManager/ScanNote/Kept=What was not scanned stays in the list as it was.";
constexpr std::string_view scanNowKey = "$$$/AudioPluginManager/ScanNote/ScanNow=Scan them now?";
constexpr std::string_view interruptedKey = "$$$/AudioPluginManager/ScanNote/Interrupted=An earlier scan was "
                                            "interrupted. The plug-ins that it did not "
                                            "reach are in the list as before: @0";

/// So that the note has room on the screen of a small notebook.
constexpr std::size_t mostNames = 6;
constexpr std::size_t longestReason = 100;

std::string Text(std::string_view key, const std::vector<std::string>& arguments = {})
{
    return Localizer::Get().Localize(key, arguments);
}

std::string Item(const ChangedPlugin& plugin)
{
    const std::string name = ForTerminal(plugin.name);
    const std::vector<std::string> reason = LinesForTerminal(plugin.reason);
    const std::string shown =
        reason.empty() ? name : Text(reasonKey, {name, CutEnd(reason.front(), longestReason)});
    return "\xE2\x80\xA2 " + shown + "\n";
}

std::string Section(std::string_view key, const std::vector<ChangedPlugin>& plugins, bool withNames)
{
    if (plugins.empty())
        return {};
    std::string text = Text(key, {std::to_string(plugins.size())}) + "\n";
    if (!withNames)
        return text;
    // One more takes no more room than to say that there is one more.
    const std::size_t shown =
        plugins.size() == mostNames + 1 ? plugins.size() : std::min(plugins.size(), mostNames);
    for (std::size_t index = 0; index < shown; ++index)
        text += Item(plugins[index]);
    if (shown < plugins.size())
        text += "\xE2\x80\xA2 " + Text(moreKey, {std::to_string(plugins.size() - shown)}) + "\n";
    return text;
}

/// Why the scan ended before it was done; empty when it was.
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
    for (const std::string& line : LinesForTerminal(end.reason))
        text += "\n" + line;
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
    std::string text = Section(addedKey, added, false) + Section(restoredKey, changes.restored, false) +
                       Section(updatedKey, changes.updated, false) +
                       Section(removedKey, changes.removed, true) + Section(bannedKey, changes.banned, true) +
                       Section(unreadableKey, changes.unreadable, true);
    std::string ending = EndText(result.end);
    if (!changes.unreached.empty()) {
        ending += Section(unreachedKey, changes.unreached, result.end.how == ScanEnd::How::Done);
        if (result.end.how != ScanEnd::How::Done)
            ending += Text(keptKey) + "\n";
    }
    if (!text.empty() && !ending.empty())
        text += "\n";
    text += ending;
    text.pop_back();
    return text;
}

void TellOfInterruptedScan(std::size_t count)
{
    messagebox::ShowNote(nullptr, zetcore::config::GetClientName(),
                         zetcore::string::UTF8to16(Text(interruptedKey, {std::to_string(count)})), {});
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
    const bool asks = offersScan && !result.changes.unreached.empty();
    if (asks)
        text += "\n\n" + Text(scanNowKey);
    const int icon =
        result.end.how == ScanEnd::How::Cancelled ? messagebox::kIconNote : messagebox::kIconCaution;
    // Who has just cancelled hardly wants it again.
    const int usual = result.end.how == ScanEnd::How::Cancelled ? messagebox::kNo : messagebox::kYes;
    const int answer = messagebox::Messagebox(
        nullptr, zetcore::config::GetClientName(), zetcore::string::UTF8to16(text), {},
        asks ? messagebox::kYesNo : messagebox::kOK, asks ? usual : messagebox::kOK, icon);
    return asks && answer == messagebox::kYes;
}

} // namespace zetaudiopluginmanager
