#include <zetaudiopluginhost/BannedPluginManager.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetcore/debug/DeferredTrace.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/FileException.h>
#include <zetcore/filesupport/FileLock.h>
#include <zetcore/filesupport/FileUtils.h>
#include <zetcore/string/Utf.h>

#include "banned/BanListFile.h"
#include "banned/BanReasonsFile.h"
#include "banned/UnsupportedList.h"

namespace zetaudiopluginhost {

using zetaudiofilterhost::BannedModule;
using zetaudiofilterhost::GetModuleFileStamp;
using zetaudiofilterhost::ModuleFileStamp;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using namespace zetcore::filesupport;

namespace {

constexpr const char* rootName = "bannedplugins";
constexpr const char* traceCategory = "BannedPluginManager";
/// More than a hundred thousand bans; reading takes several times as much memory.
constexpr std::uint64_t maxFileSize = 64 << 20;

std::int64_t SecondsSince1970()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

} // namespace

struct BannedPluginManager::State
{
    struct Ban
    {
        BanInfo info;
        std::shared_ptr<const pugi::xml_document> original;
    };

    /// Held while a file is written, so that an older state does not replace a newer one. Before `mutex`.
    std::mutex saving;
    mutable std::mutex mutex;
    // All of it under the mutex. `locators` holds the keys of `bans`: it is what callers iterate.
    BannedSet locators;
    std::map<PluginLocator, Ban> bans;
    std::shared_ptr<const pugi::xml_document> rest;
    /// What the list's file held when it was read or written last, by path.
    std::wstring knownPath;
    std::map<PluginLocator, BanInfo> known;
    std::string loadError;
    UnsupportedList unsupported;

    /// Under the mutex, so that the registry hears of changes in their order. It cannot deadlock: the
    /// registry takes its own mutex for that, and calls nothing under it.
    void TellRegistry() const
    {
        std::vector<BannedModule> banned;
        for (const auto& [locator, ban] : bans)
            banned.push_back({locator, ban.info.stamp, ban.info.couldNotLoad});
        PluginModuleInfoManager::GetInstance()->SetBannedLocators(std::move(banned));
    }

