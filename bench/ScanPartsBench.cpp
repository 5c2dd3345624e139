#include <memory>
#include <stdexcept>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/string/Utf.h>

#include "Measure.h"
#include "ScanBenches.h"
#include "ScannerLaunch.h"

namespace bench {

void BenchLaunch(const ScanSetup& setup)
{
    std::vector<double> seconds;
    for (int run = 0; run < setup.size.launches; ++run)
        seconds.push_back(SecondsToConnect(setup.programs / "zetaudiofilterscan", setup.scratch.Prefs()) *
                          1000);
    Report("launch of the scanner until \"Connect\" is answered", Median(seconds), "ms", 30);
}

void BenchRegistry(const ScanSetup& setup)
{
    using namespace zetaudiofilterhost;
    PluginModuleInfoManager registry;
    for (int index = 0; index < setup.size.records; ++index) {
        const std::wstring number = std::to_wstring(index);
        auto info = std::make_shared<PluginModuleInfo>(PluginLocator(
            TechnologyType::VST, L"/usr/lib/vst/maker-" + number + L"/plug-in " + number + L".so"));
        info->SetName(L"Plug-in number " + number);
        info->SetVendor(L"A maker of plug-ins");
        info->SetVersionString(L"1.2." + number);
        info->SetCategory(L"Effect");
        info->SetUniqueId(number);
        info->SetHasAnyNonSynthEffect(true);
        info->SetFileStamp(100000 + static_cast<unsigned>(index), 1700000000000000000 + index);
        registry.AddModule(info);
    }
    const zetcore::filesupport::File file(
        zetcore::filesupport::Dir(zetcore::string::UTF8to16(setup.scratch.Prefs())), L"registry.xml");
    std::vector<double> save, load;
    for (int run = 0; run < setup.size.runs; ++run) {
        save.push_back(Seconds([&] { registry.SaveConfiguration(file, true); }) * 1000);
        PluginModuleInfoManager other;
        load.push_back(Seconds([&] { other.LoadConfiguration(file); }) * 1000);
        if (other.RecordCount() != static_cast<std::size_t>(setup.size.records))
            throw std::runtime_error("the registry did not come back whole");
    }
    const std::string what = "registry with " + std::to_string(setup.size.records) + " records, ";
    Report(what + "save", Median(save), "ms", 40);
    Report(what + "load", Median(load), "ms", 40);
}

} // namespace bench
