#include <zetaudiopluginhost/BanReasons.h>

#include <algorithm>
#include <mutex>
#include <optional>

#include <zetcore/debug/DeferredTrace.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/sharing/FileLock.h>

#include "banned/BanListFile.h"
#include "banned/BanReasonsFile.h"

namespace zetaudiopluginhost {

using zetaudiofilterhost::PluginLocator;
using zetcore::debug::DeferredTrace;
using namespace zetcore::filesupport;

namespace {

constexpr const char* rootName = "banreasons";
constexpr const char* category = "BanReasons";
/// A few hundred reasons of full length; it holds only those of one scan.
constexpr std::uint64_t maxFileSize = 16 << 20;

/// Reading, changing and replacing the file is one step for the threads of this process.
std::mutex& FileMutex()
{
    static std::mutex mutex;
    return mutex;
}

/// A file that is missing or malformed has no entries. Throws `file_exception`.
std::optional<BanListFile> ReadReasons(const File& file)
{
    if (!file.Exists())
        return std::nullopt;
    const std::string text = FileUtils::ReadFile(file, maxFileSize);
    try {
        return ParseBanList(text, rootName);
    } catch (const std::runtime_error& error) {
        zetcore::debug::TraceLine(1, category, file.FullPathUTF8() + ": " + error.what());
        return std::nullopt;
    }
}

std::vector<BanEntry>::iterator FindEntry(BanListFile& list, const PluginLocator& locator)
{
    return std::find_if(list.entries.begin(), list.entries.end(),
                        [&locator](const BanEntry& entry) { return entry.locator == locator; });
}

} // namespace

std::wstring BanReasonsPath(const std::wstring& bannedSettingsPath)
{
    return bannedSettingsPath + L".reasons";
}

void RecordBanReason(const std::wstring& bannedSettingsPath, const PluginLocator& locator,
                     const BanInfo& info)
{
    const DeferredTrace afterTheLock;
    const std::lock_guard lock(FileMutex());
    const File file(BanReasonsPath(bannedSettingsPath));
    const FileLock fileLock(file);
    BanListFile list = ReadReasons(file).value_or(BanListFile{});
    auto entry = FindEntry(list, locator);
    if (entry == list.entries.end())
        entry = list.entries.insert(entry, BanEntry{locator, {}, nullptr});
    entry->info = CleanBan(info);
    FileUtils::ReplaceContent(file.FullPath(), WriteBanList(list, rootName), Durability::ProcessCrash);
}

std::optional<BanInfo> FindBanReason(const std::wstring& bannedSettingsPath, const PluginLocator& locator)
{
    const DeferredTrace afterTheLock;
    const std::lock_guard lock(FileMutex());
    try {
        std::optional<BanListFile> list = ReadReasons(File(BanReasonsPath(bannedSettingsPath)));
        if (!list)
            return std::nullopt;
        const auto entry = FindEntry(*list, locator);
        return entry == list->entries.end() ? std::nullopt : std::optional(entry->info);
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, category, error.what());
        return std::nullopt;
    }
}

void ForgetBanReasons(const std::wstring& bannedSettingsPath, const std::vector<PluginLocator>& locators)
{
    const DeferredTrace afterTheLock;
    const std::lock_guard lock(FileMutex());
    const File file(BanReasonsPath(bannedSettingsPath));
    const FileLock fileLock(file);
    std::optional<BanListFile> list = ReadReasons(file);
    if (!list)
        return;
    const std::size_t removed = std::erase_if(list->entries, [&locators](const BanEntry& entry) {
        return std::find(locators.begin(), locators.end(), entry.locator) != locators.end();
    });
    if (list->entries.empty())
        file.Delete();
    else if (removed > 0)
        FileUtils::ReplaceContent(file.FullPath(), WriteBanList(*list, rootName), Durability::ProcessCrash);
}

std::string ToBanReasonsText(const std::vector<BanReason>& reasons)
{
    BanListFile list;
    for (const BanReason& reason : reasons)
        list.entries.push_back({reason.locator, CleanBan(reason.info), nullptr});
    return WriteBanList(list, rootName);
}

std::vector<BanReason> FromBanReasonsText(std::string_view text)
{
    std::vector<BanReason> reasons;
    for (BanEntry& entry : ParseBanList(text, rootName).entries)
        reasons.push_back({std::move(entry.locator), std::move(entry.info)});
    return reasons;
}

} // namespace zetaudiopluginhost