    /// `ofThisBuild`: a ban of every build, should there be one, stays that.
    void Add(const PluginLocator& locator, BanInfo info, bool ofThisBuild)
    {
        if (locator.IsEmpty())
            return;
        if (info.time == 0)
            info.time = SecondsSince1970();
        const std::lock_guard lock(mutex);
        if (const auto earlier = bans.find(locator); earlier != bans.end()) {
            // What is known about a plug-in that is banned already is worth more than nothing.
            if (info.reason.empty())
                info.reason = earlier->second.info.reason;
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

    /// True when something was removed.
    bool Remove(const std::vector<PluginLocator>& removed)
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
        return isChanged;
    }

    /// The ban is as the file had it, or as absent as there: another program's change of it is newer.
    bool IsAsKnown(const PluginLocator& locator) const
    {
        const auto before = known.find(locator);
        const auto now = bans.find(locator);
        if (before == known.end() || now == bans.end())
            return before == known.end() && now == bans.end();
        return before->second == now->second.info;
    }

    /// What another program has changed in the file since it was read or written last.
    void TakeInWhatOthersSaved(const File& file)
    {
        if (file.FullPath() != knownPath || !file.Exists())
            return;
        BanListFile theirs;
        try {
            theirs = ParseBanList(FileUtils::ReadFile(file, maxFileSize), rootName);
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

    /// Under the mutex. True when the list has changed.
    bool TakeTheirs(BanListFile& theirs)
    {
        bool isChanged = false;
        BannedSet held;
        for (BanEntry& entry : theirs.entries) {
            held.insert(entry.locator);
            const auto before = known.find(entry.locator);
            const bool isAnew = before == known.end() || before->second != entry.info;
            // One that was lifted here stays lifted, unless it was banned there anew.
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

    void NoteKnown(const File& file, std::map<PluginLocator, BanInfo> held)
    {
        const std::lock_guard lock(mutex);
        knownPath = file.FullPath();
        known = std::move(held);
    }

    void Replace(BanListFile file, std::string error)
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

    /// The content of the file, which is what the list holds from now on.
    void Load(const File& file, BanListFile content, std::string error)
    {
        std::map<PluginLocator, BanInfo> held;
        for (const BanEntry& entry : content.entries)
            held.insert_or_assign(entry.locator, entry.info);
        Replace(std::move(content), std::move(error));
        NoteKnown(file, std::move(held));
    }
};

BannedPluginManager* BannedPluginManager::GetInstance()
{
    // The registry is made first, so that it outlives what tells it of changes.
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    static BannedPluginManager manager;
    static const zetcore::signals::ScopedConnection connection = registry.GetBansEndedSignal().connect(
        [](const std::vector<PluginLocator>& ended) { manager.state->Remove(ended); });
    return &manager;
}

BannedPluginManager::BannedPluginManager() : state(std::make_unique<State>()) {}
BannedPluginManager::~BannedPluginManager() = default;

std::wstring BannedPluginManager::GetSettingsFileName()
{
    return L"BannedAudioPlugins.xml";
}

std::wstring BannedPluginManager::GetPermanentBannedSettingsFileName()
{
    return L"UnsupportedAudioPlugins.xml";
}

BannedPluginManager::BannedSet::const_iterator BannedPluginManager::BannedBegin() const
{
    return state->locators.begin();
}

BannedPluginManager::BannedSet::const_iterator BannedPluginManager::BannedEnd() const
{
    return state->locators.end();
}

void BannedPluginManager::AddBannedPlugin(const PluginLocator& locator)
{
    const File file(Dir::PrefDir(), GetSettingsFileName());
    BanInfo info = FindBanReason(file.FullPath(), locator).value_or(BanInfo{});
    if (info.stamp == ModuleFileStamp())
        info.stamp = GetModuleFileStamp(locator);
    state->Add(locator, std::move(info), true);
}

void BannedPluginManager::AddBannedPlugin(const PluginLocator& locator, const std::string& reason)
{
    state->Add(locator, BanInfo{CleanReason(reason)}, false);
}

void BannedPluginManager::AddBannedPlugin(const PluginLocator& locator, const BanInfo& info)
{
    BanInfo cleaned = info;
    cleaned.reason = CleanReason(info.reason);
    state->Add(locator, std::move(cleaned), false);
}

void BannedPluginManager::RemoveBannedPlugin(const PluginLocator& locator)
{
    state->Remove({locator});
}

bool BannedPluginManager::IsDueAgain(const PluginLocator& locator) const
{
    std::vector<BannedModule> covering;
    {
        const std::lock_guard lock(state->mutex);
        for (const PluginLocator& covers : std::set<PluginLocator>{locator, locator.ModuleLocator()})
            if (const auto ban = state->bans.find(covers); ban != state->bans.end())
                covering.push_back({covers, ban->second.info.stamp, ban->second.info.couldNotLoad});
    }
    if (covering.empty())
        return false;
    const ModuleFileStamp now = GetModuleFileStamp(locator);
    return std::all_of(covering.begin(), covering.end(),
                       [&now](const BannedModule& ban) { return ban.IsDue(now); });
}

bool BannedPluginManager::IsBanned(const PluginLocator& locator) const
{
    const std::lock_guard lock(state->mutex);
    return state->locators.contains(locator) || state->locators.contains(locator.ModuleLocator());
}

std::optional<BanInfo> BannedPluginManager::GetBanInfo(const PluginLocator& locator) const
{
    const std::lock_guard lock(state->mutex);
    const auto found = state->bans.find(locator);
    return found == state->bans.end() ? std::nullopt : std::optional(found->second.info);
}

bool BannedPluginManager::LoadConfiguration(const File& file)
{
    if (!file.Exists()) {
        state->Load(file, {}, {});
        return true;
    }
    const std::string text = FileUtils::ReadFile(file, maxFileSize);
    try {
        state->Load(file, ParseBanList(text, rootName), {});
        return true;
    } catch (const std::runtime_error& damage) {
        std::string error = zetcore::string::UTF16to8(file.GetTitle()) + ", " + damage.what();
        zetcore::debug::TraceLine(1, traceCategory, file.FullPathUTF8() + ", " + damage.what());
        try {
            FileUtils::KeepAside(file);
        } catch (const file_exception& notKept) {
            zetcore::debug::TraceLine(1, traceCategory, notKept.what());
        }
        state->Load(file, {}, std::move(error));
        return false;
    }
}

void BannedPluginManager::SaveConfiguration(const File& file) const
{
    const zetcore::debug::DeferredTrace afterTheLock;
    const std::lock_guard savingLock(state->saving);
    const FileLock fileLock(file);
    state->TakeInWhatOthersSaved(file);
    BanListFile list;
    std::vector<PluginLocator> saved;
    std::map<PluginLocator, BanInfo> held;
    {
        const std::lock_guard lock(state->mutex);
        list.rest = state->rest;
        for (const auto& [locator, ban] : state->bans) {
            list.entries.push_back({locator, ban.info, ban.original});
            saved.push_back(locator);
            held.emplace(locator, ban.info);
        }
    }
    FileUtils::ReplaceContent(file.FullPath(), WriteBanList(list, rootName), Durability::PowerCut);
    state->NoteKnown(file, std::move(held));
    try {
        ForgetBanReasons(file.FullPath(), saved);
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
}

std::string BannedPluginManager::GetLoadError() const
{
    const std::lock_guard lock(state->mutex);
    return state->loadError;
}

bool BannedPluginManager::LoadStaticConfiguration(const File& file)
{
    UnsupportedList list;
    bool isLoaded = false;
    try {
        if (file.Exists()) {
            list = UnsupportedList::Parse(FileUtils::ReadFile(file, maxFileSize));
            isLoaded = true;
        }
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    } catch (const std::runtime_error& error) {
        zetcore::debug::TraceLine(1, traceCategory, file.FullPathUTF8() + ", " + error.what());
    }
    const std::lock_guard lock(state->mutex);
    state->unsupported = std::move(list);
    return isLoaded;
}

bool BannedPluginManager::IsUnsupportedFile(const std::wstring& fileName) const
{
    const std::lock_guard lock(state->mutex);
    return state->unsupported.MatchesFile(fileName);
}

bool BannedPluginManager::IsUnsupported(const std::wstring& fileName, std::uint32_t uniqueId,
                                        std::int64_t version) const
{
    const std::lock_guard lock(state->mutex);
    return state->unsupported.Matches(fileName, uniqueId, version);
}

void BannedPluginManager::Reset()
{
    state->Replace({}, {});
    const std::lock_guard lock(state->mutex);
    state->knownPath.clear();
    state->known.clear();
    state->unsupported = {};
}

} // namespace zetaudiopluginhost
