#include "session/HostSession.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/threads/MainThread.h>
#include <zetui/application/Application.h>

#include "terminal/DisplayText.h"

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

/// Limits the number of restarts without any progress, unless the user has set one. A scanner that cannot
/// start for a moment, because memory is short, gets on within ten starts. A broken scanner never gets on,
/// and without a limit the scan would never end.
void LimitFruitlessRestarts()
{
    constexpr const char* key = zetaudiopluginhostui::restartLimitKey;
    auto& database = zetcore::debug::DebugDatabase::Instance();
    if (database.GetEntry(key, "").empty())
        database.SetEntry(key, "10");
}

bool IsEmpty(const File& file)
{
    std::error_code error;
    return std::filesystem::file_size(zetcore::filesupport::ToNativePath(file.FullPath()), error) == 0 &&
           !error;
}

/// The module starts that list anew, and keeps the old one aside where it has anything in it.
std::string UnsupportedListText(bool wasEmpty)
{
    const std::string list = "the list of unsupported plug-ins ";
    return list + (wasEmpty
                       ? "was empty and starts anew: "
                       : "could not be read and starts anew; the old one has \".damaged\" behind its name: ");
}

} // namespace

void Say(std::string_view text)
{
    for (const std::string& line : LinesForTerminal(text))
        std::fprintf(stderr, "zetaudiopluginmanager: %s\n", line.c_str());
}

HostSession::Surroundings::Surroundings(Surface surface, bool quiet)
{
    if (surface == Surface::Windows) {
        zetui::ui::SetProgramName(L"Audio Plug-In Manager", ZET_DESKTOP_FILE);
        if (!zetui::ui::InitializeWindows())
            throw no_display("there is no display to open a window on");
        windows = std::make_shared<CautionCounter>(zetui::dialogs::GetPresentation());
        zetui::dialogs::SetPresentation(windows);
    } else {
        eventLoop = std::make_shared<zetcore::threads::PlainEventLoop>();
        terminal = std::make_shared<zetui::dialogs::TerminalPresentation>(stderr, quiet);
        zetcore::threads::RegisterMainThread(eventLoop);
        zetui::dialogs::SetPresentation(terminal);
    }
    zetaudiopluginhostui::Initialize();
    LimitFruitlessRestarts();
}

HostSession::Surroundings::~Surroundings()
{
    zetaudiopluginhostui::Terminate();
    if (terminal) {
        zetui::dialogs::SetPresentation(nullptr);
        zetcore::threads::RegisterMainThread(nullptr);
    } else {
        zetui::dialogs::SetPresentation(windows->Behind());
        zetui::ui::TerminateWindows();
    }
}

HostSession::HostSession(Surface surface, bool onlyProblems)
    : quiet(onlyProblems), surroundings(surface, quiet), registry(PluginModuleInfoManager::GetInstance()),
      banned(BannedPluginManager::GetInstance())
{
    CheckAtStart();
    PutBackAtStart();
    scans = std::make_unique<ScanWatch>(*registry, *banned, ScanActions());
}

ScanWatch::Actions HostSession::ScanActions()
{
    return {[this] { WriteRegistry(); }, [this] { SaveBannedList(); },
            [this](const ScanWatch::Result& result) {
                // In the terminal, the command itself reports its scan.
                if (surroundings.windows)
                    scanNote.Tell(result);
            }};
}

void HostSession::PutBackAtStart()
{
    const std::size_t count = registry->PutBackUnreached().size();
    if (count == 0)
        return;
    WriteRegistry();
    if (surroundings.windows)
        TellOfInterruptedScan(count);
    else
        Say("a scan was interrupted before it reached " + std::to_string(count) +
            (count == 1 ? " plug-in, which is" : " plug-ins, which are") + " in the list again as before");
}

void HostSession::CheckAtStart()
{
    const File unsupportedFile = PreferencesFile(BannedPluginManager::GetPermanentBannedSettingsFileName());
    const bool unsupportedIsDamaged =
        unsupportedFile.Exists() && !banned->LoadStaticConfiguration(unsupportedFile);
    const bool unsupportedIsEmpty = unsupportedIsDamaged && IsEmpty(unsupportedFile);
    const File registryFile = PreferencesFile(PluginModuleInfoManager::GetSettingsFileName());
    const bool isFirstStart = !registryFile.Exists();

    zetaudiopluginhostui::AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(nullptr,
                                                                                                nullptr);
    if (unsupportedIsDamaged)
        TellOfDamage(unsupportedFile,
                     UnsupportedListText(unsupportedIsEmpty) + unsupportedFile.FullPathUTF8(),
                     !unsupportedIsEmpty);
    const File bannedFile = PreferencesFile(BannedPluginManager::GetSettingsFileName());
    if (const auto damage = banned->GetLoadError())
        TellOfDamage(bannedFile, damage->text, !bannedFile.Exists());
    if (const auto damage = registry->GetLoadError())
        TellOfDamage(registryFile, damage->text, !registryFile.Exists());
    if (isFirstStart) {
        registry->ResetToDefaultFolders();
        SaveRegistry();
    }
    // An alert names no file, and a ban may not have been saved. Saving the list again tells both.
    cautionsAtStart = Cautions();
    if (cautionsAtStart > 0)
        SaveBannedList();
}

void HostSession::TellOfDamage(const File& file, const std::string& damage, bool isKept)
{
    Say(damage);
    // The note says that the file was put aside.
    if (surroundings.windows && isKept)
        TellOfDamagedFile(file);
    wasDamaged = true;
}

zetui::dialogs::TerminalPresentation::Counts HostSession::Shown() const
{
    return surroundings.terminal ? surroundings.terminal->GetCounts()
                                 : zetui::dialogs::TerminalPresentation::Counts();
}

int HostSession::Cautions() const
{
    return surroundings.windows ? surroundings.windows->Cautions() : Shown().cautions;
}

void HostSession::Save(const std::function<void()>& save)
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
    WriteRegistry();
    registry->GetPluginInfosChangedSignal()();
}

void HostSession::WriteRegistry()
{
    Save([this] {
        registry->SaveConfiguration(PreferencesFile(PluginModuleInfoManager::GetSettingsFileName()), true);
    });
}

void HostSession::SaveBannedList()
{
    Save([this] { banned->SaveConfiguration(PreferencesFile(BannedPluginManager::GetSettingsFileName())); });
}

ExitStatus HostSession::Status() const
{
    return notSaved || wasDamaged || Cautions() > cautionsAtStart ? ExitStatus::NotSaved : ExitStatus::Done;
}

} // namespace zetaudiopluginmanager
