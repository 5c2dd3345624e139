#include "vst3/Vst3Description.h"

#include <algorithm>

#include "formats/PluginText.h"

namespace zetaudiopluginhost::vst3 {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;

namespace {

std::vector<std::wstring> Split(const std::wstring& joined)
{
    std::vector<std::wstring> parts;
    for (std::size_t start = 0; start <= joined.size();) {
        const std::size_t end = std::min(joined.find(L'|', start), joined.size());
        if (end > start)
            parts.push_back(joined.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

} // namespace

std::shared_ptr<PluginModuleInfo> MakeVst3Info(const PluginLocator& locator,
                                               const Vst3Description& description)
{
    auto info = std::make_shared<PluginModuleInfo>(locator.ModuleLocator());
    const Vst3Class& first = description.classes.front();
    info->SetName(description.classes.size() == 1 && !first.name.empty() ? first.name
                                                                         : FileStem(locator.GetPath()));
    info->SetProduct(info->GetName());
    info->SetVendor(description.vendor.empty() ? first.vendor : description.vendor);
    if (description.classes.size() == 1 && !first.vendor.empty())
        info->SetVendor(first.vendor);
    info->SetVersionString(first.version);
    info->SetUniqueId(first.id);

    std::vector<std::wstring> categories;
    for (const Vst3Class& one : description.classes) {
        const std::vector<std::wstring> parts = Split(one.subCategories);
        const bool isInstrument = std::find(parts.begin(), parts.end(), L"Instrument") != parts.end();
        info->SetHasAnySynth(info->HasAnySynth() || isInstrument);
        info->SetHasAnyNonSynthEffect(info->HasAnyNonSynthEffect() || !isInstrument);
        for (const std::wstring& part : parts) {
            if (std::find(categories.begin(), categories.end(), part) == categories.end())
                categories.push_back(part);
        }
    }
    std::wstring joined;
    for (const std::wstring& category : categories)
        joined += (joined.empty() ? L"" : L"|") + category;
    info->SetCategory(joined);
    return info;
}

} // namespace zetaudiopluginhost::vst3
