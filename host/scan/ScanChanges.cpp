#include "scan/ScanChanges.h"

#include <algorithm>
#include <set>

#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>

#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BanInfo;
using zetaudiopluginhost::BannedPluginManager;

/// True when the plug-in or its whole module is among these.
bool Covers(const std::set<PluginLocator>& some, const PluginLocator& locator)
{
    return some.contains(locator) || some.contains(locator.ModuleLocator());
}

/// True when a scan has only confirmed the ban, which is no news.
bool SaysTheSame(const BanInfo& left, const BanInfo& right)
{
    return left.reason == right.reason && left.stamp == right.stamp &&
           left.couldNotLoad == right.couldNotLoad;
}

std::wstring FileName(const PluginLocator& locator)
{
    return zetcore::filesupport::File(zetcore::string::ForDisplay(locator.GetPath())).GetTitle();
}

void Append(std::vector<ChangedPlugin>& to, const std::vector<ChangedPlugin>& from)
{
    to.insert(to.end(), from.begin(), from.end());
}

} // namespace

void ScanChanges::Add(const ScanChanges& other)
{
    Append(added, other.added);
    Append(restored, other.restored);
    Append(updated, other.updated);
    Append(removed, other.removed);
    Append(banned, other.banned);
    Append(unreadable, other.unreadable);
    Append(passedOver, other.passedOver);
    Append(unreached, other.unreached);
}

RegistrySnapshot::RegistrySnapshot(const PluginModuleInfoManager& registry,
                                   const BannedPluginManager& bannedList)
{
    for (auto locator = bannedList.BannedBegin(); locator != bannedList.BannedEnd(); ++locator)
        bans.emplace(*locator, bannedList.GetBanInfo(*locator).value_or(BanInfo()));
    for (const auto& info : registry.AllRecords()) {
        const PluginLocator& locator = info->GetLocator();
        records.emplace(locator, Record{info->GetStatus(),
                                        info->GetName(),
                                        info->GetVersionString(),
                                        {info->GetFileSize(), info->GetFileTime()},
                                        info->GetReason(),
                                        info->GetStatus() == ModuleStatus::Working && !IsBanned(locator)});
    }
    for (const auto& folder : registry.GetUnreadableFolders())
        unreadableFolders.emplace(folder.path, folder.reason);
}

bool RegistrySnapshot::IsListed(const PluginLocator& locator) const
{
    const auto record = records.find(locator);
    return record != records.end() && record->second.listed;
}

bool RegistrySnapshot::IsBanned(const PluginLocator& locator) const
{
    return bans.contains(locator) || bans.contains(locator.ModuleLocator());
}

ChangedPlugin RegistrySnapshot::Named(const PluginLocator& locator, std::string reason) const
{
    const auto record = records.find(locator);
    const bool hasName = record != records.end() && !record->second.name.empty();
    return {locator, hasName ? record->second.name : FileName(locator), std::move(reason)};
}

std::string RegistrySnapshot::WhyGone(const PluginLocator& locator) const
{
    const auto record = records.find(locator);
    if (record != records.end())
        return record->second.reason;
    return PathExists(locator.GetPath())
               ? zetaudiopluginhost::reasons::InEnglish(zetaudiopluginhost::reasons::inNoFolder)
               : std::string();
}

