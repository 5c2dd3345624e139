#include "banned/BannedState.h"

#include <chrono>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>

namespace zetaudiopluginhost {

using zetaudiofilterhost::BannedModule;
using zetaudiofilterhost::ModuleFileStamp;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using namespace zetcore::filesupport;

namespace {

std::int64_t SecondsSince1970()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

} // namespace

void BannedPluginManager::State::TellRegistry() const
{
    std::vector<BannedModule> banned;
    for (const auto& [locator, ban] : bans)
        banned.push_back({locator, ban.info.stamp, ban.info.couldNotLoad});
    PluginModuleInfoManager::GetInstance()->SetBannedLocators(std::move(banned));
}

void BannedPluginManager::State::Add(const PluginLocator& locator, BanInfo info, bool ofThisBuild)
{
    if (locator.IsEmpty())
        return;
    if (info.time == 0)
        info.time = SecondsSince1970();
    const std::lock_guard lock(mutex);
    if (const auto earlier = bans.find(locator); earlier != bans.end()) {
        // An earlier reason is worth more than no reason.
        if (info.reason.empty()) {
            info.reason = earlier->second.info.reason;
            info.failures = earlier->second.info.failures;
        }
        if (ofThisBuild && earlier->second.info.stamp == ModuleFileStamp() &&
            !earlier->second.info.couldNotLoad) {
            info.stamp = {};
            info.couldNotLoad = false;
        }
    }
    bans[locator].info = std::move(info);
    locators.insert(locator);
    TellRegistry();
}

void BannedPluginManager::State::Remove(const std::vector<PluginLocator>& removed)
{
    const std::lock_guard lock(mutex);
    bool isChanged = false;
    for (const PluginLocator& locator : removed) {
        if (locators.erase(locator) > 0) {
            bans.erase(locator);
            isChanged = true;
        }
    }
    if (isChanged)
        TellRegistry();
}

bool BannedPluginManager::State::IsAsKnown(const PluginLocator& locator) const
{
    const auto before = known.find(locator);
    const auto now = bans.find(locator);
    if (before == known.end() || now == bans.end())
        return before == known.end() && now == bans.end();
    return before->second == now->second.info;
}

void BannedPluginManager::State::TakeInWhatOthersSaved(const File& file)
{
    if (file.FullPath() != knownPath || !file.Exists())
        return;
    BanListFile theirs;
    try {
        const std::string text = FileUtils::ReadFile(file, maxFileSize);
        if (IsKnown(text))
            return;
        theirs = ParseBanList(text, rootName);
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
        return;
    } catch (const std::runtime_error& damage) {
        zetcore::debug::TraceLine(1, traceCategory, file.FullPathUTF8() + ", " + damage.what());
        FileUtils::KeepAside(file);
        return;
    }
    const std::lock_guard lock(mutex);
    if (TakeTheirs(theirs))
        TellRegistry();
}

bool BannedPluginManager::State::IsKnown(const std::string& text) const
{
    const std::lock_guard lock(mutex);
    return !knownText.empty() && text == knownText;
}

bool BannedPluginManager::State::TakeTheirs(BanListFile& theirs)
{
    bool isChanged = false;
    BannedSet held;
    for (BanEntry& entry : theirs.entries) {
        held.insert(entry.locator);
        const auto before = known.find(entry.locator);
        const bool isAnew = before == known.end() || before->second != entry.info;
        // A ban that was lifted here stays lifted, unless the other program has banned the plug-in anew.
        const bool isTaken = isAnew && (IsAsKnown(entry.locator) || !locators.contains(entry.locator));
        if (!isTaken)
            continue;
        locators.insert(entry.locator);
        bans[entry.locator] = Ban{std::move(entry.info), std::move(entry.original)};
        isChanged = true;
    }
    for (const auto& [locator, info] : known) {
        if (held.contains(locator) || !locators.contains(locator) || !IsAsKnown(locator))
            continue;
        locators.erase(locator);
        bans.erase(locator);
        isChanged = true;
    }
    return isChanged;
}

void BannedPluginManager::State::NoteKnown(const File& file, std::map<PluginLocator, BanInfo> held,
                                           std::string text)
{
    const std::lock_guard lock(mutex);
    knownPath = file.FullPath();
    knownText = std::move(text);
    known = std::move(held);
}

void BannedPluginManager::State::Replace(BanListFile file, std::optional<zetcore::utility::Reason> error)
{
    const std::lock_guard lock(mutex);
    locators.clear();
    bans.clear();
    for (BanEntry& entry : file.entries) {
        locators.insert(entry.locator);
        bans[entry.locator] = Ban{std::move(entry.info), std::move(entry.original)};
    }
    rest = std::move(file.rest);
    loadError = std::move(error);
    TellRegistry();
}

void BannedPluginManager::State::Load(const File& file, BanListFile content,
                                      std::optional<zetcore::utility::Reason> error)
{
    std::map<PluginLocator, BanInfo> held;
    for (const BanEntry& entry : content.entries)
        held.insert_or_assign(entry.locator, entry.info);
    Replace(std::move(content), std::move(error));
    NoteKnown(file, std::move(held), {});
}

} // namespace zetaudiopluginhost
