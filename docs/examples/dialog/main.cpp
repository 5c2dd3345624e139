// Opens the Audio Plug-In Manager: my_host PREFERENCES
#include <cstdio>
#include <exception>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/ClientName.h>
#include <zetui/application/Application.h>

int main(int count, char** arguments)
try {
    if (count != 2) {
        std::fprintf(stderr, "my_host PREFERENCES\n");
        return 2;
    }
    zetcore::utility::SetClientName(L"My Host");
    zetcore::filesupport::Dir::SetPrefDir(zetcore::string::UTF8to16(arguments[1]));
    // A host with a Qt application of its own makes that first. This one has none.
    if (!zetui::ui::InitializeWindows()) {
        std::fprintf(stderr, "there is no display\n");
        return 3;
    }
    zetaudiopluginhostui::Initialize();
    auto& manager = zetaudiopluginhostui::AudioPluginManager::GetInstance();
    manager.CheckForCrashedPluginsAndNotifyUser(nullptr, nullptr);

    zetaudiopluginhostui::AudioPluginManagerSettings settings; // keep it from one run to the next
    if (manager.DoPluginManagerDialog(nullptr, settings, nullptr))
        std::printf("the list has changed\n");

    auto& registry = *zetaudiofilterhost::PluginModuleInfoManager::GetInstance();
    for (auto plugin = registry.PluginInfoBegin(); plugin != registry.PluginInfoEnd(); ++plugin)
        if ((*plugin)->IsEnabled())
            std::printf("use %s\n", zetcore::string::UTF16to8((*plugin)->GetName()).c_str());
    const auto& banned = *zetaudiopluginhost::BannedPluginManager::GetInstance();
    for (auto plugin = banned.BannedBegin(); plugin != banned.BannedEnd(); ++plugin)
        std::printf("never load %s\n", zetcore::string::UTF16to8(plugin->GetPath()).c_str());

    zetaudiopluginhostui::Terminate();
    zetui::ui::TerminateWindows();
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
