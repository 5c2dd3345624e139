// Scans one VST2 plug-in in the scanner process and prints the names that it finds: host PREFERENCES PLUGIN.
#include <iostream>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>

int main(int, char** arguments)
{
    using zetcore::string::UTF8to16;
    zetcore::filesupport::Dir::SetPrefDir(UTF8to16(arguments[1]));
    zetcore::filesupport::commondirs::SetExecutableDir(UTF8to16(ZET_PROGRAMS));

    zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
    zetaudiopluginhostui::Initialize();
    using zetaudiofilterhost::PluginModuleInfoManager;
    using zetcore::filesupport::Dir;
    auto& registry = *PluginModuleInfoManager::GetInstance();
    const zetcore::signals::ScopedConnection afterScans =
        registry.GetPluginInfosChangedSignal().Connect([&registry] {
            if (!registry.PutBackUnreached().empty())
                registry.SaveConfiguration({Dir::PrefDir(), PluginModuleInfoManager::GetSettingsFileName()},
                                           true);
        });
    const zetaudiofilterhost::PluginLocator plugin(zetaudiofilterhost::TechnologyType::VST,
                                                   UTF8to16(arguments[2]));
    const auto scan = std::make_shared<zetaudiopluginhostui::AudioPluginScan>(nullptr);
    scan->ScanForPlugins(nullptr, {plugin}, false, true, true);

    for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info)
        std::cout << "found: " << zetcore::string::UTF16to8((*info)->GetName()) << "\n";
    zetaudiopluginhostui::Terminate();
}
