#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>
#include <zettesting/HostFixture.h>

namespace zetaudiofilterhost {

inline PluginLocator Vst(const std::wstring& path, const std::wstring& subcomponent = {})
{
    return {TechnologyType::VST, path, subcomponent};
}

inline std::shared_ptr<PluginModuleInfo> MakeInfo(const PluginLocator& locator,
                                                  const std::wstring& name = L"Plug-in")
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(name);
    info->SetHasAnyNonSynthEffect(true);
    return info;
}

/// A registry of its own with a file in the test's preferences folder; traces everything.
class RegistryFixture : public zettesting::HostFixture
{
  protected:
    RegistryFixture()
        : path(prefs / PluginModuleInfoManager::GetSettingsFileName()), file(zettesting::ToWide(path)),
          journal(prefs / (PluginModuleInfoManager::GetSettingsFileName() + L".journal"))
    {
        zetcore::debug::SetMasterTraceVolume(9);
    }

    /// The names that the iteration shows, in its order.
    static std::vector<std::wstring> Shown(PluginModuleInfoManager& manager)
    {
        std::vector<std::wstring> names;
        for (auto info = manager.PluginInfoBegin(); info != manager.PluginInfoEnd(); ++info)
            names.push_back((*info)->GetName());
        return names;
    }
    /// A record that must be there.
    static PluginModuleInfo& Held(const PluginModuleInfoManager& manager, const PluginLocator& locator)
    {
        const auto info = manager.Find(locator);
        if (!info)
            throw std::out_of_range("no record of " + zetcore::string::UTF16to8(locator.ToString()));
        return *info;
    }
    static std::vector<std::wstring> FoldersOf(PluginModuleInfoManager& manager, TechnologyType type)
    {
        const auto technology = manager.GetPluginTechnology(type);
        return {technology->DirectoryBegin(), technology->DirectoryEnd()};
    }
    bool HasTraced(const std::string& text) const
    {
        for (const std::string& line : *traceLines)
            if (line.find(text) != line.npos)
                return true;
        return false;
    }

    std::filesystem::path path;
    zetcore::filesupport::File file;
    std::filesystem::path journal;
    PluginModuleInfoManager registry;
};

} // namespace zetaudiofilterhost
