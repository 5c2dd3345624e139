#include "module/ManagerEnd.h"

#include <cstdint>
#include <optional>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "module/FileDigest.h"

namespace zetaudiopluginhostui {

namespace {

using zetaudiofilterhost::PluginModuleInfoManager;

/// Empty when the content cannot be read. The user is not told of that: only a save that fails counts.
std::optional<std::uint64_t> RegistryFileDigest()
{
    try {
        return FileDigest(Preferences::RegistryFile());
    } catch (const zetcore::filesupport::file_exception& error) {
        zetcore::debug::TraceLine(3, "AudioPluginManager", error.what());
        return std::nullopt;
    }
}

/// True when the file has another content now.
bool Save(Preferences& preferences)
{
    const auto before = RegistryFileDigest();
    // A save that fails reports no change, whatever it has done to the file.
    if (!preferences.SaveRegistry())
        return false;
    const auto after = RegistryFileDigest();
    return !before || !after || *before != *after;
}

void TakeBack(Preferences& preferences, const PluginModuleInfoManager::Copy& copy)
{
    bool isLoaded = false;
    preferences.Try([&isLoaded] { isLoaded = Preferences::LoadRegistry(); });
    if (!isLoaded)
        PluginModuleInfoManager::GetInstance()->UndoTo(copy);
}

} // namespace

void TakeBackManagerRun(const PluginModuleInfoManager::Copy& copy, Preferences& preferences)
{
    try {
        TakeBack(preferences, copy);
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, "AudioPluginManager", error.what());
    } catch (...) {
        zetcore::debug::TraceLine(1, "AudioPluginManager", "An unknown exception ended the way back");
    }
}

bool EndManagerRun(zetui::dialogs::UI_DialogViewContainer::Response response,
                   const PluginModuleInfoManager::Copy& copy, Preferences& preferences)
{
    if (response != zetui::dialogs::UI_DialogViewContainer::kOK) {
        TakeBack(preferences, copy);
        return false;
    }
    const bool hasChanged = Save(preferences);
    PluginModuleInfoManager::GetInstance()->GetPluginInfosChangedSignal()();
    return hasChanged;
}

} // namespace zetaudiopluginhostui