ScanChanges RegistrySnapshot::ChangesTo(const RegistrySnapshot& after, const Locators& scannedPlugins,
                                        std::vector<ChangedPlugin> unreached) const
{
    const std::set<PluginLocator> scanned(scannedPlugins.begin(), scannedPlugins.end());
    std::set<PluginLocator> scannedModules, waiting;
    for (const PluginLocator& locator : scanned)
        scannedModules.insert(locator.ModuleLocator());
    for (const ChangedPlugin& plugin : unreached)
        waiting.insert(plugin.locator);
    ScanChanges changes;
    changes.unreached = std::move(unreached);
    for (const auto& [locator, record] : after.records) {
        if (!Covers(scanned, locator) || Covers(waiting, locator))
            continue;
        if (record.status == ModuleStatus::Unreadable)
            changes.unreadable.push_back(after.Named(locator, record.reason));
        if (IsPassedOver(record.status) && !IsListed(locator) && !IsBanned(locator) &&
            !after.IsBanned(locator))
            changes.passedOver.push_back(after.Named(locator, record.reason));
        if (!record.listed)
            continue;
        const auto old = records.find(locator);
        if (!IsListed(locator)) {
            changes.added.push_back(after.Named(locator));
            if (IsBanned(locator))
                changes.restored.push_back(after.Named(locator));
        } else if (old->second.stamp != record.stamp || old->second.version != record.version) {
            changes.updated.push_back(after.Named(locator));
        }
    }
    // A file that cannot be read has not gone.
    const auto hasGone = [&](const PluginLocator& locator) {
        const auto now = after.records.find(locator);
        const bool isUnreadable =
            now != after.records.end() && now->second.status == ModuleStatus::Unreadable;
        return !after.IsListed(locator) && !after.IsBanned(locator) && !isUnreadable &&
               !Covers(waiting, locator);
    };
    for (const auto& [locator, record] : records)
        if (record.listed && hasGone(locator))
            changes.removed.push_back(Named(locator, after.WhyGone(locator)));
    for (const auto& entry : bans) {
        const auto& locator = entry.first;
        const bool isListed = std::any_of(after.records.begin(), after.records.end(), [&](const auto& each) {
            return each.second.listed && (each.first == locator || each.first.ModuleLocator() == locator);
        });
        if (!isListed && hasGone(locator))
            changes.removed.push_back(Named(locator, after.WhyGone(locator)));
    }
    // A user who has a single plug-in scanned wants to know its result, even when nothing has changed.
    const bool tellsTheSame = scanned.size() == 1;
    for (const auto& [locator, ban] : after.bans) {
        const auto old = bans.find(locator);
        const bool isNew = old == bans.end() || !SaysTheSame(old->second, ban) || tellsTheSame;
        if (isNew && (Covers(scanned, locator) || scannedModules.contains(locator)) &&
            !Covers(waiting, locator)) {
            changes.banned.push_back(Named(locator, ban.reason));
            changes.banned.back().failures = ban.failures;
        }
    }
    for (const auto& [path, reason] : after.unreadableFolders)
        if (!unreadableFolders.contains(path))
            changes.unreadable.push_back({{zetaudiofilterhost::TechnologyType::Unknown, path},
                                          zetcore::string::ForDisplay(path),
                                          reason});
    return changes;
}

std::vector<ChangedPlugin> FindUnreached(const PluginModuleInfoManager& registry,
                                         const BannedPluginManager& bannedList,
                                         const RegistrySnapshot::Locators& scanned,
                                         const RegistrySnapshot::Locators& putBack, const std::string& reason)
{
    const std::set<PluginLocator> back(putBack.begin(), putBack.end());
    const RegistrySnapshot names(registry, bannedList);
    std::vector<ChangedPlugin> unreached;
    for (const PluginLocator& locator : std::set<PluginLocator>(scanned.begin(), scanned.end())) {
        if (bannedList.IsBanned(locator))
            continue;
        std::vector<PluginModuleInfoManager::InfoPtr> records = registry.FindModule(locator);
        if (!locator.GetSubcomponent().empty())
            std::erase_if(records, [&](const auto& info) { return info->GetLocator() != locator; });
        const auto isBack = [&](const auto& info) { return back.contains(info->GetLocator()); };
        const auto isWaiting = [](const auto& info) { return info->GetStatus() == ModuleStatus::Unscanned; };
        if (records.empty() || std::any_of(records.begin(), records.end(), isBack)) {
            unreached.push_back(names.Named(locator, reason));
        } else if (const auto found = std::find_if(records.begin(), records.end(), isWaiting);
                   found != records.end()) {
            unreached.push_back(names.Named(locator, (*found)->GetReason()));
        }
    }
    return unreached;
}

} // namespace zetaudiopluginmanager
