#include "commands/HostSession.h"

#include <cstdio>

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

HostSession::HostSession()
    : eventLoop(std::make_shared<zetcore::threads::PlainEventLoop>()),
      terminal(std::make_shared<zetui::dialogs::TerminalPresentation>(stderr)),
      registry(PluginModuleInfoManager::GetInstance()), banned(BannedPluginManager::GetInstance())
{
    // A constructor that throws runs no destructor: what needs undoing comes after what may throw.
    LoadLists();
    zetcore::threads::RegisterMainThread(eventLoop);
    zetui::dialogs::SetPresentation(terminal);
    zetaudiopluginhostui::Initialize();
}

HostSession::~HostSession()
{
    zetaudiopluginhostui::Terminate();
    zetui::dialogs::SetPresentation(nullptr);
    zetcore::threads::RegisterMainThread(nullptr);
}

void HostSession::LoadLists()
{
    const File unsupportedFile = PreferencesFile(BannedPluginManager::GetPermanentBannedSettingsFileName());
    if (unsupportedFile.Exists() && !banned->LoadStaticConfiguration(unsupportedFile))
        Say("the list of unsupported plug-ins is malformed and not used: " + unsupportedFile.FullPathUTF8());

    if (!banned->LoadConfiguration(PreferencesFile(BannedPluginManager::GetSettingsFileName())))
        Say(banned->GetLoadError());

    const File registryFile = PreferencesFile(PluginModuleInfoManager::GetSettingsFileName());
    if (!registryFile.Exists()) {
        registry->LoadConfiguration(registryFile);
        registry->ResetToDefaultFolders();
        SaveRegistry();
    } else if (!registry->LoadConfiguration(registryFile)) {
        Say(registry->GetLoadError());
    }
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
    return notSaved || Shown().cautions > 0 ? ExitStatus::NotSaved : ExitStatus::Done;
}

} // namespace zetaudiopluginmanager
