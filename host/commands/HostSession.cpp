#include "commands/HostSession.h"

#include <cstdio>

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/filesupport/Dir.h>
#include <zetcore/filesupport/File.h>
#include <zetcore/filesupport/FileException.h>
#include <zetcore/threads/MainThread.h>

#include "commands/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;
using zetcore::filesupport::Dir;
using zetcore::filesupport::File;

File PreferencesFile(const std::wstring& name)
{
    return {Dir::PrefDir(), name};
}

} // namespace

void Say(std::string_view text)
{
    for (const std::string& line : LinesForTerminal(text))
        std::fprintf(stderr, "zetaudiopluginmanager: %s\n", line.c_str());
}

HostSession::Surroundings::Surroundings()
    : eventLoop(std::make_shared<zetcore::threads::PlainEventLoop>()),
      terminal(std::make_shared<zetui::dialogs::TerminalPresentation>(stderr))
{
    zetcore::threads::RegisterMainThread(eventLoop);
    zetui::dialogs::SetPresentation(terminal);
    zetaudiopluginhostui::Initialize();
}

HostSession::Surroundings::~Surroundings()
{
    zetaudiopluginhostui::Terminate();
    zetui::dialogs::SetPresentation(nullptr);
    zetcore::threads::RegisterMainThread(nullptr);
}

HostSession::HostSession()
    : registry(PluginModuleInfoManager::GetInstance()), banned(BannedPluginManager::GetInstance())
{
    CheckAtStart();
}

void HostSession::CheckAtStart()
{
    const File unsupportedFile = PreferencesFile(BannedPluginManager::GetPermanentBannedSettingsFileName());
    if (unsupportedFile.Exists() && !banned->LoadStaticConfiguration(unsupportedFile))
        Say("the list of unsupported plug-ins could not be read and starts anew: " +
            unsupportedFile.FullPathUTF8());
    const File registryFile = PreferencesFile(PluginModuleInfoManager::GetSettingsFileName());
    const bool isFirstStart = !registryFile.Exists();

    zetaudiopluginhostui::AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(nullptr,
                                                                                                nullptr);
    for (const std::string& error : {banned->GetLoadError(), registry->GetLoadError()})
        if (!error.empty())
            Say(error);
    if (isFirstStart) {
        registry->ResetToDefaultFolders();
        SaveRegistry();
    }
    // The alerts do not say which file it was, nor whether a ban could be saved.
    cautionsAtStart = Shown().cautions;
    if (cautionsAtStart > 0)
        SaveBannedList();
}

template<typename Save>
void HostSession::TrySaving(Save save)
{
    try {
        save();
    } catch (const zetcore::filesupport::file_exception& error) {
        Say(error.what());
        notSaved = true;
    }
}

void HostSession::SaveRegistry()
{
    TrySaving([this] {
        registry->SaveConfiguration(PreferencesFile(PluginModuleInfoManager::GetSettingsFileName()), true);
    });
    registry->GetPluginInfosChangedSignal()();
}

void HostSession::SaveBannedList()
{
    TrySaving(
        [this] { banned->SaveConfiguration(PreferencesFile(BannedPluginManager::GetSettingsFileName())); });
}

ExitStatus HostSession::Status() const
{
    return notSaved || Shown().cautions > cautionsAtStart ? ExitStatus::NotSaved : ExitStatus::Done;
}

} // namespace zetaudiopluginmanager
