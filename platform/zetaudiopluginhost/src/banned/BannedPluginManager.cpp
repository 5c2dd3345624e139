#include <zetaudiopluginhost/BannedPluginManager.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <set>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/debug/DeferredTrace.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/sharing/FileLock.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>

#include "banned/BanReasonsFile.h"
#include "banned/BannedState.h"

namespace zetaudiopluginhost {

using zetaudiofilterhost::BannedModule;
using zetaudiofilterhost::GetModuleFileStamp;
using zetaudiofilterhost::ModuleFileStamp;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using namespace zetcore::filesupport;

BanInfo BanFor(PluginFailures failures, ModuleFileStamp stamp, bool couldNotLoad)
{
    return {WordFailures(failures), 0, stamp, couldNotLoad, std::move(failures)};
}

std::string WordReason(const BanInfo& ban, const zetcore::config::Localizer& language)
{
    return ban.failures.empty() ? ban.reason : WordFailures(ban.failures, language);
}

BannedPluginManager* BannedPluginManager::GetInstance()
{
    // The registry is made first, so that it outlives what tells it of changes.
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    static BannedPluginManager manager;
    static const zetcore::events::ScopedConnection connection = registry.GetBansEndedSignal().Connect(
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
    zetcore::threads::AssertMainThread();
    return state->locators.begin();
}

BannedPluginManager::BannedSet::const_iterator BannedPluginManager::BannedEnd() const
{
    zetcore::threads::AssertMainThread();
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
    state->Add(locator, CleanBan(info), false);
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

std::map<PluginLocator, BanInfo> BannedPluginManager::BansInFile(const File& file)
{
    std::map<PluginLocator, BanInfo> bans;
    if (!file.Exists())
        return bans;
    const std::string text = FileUtils::ReadFile(file, State::maxFileSize);
    try {
        for (BanEntry& entry : ParseBanList(text, State::rootName).entries)
            bans.insert_or_assign(std::move(entry.locator), std::move(entry.info));
    } catch (const std::runtime_error& damage) {
        throw std::runtime_error(file.FullPathUTF8() + ", " + damage.what());
    }
    return bans;
}

bool BannedPluginManager::LoadConfiguration(const File& file)
{
    if (LoadConfigurationOfOther(file))
        return true;
    try {
        const std::string kept = zetcore::string::UTF16to8(FileUtils::KeepAside(file));
        const std::lock_guard lock(state->mutex);
        if (state->loadError)
            state->loadError->text += "; kept as " + kept;
    } catch (const file_exception& notKept) {
        zetcore::debug::TraceLine(1, State::traceCategory, notKept.what());
    }
    return false;
}

bool BannedPluginManager::LoadConfigurationOfOther(const File& file)
{
    if (!file.Exists()) {
        state->Load(file, {}, {});
        return true;
    }
    const std::string text = FileUtils::ReadFile(file, State::maxFileSize);
    try {
        state->Load(file, ParseBanList(text, State::rootName), {});
        return true;
    } catch (const std::runtime_error& damage) {
        zetcore::utility::Reason error{zetcore::string::UTF16to8(file.GetTitle()) + ", " + damage.what()};
        zetcore::debug::TraceLine(1, State::traceCategory, file.FullPathUTF8() + ", " + damage.what());
        state->Load(file, {}, std::move(error));
        return false;
    }
}

BannedPluginManager::BannedSet BannedPluginManager::PeekAtConfiguration(const File& file)
{
    BannedSet banned;
    if (!file.Exists())
        return banned;
    const std::string text = FileUtils::ReadFile(file, State::maxFileSize);
    try {
        for (const BanEntry& entry : ParseBanList(text, State::rootName).entries)
            banned.insert(entry.locator);
    } catch (const std::runtime_error&) {
        // The program that loads the file says what is wrong with it.
    }
    return banned;
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
    std::string text = WriteBanList(list, State::rootName);
    FileUtils::ReplaceContent(file.FullPath(), text, Durability::PowerCut);
    state->NoteKnown(file, std::move(held), std::move(text));
    try {
        ForgetBanReasons(file.FullPath(), saved);
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, State::traceCategory, error.what());
    }
}

std::optional<zetcore::utility::Reason> BannedPluginManager::GetLoadError() const
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
            list = UnsupportedList::Parse(FileUtils::ReadFile(file, State::maxFileSize));
            isLoaded = true;
        }
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, State::traceCategory, error.what());
    } catch (const std::runtime_error& error) {
        zetcore::debug::TraceLine(1, State::traceCategory, file.FullPathUTF8() + ", " + error.what());
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
    state->knownText.clear();
    state->unsupported = {};
}

void ResetBannedPlugins(BannedPluginManager& list)
{
    list.Reset();
}

} // namespace zetaudiopluginhost
