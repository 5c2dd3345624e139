#include "TimedRuns.h"

#include <cstdio>
#include <ctime>
#include <iterator>
#include <memory>
#include <set>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zetui/dialogs/TerminalPresentation.h>

#include "BareLoader.h"
#include "Measure.h"

namespace bench {

namespace {

/// Seconds of all threads of this process.
double ProcessorTime()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void PrintResult(double seconds, std::ptrdiff_t found, double processorSeconds)
{
    std::printf("\nRESULT %.9f %td %.9f\n", seconds, found, processorSeconds);
    std::fflush(stdout);
}

} // namespace

std::vector<std::string> FindModules(const std::filesystem::path& folder)
{
    // Debian links the folders of some packages into the common one. A module that is reached twice counts
    // once.
    std::set<std::string> modules;
    if (!std::filesystem::is_directory(folder))
        return {};
    const auto follow = std::filesystem::directory_options::follow_directory_symlink;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, follow)) {
        const auto module =
            zetaudiofilterhost::LocatorOfModuleFile(zetcore::string::UTF8to16(entry.path().string()));
        if (entry.is_regular_file() && module.GetTechnologyType() == zetaudiofilterhost::TechnologyType::VST)
            modules.insert(std::filesystem::canonical(entry.path()).string());
    }
    return {modules.begin(), modules.end()};
}

int RunFloor(const std::vector<std::string>& modules)
{
    int found = 0;
    const double processor = ProcessorTime();
    const double seconds = Seconds([&] { found = LoadAndAsk(modules); });
    PrintResult(seconds, found, ProcessorTime() - processor);
    return 0;
}

int RunScan(const std::vector<std::string>& modules, const std::filesystem::path& prefs, bool separateProcess)
{
    using namespace zetaudiofilterhost;
    zetcore::filesupport::Dir::SetPrefDir(zetcore::string::UTF8to16(prefs.string()));
    zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
    zetui::dialogs::SetPresentation(std::make_shared<zetui::dialogs::TerminalPresentation>(stderr, true));
    zetaudiopluginhostui::Initialize();

    std::vector<PluginLocator> locators;
    for (const std::string& module : modules)
        locators.emplace_back(TechnologyType::VST, zetcore::string::UTF8to16(module));
    auto scan = std::make_shared<zetaudiopluginhostui::AudioPluginScan>(nullptr);
    const double processor = ProcessorTime();
    const double seconds =
        Seconds([&] { scan->ScanForPlugins(nullptr, locators, false, true, separateProcess); });
    auto* registry = PluginModuleInfoManager::GetInstance();
    PrintResult(seconds, std::distance(registry->PluginInfoBegin(), registry->PluginInfoEnd()),
                ProcessorTime() - processor);

    scan.reset();
    zetaudiopluginhostui::Terminate();
    zetui::dialogs::SetPresentation(nullptr);
    zetcore::threads::RegisterMainThread(nullptr);
    return 0;
}

} // namespace bench
