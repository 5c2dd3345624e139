#include <zetaudiofilterhost/PluginModuleInfoManager.h>

#include "registry/RegistryState.h"
#include <zetcore/debug/DeferredTrace.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/sharing/FileLock.h>
#include <zetcore/filesupport/sharing/TemporaryFiles.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>

namespace zetaudiofilterhost {

using zetcore::filesupport::File;
using zetcore::filesupport::file_exception;
using zetcore::filesupport::FileLock;
using zetcore::filesupport::FileUtils;

namespace {

void DeleteOldJournal(const File& file)
{
    try {
        ConfigurationJournal::FileFor(file).Delete();
    } catch (const file_exception& error) {
        // It does not belong to the new content, so it does no harm.
        zetcore::debug::TraceLine(3, "PluginRegistry", error.what());
    }
}

} // namespace

std::vector<RegistryChange> PluginModuleInfoManager::State::ReadJournal(const File& file,
                                                                        std::string_view content,
                                                                        const WantedTechnologies& wanted)
{
    std::vector<RegistryChange> changes;
    const File journal = ConfigurationJournal::FileFor(file);
    if (!journal.Exists())
        return changes;
    for (const std::string& entry : ConfigurationJournal::ReadEntries(file, FingerprintOf(content))) {
        try {
            for (RegistryChange& change : ReadChanges(entry, journal.FullPathUTF8(), wanted))
                changes.push_back(std::move(change));
        } catch (const ConfigurationError& error) {
            zetcore::debug::TraceLine(1, "PluginRegistry", error.what());
        }
    }
    return changes;
}

std::vector<std::vector<std::wstring>> PluginModuleInfoManager::State::FolderPaths() const
{
    std::vector<std::vector<std::wstring>> paths;
    for (const Technology& technology : technologies)
        paths.emplace_back(technology.technology->DirectoryBegin(), technology.technology->DirectoryEnd());
    return paths;
}

std::vector<TechnologyFolders> PluginModuleInfoManager::State::Folders() const
{
    std::vector<TechnologyFolders> result;
    for (const Technology& technology : technologies) {
        TechnologyFolders& folders = result.emplace_back();
        folders.type = technology.technology->GetType();
        folders.unknown = technology.unknown;
        for (auto path = technology.technology->DirectoryBegin();
             path != technology.technology->DirectoryEnd(); ++path) {
            const auto kept = technology.folderUnknown.find(*path);
            folders.folders.push_back(
                {*path, kept == technology.folderUnknown.end() ? Unknown() : kept->second});
        }
    }
    return result;
}

Configuration PluginModuleInfoManager::State::MakeConfiguration(bool withModules) const
{
    Configuration configuration;
    configuration.version = version;
    configuration.unknown = unknown;
    configuration.technologies = Folders();
    if (!withModules)
        return configuration;
    configuration.modules.reserve(records.size());
    for (const auto& [locator, record] : records)
        configuration.modules.push_back(record.info);
    for (const auto& [locator, info] : asides)
        configuration.asides.push_back(info);
    for (const auto& [locator, choice] : choices)
        configuration.choices.push_back({locator, nullptr, choice});
    return configuration;
}

void PluginModuleInfoManager::State::NoteFlippedRecords()
{
    if (recordChanges->enabled.load(std::memory_order_relaxed) == savedEnabledChanges)
        return;
    for (const auto& [locator, record] : records)
        if (record.info->IsEnabled() != record.savedEnabled)
            changed.insert(locator);
}

void PluginModuleInfoManager::State::NoteSaved()
{
    for (const PluginLocator& locator : changed)
        if (const auto record = records.find(locator); record != records.end())
            record->second.savedEnabled = record->second.info->IsEnabled();
    changed.clear();
    putBack.clear();
    savedEnabledChanges = recordChanges->enabled.load(std::memory_order_relaxed);
}

void PluginModuleInfoManager::State::SaveChanges()
{
    DropBannedAsides();
    NoteFlippedRecords();
    std::vector<RegistryChange> changes;
    for (const PluginLocator& locator : changed)
        changes.push_back(StateOf(locator));
    if (!changes.empty()) {
        journal.Append(WriteChanges(changes));
        known->journalSize = journal.Size();
    }
    NoteSaved();
}

void PluginModuleInfoManager::State::KeepFindings()
{
    const std::optional<File> file = journal.WrittenFor();
    if (!file)
        return;
    const zetcore::debug::DeferredTrace afterTheLock;
    try {
        const FileLock lock(*file);
        if (journal.CanAppendTo(*file))
            SaveChanges();
    } catch (const file_exception& error) {
        // The save after the scan tells the user.
        zetcore::debug::TraceLine(1, "PluginRegistry", error.what());
    }
}

void PluginModuleInfoManager::State::SaveWhole(const File& file, bool withModules)
{
    if (!damagedPath.empty() && file.FullPath() == damagedPath) {
        if (file.Exists())
            FileUtils::KeepAside(file);
        damagedPath.clear();
    }
    Configuration configuration;
    if (withModules) {
        TakeInWhatOthersSaved(file);
        DropBannedAsides();
        configuration = MakeConfiguration(true);
        for (const auto& [locator, info] : othersAsides)
            configuration.asides.push_back(info);
    } else {
        configuration = MakeConfiguration(false);
    }
    journal.End();
    const std::string text = WriteConfiguration(configuration);
    ConfigurationJournal::PrepareForWholeSave(file, text);
    FileUtils::ReplaceContent(file.FullPath(), text, zetcore::filesupport::Durability::PowerCut);
    DeleteOldJournal(file);
    NoteKnown(file, text);
    if (!withModules)
        return;
    journal.Begin(file, text);
    NoteFlippedRecords();
    NoteSaved();
}

void PluginModuleInfoManager::SaveConfiguration(const File& file, bool withModules)
{
    zetcore::threads::AssertMainThread();
    const zetcore::debug::DeferredTrace afterTheLock;
    const FileLock lock(file);
    if (withModules && state->incremental && state->savedFolderPaths == state->FolderPaths() &&
        state->journal.CanAppendTo(file))
        state->SaveChanges();
    else
        state->SaveWhole(file, withModules);
}

void PluginModuleInfoManager::BeginIncrementalSaves()
{
    zetcore::threads::AssertMainThread();
    // Earlier changes were not recorded one by one, so the first save is a whole one.
    if (!state->incremental)
        state->journal.End();
    state->incremental = true;
}

void PluginModuleInfoManager::EndIncrementalSaves()
{
    zetcore::threads::AssertMainThread();
    state->incremental = false;
    state->journal.End();
}

bool PluginModuleInfoManager::LoadConfiguration(const File& file)
{
    zetcore::threads::AssertMainThread();
    if (!file.Exists()) {
        state->Clear();
        ResetAllToDefaultFolders();
        state->NoteKnown(file, {});
        return true;
    }
    zetcore::filesupport::DeleteAbandonedTemporaries(file.GetParent());
    const std::string text = FileUtils::ReadFile(file);
    try {
        state->ReplaceContent(ReadConfiguration(text, file.FullPathUTF8()), State::ReadJournal(file, text));
        state->changed.clear();
        state->NoteKnown(file, text);
        return true;
    } catch (const ConfigurationError& error) {
        state->Clear();
        state->loadError = zetcore::utility::Reason{error.what()};
    }
    try {
        state->loadError->text += "; kept as " + zetcore::string::UTF16to8(FileUtils::KeepAside(file));
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, "PluginRegistry", error.what());
        state->damagedPath = file.FullPath();
    }
    zetcore::debug::TraceLine(1, "PluginRegistry", state->loadError->text);
    ResetAllToDefaultFolders();
    state->NoteKnown(file, {});
    return false;
}

} // namespace zetaudiofilterhost
