// A save first takes in what another program has written to the same file meanwhile.
#include "registry/RegistryState.h"

#include <algorithm>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>

namespace zetaudiofilterhost {

using zetcore::filesupport::File;
using zetcore::filesupport::file_exception;
using zetcore::filesupport::FileUtils;

namespace {

std::string TextOf(const InfoPtr& info)
{
    const auto record = std::make_shared<PluginModuleInfo>(*info);
    record->SetScannedAlone(false);
    return WriteChanges({RegistryChange{info->GetLocator(), record, std::nullopt}});
}

} // namespace

void PluginModuleInfoManager::State::NoteKnown(const File& file, std::string_view content)
{
    known = Known{file.FullPath(), FingerprintOf(content), ConfigurationJournal::SizeBeside(file)};
    savedFolderPaths = FolderPaths();
}

void PluginModuleInfoManager::State::TakeInWhatOthersSaved(const File& file)
{
    if (!known || known->path != file.FullPath() || !file.Exists())
        return;
    std::string text;
    try {
        text = FileUtils::ReadFile(file);
    } catch (const file_exception& error) {
        // The save itself will find out whether the file can be replaced.
        zetcore::debug::TraceLine(1, "PluginRegistry", error.what());
        return;
    }
    if (FingerprintOf(text) == known->fingerprint &&
        ConfigurationJournal::SizeBeside(file) == known->journalSize)
        return;
    State theirs;
    try {
        theirs.ReplaceContent(ReadConfiguration(text, file.FullPathUTF8()), ReadJournal(file, text));
    } catch (const ConfigurationError& error) {
        zetcore::debug::TraceLine(1, "PluginRegistry", error.what());
        FileUtils::KeepAside(file);
        return;
    }
    zetcore::debug::TraceLine(3, "PluginRegistry",
                              file.FullPathUTF8() +
                                  ": another program has saved it, what it found is taken in");
    NoteFlippedRecords();
    TakeRecordsOf(theirs);
    TakeAsidesOf(theirs);
    // Whoever listens to changed folders is called with the file's lock held. It cannot deadlock: nobody
    // waits for that lock for longer than a few seconds, and a save from there would then be made without it.
    TakeFoldersOf(theirs);
}

void PluginModuleInfoManager::State::TakeRecordsOf(const State& theirs)
{
    for (const auto& [locator, record] : theirs.records) {
        if (changed.contains(locator) && !putBack.contains(locator))
            continue;
        const auto ours = records.find(locator);
        if (ours != records.end() && TextOf(ours->second.info) == TextOf(record.info))
            continue;
        // The other program has put back, or never removed, a record that is being scanned here. That is no
        // result.
        const auto aside = asides.find(locator);
        if (aside != asides.end() && TextOf(aside->second) == TextOf(record.info))
            continue;
        record.info->CountChangesIn(recordChanges);
        choices.erase(locator);
        asides.erase(locator);
        records.insert_or_assign(locator, Record{record.info, record.info->IsEnabled()});
    }
    for (const auto& [locator, choice] : theirs.choices)
        if (!changed.contains(locator) && !records.contains(locator))
            choices.insert_or_assign(locator, choice);
    const std::lock_guard lock(mutex);
    iterationStale = true;
}

// A scan of theirs has them aside, or one that was killed; whoever loads the file next puts them back.
void PluginModuleInfoManager::State::TakeAsidesOf(const State& theirs)
{
    othersAsides.clear();
    const std::lock_guard lock(mutex);
    for (const auto& [locator, info] : theirs.asides)
        if (!changed.contains(locator) && !records.contains(locator) && !asides.contains(locator) &&
            !IsBannedLocked(locator))
            othersAsides.emplace(locator, info);
}

// Folders that only they have changed are theirs; where both have, theirs are added to ours.
void PluginModuleInfoManager::State::TakeFoldersOf(const State& theirs)
{
    const auto before = savedFolderPaths, ours = FolderPaths(), others = theirs.FolderPaths();
    if (others == before || others == ours)
        return;
    if (ours == before) {
        TakeFolders(theirs.Folders());
        return;
    }
    for (std::size_t index = 0; index < technologies.size(); ++index) {
        std::vector<std::wstring> added;
        std::copy_if(others[index].begin(), others[index].end(), std::back_inserter(added),
                     [&](const std::wstring& path) {
                         return std::find(before[index].begin(), before[index].end(), path) ==
                                before[index].end();
                     });
        technologies[index].technology->AddPluginDirectories(added);
    }
}

} // namespace zetaudiofilterhost
