#include "module/ManagerEnd.h"

#include <cstdint>
#include <optional>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "module/FileDigest.h"
#include "module/PreferenceFiles.h"

namespace zetaudiopluginhostui {

namespace {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::filesupport::File;

/// Empty when the content cannot be read: the save alone decides what the user is told.
std::optional<std::uint64_t> DigestIfReadable(const File& file)
{
    try {
        return FileDigest(file);
    } catch (const zetcore::filesupport::file_exception& error) {
        zetcore::debug::TraceLine(3, "AudioPluginManager", error.what());
        return std::nullopt;
    }
}

ManagerEnd Save(PluginModuleInfoManager& registry, const File& file)
{
    const auto before = DigestIfReadable(file);
    // A save that fails reports no change, whatever it has done to the file.
    if (!IsAccessibleFor([&] { registry.SaveConfiguration(file, true); }))
        return {false, false};
    const auto after = DigestIfReadable(file);
    return {!before || !after || *before != *after, true};
}

ManagerEnd TakeBack(PluginModuleInfoManager& registry, const File& file,
                    const PluginModuleInfoManager::Copy& copy)
{
    bool isLoaded = false;
    const bool isAccessible = IsAccessibleFor([&] { isLoaded = registry.LoadConfiguration(file); });
    if (!isLoaded)
        registry.UndoTo(copy);
    return {false, isAccessible};
}

} // namespace

ManagerEnd EndManagerRun(zetui::dialogs::UI_DialogViewContainer::Response response,
                         const PluginModuleInfoManager::Copy& copy)
{
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    const File file = ConfigurationFile();
    if (response != zetui::dialogs::UI_DialogViewContainer::kOK)
        return TakeBack(registry, file, copy);
    const ManagerEnd end = Save(registry, file);
    registry.GetPluginInfosChangedSignal()();
    return end;
}

} // namespace zetaudiopluginhostui
