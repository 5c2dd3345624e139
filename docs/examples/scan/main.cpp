// Scans plug-in files in the scanner process: my_scan PREFERENCES VST2-FILE...
#include <cstdio>
#include <exception>
#include <memory>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/signals/Signal.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetui/dialogs/ProgressPresentation.h>

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::filesupport::Dir;

/// Shows nothing of the progress, and alerts on standard error. The queue is run for it.
class QuietPresentation : public zetui::dialogs::Presentation
{
    class Progress : public zetui::dialogs::ProgressPresentation
    {
        void Show(const std::string&, const std::string&, bool) override {}
        void SetExtraText(const std::string&) override {}
        void SetProgress(unsigned long long, unsigned long long, const std::string&) override {}
        void Hide() override {}
        bool ProcessEvents(bool) override { return false; } // true would cancel
    };

    std::unique_ptr<zetui::dialogs::ProgressPresentation> CreateProgress(zetui::ui::WindowVariant) override
    {
        return std::make_unique<Progress>();
    }
    void ShowAlert(zetui::dialogs::AlertKind, const std::string& title, const std::string& message,
                   zetui::ui::WindowVariant) override
    {
        std::fprintf(stderr, "%s: %s\n", title.c_str(), message.c_str());
    }
};

int main(int count, char** arguments)
try {
    if (count < 3) {
        std::fprintf(stderr, "my_scan PREFERENCES VST2-FILE...\n");
        return 2;
    }
    Dir::SetPrefDir(zetcore::string::UTF8to16(arguments[1]));
    zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
    zetui::dialogs::SetPresentation(std::make_shared<QuietPresentation>());
    zetaudiopluginhostui::Initialize();
    zetaudiopluginhostui::AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(nullptr,
                                                                                                nullptr);

    auto& registry = *PluginModuleInfoManager::GetInstance();
    // Plug-ins that a scan did not reach stay in the list as they were.
    const zetcore::events::ScopedConnection afterScans =
        registry.GetPluginInfosChangedSignal().Connect([&registry] {
            if (!registry.PutBackUnreached().empty())
                registry.SaveConfiguration({Dir::PrefDir(), PluginModuleInfoManager::GetSettingsFileName()},
                                           true);
        });

    std::vector<PluginLocator> plugins;
    for (int file = 2; file < count; ++file)
        plugins.emplace_back(zetaudiofilterhost::TechnologyType::VST,
                             zetcore::string::UTF8to16(arguments[file]));
    zetaudiopluginhostui::AudioPluginScan scan(nullptr);
    scan.SetProgressCallback([](const PluginLocator& plugin, std::size_t done, std::size_t total) {
        std::fprintf(stderr, "%zu/%zu %s\n", done, total,
                     zetcore::string::UTF16to8(plugin.GetPath()).c_str());
    });
    scan.ScanForPlugins(nullptr, plugins, false, /*quickEffectScan*/ true, /*useSeparateProcess*/ true);

    for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info)
        std::printf("found: %s\n", zetcore::string::UTF16to8((*info)->GetName()).c_str());
    const auto& banned = *zetaudiopluginhost::BannedPluginManager::GetInstance();
    for (auto plugin = banned.BannedBegin(); plugin != banned.BannedEnd(); ++plugin)
        std::printf("banned: %s: %s\n", zetcore::string::UTF16to8(plugin->GetPath()).c_str(),
                    banned.GetBanInfo(*plugin)->reason.c_str());
    for (const auto& info : registry.AllRecords())
        if (info->GetStatus() != zetaudiofilterhost::ModuleStatus::Working)
            std::printf("not used: %s: %s\n", zetcore::string::UTF16to8(info->GetLocator().GetPath()).c_str(),
                        info->GetReason().c_str());
    const bool isDone = scan.GetEnd().how == zetaudiopluginhostui::ScanEnd::How::Done;
    if (!isDone)
        std::fprintf(stderr, "the scan ended early: %s\n", scan.GetEnd().reason.c_str());

    zetui::dialogs::SetPresentation(nullptr);
    zetaudiopluginhostui::Terminate();
    return isDone ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
